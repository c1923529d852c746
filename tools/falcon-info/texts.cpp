#include "falcon-info/texts.h"

#include <array>
#include <optional>
#include <string_view>

#include "base/failure.h"
#include "base/files.h"
#include "falcon-info/companions.h"
#include "falcon/camp_objects.h"
#include "falcon/config_file.h"
#include "falcon/data_file.h"
#include "falcon/stations.h"
#include "falcon/string_table.h"
#include "falcon/xml_records.h"

namespace kestrel::falconinfo {
namespace fs = std::filesystem;
namespace {

falcon::StringTable ReadStrings(const fs::path& file, fs::path& index, fs::path& texts) {
  const auto bytesOf = [](const fs::path& path) {
    return falcon::ReadDataFile(path, falcon::MaxStringFileBytes).Bytes;
  };
  if (EndingOf(file) == ".txt") return falcon::ReadStringLines(bytesOf(file));
  const std::string stem = base::NameForMessage(file.stem());
  index = base::FindFile(file.parent_path(), stem + ".idx");
  texts = base::FindFile(file.parent_path(), stem + ".wch");
  return falcon::ReadStringTable(bytesOf(index), bytesOf(texts));
}

/// The names of StationField, in its order.
constexpr std::array<std::string_view, falcon::StationFields> StationFieldNames = {
    "camp_id",      "tacan_channel", "tacan_band", "callsign",    "tacan_range",  "tacan_type",     "tower_uhf",
    "tower_vhf",    "ils_1",         "ils_2",      "ils_3",       "ils_4",        "ops_uhf",        "ground_uhf",
    "approach_uhf", "lso_uhf",       "atis_vhf",   "tower_voice", "ground_voice", "approach_voice", "atis_voice"};

Json StationReport(const falcon::Station& station) {
  Json json;
  json["camp_id"] = station.CampId;
  json["told"] = station.Told;
  for (std::size_t field = 1; field < falcon::StationFields; ++field) {
    json[StationFieldNames[field]] = station.Texts[field];
  }
  return json;
}

}  // namespace

Json StringsReport(Context&, const fs::path& file) {
  fs::path index, texts;
  const falcon::StringTable strings = ReadStrings(file, index, texts);
  Json json = ReportOf(file, "strings");
  json["index_file"] = Json::OfPath(index);
  json["text_file"] = Json::OfPath(texts.empty() ? file : texts);
  json["count"] = strings.Count();
  json["damaged"] = strings.Damaged();
  Json list = Json::EmptyList();
  for (std::size_t number = 0; number < strings.Count(); ++number) {
    if (strings[number].empty()) continue;
    Json one;
    one["number"] = number;
    one["text"] = strings[number];
    list.Append(std::move(one));
  }
  json["strings"] = std::move(list);
  return json;
}

Json CampObjectsReport(Context&, const fs::path& file) {
  const auto objects = falcon::ReadCampObjects(falcon::ReadDataFile(file, falcon::MaxXmlBytes));
  Json json = ReportOf(file, "campaign objects");
  json["count"] = objects.size();
  json["objects"] = ListOf(objects, [](const auto& object) {
    Json one;
    one["camp_id"] = object.first;
    one["name"] = object.second.Name;
    one["heading"] = object.second.Heading;
    one["north"] = object.second.North;
    one["east"] = object.second.East;
    one["height"] = object.second.Height;
    return one;
  });
  return json;
}

Json StationsReport(Context&, const fs::path& file) {
  const falcon::StationList list = falcon::ReadStations(falcon::ReadDataFile(file, falcon::MaxStationFileBytes).Bytes);
  Json json = ReportOf(file, "stations");
  json["count"] = list.Stations.size();
  json["trouble"] = list.Trouble.empty() ? Json() : Json(list.Trouble);
  json["stations"] = ListOf(list.Stations, StationReport);
  return json;
}

Json ConfigReport(Context&, const fs::path& file) {
  Json json = ReportOf(file, "configuration");
  for (const bool isF1 : {true, false}) {
    const bool isSet = falcon::SetsCfgValue(file, isF1);
    json[isF1 ? "f1" : "f2"] = isSet ? Json(falcon::ReadCfgValue(file, isF1)) : Json();
  }
  return json;
}

}  // namespace kestrel::falconinfo
