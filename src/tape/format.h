#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "base/table.h"
#include "link/tables.h"

// The tape file, told once: magic, header, records without gap or index, all little-endian and without padding.
// Reading, writing and stepping over all walk the same description of the fields; docs/tape-format.md shows it byte by
// byte.
namespace kestrel::tape {

inline constexpr std::string_view Magic = "TAPEv2.01";
/// Where RecordCount stands; SyncInterval follows. Both are rewritten when the tape is closed.
inline constexpr std::uint64_t RecordCountAt = 9;
/// Where the first record stands.
inline constexpr std::uint64_t FirstRecordAt = 41;

/// Bounds of what is read at all, far above every session: they keep a damaged tape from filling the memory.
inline constexpr std::uint64_t MaxRecordBytes = std::uint64_t{256} << 20;
inline constexpr std::int32_t MaxSlots = 1 << 18;  ///< of AI and of Clients, with slot 0

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
  double BullX = 0;               ///< of the current bullseye at the start, map units, as in theaters::Bullseye
  double BullY = 0;               ///< as in theaters::Bullseye
};

/// A snapshot of the tables. Slot 0 of each is the dummy, recorded like the others.
struct TapeRecord {
  double Time = 0;  ///< days since 1899-12-30, local
  base::Table<link::AIPlotRecord> AI;
  base::Table<link::PlotRecord> Clients;
};

// The description. `io` decides what becomes of a field: Number (integers and floating point, in the width of their
// type), Flag (16 bits, 0 or -1), Text (16-bit length and characters), Points (array of positions), Array (array of
// elements, each walked by the function given).

template <class Io, class Header>
void HeaderFields(Io& io, Header& header) {
  io.Number(header.RecordCount);
  io.Number(header.SyncInterval);
  io.Number(header.StartTime);
  io.Number(header.BullX);
  io.Number(header.BullY);
}

template <class Io, class Plot>
void AIFields(Io& io, Plot& plot) {
  io.Text(plot.Name);
  io.Number(plot.Bearing);
  io.Number(plot.Range);
  io.Number(plot.Altitude);
  io.Number(plot.X);
  io.Number(plot.Y);
  io.Number(plot.Hostile);
}

template <class Io, class Client>
void ClientFields(Io& io, Client& client) {
  io.Text(client.Status);
  io.Number(client.Id);
  io.Text(client.Info);
  io.Number(client.X);
  io.Number(client.Y);
  io.Text(client.PosText);
  io.Number(client.Color);
  io.Number(client.Altitude);
  io.Number(client.Reserved1);
  io.Number(client.Reserved2);
  io.Flag(client.ShowLabel);
  io.Flag(client.ShowAllHistory);
  io.Flag(client.PlotVisible);
  io.Number(client.ClientId);
  io.Text(client.Label);
  io.Text(client.Name);
  io.Number(client.Speed);
  io.Points(client.History);
}

/// `ai` and `clients` are the two tables of a record, wherever they live.
template <class Io, class Time, class AI, class Clients>
void RecordFields(Io& io, Time& time, AI& ai, Clients& clients) {
  io.Number(time);
  io.Array(ai, [](auto& fields, auto& plot) { AIFields(fields, plot); });
  io.Array(clients, [](auto& fields, auto& client) { ClientFields(fields, client); });
}

}  // namespace kestrel::tape
