// What the import of a theater costs. A terrain of 4096 by 4096 map units is read, painted in bands and its heights
// written, by the processor's time against `gdaldem color-relief` on the same grid, where that program is there; the
// GIF apart. Then the memory that a height map of 2 GB takes beside what is kept of it.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/file_replacement.h"
#include "base/files.h"
#include "base/picture.h"
#include "falcon/colour_bands.h"
#include "falcon/height_map.h"
#include "falcon/terrain_files.h"
#include "theaters/elevation_file.h"

namespace {

namespace fs = std::filesystem;
using namespace kestrel;

constexpr int Side = 4096;
constexpr int Bands = 32;
constexpr int Rounds = 5;
constexpr std::int64_t LargeSide = 32768;

std::size_t sink = 0;

/// Seconds of the processor, of this process or of those that it has waited for.
double ProcessorSeconds(int who) {
  rusage usage{};
  getrusage(who, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double Least(int who, const std::function<void()>& work) {
  double least = 1e9;
  for (int round = 0; round < Rounds; ++round) {
    const double start = ProcessorSeconds(who);
    work();
    least = std::min(least, ProcessorSeconds(who) - start);
  }
  return least;
}

/// Hills of several sizes with a sea at 0.
void WriteGrid(const fs::path& folder) {
  std::string bytes;
  bytes.reserve(std::size_t{2} * Side * Side);
  unsigned random = 1;
  for (int y = 0; y < Side; ++y) {
    for (int x = 0; x < Side; ++x) {
      random = random * 1664525u + 1013904223u;
      const int coarse = std::abs((x * 7 + y * 3) % 8000 - 4000) + std::abs((y * 5 - x) % 6000 - 3000);
      const int height = std::max(0, coarse - 2500 + static_cast<int>(random >> 26));
      bytes += static_cast<char>(height);
      bytes += static_cast<char>(height >> 8);
    }
  }
  base::MakeFolder(folder / "terrain");
  base::WriteWholeFile(folder / "terrain" / "TERRAIN.BIL", bytes);
  base::WriteWholeFile(folder / "terrain" / "TERRAIN.HDR",
                       "BYTEORDER I\nLAYOUT BIL\nNROWS 4096\nNCOLS 4096\nNBANDS 1\nNBITS 16\nPIXELTYPE SIGNEDINT\n");
}

falcon::ColourScheme Scheme() {
  falcon::ColourScheme scheme{0xFFC821, {}};
  for (int n = 1; n <= Bands; ++n) {
    scheme.Bands.push_back({static_cast<base::Colour>(n * 0x070503), static_cast<std::int16_t>(n * 140)});
  }
  return scheme;
}

/// Nothing when the program is not there.
double ColourRelief(const fs::path& folder) {
  std::ofstream colours(folder / "colours.txt");
  colours << "0 33 200 255\n";
  for (int n = 1; n <= Bands; ++n) colours << n * 140 << ' ' << n * 3 << ' ' << n * 5 << ' ' << n * 7 << '\n';
  colours.close();
  const std::string command = "gdaldem color-relief -q '" + (folder / "terrain" / "TERRAIN.BIL").string() + "' '" +
                              (folder / "colours.txt").string() + "' '" + (folder / "relief.tif").string() +
                              "' >/dev/null 2>&1";
  if (std::system(command.c_str()) != 0) return 0;
  return Least(RUSAGE_CHILDREN, [&] { sink += std::system(command.c_str()) == 0 ? 1 : 0; });
}

void MeasureImport(const fs::path& folder) {
  WriteGrid(folder);
  const falcon::TerrainFiles files = falcon::FindTerrainFiles(folder, "");
  const falcon::ColourScheme scheme = Scheme();
  falcon::TheaterGround ground;
  falcon::GroundPicture picture;
  const double import = Least(RUSAGE_SELF, [&] {
    ground = falcon::ReadTheaterGround(files, {}, {});
    picture = falcon::PaintGround(ground.Heights, scheme, {});
    base::FileReplacement file(folder / "heights.dat");
    theaters::WriteElevations(file, ground.Heights.Heights, {});
    file.Commit();
    sink += picture.Cells[Side] + 1;
  });
  const double shaded = Least(RUSAGE_SELF, [&] {
    sink += falcon::PaintGround(ground.Heights, {scheme.Sea, scheme.Bands, true}, {}).Cells[Side];
  });
  const double gif = Least(RUSAGE_SELF, [&] {
    base::FileReplacement file(folder / "picture.gif");
    base::WriteGif(picture.Size, picture.Cells, picture.Palette,
                   [&](std::span<const std::byte> piece) { sink += piece.size(); });
  });
  std::printf(
      "theater of %d by %d: read, painted and heights written in %.0f ms; its GIF %.0f ms; painted with shades "
      "in %.0f ms\n",
      Side, Side, import * 1e3, gif * 1e3, shaded * 1e3);
  const double relief = ColourRelief(folder);
  if (relief > 0) {
    std::printf("gdaldem color-relief of the same grid: %.0f ms; the import takes %.2f of that\n", relief * 1e3,
                import / relief);
  } else {
    std::printf("gdaldem is not there: nothing to compare with\n");
  }
}

/// In a process of its own, before anything else has been held.
void MeasureHeightMap(const fs::path& folder) {
  const fs::path file = folder / "HeightMap.raw";
  std::ofstream(file, std::ios::binary).close();
  fs::resize_file(file, std::uintmax_t{2} * LargeSide * LargeSide);
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    const falcon::Terrain terrain = falcon::ReadHeightMap(file, Side, {});
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const double kept = static_cast<double>(terrain.Heights.size() * 2 + terrain.Sea.size()) / 1e6;
    std::printf("height map of 2 GB (%lld by %lld): at most %.0f MB held, of which %.0f MB are the result; %.0f ms\n",
                static_cast<long long>(LargeSide), static_cast<long long>(LargeSide),
                static_cast<double>(usage.ru_maxrss) * 1024 / 1e6, kept, ProcessorSeconds(RUSAGE_SELF) * 1e3);
    std::fflush(stdout);
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  fs::remove(file);
  if (status != 0) throw base::RuntimeFailure("the height map could not be read");
}

}  // namespace

int main() {
  const fs::path folder = fs::temp_directory_path() / ("kestrel-bench-import-" + std::to_string(std::time(nullptr)));
  int result = 0;
  try {
    base::MakeFolder(folder);
    MeasureHeightMap(folder);
    MeasureImport(folder);
  } catch (const std::exception& failure) {
    std::printf("%s\n", failure.what());
    result = 1;
  }
  std::error_code ignored;
  fs::remove_all(folder, ignored);
  return sink == 0 ? 1 : result;
}
