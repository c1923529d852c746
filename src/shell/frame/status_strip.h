#pragma once

#include <QLabel>
#include <QTimer>
#include <QToolButton>
#include <QWidget>
#include <array>
#include <optional>

#include "core/station.h"
#include "radio/transmit.h"
#include "shell/frame/lamp.h"

namespace kestrel::shell {

/// The strip at the foot of the frame: the buttons of the floating windows and the lamps from the left, read-outs at
/// the right. Each read-out has the width of its longest text in digits of one width, so that nothing jumps while the
/// pointer moves; where the frame is too narrow for all of this, the words of the lamps give way first, then the
/// read-outs that matter less, and latitude and longitude last.
class StatusStrip final : public QWidget {
  Q_OBJECT
 public:
  /// Length of a tick of the activity lamp, milliseconds.
  static constexpr int TickMs = 100;

  /// For so long a word of the moment stands, milliseconds.
  static constexpr int MomentMs = 3000;

  explicit StatusStrip(QWidget* owner);

  void ShowConnected(bool connected);
  /// `toolTip`: what the tape takes and what room is left, or that nothing is recorded.
  void ShowRecording(bool recording, const QString& toolTip);
  /// A command came or went: the activity lamp lights for one tick.
  void ActivityPulse();
  /// What the dark activity lamp says of a link without data; empty: that there is none, as ever.
  void ShowSilence(const QString& text);
  /// How many players have a hostile aircraft near them; nothing takes the mark away.
  void ShowThreats(std::optional<std::size_t> threats);
  /// Something that has been done, behind the lamps, for a moment. It lies over the read-outs where the strip is
  /// narrow, so that nothing moves.
  void ShowMoment(const QString& text);
  /// The lamps of the transmit keys.
  void ShowTransmit(const radio::Transmission& keys);
  void ShowZoom(const QString& text);
  void ShowPosition(const QString& position, const QString& lat, const QString& lon);
  /// Height of the ground below the pointer, as text with its unit; a single blank where none is known.
  void ShowElevation(const QString& text);
  /// The button of a floating window: checked while the window is shown. Whoever shows or hides a window presses it.
  QToolButton& Check(core::ToolWindow which) { return *checks[static_cast<std::size_t>(which)]; }

  QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QToolButton* CheckButton(const char* name, const QString& caption);
  void Tick();
  void ShowActivity();
  QLabel* ReadOut(const char* name, const QString& longest);

  std::array<Lamp*, 6> Lamps() const;
  int WidthOfWords() const;
  void PlaceMoment();
  /// The mark of the threats and the gap beside it, 0 while it is not shown.
  int WidthOfThreats() const;
  /// Which parts have room.
  void FitParts();

  Lamp* StatPic_Conn;
  Lamp* StatPic_Act;
  Lamp* StatPic_Rec;
  Lamp* StatPic_UHF;
  Lamp* StatPic_VHF;
  Lamp* StatPic_Guard;
  std::array<QToolButton*, core::ToolWindowCount> checks{};
  QLabel* lblThreats;
  QLabel* lblMoment;  ///< not in the row
  QLabel* lblPosition;
  QLabel* lblZoom;
  QLabel* lblLat;
  QLabel* lblLong;
  QLabel* lblElevation;
  int fixedWidth = 0;  ///< everything but the read-outs, with the lamps' words, pixels
  QTimer TimerAct{this};
  QTimer moment{this};  ///< while lblMoment stands
  bool ActivityOn = false;
  QString silence;  ///< empty while there is none
};

}  // namespace kestrel::shell
