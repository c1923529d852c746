#include "shell/frame/falcon_windows.h"

#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "core/airfield_import.h"
#include "core/falcon_installs.h"
#include "core/tell.h"
#include "falcon/bml_expander.h"
#include "falcon/model_store.h"
#include "shell/falcon/import_obj_frm.h"
#include "shell/falcon/import_theater_frm.h"
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
  std::vector<std::filesystem::path> Models;
  std::filesystem::path File;
};

/// Nothing when the person cancels, or when the theater has a folder that cannot be used, which has been told.
std::optional<ChosenCampaign> AskForCampaign(core::Program& program, const falcon::FalconInstall& install,
                                             std::int32_t theater) {
  try {
    const falcon::TheaterDefinition& definition = install.Theaters[static_cast<std::size_t>(theater)].Definition;
    core::CampaignFolders folders = core::FoldersOf(install, definition);
    std::vector<std::filesystem::path> models = core::ModelFoldersOf(install, definition);
    const auto file = core::ChooseCampaign(program, folders);
    if (!file) return std::nullopt;
    return ChosenCampaign{std::move(folders), std::move(models), *file};
  } catch (const base::RuntimeFailure& failure) {
    core::TellFailure(program, "The theater cannot be used: ", failure);
    return std::nullopt;
  }
}

}  // namespace

FalconWindows::FalconWindows(core::Program& running, ModalCount& dialogs, MDIForm1& owner)
    : QObject(&owner), program(running), modal(dialogs), frame(owner) {}

void FalconWindows::ImportTheater() {
  const falcon::FalconInstall* install = nullptr;
  std::int32_t theater = 0;
  ListTheatersfrm list(
      program, TheaterUse::ImportTheater,
      [&](const falcon::FalconInstall& chosen, std::int32_t number) {
        install = &chosen;
        theater = number;
        return true;
      },
      &frame);
  // "< Back" leads to the list as it was left.
  while (RunDialog(list, modal) == QDialog::Accepted) {
    ImportTheaterFrm config(program, *install, theater, &frame);
    if (RunDialog(config, modal) != ImportTheaterFrm::Back) return;
  }
}

void FalconWindows::ImportObjectives() {
  std::optional<ChosenCampaign> chosen;
  std::optional<core::CampaignData> data;
  ListTheatersfrm list(
      program, TheaterUse::ImportObjectives,
      [&](const falcon::FalconInstall& install, std::int32_t theater) {
        chosen = AskForCampaign(program, install, theater);
        if (!chosen) return false;
        const WaitCursor wait;
        data = core::LoadCampaignData(program, chosen->Folders, chosen->File);
        return data.has_value();
      },
      &frame);
  if (RunDialog(list, modal) != QDialog::Accepted) return;
  falcon::ModelStore models(chosen->Models, falcon::SystemBmlExpander());
  ImportObjFrm objectives(program, *data, models, modal, &frame);
  RunDialog(objectives, modal);
}

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
