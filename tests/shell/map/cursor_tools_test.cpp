#include "map/cursor_tools.h"

#include <QPainter>
#include <QSignalSpy>
#include <QWindow>

#include "core/execute_shortcut.h"
#include "shell/map/measure_fixture.h"

namespace kestrel::shell {
namespace {

class Measuring : public MeasureTest {};

TEST_F(Measuring, LineAppearsWhileDraggingAndGoesWithTheNextMove) {
  Move({200, 300});
  EXPECT_EQ(LinePixels(), 0);
  QTest::mousePress(&Picture(), Qt::LeftButton, {}, QPoint(200, 300));
  EXPECT_FALSE(View().CursorLineActive);
  Move({500, 300}, Qt::LeftButton);
  EXPECT_TRUE(View().CursorLineActive);
  EXPECT_GT(LinePixels(), 250);
  EXPECT_EQ(Text(Curs(), "Label2"), QStringLiteral("090\u00b0 / 270\u00b0"));
  EXPECT_EQ(Text(Curs(), "Label3"), QStringLiteral("161.99 NM"));  // 300 / 1.852
  QTest::mouseRelease(&Picture(), Qt::LeftButton, {}, QPoint(500, 300));
  Move({501, 300});
  EXPECT_FALSE(View().CursorLineActive);
  EXPECT_EQ(LinePixels(), 0);
  EXPECT_EQ(Text(Curs(), "Label2"), QString());
  EXPECT_EQ(Text(Curs(), "Label3"), QString());
}

TEST_F(Measuring, ADoubleClickLeavesNoLineBehind) {
  QWindow& window = *Frame().windowHandle();
  const QPoint at = Picture().mapTo(&Frame(), QPoint(300, 200));
  // What another test has left held down would have the moves.
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    if (QGuiApplication::mouseButtons().testFlag(button)) QTest::mouseRelease(&window, button, {}, at);
  }
  QCursor::setPos(Picture().mapToGlobal(QPoint(300, 200)));
  QTest::mousePress(&window, Qt::LeftButton, {}, at);
  QTest::mouseRelease(&window, Qt::LeftButton, {}, at);
  // Soon enough after the first click to make a double click of the second; its button stays down for a while.
  QTest::lastMouseTimestamp -= QTest::mouseDoubleClickInterval;
  QTest::mousePress(&window, Qt::LeftButton, {}, at);
  ASSERT_EQ(Picture().MapDraws(), draws + 1) << "centred";
  const QPoint sentTo = Picture().mapFromGlobal(QCursor::pos());
  ASSERT_GT((sentTo - QPoint(300, 200)).manhattanLength(), 100);
  // The move of the pointer has come, with the button still down.
  ASSERT_TRUE(QTest::qWaitFor([&] { return View().MouseX == sentTo.x() * 15 && View().MouseY == sentTo.y() * 15; }));
  EXPECT_FALSE(View().CursorLineActive);
  QTest::mouseRelease(&window, Qt::LeftButton, {}, Picture().mapTo(&Frame(), sentTo));
  EXPECT_FALSE(View().CursorLineActive);
  EXPECT_EQ(LinePixels(), 0);
  EXPECT_EQ(Text(Curs(), "Label2"), QString());
  EXPECT_EQ(Text(Curs(), "Label3"), QString());
}

TEST_F(Measuring, APersonsOwnMoveAfterADoubleClickDrawsTheLine) {
  QTest::mouseDClick(&Picture(), Qt::LeftButton, {}, QPoint(300, 200));
  const QPointF sentTo = Picture().mapFromGlobal(QCursor::pos());
  Move(sentTo + QPointF(60, 0), Qt::LeftButton);  // on its way before the pointer was moved
  EXPECT_TRUE(View().CursorLineActive);
  Move(sentTo, Qt::LeftButton);
  EXPECT_FALSE(View().CursorLineActive);
  Move(sentTo, Qt::LeftButton);
  EXPECT_TRUE(View().CursorLineActive) << "only once";
}

TEST_F(Measuring, APressEndsTheWaitForTheMoveOfACentring) {
  QTest::mouseClick(&Picture(), Qt::MiddleButton, {}, QPoint(300, 200));
  const QPoint sentTo = Picture().mapFromGlobal(QCursor::pos());
  QTest::mousePress(&Picture(), Qt::LeftButton, {}, sentTo);
  Move(sentTo, Qt::LeftButton);
  EXPECT_TRUE(View().CursorLineActive);
}

TEST_F(Measuring, TheRightButtonDrawsNoLine) {
  Move({300, 300}, Qt::RightButton);
  EXPECT_FALSE(View().CursorLineActive);
}

TEST_F(Measuring, AMoveOfTheMouseDrawsNoMap) {
  Check1().setChecked(true);
  const std::uint64_t plotDraws = Picture().PlotDraws();
  for (int x = 100; x < 400; x += 10) Move({static_cast<qreal>(x), 250});
  EXPECT_EQ(Picture().MapDraws(), draws);
  EXPECT_EQ(Picture().PlotDraws(), plotDraws);
}

TEST_F(Measuring, AMovePaintsOnlyThePlacesOfTheOldAndTheNewLine) {
  Check1().setChecked(true);
  Move({100, 100});
  QTest::mousePress(&Picture(), Qt::LeftButton, {}, QPoint(100, 100));
  CursorLine line;
  map::Options options;
  View().CursorLineActive = true;
  View().MouseX = 900 * 15;
  View().MouseY = 600 * 15;
  const QRegion painted = line.Take(View(), options, QStringLiteral("120\u00b0 - 500.00nm"), QSize(1280, 720));
  qint64 area = 0;
  for (const QRect& part : painted) area += qint64(part.width()) * part.height();
  EXPECT_TRUE(painted.contains(QPoint(500, 350)));
  EXPECT_LT(area, 1280 * 720 / 10);
  View().CursorLineActive = false;
  EXPECT_EQ(line.Take(View(), options, {}, QSize(1280, 720)), painted);
  EXPECT_TRUE(line.Take(View(), options, {}, QSize(1280, 720)).isEmpty());
}

TEST_F(Measuring, TextStandsTenPixelsRightOfThePointerAndCentredOnIt) {
  CursorLine line;
  View().CursorLineActive = true;
  // The pointer on the anchor: the text is all there is.
  View().MouseX = View().AnchorX = 400 * 15;
  View().MouseY = View().AnchorY = 300 * 15;
  const QRect text = line.Take(View(), {}, QStringLiteral("360\u00b0 - 0.00nm"), QSize(1280, 720)).boundingRect();
  // Its plate is 4 pixels wider to each side; 1 more is painted all around.
  EXPECT_EQ(text.left(), 400 + 10 - 4 - 1);
  EXPECT_EQ(text.top() + text.bottom() + 1, 2 * 300);
  EXPECT_GT(text.height(), 10);
  EXPECT_GT(text.width(), 5 * text.height() / 2);
}

TEST_F(Measuring, BearingAndRangeStandBesideThePointer) {
  QTest::mousePress(&Picture(), Qt::LeftButton, {}, QPoint(200, 300));
  const QImage bare = Picture().grab().toImage();
  Move({500, 300}, Qt::LeftButton);
  const QImage shown = Picture().grab().toImage();
  const auto with = [&](const QString& text) {
    CursorLine line;
    line.Take(View(), station.MapOptions, text, Picture().size());
    QImage painted = bare;
    QPainter painter(&painted);
    line.Paint(painter);
    return painted;
  };
  // Due east, 300 pixels: 300 / 1.852 nautical miles.
  EXPECT_EQ(shown, with(QStringLiteral("090\u00b0 - 161.99nm")));
  EXPECT_NE(shown, with(QString()));
  EXPECT_NE(shown, with(QStringLiteral("090\u00b0 - 161.98nm")));
  // And it is there: within 14 pixels below and above the pointer's height, from 10 to its right, in its own colour.
  int ink = 0;
  for (int y = 286; y < 314; ++y) {
    for (int x = 510; x < 600; ++x) {
      const QColor pixel = shown.pixelColor(x, y);
      ink += pixel.blue() > 180 && pixel.red() < 100 && pixel.green() < 100;
    }
  }
  EXPECT_GT(ink, 40);
}

TEST_F(Measuring, WithoutStaticCursorTheLineGoesAtOnce) {
  Move({200, 300});
  const QImage bare = Picture().grab().toImage();
  Check1().setChecked(true);
  Move({500, 300});
  EXPECT_GT(LinePixels(), 80);
  QTest::mouseClick(&Check1(), Qt::LeftButton, {}, QPoint(8, Check1().height() / 2));
  EXPECT_FALSE(View().CursorLineActive);
  EXPECT_EQ(LinePixels(), 0);
  EXPECT_EQ(Picture().grab().toImage(), bare);
  // By its key, with the window of the measurements hidden.
  Frame().Strip().Check(core::ToolWindow::Curs).setChecked(false);
  QTest::keyClick(&Picture(), Qt::Key_C);
  Move({510, 300});
  EXPECT_GT(LinePixels(), 80);
  QTest::keyClick(&Picture(), Qt::Key_C);
  EXPECT_EQ(LinePixels(), 0);
}

TEST_F(Measuring, WithoutStaticCursorTheScreenIsPaintedAtOnce) {
  Check1().setChecked(true);
  Move({500, 300});
  QCoreApplication::processEvents();
  QSignalSpy painted(&Picture(), &MapPicture::Painted);
  Check1().setChecked(false);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !painted.isEmpty(); }));
}

TEST_F(Measuring, BullseyeIsEmptyUntilThePointerHasBeenOverTheMap) {
  EXPECT_EQ(Text(Bulls(), "Label2"), QString());
  EXPECT_EQ(Text(Bulls(), "Label3"), QString());
  windows.Refresh(map::ChangeRes(View(), 2));
  EXPECT_EQ(Text(Bulls(), "Label2"), QString());
  Move({200, 300});
  EXPECT_NE(Text(Bulls(), "Label2"), QString());
}

TEST_F(Measuring, NothingOfAnOldLineStays) {
  Check1().setChecked(true);
  const QImage before = Picture().grab().toImage();
  for (int step = 0; step < 40; ++step) {
    Move({100.0 + step * 20, 600.0 - step * 11});
    QCoreApplication::processEvents();
  }
  Check1().setChecked(false);
  Move({400, 400});
  QCoreApplication::processEvents();
  EXPECT_EQ(Picture().grab().toImage(), before);
}

TEST_F(Measuring, StaticCursorKeepsTheLineWithoutAButton) {
  QTest::mousePress(&Picture(), Qt::LeftButton, {}, QPoint(300, 400));
  QTest::mouseRelease(&Picture(), Qt::LeftButton, {}, QPoint(300, 400));
  QTest::mouseClick(&Check1(), Qt::LeftButton, {}, QPoint(8, Check1().height() / 2));
  EXPECT_TRUE(station.MapOptions.STATICCURSOR);
  Move({300, 300});
  EXPECT_TRUE(View().CursorLineActive);
  EXPECT_EQ(Text(Curs(), "Label2"), QStringLiteral("360\u00b0 / 180\u00b0"));
  EXPECT_GT(LinePixels(), 80);
}

TEST_F(Measuring, Check1EmptiesTheReadOutsBothWays) {
  for (const bool on : {true, false}) {
    View().CursorLineActive = true;
    windows.Refresh(base::Changed::CursorLine);
    EXPECT_FALSE(Text(Curs(), "Label2").isEmpty());
    QTest::mouseClick(&Check1(), Qt::LeftButton, {}, QPoint(8, Check1().height() / 2));
    EXPECT_EQ(station.MapOptions.STATICCURSOR, on);
    EXPECT_EQ(Text(Curs(), "Label2"), QString());
    EXPECT_EQ(Text(Curs(), "Label3"), QString());
  }
}

TEST_F(Measuring, Check1ShowsTheSettingAndItsHint) {
  EXPECT_EQ(Check1().text(), QStringLiteral("Static Cursor"));
  EXPECT_EQ(Check1().toolTip(), QStringLiteral("Hotkey: C"));
  EXPECT_FALSE(Check1().isChecked());
  for (const bool on : {true, false}) {
    View().CursorLineActive = true;
    windows.Refresh(base::Changed::CursorLine);
    EXPECT_FALSE(Text(Curs(), "Label2").isEmpty());
    core::ExecuteShortcut(Frame().Program(), 21);
    EXPECT_EQ(station.MapOptions.STATICCURSOR, on);
    EXPECT_EQ(Check1().isChecked(), on);
    EXPECT_EQ(Text(Curs(), "Label2"), QString()) << "as by the box itself";
    EXPECT_EQ(Text(Curs(), "Label3"), QString());
  }
}

TEST_F(Measuring, BullseyeGoesOnWithoutALine) {
  const QPointF bulls(View().BullsX / 15, View().BullsY / 15);
  Move(bulls + QPointF(37.04, 0));
  EXPECT_EQ(Text(Bulls(), "Label2"), QStringLiteral("090\u00b0"));
  EXPECT_EQ(Text(Bulls(), "Label3"), QStringLiteral("20.00 NM"));
  EXPECT_EQ(Text(Curs(), "Label2"), QString());
  Move(bulls + QPointF(0, 18.52));
  EXPECT_EQ(Text(Bulls(), "Label2"), QStringLiteral("180\u00b0"));
  EXPECT_EQ(Text(Bulls(), "Label3"), QStringLiteral("10.00 NM"));
}

TEST_F(Measuring, AHiddenWindowIsUpToDateWhenItComesBack) {
  Frame().Strip().Check(core::ToolWindow::Bulls).setChecked(false);
  const QPointF bulls(View().BullsX / 15, View().BullsY / 15);
  Move(bulls + QPointF(0, 18.52));
  EXPECT_NE(Text(Bulls(), "Label3"), QStringLiteral("10.00 NM"));
  Frame().Strip().Check(core::ToolWindow::Bulls).setChecked(true);
  EXPECT_EQ(Text(Bulls(), "Label3"), QStringLiteral("10.00 NM"));
}

TEST_F(Measuring, LineStaysOnItsGroundPointThroughAZoom) {
  Check1().setChecked(true);
  QTest::mousePress(&Picture(), Qt::LeftButton, {}, QPoint(300, 200));
  const map::MapPoint ground = map::MapFromSurface(View(), {View().AnchorX, View().AnchorY});
  Picture().TurnWheel(120);
  const map::MapPoint after = map::MapFromSurface(View(), {View().AnchorX, View().AnchorY});
  EXPECT_DOUBLE_EQ(after.X, ground.X);
  EXPECT_DOUBLE_EQ(after.Y, ground.Y);
  EXPECT_NE(View().AnchorX, 300 * 15);
}

TEST_F(Measuring, ALineFromVeryFarIsDrawnOnTheMap) {
  Check1().setChecked(true);
  View().AnchorViewX = 0;
  View().AnchorViewY = View().ViewCenterY;
  windows.Refresh(map::ChangeRes(View(), 1024));
  Move({Picture().width() / 2.0, Picture().height() / 2.0});
  EXPECT_LT(View().AnchorX, -5e6);
  EXPECT_GT(LinePixels(), Picture().width() / 3);
}

TEST_F(Measuring, ElevationFollowsThePointer) {
  std::string bytes(2 * 1024 * 1024, '\0');
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) bytes[at + 1] = 2;  // 512 feet everywhere
  Write("Theaters/one_Elevation.dat", QByteArray::fromStdString(bytes));
  const QPointF middle(Picture().width() / 2.0, Picture().height() / 2.0);
  EXPECT_EQ(station.Elevations.At(512, 512), std::nullopt);
  Move(middle);
  EXPECT_EQ(ReadOut("lblElevation"), QStringLiteral("512 ft"));
  // The eastern edge itself, and beyond.
  windows.Refresh(map::MoveScreen(View(), 4) | map::MoveScreen(View(), 4) | map::MoveScreen(View(), 4));
  ASSERT_EQ(View().ViewCenterX, 1024 * 15);
  Move(middle - QPointF(1, 0));
  EXPECT_EQ(ReadOut("lblElevation"), QStringLiteral("512 ft"));
  Move(middle);
  EXPECT_EQ(View().CursorMapX, 1024);
  EXPECT_EQ(ReadOut("lblElevation"), QStringLiteral(" "));
  EXPECT_TRUE(ReadOut("lblPosition").startsWith(QStringLiteral("x:1024.00 / y:")));
}

TEST_F(Measuring, ATheaterWithoutHeightsShowsABlank) {
  Move({Picture().width() / 2.0, Picture().height() / 2.0});
  EXPECT_EQ(ReadOut("lblElevation"), QStringLiteral(" "));
}

TEST_F(Measuring, ReadOutsDoNotChangeTheSizeOfTheirWindows) {
  Check1().setChecked(true);
  const QSize curs = Curs().size();
  const QSize bulls = Bulls().size();
  for (const double resolution : {0.125, 1024.0}) {
    windows.Refresh(map::ChangeRes(View(), resolution));
    Move({10, 10});
    EXPECT_EQ(Curs().size(), curs);
    EXPECT_EQ(Bulls().size(), bulls);
    for (const char* name : {"Label2", "Label3"}) {
      auto* label = Curs().findChild<QLabel*>(QString::fromLatin1(name));
      EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(label->text())) << name;
    }
  }
}

}  // namespace
}  // namespace kestrel::shell
