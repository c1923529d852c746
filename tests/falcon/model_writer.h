#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/little_endian.h"

// The directory of models, written from a plan of it.
namespace kestrel::test {

struct DetailPlan {
  std::uint32_t Number = 0;
  float Range = 0;
};

struct ModelPlan {
  float Radius = 0;
  /// Least and most of x, then y, then z.
  std::array<float, 6> Box = {-1, 1, -1, 1, -1, 1};
  unsigned Slots = 0;
  std::vector<std::array<float, 3>> Dynamic{};
  std::vector<DetailPlan> Details{};
};

struct DirectoryPlan {
  std::uint32_t Version = 0x03087000;
  unsigned Colours = 3, Palettes = 1, Textures = 2;
  std::size_t TextureBytes = 40, PlaceBytes = 20;
  std::size_t NameBytes = 0;  ///< before each reference to a shape
  /// Offset and size of each shape.
  std::vector<std::array<std::uint64_t, 2>> Places{};
  std::vector<ModelPlan> Models{};
};

inline std::string DirectoryBytes(const DirectoryPlan& plan) {
  const auto count = [](std::size_t number) { return Bytes4(static_cast<std::int64_t>(number)); };
  std::string bytes = Bytes4(plan.Version) + Bytes4(plan.Colours) + Bytes4(1);
  bytes += std::string(std::size_t{16} * plan.Colours, '\x11') + Bytes4(plan.Palettes);
  bytes += std::string(std::size_t{1032} * plan.Palettes, '\x12') + Bytes4(plan.Textures);
  if (plan.Textures > 0) bytes += Bytes4(65536);
  bytes += std::string(plan.TextureBytes * plan.Textures, '\x13');
  bytes += Bytes4(4321) + count(plan.Places.size());
  for (const auto& place : plan.Places) {
    bytes += std::string(12, '\x14');
    for (const std::uint64_t number : place) bytes += Bytes8(number).substr(0, plan.PlaceBytes == 28 ? 8 : 4);
  }
  bytes += count(plan.Models.size());
  for (const ModelPlan& model : plan.Models) {
    bytes += BytesF32(model.Radius);
    for (const float side : model.Box) bytes += BytesF32(side);
    bytes += BytesF32(5) + BytesF32(6) + Bytes2(1) + Bytes2(static_cast<int>(model.Dynamic.size()));
    bytes +=
        Bytes1(static_cast<unsigned>(model.Details.size())) + "\x15\x16" + Bytes1(model.Slots) + Bytes2(0) + Bytes2(0);
  }
  for (const ModelPlan& model : plan.Models) {
    if (model.Details.empty()) continue;
    bytes += std::string(std::size_t{12} * model.Slots, '\x17');
    for (const auto& point : model.Dynamic) bytes += BytesF32(point[0]) + BytesF32(point[1]) + BytesF32(point[2]);
    for (const DetailPlan& detail : model.Details) {
      bytes += std::string(plan.NameBytes, 'n') + Bytes4(std::int64_t{detail.Number} << 1 | 1) + BytesF32(detail.Range);
    }
  }
  return bytes;
}

/// Two models: one without a shape, one with a slot, two dynamic points and two shapes.
inline DirectoryPlan TwoModels() {
  DirectoryPlan plan;
  plan.Places = {{0, 100}, {100, 50}};
  plan.Models.resize(2);
  plan.Models[1].Radius = 47.5F;
  plan.Models[1].Box = {-27.75F, 36, -21.5F, 21.5F, -8.25F, 0};
  plan.Models[1].Slots = 1;
  plan.Models[1].Dynamic = {{1, 2, 3}, {4, 5, 6}};
  plan.Models[1].Details = {{1, 500}, {0, 20000}};
  return plan;
}

}  // namespace kestrel::test
