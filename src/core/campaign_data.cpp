#include "core/campaign_data.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <utility>

#include "base/files.h"
#include "core/tell.h"
#include "falcon/campaign.h"
#include "falcon/object_database.h"

namespace kestrel::core {
namespace fs = std::filesystem;
namespace {

/// The box about a part of the data that cannot be read.
void TellMissing(Program& program, const std::string& what, const std::string& reason) {
  program.Log.LogLine(what + " " + reason);
  Tell(program, what, "Error");
}

std::optional<falcon::ObjectTables> LoadTables(Program& program, const CampaignFolders& folders) {
  try {
    falcon::ObjectDatabase database = falcon::LoadObjectDatabase(folders.Objects);
    for (const std::string& note : database.Notes) program.Log.LogLine(note);
    return std::move(database.Tables);
  } catch (const falcon::TableFailure& failure) {
    TellMissing(program, "Could not load " + failure.Kind + " file.", failure.what());
    return std::nullopt;
  }
}

}  // namespace

void TellCampaignError(Program& program, const fs::path& file, const std::string& description) {
  // The numbers that such failures have always had.
  const int number = base::FileExists(file) ? 321 : 53;
  const std::string text = "An error occured: Error #" + std::to_string(number) + ". " + description;
  program.Log.LogLine(text);
  Tell(program, text);
}

std::optional<CampaignData> LoadCampaignData(Program& program, const CampaignFolders& folders,
                                             const fs::path& campaign) {
  std::optional<falcon::ObjectTables> tables = LoadTables(program, folders);
  if (!tables) return std::nullopt;
  CampaignData data{std::move(*tables), {}};
  const auto features = [&data](std::uint16_t index) -> std::optional<std::size_t> {
    const falcon::ObjectiveClass* const known = falcon::ObjectiveClassAt(data.Tables, index);
    if (!known) return std::nullopt;
    return static_cast<std::size_t>(known->FeatureCount);
  };
  try {
    data.World = falcon::LoadCampaign(campaign, folders.Campaign, features);
  } catch (const std::exception& failure) {
    TellCampaignError(program, campaign, failure.what());
    return std::nullopt;
  }
  for (const std::string& note : data.World.Notes) {
    program.Log.LogLine(base::NameForMessage(campaign) + ": " + note);
  }
  if (data.World.NamesMissing) {
    TellMissing(program, "Could not load Theater strings.", data.World.Theater);
    return std::nullopt;
  }
  return data;
}

}  // namespace kestrel::core
