#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/little_endian.h"
#include "link/tables.h"

// A second, independent writer of tapes: bytes put one behind the other as docs/tape-format.md shows them, with nothing
// of the room's own description.
namespace kestrel::test {

inline std::string TapeFlag(bool value) { return value ? "\xFF\xFF" : std::string(2, '\0'); }
inline std::string TapeText(std::string_view text) { return Bytes2(static_cast<int>(text.size())) + std::string(text); }
/// Dimensions, elements, lower bound.
inline std::string TapeArray(std::int64_t elements) { return Bytes2(1) + Bytes4(elements) + Bytes4(0); }

inline std::string GoldenHeader(std::int32_t RecordCount, std::int32_t SyncInterval, double StartTime, double BullX,
                                double BullY) {
  return "TAPEv2.01" + Bytes4(RecordCount) + Bytes4(SyncInterval) + BytesF64(StartTime) + BytesF64(BullX) +
         BytesF64(BullY);
}

inline std::string GoldenAI(const link::AIPlotRecord& plot) {
  return TapeText(plot.Name) + BytesF64(plot.Bearing) + BytesF64(plot.Range) + Bytes2(plot.Altitude) +
         BytesF32(plot.X) + BytesF32(plot.Y) + Bytes1(plot.Hostile);
}

inline std::string GoldenClient(const link::PlotRecord& client) {
  std::string bytes = TapeText(client.Status) + Bytes2(client.Id) + TapeText(client.Info) + BytesF64(client.X) +
                      BytesF64(client.Y) + TapeText(client.PosText) + Bytes4(client.Color) + Bytes2(client.Altitude) +
                      Bytes4(client.Reserved1) + Bytes4(client.Reserved2) + TapeFlag(client.ShowLabel) +
                      TapeFlag(client.ShowAllHistory) + TapeFlag(client.PlotVisible) + Bytes2(client.ClientId) +
                      TapeText(client.Label) + TapeText(client.Name) + Bytes2(client.Speed);
  bytes += TapeArray(static_cast<std::int64_t>(client.History.UpperBound()) + 1);
  for (const link::PlotPoint& point : client.History.Slots()) bytes += BytesF64(point.X) + BytesF64(point.Y);
  return bytes;
}

inline std::string GoldenRecord(double Time, const link::Tables& tables) {
  std::string bytes = BytesF64(Time) + TapeArray(static_cast<std::int64_t>(tables.AIPlots.UpperBound()) + 1);
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
