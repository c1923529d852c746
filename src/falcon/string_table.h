#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::falcon {

/// Numbered texts of the simulator, as bytes of the code page.
class StringTable {
 public:
  /// The text of that number; empty when there is none.
  std::string_view operator[](std::size_t number) const;
  /// One more than the highest number.
  std::size_t Count() const { return places.size(); }
  /// How many could not be had: a place outside the texts, an end before its beginning, a line without a number.
  std::size_t Damaged() const { return damaged; }

 private:
  friend StringTable ReadStringTable(std::string_view index, std::string texts);
  friend StringTable ReadStringLines(std::string_view lines);
  struct Place {
    std::uint32_t From = 0;
    std::uint32_t Length = 0;
  };
  std::string content;
  std::vector<Place> places;
  std::size_t damaged = 0;
};

/// Largest pair of files that is read; offsets of 16 bits reach no further than 64 KB.
inline constexpr std::size_t MaxStringFileBytes = std::size_t{1} << 20;

/// Reads the pair ".idx" and ".wch". RuntimeFailure when the index is shorter than it tells.
StringTable ReadStringTable(std::string_view index, std::string texts);

/// Reads "Strings.txt": a number of 16 bits, a tab or a blank, and the text on each line. The last of two texts of one
/// number counts.
StringTable ReadStringLines(std::string_view lines);

/// The names of the theater's objectives: `theater`.idx with its .wch, else DEFAULT.idx. Nothing when neither is there.
/// RuntimeFailure, naming the file, when it is damaged.
std::optional<StringTable> LoadTheaterNames(const std::filesystem::path& campaignFolder, std::string_view theater);

/// The general strings: Strings.idx with its .wch, or Strings.txt, which took its place. Nothing when neither is there.
/// RuntimeFailure as LoadTheaterNames.
std::optional<StringTable> LoadGeneralStrings(const std::filesystem::path& campaignFolder);

/// Where the general strings begin that name countries and types of objectives, by their numbers.
inline constexpr std::size_t FirstCountryString = 40;
inline constexpr std::size_t FirstObjectiveTypeString = 500;

}  // namespace kestrel::falcon
