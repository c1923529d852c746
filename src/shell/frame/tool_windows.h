#pragma once

#include <QPointer>
#include <array>
#include <memory>
#include <vector>

#include "shell/parts/modal_count.h"
#include "shell/parts/tool_frm.h"

namespace kestrel::shell {

/// Owns the eight floating windows and does what is done to all of them.
class ToolWindows final : public QObject {
  Q_OBJECT
 public:
  /// Makes all eight, hidden. `frame` is the window that they stand above; it outlives them, as does `dialogs`.
  ToolWindows(core::Program& running, ModalCount& dialogs, QWidget* frame);
  ~ToolWindows() override;

  ToolFrm& Window(core::ToolWindow which) { return *windows[static_cast<std::size_t>(which)]; }
  /// The one of that class.
  template <class Frm>
  Frm& The() {
    return *frame->findChild<Frm*>(QString(), Qt::FindDirectChildrenOnly);
  }

  /// Each shows what it shows of this.
  void Refresh(base::Changed what);

  /// Start: each window takes its place, opacity and roll from what is kept; those without a kept place are put in
  /// columns at the right of the frame.
  void PlaceAll();
  /// Shows or hides one window and keeps that (HID). While the windows are suspended it takes effect at their return.
  void SetShown(core::ToolWindow which, bool shown);
  /// Holds one window back, or gives it back as it is kept: while it is held back it stays hidden, whatever asks for
  /// it, and what is kept of it (HID) does not change.
  void Withhold(core::ToolWindow which, bool withheld);
  /// mnuResetFloating: a cascade from the frame's position.
  void ResetPositions();
  /// mnuArrangeRight: columns at the right edge of the map, those that are shown first.
  void ArrangeAtRight();
  /// mnuUndoPositions: where they stood before the last of these two; done again it takes that back.
  void UndoPositions();
  /// Live opacity of all, in percent; what is kept (TR) does not change.
  void ResetTransparency(int percent);
  void RaiseToolWindows();
  /// Takes the floating windows away around a dialog, or while another program is in front, and gives each its former
  /// visibility. Does nothing while starting, and nothing when it has been done already.
  void ShowAllWindows(bool show);
  /// Closes all; nothing brings them back after that.
  void Unload();

 Q_SIGNALS:
  /// Command4 of a window.
  void CloseAsked(core::ToolWindow which);

  /// There is something for UndoPositions.
  void PlacesKept();

 private:
  struct Former {
    QPointer<QWidget> Window;
    bool Visible;
  };

  /// Shows or hides one window as it is kept and held back.
  void Follow(core::ToolWindow which);
  std::vector<ToolFrm*> InButtonOrder();
  /// Keeps where they stand for UndoPositions.
  void KeepPlaces();
  /// Columns from the right of FirstArea, those that are shown first.
  void PlaceFromRight(std::vector<ToolFrm*> moved);
  /// Puts those in order for which no place is kept.
  void PlaceFirst();
  /// Where the windows stand that have never been placed, pixels of the desktop.
  QRect FirstArea() const;
  void BringIntoView();

  core::Program& program;
  QWidget* frame;
  std::array<std::unique_ptr<ToolFrm>, core::ToolWindowCount> windows;
  std::array<bool, core::ToolWindowCount> held{};  ///< held back
  bool suspended = false;
  bool unloaded = false;
  std::vector<Former> record;
  std::array<QPoint, core::ToolWindowCount> formerPlaces;
};

}  // namespace kestrel::shell
