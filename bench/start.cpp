// From the start of the process to the first map on the window, and the peak of memory until then: the whole station
// over the sample program folder against a program that only shows the same picture, once as a PNG and once as a JPEG
// file. Both run on the offscreen platform, turn by turn, and end themselves at that moment; the figures are the
// system's for the ended process.

#include <unistd.h>

#include <QApplication>
#include <QImage>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "child_run.h"
#include "platform/make_seams.h"
#include "shell/core/run_station.h"
#include "shell/parts/look.h"

namespace {

namespace fs = std::filesystem;
namespace bench = kestrel::bench;
using bench::Cost;

constexpr int Rounds = 21;

double Median(const std::vector<Cost>& costs, double Cost::*field) {
  std::vector<double> values;
  for (const Cost& cost : costs) values.push_back(cost.*field);
  return bench::Median(std::move(values));
}

/// A program folder with the sample theater, a copy, so that the user's settings stay as they are.
struct Folder {
  fs::path Root;
  fs::path Picture;
};

Folder SampleFolder(const fs::path& station, const fs::path& root) {
  fs::create_directories(root);
  for (const char* name : {"update.txt", "common.ini", "KESTREL.ini", "FriendlyNames.ini"}) {
    fs::copy_file(station / name, root / name);
  }
  fs::copy(station / "Theaters", root / "Theaters", fs::copy_options::recursive);
  for (const fs::directory_entry& entry : fs::directory_iterator(root / "Theaters")) {
    if (entry.path().extension() == ".png") return {root, entry.path()};
  }
  std::fprintf(stderr, "no picture in %s\n", (root / "Theaters").c_str());
  std::exit(1);
}

/// Gives the theater the same picture as a JPEG file.
void TurnIntoJpeg(Folder& folder) {
  const fs::path jpeg = fs::path(folder.Picture).replace_extension(".jpg");
  constexpr int quality = 90;
  if (!QImage(QString::fromStdString(folder.Picture.string()))
           .save(QString::fromStdString(jpeg.string()), "JPG", quality)) {
    std::fprintf(stderr, "%s cannot be written\n", jpeg.c_str());
    std::exit(1);
  }
  const fs::path theater = fs::path(folder.Picture).replace_extension(".ini");
  std::ifstream in(theater, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  const std::string former = folder.Picture.filename().string();
  text.replace(text.find(former), former.size(), jpeg.filename().string());
  std::ofstream(theater, std::ios::binary | std::ios::trunc) << text;
  fs::remove(folder.Picture);
  folder.Picture = jpeg;
}

void Compare(const char* kind, const fs::path& self, const Folder& folder, double timeGoal) {
  const std::vector<std::string> station = {self.string(), "station", folder.Root.string()};
  const std::vector<std::string> viewer = {(self.parent_path() / "start_baseline").string(), folder.Picture.string()};
  bench::RunOnce(station);
  bench::RunOnce(viewer);
  std::vector<Cost> stationCosts;
  std::vector<Cost> viewerCosts;
  for (int round = 0; round < Rounds; ++round) {
    stationCosts.push_back(bench::RunOnce(station));
    viewerCosts.push_back(bench::RunOnce(viewer));
  }
  const auto print = [&](const char* what, const char* unit, double Cost::*field, double goal) {
    const double stationCost = Median(stationCosts, field);
    const double viewerCost = Median(viewerCosts, field);
    std::printf("%-4s map  %-18s  station %7.1f %-3s   viewer %7.1f %-3s   ratio %.2f (goal %.2f)\n", kind, what,
                stationCost, unit, viewerCost, unit, stationCost / viewerCost, goal);
  };
  print("start to first map", "ms", &Cost::Milliseconds, timeGoal);
  print("peak memory", "MiB", &Cost::MiB, 1.3);
}

int RunAsStation(int argc, char** argv) {
  QApplication application(argc, argv);
  kestrel::shell::ApplyLook(application, kestrel::shell::SystemIsDark());
  // What the station's own main does.
  const auto keys = kestrel::platform::MakeGlobalKeys();
  const auto voice = kestrel::platform::MakeVoiceWindows();
  return kestrel::shell::RunStation(argv[2], {*keys, *voice}, [] { _exit(0); });
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::string(argv[1]) == "station") return RunAsStation(argc, argv);

  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  const fs::path self = fs::read_symlink("/proc/self/exe");
  const fs::path station = self.parent_path().parent_path() / "station";
  const fs::path root = fs::temp_directory_path() / ("kestrel-bench-" + std::to_string(getpid()));
  const Folder png = SampleFolder(station, root / "png");
  Folder jpeg = SampleFolder(station, root / "jpeg");
  TurnIntoJpeg(jpeg);
  Compare("PNG", self, png, 1.25);
  Compare("JPEG", self, jpeg, 1.6);
  fs::remove_all(root);
  return 0;
}
