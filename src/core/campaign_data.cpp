#include "core/campaign_data.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string_view>

#include "base/failure.h"
#include "base/files.h"
#include "core/tell.h"
#include "falcon/campaign.h"
#include "falcon/class_table.h"
#include "falcon/data_file.h"
#include "falcon/object_table_files.h"

namespace kestrel::core {
namespace fs = std::filesystem;
namespace {

using falcon::DataFile;
using falcon::ObjectTables;

/// The box about a part of the data that cannot be read.
void TellMissing(Program& program, const std::string& what, const std::string& reason) {
  program.Log.LogLine(what + " " + reason);
  Tell(program, what, "Error");
}

struct TableFile {
  std::string_view File;
  std::string_view Kind;  ///< in the box; empty when the data can do without
  void (*Read)(const DataFile& file, ObjectTables& tables);
};

constexpr TableFile TableFiles[] = {
    {"Falcon4.ct", "CT", [](const DataFile& file, ObjectTables& to) { to.Classes = falcon::ReadClassTable(file); }},
    {"Falcon4.OCD", "OCD",
     [](const DataFile& file, ObjectTables& to) { to.Objectives = falcon::ReadObjectiveClasses(file); }},
    {"Falcon4.FED", "FED",
     [](const DataFile& file, ObjectTables& to) { to.Features = falcon::ReadFeatureEntries(file); }},
    {"Falcon4.FCD", "",
     [](const DataFile& file, ObjectTables& to) { to.FeatureClasses = falcon::ReadFeatureClasses(file); }},
    {"Falcon4.PHD", "PHD", [](const DataFile& file, ObjectTables& to) { to.Headers = falcon::ReadPointHeaders(file); }},
    {"Falcon4.PD", "PD", [](const DataFile& file, ObjectTables& to) { to.Points = falcon::ReadPoints(file); }},
};

fs::path FindTable(const CampaignFolders& folders, std::string_view name) {
  for (const fs::path& folder : folders.Objects) {
    fs::path file = base::FindFile(folder, name);
    if (base::FileExists(file)) return file;
  }
  throw base::RuntimeFailure(std::string(name) + " is in no folder of objects");
}

std::optional<ObjectTables> LoadTables(Program& program, const CampaignFolders& folders) {
  ObjectTables tables;
  for (const TableFile& table : TableFiles) {
    try {
      table.Read(falcon::ReadDataFile(FindTable(folders, table.File), falcon::MaxTableBytes), tables);
    } catch (const std::exception& failure) {
      if (!table.Kind.empty()) {
        TellMissing(program, "Could not load " + std::string(table.Kind) + " file.", failure.what());
        return std::nullopt;
      }
      program.Log.LogLine(failure.what());
    }
  }
  return tables;
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
  std::optional<ObjectTables> tables = LoadTables(program, folders);
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
