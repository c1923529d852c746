#include "shell/map/mini_map_frm.h"

#include <QPaintEvent>

#include "shell/map/measure_fixture.h"
#include "shell/near.h"

namespace kestrel::shell {
namespace {

class MiniMapWindow : public MeasureTest {
 protected:
  void SetUp() override {
    MeasureTest::SetUp();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&MiniMap()));
    ASSERT_TRUE(QTest::qWaitFor([this] { return Small().Scalings() == 1; }));
  }

  MiniMapPicture& Small() { return MiniMap().Picture(); }
  QImage Shown() { return Small().grab().toImage(); }
};

TEST_F(MiniMapWindow, SideIsTheSizeByTheScale) {
  EXPECT_EQ(Small().objectName(), QStringLiteral("Picture1"));
  EXPECT_EQ(Small().size(), QSize(204, 204));  // 1024 / 5 = 204.8
  EXPECT_EQ(MiniMap().height(), 204 + ToolFrm::StripHeight + 2);
  station.MapOptions.MINIMAPSCALE = 2;
  windows.Refresh(base::Changed::MiniMap);
  EXPECT_EQ(Small().size(), QSize(512, 512));
  EXPECT_EQ(MiniMap().size(), QSize(512 + 2, 512 + ToolFrm::StripHeight + 2));
}

TEST_F(MiniMapWindow, AScaleThatCannotBeIsGuarded) {
  for (const int wrong : {0, -3, -32768}) {
    station.MapOptions.MINIMAPSCALE = static_cast<std::int16_t>(wrong);
    windows.Refresh(base::Changed::MiniMap);
    EXPECT_EQ(Small().width(), 204) << wrong;
  }
  station.MapOptions.MINIMAPSCALE = 32767;
  windows.Refresh(base::Changed::MiniMap);
  EXPECT_EQ(Small().size(), QSize(1, 1)) << "less than a pixel";
  EXPECT_GE(MiniMap().width(), 3 * ToolFrm::StripHeight);
}

TEST_F(MiniMapWindow, ASmallTheaterHasASmallMiniMapThatCentresByTheToldScale) {
  Action("mnuTheatername_2").trigger();  // 512 map units
  station.MapOptions.MINIMAPSCALE = 20;
  windows.Refresh(base::Changed::MiniMap);
  EXPECT_EQ(Small().size(), QSize(25, 25));  // 25.6
  QTest::mouseClick(&Small(), Qt::LeftButton, {}, QPoint(10, 20));
  EXPECT_EQ(View().ViewCenterX, 20 * 10 * 15);
  EXPECT_EQ(View().ViewCenterY, 20 * 20 * 15);
}

TEST_F(MiniMapWindow, RolledUpItStaysSoAndKeepsItsNewHeight) {
  MiniMap().MinFrm();
  station.MapOptions.MINIMAPSCALE = 4;
  windows.Refresh(base::Changed::MiniMap);
  EXPECT_FALSE(MiniMap().Expanded());
  EXPECT_EQ(MiniMap().height(), ToolFrm::StripHeight + 2);
  MiniMap().MaxFrm();
  EXPECT_EQ(MiniMap().height(), 256 + ToolFrm::StripHeight + 2);
}

TEST_F(MiniMapWindow, ThePictureIsScaledOnceForAllMovesOfTheBox) {
  for (int direction = 1; direction <= 5; ++direction) {
    windows.Refresh(map::MoveScreen(View(), direction));
    Shown();
  }
  windows.Refresh(map::ChangeRes(View(), 4));
  Shown();
  EXPECT_EQ(Small().Scalings(), 1);
  station.MapOptions.MINIMAPSCALE = 4;
  windows.Refresh(base::Changed::MiniMap);
  Shown();
  EXPECT_EQ(Small().Scalings(), 2);
}

TEST_F(MiniMapWindow, AnotherTheaterBringsItsPictureAndSize) {
  Action("mnuTheatername_2").trigger();
  EXPECT_EQ(Small().size(), QSize(102, 102));  // 512 / 5
  Shown();
  EXPECT_EQ(Small().Scalings(), 2);
}

TEST_F(MiniMapWindow, NothingIsScaledWhileItIsHidden) {
  Frame().Strip().Check(core::ToolWindow::MiniMap).setChecked(false);
  Action("mnuTheatername_2").trigger();
  Action("mnuTheatername_1").trigger();
  QCoreApplication::processEvents();
  EXPECT_EQ(Small().Scalings(), 1);
}

TEST_F(MiniMapWindow, TheBoxStandsOnWhatTheMapShows) {
  windows.Refresh(map::ChangeRes(View(), 8));
  const QImage shown = Shown();
  const map::MiniMapBox box = map::BoxOnMiniMap(View(), 5);
  const int left = qRound(box.Left / 15);
  const int middle = shown.height() / 2;
  const QColor ground = shown.pixelColor(4, 4);
  EXPECT_GT(shown.pixelColor(left, middle).lightness(), ground.lightness() + 60);
  EXPECT_TRUE(test::NearColour(shown.pixelColor(shown.width() / 2, middle), ground));
}

/// The parts of a widget that its paint events ask for.
class PaintedRegion final : public QObject {
 public:
  explicit PaintedRegion(QWidget& widget) { widget.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) Region += static_cast<QPaintEvent*>(event)->region();
    return false;
  }
  QRegion Region;
};

TEST_F(MiniMapWindow, EachSideOfTheBoxStandsWhereItBelongs) {
  // A surface of 800 by 480 pixels, zoomed twice, at one fifth: 80 by 48 pixels. Its centre at map point (400, 724),
  // 300 below the upper edge, is at (80, 60): the box reaches from (40, 36) to (120, 84).
  View().SurfaceWidth = 800 * 15;
  View().SurfaceHeight = 480 * 15;
  View().ViewCenterX = 400 * 15;
  View().ViewCenterY = 300 * 15;
  windows.Refresh(map::ChangeRes(View(), 2));
  const QImage shown = Shown();
  const int ground = shown.pixelColor(4, 4).lightness();
  const auto bright = [&](int x, int y) { return shown.pixelColor(x, y).lightness() > ground + 60; };
  for (const QPoint side : {QPoint(40, 60), QPoint(119, 60), QPoint(80, 36), QPoint(80, 83)}) {
    EXPECT_TRUE(bright(side.x(), side.y())) << side.x() << ", " << side.y();
  }
  for (const QPoint beside : {QPoint(36, 60), QPoint(44, 60), QPoint(123, 60), QPoint(80, 32), QPoint(80, 40),
                              QPoint(80, 79), QPoint(80, 87), QPoint(80, 60)}) {
    EXPECT_FALSE(bright(beside.x(), beside.y())) << beside.x() << ", " << beside.y();
  }
}

TEST_F(MiniMapWindow, AMoveOfTheBoxPaintsItsOldAndItsNewSides) {
  View().SurfaceWidth = 800 * 15;
  View().SurfaceHeight = 480 * 15;
  View().ViewCenterX = 400 * 15;
  View().ViewCenterY = 300 * 15;
  windows.Refresh(map::ChangeRes(View(), 2));
  Shown();
  QCoreApplication::processEvents();
  PaintedRegion painted(Small());
  // 50 map units east and 100 south: from (40, 36)-(120, 84) to (50, 56)-(130, 104).
  View().ViewCenterX = 450 * 15;
  View().ViewCenterY = 400 * 15;
  windows.Refresh(base::Changed::MiniMap);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !painted.Region.isEmpty(); }));
  for (const QPoint side : {QPoint(40, 60), QPoint(119, 60), QPoint(80, 36), QPoint(80, 83), QPoint(50, 80),
                            QPoint(129, 80), QPoint(80, 56), QPoint(80, 103)}) {
    EXPECT_TRUE(painted.Region.contains(side)) << side.x() << ", " << side.y();
  }
  EXPECT_FALSE(painted.Region.contains(QPoint(10, 10)));
}

TEST_F(MiniMapWindow, ABoxBeyondTheMiniMapIsNotClippedToIt) {
  windows.Refresh(map::ChangeRes(View(), 0.125));
  ASSERT_GT(map::BoxOnMiniMap(View(), 5).Width, map::MiniMapSide(View(), 5));
  const QImage shown = Shown();
  // No line along any edge: they all lie outside.
  const QColor ground = shown.pixelColor(shown.width() / 2, shown.height() / 2);
  for (int at = 0; at < shown.width(); ++at) {
    EXPECT_TRUE(test::NearColour(shown.pixelColor(at, 0), ground)) << at;
    EXPECT_TRUE(test::NearColour(shown.pixelColor(0, at), ground)) << at;
  }
}

TEST_F(MiniMapWindow, AClickCentresTheMapThere) {
  QTest::mouseClick(&Small(), Qt::LeftButton, {}, QPoint(40, 120));
  EXPECT_EQ(View().ViewCenterX, 5 * 40 * 15);
  EXPECT_EQ(View().ViewCenterY, 5 * 120 * 15);
  EXPECT_EQ(Picture().MapDraws(), draws + 1);
  const map::SurfacePoint bulls = map::SurfaceFromView(View(), {View().BullsViewX, View().BullsViewY});
  EXPECT_EQ(View().BullsX, bulls.X);
  EXPECT_EQ(View().BullsY, bulls.Y);
}

TEST_F(MiniMapWindow, AClickAtTheLastPixelIsNotClamped) {
  station.MapOptions.MINIMAPSCALE = 30;  // 34.13 pixels on 34
  windows.Refresh(base::Changed::MiniMap);
  QTest::mouseClick(&Small(), Qt::LeftButton, {}, QPoint(33, 0));
  EXPECT_EQ(View().ViewCenterX, 30 * 33 * 15);
  EXPECT_EQ(View().ViewCenterY, 0);
}

TEST_F(MiniMapWindow, APressTakenOffThePictureOrAnotherButtonIsNoClick) {
  const double before = View().ViewCenterX;
  QTest::mousePress(&Small(), Qt::LeftButton, {}, QPoint(40, 120));
  QTest::mouseRelease(&Small(), Qt::LeftButton, {}, QPoint(-20, 120));
  QTest::mouseClick(&Small(), Qt::RightButton, {}, QPoint(40, 120));
  EXPECT_EQ(View().ViewCenterX, before);
  EXPECT_EQ(Picture().MapDraws(), draws);
}

}  // namespace
}  // namespace kestrel::shell
