#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include "base/picture.h"
#include "core/program.h"
#include "theaters/catalogue.h"
#include "theaters/theater_map_file.h"

// What the windows of the theaters and bullseyes do when a button is pressed: they ask, tell what cannot be done, and
// refresh what a change touches. A file that cannot be read changes nothing.
namespace kestrel::core {

/// What the details of a theater hand over on OK.
struct TheaterEdit {
  std::size_t Index = 0;  ///< in the catalogue; 0 makes a new theater
  theaters::TheaterDetails Details;
  std::optional<theaters::TheaterDetails> Shown;  ///< what the person was shown of a stored theater before the edit
  theaters::Bullseye Default;                     ///< the bullseye of a new theater; its name is not used
  base::Picture Held;  ///< becomes the theater's picture; an empty one leaves the picture as it is
};

/// Stores the picture and the details. False when they cannot be taken: a box has told why, nothing has changed.
/// ReloadEditedTheater is to follow once the window has closed.
bool StoreTheater(Program& program, const TheaterEdit& edit);
/// Asks and deletes theater `row` with its files, then saves the list without it. False when it stays.
bool DeleteTheater(Program& program, std::size_t row);

/// The picture `name` of a theater. Nothing when there is none, or after the box that says it cannot be loaded.
std::optional<base::Picture> OpenStoredPicture(Program& program, const std::string& name);
/// The picture in `file`, made square. Nothing after the box that says it cannot be loaded.
std::optional<base::Picture> OpenMapImage(Program& program, const std::filesystem::path& file);
/// The corner of the map in the simulator's map file. Nothing after a box that says why.
std::optional<theaters::Corner> OpenMapFile(Program& program, const std::filesystem::path& file);

/// Stores a bullseye of the current theater; row 0 appends it and makes it current. `shown` is what the person was
/// shown of a stored one before the edit. False when it cannot be taken: a box has told why.
bool StoreBullseye(Program& program, std::size_t row, const theaters::Bullseye& bullseye,
                   const std::optional<theaters::Bullseye>& shown = {});
/// Asks and deletes bullseye `row` of the current theater. False when it stays.
bool DeleteBullseye(Program& program, std::size_t row);
/// Appends the bullseye of a campaign file, named as the file, and makes it current. False after a box that says why it
/// cannot be read.
bool AddCampaignBullseye(Program& program, const std::filesystem::path& file);

}  // namespace kestrel::core
