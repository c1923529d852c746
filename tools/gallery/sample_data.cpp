#include "gallery/sample_data.h"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace kestrel::gallery {

areas::AreaCatalogue SampleAreas() {
  areas::AreaCatalogue catalogue;
  for (const char* name : {"Training areas", "Routes"}) catalogue.AreaFolders.Append({name, areas::On});
  const std::pair<const char*, std::int32_t> groups[] = {
      {"CAP stations", 1}, {"Air defence", 1}, {"Tanker tracks", 2}, {"Low level", 2}};
  for (const auto& [name, folder] : groups) catalogue.AreaGroups.Append({.Name = name, .FolderIndex = folder});
  const std::pair<const char*, areas::AreaType> shapes[] = {{"North station", areas::AreaType::Circle},
                                                            {"Far Harbour SAM", areas::AreaType::Icon},
                                                            {"Range boundary", areas::AreaType::Region},
                                                            {"Hold here", areas::AreaType::Text},
                                                            {"Way home", areas::AreaType::FlightPlan}};
  for (const auto& [name, type] : shapes) {
    areas::Area area;
    area.Name = name;
    area.Type = type;
    // Beyond the edge: the picture of the map shows none of them.
    area.X = area.Y = area.MinX = area.MinY = area.MaxX = area.MaxY = -1000;
    area.Visible = type == areas::AreaType::Text ? areas::Off : areas::On;
    catalogue.AreaGroups[1].Areas.Append(std::move(area));
  }
  return catalogue;
}

core::CampaignData SampleObjectives() {
  core::CampaignData data;
  falcon::ObjectTables& tables = data.Tables;
  tables.Classes.resize(1);
  std::size_t country = 0;
  for (const char* team : {"Neutral", "Northland", "Southland"}) data.World.Teams[country++].Name = team;
  const struct {
    const char* Name;
    std::uint8_t Type, Owner;
    std::int32_t Buildings;
  } objectives[] = {{"North Field", 1, 1, 94},  {"Far Harbour", 19, 1, 31},  {"Strait Bridge", 6, 2, 12},
                    {"Cape Radar", 21, 2, 5},   {"South Field", 1, 2, 88},   {"Lowtown", 28, 0, 22},
                    {"Hill Battery", 31, 1, 9}, {"Old Refinery", 25, 1, 40}, {"Green Valley", 29, 0, 8}};
  for (const auto& [name, type, owner, buildings] : objectives) {
    tables.Objectives.push_back({.FeatureCount = buildings});
    tables.Classes.push_back({.Class = falcon::ObjectiveClassCode,
                              .Type = type,
                              .Data = falcon::DataKind::Objective,
                              .DataIndex = static_cast<std::int32_t>(tables.Objectives.size()) - 1});
    falcon::Objective one;
    one.ClassIndex = static_cast<std::uint16_t>(tables.Classes.size() - 1);
    one.OwnName = name;
    one.Owner = owner;
    data.World.Objectives.push_back(std::move(one));
  }
  return data;
}

}  // namespace kestrel::gallery
