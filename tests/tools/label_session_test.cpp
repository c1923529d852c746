// How often labels that are kept apart change their places, in the session that the station is tried with.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>

#include "doubles/recording_surface.h"
#include "map/geometry.h"
#include "map/label_layer.h"
#include "session-sim/world.h"

namespace kestrel::sim {
namespace {

constexpr int WindowWidth = 1920, WindowHeight = 1080;

/// 64 players and 500 AI aircraft, as a controller of both sides is told of them.
class LabelsOfASession {
 public:
  explicit LabelsOfASession(double zoom) {
    map::ResetView(view, MapSize, 2048, 500, 300);
    map::ResizeSurface(view, WindowWidth * map::UnitsPerPixel, WindowHeight * map::UnitsPerPixel);
    map::ChangeRes(view, zoom);
  }

  void Cycle() {
    world.Step(1);
    TakeWorld();
    surface.Calls.clear();
    const map::Scene scene{.MapPicture = picture,
                           .View = view,
                           .TheaterCorner = {},
                           .Display = display,
                           .LinkOptions = linkOptions,
                           .Plots = tables,
                           .Labels = {},
                           .Apart = &layer};
    layer.Draw(scene, surface);
    std::map<std::string, std::pair<int, bool>> now;
    seen = moved = 0;
    for (const map::Label& label : layer.Labels()) {
      const std::pair<int, bool> place = {label.Place, label.Partner != map::Label::Alone};
      const auto was = before.find(std::string(label.Name));
      now[std::string(label.Name)] = place;
      if (was == before.end()) continue;
      ++seen;
      moved += was->second != place ? 1 : 0;
    }
    before = std::move(now);
  }

  int seen = 0;   ///< labels that were there in the last cycle too
  int moved = 0;  ///< of them those that have another place, or have been joined or parted

 private:
  void TakeWorld() {
    tables.Clear();
    for (const Player& player : world.Players()) {
      link::PlotRecord& plot = tables.Clients.Append({});
      plot.Id = plot.ClientId = player.Id;
      plot.PlotVisible = player.Status == 'O';
      plot.Name = player.Name;
      plot.PosText = "0512.0000500.000";
      plot.X = player.At.X;
      plot.Y = player.At.Y;
      plot.Altitude = static_cast<std::int16_t>(player.At.Altitude / 100);
      plot.Speed = static_cast<std::int16_t>(player.At.Speed);
    }
    for (const AIAircraft& aircraft : world.AI()) {
      link::AIPlotRecord& plot = tables.AIPlots.Append({});
      plot.Name = aircraft.Name;
      plot.Name.resize(10, ' ');
      plot.X = static_cast<float>(aircraft.At.X);
      plot.Y = static_cast<float>(MapSize - aircraft.At.Y);
      plot.Altitude = static_cast<std::int16_t>(aircraft.At.Altitude / 100);
      plot.Hostile = aircraft.Of == Side::Red ? 1 : 0;
    }
  }

  World world{{.Players = 64, .AI = 500, .Seed = 1}};
  base::Picture picture;
  map::ViewState view;
  map::Options display;
  link::Options linkOptions;
  link::Tables tables;
  map::LabelLayer layer;
  test::RecordingSurface surface;
  std::map<std::string, std::pair<int, bool>> before;
};

TEST(LabelsOfTheDemoSession, FiveOfAHundredMoveInACycleAtTheMost) {
  for (const double zoom : {1.0, 2.0}) {
    LabelsOfASession session(zoom);
    session.Cycle();
    int all = 0;
    for (int cycle = 0; cycle < 120; ++cycle) {
      session.Cycle();
      ASSERT_GE(session.seen, 300) << "most are seen";
      EXPECT_LE(session.moved, 0.05 * session.seen) << "zoom " << zoom << " cycle " << cycle;
      all += session.moved;
    }
    EXPECT_GT(all, 0) << "aircraft meet each other";
  }
}

}  // namespace
}  // namespace kestrel::sim
