#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

#include "link/tables.h"

// A second, independent writer of tapes: bytes put one behind the other as docs/tape-format.md shows them, with nothing
// of the room's own description.
namespace kestrel::test {

inline std::string Bytes8(std::uint64_t value) {
  std::string bytes;
  for (int n = 0; n < 8; ++n) bytes.push_back(static_cast<char>(value >> (8 * n) & 0xFF));
  return bytes;
}
inline std::string TapeU8(unsigned value) { return Bytes8(value).substr(0, 1); }
inline std::string Tape16(int value) { return Bytes8(static_cast<std::uint64_t>(value)).substr(0, 2); }
inline std::string Tape32(std::int64_t value) { return Bytes8(static_cast<std::uint64_t>(value)).substr(0, 4); }
inline std::string TapeF32(float value) { return Tape32(std::bit_cast<std::uint32_t>(value)); }
inline std::string TapeF64(double value) { return Bytes8(std::bit_cast<std::uint64_t>(value)); }
inline std::string TapeFlag(bool value) { return value ? "\xFF\xFF" : std::string(2, '\0'); }
inline std::string TapeText(std::string_view text) { return Tape16(static_cast<int>(text.size())) + std::string(text); }
/// Dimensions, elements, lower bound.
inline std::string TapeArray(std::int64_t elements) { return Tape16(1) + Tape32(elements) + Tape32(0); }

inline std::string GoldenHeader(std::int32_t RecordCount, std::int32_t SyncInterval, double StartTime, double BullX,
                                double BullY) {
  return "TAPEv2.01" + Tape32(RecordCount) + Tape32(SyncInterval) + TapeF64(StartTime) + TapeF64(BullX) +
         TapeF64(BullY);
}

inline std::string GoldenAI(const link::AIPlotRecord& plot) {
  return TapeText(plot.Name) + TapeF64(plot.Bearing) + TapeF64(plot.Range) + Tape16(plot.Altitude) + TapeF32(plot.X) +
         TapeF32(plot.Y) + TapeU8(plot.Hostile);
}

inline std::string GoldenClient(const link::PlotRecord& client) {
  std::string bytes = TapeText(client.Status) + Tape16(client.Id) + TapeText(client.Info) + TapeF64(client.X) +
                      TapeF64(client.Y) + TapeText(client.PosText) + Tape32(client.Color) + Tape16(client.Altitude) +
                      Tape32(client.Reserved1) + Tape32(client.Reserved2) + TapeFlag(client.ShowLabel) +
                      TapeFlag(client.ShowAllHistory) + TapeFlag(client.PlotVisible) + Tape16(client.ClientId) +
                      TapeText(client.Label) + TapeText(client.Name) + Tape16(client.Speed);
  bytes += TapeArray(static_cast<std::int64_t>(client.History.UpperBound()) + 1);
  for (const link::PlotPoint& point : client.History.Slots()) bytes += TapeF64(point.X) + TapeF64(point.Y);
  return bytes;
}

inline std::string GoldenRecord(double Time, const link::Tables& tables) {
  std::string bytes = TapeF64(Time) + TapeArray(static_cast<std::int64_t>(tables.AIPlots.UpperBound()) + 1);
  for (const link::AIPlotRecord& plot : tables.AIPlots.Slots()) bytes += GoldenAI(plot);
  bytes += TapeArray(static_cast<std::int64_t>(tables.Clients.UpperBound()) + 1);
  for (const link::PlotRecord& client : tables.Clients.Slots()) bytes += GoldenClient(client);
  return bytes;
}

/// A session of `players` players and `ai` AI aircraft after `cycles` cycles, every field with a value of its own.
inline link::Tables SampleTables(int players, int ai, int cycles) {
  link::Tables tables;
  tables.AIPlots[0].Name = "dummy";
  tables.Clients[0].Label = "slot 0";
  tables.Clients[0].X = 0.5;
  for (int n = 1; n <= ai; ++n) {
    link::AIPlotRecord& plot = tables.AIPlots.Append({});
    plot.Name = "Viper" + std::to_string(n);
    plot.Name.resize(10, ' ');
    plot.Bearing = (37 * n + cycles) % 360;
    plot.Range = 10 + n;
    plot.Altitude = static_cast<std::int16_t>(10 * n - 5);
    plot.X = 100.5F + static_cast<float>(n);
    plot.Y = 200.25F - static_cast<float>(cycles);
    plot.Hostile = n % 2 == 0;
  }
  for (int n = 1; n <= players; ++n) {
    link::PlotRecord& client = tables.Clients.Append({});
    client.Status = n % 2 == 0 ? "X" : "O";
    client.Id = static_cast<std::int16_t>(n == 1 ? -7 : 100 + n);
    client.Info = "info " + std::to_string(n);
    client.X = 300 + n + cycles;
    client.Y = 400.125 - cycles;
    client.PosText = "0300.0000400.000";
    client.Color = 0x00804020U + static_cast<std::uint32_t>(n);
    client.Altitude = static_cast<std::int16_t>(-3 + 100 * n);
    client.Reserved1 = 0xFEDCBA98U;
    client.Reserved2 = static_cast<std::uint32_t>(n);
    client.ShowLabel = n % 2 == 1;
    client.ShowAllHistory = n % 3 == 0;
    client.PlotVisible = n % 4 != 0;
    client.ClientId = client.Id;
    client.Label = "Airplane " + std::to_string(n);
    client.Name = "Pilot " + std::to_string(n);
    client.Speed = static_cast<std::int16_t>(400 + n);
    for (int at = 0; at < cycles; ++at) client.History.Append({300.0 + n + at, 400.125 - at});
  }
  return tables;
}

}  // namespace kestrel::test
