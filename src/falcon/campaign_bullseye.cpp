#include "falcon/campaign_bullseye.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/bytes.h"
#include "base/failure.h"
#include "falcon/lzss.h"

namespace kestrel::falcon {
namespace {

/// Largest description that is unpacked; the largest known has 32 KB.
constexpr std::size_t MaxDescriptionBytes = 1 << 20;
constexpr std::int16_t SmallestTheater = 64;
constexpr std::int16_t LargestTheater = 8192;

/// The unpacked description. The packed size at its head counts differently from version to version, so it is left out.
std::string Description(const CampaignFile& file) {
  const std::optional<std::string_view> piece = file.Piece("cmp");
  if (!piece) throw base::RuntimeFailure("it holds no description of a campaign");
  base::BinaryReader head(*piece);
  head.Skip(4);
  const std::int32_t size = head.I32();
  return ExpandLzss(piece->substr(8), size, MaxDescriptionBytes);
}

/// What stands before the size of the theater, by the version that brought it.
std::size_t TheaterSizeOffset(int version) {
  std::size_t offset = 4;                   // time
  if (version >= 48) offset += 8;           // start and time limit
  if (version >= 50) offset += 4;           // victory points
  if (version >= 52) offset += 1888;        // type, teams, aircraft, points, flags, names and mottoes
  if (version >= 19) offset += 4;           // last major event
  constexpr std::size_t fromResupply = 26;  // last resupply to brief
  return offset + fromResupply;
}

bool IsTheaterSize(std::int16_t size) { return size >= SmallestTheater && size <= LargestTheater; }

}  // namespace

CampaignBullseye ReadCampaignBullseye(const CampaignFile& file) {
  // All versions that a file without one is known to have share a layout.
  constexpr int usualVersion = 63;
  const std::string description = Description(file);
  base::BinaryReader block(description);
  block.Skip(TheaterSizeOffset(file.DataVersion().value_or(usualVersion)));
  const std::int16_t width = block.I16();
  const std::int16_t height = block.I16();
  block.Skip(8);  // day, teams, result, experience, name of the bullseye
  CampaignBullseye bullseye;
  bullseye.X = block.I16();
  bullseye.Y = block.I16();
  if (!IsTheaterSize(width) || !IsTheaterSize(height)) throw base::RuntimeFailure("its theater has an impossible size");
  if (bullseye.X < 0 || bullseye.X >= width || bullseye.Y < 0 || bullseye.Y >= height) {
    throw base::RuntimeFailure("its bullseye lies outside the theater");
  }
  return bullseye;
}

}  // namespace kestrel::falcon
