#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "base/files.h"
#include "core/debug_files.h"
#include "core/execute_shortcut.h"
#include "core/frequency_files.h"
#include "core/friends.h"
#include "core/kept_view.h"
#include "core/own_folder.h"
#include "core/program.h"
#include "core/settings_backup.h"
#include "core/side_files.h"
#include "core/tell.h"
#include "core/theater_switch.h"
#include "map/geometry.h"

// The lists of the start: Main, the frame, the map window.
namespace kestrel::core {
namespace {

void ClearFlags(Program& program) {
  program.State.Session.Connected = false;
  program.State.Session.Channel = 1;
  program.State.Loading = false;
  program.State.Plots.Clear();
}

/// "a.ini is gone" and the like, for one file or many.
std::string GoneText(const std::vector<std::string>& files) {
  constexpr std::size_t mostNamed = 5;
  if (files.size() == 1) return "The theater file " + files.front() + " is gone. Its theater is left out.";
  std::string text = "The theater files ";
  for (std::size_t i = 0; i < files.size() && i < mostNamed; ++i) text += (i == 0 ? "" : ", ") + files[i];
  if (files.size() > mostNamed) text += " and " + std::to_string(files.size() - mostNamed) + " more";
  return text + " are gone. Their theaters are left out.";
}

void LoadSettings(Program& program) {
  const std::vector<std::string> gone = LoadSettingsOrBackup(program);
  if (!gone.empty()) Tell(program, GoneText(gone));
}

void ShowMap(Program& program) {
  program.State.Loading = true;
  program.Shown.ShowMainFrm();
}

/// What the options window sets from its controls when they are filled.
void CopyViewOptions(Program& program) {
  Station& station = program.State;
  station.View.BullseyeVisible = station.LinkOptions.BULLSEYEVISIBLE;
  TakeFriends(program);
  OpenCapture(program);
}

void FirstMap(Program& program) {
  const base::Changed whole = map::ChangeRes(program.State.View, 1.0);
  program.Shown.Refresh(whole | TakeKeptView(program.State));
}

constexpr Step mainSteps[] = {
    {"Clear the flags", ClearFlags},
    {"Install the keyboard hook", StartHook},
    {"AppPath: the program folder, or the person's own where that cannot be written", ChooseFolder},
    {"Read update.txt", [](Program& program) { LoadUpdateText(program.State); }},
    {"Read common.ini", [](Program& program) { LoadAutoUpdate(program.State); }},
    {"LoadSavedVars", LoadSettings, "LoadSavedVars"},
    {"LoadFriendsDef", [](Program& program) { LoadFriendsDef(program.State); }, "LoadFriendsDef"},
    {"Read DefFreq.ini", [](Program& program) { LoadDefaultFrequencies(program.State); }},
    {"Open the log", OpenLog},
    {"Load the theater picture", LoadMapPicture},
    {"Show MainFrm", ShowMap},
    {"Place BullsFrm, CursFrm, ViewFrm, ClientsFrm, AreasFrm, RecFrm, MiniMapFrm, FreqFrm",
     [](Program& program) { program.Shown.PlaceToolWindows(); }},
    {"Copy the view options into ViewFrm", CopyViewOptions},
    {"Clear Loading", [](Program& program) { program.State.Loading = false; }},
    {"Show FreqFrm, its first tab, its check boxes; hide it again",
     [](Program& program) { program.Shown.OpenFreqFrm(); }},
    {"ChangeRes 1: the first map", FirstMap},
};

void StartUpdater(Program& program) {
  if (!program.State.AutoUpdate) return;
  constexpr char separator = static_cast<char>(std::filesystem::path::preferred_separator);
  // Where the program is, even when its files are kept elsewhere.
  const std::string text = AppPathText(base::TextOfPath(program.State.ProgramPath), separator);
  program.Desk.Open(text + "ravenfix.exe", "-s", text);
}

constexpr Step frameLoadSteps[] = {
    {"Icon"},
    {"Caption"},
    {"Subclass the frame's window"},
    {"Start the updater", StartUpdater},
};

/// Without the folder tapes cannot be kept; everything else runs.
void MakeTapesFolder(Program& program) {
  try {
    base::MakeFolder(base::FindFile(program.State.AppPath, "TAPES"));
  } catch (const base::RuntimeFailure& failure) {
    program.Log.LogLine(failure.what());
  }
}

void EmptyTables(Program& program) {
  Station& station = program.State;
  station.Plots.Clear();
  station.Plots.FriendlyList.Clear();
  station.Session.Connected = false;
  station.View.Resolution = 1;
}

constexpr Step mapLoadSteps[] = {
    {"Default font"},
    {"Folder TAPES", MakeTapesFolder},
    {"Caption"},
    {"Empty the tables", EmptyTables},
    {"Size the map", [](Program& program) { map::RefreshPositions(program.State.View); }},
    {"ReloadNameMenu", [](Program& program) { program.Shown.Refresh(base::Changed::NameMenus); }},
    {"ResetTheaterData", [](Program& program) { ResetTheaterData(program); }},
    {"Status pictures",
     [](Program& program) { program.Shown.Refresh(base::Changed::Connection | base::Changed::Tape); }},
    {"LoadConnectionMenus", [](Program& program) { program.Shown.Refresh(base::Changed::ConnectionMenus); }},
};

}  // namespace

std::span<const Step> MainSteps() { return mainSteps; }
std::span<const Step> FrameLoadSteps() { return frameLoadSteps; }
std::span<const Step> MapLoadSteps() { return mapLoadSteps; }

}  // namespace kestrel::core
