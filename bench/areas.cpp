// The file of 50,000 areas, regions of 200 segments and flight plans of 200 waypoints: loading it against a bare read
// of its bytes, both from the page cache, once into as much memory and once by pieces that are not kept; saving it
// against a bare write of as many bytes that is flushed and takes the name too; the most memory that a load takes
// against what the catalogue then holds. All ratios come from one run; each part runs in a process of its own.
#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "areas/area_file.h"
#include "base/files.h"
#include "project_paths.h"
#include "timing.h"

namespace {

namespace fs = std::filesystem;
using namespace kestrel;
using namespace bench;

constexpr int Areas = 50'000;
constexpr int Groups = 50;
constexpr int Points = 200;
constexpr int Rounds = 7;
constexpr std::size_t Chunk = 1 << 20;
/// Free space that the file, its neighbour and the bare one want.
constexpr std::uint64_t WantedSpace = std::uint64_t{3} << 30;

double sink = 0;

[[noreturn]] void Stop(const char* what) {
  std::perror(what);
  std::exit(1);
}

/// `work` in a process of its own, which begins with the little memory that this one has.
void Apart(const std::function<void()>& work) {
  std::fflush(stdout);
  const pid_t child = fork();
  if (child < 0) Stop("fork");
  if (child == 0) {
    try {
      work();
    } catch (const std::exception& failure) {
      std::printf("%s\n", failure.what());
      std::exit(1);
    }
    std::exit(sink == 0 ? 1 : 0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) std::exit(1);
}

areas::AreaCatalogue Filled(areas::AreaType type) {
  areas::AreaCatalogue catalogue;
  catalogue.AreaFolders.Append({"Folder", areas::On});
  for (int n = 0; n < Groups; ++n) {
    areas::AreaGroup& group = catalogue.AreaGroups.Append({.Name = "Group " + std::to_string(n), .FolderIndex = 1});
    for (int at = 0; at < Areas / Groups; ++at) {
      areas::Area& area = group.Areas.Append({.Name = "Area " + std::to_string(at), .Type = type});
      for (int point = 0; point < Points; ++point) {
        const double x = at + 0.25 * point, y = n + 0.5 * point;
        if (type == areas::AreaType::Region) area.Lines.Append({x, y, x + 1, y + 1});
        if (type == areas::AreaType::FlightPlan) area.Points.Append({x, y, 20000, areas::PointType::Nav});
      }
    }
  }
  return catalogue;
}

/// Reads the file into `into` from its start on, or over and over again.
void ReadBare(const fs::path& path, std::span<char> into) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) Stop("open");
  std::size_t at = 0;
  for (ssize_t count; (count = read(file, into.data() + at, into.size() - at)) != 0;) {
    if (count < 0) Stop("read");
    at += static_cast<std::size_t>(count);
    if (at == into.size()) at = 0;
  }
  sink += into[0] + 1;
  close(file);
}

void ReadByPieces(const fs::path& path) {
  // Where the system copies fastest.
  alignas(4096) static std::array<char, Chunk> chunk;
  ReadBare(path, chunk);
}

void ReadWhole(const fs::path& path, std::uint64_t bytes) {
  const std::unique_ptr<char[]> whole(new char[bytes + 1]);
  ReadBare(path, {whole.get(), bytes + 1});
}

/// As many bytes, flushed, then renamed over `path`.
void WriteBare(const fs::path& path, std::uint64_t bytes) {
  alignas(4096) static std::array<char, Chunk> chunk;
  fs::path fresh = path;
  fresh += ".fresh";
  const int file = open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (file < 0) Stop("open");
  for (std::uint64_t left = bytes; left > 0;) {
    const ssize_t count = write(file, chunk.data(), std::min<std::uint64_t>(left, Chunk));
    if (count <= 0) Stop("write");
    left -= static_cast<std::uint64_t>(count);
  }
  if (fsync(file) != 0) Stop("fsync");
  close(file);
  fs::rename(fresh, path);
}

void CompareSaving(const fs::path& path, areas::AreaType type) {
  const areas::AreaCatalogue catalogue = Filled(type);
  areas::WriteAreaFile(path, catalogue);
  const std::uint64_t bytes = fs::file_size(path);
  fs::path bare = path;
  bare += ".bare";
  std::vector<double> saving, writing, ofProcessor, ofBare;
  for (int round = 0; round < Rounds; ++round) {
    const auto save = [&] {
      ofProcessor.push_back(ProcessorMilliseconds(
          [&] { saving.push_back(Milliseconds([&] { areas::WriteAreaFile(path, catalogue); })); }));
    };
    // Neither comes first every time.
    if (round % 2 == 0) save();
    ofBare.push_back(ProcessorMilliseconds([&] { writing.push_back(Milliseconds([&] { WriteBare(bare, bytes); })); }));
    if (round % 2 != 0) save();
  }
  base::DeleteFile(bare);
  std::printf("  %.1f MB, %.0f bytes for each area\n", static_cast<double>(bytes) / 1e6,
              static_cast<double>(bytes) / Areas);
  std::printf("  saving  %8.0f ms, bare write %8.0f ms, ratio %5.2f (goal: at most 3)\n", Median(saving),
              Median(writing), Median(saving) / Median(writing));
  std::printf("    of the processor %8.0f ms and %8.0f ms, ratio %5.2f\n", Median(ofProcessor), Median(ofBare),
              Median(ofProcessor) / Median(ofBare));
  sink += 1;
}

void CompareLoading(const fs::path& path) {
  const std::uint64_t bytes = fs::file_size(path);
  ReadByPieces(path);
  std::vector<double> loading, whole, pieces;
  for (int round = 0; round < Rounds; ++round) {
    pieces.push_back(ProcessorMilliseconds([&] { ReadByPieces(path); }));
    whole.push_back(ProcessorMilliseconds([&] { ReadWhole(path, bytes); }));
    // Freeing it again is no part of loading; what has been freed is given back, as where nothing was loaded before.
    areas::AreaFile file;
    malloc_trim(0);
    loading.push_back(ProcessorMilliseconds([&] { file = areas::ReadAreaFile(path, areas::AreaFileKind::Theater); }));
    sink += static_cast<double>(file.AreaGroups.UpperBound());
  }
  std::printf("  loading %8.0f ms of the processor\n", Median(loading));
  std::printf("    bare read into as much memory %8.0f ms, ratio %5.2f (goal: at most 3)\n", Median(whole),
              Median(loading) / Median(whole));
  std::printf("    bare read, nothing kept       %8.0f ms, ratio %5.2f\n", Median(pieces),
              Median(loading) / Median(pieces));
}

double HeldMegabytes() {
  const struct mallinfo2 held = mallinfo2();
  return static_cast<double>(held.uordblks + held.hblkhd) / 1e6;
}

double PeakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) * 1024 / 1e6;
}

void CompareMemory(const fs::path& path) {
  const double heldBefore = HeldMegabytes(), peakBefore = PeakMegabytes();
  const areas::AreaFile file = areas::ReadAreaFile(path, areas::AreaFileKind::Theater);
  const double held = HeldMegabytes() - heldBefore, peak = PeakMegabytes() - peakBefore;
  sink += static_cast<double>(file.AreaGroups.UpperBound());
  std::printf("  peak memory of the load %.1f MB, the catalogue holds %.1f MB, ratio %.2f (goal: at most 1.3)\n", peak,
              held, peak / held);
  std::printf("  %.0f bytes of memory for each area\n", held * 1e6 / Areas);
}

void PrintLoad() {
  double load[3] = {};
  if (getloadavg(load, 3) == 3) std::printf("load average %.2f %.2f %.2f\n", load[0], load[1], load[2]);
}

}  // namespace

/// The files lie in the folder that the command line names, or beside the program.
int main(int argc, char** argv) {
  const fs::path place = argc > 1 ? argv[1] : KESTREL_BINARY_DIR;
  if (base::FreeSpace(place).value_or(0) < WantedSpace) {
    std::printf("%s has too little room\n", place.c_str());
    return 1;
  }
  const fs::path path = place / ("bench-areas-" + std::to_string(getpid()));
  PrintLoad();
  for (const areas::AreaType type : {areas::AreaType::Region, areas::AreaType::FlightPlan}) {
    std::printf("%d areas, each a %s with %d points\n", Areas, areas::ShapeToText(type).c_str(), Points);
    Apart([&] { CompareSaving(path, type); });
    Apart([&] { CompareLoading(path); });
    Apart([&] { CompareMemory(path); });
  }
  base::DeleteFile(path);
  PrintLoad();
  return 0;
}
