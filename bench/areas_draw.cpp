// What the areas cost on a map of 1920 by 1080: 10,000 of which 100 are in view against these alone; 100,000 segments
// against the same lines set bare by QPainter; a redraw of what moves with the editor open on 500 segments against one
// without. Each figure is the median of interleaved rounds of one run.

#include <QApplication>
#include <QLineF>
#include <QPainter>
#include <array>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "areas/area_bounds.h"
#include "areas/area_editor.h"
#include "base/numbers.h"
#include "map/area_layer.h"
#include "map/geometry.h"
#include "map/renderer.h"
#include "map/text_measure.h"
#include "shell/map/qt_surface.h"
#include "traffic.h"

namespace kestrel {
namespace {

using namespace bench;
using areas::Area;
using areas::AreaType;

constexpr int Rounds = 31;
constexpr base::Colour Inks[] = {0x0000C8FF, 0x00FFC800, 0x000040FF, 0x00FFFFFF};

/// A map of 1920 by 1080 units, which fills the surface at zoom 1.
struct Map {
  Map() {
    map::ResetView(View, Width, 2048, 500, 500);
    map::ResizeSurface(View, Width * map::UnitsPerPixel, Height * map::UnitsPerPixel);
    View.ViewCenterY = Height / 2 * map::UnitsPerPixel;
    View.Size = Height;
    Surface.Resize(QSize(Width, Height), 1);
  }

  map::Scene Scene(const areas::AreaCatalogue& areas, const areas::AreaEditor* editor = nullptr) const {
    return {.MapPicture = Picture,
            .View = View,
            .TheaterCorner = {},
            .Display = Display,
            .LinkOptions = LinkOptions,
            .Plots = Aircraft.tables,
            .Labels = {},
            .Areas = &areas,
            .Editor = editor};
  }

  QImage Pixels;
  base::Picture Picture = Ground(Pixels);
  map::ViewState View;
  map::Options Display;
  link::Options LinkOptions;
  Flight Aircraft;
  shell::QtSurface Surface;
  map::SurfaceTexts Texts{Surface};
  std::mt19937 Numbers{20260101};
};

areas::AreaCatalogue OneGroup() {
  areas::AreaCatalogue catalogue;
  catalogue.AreaFolders.Append({});
  catalogue.AreaGroups.Append({.FolderIndex = 1});
  return catalogue;
}

/// An outline of `count` segments around (x, y), about `radius` map units away from it.
void AddOutline(Area& area, double x, double y, double radius, int count) {
  const auto at = [&](int step) {
    const double angle = 6.283185307179586 * step / count;
    const double away = radius * (1 + 0.2 * std::sin(5 * angle));
    return map::SurfacePoint{x + away * std::cos(angle), y + away * std::sin(angle)};
  };
  for (int step = 0; step < count; ++step) {
    area.Lines.Append({at(step).X, at(step).Y, at(step + 1).X, at(step + 1).Y});
  }
}

/// Each type in turn, with its name.
Area Drawing(Map& map, int number, double x, double y) {
  Area area;
  area.Name = "Area " + std::to_string(number);
  area.Type = static_cast<AreaType>(1 + number % 5);
  area.Color = Inks[number % 4];
  area.X = x;
  area.Y = y;
  area.Radius = 8;
  area.Icon = static_cast<std::int16_t>(1 + number % 22);
  area.Text = "FLOT " + std::to_string(number);
  AddOutline(area, x, y, 12, 12);
  for (int point = 0; point < 5; ++point) {
    area.Points.Append(
        {x + 6 * point, y + (point % 2) * 5, 1000.0 * point, areas::PointType{std::int16_t(1 + point % 3)}});
  }
  areas::AreaBounds(area, map.Texts);
  return area;
}

void Report(const char* what, const Stopwatch& with, const Stopwatch& without, double goal) {
  std::printf("%-62s %8.3f / %8.3f ms  %5.2f (goal: at most %.1f)\n", what, with.Median(), without.Median(),
              with.Median() / without.Median(), goal);
}

void CullMany() {
  Map map;
  map.View.Resolution = 4;
  areas::AreaCatalogue all = OneGroup();
  areas::AreaCatalogue seen = OneGroup();
  const map::ClipRect clip = map::VisibleRect(map.View);
  std::uniform_real_distribution<double> x(0, Width), y(0, Height);
  int inView = 0;
  for (int number = 0; number < 10'000;) {
    const Area area = Drawing(map, number, x(map.Numbers), y(map.Numbers));
    const bool meets = map::MeetsView(area, clip);
    if (meets && inView == 100) continue;
    if (!meets && number - inView == 9'900) continue;
    ++number;
    all.AreaGroups[1].Areas.Append(area);
    if (!meets) continue;
    ++inView;
    seen.AreaGroups[1].Areas.Append(area);
  }
  Stopwatch withAll, withSeen, layerAll, layerSeen;
  for (int round = 0; round < Rounds; ++round) {
    withSeen.Time([&] { map::DrawMap(map.Scene(seen), map.Surface); });
    withAll.Time([&] { map::DrawMap(map.Scene(all), map.Surface); });
    layerSeen.Time([&] { map::DrawAreas(map.Scene(seen), map.Surface); });
    layerAll.Time([&] { map::DrawAreas(map.Scene(all), map.Surface); });
  }
  Report("DrawMap: 10,000 areas, 100 in view / these 100 alone", withAll, withSeen, 1.5);
  Report("  of that the layer of areas alone", layerAll, layerSeen, 1.5);
}

/// 100,000 segments of some 20 pixels in `regions` regions.
void ManySegments(int regions) {
  constexpr int segments = 100'000;
  Map map;
  map.Display.SHOWAREANAMES = false;
  areas::AreaCatalogue catalogue = OneGroup();
  std::uniform_real_distribution<double> x(100, Width - 100), y(100, Height - 100);
  std::vector<QLineF> lines;
  const auto pixel = [&](double mapX, double mapY) {
    const map::SurfacePoint at = map::SurfaceFromMap(map.View, {mapX, mapY});
    return QPointF(base::RoundHalfEven(at.X / 15), base::RoundHalfEven(at.Y / 15));
  };
  const int each = segments / regions;
  for (int region = 0; region < regions; ++region) {
    Area area;
    area.Color = Inks[region % 4];
    AddOutline(area, x(map.Numbers), y(map.Numbers), 20.0 * each / 7, each);
    // Of large outlines the part within the map is what counts.
    for (areas::AreaLine& line : area.Lines.Live()) {
      line.X1 = std::clamp(line.X1, 0.0, Width - 1.0);
      line.X2 = std::clamp(line.X2, 0.0, Width - 1.0);
      line.Y1 = std::clamp(line.Y1, 1.0, Height - 1.0);
      line.Y2 = std::clamp(line.Y2, 1.0, Height - 1.0);
      lines.emplace_back(pixel(line.X1, line.Y1), pixel(line.X2, line.Y2));
    }
    areas::AreaBounds(area, map.Texts);
    catalogue.AreaGroups[1].Areas.Append(std::move(area));
  }
  map::DrawMap(map.Scene(catalogue), map.Surface);
  QImage bare = map.Surface.Image().copy();
  bare.setDevicePixelRatio(1);
  Stopwatch layer, painter;
  for (int round = 0; round < Rounds; ++round) {
    map.Surface.CopyPicture(map.Picture, map::BackgroundRect(map.View));
    layer.Time([&] { map::DrawAreas(map.Scene(catalogue), map.Surface); });
    painter.Time([&] {
      QPainter draw(&bare);
      for (int region = 0; region < regions; ++region) {
        const base::Colour ink = Inks[region % 4];
        draw.setPen(QPen(QColor(base::RedOf(ink), base::GreenOf(ink), base::BlueOf(ink)), 1));
        draw.drawLines(&lines[static_cast<std::size_t>(region * each)], each);
      }
    });
  }
  std::array<char, 80> what = {};
  std::snprintf(what.data(), what.size(), "100,000 segments in %d regions / bare lines of QPainter", regions);
  Report(what.data(), layer, painter, 1.5);
}

void Edit(const char* what, double radius) {
  Map map;
  const areas::AreaCatalogue catalogue = OneGroup();
  areas::AreaEditor editor;
  editor.Open = true;
  editor.WorkArea.Color = Inks[0];
  AddOutline(editor.WorkArea, Width / 2.0, Height / 2.0, radius, 500);
  areas::AreaBounds(editor.WorkArea, map.Texts);
  editor.Selected = 7;
  const map::Scene without = map.Scene(catalogue);
  const map::Scene with = map.Scene(catalogue, &editor);
  map::DrawMap(without, map.Surface);
  Stopwatch plots, open, change;
  for (int round = -5; round < 4 * Rounds; ++round) {
    if (round == 0) plots = open = change = {};
    // Each begins as it would go on: what its like has drawn is to be put back.
    map.Aircraft.Step();
    map::RedrawPlots(without, map.Surface);
    plots.Time([&] { map::RedrawPlots(without, map.Surface); });
    map::RedrawPlots(with, map.Surface);
    open.Time([&] { map::RedrawPlots(with, map.Surface); });
    editor.WorkArea.Lines[1 + static_cast<std::size_t>(round + 5) % 500].X1 += 0.5;
    change.Time([&] {
      areas::AreaBounds(editor.WorkArea, map.Texts);
      map::RedrawPlots(with, map.Surface);
    });
  }
  std::printf("%s\n", what);
  Report("  RedrawPlots with the editor open / without", open, plots, 1.2);
  Report("  a changed field: AreaBounds and RedrawPlots / RedrawPlots", change, plots, 1.5);
}

void FarCircles() {
  Map map;
  Stopwatch far, near;
  const map::Pen pen{.Color = 255, .Style = map::PenStyle::Solid};
  const double middleX = Width / 2 * map::UnitsPerPixel, middleY = Height / 2 * map::UnitsPerPixel;
  for (int round = 0; round < Rounds; ++round) {
    near.Time([&] { map.Surface.Circle(middleX, middleY, 500 * map::UnitsPerPixel, pen); });
    far.Time([&] { map.Surface.Circle(middleX + 1e7 * map::UnitsPerPixel, middleY, 1e7 * map::UnitsPerPixel, pen); });
  }
  Report("a circle of 10,000,000 pixels across the view / one of 500", far, near, 1.5);
}

}  // namespace
}  // namespace kestrel

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  kestrel::CullMany();
  kestrel::ManySegments(1'000);
  kestrel::ManySegments(20'000);
  kestrel::Edit("an ordinary area of 500 segments, 300 pixels large", 150);
  kestrel::Edit("an area of 500 segments that fills the map", 450);
  kestrel::FarCircles();
}
