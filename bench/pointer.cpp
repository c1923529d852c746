// One move of the pointer over the map of the whole station with the bearing line showing: the event, the read-outs and
// the painting of what has changed, as a multiple of the bare copy of the map's surface. Beside it the same move when
// the whole map is painted again. Each figure is the median of interleaved rounds.

#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "platform/make_seams.h"
#include "shell/core/run_station.h"
#include "shell/frame/frame.h"
#include "shell/parts/look.h"

namespace kestrel {
namespace {

constexpr QSize FrameSize(1920, 1120);
constexpr int WarmUp = 20;
constexpr int Rounds = 200;

class Stopwatch {
 public:
  void Time(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
  }
  /// Milliseconds.
  double Median() const {
    std::vector<double> sorted = times;
    std::sort(sorted.begin(), sorted.end());
    return sorted[sorted.size() / 2];
  }

 private:
  std::vector<double> times;
};

void Report(const char* what, const Stopwatch& watch, const Stopwatch& copy) {
  std::printf("%-40s %8.3f ms  %6.2f x the bare copy\n", what, watch.Median(), watch.Median() / copy.Median());
}

shell::MDIForm1& Frame() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (auto* frame = qobject_cast<shell::MDIForm1*>(window)) return *frame;
  }
  std::fprintf(stderr, "no frame\n");
  std::exit(1);
}

void LetEventsRunFor(int milliseconds) {
  QElapsedTimer time;
  time.start();
  while (time.elapsed() < milliseconds) QCoreApplication::processEvents(QEventLoop::AllEvents, milliseconds);
}

/// Paints what waits to be painted, without the delay by which the system gathers such requests.
void PaintNow(QWidget& window) {
  QEvent request(QEvent::UpdateRequest);
  QCoreApplication::sendEvent(&window, &request);
}

void Measure() {
  shell::MDIForm1& frame = Frame();
  shell::MapPicture& map = frame.Map().Picture();
  frame.resize(FrameSize);
  LetEventsRunFor(3 * shell::MapPicture::SettleMs);
  // The line goes from the middle to a point that circles near the edge: it is as long as lines are.
  core::Station& station = frame.Program().State;
  station.MapOptions.STATICCURSOR = true;
  const auto move = [&map](int round) {
    const double angle = round * 0.01;
    const QPointF to(map.width() / 2.0 + std::cos(angle) * map.width() * 0.4,
                     map.height() / 2.0 + std::sin(angle) * map.height() * 0.4);
    QMouseEvent event(QEvent::MouseMove, to, map.mapToGlobal(to), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&map, &event);
  };
  const std::size_t bytes = static_cast<std::size_t>(map.width()) * static_cast<std::size_t>(map.height()) * 4;
  std::vector<std::uint8_t> source(bytes, 1);
  std::vector<std::uint8_t> target(bytes, 2);
  const std::uint64_t draws = map.MapDraws();
  std::uint64_t paints = 0;
  QObject::connect(&map, &shell::MapPicture::Painted, &map, [&paints] { ++paints; });

  Stopwatch bareCopy, readOuts, moved, whole;
  for (int round = -WarmUp; round < Rounds; ++round) {
    if (round == 0) bareCopy = readOuts = moved = whole = {};
    bareCopy.Time([&] { std::memcpy(target.data(), source.data(), bytes); });
    source[0] = target[bytes - 1];
    readOuts.Time([&] { move(2 * round); });
    PaintNow(frame);
    moved.Time([&] {
      move(2 * round + 1);
      PaintNow(frame);
    });
    whole.Time([&] {
      move(2 * round + 2);
      map.update();
      PaintNow(frame);
    });
    QCoreApplication::processEvents();
  }
  map.disconnect(&map);
  if (map.MapDraws() != draws || !station.View.CursorLineActive || paints < 3 * Rounds) {
    std::fprintf(stderr, "the moves have drawn the map, or no line, or have not been painted\n");
    std::exit(1);
  }
  std::printf("a move of the pointer over a map of %d by %d\n", map.width(), map.height());
  Report("bare copy", bareCopy, bareCopy);
  Report("the event and its read-outs", readOuts, bareCopy);
  Report("the same, painted (goal: below 1)", moved, bareCopy);
  Report("the same, with the whole map painted", whole, bareCopy);
}

}  // namespace
}  // namespace kestrel

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  namespace fs = std::filesystem;
  const fs::path build = fs::read_symlink("/proc/self/exe").parent_path().parent_path();
  // A copy, so that the user's settings stay as they are.
  const fs::path folder = fs::temp_directory_path() / ("kestrel-bench-" + std::to_string(getpid()));
  fs::create_directories(folder);
  for (const char* name : {"update.txt", "common.ini", "KESTREL.ini", "FriendlyNames.ini"}) {
    fs::copy_file(build / "station" / name, folder / name);
  }
  fs::copy(build / "station" / "Theaters", folder / "Theaters", fs::copy_options::recursive);

  QApplication application(argc, argv);
  kestrel::shell::ApplyLook(application, kestrel::shell::SystemIsDark());
  const auto keys = kestrel::platform::MakeGlobalKeys();
  const auto voice = kestrel::platform::MakeVoiceWindows();
  const int code = kestrel::shell::RunStation(folder, {*keys, *voice}, [] {
    kestrel::Measure();
    QCoreApplication::exit(0);
  });
  fs::remove_all(folder);
  return code;
}
