#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The simulator's list of theaters ("theater.lst") and the definition of each (".tdf").
namespace kestrel::falcon {

/// A definition as it is written: paths are relative to the simulator's data folder, with either slash, and empty when
/// the definition does not tell them.
struct TheaterDefinition {
  std::string Name;  ///< for the list that the user picks from; never the name of a file
  std::string Desc;
  std::string Bitmap;
  std::string CampaignDir;
  std::string TerrainDir;
  std::string ArtDir;
  std::string MovieDir;
  std::string UiSoundDir;
  std::string ObjectDir;
  std::string MiscTexDir;
  std::string ThreeDDataDir;
  std::int16_t MinTacan = 0;  ///< 0 as well for what is no number of 16 bits
  std::string SoundDir;
  std::string SpecialDbDir;
  std::string TileSet;
  std::string SimDataDir;
};

/// A text of a definition and the word that it stands behind, in lower case.
struct DefinitionKey {
  std::string_view Word;
  std::string TheaterDefinition::*Text;
};
/// All keys that are read, but for "mintacan".
std::span<const DefinitionKey> DefinitionKeys();

inline constexpr std::size_t MaxDefinitionBytes = std::size_t{1} << 20;

/// Reads a definition: a word, blanks and its value on each line. Empty lines, comments ("#") and words that are not
/// known are skipped; of two lines with one word the last counts. Any text is a definition, if an empty one.
TheaterDefinition ReadTheaterDefinition(std::string_view text);

/// The definitions that a list of theaters names, as they are written, in the order of the list.
std::vector<std::string> ReadTheaterList(std::string_view text);

}  // namespace kestrel::falcon
