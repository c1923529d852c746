#pragma once

#include <QLabel>

#include "tape/player.h"

namespace kestrel::shell {

/// "REPLAY 21:14:03" at the upper right of the map while a tape is on show: above the map, not drawn into it. The mouse
/// passes through.
class ReplaySign final : public QLabel {
  Q_OBJECT
 public:
  /// `picture` is the map's.
  explicit ReplaySign(QWidget* picture);
  void ShowPlayer(const tape::PlayerState& player);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Place();
};

}  // namespace kestrel::shell
