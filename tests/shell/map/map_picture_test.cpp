#include "shell/map/map_picture.h"

#include <QDialog>
#include <QMenu>
#include <QMouseEvent>
#include <QProcess>
#include <QScreen>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>
#include <vector>

#include "shell/near.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

class MapWindow : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
    draws = Picture().MapDraws();
  }

  void Wheel(int angle) {
    const QPointF middle = Picture().rect().center();
    QWheelEvent event(middle, Picture().mapToGlobal(middle), {}, {0, angle}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&Picture(), &event);
  }

  void MovePointer(QPointF to) {
    QMouseEvent move(QEvent::MouseMove, to, Picture().mapToGlobal(to), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&Picture(), &move);
    QCoreApplication::processEvents();
  }

  std::uint64_t draws = 0;
};

TEST_F(MapWindow, SurfaceFillsTheWindow) {
  EXPECT_EQ(Picture().geometry(), Frame().Map().rect());
  EXPECT_EQ(View().SurfaceWidth, Picture().width() * 15);
  EXPECT_EQ(View().SurfaceHeight, Picture().height() * 15);
  EXPECT_EQ(Picture().objectName(), QStringLiteral("Picture1"));
}

TEST_F(MapWindow, WheelZoomsOneStepForEachNotch) {
  Wheel(120);
  EXPECT_EQ(View().Resolution, 2);
  EXPECT_EQ(ReadOut("lblZoom"), QStringLiteral("Zoom: x2.0"));
  Wheel(-240);
  EXPECT_EQ(View().Resolution, 0.5);
  EXPECT_EQ(ReadOut("lblZoom"), QStringLiteral("Zoom: x0.5"));
  EXPECT_EQ(Picture().MapDraws(), draws + 2);
}

TEST_F(MapWindow, PointerShowsItsPositionAfterAZoomWithoutAMove) {
  MovePointer({Picture().width() / 2.0 + 150, Picture().height() / 2.0});
  const double x = View().CursorMapX;
  Wheel(120);
  EXPECT_DOUBLE_EQ(View().CursorMapX, 512 + (x - 512) / 2);
  EXPECT_TRUE(ReadOut("lblPosition").startsWith(QString::asprintf("x:%.2f / y:", View().CursorMapX)));
}

TEST_F(MapWindow, PartsOfANotchAddUpAndAChangeOfDirectionStartsAnew) {
  Wheel(60);
  EXPECT_EQ(View().Resolution, 1);
  Wheel(60);
  EXPECT_EQ(View().Resolution, 2);
  Wheel(90);
  Wheel(-60);
  EXPECT_EQ(View().Resolution, 2);
  Wheel(-60);
  EXPECT_EQ(View().Resolution, 1);
}

TEST_F(MapWindow, MiddleButtonCentresOnThePointer) {
  const QPoint at(100, 80);
  QTest::mouseClick(&Picture(), Qt::MiddleButton, {}, at);
  EXPECT_DOUBLE_EQ(View().ViewCenterX, 512 * 15 - (Picture().width() / 2.0 - at.x()) * 15);
  EXPECT_DOUBLE_EQ(View().ViewCenterY, 512 * 15 - (Picture().height() / 2.0 - at.y()) * 15);
  EXPECT_EQ(Picture().MapDraws(), draws + 1);
}

TEST_F(MapWindow, CentringPutsThePointerAtFixedDistancesFromTheFrame) {
  QTest::mouseClick(&Picture(), Qt::MiddleButton, {}, QPoint(300, 200));
  const QPoint frame = Frame().frameGeometry().topLeft();
  EXPECT_NEAR(QCursor::pos().x(), frame.x() + Picture().width() / 2.0 + 4, 1);
  EXPECT_NEAR(QCursor::pos().y(), frame.y() + Picture().height() / 2.0 + 43, 1);
}

TEST_F(MapWindow, TheViewIsChangingWhileItIsCentredAndDrawn) {
  std::vector<bool> changing;
  clock.WhenRead = [&] { changing.push_back(View().ViewChanging); };
  QTest::mouseClick(&Picture(), Qt::MiddleButton, {}, QPoint(100, 80));
  clock.WhenRead = nullptr;
  EXPECT_EQ(Picture().MapDraws(), draws + 1);
  EXPECT_NE(std::find(changing.begin(), changing.end(), true), changing.end());
  EXPECT_FALSE(View().ViewChanging);
}

TEST_F(MapWindow, DoubleClickCentresToo) {
  QTest::mouseDClick(&Picture(), Qt::LeftButton, {}, QPoint(700, 500));
  EXPECT_DOUBLE_EQ(View().ViewCenterX, 512 * 15 - (Picture().width() / 2.0 - 700) * 15);
  EXPECT_EQ(Picture().MapDraws(), draws + 1);
}

TEST_F(MapWindow, LeftPressSetsTheCursorAnchorAndDrawsNoMap) {
  View().AnchorPlotIndex = 3;
  QTest::mousePress(&Picture(), Qt::LeftButton, {}, QPoint(200, 150));
  EXPECT_EQ(View().AnchorX, 200 * 15);
  EXPECT_EQ(View().AnchorY, 150 * 15);
  EXPECT_EQ(View().AnchorPlotIndex, 0);
  EXPECT_EQ(Picture().MapDraws(), draws);
}

TEST_F(MapWindow, RightPressShowsThePopUpMenuWhoseFirstEntryCentres) {
  auto* popUp = Frame().findChild<QMenu*>(QStringLiteral("PopUp2"));
  QTest::mousePress(&Picture(), Qt::RightButton, {}, QPoint(250, 200));
  ASSERT_TRUE(QTest::qWaitFor([popUp] { return popUp->isVisible(); }));
  EXPECT_TRUE(Action("mnuSetCenterOfMap").isEnabled());
  EXPECT_TRUE(Action("mnuAddnewIconArea").isEnabled());
  QTest::keyClick(popUp, Qt::Key_Down);
  QTest::keyClick(popUp, Qt::Key_Return);
  EXPECT_FALSE(popUp->isVisible());
  EXPECT_DOUBLE_EQ(View().ViewCenterX, 512 * 15 - (Picture().width() / 2.0 - 250) * 15);
}

TEST_F(MapWindow, PointerShowsItsPosition) {
  // The middle of the surface is the middle of the theater at the start.
  View().SurfaceWidth = Picture().width() * 15;
  const double x = 512 + (400 - Picture().width() / 2.0);
  const double y = 512 - (300 - Picture().height() / 2.0);
  QTest::mouseMove(&Picture(), QPoint(400, 300));
  ASSERT_TRUE(QTest::qWaitFor([this] { return !ReadOut("lblPosition").isEmpty(); }));
  EXPECT_EQ(ReadOut("lblPosition"), QString::asprintf("x:%.2f / y:%.2f", x, y));
  EXPECT_TRUE(ReadOut("lblLat").startsWith(u'N'));
  EXPECT_TRUE(ReadOut("lblLat").contains(QStringLiteral("\u00b0 ")));
  EXPECT_TRUE(ReadOut("lblLong").startsWith(QStringLiteral("E1")));
}

TEST_F(MapWindow, PointerShowsLatitudeAndLongitudeOfItsPlace) {
  struct Case {
    double x, y;  // map units
    const char16_t* position;
    const char16_t* lat;
    const char16_t* lon;
  };
  // Worked out by hand from the corner 34 north, 125 east. (600, 300): (34 * 365221.8846 + 300 * 3279.98) / 2.09257e7 =
  // 0.6404343977, by 57.2957795 it is 36.694188036 degrees; its cosine is 0.8018362619, and (125 * 0.01745329 + 600 *
  // 3279.98 / (0.8018362619 * 2.09257e7)) * 57.2957795 = 131.720138481. (300, 600) in the same way: 39.388420643 and
  // 128.486028825.
  constexpr Case cases[] = {{600, 300, u"x:600.00 / y:300.00", u"N36\u00b0 41.651'", u"E131\u00b0 43.208'"},
                            {300, 600, u"x:300.00 / y:600.00", u"N39\u00b0 23.305'", u"E128\u00b0 29.161'"}};
  for (const Case& each : cases) {
    // The middle of the map is (512, 512), one map unit to the pixel.
    MovePointer({Picture().width() / 2.0 + each.x - 512, Picture().height() / 2.0 + 512 - each.y});
    EXPECT_EQ(ReadOut("lblPosition"), QString::fromUtf16(each.position));
    EXPECT_EQ(ReadOut("lblLat"), QString::fromUtf16(each.lat));
    EXPECT_EQ(ReadOut("lblLong"), QString::fromUtf16(each.lon));
  }
}

TEST_F(MapWindow, ReadOutsFollowANewSizeWithoutAMove) {
  // 100 pixels right of the middle and 50 above it: (612, 562). The middle moves by 40 and 30 pixels, and with it the
  // ground below the pointer: (572, 532).
  MovePointer({Picture().width() / 2.0 + 100, Picture().height() / 2.0 - 50});
  EXPECT_EQ(ReadOut("lblPosition"), QStringLiteral("x:612.00 / y:562.00"));
  const QSize before = Picture().size();
  Frame().resize(Frame().width() + 80, Frame().height() - 60);
  ASSERT_TRUE(QTest::qWaitFor([&] { return Picture().size() == before + QSize(80, -60); }));
  EXPECT_EQ(ReadOut("lblPosition"), QStringLiteral("x:572.00 / y:532.00"));
}

TEST_F(MapWindow, ReadOutsAreEmptyUntilThePointerHasBeenOverTheMap) {
  windows.Refresh(map::ChangeRes(View(), 2) | map::MoveScreen(View(), 1));
  for (const char* name : {"lblPosition", "lblLat", "lblLong", "lblElevation"}) EXPECT_EQ(ReadOut(name), QString());
  EXPECT_EQ(ReadOut("lblZoom"), QStringLiteral("Zoom: x2.0")) << "not the pointer's";
  MovePointer({20, 20});
  for (const char* name : {"lblPosition", "lblLat", "lblLong", "lblElevation"}) EXPECT_NE(ReadOut(name), QString());
}

TEST_F(MapWindow, PointerTakesTheFocusOnlyWhenTheOptionSaysSo) {
  station.MapOptions.MAP_AUTOFOCUS = false;
  Picture().clearFocus();
  QTest::mouseMove(&Picture(), QPoint(10, 10));
  QTest::mouseMove(&Picture(), QPoint(20, 20));
  QCoreApplication::processEvents();
  EXPECT_NE(Frame().focusWidget(), &Picture());
  station.MapOptions.MAP_AUTOFOCUS = true;
  QTest::mouseMove(&Picture(), QPoint(30, 30));
  ASSERT_TRUE(QTest::qWaitFor([this] { return Frame().focusWidget() == &Picture(); }));
}

TEST_F(MapWindow, PointerTakesTheKeyboardFromAFloatingWindow) {
  ToolFrm& window = Frame().Tools().Window(core::ToolWindow::Bulls);
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; }));
  station.MapOptions.MAP_AUTOFOCUS = false;
  MovePointer({20, 20});
  EXPECT_EQ(QApplication::activeWindow(), &window);
  station.MapOptions.MAP_AUTOFOCUS = true;
  MovePointer({30, 30});
  ASSERT_EQ(QApplication::focusWidget(), &Picture());
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageUp);
  EXPECT_EQ(View().Resolution, 2);
}

TEST_F(MapWindow, PointerTakesTheKeyboardNeitherFromADialogNorFromAnotherProgram) {
  station.MapOptions.MAP_AUTOFOCUS = true;
  QDialog dialog(&Frame());
  dialog.show();
  dialog.activateWindow();
  ASSERT_TRUE(QTest::qWaitFor([&dialog] { return QApplication::activeWindow() == &dialog; }));
  MovePointer({20, 20});
  EXPECT_EQ(QApplication::activeWindow(), &dialog);
  dialog.close();
  QApplication::setActiveWindow(nullptr);
  MovePointer({30, 30});
  EXPECT_EQ(QApplication::activeWindow(), nullptr);
  EXPECT_EQ(Frame().focusWidget(), &Picture()) << "it will have it when the frame comes back";
}

TEST_F(MapWindow, ResizeDrawsNothingAtOnceAndOneMapWhenItHasSettled) {
  for (const int side : {900, 910, 920}) {
    Frame().resize(side, side - 200);
    QCoreApplication::processEvents();
    EXPECT_EQ(View().SurfaceWidth, Picture().width() * 15);
    EXPECT_EQ(Picture().MapDraws(), draws);
  }
  ASSERT_TRUE(QTest::qWaitFor([this] { return Picture().MapDraws() > draws; }));
  EXPECT_EQ(Picture().MapDraws(), draws + 1);
  // One more resize, whose own draw comes after whatever the first ones may still have had to draw.
  Frame().resize(930, 730);
  ASSERT_TRUE(QTest::qWaitFor([this] { return Picture().MapDraws() > draws + 1; }));
  EXPECT_EQ(Picture().MapDraws(), draws + 2);
}

TEST_F(MapWindow, ManyMessagesInOneArrivalCostOneRedraw) {
  Connect();
  const std::uint64_t before = Picture().PlotDraws();
  std::string arrival;
  for (int id = 1; id <= 50; ++id) {
    arrival += "NEWCLT" + std::to_string(id) + "\x1eName\x1eInfo\x1eO";
    arrival += '\0';
  }
  arrival += "SYNCRO";
  arrival += '\0';
  socket.Arrive(arrival);
  EXPECT_EQ(station.Plots.Clients.UpperBound(), 50u);
  EXPECT_EQ(Picture().PlotDraws(), before + 1);
  EXPECT_EQ(Picture().MapDraws(), draws);
}

TEST_F(MapWindow, PlotsWaitForTheMapOfANewSize) {
  Frame().resize(900, 700);
  QCoreApplication::processEvents();
  windows.Refresh(base::Changed::Plots);
  EXPECT_EQ(Picture().PlotDraws(), 0u);
  ASSERT_TRUE(QTest::qWaitFor([this] { return Picture().MapDraws() == draws + 1; }));
  windows.Refresh(base::Changed::Plots);
  EXPECT_EQ(Picture().PlotDraws(), 1u);
}

TEST_F(MapWindow, TheLogTellsHowLongADrawOfTheMapTook) {
  const std::filesystem::path file = program.State.AppPath / "log";
  around.Log.File.Open(file);
  clock.WhenRead = [this] { clock.Ticks += 7; };
  windows.Refresh(base::Changed::Map);
  clock.WhenRead = nullptr;
  around.Log.File.Close();
  EXPECT_EQ(Read("log"), QByteArray("Drew the map in 7 ms\r\n"));
}

/// Runs the test that is running once more, by itself, on two screens: the second one has two pixels to a point.
void ExpectToPassOnTwoScreens(const QString& folder) {
  QFile screens(folder + QStringLiteral("/screens.json"));
  ASSERT_TRUE(screens.open(QIODevice::WriteOnly));
  screens.write(R"({"screens": [
    {"name": "one", "x": 0, "y": 0, "width": 1400, "height": 1000, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1},
    {"name": "two", "x": 1400, "y": 0, "width": 1400, "height": 1000, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 2}
  ]})");
  screens.close();
  const testing::TestInfo& running = *testing::UnitTest::GetInstance()->current_test_info();
  QProcess again;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen:configfile=screens.json"));
  again.setProcessEnvironment(environment);
  again.setWorkingDirectory(folder);
  again.setProcessChannelMode(QProcess::MergedChannels);
  again.start(QCoreApplication::applicationFilePath(),
              {QStringLiteral("--gtest_filter=%1.%2")
                   .arg(QLatin1String(running.test_suite_name()), QLatin1String(running.name()))});
  ASSERT_TRUE(again.waitForFinished(120000));
  const QByteArray told = again.readAll();
  EXPECT_EQ(again.exitCode(), 0) << told.constData();
  EXPECT_TRUE(told.contains("[  PASSED  ] 1 test")) << told.constData();
}

TEST_F(MapWindow, AScreenOfAnotherScaleGetsItsMapThoughThePointerNeverRests) {
  const QList<QScreen*> screens = QGuiApplication::screens();
  if (screens.size() == 1) {
    ExpectToPassOnTwoScreens(folder.path());
    return;
  }
  station.MapOptions.STATICCURSOR = true;
  Frame().windowHandle()->setScreen(screens[1]);
  Frame().move(screens[1]->geometry().topLeft());
  ASSERT_EQ(Picture().devicePixelRatioF(), 2);
  int x = 0;
  EXPECT_TRUE(QTest::qWaitFor([&] {
    x = (x + 10) % 400;
    MovePointer({static_cast<qreal>(x), 100});
    return Picture().MapDraws() > draws;
  }));
}

TEST_F(MapWindow, NothingIsDrawnWhileLoading) {
  station.Loading = true;
  windows.Refresh(base::Changed::Map);
  windows.Refresh(base::Changed::Plots);
  EXPECT_EQ(Picture().MapDraws(), draws);
  EXPECT_EQ(Picture().PlotDraws(), 0u);
}

TEST_F(MapWindow, TheMapIsOnTheScreen) {
  const QImage shown = Picture().grab().toImage();
  // Inside the theater near its left edge, away from grid lines and bullseye: the colour of its picture.
  int green = 0;
  for (int y = 0; y < shown.height(); ++y) {
    green += test::NearColour(shown.pixelColor(shown.width() / 2, y), Qt::darkGreen) ? 1 : 0;
  }
  EXPECT_GT(green, shown.height() / 2);
}

}  // namespace
}  // namespace kestrel::shell
