// A long evening with all history shown: 64 players with the positions of eight hours at one a second, on a map of 1920
// by 1080, with and without 500 AI aircraft. Prints what a whole repaint costs and what a message costs that moves
// every player, also as a multiple of the bare copy of the same surface. Medians.

#include <QApplication>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "link/link_options.h"
#include "link/plot_feed.h"
#include "map/geometry.h"
#include "map/renderer.h"
#include "shell/map/qt_surface.h"
#include "traffic.h"

namespace kestrel {
namespace {

using namespace bench;

constexpr int Seconds = 8 * 3600;
constexpr double TheaterSize = 1024;  // map units
constexpr double Pace = 0.25;         // map units a second, some 480 knots
constexpr int MapRounds = 7;
constexpr int PlotRounds = 40;
constexpr base::Colour HostileColour = 255;

/// Aircraft that wind over the whole theater and turn back at its edge.
class Evening {
 public:
  explicit Evening(int others) {
    for (int index = 1; index <= Players; ++index) {
      link::PlotRecord plot;
      plot.Id = plot.ClientId = static_cast<std::int16_t>(index);
      plot.PlotVisible = plot.ShowAllHistory = true;
      plot.Label = "Falcon" + std::to_string(index);
      plot.Name = "Pilot " + std::to_string(index);
      plot.Color = static_cast<base::Colour>(index * 0x31F2B7) & 0xFFFFFF;
      plot.Altitude = 250;
      plot.Speed = 480;
      plot.PosText = "0500.0000500.000";
      plot.History.Reserve(Seconds + 1);
      tables.Clients.Append(std::move(plot));
      tables.IndexLast();
    }
    for (int index = 1; index <= others; ++index) {
      link::AIPlotRecord& plot = tables.AIPlots.Append({});
      plot.Name = "Viper" + std::to_string(index);
      plot.Name.resize(10, ' ');
      plot.Hostile = static_cast<std::uint8_t>(index % 2);
      plot.Altitude = 200;
    }
    std::uniform_real_distribution<double> place(50, TheaterSize - 50);
    std::uniform_real_distribution<double> heading(0, 6.28);
    for (int way = 0; way < Players + others; ++way) {
      ways.push_back({place(numbers), place(numbers), heading(numbers), heading(numbers)});
    }
    for (int second = 0; second <= Seconds; ++second) MovePlayers();
    for (int dots = 0; dots < TrailDots; ++dots) MoveOthers();
  }

  /// One position more for everyone.
  void Step() {
    MovePlayers();
    MoveOthers();
  }

  link::Tables tables;

 private:
  struct Way {
    double X, Y, Heading, Swing;
  };

  static void Move(Way& way) {
    way.Swing += 0.004;
    way.Heading += 0.01 * std::sin(way.Swing);
    way.X += Pace * std::cos(way.Heading);
    way.Y += Pace * std::sin(way.Heading);
    if (way.X < 5 || way.X > TheaterSize - 5 || way.Y < 5 || way.Y > TheaterSize - 5) {
      way.Heading = std::atan2(TheaterSize / 2 - way.Y, TheaterSize / 2 - way.X);
    }
  }

  void MovePlayers() {
    for (std::size_t index = 1; index <= Players; ++index) {
      link::PlotRecord& plot = tables.Clients[index];
      Way& way = ways[index - 1];
      if (plot.X != 0) plot.History.Append({plot.X, plot.Y});
      Move(way);
      plot.X = way.X;
      plot.Y = way.Y;
    }
  }

  void MoveOthers() {
    for (std::size_t index = 1; index <= tables.AIPlots.UpperBound(); ++index) {
      link::AIPlotRecord& plot = tables.AIPlots[index];
      Way& way = ways[Players + index - 1];
      Move(way);
      plot.X = static_cast<float>(way.X);
      plot.Y = static_cast<float>(way.Y);
    }
    link::IncreasePlotHistories(HostileColour, tables);
  }

  std::mt19937 numbers{20260101};
  std::vector<Way> ways;
};

class BareCopy {
 public:
  explicit BareCopy(std::size_t bytes) : source(bytes, 1), target(bytes, 2) {}
  void Run() {
    watch.Time([&] { std::memcpy(target.data(), source.data(), source.size()); });
    source[0] = target[source.size() - 1];
  }
  Stopwatch watch;

 private:
  std::vector<std::uint8_t> source;
  std::vector<std::uint8_t> target;
};

void Run(int others) {
  Evening evening(others);
  QImage groundPixels;
  const base::Picture ground = Ground(groundPixels);
  map::ViewState view;
  map::ResetView(view, TheaterSize, 2048, 500, 500);
  map::ResizeSurface(view, Width * map::UnitsPerPixel, Height * map::UnitsPerPixel);
  const map::Options display;
  const link::Options linkOptions;
  map::TrailLayer trails;
  const map::Scene scene{.MapPicture = ground,
                         .View = view,
                         .TheaterCorner = {33, 123},
                         .Display = display,
                         .LinkOptions = linkOptions,
                         .Plots = evening.tables,
                         .Labels = {},
                         .Trails = &trails};
  shell::QtSurface surface;
  surface.Resize(QSize(Width, Height), 1);

  std::printf("all history of %d players, %zu positions each, and %d AI aircraft at %d by %d\n", Players,
              evening.tables.Clients[1].History.UpperBound(), others, Width, Height);
  for (const double zoom : {0.5, 1.0, 2.0, 8.0}) {
    map::ChangeRes(view, zoom);
    map::DrawMap(scene, surface);
    BareCopy copy(static_cast<std::size_t>(surface.Image().sizeInBytes()));
    Stopwatch whole, message;
    for (int round = 0; round < PlotRounds; ++round) {
      copy.Run();
      evening.Step();
      message.Time([&] {
        map::RedrawPlots(scene, surface);
        surface.TakeDirty();
      });
    }
    for (int round = 0; round < MapRounds; ++round) {
      whole.Time([&] { map::DrawMap(scene, surface); });
      surface.TakeDirty();
    }
    const double bare = copy.watch.Median();
    std::printf("  x%-4g bare copy %6.3f ms  RedrawPlots %8.3f ms %7.2f  DrawMap %8.3f ms %7.2f\n", zoom, bare,
                message.Median(), message.Median() / bare, whole.Median(), whole.Median() / bare);
  }
}

}  // namespace
}  // namespace kestrel

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  kestrel::Run(0);
  kestrel::Run(kestrel::bench::AIAircraft);
}
