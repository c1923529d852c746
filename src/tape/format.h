#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/failure.h"
#include "base/record.h"
#include "base/table.h"
#include "link/tables.h"

// The tape file, told once: magic, header, records without gap or index, all little-endian and without padding.
// Reading, writing and stepping over all walk the same description of the fields (base/record.h); docs/tape-format.md
// shows it byte by byte.
namespace kestrel::tape {

inline constexpr std::string_view Magic = "TAPEv2.01";
/// Where RecordCount stands; SyncInterval follows. Both are rewritten when the tape is closed.
inline constexpr std::uint64_t RecordCountAt = 9;
/// Where the first record stands.
inline constexpr std::uint64_t FirstRecordAt = 41;

/// Bounds of what is read at all, far above every session: they keep a damaged tape from filling the memory.
inline constexpr std::uint64_t MaxRecordBytes = std::uint64_t{256} << 20;
inline constexpr std::int32_t MaxSlots = 1 << 18;  ///< AI or Clients, with slot 0

/// The file is no tape: its first characters are not Magic.
class WrongFormat : public base::RuntimeFailure {
 public:
  using RuntimeFailure::RuntimeFailure;
};

/// What stands between the magic and the first record.
struct TapeHeader {
  std::int32_t RecordCount = 0;   ///< 0 until the tape is closed properly
  std::int32_t SyncInterval = 0;  ///< milliseconds between the last two SYNCRO
  double StartTime = 0;           ///< days since 1899-12-30, local
  double BullX = 0;               ///< the current bullseye at the start, map units, as in theaters::Bullseye
  double BullY = 0;               ///< as in theaters::Bullseye
};

/// A snapshot of the tables. Slot 0 of each is the dummy, recorded like the others.
struct TapeRecord {
  double Time = 0;  ///< days since 1899-12-30, local
  base::Table<link::AIPlotRecord> AI;
  base::Table<link::PlotRecord> Clients;
};

// The description.

// A history stands in the file as it does in memory.
static_assert(sizeof(link::PlotPoint) == 16 && offsetof(link::PlotPoint, X) == 0 && offsetof(link::PlotPoint, Y) == 8);

template <class Walk, class Header>
void HeaderFields(Walk& walk, Header& header) {
  walk.Number(header.RecordCount);
  walk.Number(header.SyncInterval);
  walk.Number(header.StartTime);
  walk.Number(header.BullX);
  walk.Number(header.BullY);
}

template <class Walk, class Plot>
void AIFields(Walk& walk, Plot& plot) {
  walk.Text(plot.Name);
  walk.Number(plot.Bearing);
  walk.Number(plot.Range);
  walk.Number(plot.Altitude);
  walk.Number(plot.X);
  walk.Number(plot.Y);
  walk.Number(plot.Hostile);
}

template <class Walk, class Client>
void ClientFields(Walk& walk, Client& client) {
  walk.Text(client.Status);
  walk.Number(client.Id);
  walk.Text(client.Info);
  walk.Number(client.X);
  walk.Number(client.Y);
  walk.Text(client.PosText.Text());
  walk.Number(client.Color);
  walk.Number(client.Altitude);
  walk.Number(client.Reserved1);
  walk.Number(client.Reserved2);
  walk.Flag(client.ShowLabel);
  walk.Flag(client.ShowAllHistory);
  walk.Flag(client.PlotVisible);
  walk.Number(client.ClientId);
  walk.Text(client.Label);
  walk.Text(client.Name);
  walk.Number(client.Speed);
  walk.Block(base::Bounded(), client.History);
}

/// `ai` and `clients` are the two tables of a record, wherever they live.
template <class Walk, class Time, class AI, class Clients>
void RecordFields(Walk& walk, Time& time, AI& ai, Clients& clients) {
  walk.Number(time);
  walk.Array(base::Bounded{MaxSlots}, ai, [](auto& fields, auto& plot) { AIFields(fields, plot); });
  walk.Array(base::Bounded{MaxSlots}, clients, [](auto& fields, auto& client) { ClientFields(fields, client); });
}

}  // namespace kestrel::tape
