#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/colour.h"
#include "map/aircraft.h"
#include "map/extras.h"
#include "map/geometry.h"
#include "map/renderer.h"
#include "map/snapshot_tracks.h"

// Where one aircraft is seen from another: lines between two of them that the person has tied, and from each player to
// the nearest hostile AI aircraft. They follow the tables before each draw and are drawn with what moves.
namespace kestrel::map {

/// How many there can be.
inline constexpr std::size_t MostTies = 8;

struct Tie {
  Aircraft First, Second;
};

/// A line that is drawn, with its text at the middle.
struct CallLine {
  MapPoint From, To;
  std::string Text;
  base::Colour Color = 0;
  bool Shown = true;  ///< false while one of its aircraft is not
};

struct Ties {
  std::vector<Tie> All;            ///< at most MostTies
  std::optional<Aircraft> Picked;  ///< the first of a tie, while the second is awaited
  bool PickedShown = false;
  std::optional<Aircraft> Ringed;  ///< the one that was looked for, until EndRing
  SnapshotTracks Tracks;
  std::int32_t Record = 0;        ///< of the tape, that Tracks have last seen
  double SnapshotTime = 0;        ///< of the record of the last snapshot, days
  double Cycle = 0;               ///< milliseconds between the last two snapshots; 0 while that is not known
  std::vector<CallLine> Lines;    ///< of All, in its order
  std::vector<CallLine> Threats;  ///< one for each player with a hostile aircraft near him
  base::Colour Color = 0;         ///< of the marks around Picked and Ringed
};

/// Like "BRAA 284/38, 25 000, hot": from the first place to the second in whole degrees and nautical miles, the
/// second's feet, and its aspect towards the first.
std::string CallText(const ViewState& view, MapPoint first, MapPoint second, const CallFacts& facts);
/// "hot" up to 30 degrees between its track and the way to the first, "flank" to 60, "beam" to 120, "drag" beyond.
/// "manoeuvring" without a track, and where both are at one place.
std::string_view AspectOf(MapPoint first, MapPoint second, std::optional<double> track);

/// How long an AI aircraft has taken from the last snapshot but one to the last.
struct SnapshotTimes {
  double SyncInterval = 0;  ///< milliseconds between the server's last two cycles, by which players' speeds go too
  double RecordTime = 0;    ///< days: of the record of the tape that is on show
};

/// Takes the tables as they are now. `record`: of the tape that is on show, 0 without one; after a jump in it nobody
/// has a track until the next. Returns a line for the log for each tie that has ended because one of its aircraft is
/// gone.
std::vector<std::string> FollowTies(const Scene& scene, const Extras& extras, std::int32_t record, Ties& ties,
                                    SnapshotTimes times = {});

/// What a press with Ctrl has done.
struct TiePress {
  bool Taken = false;     ///< there was an aircraft or a text
  std::string Note = {};  ///< a line for the log, if any
};
/// On an aircraft it picks it, or ties the picked one to it; the picked one itself is let go. Where several are it
/// means the nearest that is not picked yet. On the text of a tie, where no aircraft is, it takes the tie away.
/// FollowTies is due then.
TiePress PressTies(const Scene& scene, Surface& surface, SurfacePoint at, Ties& ties);
/// Takes all away, and what is picked. False when there was nothing.
bool ClearTies(Ties& ties);

/// The lines of `scene.Tied`.
void DrawTies(const Scene& scene, Surface& surface);

}  // namespace kestrel::map
