#include "shell/frame/tool_windows.h"

#include <QApplication>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "base/numbers.h"
#include "core/cascade.h"
#include "shell/frame/tool_table.h"
#include "shell/parts/remembered_place.h"

namespace kestrel::shell {
namespace {

std::vector<core::WindowSize> SizesOf(std::span<ToolFrm* const> windows) {
  std::vector<core::WindowSize> sizes;
  for (const ToolFrm* window : windows) sizes.push_back(SizeOf(window->size()));
  return sizes;
}

}  // namespace

ToolWindows::ToolWindows(core::Program& running, ModalCount& dialogs, QWidget* owner) : program(running), frame(owner) {
  for (const ToolEntry& entry : ToolEntries()) {
    std::unique_ptr<ToolFrm> window = entry.Make(running, dialogs, owner);
    connect(window.get(), &ToolFrm::CloseAsked, this, [this, which = entry.Which] { Q_EMIT CloseAsked(which); });
    connect(window.get(), &ToolFrm::CaptionPressed, this, [this, pressed = window.get()] {
      RaiseToolWindows();
      // The one in the hand goes over its neighbours.
      pressed->raise();
    });
    windows[static_cast<std::size_t>(entry.Which)] = std::move(window);
  }
  connect(qApp, &QGuiApplication::screenRemoved, this, &ToolWindows::BringIntoView, Qt::QueuedConnection);
}

ToolWindows::~ToolWindows() = default;

void ToolWindows::Refresh(base::Changed what) {
  for (const auto& window : windows) window->Refresh(what);
}

std::vector<ToolFrm*> ToolWindows::InButtonOrder() {
  std::vector<ToolFrm*> ordered;
  for (const ToolEntry& entry : ToolEntries()) ordered.push_back(&Window(entry.Which));
  return ordered;
}

void ToolWindows::PlaceAll() {
  for (const auto& window : windows) window->Place();
  PlaceFirst();
}

void ToolWindows::PlaceFirst() {
  std::vector<ToolFrm*> ordered = InButtonOrder();
  std::erase_if(ordered, [](ToolFrm* window) { return window->State().Placed; });
  PlaceFromRight(std::move(ordered));
}

void ToolWindows::PlaceFromRight(std::vector<ToolFrm*> ordered) {
  std::stable_partition(ordered.begin(), ordered.end(), [](ToolFrm* window) { return !window->State().Hidden; });
  const QRect area = FirstArea();
  const std::vector<core::WindowPlace> places =
      core::CascadeFromRight(Units(area.right() + 1), Units(area.top()), SizesOf(ordered), Units(area.bottom() + 1));
  for (std::size_t index = 0; index < places.size(); ++index) {
    // The last, hidden ones may find no room of their own: rather over another than off the screen.
    const QPoint place = PixelsOf(places[index]);
    ordered[index]->MoveTo({qMax(area.left(), place.x()), place.y()});
    ordered[index]->BringIntoView();
  }
}

QRect ToolWindows::FirstArea() const {
  // Over the map: the strip, the menus and the title stay free.
  constexpr int Side = 16, Top = 64, Foot = 48;
  return frame->frameGeometry().adjusted(Side, Top, -Side, -Foot);
}

void ToolWindows::SetShown(core::ToolWindow which, bool shown) {
  Window(which).State().Hidden = !shown;
  Follow(which);
}

void ToolWindows::Withhold(core::ToolWindow which, bool withheld) {
  held[static_cast<std::size_t>(which)] = withheld;
  Follow(which);
}

void ToolWindows::Follow(core::ToolWindow which) {
  ToolFrm& window = Window(which);
  const bool shown = !window.State().Hidden && !held[static_cast<std::size_t>(which)];
  if (!suspended) {
    window.setVisible(shown);
    return;
  }
  for (Former& former : record) {
    if (former.Window == &window) former.Visible = shown;
  }
}

void ToolWindows::KeepPlaces() {
  for (std::size_t index = 0; index < windows.size(); ++index) formerPlaces[index] = windows[index]->pos();
  Q_EMIT PlacesKept();
}

void ToolWindows::ArrangeAtRight() {
  KeepPlaces();
  PlaceFromRight(InButtonOrder());
  RaiseToolWindows();
}

void ToolWindows::UndoPositions() {
  const auto places = formerPlaces;
  KeepPlaces();
  for (std::size_t index = 0; index < windows.size(); ++index) {
    windows[index]->MoveTo(places[index]);
    windows[index]->BringIntoView();
  }
}

void ToolWindows::ResetPositions() {
  KeepPlaces();
  // From the frame's upper left corner, in logical units.
  constexpr core::WindowPlace Step{900, 240};
  const std::vector<ToolFrm*> ordered = InButtonOrder();
  const QRect around = frame->frameGeometry();
  const core::WindowPlace first{Units(around.left()) + Step.X, Units(around.top()) + Step.Y};
  const core::WindowArea area = AreaOf(frame->screen()->availableGeometry());
  const std::vector<core::WindowPlace> places =
      core::Cascade(first, SizesOf(ordered), Units(around.bottom() + 1), area);
  for (std::size_t index = 0; index < places.size(); ++index) ordered[index]->MoveTo(PixelsOf(places[index]));
  RaiseToolWindows();
}

void ToolWindows::BringIntoView() {
  for (const auto& window : windows) window->BringIntoView();
}

void ToolWindows::ResetTransparency(int percent) {
  const int alpha = static_cast<int>(base::RoundHalfEven(percent * 2.55));
  for (const auto& window : windows) window->SetTransparency(alpha);
}

void ToolWindows::RaiseToolWindows() {
  for (ToolFrm* window : InButtonOrder()) window->raise();
}

void ToolWindows::ShowAllWindows(bool show) {
  if (unloaded || program.State.Loading || suspended != show) return;
  program.Log.LogLine(show ? "Showallwindows True" : "Showallwindows False");
  suspended = !show;
  if (!show) {
    record.clear();
    const QWidgetList all = QApplication::topLevelWidgets();
    for (QWidget* window : all) {
      // The map stands in the frame, which stays; menus and tips go by themselves.
      if (window->parentWidget() != frame || window->windowType() == Qt::Popup) continue;
      if (qobject_cast<ToolFrm*>(window) == nullptr && !window->isVisible()) continue;
      record.push_back({window, window->isVisible()});
    }
    for (const Former& former : record) former.Window->hide();
    return;
  }
  for (const Former& former : record) {
    if (former.Window) former.Window->setVisible(former.Visible);
  }
  record.clear();
}

void ToolWindows::Unload() {
  unloaded = true;
  for (const auto& window : windows) window->Unload();
}

}  // namespace kestrel::shell
