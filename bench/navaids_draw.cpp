// What TACANs and ILS cost on a map of 1920 by 1080: 500 airfields of which 100 are in view against these alone. Each
// figure is the median of interleaved rounds of one run.

#include <QApplication>
#include <cstdio>
#include <random>
#include <string>

#include "map/geometry.h"
#include "map/navaid_layer.h"
#include "map/renderer.h"
#include "shell/map/qt_surface.h"
#include "traffic.h"

namespace kestrel {
namespace {

using namespace bench;

constexpr int Rounds = 61;
constexpr int All = 500;
constexpr int Seen = 100;

radio::Airfield Field(int number, double x, double y) {
  radio::Airfield field;
  field.Name = "Airfield " + std::to_string(number);
  field.UHF = "297500";
  field.VHF = "138050";
  field.TACAN = std::to_string(1 + number % 126);
  field.TACAN_BAND = "X";
  field.TACANX = x;
  field.TACANY = y;
  field.TACANR = 20;
  field.VIS = field.TACAN_VIS = true;
  for (std::size_t slot = 0; slot < radio::RunwayEndCount; ++slot) {
    field.ILS[slot] = "10810";
    field.ILS_DES[slot] = "09L";
    field.ILS_VIS[slot] = true;
    field.ILS_R[slot] = {x, y};
    field.ILS_DRAW_HEADING[slot] = 90.0 * static_cast<double>(slot) + number;
  }
  return field;
}

void Report(const char* what, const Stopwatch& with, const Stopwatch& without, double goal) {
  std::printf("%-62s %8.3f / %8.3f ms  %5.2f (goal: at most %.1f)\n", what, with.Median(), without.Median(),
              with.Median() / without.Median(), goal);
}

void CullMany() {
  QImage pixels;
  const base::Picture ground = Ground(pixels);
  map::ViewState view;
  map::ResetView(view, Width, 2048, 500, 500);
  map::ResizeSurface(view, Width * map::UnitsPerPixel, Height * map::UnitsPerPixel);
  view.ViewCenterY = Height / 2 * map::UnitsPerPixel;
  view.Size = Height;
  view.Resolution = 4;
  const map::Options display;
  const link::Options linkOptions;
  const Flight aircraft;
  shell::QtSurface surface;
  surface.Resize(QSize(Width, Height), 1);

  // In view is an airfield whose place is: of the others some reach into it.
  const map::ClipRect clip = map::VisibleRect(view);
  const auto inView = [&](double x, double y) {
    return x >= clip.ClipLeft && x <= clip.ClipRight && y >= clip.ClipBottom && y <= clip.ClipTop;
  };
  radio::Frequencies all, seen;
  std::mt19937 numbers{20260101};
  std::uniform_real_distribution<double> anyX(0, Width), anyY(0, Height);
  for (int number = 0, near = 0; number < All;) {
    const double x = anyX(numbers), y = anyY(numbers);
    const bool meets = inView(x, y);
    if (meets ? near == Seen : number - near == All - Seen) continue;
    const radio::Airfield& field = all.Airfields.Append(Field(number++, x, y));
    if (!meets) continue;
    ++near;
    seen.Airfields.Append(field);
  }

  const auto scene = [&](const radio::Frequencies* navaids) {
    return map::Scene{.MapPicture = ground,
                      .View = view,
                      .TheaterCorner = {},
                      .Display = display,
                      .LinkOptions = linkOptions,
                      .Plots = aircraft.tables,
                      .Labels = {},
                      .Navaids = navaids};
  };
  const auto layers = [&](const radio::Frequencies& navaids) {
    map::DrawTacans(scene(&navaids), surface);
    map::DrawIlsFans(scene(&navaids), surface);
  };
  Stopwatch without, withAll, withSeen, layersAll, layersSeen;
  for (int round = -5; round < Rounds; ++round) {
    if (round == 0) without = withAll = withSeen = layersAll = layersSeen = {};
    without.Time([&] { map::DrawMap(scene(nullptr), surface); });
    withSeen.Time([&] { map::DrawMap(scene(&seen), surface); });
    withAll.Time([&] { map::DrawMap(scene(&all), surface); });
    layersSeen.Time([&] { layers(seen); });
    layersAll.Time([&] { layers(all); });
  }
  Report("DrawMap: 500 airfields, 100 in view / these 100 alone", withAll, withSeen, 1.5);
  Report("  of that their layers alone", layersAll, layersSeen, 1.5);
  std::printf("  DrawMap without airfields %31s %8.3f ms\n", "", without.Median());
}

}  // namespace
}  // namespace kestrel

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  kestrel::CullMany();
}
