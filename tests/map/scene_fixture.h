#pragma once

#include "doubles/recording_surface.h"
#include "map/geometry.h"
#include "map/renderer.h"

// A small theater on a surface of 800 by 600 pixels, Resolution 1: map point (512, 512) is surface point (6000, 4500).
namespace kestrel::test {

struct SceneFixture {
  SceneFixture() {
    map::ResetView(View, 1024, 2048, 500, 300);
    map::ResizeSurface(View, 12000, 9000);
  }

  map::Scene Scene() const {
    return {.MapPicture = Picture,
            .View = View,
            .TheaterCorner = Corner,
            .Display = Display,
            .LinkOptions = LinkOptions,
            .Plots = Plots,
            .Labels = {},
            .Areas = &Areas,
            .Editor = &Editor,
            .Navaids = &Navaids};
  }

  /// A player with his second position: he is shown.
  link::PlotRecord& AddPlayer(double x, double y) {
    link::PlotRecord& plot = Plots.Clients.Append({});
    plot.Id = plot.ClientId = 7;
    plot.PlotVisible = true;
    plot.X = x;
    plot.Y = y;
    plot.PosText = "0512.0000500.000";
    plot.Color = 0x123456;
    plot.Label = "Viper11";
    plot.Name = "Ann";
    plot.Altitude = 35;
    plot.Speed = 400;
    return plot;
  }

  link::AIPlotRecord& AddAI(float x, float y, std::uint8_t hostile) {
    link::AIPlotRecord& plot = Plots.AIPlots.Append({});
    plot.Name = "Mig21";
    plot.X = x;
    plot.Y = y;
    plot.Hostile = hostile;
    plot.Altitude = 50;
    return plot;
  }

  base::Picture Picture;
  map::ViewState View;
  theaters::Corner Corner{33, 123};
  map::Options Display;
  link::Options LinkOptions;
  link::Tables Plots;
  areas::AreaCatalogue Areas;
  areas::AreaEditor Editor;
  radio::Frequencies Navaids;
  RecordingSurface Surface;
};

}  // namespace kestrel::test
