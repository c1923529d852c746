// A theater as large as they come: a picture of 8192 by 8192 pixels of 24 bits, as PNG and as JPEG, and heights for a
// SIZE of 8192. The peak of memory until the first map is shown, beside that of a program that only shows the same
// picture, and over a switch of the theater; and how long what the person does first takes, at once after the start and
// after two seconds, in which the station may have prepared itself. Each run is a process of its own; peaks are the
// system's figure for the ended process. How many runs of each kind there are may be told: large 3.

#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QImageWriter>
#include <QMouseEvent>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "base/file_replacement.h"
#include "base/profile_file.h"
#include "base/program_title.h"
#include "child_run.h"
#include "core/theater_switch.h"
#include "platform/make_seams.h"
#include "shell/core/run_station.h"
#include "shell/frame/frame.h"
#include "shell/parts/look.h"
#include "theaters/elevation_file.h"
#include "theaters/theater_file.h"

namespace kestrel {
namespace {

namespace fs = std::filesystem;
using namespace bench;

constexpr int Side = 8192;
constexpr QSize FrameSize(1920, 1120);
/// Theaters 2 and 3 have PNG pictures, 4 and 5 JPEG ones; 1 is the sample.
constexpr const char* Names[] = {"Png1", "Png2", "Jpeg1", "Jpeg2"};
constexpr const char* Endings[] = {"png", "png", "jpg", "jpg"};

void Fail(const std::string& what) {
  std::fprintf(stderr, "%s\n", what.c_str());
  std::exit(1);
}

// What is shown -------------------------------------------------------------------------------------------------------

/// The sample picture, stretched, with the grain that a photographed ground has.
QImage Ground(const fs::path& sample) {
  QImage image = QImage(QString::fromStdString(sample.string()))
                     .scaled(Side, Side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                     .convertToFormat(QImage::Format_RGB888);
  std::uint32_t grain = 1;
  for (int y = 0; y < Side; ++y) {
    std::uint8_t* const row = image.scanLine(y);
    for (int at = 0; at < Side * 3; ++at) {
      grain = grain * 1664525 + 1013904223;
      row[at] = static_cast<std::uint8_t>(std::min(255, row[at] + static_cast<int>(grain >> 30)));
    }
  }
  return image;
}

void WriteHeights(const fs::path& path) {
  std::vector<std::int16_t> heights(std::size_t{Side} * Side);
  for (std::size_t at = 0; at < heights.size(); ++at) heights[at] = static_cast<std::int16_t>(at % 8191);
  base::FileReplacement file(path);
  theaters::WriteElevations(file, heights, {});
  file.Commit();
}

/// The four large theaters beside the sample in `folder`. Both of a kind have the same files.
int MakeTheaters(const fs::path& folder) {
  const fs::path theaters = folder / "Theaters";
  const QImage ground = Ground(theaters / "SampleStrait.png");
  if (ground.isNull()) Fail("no sample picture");
  for (int n = 0; n < 4; ++n) {
    const fs::path picture = theaters / (std::string(Names[n]) + "." + Endings[n]);
    const fs::path heights = theaters / (std::string(Names[n]) + "_Elevation.dat");
    if (n % 2 == 0) {
      QImageWriter writer(QString::fromStdString(picture.string()));
      writer.setQuality(n == 0 ? 80 : 90);
      if (!writer.write(ground)) Fail("the picture cannot be written");
    } else {
      fs::create_hard_link(theaters / (std::string(Names[n - 1]) + "." + Endings[n]), picture);
    }
    n == 0 ? WriteHeights(heights) : fs::create_hard_link(theaters / "Png1_Elevation.dat", heights);
    theaters::Theater theater;
    theater.Name = theater.DisplayName = Names[n];
    theater.Pic = picture.filename().string();
    theater.Size = theater.PicSize = Side;
    theaters::WriteTheaterFile(theater, base::Banner("Theater")).Save(theaters / (theater.Name + ".ini"));
  }
  return 0;
}

/// Theater `current` is in use at the next start.
void Use(const fs::path& folder, int current) {
  base::ProfileFile settings = base::ProfileFile::Load(folder / "KESTREL.ini");
  settings.WriteIniValue("MAPS", "TOTALMAPS", "5");
  for (int n = 0; n < 4; ++n) {
    settings.WriteIniValue("MAPS", "MAP" + std::to_string(n + 2), std::string(Names[n]) + ".ini");
  }
  settings.WriteIniValue("MAPS", "CURRENTMAP", std::to_string(current));
  settings.Save(folder / "KESTREL.ini");
}

// A run of the station ------------------------------------------------------------------------------------------------

class Steps {
 public:
  Steps() : frame(Frame()), map(frame.Map().Picture()), view(frame.Program().State.View) {}

  /// What the person does first, each told with the milliseconds that it takes until it is painted.
  void Run(std::ostream& told, bool atOnce) {
    frame.resize(FrameSize);
    const std::uint64_t draws = map.MapDraws();
    while (map.MapDraws() == draws) QCoreApplication::processEvents();
    PaintNow();
    if (!atOnce) told << "longest turn while nothing is done\t" << LongestTurn(2000) << '\n';
    std::vector<std::uint8_t> source(std::size_t{1920} * 1070 * 4, 1), target(source.size(), 2);
    double copy = 1e9;
    for (int n = 0; n < 9; ++n) {
      copy = std::min(copy, Milliseconds([&] { std::memcpy(target.data(), source.data(), target.size()); }));
    }
    told << "bare copy of the surface\t" << copy + target.back() * 1e-9 << '\n';
    told << "first move of the pointer\t" << Move() << '\n';
    double moved = 0;
    for (const double resolution : {0.5, 0.25, 0.125}) {
      told << "first zoom to x" << resolution << '\t' << Shown(map::ChangeRes(view, resolution)) << '\n';
      for (const int direction : {1, 3, 2, 4}) moved = std::max(moved, Shown(map::MoveScreen(view, direction)));
    }
    for (const double resolution : {1.0, 2.0}) {
      Shown(map::ChangeRes(view, resolution));
      for (const int direction : {1, 3, 2, 4}) moved = std::max(moved, Shown(map::MoveScreen(view, direction)));
    }
    told << "longest of 20 moves of the view\t" << moved << '\n';
  }

  /// The pointer is over the map of the former theater and of the new one.
  void Switch(std::ostream& told, std::size_t theater) {
    Move();
    LongestTurn(300);
    core::Program& program = frame.Program();
    told << "switch\t" << Milliseconds([&] {
      core::SwitchTheater(program, theater);
      PaintNow();
    }) << '\n';
    Move();
    if (program.State.Catalogue.CurrentTheater != static_cast<int>(theater)) Fail("no switch");
  }

 private:
  static shell::MDIForm1& Frame() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (auto* found = qobject_cast<shell::MDIForm1*>(window)) return *found;
    }
    Fail("no frame");
    std::abort();
  }

  /// Paints what waits to be painted, without the delay by which the system gathers such requests.
  void PaintNow() {
    QEvent request(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&frame, &request);
  }

  double Shown(base::Changed changed) {
    return Milliseconds([&] {
      frame.Program().Shown.Refresh(changed);
      PaintNow();
    });
  }

  double Move() {
    const QPointF to(map.width() * 0.6, map.height() * 0.4);
    return Milliseconds([&] {
      QMouseEvent event(QEvent::MouseMove, to, map.mapToGlobal(to), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
      QCoreApplication::sendEvent(&map, &event);
      PaintNow();
    });
  }

  static double LongestTurn(int milliseconds) {
    double longest = 0;
    QElapsedTimer time;
    for (time.start(); time.elapsed() < milliseconds; usleep(200)) {
      longest = std::max(longest, Milliseconds([] { QCoreApplication::processEvents(); }));
    }
    return longest;
  }

  shell::MDIForm1& frame;
  shell::MapPicture& map;
  map::ViewState& view;
};

int RunStation(int argc, char** argv) {
  QApplication application(argc, argv);
  shell::ApplyLook(application, shell::SystemIsDark());
  const auto keys = platform::MakeGlobalKeys();
  const auto voice = platform::MakeVoiceWindows();
  const fs::path folder = argv[2];
  const std::string work = argv[3];
  return shell::RunStation(folder, {*keys, *voice}, [&] {
    std::ofstream told(folder / "told");
    if (work == "at-once" || work == "later") Steps().Run(told, work == "at-once");
    if (work.starts_with("switch")) Steps().Switch(told, static_cast<std::size_t>(work.back() - '0'));
    told.close();
    _exit(0);
  });
}

// Many runs -----------------------------------------------------------------------------------------------------------

/// What the runs of one kind have told, by its name.
using Figures = std::map<std::string, std::vector<double>>;

/// Runs a program to its end and adds its time, its peak of memory and what it has told.
void Run(const std::vector<std::string>& command, const fs::path& folder, Figures& figures) {
  fs::remove(folder / "told");
  const Cost cost = RunOnce(command);
  figures["time"].push_back(cost.Milliseconds);
  figures["peak"].push_back(cost.MiB);
  std::ifstream told(folder / "told");
  std::string what;
  double value = 0;
  while (std::getline(told, what, '\t') && told >> value && told.ignore()) figures[what].push_back(value);
}

void ReportSteps(const char* when, const Figures& figures) {
  const double copy = Median(figures.at("bare copy of the surface"));
  for (const auto& [what, values] : figures) {
    if (what == "time" || what == "peak") continue;
    std::printf("  %-8s %-36s %8.2f ms  %7.2f x the bare copy\n", when, what.c_str(), Median(values),
                Median(values) / copy);
  }
}

void Measure(const fs::path& folder, const fs::path& programs, int first, int rounds) {
  const std::string self = (programs / "large").string();
  const std::string kind = Endings[first - 2];
  const auto station = [&](const std::string& work, int current, Figures& figures) {
    Use(folder, current);
    Run({self, "station", folder.string(), work}, folder, figures);
  };
  Figures start, viewer, atOnce, later, fromSample, fromLarge;
  for (int round = 0; round < rounds; ++round) {
    station("start", first, start);
    const fs::path picture = folder / "Theaters" / (std::string(Names[first - 2]) + "." + kind);
    Run({(programs / "start_baseline").string(), picture.string()}, folder, viewer);
    station("at-once", first, atOnce);
    station("later", first, later);
    station("switch" + std::to_string(first), 1, fromSample);
    station("switch" + std::to_string(first + 1), first, fromLarge);
  }
  std::printf("%s of %d by %d, SIZE %d (medians of %d)\n", kind.c_str(), Side, Side, Side, rounds);
  std::printf("  start to first map    station %7.1f ms   viewer %7.1f ms    ratio %.2f\n", Median(start["time"]),
              Median(viewer["time"]), Median(start["time"]) / Median(viewer["time"]));
  std::printf("  peak until then       station %7.1f MiB  viewer %7.1f MiB   ratio %.2f (goal 320 MiB)\n",
              Median(start["peak"]), Median(viewer["peak"]), Median(start["peak"]) / Median(viewer["peak"]));
  std::printf("  switch to it from the sample         %8.1f ms  peak %7.1f MiB (goal 440)\n",
              Median(fromSample["switch"]), Median(fromSample["peak"]));
  std::printf("  switch from it to another such       %8.1f ms  peak %7.1f MiB (goal 440)\n",
              Median(fromLarge["switch"]), Median(fromLarge["peak"]));
  std::printf("  steps (goal: none above 16 ms)\n");
  ReportSteps("at once", atOnce);
  ReportSteps("later", later);
}

}  // namespace
}  // namespace kestrel

int main(int argc, char** argv) {
  namespace fs = std::filesystem;
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // The viewer's toolkit refuses large pictures unless it is told, MiB.
  qputenv("QT_IMAGEIO_MAXALLOC", "1024");
  if (argc == 3 && std::string(argv[1]) == "make") return kestrel::MakeTheaters(argv[2]);
  if (argc == 4 && std::string(argv[1]) == "station") return kestrel::RunStation(argc, argv);
  const fs::path programs = fs::read_symlink("/proc/self/exe").parent_path();
  const int rounds = argc == 2 ? std::max(1, std::atoi(argv[1])) : 5;
  // A copy, so that the user's settings stay as they are.
  const fs::path folder = fs::temp_directory_path() / ("kestrel-bench-" + std::to_string(getpid()));
  fs::create_directories(folder);
  for (const char* name : {"update.txt", "common.ini", "KESTREL.ini", "FriendlyNames.ini"}) {
    fs::copy_file(programs.parent_path() / "station" / name, folder / name);
  }
  fs::copy(programs.parent_path() / "station" / "Theaters", folder / "Theaters", fs::copy_options::recursive);
  // In a process of its own: a child's peak is never below what its parent held when it was made.
  kestrel::Figures making;
  kestrel::Run({(programs / "large").string(), "make", folder.string()}, folder, making);
  for (const int first : {2, 4}) kestrel::Measure(folder, programs, first, rounds);
  fs::remove_all(folder);
  return 0;
}
