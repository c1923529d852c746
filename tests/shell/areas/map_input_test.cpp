#include <cmath>

#include "shell/areas/area_editor_fixture.h"

namespace kestrel::shell {
namespace {

/// The line from the last point to the pointer, and what is held with a click.
class MapInput : public AreaEditorWindow {
 protected:
  void Watch() {
    QObject::connect(&Window(), &AreasDetailsFrm::RubberMoved,
                     [this](const std::optional<map::MeasuredLine>& moved, base::Colour) { line = moved; });
  }
  void MoveTo(int right, int up) { QTest::mouseMove(&Picture(), Pixel(right, up)); }
  std::string LineText() { return line ? line->Text : "none"; }
  /// Its edges are softened.
  bool RedAt(int right, int up) {
    const QColor seen = Seen(right, up);
    return seen.red() > 150 && seen.green() < 80 && seen.blue() < 80;
  }
  void OpenChain() {
    OpenNew();
    Watch();
    Tick("chkSingleClick");
    desk.ColourAnswers = {0x0000FF};
    PressIn("cmdRegionColor");
  }

  std::optional<map::MeasuredLine> line;
};

TEST_F(MapInput, LineGoesFromTheLastPointToThePointer) {
  OpenChain();
  MoveTo(-30, 0);
  EXPECT_FALSE(line);
  ClickMap(0, 0);
  const std::uint64_t maps = Picture().MapDraws();
  MoveTo(50, 0);
  const std::uint64_t plots = Picture().PlotDraws();
  MoveTo(0, -100);
  ASSERT_TRUE(line);
  // A mile is 1.852 map units: 100 / 1.852 = 53.996.
  EXPECT_EQ(line->Text, "180\xB0 - 54.00nm");
  EXPECT_EQ(line->From.X, MapX(0));
  EXPECT_EQ(line->To.Y, MapY(-100));
  EXPECT_TRUE(RedAt(0, -50));
  EXPECT_EQ(Picture().MapDraws(), maps);
  EXPECT_EQ(Picture().PlotDraws(), plots) << "the picture below is not drawn anew";
  ClickMap(0, -100);
  EXPECT_EQ(LineText(), "360\xB0 - 0.00nm");
  Press(Window(), "Command2_1");
  EXPECT_FALSE(line);
  EXPECT_FALSE(RedAt(0, -50));
}

TEST_F(MapInput, LineFollowsTheMapUnderAPointerThatStands) {
  OpenChain();
  ClickMap(0, 0);
  MoveTo(0, 64);
  const std::string before = LineText();
  EXPECT_EQ(before, "360\xB0 - 34.56nm");
  program.Shown.Refresh(map::ChangeRes(View(), 2));
  // 64 pixels are 32 map units now: 32 / 1.852 = 17.279.
  EXPECT_EQ(LineText(), "360\xB0 - 17.28nm");
}

TEST_F(MapInput, ShiftHoldsTheBearingInSteps) {
  OpenChain();
  ClickMap(0, 0);
  MoveTo(100, 8);
  EXPECT_EQ(LineText().substr(0, 3), "085");
  QTest::keyPress(&Picture(), Qt::Key_Shift);
  EXPECT_EQ(LineText().substr(0, 3), "090") << "without a move of the pointer";
  QTest::keyRelease(&Picture(), Qt::Key_Shift, Qt::ShiftModifier);
  EXPECT_EQ(LineText().substr(0, 3), "085");
  ClickMap(100, 8, Qt::ShiftModifier);
  ASSERT_EQ(Work().Lines.UpperBound(), 1u);
  EXPECT_NEAR(Work().Lines[1].Y2, MapY(0), 1e-6);
  EXPECT_NEAR(Work().Lines[1].X2, MapX(0) + std::hypot(100, 8), 1e-6);
  ClickMap(200, 17);
  EXPECT_EQ(Work().Lines[2].Y2, MapY(17)) << "with no key the place is the pointer's";
}

TEST_F(MapInput, ControlSnapsToAnEndPointNearby) {
  areas::Area wall;
  wall.Lines.Append({MapX(40) + 0.25, MapY(40), MapX(80), MapY(40)});
  areas::AreaBounds(wall, windows.Texts());
  Areas().Append(wall);
  for (const double resolution : {1.0, 2.0}) {
    SCOPED_TRACE(resolution);
    program.Shown.Refresh(map::ChangeRes(View(), resolution));
    const int zoom = static_cast<int>(resolution);
    OpenChain();
    ClickMap(0, 0);
    // 9 and 7 pixels beside the end point, whatever the zoom.
    ClickMap(40 * zoom + 9, 40 * zoom, Qt::ControlModifier);
    EXPECT_NE(Work().Lines[1].X2, MapX(40) + 0.25);
    ClickMap(40 * zoom + 7, 40 * zoom, Qt::ControlModifier);
    EXPECT_EQ(Work().Lines[2].X2, MapX(40) + 0.25);
    ClickMap(-100, -100);
    ClickMap(40 * zoom + 7, 40 * zoom);
    EXPECT_NE(Work().Lines[4].X2, MapX(40) + 0.25);
    Press(Window(), "Command2_1");
  }
}

TEST_F(MapInput, BackspaceAndControlZTakeBackTheLastClick) {
  OpenChain();
  ClickMap(0, 0);
  ClickMap(30, 0);
  ClickMap(30, 40);
  MoveTo(0, 40);
  QTest::keyClick(&Picture(), Qt::Key_Backspace);
  EXPECT_EQ(RowsOf("ListView1"), 1);
  EXPECT_EQ(SelectedIn("ListView1"), 1u);
  EXPECT_EQ(line->From.Y, MapY(0)) << "the chain goes on from where that segment began";
  QTest::keyClick(&Picture(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(RowsOf("ListView1"), 0);
  QTest::keyClick(&Picture(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_FALSE(line);
  EXPECT_EQ(Label(Window(), "lblClickOn_0"), QStringLiteral("Click on the map to add points..."));
  ClickMap(5, 5);
  QTest::keyClick(&Picture(), Qt::Key_Z);
  QTest::keyClick(&Picture(), Qt::Key_Backspace, Qt::ShiftModifier);
  EXPECT_TRUE(line) << "other keys are not the editor's";
}

TEST_F(MapInput, KeyThatRunsACommandIsTheCommands) {
  OpenChain();
  ClickMap(0, 0);
  ClickMap(30, 0);
  // Backspace is 8 of the virtual keys.
  station.ShortcutKeys[0] = core::Binding(8, 0);
  QTest::keyClick(&Picture(), Qt::Key_Backspace);
  EXPECT_EQ(RowsOf("ListView1"), 1);
}

TEST_F(MapInput, ClickStillMovesTheAnchorOfTheCursorLine) {
  OpenChain();
  ClickMap(35, -45);
  EXPECT_EQ(View().AnchorX / 15, Pixel(35, -45).x());
  EXPECT_EQ(View().AnchorY / 15, Pixel(35, -45).y());
}

}  // namespace
}  // namespace kestrel::shell
