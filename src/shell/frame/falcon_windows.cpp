#include "shell/frame/falcon_windows.h"

#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "core/airfield_import.h"
#include "core/falcon_installs.h"
#include "core/tell.h"
#include "shell/falcon/list_callsigns_frm.h"
#include "shell/falcon/list_theaters_frm.h"
#include "shell/frame/frame.h"
#include "shell/parts/dialogs.h"
#include "shell/radio/freq_frm.h"

namespace kestrel::shell {
namespace {

/// A theater's campaign that was asked for.
struct ChosenCampaign {
  core::CampaignFolders Folders;
  std::filesystem::path File;
};

/// Nothing when the person cancels, or when the theater has a folder that cannot be used, which has been told.
std::optional<ChosenCampaign> AskForCampaign(core::Program& program, const falcon::FalconInstall& install,
                                             std::int32_t theater) {
  try {
    core::CampaignFolders folders =
        core::FoldersOf(install, install.Theaters[static_cast<std::size_t>(theater)].Definition);
    const auto file = core::ChooseCampaign(program, folders);
    if (!file) return std::nullopt;
    return ChosenCampaign{std::move(folders), *file};
  } catch (const base::RuntimeFailure& failure) {
    core::TellFailure(program, "The theater cannot be used: ", failure);
    return std::nullopt;
  }
}

}  // namespace

FalconWindows::FalconWindows(core::Program& running, ModalCount& dialogs, MDIForm1& owner)
    : QObject(&owner), program(running), modal(dialogs), frame(owner) {}

void FalconWindows::LoadAirports() {
  ListTheatersfrm list(
      program, TheaterUse::LoadAirports,
      [this](const falcon::FalconInstall& install, std::int32_t theater) { return LoadAirportsOf(install, theater); },
      &frame);
  RunDialog(list, modal);
}

bool FalconWindows::LoadAirportsOf(const falcon::FalconInstall& install, std::int32_t theater) {
  const std::optional<ChosenCampaign> chosen = AskForCampaign(program, install, theater);
  if (!chosen) return false;
  FreqFrm& panel = frame.Tools().The<FreqFrm>();
  panel.ClearCheckboxes();
  const WaitCursor wait;
  if (core::ImportAirfields(program, chosen->Folders, chosen->File)) return true;
  panel.UpdateTreeviewCheckBoxes();
  return false;
}

void FalconWindows::ExchangeChannels(core::ChannelUse use) {
  std::vector<falcon::FalconInstall> installs;
  {
    const WaitCursor wait;
    installs = core::BeginExchange(program, use);
  }
  if (installs.empty()) return;
  ListCallsignsFrm list(use, installs, &frame);
  if (RunDialog(list, modal) != QDialog::Accepted) return;
  const auto pilotFile = list.PilotFile();
  if (!pilotFile) return;
  core::ExchangeChannels(program, use, list.Install(), *pilotFile);
  if (use == core::ChannelUse::Load) frame.Tools().The<FreqFrm>().ShowLoadedChannels();
}

}  // namespace kestrel::shell
