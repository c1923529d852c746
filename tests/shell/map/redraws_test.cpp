#include <QPaintEvent>
#include <QSignalSpy>
#include <vector>

#include "link/feed_text.h"
#include "shell/map/painted.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

/// Keeps what a widget is told to paint.
class PaintLog : public QObject {
 public:
  std::vector<QRegion> Regions;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) Regions.push_back(static_cast<QPaintEvent*>(event)->region());
    return QObject::eventFilter(watched, event);
  }
};

/// A session with one player over the middle of the map, which has been painted.
class RedrawsOfThePlots : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
    Connect();
    socket.Arrive(test::Message("NEWCLT", test::ClientData("10", "Adams", "i", "O")));
    Fly(512);
    Fly(512);
    windows.Refresh(base::Changed::Map);
    Picture().installEventFilter(&paints);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !paints.Regions.empty(); }));
    paints.Regions.clear();
    asked = Picture().PlotDraws();
    drawn = Picture().PlotsDrawn();
  }

  /// The player's next position, map units: 512 to the north.
  void Fly(int east) {
    socket.Arrive(
        test::Message("INDATA", test::PositionData("10", "1679350", std::to_string(east * 328) + "0", "9000")));
  }
  QImage Shown() { return Picture().grab().toImage().convertToFormat(QImage::Format_RGB32); }

  PaintLog paints;
  std::uint64_t asked = 0;
  std::uint64_t drawn = 0;
};

TEST_F(RedrawsOfThePlots, OfManyArrivalsBetweenTwoPaintsTheLastIsDrawnWithTheNextPaint) {
  for (const int east : {530, 550, 570, 590, 610}) Fly(east);
  EXPECT_EQ(station.Plots.Clients[1].History.UpperBound(), 7U) << "each has been applied";
  EXPECT_EQ(Picture().PlotDraws(), asked + 5);
  EXPECT_EQ(Picture().PlotsDrawn(), drawn + 1) << "the first, at once";
  ASSERT_TRUE(QTest::qWaitFor([this] { return !paints.Regions.empty(); }));
  EXPECT_EQ(Picture().PlotsDrawn(), drawn + 2);
  // 610 - 512 = 98 pixels right of the middle; to the circle's edge four more.
  const QPoint symbol(Picture().width() / 2 + 98 + 4, Picture().height() / 2);
  EXPECT_TRUE(paints.Regions.front().contains(symbol)) << "with the same paint";

  const QImage redrawn = Shown();
  EXPECT_EQ(Picture().PlotsDrawn(), drawn + 2);
  windows.Refresh(base::Changed::Map);
  EXPECT_TRUE(SamePixels(redrawn, Shown()));
}

TEST_F(RedrawsOfThePlots, OnePaintedAfterAnotherAreDrawnEach) {
  for (const int east : {530, 550, 570}) {
    Fly(east);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !paints.Regions.empty(); }));
    paints.Regions.clear();
  }
  EXPECT_EQ(Picture().PlotDraws(), asked + 3);
  EXPECT_EQ(Picture().PlotsDrawn(), drawn + 3);
}

TEST_F(RedrawsOfThePlots, WhatHasNotBeenSeenIsThereWhenTheMapIsShown) {
  Picture().hide();
  for (const int east : {530, 550, 570}) Fly(east);
  EXPECT_EQ(Picture().PlotDraws(), asked + 3);
  Picture().show();
  ASSERT_TRUE(QTest::qWaitFor([this] { return !paints.Regions.empty(); }));
  const QImage redrawn = Shown();
  windows.Refresh(base::Changed::Map);
  EXPECT_TRUE(SamePixels(redrawn, Shown()));
}

TEST_F(RedrawsOfThePlots, AWholeRepaintDrawsWhatIsDue) {
  for (const int east : {530, 550}) Fly(east);
  windows.Refresh(base::Changed::Map);
  ASSERT_TRUE(QTest::qWaitFor([this] { return !paints.Regions.empty(); }));
  EXPECT_EQ(Picture().PlotsDrawn(), drawn + 1);
  const QImage repainted = Shown();
  windows.Refresh(base::Changed::Map);
  EXPECT_TRUE(SamePixels(repainted, Shown()));
}

}  // namespace
}  // namespace kestrel::shell
