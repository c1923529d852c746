#include "map/trail_layer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <stdexcept>
#include <utility>

#include "link/roster.h"
#include "map/renderer.h"
#include "map/scene_fixture.h"

namespace kestrel::map {
namespace {

/// Keeps what is seen of dots, each a pixel of 15 units, and counts what it is asked for.
class DotSurface : public test::RecordingSurface {
 public:
  struct Pixel {
    base::Colour Color = 0;
    std::uint16_t Rank = 0;
    bool operator==(const Pixel& other) const { return Color == other.Color; }
  };
  using Pixels = std::map<std::pair<double, double>, Pixel>;

  void CopyPicture(const base::Picture&, const SourceRect&) override {
    Shown.clear();
    ++Pictures;
  }
  void Dot(double x, double y, base::Colour color) override {
    Shown[At(x, y)].Color = color;
    ++Single;
  }
  void Dots(std::span<const SurfacePoint> at, base::Colour color, std::uint16_t rank) override {
    for (const SurfacePoint& dot : at) {
      Pixel& pixel = Shown[At(dot.X, dot.Y)];
      if (pixel.Rank <= rank) pixel = {color, rank};
    }
    Together += at.size();
  }
  void Capture() override {
    captured = Shown;
    ++Captures;
  }
  void Restore() override { Shown = captured; }

  void ResetCounts() { Pictures = Captures = Single = Together = 0; }

  Pixels Shown;
  std::size_t Pictures = 0;
  std::size_t Captures = 0;
  std::size_t Single = 0;    ///< by Dot
  std::size_t Together = 0;  ///< by Dots

 private:
  static std::pair<double, double> At(double x, double y) { return {std::round(x / 15), std::round(y / 15)}; }

  Pixels captured;
};

class Trails : public testing::Test, protected test::SceneFixture {
 protected:
  /// A player whose trail is shown whole, and nothing else of him: he has not moved yet.
  void AddTrail(std::int16_t id, base::Colour color) {
    link::PlotRecord& plot = AddPlayer(400, 500);
    plot.Id = plot.ClientId = id;
    plot.PosText.clear();
    plot.Color = color;
    plot.ShowAllHistory = true;
    Plots.RebuildIndex();
  }
  /// `count` points to the right, from `x` on, two map units from one to the next.
  void Fly(std::size_t index, int count, double x, double y) {
    for (int point = 0; point < count; ++point) Plots.Clients[index].History.Append({x + 2 * point, y});
  }

  map::Scene Layered() {
    map::Scene scene = Scene();
    scene.Trails = &Layer;
    return scene;
  }
  void DrawWhole() { DrawMap(Layered(), Drawn); }
  void Redraw() { RedrawPlots(Layered(), Drawn); }

  /// What a surface without the layer shows.
  DotSurface::Pixels Plain() {
    DotSurface plain;
    DrawMap(Scene(), plain);
    return plain.Shown;
  }
  /// What another surface shows whose layer is new.
  DotSurface::Pixels Anew() {
    DotSurface anew;
    TrailLayer layer;
    map::Scene scene = Scene();
    scene.Trails = &layer;
    DrawMap(scene, anew);
    return anew.Shown;
  }

  TrailLayer Layer;
  DotSurface Drawn;
};

TEST_F(Trails, AMessageLaysDownOnePointAndDrawsTheLatestSix) {
  AddTrail(1, 255);
  Fly(1, 100, 400, 500);
  DrawWhole();
  EXPECT_EQ(Drawn.Together, 94U);
  EXPECT_EQ(Drawn.Single, 6U);
  EXPECT_EQ(Drawn.Captures, 1U);
  EXPECT_EQ(Layer.Laid(1), 94U);

  Fly(1, 1, 600, 500);
  Drawn.ResetCounts();
  Redraw();
  EXPECT_EQ(Drawn.Together, 1U);
  EXPECT_EQ(Drawn.Single, 6U);
  EXPECT_EQ(Drawn.Captures, 1U);
  EXPECT_EQ(Drawn.Pictures, 0U);
  EXPECT_EQ(Layer.Laid(1), 95U);

  Drawn.ResetCounts();
  Redraw();
  EXPECT_EQ(Drawn.Together, 0U);
  EXPECT_EQ(Drawn.Single, 6U);
  EXPECT_EQ(Drawn.Captures, 0U) << "nothing has become old";
  EXPECT_EQ(Drawn.Shown.size(), 101U);
}

TEST_F(Trails, TrailsNotShownWholeHaveNoPartInIt) {
  AddTrail(1, 255);
  Plots.Clients[1].ShowAllHistory = false;
  Fly(1, 20, 400, 500);
  DrawWhole();
  Redraw();
  EXPECT_EQ(Drawn.Together, 0U);
  EXPECT_EQ(Drawn.Single, 12U);
  EXPECT_EQ(Drawn.Captures, 1U);
  EXPECT_EQ(Drawn.Shown.size(), 6U);
}

TEST_F(Trails, UpToSixPointsMove) {
  AddTrail(1, 255);
  Fly(1, 6, 400, 500);
  DrawWhole();
  EXPECT_EQ(Drawn.Together, 0U);
  EXPECT_EQ(Drawn.Single, 6U);
}

/// Something that happens between two redraws, to three trails of 30, 40 and 50 points on ways of their own.
struct Happening {
  const char* Name;
  void (*Do)(test::SceneFixture& at);
  bool Whole;  ///< what has been laid down does not fit any more: everything is painted
};

void Take(test::SceneFixture& at, const char* id) { link::DelAWACSClient(id, at.Plots); }

/// A tape's record: other tables in place of the old ones.
void Replace(test::SceneFixture& at, double shift, std::size_t points) {
  base::Table<link::PlotRecord> clients;
  for (const link::PlotRecord& before : at.Plots.Clients.Live()) {
    link::PlotRecord& client = clients.Append(before);
    client.History.Resize(points);
    for (link::PlotPoint& point : client.History.Live()) point = {300 + shift, 450 + shift};
  }
  at.Plots.Clients = std::move(clients);
  at.Plots.RebuildIndex();
}

constexpr Happening Happenings[] = {
    {"nothing", [](test::SceneFixture&) {}, false},
    {"a position",
     [](test::SceneFixture& at) {
       at.Plots.Clients[2].History.Append({700, 530});
     },
     false},
    {"a colour", [](test::SceneFixture& at) { at.Plots.Clients[2].Color = 77; }, true},
    {"a trail not shown whole", [](test::SceneFixture& at) { at.Plots.Clients[2].ShowAllHistory = false; }, true},
    {"a hidden plot", [](test::SceneFixture& at) { at.Plots.Clients[1].PlotVisible = false; }, true},
    {"a record without an Id", [](test::SceneFixture& at) { at.Plots.Clients[1].ClientId = 0; }, true},
    {"the first leaves", [](test::SceneFixture& at) { Take(at, "1"); }, true},
    {"the middle one leaves", [](test::SceneFixture& at) { Take(at, "2"); }, true},
    {"the last leaves", [](test::SceneFixture& at) { Take(at, "3"); }, true},
    {"another comes with the Id of one who left",
     [](test::SceneFixture& at) {
       const link::PlotRecord left = at.Plots.Clients[3];
       Take(at, "3");
       at.Plots.Clients.Append(left);
       at.Plots.IndexLast();
       for (link::PlotPoint& point : at.Plots.Clients[3].History.Live()) point.Y += 20;
     },
     true},
    {"a client comes",
     [](test::SceneFixture& at) {
       link::AddAWASCClient("9\x1eName\x1eInfo\x1eO", true, at.Plots);
       for (int point = 0; point < 25; ++point) at.Plots.Clients[4].History.Append({420.0 + point, 610});
       at.Plots.Clients[4].ShowAllHistory = true;
     },
     false},
    {"a history cut", [](test::SceneFixture& at) { at.Plots.Clients[3].History.Resize(20); }, true},
    {"a tape with other points", [](test::SceneFixture& at) { Replace(at, 0, 60); }, true},
    {"a tape with as many other points", [](test::SceneFixture& at) { Replace(at, 40, 30); }, true},
    {"a tape with less points", [](test::SceneFixture& at) { Replace(at, 40, 3); }, true},
    {"a new connection", [](test::SceneFixture& at) { at.Plots.Clear(); }, true},
    {"history off", [](test::SceneFixture& at) { at.Display.SHOWHISTORY = false; }, true},
    {"players off", [](test::SceneFixture& at) { at.Display.REALVISIBLE = false; }, true},
    {"another zoom", [](test::SceneFixture& at) { at.View.Resolution = 2; }, true},
    {"another middle", [](test::SceneFixture& at) { at.View.ViewCenterX += 150; }, true},
    {"another row", [](test::SceneFixture& at) { at.View.ViewCenterY += 150; }, true},
    {"another size of the map", [](test::SceneFixture& at) { at.View.SurfaceWidth += 300; }, true},
    {"another theater", [](test::SceneFixture& at) { at.View.Size = 900; }, true},
};

class TrailsAfter : public Trails, public testing::WithParamInterface<Happening> {};

TEST_P(TrailsAfter, AreAsWithoutTheLayerInTheVeryNextPicture) {
  for (std::int16_t id = 1; id <= 3; ++id) {
    AddTrail(id, static_cast<base::Colour>(1000 * id));
    Fly(static_cast<std::size_t>(id), 20 + 10 * id, 400, 500 + 10 * id);
  }
  DrawWhole();
  Fly(1, 2, 500, 510);
  Redraw();
  ASSERT_EQ(Drawn.Shown, Plain());

  Drawn.ResetCounts();
  GetParam().Do(*this);
  Redraw();
  EXPECT_EQ(Drawn.Shown, Plain());
  EXPECT_EQ(Drawn.Pictures, GetParam().Whole ? 1U : 0U);

  // And from there on as ever.
  Drawn.ResetCounts();
  for (link::PlotRecord& client : Plots.Clients.Live()) client.History.Append({650, 400});
  Redraw();
  EXPECT_EQ(Drawn.Shown, Plain());
  EXPECT_EQ(Drawn.Pictures, 0U);
}

INSTANTIATE_TEST_SUITE_P(Happenings, TrailsAfter, testing::ValuesIn(Happenings), [](const auto& happening) {
  std::string name = happening.param.Name;
  for (char& letter : name) letter = letter == ' ' ? '_' : letter;
  return name;
});

TEST_F(Trails, SwitchedOffAndOnAreThereAgain) {
  AddTrail(1, 255);
  Fly(1, 40, 400, 500);
  DrawWhole();
  for (bool* shown : {&Display.SHOWHISTORY, &Display.REALVISIBLE, &Plots.Clients[1].PlotVisible}) {
    *shown = false;
    Redraw();
    EXPECT_TRUE(Drawn.Shown.empty());
    *shown = true;
    Redraw();
    EXPECT_EQ(Drawn.Shown.size(), 40U);
  }
  Plots.Clients[1].ShowAllHistory = false;
  Redraw();
  EXPECT_EQ(Drawn.Shown.size(), 6U);
  Drawn.ResetCounts();
  Plots.Clients[1].ShowAllHistory = true;
  Redraw();
  EXPECT_EQ(Drawn.Shown.size(), 40U);
  EXPECT_EQ(Drawn.Pictures, 0U) << "what comes is laid down without a whole repaint";
}

TEST_F(Trails, WhereTheyCrossTheLaterClientLiesAboveWhoeverFlewThereLast) {
  AddTrail(1, 1000);
  AddTrail(2, 2000);
  Fly(1, 20, 400, 500);
  Fly(2, 20, 400, 520);
  DrawWhole();
  // Each flies over the other's old points, then on.
  Fly(1, 1, 410, 520);
  Fly(1, 6, 400, 540);
  Fly(2, 1, 410, 500);
  Fly(2, 6, 400, 560);
  Redraw();
  // (410, 520) is 510 - 410 = 102 pixels left of (512, 512), which is pixel (400, 300), and 8 above it.
  EXPECT_EQ((Drawn.Shown[{298, 292}].Color), 2000U) << "the second one's own point";
  EXPECT_EQ((Drawn.Shown[{298, 312}].Color), 2000U) << "the second one over the first";
  EXPECT_EQ(Drawn.Shown, Anew());
}

TEST_F(Trails, LieTheSameHoweverThePositionsCame) {
  std::mt19937 numbers(7);
  for (std::int16_t id = 1; id <= 4; ++id) AddTrail(id, static_cast<base::Colour>(1000 * id));
  DrawWhole();
  for (int message = 0; message < 300; ++message) {
    link::PlotRecord& client = Plots.Clients[1 + numbers() % 4];
    const auto place = [&] { return 500 + static_cast<double>(numbers() % 12); };
    client.History.Append({place(), place()});
    Redraw();
    ASSERT_EQ(Drawn.Shown, Anew()) << message;
  }
}

TEST_F(Trails, PointsThatAreNoPlaceAreLeftOut) {
  AddTrail(1, 255);
  Fly(1, 10, 400, 500);
  for (const double none : {0.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
    Plots.Clients[1].History.Append({none, 500});
    Plots.Clients[1].History.Append({500, none});
  }
  Fly(1, 6, 450, 500);
  DrawWhole();
  EXPECT_EQ(Drawn.Together, 10U);
  EXPECT_EQ(Drawn.Shown.size(), 16U);
}

/// Cannot draw dots of one colour.
class FrailDots : public DotSurface {
 public:
  void Dots(std::span<const SurfacePoint> at, base::Colour color, std::uint16_t rank) override {
    if (color == 13) throw std::length_error("dots");
    DotSurface::Dots(at, color, rank);
  }
};

TEST_F(Trails, OneThatCannotBeLaidDownCostsNoOtherAndIsDrawnAsWhatMoves) {
  AddTrail(1, 13);
  AddTrail(2, 255);
  Fly(1, 20, 400, 500);
  Fly(2, 20, 400, 510);
  FrailDots frail;
  DrawMap(Layered(), frail);
  EXPECT_EQ(frail.Together, 14U);
  EXPECT_EQ(frail.Single, 20U + 6U);
  EXPECT_EQ(frail.Captures, 1U);
  EXPECT_EQ(frail.Shown, Plain());
  RedrawPlots(Layered(), frail);
  EXPECT_EQ(frail.Shown, Plain());
}

TEST_F(Trails, OldPointsLieBelowEveryPlot) {
  AddPlayer(512, 512).ShowAllHistory = true;
  Fly(1, 7, 400, 500);
  map::Scene scene = Layered();
  DrawMap(scene, Surface);
  std::vector<std::string> kinds;
  for (const test::SurfaceCall& call : Surface.Calls) {
    if (call.What == "dot" || call.What == "capture" || call.What == "print") kinds.push_back(call.What);
  }
  const std::vector<std::string> expected = {"dot", "capture", "print", "print", "print", "print", "print",
                                             "dot", "dot",     "dot",   "dot",   "dot",   "dot"};
  EXPECT_EQ(kinds, expected);
}

}  // namespace
}  // namespace kestrel::map
