#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "theaters/theater.h"

// The rules of the catalogue: which bullseye counts, file names of a theater, adding and deleting.
namespace kestrel::theaters {

/// The current bullseye as it stands in the list, or one without a name in the middle of the map when the theater has
/// none (an index out of range counts as none).
Bullseye CurrentBullseyePlace(const Theater& theater);
/// The place of the current bullseye with Y turned over: Size - Y.
DownPoint CurrentBullseye(const Theater& theater);

/// Extent that a theater gets when its file has none that can be used, map units.
inline constexpr double DefaultSize = 1024;

/// Puts right what would divide by zero or point nowhere: a Size or PicSize that is not above 0 or not finite becomes
/// DefaultSize; CurrentBull outside Bulls becomes 1 (0 without bullseyes). True when something had to be changed.
bool MendTheater(Theater& theater);

/// The data files beside the theater's settings file and picture, by what follows "<Name>": the order of deletion.
inline constexpr std::array<std::string_view, 9> DataFileEnds = {
    "_Areas.dat",     "_Elevation.dat",     "_ViewShort.dat",      "_Frequencies.dat",    "_Areas.rescue",
    "_Areas.dat.old", "_ViewShort.dat.old", "_Frequencies.rescue", "_Frequencies.dat.old"};
/// The one way from a theater's Name to a data file: `<Name>` + `end`, relative to Theaters. `Name` as it stands, so
/// that a "/" in it makes a folder step; but what no file name may hold (double quote | > < ? * : and what does not
/// print), a slash at the beginning and a step ".." become "_".
std::string DataFile(const Theater& theater, std::string_view end);

/// `name` without the characters that no file name may hold (double quote | > < ? * : \ / and what does not print);
/// "New" when nothing remains. The name of a device ("con", "com1") gets a "_" behind it.
std::string CleanFileName(std::string_view name);
/// The stem for a new file in `folder`: the cleaned name, with "(" n ")" behind it for the lowest n from 1 whose file
/// does not exist when the plain one does. `end` is ".ini" or ".gif"; each is counted on its own.
std::string NewFileName(const std::filesystem::path& folder, std::string_view name, std::string_view end);

/// True for the name of a file that stays in the folder of the theaters: relative, without a drive, and with no more
/// steps ".." than have led down before.
bool StaysInFolder(std::string_view name);

/// What the person enters about a theater.
struct TheaterDetails {
  std::string DisplayName;
  double Size = 0;       ///< map units
  double CoordLat = 0;   ///< degrees north
  double CoordLong = 0;  ///< degrees east
};

/// Largest extent of a theater, map units.
inline constexpr double MaxSize = 8192;
/// Most characters of a new theater's name: file names are made from it.
inline constexpr std::size_t MaxNameLength = 100;
/// How far from the corner of the map a bullseye may lie, map units.
inline constexpr double MaxBullseyeDistance = 100000;

/// Why the details cannot be taken, as a text for the person; nothing when they can. `shown` is what the person was
/// shown of something that is stored already: a number that still stands is not judged, and the name makes no file.
std::optional<std::string> Objection(const TheaterDetails& details, const std::optional<TheaterDetails>& shown = {});
std::optional<std::string> Objection(const Bullseye& bullseye, const std::optional<Bullseye>& shown = {});
/// True for a place on the earth; longitudes may count to either side or all the way round.
bool IsCorner(double lat, double longitude);

/// The theater that the details make, not in a catalogue yet: Name as typed, one bullseye "Default" that is current,
/// file names that no file in `folder` has. Its PicSize is to be set with its picture.
Theater NewTheater(const TheaterDetails& details, double bullX, double bullY, const std::filesystem::path& folder);
/// Takes the details over. Name and file names stay.
void ApplyDetails(Theater& theater, const TheaterDetails& details);
/// Appends a theater; the current one stays current. RuntimeFailure, with nothing changed, when 16 bits cannot point at
/// it.
void AppendTheater(Catalogue& catalogue, Theater theater);

/// Appends a bullseye and makes it current. RuntimeFailure, with nothing changed, when 16 bits cannot point at it.
void AddBullseye(Theater& theater, Bullseye bullseye);
/// Takes out bullseye `row`, which is not the current one; a CurrentBull above it goes down by one.
void RemoveBullseye(Theater& theater, std::size_t row);
/// Takes out theater `row`, which is not the current one; a CurrentTheater above it goes down by one. Its files in
/// `folder` (settings file, picture, data files, in this order) are deleted where they exist; a name that leaves
/// `folder` is left alone, and so is a file that a theater which stays uses too. Returns the names of the files that
/// could not be deleted.
std::vector<std::string> RemoveTheater(Catalogue& catalogue, std::size_t row, const std::filesystem::path& folder);

}  // namespace kestrel::theaters
