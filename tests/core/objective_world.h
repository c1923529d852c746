#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "base/temp_folder.h"
#include "core/campaign_data.h"
#include "falcon/model_store.h"
#include "falcon/model_writer.h"
#include "falcon/shape_writer.h"

// Campaigns with objectives as they are once they have been read, and models for their buildings.
namespace kestrel::test {

/// A campaign without objectives; class 0 is of nothing.
inline core::CampaignData NoObjectives() {
  core::CampaignData data;
  data.World.Width = data.World.Height = 1024;
  data.Tables.Classes.resize(1);
  data.Tables.Objectives.resize(1);
  data.Tables.Features.resize(1);
  data.Tables.FeatureClasses.resize(1);
  return data;
}

/// A class of buildings; its index in the class table.
inline std::int32_t AddBuilding(core::CampaignData& data, const std::array<std::int16_t, 7>& models,
                                std::uint16_t flags = 0) {
  falcon::ObjectTables& tables = data.Tables;
  tables.FeatureClasses.push_back({.Flags = flags});
  tables.Classes.push_back({.Class = falcon::FeatureClassCode,
                            .Models = models,
                            .Data = falcon::DataKind::Feature,
                            .DataIndex = static_cast<std::int32_t>(tables.FeatureClasses.size()) - 1});
  return static_cast<std::int32_t>(tables.Classes.size()) - 1;
}

/// A class of objectives with these buildings; its index in the class table.
inline std::uint16_t AddObjectiveClass(core::CampaignData& data, std::uint8_t type,
                                       const std::vector<falcon::FeatureEntry>& features = {}) {
  falcon::ObjectTables& tables = data.Tables;
  tables.Objectives.push_back({.FirstFeature = static_cast<std::int32_t>(tables.Features.size()),
                               .FeatureCount = static_cast<std::int32_t>(features.size())});
  tables.Features.insert(tables.Features.end(), features.begin(), features.end());
  tables.Classes.push_back({.Class = falcon::ObjectiveClassCode,
                            .Type = type,
                            .Data = falcon::DataKind::Objective,
                            .DataIndex = static_cast<std::int32_t>(tables.Objectives.size()) - 1});
  return static_cast<std::uint16_t>(tables.Classes.size() - 1);
}

inline falcon::Objective& AddObjective(core::CampaignData& data, std::uint16_t classIndex, const std::string& name,
                                       std::uint8_t owner = 0) {
  falcon::Objective one;
  one.Id.Number = static_cast<std::uint32_t>(data.World.Objectives.size()) + 1;
  one.ClassIndex = classIndex;
  one.OwnName = name;
  one.Owner = owner;
  data.World.Objectives.push_back(std::move(one));
  return data.World.Objectives.back();
}

/// Writes a directory of models into a folder: of each plan, from model 1 on, the shape; "" is a model without one.
inline void WriteModels(const std::filesystem::path& folder, const std::vector<std::string>& shapes,
                        const std::array<float, 6>& box = {-50, 50, -50, 50, -20, 0}) {
  DirectoryPlan plan;
  plan.Models.resize(1);
  std::string bytes;
  for (const std::string& shape : shapes) {
    ModelPlan model;
    model.Box = box;
    if (!shape.empty()) {
      model.Details = {{static_cast<std::uint32_t>(plan.Places.size()), 500}};
      plan.Places.push_back({bytes.size(), shape.size()});
      bytes += shape;
    }
    plan.Models.push_back(model);
  }
  WriteBytes(folder / "KoreaObj.HDR", DirectoryBytes(plan));
  WriteBytes(folder / "KoreaObj.LOD", bytes);
}

/// A line forward of that many feet, that many feet high.
inline std::string LineShape(float forward, float height = 0) {
  return ShapeBytes(Root({{0, 0, -height}, {forward, 0, -height}}, {Polygon({0, 1}, 1)}));
}

}  // namespace kestrel::test
