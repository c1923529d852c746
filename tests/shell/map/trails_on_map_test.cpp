#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "link/roster.h"
#include "map/geometry.h"
#include "map/renderer.h"
#include "shell/map/painted.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

constexpr double TrailRatios[] = {1, 1.5, 2};

/// Players over a small map, their trails shown whole and crossing, drawn on a real surface.
class TrailsOnMap : public testing::Test {
 public:
  TrailsOnMap() { Reset(); }

  void Reset() {
    Plots.Clear();
    Display = {};
    map::ResetView(View, 200, 200, 100, 100);
    map::ResizeSurface(View, 200 * map::UnitsPerPixel, 200 * map::UnitsPerPixel);
    for (int id = 1; id <= 6; ++id) Join(id);
  }

  void Join(int id) {
    link::AddAWASCClient(std::to_string(id) + "\x1ePilot\x1eInfo\x1eO", true, Plots);
    link::PlotRecord& client = Plots.Clients[Plots.Clients.UpperBound()];
    client.Label = "Viper";
    client.Color = static_cast<base::Colour>(0x2B4D71 * id) & 0xFFFFFF;
    client.ShowAllHistory = true;
    client.PosText = "0100.0000100.000";
    client.X = client.Y = 100;
  }

  void Fly(link::PlotRecord& client) {
    client.History.Append({client.X, client.Y});
    client.X = 60.0 + static_cast<double>(numbers() % 800) / 10;
    client.Y = 60.0 + static_cast<double>(numbers() % 800) / 10;
  }
  void FlyAll(int times) {
    for (int time = 0; time < times; ++time) {
      for (link::PlotRecord& client : Plots.Clients.Live()) Fly(client);
    }
  }

  map::Scene Scene(map::TrailLayer* layer) const {
    return {.MapPicture = Picture,
            .View = View,
            .TheaterCorner = {33, 123},
            .Display = Display,
            .LinkOptions = LinkOptions,
            .Plots = Plots,
            .Labels = {},
            .Trails = layer};
  }

  QImage Anew(double ratio) const {
    QtSurface surface = Made({200, 200}, ratio);
    map::TrailLayer layer;
    map::DrawMap(Scene(&layer), surface);
    return surface.Image().copy();
  }

  base::Picture Picture;
  map::ViewState View;
  map::Options Display;
  link::Options LinkOptions;
  link::Tables Plots;
  std::mt19937 numbers{11};
};

TEST_F(TrailsOnMap, ThePictureIsTheOneDrawnAnewAfterEachChange) {
  using Change = void (*)(TrailsOnMap&);
  constexpr Change changes[] = {
      [](TrailsOnMap& at) { at.FlyAll(1); },
      [](TrailsOnMap& at) { at.Fly(at.Plots.Clients[2]); },
      [](TrailsOnMap& at) { at.Plots.Clients[3].Color = 0x00FFFF; },
      [](TrailsOnMap& at) { at.Plots.Clients[4].ShowAllHistory = false; },
      [](TrailsOnMap& at) { at.Plots.Clients[4].ShowAllHistory = true; },
      [](TrailsOnMap& at) { at.Plots.Clients[1].PlotVisible = false; },
      [](TrailsOnMap& at) { at.Plots.Clients[1].PlotVisible = true; },
      [](TrailsOnMap& at) { at.Plots.Clients[5].History.Resize(9); },
      [](TrailsOnMap& at) { link::DelAWACSClient("3", at.Plots); },
      [](TrailsOnMap& at) { at.Join(3); },
      [](TrailsOnMap& at) { at.FlyAll(12); },
      [](TrailsOnMap& at) { at.Display.SHOWHISTORY = false; },
      [](TrailsOnMap& at) { at.Display.SHOWHISTORY = true; },
      [](TrailsOnMap& at) { at.Display.REALVISIBLE = false; },
      [](TrailsOnMap& at) { at.Display.REALVISIBLE = true; },
      [](TrailsOnMap& at) { at.Display.REALLABELSVISIBLE = false; },
      [](TrailsOnMap& at) { at.View.Resolution = 1.5; },
      [](TrailsOnMap& at) { at.View.ViewCenterX += 100; },
      [](TrailsOnMap& at) { at.Plots.Clear(); },
      [](TrailsOnMap& at) { at.Join(8); },
      [](TrailsOnMap& at) { at.FlyAll(20); },
  };
  for (const double ratio : TrailRatios) {
    Reset();
    FlyAll(40);
    QtSurface surface = Made({200, 200}, ratio);
    map::TrailLayer layer;
    map::DrawMap(Scene(&layer), surface);
    QImage screen = surface.Image().copy();
    surface.TakeDirty();
    for (std::size_t change = 0; change < std::size(changes); ++change) {
      changes[change](*this);
      map::RedrawPlots(Scene(&layer), surface);
      ASSERT_TRUE(SamePixels(surface.Image(), Anew(ratio))) << change << " at " << ratio;
      // What is painted on the screen of it makes it the same.
      for (const QRect& part : surface.TakeDirty()) {
        for (int y = part.top(); y <= part.bottom(); ++y) {
          std::memcpy(screen.scanLine(y) + part.left() * 4, surface.Image().constScanLine(y) + part.left() * 4,
                      static_cast<std::size_t>(part.width()) * 4);
        }
      }
      ASSERT_TRUE(SamePixels(screen, surface.Image())) << change << " at " << ratio;
    }
  }
}

TEST_F(TrailsOnMap, WithoutCrossingsAndLabelsThePictureIsThatOfNoLayer) {
  Display.REALLABELSVISIBLE = false;
  for (std::size_t index = 1; index <= 6; ++index) {
    link::PlotRecord& client = Plots.Clients[index];
    client.PosText.clear();
    for (int point = 0; point < 60; ++point) client.History.Append({60.0 + point, 60.0 + 10.0 * double(index)});
  }
  for (const double ratio : TrailRatios) {
    QtSurface layered = Made({200, 200}, ratio);
    QtSurface plain = Made({200, 200}, ratio);
    map::TrailLayer layer;
    map::DrawMap(Scene(&layer), layered);
    map::DrawMap(Scene(nullptr), plain);
    EXPECT_TRUE(SamePixels(layered.Image(), plain.Image())) << ratio;
    for (link::PlotRecord& client : Plots.Clients.Live()) {
      const link::PlotPoint last = client.History[client.History.UpperBound()];
      client.History.Append({last.X + 1, last.Y});
    }
    map::RedrawPlots(Scene(&layer), layered);
    map::RedrawPlots(Scene(nullptr), plain);
    EXPECT_TRUE(SamePixels(layered.Image(), plain.Image())) << ratio;
  }
}

class TrailsInMapWindow : public StationTest {};

TEST_F(TrailsInMapWindow, ARedrawShowsWhatAWholeRepaintShows) {
  Start();
  Connect();
  const auto send = [this](const std::string& text) { socket.Arrive(text + '\0'); };
  for (int id = 1; id <= 3; ++id) send("NEWCLT" + std::to_string(id) + "\x1ePilot\x1eInfo\x1eO");
  for (std::size_t index = 1; index <= 3; ++index) {
    link::PlotRecord& client = station.Plots.Clients[index];
    client.Color = static_cast<base::Colour>(0x5090D0 >> index);
    client.ShowAllHistory = true;
    for (int point = 0; point < 100; ++point) {
      client.History.Append({450.0 + point, 512.0 + (index == 2 ? point - 50 : 10.0 * double(index))});
    }
  }
  windows.Refresh(base::Changed::Map);
  const std::uint64_t draws = Picture().MapDraws();
  for (int second = 0; second < 20; ++second) {
    for (link::PlotRecord& client : station.Plots.Clients.Live())
      client.History.Append({550.0 + second, 500.0 + second});
    windows.Refresh(base::Changed::Plots);
  }
  const QImage redrawn = Picture().grab().toImage().convertToFormat(QImage::Format_RGB32);
  EXPECT_EQ(Picture().MapDraws(), draws);
  windows.Refresh(base::Changed::Map);
  EXPECT_TRUE(SamePixels(redrawn, Picture().grab().toImage().convertToFormat(QImage::Format_RGB32)));
}

}  // namespace
}  // namespace kestrel::shell
