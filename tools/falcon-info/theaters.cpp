#include "falcon-info/theaters.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/files.h"
#include "falcon-info/campaigns.h"
#include "falcon-info/models.h"
#include "falcon-info/tables.h"
#include "falcon-info/terrains.h"
#include "falcon-info/texts.h"
#include "falcon/camp_objects.h"
#include "falcon/config_file.h"
#include "falcon/data_file.h"
#include "falcon/installations.h"
#include "falcon/stations.h"
#include "falcon/string_table.h"
#include "falcon/wine_registry.h"
#include "falcon/xml_records.h"

namespace kestrel::falconinfo {
namespace fs = std::filesystem;
namespace {

using falcon::TheaterDefinition;

/// The folders of a theater and the words that tell them.
struct Dir {
  const char* Word;
  std::string TheaterDefinition::*Text;
};
constexpr Dir Dirs[] = {
    {"campaigndir", &TheaterDefinition::CampaignDir}, {"terraindir", &TheaterDefinition::TerrainDir},
    {"objectdir", &TheaterDefinition::ObjectDir},     {"3ddatadir", &TheaterDefinition::ThreeDDataDir},
    {"artdir", &TheaterDefinition::ArtDir},           {"moviedir", &TheaterDefinition::MovieDir},
    {"uisounddir", &TheaterDefinition::UiSoundDir},   {"misctexdir", &TheaterDefinition::MiscTexDir},
    {"sounddir", &TheaterDefinition::SoundDir},       {"simdatadir", &TheaterDefinition::SimDataDir},
};

Json TextsReport(const TheaterDefinition& definition) {
  Json json;
  for (const falcon::DefinitionKey& key : falcon::DefinitionKeys()) {
    const std::string& text = definition.*key.Text;
    json[key.Word] = text.empty() ? Json() : Json(text);
  }
  json["mintacan"] = definition.MinTacan;
  return json;
}

Json DirsReport(const Installation& installation, const Theater& theater) {
  Json list = Json::EmptyList();
  for (const Dir& dir : Dirs) {
    const TheaterDir found = DirOf(installation, theater, dir.Text);
    if (found.Used.empty()) continue;
    Json json;
    json["key"] = dir.Word;
    json["told"] = found.Told.empty() ? Json() : Json(found.Told);
    json["used"] = found.Used;
    json["folder"] = Json::OfPath(found.Folder);
    json["exists"] = !found.Folder.empty() && IsFolder(found.Folder);
    list.Append(std::move(json));
  }
  return list;
}

/// Names, general strings and stations of a folder of campaigns.
void TellTexts(Context& context, const Companions& companions, Json& into) {
  into["general_strings"] = Attempt(context, companions.Strings, [&] {
    const std::optional<falcon::StringTable> strings = falcon::LoadGeneralStrings(companions.Strings);
    return strings ? Json(strings->Count()) : Json();
  });
  const fs::path objects = base::FindFile(companions.Campaign, "CampObjData.XML");
  into["camp_objects"] = Attempt(context, objects, [&] {
    if (!base::FileExists(objects)) return Json();
    return Json(falcon::ReadCampObjects(falcon::ReadDataFile(objects, falcon::MaxXmlBytes)).size());
  });
  const fs::path file = base::FindFile(companions.Campaign, falcon::StationsFile);
  into["stations"] = Attempt(context, file, [&] {
    if (!base::FileExists(file)) return Json();
    const falcon::StationList list = falcon::LoadStations(companions.Campaign);
    Json json;
    json["count"] = list.Stations.size();
    json["trouble"] = list.Trouble.empty() ? Json() : Json(list.Trouble);
    return json;
  });
}

void TellCampaigns(Context& context, const Companions& companions, const Database& database, Json& into) {
  TellTexts(context, companions, into);
  into["campaigns"] = CampaignSummaries(context, companions, database);
}

void TellTheater(Context& context, const Installation& installation, const Theater& theater, Json& into) {
  into["definition"] = TextsReport(theater.Definition);
  into["root"] = Json::OfPath(installation.Root);
  into["folders"] = DirsReport(installation, theater);
  const Companions companions = CompanionsOf(context, installation, theater);
  const Database database = LoadDatabase(companions.Objects);
  TellDatabase(context, database, into);
  std::vector<fs::path> models = {DirOf(installation, theater, &TheaterDefinition::ThreeDDataDir).Folder};
  models.insert(models.end(), companions.Objects.begin(), companions.Objects.end());
  std::erase(models, fs::path());
  TellModels(context, models, into);
  const TheaterDir terrain = DirOf(installation, theater, &TheaterDefinition::TerrainDir);
  if (IsFolder(terrain.Folder) && IsTerrainFolder(terrain.Folder)) {
    TellTerrain(context, terrain.Folder, theater.Definition.TileSet, companions.Campaign, into);
  }
  if (IsFolder(companions.Campaign)) TellCampaigns(context, companions, database, into);
}

/// The installation that holds a file; without any the file's own folder.
Installation InstallationOf(const fs::path& file) {
  if (std::optional<Installation> found = InstallationAround(file)) return *found;
  return {file.parent_path(), file.parent_path(), {}};
}

Json EntryReport(const Installation& installation, const std::string& entry) {
  Json json;
  json["entry"] = entry;
  json["definition_file"] = nullptr;
  json["name"] = nullptr;
  try {
    const fs::path file = Below(installation.Root, entry);
    json["definition_file"] = Json::OfPath(file);
    json["name"] = ReadTheater(file).Definition.Name;
    json["trouble"] = nullptr;
  } catch (const base::RuntimeFailure& failure) {
    json["trouble"] = failure.what();
  }
  return json;
}

Json EntriesReport(const Installation& installation) {
  const falcon::DataFile list = falcon::ReadDataFile(installation.List, falcon::MaxDefinitionBytes);
  return ListOf(falcon::ReadTheaterList(list.Bytes),
                [&installation](const std::string& entry) { return EntryReport(installation, entry); });
}

void TellPilots(Context& context, const fs::path& folder, Json& into) {
  Json pilots = Json::EmptyList(), configurations = Json::EmptyList();
  for (const fs::path& file : FilesOf(base::FindFile(folder, falcon::ConfigFolderName))) {
    if (EndingOf(file) == ".lbk") pilots.Append(Attempt(context, file, [&] { return LogBookReport(context, file); }));
  }
  for (const std::string_view name : {falcon::ConfigFileName, falcon::OwnConfigFileName}) {
    const fs::path file = base::FindFile(folder, name);
    if (!base::FileExists(file)) continue;
    configurations.Append(Attempt(context, file, [&] { return ConfigReport(context, file); }));
  }
  into["pilots"] = std::move(pilots);
  into["configurations"] = std::move(configurations);
}

Json InstallReport(Context& context, const falcon::FalconInstall& install) {
  Json json;
  json["key"] = install.Key;
  json["install_dir"] = install.InstallDir;
  json["current_theater"] = install.CurTheater;
  json["pilot"] = install.PilotCallsign;
  json["folder"] = Json::OfPath(install.Folder);
  const std::optional<Installation> found = install.Folder.empty() ? std::nullopt : InstallationAt(install.Folder);
  json["installation"] = found ? InstallationReport(context, *found) : Json();
  return json;
}

}  // namespace

Json DefinitionReport(Context& context, const fs::path& file) {
  Json json = ReportOf(file, "theater");
  TellTheater(context, InstallationOf(file), ReadTheater(file), json);
  return json;
}

Json TheaterListReport(Context&, const fs::path& file) {
  Installation installation = InstallationOf(file);
  installation.List = file;
  Json json = ReportOf(file, "theater list");
  json["root"] = Json::OfPath(installation.Root);
  json["theaters"] = EntriesReport(installation);
  return json;
}

Json InstallationReport(Context& context, const Installation& installation) {
  Json json = ReportOf(installation.Folder, "installation");
  json["root"] = Json::OfPath(installation.Root);
  json["list_file"] = Json::OfPath(installation.List);
  json["listed"] = Json::EmptyList();
  if (!installation.List.empty()) {
    json["listed"] = Attempt(context, installation.List, [&] { return EntriesReport(installation); });
  }
  Json theaters = Json::EmptyList();
  for (const fs::path& file : DefinitionsOf(installation)) {
    if (!base::FileExists(file)) continue;  // told by its entry
    theaters.Append(Attempt(context, file, [&] {
      Json theater;
      theater["file"] = Json::OfPath(file);
      TellTheater(context, installation, ReadTheater(file), theater);
      return theater;
    }));
  }
  json["theaters"] = std::move(theaters);
  TellPilots(context, installation.Folder, json);
  return json;
}

Json PrefixReport(Context& context, const fs::path& prefix) {
  const falcon::WineRegistry registry = falcon::WineRegistry::Load(prefix);
  const falcon::InstallKeys* const sources[] = {&registry};
  const falcon::FalconInstalls found = falcon::DiscoverFalcon(sources);
  std::vector<falcon::FalconInstall> all = found.Bms;
  all.insert(all.end(), found.Falcon.begin(), found.Falcon.end());
  Json json = ReportOf(prefix, "prefix");
  json["messages"] = ListOf(found.Messages);
  json["installations"] =
      ListOf(all, [&context](const falcon::FalconInstall& install) { return InstallReport(context, install); });
  return json;
}

bool IsCampaignFolder(const fs::path& folder) {
  const std::vector<fs::path> files = FilesOf(folder);
  return std::any_of(files.begin(), files.end(), IsCampaignFile) ||
         base::FileExists(base::FindFile(folder, falcon::StationsFile));
}

Json CampaignFolderReport(Context& context, const fs::path& folder) {
  // The companions are those of any file in it.
  const Companions companions = CompanionsOf(context, folder / "campaigns");
  const Database database = LoadDatabase(companions.Objects);
  Json json = ReportOf(folder, "campaigns");
  TellDatabase(context, database, json);
  TellCampaigns(context, companions, database, json);
  return json;
}

}  // namespace kestrel::falconinfo
