// Loading and saving the frequencies of a theater with 10,000 airfields and 20,000 entries in one folder, and with
// twice as many. Against a bare loop that finds line ends and "=" in the same bytes; the peak of memory against the
// file. What is written to the disk is not timed: that is the disk's. Ratios from one run.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/files.h"
#include "base/profile_file.h"
#include "radio/frequency_file.h"

namespace {

namespace fs = std::filesystem;
using namespace kestrel;

constexpr int Rounds = 15;

/// Of the processor's time, which other programs do not lengthen.
double Milliseconds(const std::function<void()>& work) {
  const std::clock_t start = std::clock();
  work();
  return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// What the work takes when nothing else is in its way.
double Least(const std::vector<double>& values) { return *std::min_element(values.begin(), values.end()); }

radio::Frequencies Tables(std::size_t airfields, std::size_t entries) {
  radio::Frequencies tables;
  radio::FreqFolder& folder = tables.FreqFolders.Append({"Package", {}});
  for (std::size_t j = 1; j <= entries; ++j) {
    folder.Entries.Append({"Flight " + std::to_string(j), std::to_string(225000 + 25 * (j % 6000))});
  }
  for (std::size_t i = 1; i <= airfields; ++i) {
    radio::Airfield& airfield = tables.Airfields.Append({});
    airfield.Name = "Airfield " + std::to_string(i);
    airfield.UHF = "292300";
    airfield.VHF = "126500";
    airfield.TACAN = "075";
    airfield.TACAN_BAND = "X";
    airfield.TACANX = static_cast<double>(i % 1024) + 0.5;
    airfield.TACANY = static_cast<double>(i % 997) + 0.5;
    airfield.TACANR = 150;
    airfield.TEAM_INDEX = static_cast<std::uint8_t>(i % 8);
    airfield.VIS = airfield.TACAN_VIS = i % 2 == 0;
    airfield.ILS = {"11030", "-", "10930", "10810"};
    airfield.ILS_DES = {"36L", "18R", "36R", "18L"};
    for (std::size_t k = 0; k < radio::RunwayEndCount; ++k) {
      airfield.ILS_R[k] = {airfield.TACANX + 1.23456 * static_cast<double>(k), airfield.TACANY - 0.54321};
      airfield.ILS_DRAW_HEADING[k] = 53.1301 + 7.77 * static_cast<double>(i % 40);
    }
  }
  return tables;
}

/// What any reader has to do: where each line ends and where its "=" stands.
std::size_t BareLoop(const std::string& text) {
  std::size_t sum = 0, lineAt = 0, equalsAt = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '=' && equalsAt < lineAt) equalsAt = at;
    if (text[at] != '\n') continue;
    sum += equalsAt - lineAt;
    lineAt = at + 1;
    equalsAt = 0;
  }
  return sum;
}

radio::Frequencies Load(const fs::path& path) {
  std::vector<std::string> notes;
  return radio::ReadFrequencies(base::ProfileFile::Load(path), notes);
}

struct Cost {
  double Bare = 0, Load = 0, Save = 0;  ///< milliseconds
  double Bytes = 0;
};

Cost Measure(const fs::path& path, std::size_t airfields, std::size_t entries) {
  const radio::Frequencies tables = Tables(airfields, entries);
  const std::string text = radio::WriteFrequencies(tables);
  base::WriteWholeFile(path, text);
  std::vector<double> bare, load, save;
  volatile std::size_t kept = 0;
  for (int round = 0; round < Rounds; ++round) {
    bare.push_back(Milliseconds([&] { kept = kept + BareLoop(text); }));
    load.push_back(Milliseconds([&] { kept = kept + Load(path).Airfields.UpperBound(); }));
    save.push_back(Milliseconds([&] { kept = kept + radio::WriteFrequencies(tables).size(); }));
  }
  return {Least(bare), Least(load), Least(save), static_cast<double>(text.size())};
}

/// Runs `work` in a process of its own; the most memory that it had, bytes.
double PeakBytes(const std::function<void()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    work();
    _exit(0);
  }
  int status = 0;
  rusage usage = {};
  if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0) return 0;
  return static_cast<double>(usage.ru_maxrss) * 1024;
}

}  // namespace

int main() {
  const fs::path path = fs::temp_directory_path() / ("kestrel-bench-radio-" + std::to_string(getpid()));
  // In processes of their own, before this one has memory that a child would find free.
  PeakBytes([&] { base::WriteWholeFile(path, radio::WriteFrequencies(Tables(10'000, 20'000))); });
  const double peak = PeakBytes([&] { Load(path); }) - PeakBytes([] {});
  const Cost one = Measure(path, 10'000, 20'000);
  const Cost twice = Measure(path, 20'000, 40'000);
  fs::remove(path);
  std::printf("frequencies (%.1f MB; a bare loop over it %.2f ms):\n", one.Bytes / 1e6, one.Bare);
  std::printf("  load %8.2f ms, ratio to the bare loop %6.2f (at most 10)\n", one.Load, one.Load / one.Bare);
  std::printf("  save %8.2f ms, ratio to the bare loop %6.2f (at most 5)\n", one.Save, one.Save / one.Bare);
  std::printf("  twice as many (%.1f MB): load ratio %.2f, save ratio %.2f (at most 2.2)\n", twice.Bytes / 1e6,
              twice.Load / one.Load, twice.Save / one.Save);
  std::printf("  peak of memory %.1f MB, ratio to the file %.2f (at most 8)\n", peak / 1e6, peak / one.Bytes);
  return 0;
}
