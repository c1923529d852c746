#include "core/airfield_import.h"

#include <exception>
#include <optional>
#include <string>
#include <utility>

#include "base/changed.h"
#include "base/files.h"
#include "falcon/stations.h"
#include "radio/airfield_build.h"

namespace kestrel::core {

bool ImportAirfields(Program& program, const CampaignFolders& folders, const std::filesystem::path& campaign) {
  const std::optional<CampaignData> data = LoadCampaignData(program, folders, campaign);
  if (!data) return false;
  const std::filesystem::path stations = base::FindFile(folders.Campaign, falcon::StationsFile);
  std::string trouble;
  try {
    radio::AirfieldBuild build =
        radio::BuildAirfields(data->World, data->Tables, falcon::LoadStations(folders.Campaign));
    trouble = build.Trouble;
    radio::TakeAirfields(program.State.Frequencies, program.State.FrequencySteps, std::move(build));
  } catch (const std::exception& failure) {
    TellCampaignError(program, stations, failure.what());
    return false;
  }
  program.Shown.Refresh(base::Changed::Frequencies | base::Changed::Map);
  if (!trouble.empty()) TellCampaignError(program, stations, trouble);
  return true;
}

}  // namespace kestrel::core
