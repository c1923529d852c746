#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "areas/area_bounds.h"
#include "areas/area_editor.h"
#include "map/area_layer.h"
#include "map/renderer.h"
#include "map/text_measure.h"
#include "shell/map/painted.h"
#include "shell/map/qt_surface.h"
#include "shell/map/ratios.h"
#include "shell/station_fixture.h"

// Areas as they look on the surface of the map.
namespace kestrel::shell {
namespace {

using areas::Area;
using areas::AreaType;

/// A theater of 400 by 400 map units in the middle of a surface of 400 by 300 pixels: map point (x, y) is pixel
/// (x, 350 - y).
class AreasOnMap : public testing::Test {
 protected:
  AreasOnMap() {
    map::ResetView(view, 400, 400, 0, 0);
    map::ResizeSurface(view, 400 * 15, 300 * 15);
    view.BullseyeVisible = false;
    display.SHOWGRID = false;
    catalogue.AreaFolders.Append({});
    catalogue.AreaGroups.Append({.FolderIndex = 1});
  }

  map::Scene Scene() const {
    return {.MapPicture = picture,
            .View = view,
            .TheaterCorner = {},
            .Display = display,
            .LinkOptions = linkOptions,
            .Plots = plots,
            .Labels = {},
            .Areas = &catalogue,
            .Editor = &editor};
  }

  /// Of each type one, in the middle of the map.
  std::vector<Area> OneOfEach(QtSurface& surface) {
    map::SurfaceTexts texts(surface);
    std::vector<Area> all;
    for (int type = 1; type <= 5; ++type) {
      Area area;
      area.Name = "Name " + std::to_string(type);
      area.Type = static_cast<AreaType>(type);
      area.Color = 0xFFFFFF;
      area.X = area.Y = 200;
      area.Radius = 30;
      area.Icon = 8;
      area.Text = "FLOT";
      area.TextFont.Size = 20;
      for (int line = 0; line < 7; ++line) area.Lines.Append({150.0 + 20 * line, 150, 260, 300.0 - 33 * line});
      for (int point = 0; point < 4; ++point) {
        area.Points.Append({100.0 + 60 * point, 180.0 + 40 * (point % 2), 100.0 * point,
                            static_cast<areas::PointType>(1 + point % 3)});
      }
      areas::AreaBounds(area, texts);
      all.push_back(area);
    }
    return all;
  }

  base::Picture picture;
  map::ViewState view;
  map::Options display;
  link::Options linkOptions;
  link::Tables plots;
  areas::AreaCatalogue catalogue;
  areas::AreaEditor editor;
};

TEST_F(AreasOnMap, TheWorkAreaVanishesWithTheNextRedrawThatIsWithoutIt) {
  for (const double ratio : Ratios) {
    QtSurface surface = Made({400, 300}, ratio);
    for (const Area& area : OneOfEach(surface)) {
      map::DrawMap(Scene(), surface);
      const QImage captured = surface.Image().copy();
      editor.WorkArea = area;
      editor.Open = true;
      editor.Selected = 3;
      map::RedrawPlots(Scene(), surface);
      const QImage shown = surface.Image().copy();
      EXPECT_FALSE(SamePixels(shown, captured)) << area.Name;
      map::RedrawPlots(Scene(), surface);
      EXPECT_TRUE(SamePixels(surface.Image(), shown)) << area.Name << ": drawn twice it is the same";
      map::DrawMap(Scene(), surface);
      EXPECT_TRUE(SamePixels(surface.Image(), shown)) << area.Name << ": by either draw";
      editor.Open = false;
      map::RedrawPlots(Scene(), surface);
      EXPECT_TRUE(SamePixels(surface.Image(), captured)) << area.Name;
    }
  }
}

TEST_F(AreasOnMap, TheWorkAreaLooksLikeTheStoredOne) {
  for (const double ratio : Ratios) {
    QtSurface surface = Made({400, 300}, ratio);
    for (const Area& area : OneOfEach(surface)) {
      catalogue.AreaGroups[1].Areas.Clear();
      catalogue.AreaGroups[1].Areas.Append(area);
      editor.Open = false;
      map::DrawMap(Scene(), surface);
      const QImage stored = surface.Image().copy();
      catalogue.AreaGroups[1].Areas[1].Editing = true;
      editor.WorkArea = area;
      editor.Open = true;
      map::DrawMap(Scene(), surface);
      EXPECT_TRUE(SamePixels(surface.Image(), stored)) << area.Name;
    }
  }
}

TEST_F(AreasOnMap, WhatChangesIsToldToTheScreen) {
  QtSurface surface = Made({400, 300}, 1);
  map::DrawMap(Scene(), surface);
  surface.TakeDirty();
  QImage before = surface.Image().copy();
  for (const Area& area : OneOfEach(surface)) {
    editor.WorkArea = area;
    for (const bool open : {true, false}) {
      editor.Open = open;
      map::RedrawPlots(Scene(), surface);
      const QRegion dirty = surface.TakeDirty();
      for (int y = 0; y < before.height(); ++y) {
        for (int x = 0; x < before.width(); ++x) {
          if (before.pixel(x, y) == surface.Image().pixel(x, y)) continue;
          ASSERT_TRUE(dirty.contains(QPoint(x, y))) << area.Name << ' ' << x << ' ' << y;
        }
      }
      before = surface.Image().copy();
    }
  }
}

TEST_F(AreasOnMap, SegmentsAreOnePixelWideAfterTheEmphasisToo) {
  display.SHOWAREANAMES = false;
  QtSurface surface = Made({400, 300}, 1);
  editor.Open = true;
  editor.Selected = 1;
  editor.WorkArea.Color = 255;
  editor.WorkArea.Lines.Append({100, 200, 300, 200});
  editor.WorkArea.Lines.Append({100, 170, 300, 170});
  editor.WorkArea.MaxX = editor.WorkArea.MaxY = 400;
  for (int draw = 0; draw < 2; ++draw) {
    map::RedrawPlots(Scene(), surface);
    const QRegion column = Painted(surface.Image()) & QRect(200, 0, 1, 300);
    EXPECT_TRUE(column.xored(QRegion(200, 148, 1, 5) + QRect(200, 180, 1, 1)).isEmpty());
  }
}

TEST_F(AreasOnMap, ASegmentIsTheSameWhateverStandsBeyondTheSurface) {
  QtSurface surface = Made({400, 300}, 1);
  display.SHOWAREANAMES = false;
  Area area;
  area.Color = 255;
  area.MaxX = area.MaxY = 400;
  const double nan = std::nan("");
  for (const double far : {nan, 1e300, -1e300, std::numeric_limits<double>::infinity()}) {
    area.Lines.Append({far, 100, far, far});
    area.Lines.Append({nan, far, 200, 200});
    area.Lines.Append({1e9, far, 1e9, -1e9});
  }
  area.Lines.Append({100, 200, 300, 200});
  catalogue.AreaGroups[1].Areas.Append(area);
  map::DrawMap(Scene(), surface);
  EXPECT_TRUE(Painted(surface.Image()).xored(QRegion(100, 150, 201, 1)).isEmpty());
}

TEST_F(AreasOnMap, HostileAreasLeaveTheOthersAlone) {
  QtSurface surface = Made({400, 300}, 1);
  const double huge = 1e300;
  const float sizes[] = {0, -1, 1e30F, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()};
  auto& stored = catalogue.AreaGroups[1].Areas;
  for (const Area& area : OneOfEach(surface)) {
    for (const float size : sizes) {
      Area& text = stored.Append(area);
      text.TextFont.Size = text.AltFont.Size = size;
      text.X = 1000;  // its shape lies beyond the surface, its box does not
    }
    for (const double value : {huge, -huge, std::nan(""), 1e12}) {
      Area& far = stored.Append(area);
      far.X = far.Y = far.Radius = value;
      for (areas::AreaLine& line : far.Lines.Live()) line = {value, value, value, value};
      for (areas::FlightPlanPoint& point : far.Points.Live()) point = {value, value, value};
      far.MinX = far.MaxY = value;
    }
  }
  for (int font = 0; font < 100; ++font) {
    Area& text = stored.Append({.Type = AreaType::Text});
    text.Text = "Each in a font of its own";
    text.TextFont.Name = "Font " + std::to_string(font);
    text.TextFont.Size = 40;
    text.X = 1000;
    text.MaxX = text.MaxY = 400;
  }
  Area& sound = stored.Append({.Type = AreaType::Circle, .Radius = 0, .X = 20, .Y = 70});
  sound.Color = 0x00FF00;
  sound.Name.clear();
  sound.MaxX = sound.MaxY = 400;
  for (const double zoom : {1.0, 1024.0, 0.125, 1.0}) {
    view.Resolution = zoom;
    map::DrawMap(Scene(), surface);
  }
  EXPECT_EQ(surface.Image().pixel(20, 280), qRgb(0, 255, 0));
  EXPECT_EQ(surface.Image().pixel(20, 281), qRgb(0, 255, 0)) << "a dot";
}

TEST(CirclesOfTheMap, ALargeOneStandsWhereItShouldHoweverLargeItIs) {
  for (const double ratio : Ratios) {
    // Through the pixel (100, 80), its centre to the right and, steeper, to the upper left.
    for (const double radius : {5e3, 1e7, 1e9, 3e10}) {
      for (const QPointF towards : {QPointF(1, 0), QPointF(-0.6, -0.8)}) {
        const QPointF centre = QPointF(100, 80) + towards * radius;
        QtSurface surface = Made({200, 160}, ratio);
        surface.Circle(centre.x() * 15, centre.y() * 15, radius * 15, {.Color = 255, .Style = map::PenStyle::Solid});
        const QImage& image = surface.Image();
        bool met = false;
        int found = 0;
        for (int y = 0; y < surface.Image().height(); ++y) {
          for (int x = 0; x < surface.Image().width(); ++x) {
            const double off = std::hypot(x - centre.x() * ratio, y - centre.y() * ratio) - radius * ratio;
            if (image.pixel(x, y) != Ground.rgb()) {
              ASSERT_LE(std::abs(off), 1 + ratio) << radius << ' ' << x << ' ' << y;
              ++found;
              met |= std::abs(x - 100 * ratio) <= 2 && std::abs(y - 80 * ratio) <= 2;
            }
          }
        }
        EXPECT_TRUE(met) << radius << ' ' << ratio;
        // From edge to edge: at least as many pixels as the surface is high.
        EXPECT_GE(found, surface.Image().height() - 1) << radius << ' ' << ratio;
        surface.Restore();
        EXPECT_TRUE(Painted(surface.Image()).isEmpty());
      }
    }
  }
}

TEST(CirclesOfTheMap, ALargeOneThatGoesAroundTheViewIsNotSeen) {
  for (const double radius : {2e3, 1e6, 1e12, 1e300}) {
    QtSurface surface = Made({200, 160}, 1);
    surface.Circle(100 * 15, 80 * 15, radius * 15, {.Color = 255, .Style = map::PenStyle::Solid});
    EXPECT_TRUE(Painted(surface.Image()).isEmpty()) << radius;
  }
}

TEST(CirclesOfTheMap, OfALargeArcOnlyItsPartIsDrawn) {
  // The centre is 10,000,000 pixels below the middle: the top of the circle, at 90 degrees, is in the middle.
  constexpr double radius = 1e7;
  const auto painted = [](double from, double to) {
    QtSurface surface = Made({200, 160}, 1);
    surface.Arc(100 * 15, (80 + radius) * 15, radius * 15, from, to, {.Color = 255, .Style = map::PenStyle::Solid});
    return Painted(surface.Image()).boundingRect();
  };
  const QRect all(0, 80, 200, 1);
  EXPECT_EQ(painted(0, 360), all);
  EXPECT_EQ(painted(45, 135), all);
  EXPECT_EQ(painted(135, 45), all);
  EXPECT_EQ(painted(-315, -225), all);
  EXPECT_EQ(painted(405, 495), all);
  EXPECT_TRUE(painted(135, 360).isEmpty());
  EXPECT_TRUE(painted(-225, 45).isEmpty());
  // Anticlockwise from the top is to the left.
  EXPECT_EQ(painted(90, 135), QRect(0, 80, 101, 1));
  EXPECT_EQ(painted(450, 540), QRect(0, 80, 101, 1));
  EXPECT_EQ(painted(0, 90), QRect(100, 80, 100, 1));
}

TEST(SegmentsOfTheMap, AreThePolygonsOfTwo) {
  std::vector<map::SurfacePoint> ends;
  unsigned number = 12345;
  const auto next = [&number] {
    number = number * 1103515245 + 12345;
    return static_cast<double>(number >> 8) / (1 << 24);
  };
  for (int end = 0; end < 1202; ++end) ends.push_back({(next() * 500 - 100) * 15, (next() * 400 - 100) * 15});
  for (int end = 0; end < 40; ++end) ends[static_cast<std::size_t>(end) * 30] = {next() * 4e7, next() * -1e12};
  for (std::size_t end = 2; end < 60; end += 6) ends[end + 1] = ends[end];
  ends[7].X = std::nan("");
  ends.push_back({0, 0});  // an odd one has no second end
  for (const double ratio : Ratios) {
    for (const map::PenStyle style : {map::PenStyle::Smooth, map::PenStyle::Solid}) {
      for (const int width : {1, 5}) {
        const map::Pen pen{.Color = 0xFFFFFF, .DrawWidth = width, .Style = style};
        QtSurface together = Made({300, 200}, ratio);
        together.Segments(ends, pen);
        QtSurface single = Made({300, 200}, ratio);
        for (std::size_t end = 0; end + 1 < ends.size(); end += 2) single.Polygon(std::span(ends).subspan(end, 2), pen);
        EXPECT_TRUE(SamePixels(together.Image(), single.Image())) << ratio << ' ' << width;
        together.Restore();
        EXPECT_TRUE(Painted(together.Image()).isEmpty()) << ratio << ' ' << width;
      }
    }
  }
}

TEST(TextsOfTheMap, AreTheSameHoweverManyFontsHaveBeenUsed) {
  QtSurface surface = Made({400, 100}, 1);
  const map::TextFont font{.Name = "MS Sans Serif", .Size = 20};
  surface.Print("FLOT", 15, 15, font, 255);
  const QImage before = surface.Image().copy();
  surface.Restore();
  for (int other = 0; other < 600; ++other) {
    const std::string name = "Font " + std::to_string(other);
    const map::TextFont used{.Name = name, .Size = static_cast<float>(8 + other % 5)};
    EXPECT_GT(surface.Measure("x", used).Width, 0);
  }
  // Some hundreds of large letters are more than is kept.
  for (int other = 0; other < 30; ++other) {
    const map::TextFont large{.Name = "MS Sans Serif", .Size = 200 - static_cast<float>(other)};
    surface.Print("ABCDEFGHIJKLMNOPQRSTUVWXYZ@#%&", 15, 15, large, 255);
  }
  surface.Restore();
  surface.Print("FLOT", 15, 15, font, 255);
  EXPECT_TRUE(SamePixels(surface.Image(), before));
}

TEST(TextsOfTheMap, ASheetTellsWhatItHasTakenOnce) {
  GlyphSheet sheet({.Name = "MS Sans Serif", .Size = 8}, 1);
  EXPECT_EQ(sheet.TakeGrowth(), 0U);
  sheet.At('M');
  EXPECT_GE(sheet.TakeGrowth(), sizeof(InkBlock));
  sheet.At('M');
  EXPECT_EQ(sheet.TakeGrowth(), 0U);
}

class AreasOfTheStation : public StationTest {};

TEST_F(AreasOfTheStation, TextsAreMeasuredBeforeTheMapIsDrawnAndAsItPrintsThem) {
  areas::TextMeasure& texts = windows.Texts();
  const areas::TextExtent before = texts.Extent("FLOT", {.Size = 20});
  // 20 points are 26.7 pixels, and so map units at zoom 1.
  EXPECT_GE(before.Height, 26);
  EXPECT_LE(before.Height, 54);
  EXPECT_GT(before.Width, 26);
  EXPECT_GT(texts.Extent("FLOT FLOT", {.Size = 20}).Width, 2 * before.Width);
  Start();
  View().Resolution = 8;
  Picture().DrawMap();
  EXPECT_EQ(texts.Extent("FLOT", {.Size = 20}).Width, before.Width) << "whatever the zoom";
}

TEST_F(AreasOfTheStation, TheMapShowsTheCatalogueAndTheEditorsCopy) {
  Start();
  station.MapOptions.SHOWAREANAMES = false;
  station.MapOptions.SHOWGRID = false;
  View().BullseyeVisible = false;
  const auto line = [this](double down) {
    Area area;
    area.Color = 0xFF00FF;
    const map::MapPoint from = map::MapFromSurface(View(), {20 * 15, down * 15});
    const map::MapPoint to = map::MapFromSurface(View(), {60 * 15, down * 15});
    area.Lines.Append({from.X, from.Y, to.X, to.Y});
    areas::AreaBounds(area, windows.Texts());
    return area;
  };
  station.Areas.AreaFolders.Append({});
  station.Areas.AreaGroups.Append({.FolderIndex = 1}).Areas.Append(line(30));
  station.Editor.WorkArea = line(40);
  station.Editor.Open = true;
  Picture().DrawMap();
  const auto pixel = [this](int y) { return Picture().grab().toImage().pixel(40, y); };
  EXPECT_EQ(pixel(30), qRgb(255, 0, 255));
  EXPECT_EQ(pixel(40), qRgb(255, 0, 255));
  station.Editor.Open = false;
  Picture().RedrawPlots();
  EXPECT_EQ(pixel(30), qRgb(255, 0, 255));
  EXPECT_NE(pixel(40), qRgb(255, 0, 255));
}

}  // namespace
}  // namespace kestrel::shell
