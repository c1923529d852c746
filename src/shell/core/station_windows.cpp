#include "shell/core/station_windows.h"

#include <QApplication>

#include "core/tapes.h"
#include "shell/core/dialogs.h"
#include "shell/link/clients_frm.h"
#include "shell/link/select_channel_dialog.h"
#include "shell/map/curs_frm.h"
#include "shell/map/mini_map_frm.h"
#include "shell/options/view_frm.h"
#include "shell/tape/rec_frm.h"

namespace kestrel::shell {

void StationWindows::ShowMainFrm() {
  frame = std::make_unique<MDIForm1>(*program, modal);
  modal.ShowFloating = [this](bool show) { frame->Tools().ShowAllWindows(show); };
  frame->show();
  core::RunSteps(core::FrameLoadSteps(), *program);
  frame->ShowAutoUpdate();
  core::RunSteps(core::MapLoadSteps(), *program);
  Refresh(base::Changed::Connection | base::Changed::ConnectionMenus | base::Changed::NameMenus | base::Changed::Zoom |
          base::Changed::MiniMap);
}

void StationWindows::DeleteWindows() {
  modal.ShowFloating = nullptr;
  frame.reset();
}

void StationWindows::PlaceToolWindows() {
  frame->Tools().PlaceAll();
  // In the order of the start; the button of a window shows it and ticks its menu entry.
  using enum core::ToolWindow;
  for (const core::ToolWindow which : {Bulls, Curs, View, Clients, Areas, Rec, MiniMap, Freq}) {
    frame->Strip().Check(which).setChecked(!frame->Tools().Window(which).State().Hidden);
  }
}

void StationWindows::OpenFreqFrm() {
  ToolFrm& window = frame->Tools().Window(core::ToolWindow::Freq);
  window.setVisible(!window.State().Hidden);
}

void StationWindows::Refresh(base::Changed what) {
  using base::Changed;
  if (!frame || unloaded) return;
  if (Has(what, Changed::Map)) {
    frame->Map().Picture().DrawMap();
  } else if (Has(what, Changed::Plots)) {
    frame->Map().Picture().RedrawPlots();
  }
  if (Has(what, Changed::Roster | Changed::AIList | Changed::Connection)) frame->Tools().Clients().Refresh(what);
  if (Has(what, Changed::Zoom)) {
    frame->ShowZoom();
    frame->Tools().View().ShowZoom();
  }
  if (Has(what, Changed::Options)) {
    frame->Tools().View().ShowOptions();
    frame->Tools().Clients().ShowOptions();
  }
  if (Has(what, Changed::Connection)) frame->ShowConnection();
  if (Has(what, Changed::Connection | Changed::Tape)) frame->ShowTape();
  if (Has(what, Changed::Tape)) frame->Tools().Rec().Refresh();
  if (Has(what, Changed::Activity)) frame->Strip().ActivityPulse();
  if (Has(what, Changed::Transmit)) frame->Strip().ShowTransmit(program->State.Transmit);
  if (Has(what, Changed::NameMenus)) frame->ReloadNameMenu();
  if (Has(what, Changed::ConnectionMenus)) frame->LoadConnectionMenus();
  if (Has(what, Changed::CursorLine)) frame->ShowPointer();
  if (Has(what, Changed::MiniMap)) frame->Tools().MiniMap().UpdateMiniMap();
}

void StationWindows::ToggleBox(core::ToolWindow window, std::string_view box) {
  if (frame && !unloaded) frame->Tools().Window(window).ToggleBox(box);
}

void StationWindows::ShowSavingMessage(bool shown) {
  if (!frame) return;
  if (!shown) {
    if (saving != nullptr) saving->hide();
    return;
  }
  if (saving == nullptr) saving = new frmSavingMessage(frame.get());
  saving->ShowNow();
}

void StationWindows::ShowLoading(std::optional<int> percent) {
  if (frame && !unloaded) frame->Map().ShowLoading(percent);
}

void StationWindows::UnloadWindows() {
  unloaded = true;
  if (frame) frame->Tools().Unload();
  const QWidgetList windows = QApplication::topLevelWidgets();
  for (QWidget* window : windows) {
    if (window != frame.get() && window->isVisible()) window->close();
  }
  core::RunSteps(core::MapUnloadSteps(), *program);
}

std::optional<std::uint8_t> StationWindows::ChooseChannel(std::uint8_t present) {
  frmSelectChannel dialog(present, frame.get());
  if (RunDialog(dialog, modal) != QDialog::Accepted) return std::nullopt;
  return dialog.Channel();
}

void StationWindows::ComputeRecData() { core::ComputeRecData(*program); }

void StationWindows::RecordingEnd() { core::RecordingEnd(*program); }

}  // namespace kestrel::shell
