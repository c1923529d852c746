// A tape of 100 MB: 64 players, 400 AI aircraft, a record a second. Exporting it as ACMI, as text and packed, against
// what tape-info does to tell what it holds; both from the page cache and in turns. All ratios come from one run.
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <exception>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/acmi_export.h"
#include "link/tables.h"
#include "project_paths.h"
#include "tape-info/survey.h"
#include "tape/recorder.h"
#include "timing.h"

namespace {

namespace fs = std::filesystem;
using namespace kestrel;
using namespace bench;

constexpr std::uint64_t TapeBytes = 100'000'000;
constexpr int Players = 64;
constexpr int AIAircraft = 400;
constexpr double Start = 46347.25;
constexpr double Second = 1 / 86400.0;
constexpr int Rounds = 9;

std::size_t sink = 0;

fs::path MakeTape(const fs::path& folder) {
  link::Tables tables;
  for (int n = 1; n <= AIAircraft; ++n) {
    link::AIPlotRecord& plot = tables.AIPlots.Append({});
    plot.Name = "Viper" + std::to_string(n);
    plot.Name.resize(10, ' ');
    plot.Altitude = static_cast<std::int16_t>(n);
    plot.Hostile = n % 2 == 0;
  }
  for (int n = 1; n <= Players; ++n) {
    link::PlotRecord& client = tables.Clients.Append({});
    client.Status = "O";
    client.Id = client.ClientId = static_cast<std::int16_t>(n);
    client.Info = "information";
    client.PosText = "0300.0000400.000";
    client.Label = "Airplane " + std::to_string(n);
    client.Name = "Pilot " + std::to_string(n);
    client.Altitude = static_cast<std::int16_t>(10 * n);
  }
  tape::Recorder recorder;
  recorder.RecordingStart(folder, Start, {.SyncInterval = 1000, .BullX = 512, .BullY = 512});
  for (int cycle = 1; recorder.Bytes() < TapeBytes; ++cycle) {
    float turn = 0.002F * static_cast<float>(cycle);
    for (link::AIPlotRecord& plot : tables.AIPlots.Live()) {
      plot.X = 512 + 300 * std::cos(turn += 1);
      plot.Y = 512 + 300 * std::sin(turn);
    }
    for (link::PlotRecord& client : tables.Clients.Live()) {
      client.History.Append({client.X, client.Y});
      client.X = 512 + 200 * std::cos(0.01 * cycle + client.Id);
      client.Y = 512 + 200 * std::sin(0.01 * cycle + client.Id);
    }
    recorder.ComputeRecData(tables, Start + cycle * Second, 1000);
  }
  recorder.RecordingEnd(1000);
  return recorder.Path();
}

void Export(const fs::path& tape, const fs::path& file) {
  theaters::Theater theater;
  theater.Size = 1024;
  theater.CoordLat = 34;
  theater.CoordLong = 125;
  core::AcmiExport exported(tape, file, theater);
  while (exported.Step()) {
  }
  sink += static_cast<std::size_t>(exported.Records());
}

void Measure(const fs::path& folder) {
  const fs::path tape = MakeTape(folder), text = folder / "a.txt.acmi", zip = folder / "a.zip.acmi";
  std::vector<double> telling, writing, packing;
  for (int round = 0; round < Rounds; ++round) {
    telling.push_back(ProcessorMilliseconds([&] { sink += tapeinfo::Report(tapeinfo::LookThrough(tape)).size(); }));
    writing.push_back(ProcessorMilliseconds([&] { Export(tape, text); }));
    packing.push_back(ProcessorMilliseconds([&] { Export(tape, zip); }));
  }
  const auto megabytes = [](const fs::path& path) { return static_cast<double>(fs::file_size(path)) / 1e6; };
  std::printf("tape of %.1f MB, %d players, %d AI aircraft (processor time, medians of %d)\n", megabytes(tape), Players,
              AIAircraft, Rounds);
  std::printf("  telling what it holds %8.1f ms\n", Median(telling));
  std::printf("  exporting, text       %8.1f ms, %.1f MB, ratio %.2f (goal: at most 3)\n", Median(writing),
              megabytes(text), Median(writing) / Median(telling));
  std::printf("  exporting, packed     %8.1f ms, %.1f MB, ratio %.2f\n", Median(packing), megabytes(zip),
              Median(packing) / Median(telling));
}

}  // namespace

/// The tape lies in the folder that the command line names, or beside the program.
int main(int argc, char** argv) {
  const fs::path place = argc > 1 ? argv[1] : KESTREL_BINARY_DIR;
  const fs::path folder = place / ("bench-acmi-" + std::to_string(getpid()));
  int code = 0;
  try {
    Measure(folder);
  } catch (const std::exception& failure) {
    std::printf("%s\n", failure.what());
    code = 1;
  }
  std::error_code kept;
  fs::remove_all(folder, kept);
  return sink == 0 ? 1 : code;
}
