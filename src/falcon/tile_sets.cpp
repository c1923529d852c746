#include "falcon/tile_sets.h"

#include "base/bytes.h"

namespace kestrel::falcon {
namespace {

constexpr std::size_t SetBytes = 5;  // that a set begins with
constexpr std::size_t SetNameBytes = 20;
constexpr std::size_t TileBytes = SetNameBytes + 8;
constexpr std::size_t AreaBytes = 16, PathBytes = 24;

/// Goes over a tile with its areas and paths; false when the file ends within it.
bool SkipTile(base::BinaryReader& reader) {
  if (reader.Left() < TileBytes) return false;
  reader.Skip(SetNameBytes);
  const std::uint64_t areas = reader.U32();
  const std::uint64_t paths = reader.U32();
  const std::uint64_t bytes = areas * AreaBytes + paths * PathBytes;
  if (bytes > reader.Left()) return false;
  reader.Skip(static_cast<std::size_t>(bytes));
  return true;
}

}  // namespace

TileSets ReadTileSets(const DataFile& file) {
  if (file.Bytes.size() < 8) RefuseFile(file.Name, "it ends within its numbers of sets and tiles");
  base::BinaryReader reader(file.Bytes);
  const std::uint32_t sets = reader.U32();
  TileSets found;
  found.TileCount = reader.U32();
  if (sets > reader.Left() / SetBytes) RefuseFile(file.Name, "it is too short for " + Told(sets) + " sets");
  std::uint64_t tiles = 0;
  for (std::uint32_t set = 0; set < sets; ++set) {
    const auto refuse = [&] { RefuseFile(file.Name, "set " + Told(set) + " of " + Told(sets) + " is cut"); };
    if (reader.Left() < SetBytes) refuse();
    const std::uint32_t count = reader.U32();
    found.Kinds.push_back(reader.U8());
    tiles += count;
    for (std::uint32_t tile = 0; tile < count; ++tile) {
      if (!SkipTile(reader)) refuse();
    }
  }
  if (reader.Left() > 0) RefuseFile(file.Name, "it goes on behind its last set");
  if (tiles != found.TileCount) {
    RefuseFile(file.Name, "its sets have " + Told(tiles) + " tiles and not " + Told(found.TileCount));
  }
  return found;
}

}  // namespace kestrel::falcon
