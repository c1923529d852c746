#pragma once

#include <filesystem>
#include <span>
#include <string_view>
#include <vector>

#include "base/changed.h"
#include "core/program.h"
#include "core/tell.h"

// The data that each theater has in files of its own, beside its picture and its settings file: one row for each kind.
namespace kestrel::core {

struct TheaterData {
  std::string_view What;  ///< for the log, when it is left out
  /// Gives the station the current theater's. A RuntimeFailure leaves it with what a theater without the file has.
  /// null: the kind is not there yet, its row holds its place.
  void (*Load)(Program&) = nullptr;
  /// Writes the current theater's; null: the station does not change it.
  void (*Save)(Station&) = nullptr;
  std::string_view Kept = What;                  ///< for the person, when it cannot be saved
  base::Changed Shows = base::Changed::Nothing;  ///< the views that show it
};

/// A file of the current theater: `<Name>` + `ending` below Theaters. A "/" in the theater's name makes a folder.
std::filesystem::path DataPath(const Station& station, std::string_view ending);

/// In the order of loading and saving.
std::span<const TheaterData> TheaterDataRows();

/// Loads every kind. One that cannot be read is logged and costs itself alone. Returns what shows them.
base::Changed LoadTheaterData(Program& program);

/// Writes what a crash would lose of the areas and of the frequencies (core/rescue.h): to be called each second or so.
void RescueChanges(Program& program);

/// Reads the heights of the current theater unless that has been done: to be called when the pointer moves over the
/// map. A file that cannot be read is logged and gives none.
void ReadElevations(Program& program);

/// Saves the data of the current theater, kind by kind, then the settings. Returns what failed; the others have been
/// tried. Of a folder that the start has told cannot be written the settings alone are told.
std::vector<Unsaved> SaveAll(Station& station);

}  // namespace kestrel::core
