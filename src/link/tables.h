#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/colour.h"
#include "base/steady_table.h"
#include "base/table.h"
#include "link/callsigns.h"
#include "link/position_text.h"
#include "link/snapshot_names.h"

// The tables that the map draws and the tapes keep. A map unit is 3279.98 feet (the system's kilometre).
namespace kestrel::link {

/// Feet to the map unit. Not the exact kilometre; tapes and displays made with another value do not match.
inline constexpr double FeetPerMapUnit = 3279.98;
/// Map units to the nautical mile.
inline constexpr double MapUnitsPerMile = 1.852;

/// A position, map units, Y growing north.
struct PlotPoint {
  double X = 0;
  double Y = 0;
};

/// One real player. What each message of a position looks at stands together: a cycle goes over all of them, and the
/// memory of a thousand is more than the nearest cache holds.
struct PlotRecord {
  double X = 0;                    ///< map units from the west edge
  double Y = 0;                    ///< map units from the south edge, growing north
  base::Table<PlotPoint> History;  ///< all earlier positions of the session, oldest first, slot 0 unused
  PositionText PosText;            ///< X and Y one update earlier; empty until the first INDATA
  std::int16_t Altitude = 0;       ///< hundreds of feet
  std::int16_t Speed = 0;          ///< knots
  std::int16_t Id = 0;             ///< session number
  std::int16_t ClientId = 0;       ///< same as Id; not 0 marks a live record
  bool ShowLabel = false;
  bool ShowAllHistory = false;
  bool PlotVisible = false;  ///< true from the start for a player; the dummy has it false
  base::Colour Color = 0;
  std::uint32_t Reserved1 = 0;  ///< carried on tapes
  std::uint32_t Reserved2 = 0;  ///< carried on tapes
  std::string Status;           ///< "O", "X", "-"
  std::string Label;            ///< callsign beside the plot
  std::string Name;             ///< player name, trimmed
  std::string Info;             ///< third field of NEWCLT and PLSUPD, kept as received
};

/// One AI aircraft of the latest snapshot.
struct AIPlotRecord {
  std::string Name;           ///< 10 characters, blank padded, as received
  double Bearing = 0;         ///< degrees from the bullseye
  double Range = 0;           ///< nautical miles from the bullseye
  std::int16_t Altitude = 0;  ///< hundreds of feet
  float X = 0;                ///< map units from the west edge
  float Y = 0;                ///< map units from the NORTH edge, growing downward
  std::uint8_t Hostile = 0;   ///< 1 when the name is not on FriendlyList
};

/// One dot of an AI trail.
struct AIHistoryPoint {
  float X = 0;           ///< as in AIPlotRecord
  float Y = 0;           ///< as in AIPlotRecord
  std::uint8_t Age = 0;  ///< 1 for the latest
  base::Colour Color = 0;
};

/// How many clients at the beginning and at the end of Clients are as they were, each in its order.
struct UntouchedClients {
  std::size_t Front = 0;
  std::size_t Back = 0;
};

/// The real players with an index from Id to the first slot that holds it, so that a message costs the same however
/// many there are. Change Id, Name and Status only through the roster's procedures.
struct Tables {
  base::SteadyTable<PlotRecord> Clients;
  base::Table<AIPlotRecord> AIPlots;
  base::Table<AIHistoryPoint> AIHistory;
  base::Table<std::string> FriendlyList;  ///< names that count as friendly, slot 0 unused
  Callsigns Given;                        ///< callsigns and colours that come back with their players
  SnapshotNames LastSnapshot;             ///< what the next one may have in common with it

  /// Index in Clients of the first record with this Id, 0 when none: what a scan from slot 1 finds.
  std::size_t FindClient(std::int16_t id) const;
  /// To be called after Clients has been changed other than by the procedures here.
  void RebuildIndex();
  /// To be called after a record has been appended.
  void IndexLast();
  /// To be called after Name or Status of a client has changed.
  void Touch(std::size_t index);
  /// Takes out the client at `index`, which FindClient has given.
  void TakeOut(std::size_t index);
  /// Another number when clients may have gone, moved or got other histories; appending a client or a point keeps it.
  std::uint64_t Edition() const { return edition; }
  /// Empties Clients, AIPlots and AIHistory, neither FriendlyList nor Given.
  void Clear();

  /// What the list of the clients need not look at: untouched since this was last asked. One asks, the model of the
  /// list.
  UntouchedClients TakeUntouched();

 private:
  /// The places in Clients of the records with one Id, 0 for none.
  struct Holders {
    std::uint32_t First = 0;
    std::uint32_t Last = 0;
  };
  Holders& HoldersOf(std::int16_t id);
  void IndexClient(std::size_t index);

  std::vector<Holders> holders;           ///< by Id + 32768; empty until first used
  std::vector<std::uint32_t> nextHolder;  ///< by place: that of the next record with the same Id, 0 for none
  UntouchedClients untouched;
  std::uint64_t edition = 0;
};

/// The time of the server's cycle.
struct SyncTimes {
  std::int32_t SyncInterval = 0;  ///< milliseconds between the last two SYNCRO
  std::uint32_t SyncLast = 0;     ///< tick count, milliseconds
  std::uint32_t SyncNow = 0;      ///< tick count, milliseconds
};

}  // namespace kestrel::link
