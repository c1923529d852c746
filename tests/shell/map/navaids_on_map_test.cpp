#include <gtest/gtest.h>

#include <QImage>

#include "map/geometry.h"
#include "map/navaid_layer.h"
#include "shell/map/painted.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

class NavaidsOfTheStation : public StationTest {};

TEST_F(NavaidsOfTheStation, TheMapShowsTheAirfieldsOfItsTables) {
  Start();
  map::Options& options = station.MapOptions;
  options.SHOWGRID = options.DRAW_ILS_LABELS = options.DRAW_TACAN_LABELS = options.DRAW_TACAN_ICON_VISIBLE = false;
  options.AIRF_ILS_COL[0] = 0xFF00FF;
  options.AIRF_TACAN_RANGE_COL = 0xFFFF00;
  View().BullseyeVisible = false;
  radio::Airfield& airfield = station.Frequencies.Airfields.Append({});
  const auto at = map::MapFromSurface(View(), {60 * 15, 60 * 15});
  airfield.ILS_VIS[0] = airfield.VIS = airfield.TACAN_VIS = true;
  airfield.ILS_DES[0] = "09L";
  airfield.ILS_R[0] = {at.X, at.Y};
  airfield.TACANX = at.X;
  airfield.TACANY = at.Y;
  airfield.TACANR = 20;  // 37 pixels
  Picture().DrawMap();
  const QImage drawn = Picture().grab().toImage();
  EXPECT_EQ(drawn.pixel(60, 60), qRgb(255, 0, 255)) << "the ILS begins here";
  EXPECT_EQ(drawn.pixel(23, 60), qRgb(0, 255, 255)) << "the range of the TACAN";
  station.Frequencies.Airfields.Clear();
  Picture().DrawMap();
  const QImage empty = Picture().grab().toImage();
  EXPECT_NE(empty.pixel(60, 60), qRgb(255, 0, 255));
  EXPECT_NE(empty.pixel(23, 60), qRgb(0, 255, 255));
}

/// Navaids on a surface of 400 by 300 pixels, which shows the map from (0, 100) to (400, 400) at zoom 1.
class NavaidsOnMap : public testing::Test {
 protected:
  NavaidsOnMap() {
    map::ResetView(view, 400, 400, 0, 0);
    map::ResizeSurface(view, 400 * 15, 300 * 15);
    display.AIRF_ILS_COL.fill(0xFFFFFF);
    display.AIRF_TACAN_COL = display.AIRF_TACAN_RANGE_COL = 0xFFFFFF;
    display.ILS_LABEL_FONT.Color = display.TACAN_LABEL_FONT.Color = 0xFFFFFF;
  }

  radio::Airfield& Add() {
    radio::Airfield& airfield = navaids.Airfields.Append({});
    airfield.Name = "WWWWWWWWWWWWWWWWWWWWWWWWWWWWWW";
    airfield.VIS = airfield.TACAN_VIS = airfield.ILS_VIS[0] = true;
    airfield.ILS_DES[0] = "WWWWWWWWWW";
    return airfield;
  }

  map::Scene Scene() const {
    return {.MapPicture = picture,
            .View = view,
            .TheaterCorner = {},
            .Display = display,
            .LinkOptions = linkOptions,
            .Plots = plots,
            .Labels = {},
            .Navaids = &navaids};
  }

  base::Picture picture;
  map::ViewState view;
  map::Options display;
  link::Options linkOptions;
  link::Tables plots;
  radio::Frequencies navaids;
};

TEST_F(NavaidsOnMap, WhatReachesIntoTheViewIsDrawnAsOnALargerSurface) {
  const map::ViewState own = view;
  map::ViewState larger = view;
  map::ResizeSurface(larger, 2000 * 15, 300 * 15);  // 800 pixels more on the left and on the right
  for (int step = 0; step < 16; ++step) {
    navaids.Airfields.Clear();
    radio::Airfield& airfield = Add();
    // On the left of the view, with letters that grow with the distance and a label that stands to the right.
    display.TACAN_LABEL_POSITION = step % 2 == 0 ? 1 : 3;
    display.TACAN_LABEL_FONT.FontSize = display.ILS_LABEL_FONT.FontSize = static_cast<float>(4 + 3 * step);
    airfield.TACANX = airfield.ILS_R[0].RX = -40.0 * step;
    airfield.TACANY = airfield.ILS_R[0].RY = 200;
    airfield.TACANR = 25 * step;
    airfield.ILS_DRAW_HEADING[0] = step % 3 == 0 ? 0 : 45;
    const auto drawn = [&](const map::ViewState& shown, QSize size) {
      view = shown;
      QtSurface surface = Made(size, 1);
      map::DrawTacans(Scene(), surface);
      map::DrawIlsFans(Scene(), surface);
      return surface.Image().copy();
    };
    const QImage small = drawn(own, {400, 300});
    EXPECT_FALSE(Painted(small).isEmpty()) << step;
    // But for the last pixels of lines that the edge cuts.
    const QImage large = drawn(larger, {2000, 300}).copy(800 + 3, 3, 394, 294);
    EXPECT_TRUE(SamePixels(small.copy(3, 3, 394, 294), large)) << step;
  }
}

}  // namespace
}  // namespace kestrel::shell
