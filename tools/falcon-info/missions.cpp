#include <cstdint>
#include <optional>

#include "areas/area.h"
#include "areas/area_changes.h"
#include "areas/mission_import.h"
#include "base/files.h"
#include "base/profile_file.h"
#include "base/text.h"
#include "falcon-info/companions.h"
#include "falcon-info/texts.h"
#include "falcon/pilot_file.h"

namespace kestrel::falconinfo {
namespace fs = std::filesystem;
namespace {

/// Slot 0 of a table is none of its elements.
template <class Table, class Make>
Json SlotsOf(const Table& table, const Make& one) {
  Json list = Json::EmptyList();
  for (std::size_t slot = 1; slot <= table.UpperBound(); ++slot) list.Append(one(table[slot]));
  return list;
}

Json PointReport(const areas::FlightPlanPoint& point) {
  Json json;
  json["x"] = point.X;
  json["y"] = point.Y;
  json["altitude"] = point.Z;
  json["type"] = static_cast<int>(point.Type);
  return json;
}

Json AreaReport(const areas::Area& area) {
  Json json;
  json["name"] = area.Name;
  json["type"] = areas::ShapeToText(area.Type);
  if (area.Type == areas::AreaType::FlightPlan) {
    json["points"] = SlotsOf(area.Points, PointReport);
    return json;
  }
  json["x"] = area.X;
  json["y"] = area.Y;
  if (area.Type == areas::AreaType::Circle) json["radius"] = area.Radius;
  return json;
}

Json GroupReport(const areas::AreaGroup& group) {
  Json json;
  json["name"] = group.Name;
  json["areas"] = SlotsOf(group.Areas, AreaReport);
  return json;
}

Json PresetList(const falcon::PresetTexts& texts) {
  Json list = Json::EmptyList();
  for (std::size_t preset = 1; preset <= falcon::PresetCount; ++preset) list.Append(texts[preset]);
  return list;
}

void TellPilot(const fs::path& file, const base::ProfileFile& mission, Json& into) {
  areas::AreaCatalogue catalogue;
  areas::AreaHistory history;
  areas::ImportMission(catalogue, history, mission);
  into["title"] = areas::MissionTitle(mission);
  into["has_steerpoints"] = mission.HasSection("STPT");
  into["groups"] = SlotsOf(catalogue.AreaGroups, GroupReport);
  const bool hasRadio = mission.HasSection("Radio");
  into["uhf"] = nullptr;
  into["vhf"] = nullptr;
  if (!hasRadio) return;
  const falcon::RadioPresets presets = falcon::LoadRadioFile(file);
  into["uhf"] = PresetList(presets.Uhf);
  into["vhf"] = PresetList(presets.Vhf);
}

base::ProfileFile Load(const fs::path& file) {
  return base::ProfileFile(base::ReadWholeFile(file, base::MaxTextFileBytes));
}

}  // namespace

Json MissionReport(Context&, const fs::path& file) {
  const base::ProfileFile pilot = Load(file);
  Json json = ReportOf(file, pilot.HasSection("MISSION") || !pilot.HasSection("Radio") ? "mission" : "pilot");
  TellPilot(file, pilot, json);
  return json;
}

Json LogBookReport(Context&, const fs::path& file) {
  const std::string stem = base::NameForMessage(file.stem());
  const fs::path settings = base::FindFile(file.parent_path(), stem + ".ini");
  Json json = ReportOf(file, "pilot");
  json["callsign"] = stem;
  json["settings_file"] = nullptr;
  if (!base::FileExists(settings)) return json;
  json["settings_file"] = Json::OfPath(settings);
  TellPilot(settings, Load(settings), json);
  return json;
}

}  // namespace kestrel::falconinfo
