#pragma once

#include <cstddef>
#include <optional>

#include "base/changed.h"
#include "core/program.h"
#include "map/geometry.h"

// What hangs on the current theater and the current bullseye.
namespace kestrel::core {

/// SaveAll. What cannot be saved is told in a box, unless the start has told that nothing can be.
void SaveEverything(Program& program);

/// Start: loads the current theater's picture and has EarlyWindows made beside it. RuntimeFailure when it cannot be
/// read; MapPicture is then as it was and there are no windows.
void LoadMapPicture(Program& program);

/// View whole and centred, bullseye and anchor placed, then LoadTheaterData. Returns what is to be redrawn.
base::Changed ResetTheaterData(Program& program);

/// Menu entry mnuTheatername: saves everything, then makes theater `index` the current one and shows it. When its
/// picture cannot be read a box says so and the former theater stays: a session is worth more than a picture.
void SwitchTheater(Program& program, std::size_t index);

/// What follows OK in the details of any theater: saves everything, then shows the current theater anew. When its
/// picture cannot be read a box says so and the picture on the screen stays.
void ReloadEditedTheater(Program& program);

/// Menu entry mnuBullseyesName.
base::Changed SelectBullseye(Program& program, std::size_t index);

/// Puts the bullseye at `place` (map units, Y north), or at the loaded tape's, or at the current one of the theater.
base::Changed ReloadBulls(Station& station, std::optional<map::MapPoint> place = std::nullopt);

}  // namespace kestrel::core
