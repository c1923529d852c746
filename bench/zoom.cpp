// One DrawMap at each step of the zoom as a multiple of the bare smooth copy of the same level of the picture, with the
// ground beside it, onto an image of the same size: 1920 by 1080 and 3840 by 2160, a theater of 1024 with a picture of
// 2048; without aircraft, with 64 players and 500 AI aircraft that are spread over the theater, and with all of them in
// view. Each figure is the median of interleaved rounds.
//
// With the argument "hashes" it measures nothing and prints one hash a picture instead, of the map drawn whole and of
// three redraws after it, over zooms, sizes, places, grid, trails and labels. Two builds draw the same when they print
// the same.

#include <QApplication>
#include <QPainter>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "link/link_options.h"
#include "map/geometry.h"
#include "map/renderer.h"
#include "shell/map/picture_levels.h"
#include "shell/map/qt_surface.h"
#include "traffic.h"

namespace kestrel {
namespace {

using namespace bench;

constexpr double Zooms[] = {0.25, 0.5, 1, 2, 4, 8, 16};
constexpr QSize Sizes[] = {{1920, 1080}, {3840, 2160}};
constexpr double TheaterSize = 1024;  // map units
constexpr int WarmUp = 3;
constexpr int Rounds = 31;
const QColor Beyond(20, 23, 26);

/// The aircraft of a flight, spread over what is seen of the theater.
class SpreadFlight {
 public:
  /// `halfX`, `halfY`: map units from the middle of the theater to the edges of the part that they fly over.
  void SpreadOver(double halfX, double halfY) {
    spreadX = halfX / (Width / 2);
    spreadY = halfY / (Height / 2);
    for (int step = 0; step <= TrailDots; ++step) Step();
  }

  void Step() {
    flight.Step();
    for (link::PlotRecord& plot : flight.tables.Clients.Live()) Place(plot.X, plot.Y);
    for (link::AIPlotRecord& plot : flight.tables.AIPlots.Live()) Place(plot.X, plot.Y);
  }

  const link::Tables& Tables() const { return flight.tables; }

 private:
  template <class Number>
  void Place(Number& x, Number& y) const {
    x = static_cast<Number>(TheaterSize / 2 + (x - Width / 2) * spreadX);
    y = static_cast<Number>(TheaterSize / 2 + (y - Height / 2) * spreadY);
  }

  Flight flight;
  double spreadX = 1;
  double spreadY = 1;
};

/// A map with its surface.
struct Map {
  explicit Map(QSize size) {
    map::ResetView(View, TheaterSize, Picture.Width, 500, 500);
    map::ResizeSurface(View, size.width() * map::UnitsPerPixel, size.height() * map::UnitsPerPixel);
    Surface.SetBackground(Beyond);
    Surface.Resize(size, 1);
  }

  /// The zoom, and the aircraft over `share` of what is seen then.
  void Zoom(double resolution, double share) {
    View.Resolution = resolution;
    map::RefreshPositions(View);
    const double seenX = View.SurfaceWidth / map::UnitsPerPixel / resolution;
    const double seenY = View.SurfaceHeight / map::UnitsPerPixel / resolution;
    Aircraft.SpreadOver(std::min(seenX, TheaterSize) / 2 * share, std::min(seenY, TheaterSize) / 2 * share);
  }

  map::Scene Scene(const link::Tables& plots) const {
    return {.MapPicture = Picture,
            .View = View,
            .TheaterCorner = {.Lat = 33.8, .Long = 123.0},
            .Display = Display,
            .LinkOptions = LinkOptions,
            .Plots = plots,
            .Labels = {}};
  }

  QImage Pixels;
  base::Picture Picture = Ground(Pixels);
  map::ViewState View;
  map::Options Display;
  link::Options LinkOptions;
  SpreadFlight Aircraft;
  shell::QtSurface Surface;
};

/// The picture alone, as plainly as it can be had.
class BareCopy {
 public:
  BareCopy(const Map& map, QSize size) : target(size, QImage::Format_RGB32) {
    const map::SourceRect from = map::BackgroundRect(map.View);
    const QRectF wanted(from.Left, from.Top, from.Width, from.Height);
    const QRectF seen = wanted & QRectF(0, 0, map.Picture.Width, map.Picture.Height);
    const double scale = size.width() / wanted.width();
    place = QRectF((seen.topLeft() - wanted.topLeft()) * scale, seen.size() * scale);
    level = levels.Level(map.Picture, scale);
    const double share = static_cast<double>(level.width()) / map.Picture.Width;
    source = QRectF(seen.topLeft() * share, seen.size() * share);
    beside = QRegion(target.rect()) - place.toAlignedRect();
  }

  void Copy() {
    QPainter painter(&target);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const QRect& strip : beside) painter.fillRect(strip, Beyond);
    painter.drawImage(place, level, source);
  }

 private:
  shell::PictureLevels levels;
  QImage level;
  QImage target;
  QRectF source;
  QRectF place;
  QRegion beside;
};

/// FNV-1a, a pixel a step.
std::uint64_t Hash(const QImage& image) {
  std::uint64_t hash = 14695981039346656037U;
  for (int y = 0; y < image.height(); ++y) {
    const auto* row = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
    for (int x = 0; x < image.width(); ++x) hash = (hash ^ row[x]) * 1099511628211U;
  }
  return hash;
}

void PrintHashes() {
  constexpr double places[] = {TheaterSize / 2, 400.3};  // map units: whole pixels, and the theater's edge in view
  for (const QSize size : Sizes) {
    Map map(size);
    for (const double zoom : Zooms) {
      for (const double place : places) {
        for (int shown = 0; shown < 8; ++shown) {
          map.View.ViewCenterX = place * map::UnitsPerPixel;
          map.Zoom(zoom, 1.1);  // some are cut by the edges
          map.Display.SHOWGRID = (shown & 1) != 0;
          map.Display.SHOWHISTORY = (shown & 2) != 0;
          map.Display.REALLABELSVISIBLE = map.Display.AILABELSVISIBLE = map.Display.SHOWAINAMES = (shown & 4) != 0;
          const map::Scene scene = map.Scene(map.Aircraft.Tables());
          map::DrawMap(scene, map.Surface);
          for (int redraw = 0; redraw < 4; ++redraw) {
            std::printf("%d x %d, zoom %g at %g, grid %d, trails %d, labels %d, redraw %d: %016llx\n", size.width(),
                        size.height(), zoom, place, shown & 1, shown >> 1 & 1, shown >> 2, redraw,
                        static_cast<unsigned long long>(Hash(map.Surface.Image())));
            map.Aircraft.Step();
            map::RedrawPlots(scene, map.Surface);
          }
        }
      }
    }
  }
}

struct Times {
  Stopwatch Copy, Empty, Flown;
};

Times Measure(Map& map, QSize size) {
  const link::Tables none;
  const map::Scene empty = map.Scene(none);
  const map::Scene flown = map.Scene(map.Aircraft.Tables());
  BareCopy bare(map, size);
  Times times;
  for (int round = -WarmUp; round < Rounds; ++round) {
    if (round == 0) times = {};
    map.Aircraft.Step();
    times.Copy.Time([&] { bare.Copy(); });
    times.Empty.Time([&] { map::DrawMap(empty, map.Surface); });
    times.Copy.Time([&] { bare.Copy(); });
    times.Flown.Time([&] { map::DrawMap(flown, map.Surface); });
  }
  return times;
}

void Print(const Stopwatch& watch, const Stopwatch& copy) {
  std::printf(" %9.3f %6.2f", watch.Median(), watch.Median() / copy.Median());
}

void MeasureAt(Map& map, QSize size, double zoom) {
  map.Zoom(zoom, 1);
  const Times inView = Measure(map, size);
  map.Aircraft.SpreadOver(TheaterSize / 2, TheaterSize / 2);
  const Times spread = Measure(map, size);
  std::printf("%4d x %4d %6g %9.3f", size.width(), size.height(), zoom, spread.Copy.Median());
  Print(spread.Empty, spread.Copy);
  Print(spread.Flown, spread.Copy);
  Print(inView.Flown, inView.Copy);
  std::printf("\n");
}

void MeasureAll() {
  std::printf("DrawMap / bare copy of the same level (goals: at most 1.10 empty, 1.25 with %d and %d aircraft)\n",
              Players, AIAircraft);
  std::printf("                zoom      bare     empty  ratio    spread  ratio   in view  ratio   (ms)\n");
  for (const QSize size : Sizes) {
    Map map(size);
    for (const double zoom : Zooms) MeasureAt(map, size, zoom);
  }
}

}  // namespace
}  // namespace kestrel

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  if (argc == 1) {
    kestrel::MeasureAll();
  } else if (argc == 2 && std::string_view(argv[1]) == "hashes") {
    kestrel::PrintHashes();
  } else {
    std::fprintf(stderr, "usage: %s [hashes]\n", argv[0]);
    return EXIT_FAILURE;
  }
}
