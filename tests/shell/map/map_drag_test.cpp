#include <QWheelEvent>

#include "core/view_options.h"
#include "map/geometry.h"
#include "shell/map/measure_fixture.h"

// The map under the hand: Shift with the left button drags it, and the wheel may zoom at the pointer.
namespace kestrel::shell {
namespace {

class MapUnderTheHand : public MeasureTest {
 protected:
  void Press(QPoint at, Qt::KeyboardModifiers keys = Qt::ShiftModifier) {
    QTest::mousePress(&Picture(), Qt::LeftButton, keys, at);
  }
  void Release(QPoint at) { QTest::mouseRelease(&Picture(), Qt::LeftButton, Qt::ShiftModifier, at); }
  void Drag(QPointF to) { Move(to, Qt::LeftButton); }
  void Turn(QPointF at, int angle) {
    QWheelEvent event(at, Picture().mapToGlobal(at), {}, QPoint(0, angle), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&Picture(), &event);
  }
  map::MapPoint GroundAt(QPointF at) { return map::MapFromSurface(View(), {at.x() * 15, at.y() * 15}); }
  void ExpectGround(QPointF at, map::MapPoint ground) {
    EXPECT_NEAR(GroundAt(at).X, ground.X, 1e-6);
    EXPECT_NEAR(GroundAt(at).Y, ground.Y, 1e-6);
  }
  bool FollowedTo(QPointF at, map::MapPoint ground) {
    return QTest::qWaitFor([&] { return std::abs(GroundAt(at).X - ground.X) < 1e-6; });
  }
};

TEST_F(MapUnderTheHand, ShiftAndTheLeftButtonDragTheGroundAlong) {
  const map::MapPoint ground = GroundAt({300, 200});
  Press({300, 200});
  EXPECT_EQ(Picture().MapDraws(), draws) << "nothing has moved";
  Drag({360, 260});
  ExpectGround({360, 260}, ground);
  EXPECT_EQ(Picture().MapDraws(), draws + 1) << "the first move is seen at once";
  EXPECT_FALSE(View().CursorLineActive) << "no bearing line is drawn meanwhile";
  Release({360, 260});
  Move({500, 300});
  ExpectGround({360, 260}, ground);
}

TEST_F(MapUnderTheHand, ADragGoesOnBesideTheMapAndDrawsOnceInAFrame) {
  const map::MapPoint ground = GroundAt({300, 200});
  Press({300, 200});
  for (int step = 1; step <= 200; ++step) Drag({300.0 - 2 * step, 200.0 + step});
  EXPECT_LE(Picture().MapDraws(), draws + 100) << "not one for each move";
  EXPECT_TRUE(FollowedTo({-100, 400}, ground)) << "the last one is seen without another";
  const std::uint64_t then = Picture().MapDraws();
  Drag({-101, 400});
  Release({-101, 400});
  ExpectGround({-101, 400}, ground);
  EXPECT_LE(Picture().MapDraws(), then + 2);
}

TEST_F(MapUnderTheHand, MovesWithinAFrameAreDrawnTogether) {
  Press({300, 200});
  Drag({340, 200});
  ASSERT_EQ(Picture().MapDraws(), draws + 1);
  // The timer of the frame runs in the loop of events, which has no turn here.
  for (int step = 0; step < 50; ++step) Drag({341.0 + step, 200});
  EXPECT_EQ(Picture().MapDraws(), draws + 1);
  Release({390, 200});
  EXPECT_EQ(Picture().MapDraws(), draws + 2);
}

TEST_F(MapUnderTheHand, EscEndsADragAndNothingElse) {
  const map::MapPoint ground = GroundAt({300, 200});
  int told = 0;
  QObject::connect(&Picture(), &MapPicture::UnboundKey, &Picture(), [&told] { ++told; });
  Press({300, 200});
  Drag({360, 260});
  QTest::keyClick(&Picture(), Qt::Key_Escape);
  EXPECT_EQ(told, 0);
  Drag({500, 500});
  Drag({505, 500});
  ExpectGround({360, 260}, ground);
  EXPECT_FALSE(View().CursorLineActive);
  QTest::keyClick(&Picture(), Qt::Key_Escape);
  EXPECT_EQ(told, 1) << "the drag is over";
  Release({505, 500});
  Press({100, 100}, {});
  Drag({200, 100});
  EXPECT_TRUE(View().CursorLineActive) << "the left button alone draws its line again";
  QTest::mouseRelease(&Picture(), Qt::LeftButton, {}, QPoint(200, 100));
}

TEST_F(MapUnderTheHand, AReleaseThatWentElsewhereEndsTheDrag) {
  const map::MapPoint ground = GroundAt({300, 200});
  Press({300, 200});
  Drag({360, 260});
  Move({500, 500});
  Drag({520, 500});
  ExpectGround({360, 260}, ground);
}

TEST_F(MapUnderTheHand, APressWithShiftSetsTheAnchorAndADragPutsItBack) {
  Press({100, 100}, {});
  QTest::mouseRelease(&Picture(), Qt::LeftButton, {}, QPoint(100, 100));
  const double x = View().AnchorViewX, y = View().AnchorViewY;
  Press({300, 200});
  EXPECT_EQ(View().AnchorX, 300 * 15);
  Drag({301, 200});
  EXPECT_EQ(Picture().MapDraws(), draws) << "a hand that trembles drags nothing";
  Drag({360, 260});
  EXPECT_EQ(View().AnchorViewX, x);
  EXPECT_EQ(View().AnchorViewY, y);
  EXPECT_NEAR(View().AnchorX, (100 + 60) * 15, 1e-6) << "on its ground";
  Release({360, 260});
  Press({300, 200});
  Release({300, 200});
  EXPECT_EQ(View().AnchorX, 300 * 15);
}

TEST_F(MapUnderTheHand, InTheAreaEditorShiftIsForWhatIsDrawn) {
  station.Editor.AreaEditMode = true;
  Press({300, 200});
  Drag({360, 260});
  EXPECT_EQ(Picture().MapDraws(), draws);
  EXPECT_TRUE(View().CursorLineActive);
  Release({360, 260});
}

TEST_F(MapUnderTheHand, TheWheelZoomsAtThePointerWhenItIsAskedTo) {
  const map::MapPoint middle = GroundAt({Picture().width() / 2.0, Picture().height() / 2.0});
  const map::MapPoint ground = GroundAt({400, 150});
  Move({10, 10});
  Turn({400, 150}, 120);
  ExpectGround({Picture().width() / 2.0, Picture().height() / 2.0}, middle);
  Turn({400, 150}, -120);
  const auto rows = core::OptionsTable(station);
  EXPECT_EQ(core::SetOption(program, core::RowOf(rows, "chkWheelAtPointer"), true), base::Changed::Nothing);
  Turn({400, 150}, 120);
  EXPECT_EQ(View().Resolution, 2);
  ExpectGround({400, 150}, ground);
  Turn({400, 150}, 240);
  EXPECT_EQ(View().Resolution, 8);
  ExpectGround({400, 150}, ground);
  EXPECT_NEAR(View().CursorMapX, ground.X, 1e-6);
}

}  // namespace
}  // namespace kestrel::shell
