// From the start of the process to the first map on the window, and the peak of memory until then: the whole station
// over the sample program folder against a program that only shows the same picture. Both run on the offscreen
// platform, turn by turn, and end themselves at that moment; the figures are the system's for the ended process.

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/make_seams.h"
#include "shell/core/run_station.h"
#include "shell/parts/look.h"

namespace {

namespace fs = std::filesystem;

constexpr int Rounds = 21;

struct Cost {
  double Milliseconds = 0;
  double MiB = 0;
};

/// Runs `program` with `argument`s to its end.
Cost RunOnce(const std::vector<std::string>& command) {
  std::vector<char*> arguments;
  for (const std::string& part : command) arguments.push_back(const_cast<char*>(part.c_str()));
  arguments.push_back(nullptr);
  const auto begin = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child == 0) {
    execv(arguments[0], arguments.data());
    _exit(127);
  }
  int status = 0;
  rusage usage{};
  wait4(child, &status, 0, &usage);
  const auto end = std::chrono::steady_clock::now();
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    std::fprintf(stderr, "%s failed\n", command[0].c_str());
    std::exit(1);
  }
  return {std::chrono::duration<double, std::milli>(end - begin).count(), static_cast<double>(usage.ru_maxrss) / 1024};
}

double Median(const std::vector<Cost>& costs, double Cost::*field) {
  std::vector<double> values;
  for (const Cost& cost : costs) values.push_back(cost.*field);
  std::nth_element(values.begin(), values.begin() + Rounds / 2, values.end());
  return values[Rounds / 2];
}

/// The picture of the folder's only theater.
fs::path MapPicture(const fs::path& theaters) {
  for (const fs::directory_entry& entry : fs::directory_iterator(theaters)) {
    if (entry.path().extension() == ".png") return entry.path();
  }
  std::fprintf(stderr, "no picture in %s\n", theaters.c_str());
  std::exit(1);
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
  const fs::path build = self.parent_path().parent_path();
  // A copy, so that the user's settings stay as they are.
  const fs::path folder = fs::temp_directory_path() / ("kestrel-bench-" + std::to_string(getpid()));
  fs::create_directories(folder);
  for (const char* name : {"update.txt", "common.ini", "KESTREL.ini", "FriendlyNames.ini"}) {
    fs::copy_file(build / "station" / name, folder / name);
  }
  fs::copy(build / "station" / "Theaters", folder / "Theaters", fs::copy_options::recursive);

  const std::vector<std::string> station = {self.string(), "station", folder.string()};
  const std::vector<std::string> viewer = {(self.parent_path() / "start_baseline").string(),
                                           MapPicture(folder / "Theaters").string()};
  RunOnce(station);
  RunOnce(viewer);
  std::vector<Cost> stationCosts;
  std::vector<Cost> viewerCosts;
  for (int round = 0; round < Rounds; ++round) {
    stationCosts.push_back(RunOnce(station));
    viewerCosts.push_back(RunOnce(viewer));
  }
  fs::remove_all(folder);

  const double stationTime = Median(stationCosts, &Cost::Milliseconds);
  const double viewerTime = Median(viewerCosts, &Cost::Milliseconds);
  const double stationMemory = Median(stationCosts, &Cost::MiB);
  const double viewerMemory = Median(viewerCosts, &Cost::MiB);
  std::printf("start to first map    station %7.1f ms    viewer %7.1f ms    ratio %.2f (goal 1.3)\n", stationTime,
              viewerTime, stationTime / viewerTime);
  std::printf("peak memory           station %7.1f MiB   viewer %7.1f MiB   ratio %.2f (goal 1.3)\n", stationMemory,
              viewerMemory, stationMemory / viewerMemory);
  return 0;
}
