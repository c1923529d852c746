#include "shell/core/station_windows.h"

#include <QApplication>

#include "core/connecting.h"
#include "core/healing.h"
#include "core/tapes.h"
#include "shell/link/select_channel_dialog.h"
#include "shell/map/lost_link.h"
#include "shell/parts/dialogs.h"
#include "shell/parts/look.h"
#include "shell/parts/unicode_text.h"
#include "shell/radio/freq_frm.h"

namespace kestrel::shell {

void StationWindows::MakeMainFrm(bool made) {
  if (!made) {
    frame.reset();
  } else if (!frame) {
    ChooseLook(program->State.Appearance.LOOK);
    frame = std::make_unique<MDIForm1>(*program, modal);
  }
}

void StationWindows::ShowMainFrm() {
  MakeMainFrm(true);
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
  auto& window = frame->Tools().The<FreqFrm>();
  window.ShowTab(1);
  window.UpdateTreeviewCheckBoxes();
  frame->Tools().SetShown(core::ToolWindow::Freq, !window.State().Hidden);
}

void StationWindows::Refresh(base::Changed what) {
  if (frame && !unloaded) frame->Refresh(what);
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

void StationWindows::RunEntry(std::string_view entry) {
  if (frame && !unloaded) frame->RunEntry(entry);
}

void StationWindows::ShowMoment(std::string_view text) {
  if (frame && !unloaded) frame->Strip().ShowMoment(FromBytes(text));
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
  core::ServerAnswered(program->State);
  frmSelectChannel dialog(present, frame.get());
  if (RunDialog(dialog, modal) != QDialog::Accepted) return std::nullopt;
  return dialog.Channel();
}

std::string StationWindows::FailureAdvice() { return core::FailureAdvice(*program); }

void StationWindows::ComputeRecData() { core::ComputeRecData(*program); }

void StationWindows::RecordingEnd() { core::RecordingEnd(*program); }

bool StationWindows::LinkLost(const std::string& why) {
  // The last picture with what there was, not that of a call that has failed.
  const bool keep = program->State.Healing.Trouble != core::LinkTrouble::Lost && frame && !unloaded;
  const bool goesOn = core::LinkLost(*program, why);
  if (keep) frame->Lost().KeepPicture();
  return goesOn;
}

void StationWindows::LinkLeft() {
  core::LinkLeft(*program);
  if (frame && !unloaded) frame->Lost().Follow();
}

}  // namespace kestrel::shell
