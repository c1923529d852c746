#pragma once

#include <QTimer>
#include <cstdint>
#include <memory>

#include "shell/parts/tool_frm.h"

namespace Ui {
class RecFrm;
}

namespace kestrel::shell {

/// The tape player: which tape is loaded, its buttons, position bar and speed. Timer1 plays; it goes on while the
/// window is rolled up or hidden.
class RecFrm final : public ToolFrm {
  Q_OBJECT
 public:
  RecFrm(core::Program& running, QWidget* frame);
  ~RecFrm() override;

 protected:
  void ShowChanged(base::Changed) override { ShowPlayer(); }
  /// Timer1 goes on while nobody sees the window.
  bool RefreshesUnseen() const override { return true; }
  void keyPressEvent(QKeyEvent* event) override;
  /// The keys of the player where the bar or a button has the keyboard.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Shows the player as it stands and sets Timer1 by it.
  void ShowPlayer();
  void LookAlike();
  void Connect();
  void ShowButtons();
  /// The way back to the session that was left for a tape, while there is one.
  void ShowWayBack();
  void ShowTimes();
  void ShowBar();
  void ShowSpeed();
  void SetTimer();
  /// Whether a key is one of the player's; it has been followed then.
  bool TakeKey(const QKeyEvent& key);
  void PlayOrPause();
  /// Shows record `point` if the tape has it.
  void GoTo(std::int32_t point);

  std::unique_ptr<Ui::RecFrm> form;
  QTimer Timer1;
  bool ticking = false;           ///< what is shown comes from Timer1
  std::uint32_t timerStarts = 0;  ///< the player's count of them, when Timer1 was set last
};

}  // namespace kestrel::shell
