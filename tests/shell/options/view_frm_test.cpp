#include "shell/options/view_frm.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QSlider>
#include <QToolButton>
#include <algorithm>
#include <cmath>
#include <cstring>

#include "core/theater_data.h"
#include "core/view_options.h"
#include "link/roster.h"
#include "map/geometry.h"
#include "shell/link/clients_frm.h"
#include "shell/options/options_fixture.h"
#include "shell/parts/colour_button.h"

namespace kestrel::shell {
namespace {

class ViewWindow : public OptionsTest {
 protected:
  bool Ticked(const char* name) { return Part<QCheckBox>(name).isChecked(); }
  ColourButton& Face(const char* name) { return Part<ColourButton>(name); }
  static QColor FacePixel(ColourButton& button) { return button.grab().toImage().pixelColor(8, button.height() / 2); }
};

TEST_F(ViewWindow, FourPanelsOfOneSizeShowOneAtATime) {
  std::vector<QSize> sizes;
  for (int page = 0; page < 4; ++page) {
    QTest::mouseClick(&Tabs(), Qt::LeftButton, {}, Tabs().tabRect(page).center());
    for (int panel = 1; panel <= 4; ++panel) EXPECT_EQ(Panel(panel).isVisible(), panel == page + 1);
    sizes.push_back(Panel(page + 1).size());
    // Nothing is cut off.
    EXPECT_GE(Panel(page + 1).height(), Panel(page + 1).sizeHint().height()) << page;
    EXPECT_GE(Panel(page + 1).width(), Panel(page + 1).sizeHint().width()) << page;
  }
  for (const QSize& size : sizes) EXPECT_EQ(size, sizes[0]);
}

TEST_F(ViewWindow, TabsHaveCaptionsAndKeysOfTheirOwn) {
  std::vector<QString> captions;
  for (int page = 0; page < Tabs().count(); ++page) captions.push_back(Tabs().tabText(page));
  EXPECT_EQ(captions,
            (std::vector<QString>{QStringLiteral("&View"), QStringLiteral("&Options"), QStringLiteral("&Map Keys"),
                                  QStringLiteral("More &Keys"), QStringLiteral("&Extras")}));
  Activate();
  const std::pair<Qt::Key, int> keys[] = {
      {Qt::Key_O, 1}, {Qt::Key_M, 2}, {Qt::Key_K, 3}, {Qt::Key_E, 4}, {Qt::Key_V, 0}};
  for (const auto& [key, page] : keys) {
    QTest::keyClick(&Window(), key, Qt::AltModifier);
    EXPECT_EQ(Tabs().currentIndex(), page);
  }
}

TEST_F(ViewWindow, EachTickBoxStoresItsSettingAndRunsTheCheapestRedraw) {
  struct Row {
    const char* Control;
    const char* Caption;
    const char* Key;
    const char* Section;
    Draws Redraw;
    bool Seen;  ///< the map looks other
  };
  const Row rows[] = {
      {"Check1", "Real/Sim", "REALVISIBLE", "OPTIONS", Redraw, true},
      {"Check2", "AI", "AIVISIBLE", "OPTIONS", Redraw, true},
      {"Check4", "Real/Sim", "REALLABELSVISIBLE", "OPTIONS", Redraw, true},
      {"Check6", "AI", "AILABELSVISIBLE", "OPTIONS", Redraw, true},
      {"Check3", "Show Bullseye", "BULLSEYEVISIBLE", "OPTIONS", DrawMap, true},
      {"Check5", "Show Plot History", "SHOWHISTORY", "OPTIONS", Redraw, true},
      {"Check9", "Show Area Names", "SHOWAREANAMES", "OPTIONS", DrawMap, false},
      {"chkShowLat", "Show Lat-Long Grid", "SHOWGRID", "OPTIONS", DrawMap, true},
      {"chkGrid30Resolution", "30' Resolution", "SHOWGRID_SEC", "OPTIONS", DrawMap, true},
      {"chkDebug", "Debug", "DEBUG", "LOG", None, false},
      {"chkMapAutofocus", "Map Autofocus", "MAP_AUTOFOCUS", "OPTIONS", None, false},
      {"Check7", "Auto Friends", "AUTOFRIENDS", "OPTIONS", None, false},
      {"Check8", "AI Names", "SHOWAINAMES", "OPTIONS", Redraw, true},
      {"chkShowTACANRange", "Show TCN Range", "DRAW_TACAN_RANGE_VISIBLE", "OPTIONS", DrawMap, false},
      {"chkShowTACANIcon", "Show TCN Icon", "DRAW_TACAN_ICON_VISIBLE", "OPTIONS", DrawMap, false},
      {"chkTACANLabels", "TACAN Labels", "DRAW_TACAN_LABELS", "OPTIONS", DrawMap, false},
      {"chkTACANLabelsBoxed", "TACAN Labels Boxed", "DRAW_TACAN_LABELS_BOXED", "OPTIONS", DrawMap, false},
      {"chkILSLabels", "ILS Labels", "DRAW_ILS_LABELS", "OPTIONS", DrawMap, false},
      {"chkILSLabelsBoxed", "ILS Labels Boxed", "DRAW_ILS_LABELS_BOXED", "OPTIONS", DrawMap, false},
      {"chkShowAll", "Show All ILS", "AIRF_SHOW_ALL_ILS", "OPTIONS", DrawMap, false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.Control);
    auto& box = Part<QCheckBox>(row.Control);
    EXPECT_EQ(box.text(), QString::fromLatin1(row.Caption));
    EXPECT_FALSE(box.toolTip().isEmpty());
    const QImage before = Map();
    const std::string saved = Saved(row.Key, row.Section);
    EXPECT_EQ(saved, box.isChecked() ? "1" : "0");
    EXPECT_EQ(Drawn([&] { Press(row.Control); }), row.Redraw);
    EXPECT_EQ(Saved(row.Key, row.Section), saved == "1" ? "0" : "1");
    EXPECT_EQ(Map() != before, row.Seen);
    EXPECT_EQ(Drawn([&] { Press(row.Control); }), row.Redraw);
    EXPECT_EQ(Saved(row.Key, row.Section), saved);
    EXPECT_EQ(Map(), before);
  }
}

TEST_F(ViewWindow, EachColorButtonTakesStoresAndShowsItsColor) {
  struct Row {
    const char* Control;
    const char* Caption;
    const char* Key;
    Draws Redraw;
    bool Seen;
  };
  const Row rows[] = {
      {"cmdAIEnemy", "Enemy", "AICOLOR", Redraw, true},
      {"cmdAIFriends", "Friendly", "AICOLOR_FRIENDS", Redraw, true},
      {"cmdGridPrimCol", "", "GRID_PRIM_COLOR", DrawMap, true},
      {"cmdGridSecCol", "", "GRID_SEC_COLOR", DrawMap, true},
      {"cmdBullseyeColor", "", "BULLSEYE_COLOR", DrawMap, true},
      {"cmdCursorCol", "Cursor Line", "CURSOR_COLOR", None, false},
      {"cmdCursorTextColor", "Cursor Text", "CURSOR_TEXT_COOR", None, false},
      {"cmdILS1Col_0", "ILS1 Color", "AIRF_ILS_COL_0", DrawMap, false},
      {"cmdILS1Col_1", "ILS2 Color", "AIRF_ILS_COL_1", DrawMap, false},
      {"cmdILS1Col_2", "ILS3 Color", "AIRF_ILS_COL_2", DrawMap, false},
      {"cmdILS1Col_3", "ILS4 Color", "AIRF_ILS_COL_3", DrawMap, false},
      {"cmdTCCircleCol", "", "AIRF_TACAN_RANGE_COL", DrawMap, false},
      {"cmdTCIconCol", "", "AIRF_TACAN_COL", DrawMap, false},
      {"cmdColorILS", "Label Color", "ILS_LABEL_COLOR", DrawMap, false},
      {"cmdColorTACAN", "Label Color", "TACAN_LABEL_COLOR", DrawMap, false},
  };
  constexpr base::Colour chosen = 0x30A0F0;  // red 240, green 160, blue 48
  for (const Row& row : rows) {
    SCOPED_TRACE(row.Control);
    ColourButton& button = Face(row.Control);
    EXPECT_EQ(button.text(), QString::fromLatin1(row.Caption));
    const std::string saved = Saved(row.Key);
    const base::Colour present = button.Colour();
    EXPECT_EQ(std::to_string(present), saved);
    EXPECT_EQ(FacePixel(button), ToQColor(present));
    const QImage before = Map();
    // Cancelled: all stays.
    EXPECT_EQ(Drawn([&] { Press(row.Control); }), None);
    EXPECT_EQ(Saved(row.Key), saved);
    EXPECT_EQ(button.Colour(), present);

    desk.ColourAnswers = {chosen};
    EXPECT_EQ(Drawn([&] { Press(row.Control); }), row.Redraw);
    EXPECT_EQ(desk.ColourQuestions.back(), present) << "it begins at the present colour";
    EXPECT_EQ(Saved(row.Key), std::to_string(chosen));
    EXPECT_EQ(FacePixel(button), QColor(240, 160, 48));
    EXPECT_TRUE(button.toolTip().endsWith(QStringLiteral(": #f0a030")));
    EXPECT_EQ(button.accessibleName(), button.toolTip());
    EXPECT_EQ(Map() != before, row.Seen);
  }
  EXPECT_EQ(desk.ColourQuestions.size(), 2 * std::size(rows));
}

TEST_F(ViewWindow, EachFontButtonStoresTheFontAndItsColorWhereThereIsAKey) {
  struct Row {
    const char* Control;
    const char* Caption;
    const char* Prefix;
    const char* Color;  ///< key; null: none
    Draws Redraw;
  };
  const Row rows[] = {
      {"cmdCursorFont", "Cursor Text Font", "CURSOR_FONT_", "CURSOR_TEXT_COOR", None},
      {"cmdAreaNameFont", "Area Name Font", "AREAS_TITLE_FONT_", nullptr, DrawMap},
      {"cmdFontILS", "Label Font", "ILS_LABEL_FONT_", "ILS_LABEL_COLOR", DrawMap},
      {"cmdFontTACAN", "Label Font", "TACAN_LABEL_FONT_", "TACAN_LABEL_COLOR", DrawMap},
  };
  const base::FontRecord chosen{.FontName = "Courier New",
                                .FontSize = 12.5F,
                                .FontBold = true,
                                .FontItalic = true,
                                .FontStrike = true,
                                .FontUnder = true,
                                .Color = 0x0000FF};
  const std::pair<const char*, const char*> keys[] = {{"NAME", "Courier New"}, {"SIZE", "12.50"}, {"BOLD", "1"},
                                                      {"ITALIC", "1"},         {"STRIKE", "1"},   {"UNDER", "1"}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.Control);
    const std::string prefix = row.Prefix;
    EXPECT_EQ(Part<>(row.Control).text(), QString::fromLatin1(row.Caption));
    const std::string name = Saved(prefix + "NAME");
    EXPECT_EQ(Drawn([&] { Press(row.Control); }), None);
    EXPECT_EQ(Saved(prefix + "NAME"), name) << "cancelled";
    EXPECT_EQ(desk.FontQuestions.back().Present.FontName, name);
    EXPECT_EQ(desk.FontQuestions.back().WithColour, row.Color != nullptr);
    desk.FontAnswers = {chosen};
    EXPECT_EQ(Drawn([&] { Press(row.Control); }), row.Redraw);
    for (const auto& [key, value] : keys) EXPECT_EQ(Saved(prefix + key), value) << key;
    if (row.Color != nullptr) {
      EXPECT_EQ(Saved(row.Color), "255");
    }
  }
  // The buttons of the colours follow.
  for (const char* face : {"cmdCursorTextColor", "cmdColorILS", "cmdColorTACAN"}) {
    EXPECT_EQ(Face(face).Colour(), base::Colour{255}) << face;
  }
  EXPECT_EQ(station.MapOptions.AREAS_TITLE_FONT.Color, base::Colour{0});
}

TEST_F(ViewWindow, CursorColorsActOnTheLineAtOnce) {
  station.MapOptions.STATICCURSOR = true;
  const QPointF to(500, 300);
  QMouseEvent move(QEvent::MouseMove, to, Picture().mapToGlobal(to), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&Picture(), &move);
  ASSERT_TRUE(View().CursorLineActive);
  for (const char* name : {"cmdCursorCol", "cmdCursorTextColor"}) {
    const QImage before = Map();
    desk.ColourAnswers = {base::Colour{0x20D0E0}};
    EXPECT_EQ(Drawn([&] { Press(name); }), None);
    EXPECT_NE(Map(), before) << name;
  }
  const QImage before = Map();
  desk.FontAnswers = {base::FontRecord{.FontName = "DejaVu Sans", .FontSize = 20}};
  EXPECT_EQ(Drawn([&] { Press("cmdCursorFont"); }), None);
  EXPECT_NE(Map(), before);
}

TEST_F(ViewWindow, GridOffLeavesItsHalfDegreesTickedWithoutEffect) {
  Press("chkShowLat");
  EXPECT_TRUE(Ticked("chkGrid30Resolution"));
  const QImage without = Map();
  Press("chkGrid30Resolution");
  EXPECT_EQ(Map(), without);
}

TEST_F(ViewWindow, LabelsOfRealPlayersSetTheFlagOfEachClient) {
  const auto flags = [this] {
    std::vector<bool> shown;
    for (const link::PlotRecord& client : station.Plots.Clients.Live()) shown.push_back(client.ShowLabel);
    return shown;
  };
  station.Plots.Clients[2].ClientId = 0;
  EXPECT_EQ(flags(), (std::vector<bool>{true, true}));
  Press("Check4");
  EXPECT_EQ(flags(), (std::vector<bool>{false, true})) << "a record without ClientId stays";
  Press("Check4");
  EXPECT_EQ(flags(), (std::vector<bool>{true, true}));
}

TEST_F(ViewWindow, BullseyeBoxIsCopiedIntoTheViewAndTheLabelsOfNewClients) {
  Press("Check3");
  EXPECT_FALSE(View().BullseyeVisible);
  socket.Arrive(test::Message("NEWCLT", test::ClientData("30", "Clark")));
  EXPECT_FALSE(station.Plots.Clients[3].ShowLabel);
  Press("Check3");
  EXPECT_TRUE(View().BullseyeVisible);
}

TEST_F(ViewWindow, AutoFriendsTakesTheListAndLocksItsButton) {
  Frame().Tools().The<ClientsFrm>().MaxFrm();
  auto& reset = *Frame().Tools().The<ClientsFrm>().findChild<QAbstractButton*>(QStringLiteral("Command2"));
  EXPECT_FALSE(reset.isEnabled());
  Press("Check7");
  EXPECT_TRUE(reset.isEnabled());
  EXPECT_EQ(station.Plots.FriendlyList.UpperBound(), 1U) << "off, the list stays";
  link::AddToFriendlyList("Bandit", station.Plots);
  Press("Check7");
  EXPECT_FALSE(reset.isEnabled());
  ASSERT_EQ(station.Plots.FriendlyList.UpperBound(), 1U);
  EXPECT_EQ(station.Plots.FriendlyList[1], "Cowboy");
}

TEST_F(ViewWindow, DebugWritesLogAndCaptureWhileItIsTicked) {
  EXPECT_FALSE(around.Log.On());
  Press("chkDebug");
  socket.Arrive(test::Message("DELCLT", "20"));
  EXPECT_TRUE(Read("KESTRELLog.txt").contains("12:00:00 : Command arrived from Server: (DELCLT)20"));
  const QByteArray captured("--------->>>>>> Debug Started at 12:00:00<<<<<<---------\r\n12:00:00|DELCLT20\0\r\n", 78);
  EXPECT_EQ(Read("debug_out.dat"), captured);
  Press("chkDebug");
  socket.Arrive(test::Message("DELCLT", "10"));
  EXPECT_EQ(Read("debug_out.dat"), captured + "--------->>>>>> Debug ended at 12:00:00<<<<<<---------\r\n");
  EXPECT_FALSE(Read("KESTRELLog.txt").contains("(DELCLT)10"));
}

TEST_F(ViewWindow, MapAutofocusActsOnTheNextMove) {
  const auto takesFocus = [this](QPointF to) {
    Activate();
    QMouseEvent move(QEvent::MouseMove, to, Picture().mapToGlobal(to), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&Picture(), &move);
    QCoreApplication::processEvents();
    return QApplication::focusWidget() == &Picture();
  };
  EXPECT_TRUE(takesFocus({200, 200}));
  Press("chkMapAutofocus");
  EXPECT_FALSE(takesFocus({210, 200}));
  Press("chkMapAutofocus");
  EXPECT_TRUE(takesFocus({220, 200}));
}

TEST_F(ViewWindow, ZoomScrollZoomsAndStaysWhereItIsPut) {
  auto& scroll = Part<QSlider>("ZoomScroll");
  auto& text = Part<QLabel>("lblZoom");
  EXPECT_EQ(text.text(), QStringLiteral("Zoom: x1.0"));
  const map::SliderRange range{scroll.minimum(), scroll.maximum()};
  EXPECT_EQ(map::ResolutionFromScroll(range, scroll.value()), 1);
  EXPECT_EQ(map::ResolutionFromScroll(range, scroll.minimum()), 0.125);
  EXPECT_EQ(map::ResolutionFromScroll(range, scroll.maximum()), 1024);
  // Each power of two has a value of its own.
  for (double zoom = 0.125; zoom <= 1024; zoom *= 2) {
    EXPECT_NEAR(map::ResolutionFromScroll(range, map::ScrollFromResolution(range, zoom)), zoom, zoom * 1e-12);
  }
  EXPECT_EQ(Drawn([&] { QTest::keyClick(&scroll, Qt::Key_Right); }), DrawMap);
  const int between = scroll.value();
  EXPECT_EQ(between, map::ScrollFromResolution(range, 1) + 1) << "a zoom between two powers of two";
  EXPECT_EQ(View().Resolution, map::ResolutionFromScroll(range, between));
  EXPECT_NE(text.text(), QStringLiteral("Zoom: x1.0"));
  EXPECT_EQ(text.text(), ReadOut("lblZoom"));
}

TEST_F(ViewWindow, ZoomOfElsewhereMovesTheSliderWithoutAnEvent) {
  auto& scroll = Part<QSlider>("ZoomScroll");
  const int one = scroll.value();
  EXPECT_EQ(Drawn([&] { Picture().TurnWheel(120); }), DrawMap) << "one repaint, not a second by the slider";
  EXPECT_GT(scroll.value(), one);
  EXPECT_EQ(View().Resolution, 2);
  EXPECT_EQ(Part<QLabel>("lblZoom").text(), QStringLiteral("Zoom: x2.0"));
  View().Resolution = 5;
  windows.Refresh(map::IncreaseResolution(View()));
  EXPECT_EQ(View().Resolution, 8) << "the power of two next to it, then a step";
  EXPECT_EQ(scroll.value(), map::ScrollFromResolution({scroll.minimum(), scroll.maximum()}, 8));
}

TEST_F(ViewWindow, ArrowsMoveByHalfAScreenAndCenter) {
  windows.Refresh(map::ChangeRes(View(), 4));
  const double x = View().ViewCenterX, y = View().ViewCenterY;
  const double stepX = View().SurfaceWidth / 8, stepY = View().SurfaceHeight / 8;
  const auto expect = [&](const char* name, double dx, double dy) {
    EXPECT_EQ(Drawn([&] { Press(name); }), DrawMap) << name;
    EXPECT_DOUBLE_EQ(View().ViewCenterX, x + dx) << name;
    EXPECT_DOUBLE_EQ(View().ViewCenterY, y + dy) << name;
  };
  expect("cmdUp", 0, -stepY);
  expect("cmdLeft", -stepX, -stepY);
  expect("cmdDown", -stepX, 0);
  expect("cmdRight", 0, 0);
  expect("cmdRight", stepX, 0);
  expect("cmdCenter", 0, 0);
}

TEST_F(ViewWindow, ViewShortcutsAreSavedAndShown) {
  for (int slot = 1; slot <= 3; ++slot) {
    const std::string number = std::to_string(slot);
    windows.Refresh(map::ChangeRes(View(), std::exp2(slot)));
    Press("cmdRight");
    const double x = View().ViewCenterX, y = View().ViewCenterY;
    EXPECT_EQ(Drawn([&] { Press("cmdSaveShortcut_" + number); }), None);
    Press("cmdCenter");
    windows.Refresh(map::ResetResolution(View()));
    EXPECT_EQ(Drawn([&] { Press("cmdViewShortcut_" + number); }), DrawMap);
    EXPECT_EQ(View().ViewCenterX, x);
    EXPECT_EQ(View().ViewCenterY, y);
    EXPECT_EQ(View().Resolution, std::exp2(slot));
    EXPECT_EQ(Part<QLabel>("lblZoom").text(), ReadOut("lblZoom"));
  }
  core::SaveAll(station);
  const QByteArray file = Read("Theaters/one_ViewShort.dat");
  ASSERT_EQ(file.size(), 172);
  double zoom = 0;
  std::memcpy(&zoom, file.constData() + 148 + 16, sizeof zoom);
  EXPECT_EQ(zoom, 8);
}

TEST_F(ViewWindow, ItsBoxesFollowTheShortcuts) {
  const std::tuple<const char*, bool*, Draws> boxes[] = {
      {"Check2", &station.MapOptions.AIVISIBLE, Redraw},
      {"Check1", &station.MapOptions.REALVISIBLE, Redraw},
      {"Check6", &station.MapOptions.AILABELSVISIBLE, Redraw},
      {"Check4", &station.MapOptions.REALLABELSVISIBLE, Redraw},
      {"Check3", &station.LinkOptions.BULLSEYEVISIBLE, DrawMap},
      {"Check5", &station.MapOptions.SHOWHISTORY, Redraw},
      {"Check9", &station.MapOptions.SHOWAREANAMES, DrawMap},
      {"chkShowLat", &station.MapOptions.SHOWGRID, DrawMap},
  };
  for (const auto& [name, setting, redraw] : boxes) {
    for (const bool on : {false, true}) {
      EXPECT_EQ(Drawn([&, box = name] { windows.Refresh(core::ToggleOption(Frame().Program(), box)); }), redraw)
          << name;
      EXPECT_EQ(*setting, on) << name;
      EXPECT_EQ(Ticked(name), on) << name;
    }
  }
}

TEST_F(ViewWindow, EveryControlIsReachedByTabAndSaysWhatItIs) {
  Activate();
  for (int page = 0; page < 4; ++page) {
    Tabs().setCurrentIndex(page);
    Tabs().setFocus();
    std::vector<QString> reached;
    for (int step = 0; step < 80; ++step) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      if (QApplication::focusWidget() == &Tabs()) break;
      reached.push_back(QApplication::focusWidget()->objectName());
    }
    int controls = 0;
    for (const QWidget* part : Panel(page + 1).findChildren<QWidget*>()) {
      if (part->focusPolicy() == Qt::NoFocus || part->parentWidget()->inherits("QComboBox")) continue;
      // Of the buttons of a choice Tab reaches the chosen one, the arrows the others.
      if (part->objectName().startsWith(QStringLiteral("OptTACANLabelPos_")) && !part->property("checked").toBool()) {
        continue;
      }
      ++controls;
      EXPECT_EQ(std::count(reached.begin(), reached.end(), part->objectName()), 1) << qPrintable(part->objectName());
      EXPECT_FALSE(part->toolTip().isEmpty()) << qPrintable(part->objectName());
    }
    EXPECT_GE(controls, 25);
    // Colors stand before the fonts beside them.
    const auto place = [&reached](const char* name) {
      return std::find(reached.begin(), reached.end(), QString::fromLatin1(name)) - reached.begin();
    };
    if (page == 1) {
      EXPECT_LT(place("cmdColorTACAN"), place("cmdFontTACAN"));
      EXPECT_LT(place("cmdColorILS"), place("cmdFontILS"));
    }
  }
}

class ViewWindowAtTheStart : public StationTest {};

TEST_F(ViewWindowAtTheStart, PanelsAreMadeWhenTheWindowIsFirstSeen) {
  Start();
  ViewFrm& window = Frame().Tools().The<ViewFrm>();
  EXPECT_EQ(window.findChild<QWidget*>(QStringLiteral("Frame1")), nullptr) << "it starts rolled up";
  const QSize strip = window.size();
  window.MaxFrm();
  EXPECT_NE(window.findChild<QWidget*>(QStringLiteral("Frame1")), nullptr);
  window.MinFrm();
  EXPECT_EQ(window.size(), strip) << "the guess at the panels' size holds";
}

TEST_F(ViewWindowAtTheStart, AShortcutActsWhileTheWindowIsHidden) {
  Start();
  Frame().Strip().Check(core::ToolWindow::View).setChecked(false);
  windows.Refresh(core::ToggleOption(Frame().Program(), "Check3"));
  EXPECT_FALSE(station.LinkOptions.BULLSEYEVISIBLE);
  EXPECT_FALSE(View().BullseyeVisible);
  Frame().Strip().Check(core::ToolWindow::View).setChecked(true);
  ViewFrm& window = Frame().Tools().The<ViewFrm>();
  window.MaxFrm();
  EXPECT_FALSE(window.findChild<QCheckBox*>(QStringLiteral("Check3"))->isChecked());
}

TEST_F(ViewWindowAtTheStart, FillingTheControlsStoresAndDrawsNothing) {
  Write("KESTREL.ini",
        "[LOG]\r\nDEBUG=1\r\n[MAPS]\r\nTOTALMAPS=1\r\nMAP1=one.ini\r\nCURRENTMAP=1\r\n[OPTIONS]\r\n"
        "BULLSEYEVISIBLE=0\r\nSHOWGRID=0\r\nAIRF_ILS_ANGLE=200\r\nAIRF_ILS_DIST=7.12345\r\nMINIMAPSCALE=7\r\n"
        "AIRF_TACAN_ICO=23\r\nTACAN_LABEL_POSITION=6\r\nAICOLOR=12345\r\n");
  Start();
  core::SaveVars(station);
  const QByteArray before = Read("KESTREL.ini");
  ASSERT_TRUE(QTest::qWaitFor([this] { return Picture().MapDraws() >= 1; }));
  const std::uint64_t draws = Picture().MapDraws();
  const std::uint64_t plots = Picture().PlotDraws();
  Frame().Tools().The<ViewFrm>().MaxFrm();
  ASSERT_NE(Frame().Tools().The<ViewFrm>().findChild<QWidget*>(QStringLiteral("Frame1")), nullptr);
  windows.Refresh(base::Changed::Options);
  EXPECT_EQ(Picture().MapDraws(), draws);
  EXPECT_EQ(Picture().PlotDraws(), plots);
  core::SaveVars(station);
  EXPECT_EQ(Read("KESTREL.ini"), before);
}

}  // namespace
}  // namespace kestrel::shell
