// Reading and saving the settings at the start and at the end, with many theaters and behind a main file of many lines:
// both grow with the bytes. Ratios against fewer, from one run; a walk over the lines for each key would square them.
// The saving waits for the disk once for each theater file, so that its ratio is as steady as the disk.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "core/settings.h"
#include "core/theater_data.h"
#include "timing.h"

namespace {

namespace fs = std::filesystem;
using namespace kestrel;
using namespace bench;

/// A program folder with so many theaters, and further lines in the section that names them.
void Fill(const fs::path& folder, int theaters, int lines) {
  fs::create_directories(folder / "Theaters");
  std::ofstream ini(folder / "KESTREL.ini", std::ios::binary);
  ini << "[MAPS]\nCURRENTMAP=1\n";
  for (int n = 1; n <= lines; ++n) ini << "OTHER" << n << "=1\n";
  ini << "TOTALMAPS=" << theaters << '\n';
  for (int n = 1; n <= theaters; ++n) {
    const std::string name = "t" + std::to_string(n) + ".ini";
    ini << "MAP" << n << '=' << name << '\n';
    std::ofstream(folder / "Theaters" / name, std::ios::binary)
        << "[MAP]\nNAME=t" << n << "\nDISPLNAME=Theater\nPIC=t.png\nSIZE=1024\nPICSIZE=1024\nBULLSEYES=0\n";
  }
}

struct Cost {
  double Load = 0;
  double Save = 0;
};

Cost Measure(const fs::path& folder, int theaters, int lines, int rounds) {
  std::vector<double> loads, saves;
  for (int round = 0; round < rounds; ++round) {
    fs::remove_all(folder);
    Fill(folder, theaters, lines);
    core::Station station;
    station.AppPath = folder;
    loads.push_back(Milliseconds([&] { core::LoadSavedVars(station); }));
    saves.push_back(Milliseconds([&] { core::SaveAll(station); }));
  }
  fs::remove_all(folder);
  return {Median(loads), Median(saves)};
}

void Print(const char* what, const Cost& cost, const Cost& few) {
  std::printf("  %-34s read %8.1f ms, ratio %6.2f   saved %8.1f ms, ratio %6.2f\n", what, cost.Load,
              cost.Load / few.Load, cost.Save, cost.Save / few.Save);
}

}  // namespace

int main() {
  const fs::path folder = fs::temp_directory_path() / ("kestrel-bench-settings-" + std::to_string(getpid()));
  const Cost few = Measure(folder, 1000, 0, 5);
  std::printf("settings (against 1,000 theaters):\n");
  Print("1,000 theaters", few, few);
  Print("8,000 theaters", Measure(folder, 8000, 0, 3), few);
  const Cost lines = Measure(folder, 1, 20'000, 5);
  std::printf("settings (against 20,000 lines):\n");
  Print("1 theater, 20,000 lines beside it", lines, lines);
  Print("1 theater, 200,000 lines beside it", Measure(folder, 1, 200'000, 3), lines);
  return 0;
}
