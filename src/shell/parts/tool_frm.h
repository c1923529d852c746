#pragma once

#include <QLabel>
#include <QPoint>
#include <QWidget>
#include <optional>

#include "base/changed.h"
#include "core/program.h"
#include "core/window_places.h"

class QToolButton;

namespace kestrel::shell {

/// Base of the eight floating windows: always on top, without the system's frame, under a caption strip of its own
/// (Label1) with CMD1 (roll up or down), Command_TR (opacity) and Command4 (close). The widget does not hide itself:
/// Command4 asks the frame, whose button is what shows and hides the window.
class ToolFrm : public QWidget {
  Q_OBJECT
 public:
  /// Height of the caption strip, pixels.
  static constexpr int StripHeight = 20;

  /// `name` becomes the objectName, e.g. "ClientsFrm"; `shows` is what it shows of the station. `frame` owns the
  /// window; `running` outlives it.
  ToolFrm(core::Program& running, core::ToolWindow which, const QString& name, const QString& caption, QWidget* frame,
          base::Changed shows = base::Changed::Nothing);

  /// Brings the window up to date with what it shows of `what`: now while its content is seen, otherwise once when it
  /// is seen next.
  void Refresh(base::Changed what);

  /// Rolls the window up to its strip; the full height is kept.
  void MinFrm();
  /// Rolls it down to its full height, whole on the screen.
  void MaxFrm();
  bool Expanded() const { return expanded; }
  /// Opacity 0..255 of the window as it is shown. What is kept (TR) does not change. 0 is invisible, by intention.
  void SetTransparency(int alpha);
  /// Position, opacity and roll from what is kept. A place that no screen shows is moved to the nearest one that does.
  void Place();
  /// Moves the window and keeps the place. Pixels of the desktop.
  void MoveTo(QPoint place);
  /// Moves the window where a screen shows its strip, if none does.
  void BringIntoView();

  /// Shown, the window stands where it is kept, whatever the window manager has done to it meanwhile.
  void setVisible(bool visible) override;
  /// Closes it for good.
  void Unload();

  core::ToolWindow Which() const { return kind; }
  /// What is kept of this window.
  core::ToolWindowState& State() { return program.State.ToolWindows[static_cast<std::size_t>(kind)]; }

 Q_SIGNALS:
  /// Command4 was pressed, or the system asks the window to close.
  void CloseAsked();
  /// The caption was pressed: all floating windows come to the front.
  void CaptionPressed();

 protected:
  /// What is below the strip; the derived window puts its layout here.
  QWidget& Body() { return *body; }
  /// To be called when the body's size hint has changed (at the end of the constructor, and whenever the content takes
  /// another size): gives the window that size.
  void FitBody();
  /// Shows what has changed, which is some of what the window shows. Called first when the content is first seen, with
  /// all of that.
  virtual void ShowChanged(base::Changed) {}
  /// Whether it is to be called at once though nobody sees the content.
  virtual bool RefreshesUnseen() const { return false; }

  void moveEvent(QMoveEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

  core::Program& program;

 private:
  /// How a caption is held.
  struct Grip {
    QPoint Offset;                        ///< from the window's corner to the pointer
    QPoint Before;                        ///< the corner before the latest move
    std::optional<quint64> MovedAt = {};  ///< time of that move's event
  };

  class Content;

  void CatchUp();
  QWidget* BuildStrip(const QString& caption);
  QToolButton* StripButton(const char* name, const QString& toolTip);
  void ShowRoll();
  /// Gives the window its size. One that grows by it is brought onto the screen whole, and to the front.
  void ApplyHeight();
  /// Moves the window so that all of it is on the nearest screen, or its upper left corner where it is too large.
  void BringInside();
  void Settle(const core::WindowPlace& place);
  /// Where the window stands when the hand takes it to `place`: it snaps to edges, if that is wanted.
  QPoint DraggedTo(const QPoint& place, Qt::KeyboardModifiers modifiers) const;

  core::ToolWindow kind;
  base::Changed views;   ///< what it shows
  base::Changed behind;  ///< what of that has changed since it was brought up to date
  QWidget* body;
  QLabel* Label1 = nullptr;
  QToolButton* CMD1 = nullptr;
  bool expanded = true;
  bool unloading = false;
  QSize full;                ///< with the strip, rolled down
  std::optional<Grip> grip;  ///< while the window is dragged by us
};

}  // namespace kestrel::shell
