#include "core/channel_exchange.h"

#include <exception>
#include <string>
#include <type_traits>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "core/falcon_installs.h"
#include "core/tell.h"
#include "falcon/config_file.h"
#include "falcon/pilot_file.h"
#include "radio/frequency_edits.h"

namespace kestrel::core {
namespace fs = std::filesystem;
namespace {

static_assert(std::is_same_v<falcon::PresetTexts, radio::Channels>);

constexpr const char* NoBms = "No Falcon BMS Installation found on your system";
constexpr const char* ReplaceText =
    "The Channels in your Falcon installation will be replaced. This means that, unless everyone has the same values "
    "in a multiplayer environment, you won't be able to communicate using channels. Are you sure?";

fs::path ConfigOf(const falcon::FalconInstall& install) {
  return base::FindFile(install.Folder, falcon::ConfigFileName);
}

/// "F1", "F2" or "F1 and F2": which of the teams' frequencies the person's own configuration sets; else empty.
std::string SetByPerson(const fs::path& ownConfig) {
  std::string set;
  for (const bool isF1 : {true, false}) {
    if (!falcon::SetsCfgValue(ownConfig, isF1)) continue;
    set += std::string(set.empty() ? "" : " and ") + (isF1 ? "F1" : "F2");
  }
  return set;
}

void TellOwnConfig(Program& program, const falcon::FalconInstall& install) {
  const fs::path file = base::FindFile(install.Folder, falcon::OwnConfigFileName);
  try {
    const std::string set = SetByPerson(file);
    if (set.empty()) return;
    Tell(program,
         "\"" + base::NameForMessage(file) + "\" of this installation sets " + set +
             ". That counts in Falcon, whatever \"" + base::NameForMessage(ConfigOf(install)) +
             "\" holds, and is neither loaded nor changed here.",
         base::ProgramTitle(), base::MessageIcon::Information);
  } catch (const std::exception& failure) {
    program.Log.LogLine(failure.what());
  }
}

bool Load(Program& program, const falcon::FalconInstall& install, const fs::path& pilotFile) {
  radio::Frequencies& tables = program.State.Frequencies;
  radio::LoadedChannels loaded;
  try {
    falcon::RadioPresets presets = falcon::LoadRadioFile(pilotFile);
    loaded = {std::move(presets.Uhf), std::move(presets.Vhf), tables.CustomF1, tables.CustomF2};
  } catch (const std::exception& failure) {
    TellFailure(program, "The channels could not be loaded: ", failure);
    return false;
  }
  std::string trouble;
  try {
    const std::string f1 = falcon::ReadCfgValue(ConfigOf(install), true);
    loaded.F2 = falcon::ReadCfgValue(ConfigOf(install), false);
    loaded.F1 = f1;
  } catch (const std::exception& failure) {
    trouble = failure.what();
  }
  radio::TakeChannels(tables, program.State.FrequencySteps, loaded);
  if (trouble.empty()) return true;
  TellFailure(program, "The channels have been loaded, F1 and F2 could not be: ", base::RuntimeFailure(trouble));
  return false;
}

bool Save(Program& program, const falcon::FalconInstall& install, const fs::path& pilotFile, bool useDefaults) {
  const radio::Frequencies& own = program.State.Frequencies;
  const radio::DefaultFrequencies& defaults = program.State.DefaultFrequencies;
  try {
    falcon::SaveRadioFile(pilotFile, useDefaults ? falcon::RadioPresets{defaults.DefaultUHF, defaults.DefaultVHF}
                                                 : falcon::RadioPresets{own.CustomUHF, own.CustomVHF});
  } catch (const std::exception& failure) {
    TellFailure(program, "The channels could not be saved: ", failure);
    return false;
  }
  try {
    falcon::WriteCfgValue(ConfigOf(install), true, useDefaults ? defaults.DefaultF1 : own.CustomF1);
    falcon::WriteCfgValue(ConfigOf(install), false, useDefaults ? defaults.DefaultF2 : own.CustomF2);
  } catch (const std::exception& failure) {
    TellFailure(program, "The channels have been saved, F1 and F2 could not be: ", failure);
    return false;
  }
  return true;
}

}  // namespace

std::vector<falcon::FalconInstall> BeginExchange(Program& program, ChannelUse use) {
  std::vector<falcon::FalconInstall> installs = FindInstalls(program).Bms;
  if (installs.empty()) {
    Tell(program, NoBms);
  } else if (use != ChannelUse::Load && !IsSure(program, ReplaceText, "Attention")) {
    installs.clear();
  }
  return installs;
}

void ExchangeChannels(Program& program, ChannelUse use, const falcon::FalconInstall& install,
                      const fs::path& pilotFile) {
  const bool done = use == ChannelUse::Load ? Load(program, install, pilotFile)
                                            : Save(program, install, pilotFile, use == ChannelUse::SaveDefaults);
  if (done) TellOwnConfig(program, install);
}

}  // namespace kestrel::core
