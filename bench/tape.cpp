// A tape of 45 minutes: 64 players, 400 AI aircraft, a record a second, about 4 GB. Appending a record against a bare
// write of the same bytes; finding all records against reading the file once, both from the page cache; showing a
// record at the start, in the middle and at the end against a bare read of its bytes; and the most memory that it took.
// The tape is deleted afterwards. All ratios come from one run.
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "base/files.h"
#include "link/tables.h"
#include "project_paths.h"
#include "tape/reader.h"
#include "tape/record_writer.h"
#include "tape/recorder.h"
#include "timing.h"

namespace {

namespace fs = std::filesystem;
using namespace kestrel;
using namespace bench;

constexpr int Records = 45 * 60;
constexpr int Players = 64;
constexpr int AIAircraft = 400;
constexpr double Start = 46347.25;
constexpr double Second = 1 / 86400.0;
/// Free space that the tape and the bare files beside it want.
constexpr std::uint64_t WantedSpace = std::uint64_t{5} << 30;
constexpr int Rounds = 9;

double sink = 0;

/// Megabytes of 10^6.
double Megabytes(std::uint64_t bytes) { return static_cast<double>(bytes) / 1e6; }

double PeakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) * 1024 / 1e6;
}

[[noreturn]] void Stop(const char* what) {
  std::perror(what);
  std::exit(1);
}

/// A plain file of the system, to compare with.
class BareFile {
 public:
  BareFile(const fs::path& path, int flags) : descriptor(open(path.c_str(), flags | O_CLOEXEC, 0666)) {
    if (descriptor < 0) Stop("open");
  }
  ~BareFile() { close(descriptor); }
  BareFile(const BareFile&) = delete;
  BareFile& operator=(const BareFile&) = delete;

  void Append(const std::string& bytes) const {
    if (write(descriptor, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) Stop("write");
  }
  std::size_t Read(std::uint64_t position, std::span<char> into) const {
    const ssize_t count = pread(descriptor, into.data(), into.size(), static_cast<off_t>(position));
    if (count < 0) Stop("read");
    return static_cast<std::size_t>(count);
  }

 private:
  int descriptor;
};

/// The tables of a session, moved on by a cycle at a time.
class World {
 public:
  World() {
    for (int n = 1; n <= AIAircraft; ++n) {
      link::AIPlotRecord& plot = Tables.AIPlots.Append({});
      plot.Name = "Viper" + std::to_string(n);
      plot.Name.resize(10, ' ');
    }
    for (int n = 1; n <= Players; ++n) {
      link::PlotRecord& client = Tables.Clients.Append({});
      client.Status = "O";
      client.Id = client.ClientId = static_cast<std::int16_t>(n);
      client.Info = "information";
      client.PosText = "0300.0000400.000";
      client.Label = "Airplane " + std::to_string(n);
      client.Name = "Pilot " + std::to_string(n);
    }
  }

  void Step() {
    ++cycle;
    for (link::AIPlotRecord& plot : Tables.AIPlots.Live()) plot.Bearing = cycle % 360;
    for (link::PlotRecord& client : Tables.Clients.Live()) {
      client.History.Append({client.X, client.Y});
      client.X = 512 + 200 * std::cos(0.01 * cycle + client.Id);
      client.Y = 512 + 200 * std::sin(0.01 * cycle + client.Id);
    }
  }
  double Now() const { return Start + cycle * Second; }

  link::Tables Tables;

 private:
  int cycle = 0;
};

std::string Joined(std::span<std::span<const std::byte>> pieces) {
  std::string bytes;
  for (const auto& piece : pieces) bytes.append(reinterpret_cast<const char*>(piece.data()), piece.size());
  return bytes;
}

/// Around these records appending is compared; the first ones are small, the last ones mostly histories.
constexpr int Compared[] = {50, 675, 1350, 2025, Records - 1};
constexpr int ComparedTurns = 41;

/// Fills the tape and prints what appending costs. In turns the record goes to the tape and its bytes to a bare file.
fs::path MakeTape(const fs::path& folder) {
  World world;
  tape::Recorder recorder;
  tape::RecordWriter writer;
  recorder.RecordingStart(folder, Start, {.SyncInterval = 1000, .BullX = 512, .BullY = 512});
  const BareFile bare(folder / "bare", O_WRONLY | O_CREAT | O_TRUNC);
  std::printf("appending a record (medians of %d):\n", ComparedTurns);
  std::printf("  record        bytes   bare write     building    appending   ratio (goal: at most 1.2)\n");
  std::vector<double> building, appending, writing;
  for (int n = 1; n <= Records; ++n) {
    world.Step();
    const auto append = [&] { recorder.ComputeRecData(world.Tables, world.Now(), 1000); };
    const auto* const at = std::find_if(std::begin(Compared), std::end(Compared),
                                        [n](int record) { return n <= record && n > record - ComparedTurns; });
    if (at == std::end(Compared)) {
      append();
      continue;
    }
    building.push_back(Milliseconds([&] { writer.Record(world.Now(), world.Tables); }));
    const std::string bytes = Joined(writer.Record(world.Now(), world.Tables));
    // Neither comes first every time.
    if (n % 2 == 0) appending.push_back(Milliseconds(append));
    writing.push_back(Milliseconds([&] { bare.Append(bytes); }));
    if (n % 2 != 0) appending.push_back(Milliseconds(append));
    if (n != *at) continue;
    std::printf("  %6d %12zu %9.4f ms %9.4f ms %9.4f ms %7.2f\n", n, bytes.size(), Median(writing), Median(building),
                Median(appending), Median(appending) / Median(writing));
    building.clear();
    appending.clear();
    writing.clear();
  }
  recorder.RecordingEnd(1000);
  base::DeleteFile(folder / "bare");
  return recorder.Path();
}

std::vector<std::uint64_t> Index(tape::TapeReader& reader) {
  std::vector<std::uint64_t> positions;
  std::uint64_t at = tape::FirstRecordAt;
  for (std::int32_t n = 0; n < reader.Header().RecordCount; ++n) {
    positions.push_back(at);
    at = reader.Skip(at).Next;
  }
  positions.push_back(at);
  return positions;
}

/// Reads the file from its start to its end, a megabyte at a time.
void ReadOnce(const BareFile& file) {
  // Where the system copies fastest.
  alignas(4096) static std::array<char, 1 << 20> chunk;
  std::uint64_t at = 0;
  while (const std::size_t count = file.Read(at, chunk)) {
    at += count;
    sink += chunk[0];
  }
}

void CompareIndexing(const fs::path& path) {
  const BareFile bare(path, O_RDONLY);
  ReadOnce(bare);
  std::vector<double> reading, indexing;
  for (int round = 0; round < Rounds; ++round) {
    reading.push_back(ProcessorMilliseconds([&] { ReadOnce(bare); }));
    indexing.push_back(ProcessorMilliseconds([&] {
      tape::TapeReader reader(path);
      sink += static_cast<double>(Index(reader).size());
    }));
  }
  std::printf("finding all records (processor time, medians of %d):\n", Rounds);
  std::printf("  reading the file once %8.1f ms\n  indexing              %8.1f ms\n", Median(reading),
              Median(indexing));
  std::printf("  ratio                 %8.2f   (goal: at most 0.5)\n", Median(indexing) / Median(reading));
}

/// What showing takes from the file: the record, and the time of the next one.
void Show(tape::TapeReader& reader, const std::vector<std::uint64_t>& positions, std::size_t n) {
  sink += reader.ReadRecord(positions[n]).Time;
  if (n + 2 < positions.size()) sink += reader.ReadTime(positions[n + 1]);
}

void CompareShowing(const fs::path& path, const char* title) {
  const BareFile bare(path, O_RDONLY);
  ReadOnce(bare);
  tape::TapeReader reader(path);
  const std::vector<std::uint64_t> positions = Index(reader);
  const std::size_t records = positions.size() - 1;
  std::printf(
      "%s (processor time, medians of 101):\n  record     position        bytes    bare read      showing   ratio\n",
      title);
  for (const std::size_t n : {records / 100, records / 4, records / 2, 3 * records / 4, records - 1}) {
    std::vector<char> bytes(positions[n + 1] - positions[n]);
    std::vector<double> reading, showing;
    for (int round = 0; round < 101; ++round) {
      reading.push_back(ProcessorMilliseconds([&] { sink += static_cast<double>(bare.Read(positions[n], bytes)); }));
      showing.push_back(ProcessorMilliseconds([&] { Show(reader, positions, n); }));
    }
    std::printf("  %6zu %12llu %12zu %9.4f ms %9.4f ms %7.2f\n", n + 1, static_cast<unsigned long long>(positions[n]),
                bytes.size(), Median(reading), Median(showing), Median(showing) / Median(reading));
  }
}

/// A tape whose records are all of one size: what is left is where they lie.
fs::path MakeEvenTape(const fs::path& folder) {
  World world;
  for (int n = 0; n < 500; ++n) world.Step();
  tape::Recorder recorder;
  recorder.RecordingStart(folder, Start + 1, {.SyncInterval = 1000});
  for (int n = 0; n < 600; ++n) recorder.ComputeRecData(world.Tables, Start + 1 + n * Second, 1000);
  recorder.RecordingEnd(1000);
  return recorder.Path();
}

void PrintLoad() {
  double load[3] = {};
  if (getloadavg(load, 3) == 3) std::printf("load average %.2f %.2f %.2f\n", load[0], load[1], load[2]);
}

void Measure(const fs::path& folder) {
  PrintLoad();
  const fs::path path = MakeTape(folder);
  const std::uint64_t bytes = fs::file_size(path);
  std::printf("tape of %d records, %d players, %d AI aircraft: %.1f MB\n", Records, Players, AIAircraft,
              Megabytes(bytes));
  CompareIndexing(path);
  CompareShowing(path, "showing a record: it grows with the histories in it");
  base::DeleteFile(path);
  const fs::path even = MakeEvenTape(folder);
  CompareShowing(even, "showing one of records of one size: the same wherever it lies");
  std::printf("peak memory %.1f MB, %.2f %% of the tape\n", PeakMegabytes(), 100 * PeakMegabytes() / Megabytes(bytes));
  PrintLoad();
}

}  // namespace

/// The tape lies in the folder that the command line names, or beside the program.
int main(int argc, char** argv) {
  const fs::path place = argc > 1 ? argv[1] : KESTREL_BINARY_DIR;
  const std::uint64_t space = base::FreeSpace(place).value_or(0);
  if (space < WantedSpace) {
    std::printf("%.0f MB are free in %s; the tape wants %.0f MB\n", Megabytes(space), place.c_str(),
                Megabytes(WantedSpace));
    return 1;
  }
  const fs::path folder = place / ("bench-tape-" + std::to_string(getpid()));
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
