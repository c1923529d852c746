#include "falcon/terrain_blocks.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/bytes.h"
#include "base/files.h"
#include "base/positioned_file.h"

namespace kestrel::falcon {
namespace {

constexpr std::size_t Side = 16;  // posts of a block
constexpr std::size_t BlockPosts = Side * Side;
constexpr std::size_t SmallPost = 7, LargePost = 9;
/// Tiles that are counted apart; a theater has some thousands.
constexpr std::size_t MostTilesCounted = 1 << 16;

struct Post {
  std::uint32_t Tile = 0;
  std::int16_t Height = 0;
};

/// Where the blocks are and how large.
struct Blocks {
  std::vector<std::uint32_t> Offsets;  // in rows from the south, each from the west
  std::size_t PostBytes = 0;
};

std::vector<std::uint32_t> ReadOffsets(const TerrainMap& map, const DataFile& table) {
  const std::size_t count = std::size_t{map.Levels[2].Width} * map.Levels[2].Height;
  if (table.Bytes.size() != count * 4) {
    RefuseFile(table.Name, "its " + Told(table.Bytes.size()) + " bytes are not " + Told(count) + " blocks");
  }
  std::vector<std::uint32_t> offsets(count);
  base::BinaryReader reader(table.Bytes);
  for (std::uint32_t& offset : offsets) offset = reader.U32();
  return offsets;
}

/// The bytes of a post, or nothing when the blocks do not fit the file of that size in either way.
std::optional<std::size_t> FindPostBytes(const std::vector<std::uint32_t>& offsets, std::uint64_t fileBytes,
                                         bool large) {
  const std::uint64_t last = *std::max_element(offsets.begin(), offsets.end());
  const auto fits = [&](std::size_t post) {
    const std::size_t block = BlockPosts * post;
    return last + block <= fileBytes &&
           std::all_of(offsets.begin(), offsets.end(), [block](std::uint32_t at) { return at % block == 0; });
  };
  for (const std::size_t post : {SmallPost, LargePost}) {
    if (fits(post) && last + BlockPosts * post == fileBytes) return post;
  }
  const std::size_t told = large ? LargePost : SmallPost;
  return fits(told) ? std::optional(told) : std::nullopt;
}

/// Reads the posts of a theater, a block at a time.
class PostFile {
 public:
  PostFile(const TerrainMap& map, const DataFile& table, const std::filesystem::path& path)
      : file(path, base::PositionedFile::Mode::Read), offsets(ReadOffsets(map, table)), width(map.Levels[2].Width) {
    const std::optional<std::size_t> found = FindPostBytes(offsets, file.Size(), map.LargePosts);
    if (!found) RefuseFile(table.Name, "its blocks lie outside of " + Name() + ", or across each other");
    postBytes = *found;
    bytes.resize(BlockPosts * postBytes);
  }

  std::size_t BlockCount() const { return offsets.size(); }
  bool Large() const { return postBytes == LargePost; }
  /// Hands each post of a block to `take` with its column and row in the theater.
  template <class Take>
  void Read(std::size_t block, const Take& take) {
    if (file.Read(offsets[block], bytes) != bytes.size()) RefuseFile(Name(), "block " + Told(block) + " is cut");
    base::BinaryReader reader(bytes);
    const std::size_t left = block % width * Side, lower = block / width * Side;
    for (std::size_t n = 0; n < BlockPosts; ++n) {
      Post post;
      post.Tile = Large() ? reader.U32() : reader.U16();
      post.Height = reader.I16();
      reader.Skip(3);  // colour, normal
      take(left + n % Side, lower + n / Side, post);
    }
  }

 private:
  std::string Name() const { return base::NameForMessage(file.Path()); }

  base::PositionedFile file;
  std::vector<std::uint32_t> offsets;
  std::size_t width = 0;
  std::size_t postBytes = 0;
  std::vector<std::byte> bytes;
};

/// What the tiles of all posts tell before the sea is sought.
class TileCount {
 public:
  void Add(const Post& post) {
    smallest = std::min(smallest, post.Tile);
    if (post.Height != 0) return;
    // Seas are large: the next post mostly has the tile of the last.
    if (lastCount && post.Tile == lastTile) {
      ++*lastCount;
      return;
    }
    if (atZero.size() >= MostTilesCounted && !atZero.contains(post.Tile)) return;
    lastTile = post.Tile;
    lastCount = &++atZero[post.Tile];
  }
  std::uint32_t Smallest() const { return smallest; }
  /// The tile that most posts of height 0 have, the smallest of several; nothing when there is no such post.
  std::optional<std::uint32_t> CommonestAtZero() const {
    std::optional<std::uint32_t> tile;
    std::uint64_t most = 0;
    for (const auto& [candidate, count] : atZero) {
      if (count > most || (count == most && candidate < *tile)) {
        tile = candidate;
        most = count;
      }
    }
    return tile;
  }

 private:
  std::uint32_t smallest = std::numeric_limits<std::uint32_t>::max();
  std::unordered_map<std::uint32_t, std::uint64_t> atZero;
  std::uint32_t lastTile = 0;
  std::uint64_t* lastCount = nullptr;
};

/// Tells which posts are sea.
class SeaRule {
 public:
  SeaRule(const TileCount& count, const TileSets* sets, bool large) : commonest(count.CommonestAtZero()), tiles(sets) {
    if (!tiles || !commonest) return;
    // Of large posts it is not settled from where their tiles are counted.
    const Numbering tried[] = {{large ? count.Smallest() : 0, large}, {0, large}};
    const auto found = std::find_if(std::begin(tried), std::end(tried),
                                    [this](const Numbering& way) { return IsWater(*commonest, way); });
    if (found != std::end(tried)) numbering = *found;
  }

  bool IsSea(const Post& post) const {
    if (numbering) return IsWater(post.Tile, *numbering);
    return post.Height == 0 && post.Tile == commonest;
  }

 private:
  struct Numbering {
    std::uint32_t First = 0;
    bool Large = false;
  };

  bool IsWater(std::uint32_t tile, const Numbering& way) const {
    // The upper bits of a small post's tile are its resolution.
    const std::uint32_t set = way.Large ? (tile - way.First) / 16 : tile >> 4 & 0xFF;
    return set < tiles->Kinds.size() && tiles->Kinds[set] == TileSets::Water;
  }

  std::optional<std::uint32_t> commonest;
  const TileSets* tiles;
  std::optional<Numbering> numbering;
};

}  // namespace

Terrain ReadTerrainBlocks(const TerrainMap& map, const DataFile& table, const std::filesystem::path& posts,
                          const TileSets* tiles, const Progress& progress) {
  PostFile file(map, table, posts);
  const std::uint64_t blocks = file.BlockCount(), width = map.Levels[2].Width;
  const auto tell = [&](std::uint64_t done) {
    if (progress && done % width == 0) progress(done, 2 * blocks);
  };
  TileCount count;
  for (std::size_t block = 0; block < blocks; ++block) {
    file.Read(block, [&](std::size_t, std::size_t, const Post& post) { count.Add(post); });
    tell(block + 1);
  }
  const bool tilesNamed = map.LastNearLevel >= 2;
  const SeaRule rule(count, tilesNamed ? tiles : nullptr, file.Large());
  Terrain terrain = FlatTerrain(map.Size());
  for (std::size_t block = 0; block < blocks; ++block) {
    file.Read(block, [&](std::size_t x, std::size_t y, const Post& post) {
      const std::size_t cell = y * (width * Side) + x;
      terrain.Heights[cell] = post.Height;
      terrain.Sea[cell] = rule.IsSea(post) ? 1 : 0;
    });
    tell(blocks + block + 1);
  }
  FindExtremes(terrain);
  return terrain;
}

}  // namespace kestrel::falcon
