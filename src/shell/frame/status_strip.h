#pragma once

#include <QLabel>
#include <QTimer>
#include <QWidget>

#include "shell/frame/lamp.h"

namespace kestrel::shell {

/// The strip at the foot of the frame: lamps from the left, read-outs at the right. Each read-out has the width of its
/// longest text in digits of one width, so that nothing jumps while the pointer moves.
class StatusStrip final : public QWidget {
  Q_OBJECT
 public:
  /// Length of a tick of the activity lamp, milliseconds.
  static constexpr int TickMs = 100;

  explicit StatusStrip(QWidget* owner);

  void ShowConnected(bool connected);
  /// A command came or went: the activity lamp lights for one tick.
  void ActivityPulse();
  void ShowZoom(const QString& text);
  void ShowPosition(const QString& position, const QString& lat, const QString& lon);

 private:
  void Tick();
  QLabel* ReadOut(const char* name, const QString& longest);

  Lamp* StatPic_Conn;
  Lamp* StatPic_Act;
  Lamp* StatPic_Rec;
  QLabel* lblPosition;
  QLabel* lblZoom;
  QLabel* lblLat;
  QLabel* lblLong;
  QTimer TimerAct;
  bool ActivityOn = false;
};

}  // namespace kestrel::shell
