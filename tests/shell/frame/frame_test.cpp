#include "shell/frame/frame.h"

#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTimer>
#include <map>
#include <vector>

#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

class FrameWindow : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
  }
};

struct Caption {
  const char* Menu;
  const char* Name;
  const char* Text;
};
constexpr Caption Captions[] = {
    {"", "mnuFile", "&File"},
    {"mnuFile", "mnuOpenSession", "Open Recorded &Session"},
    {"mnuFile", "mnuOpenFlight", "Open Recorded F&light"},
    {"mnuFile", "mnuImportAreas", "Import Areas"},
    {"mnuFile", "mnuExportSelectedAreas", "Export Visible Areas"},
    {"mnuFile", "mnuExit", "E&xit"},
    {"", "mnuConnection", "Co&nnection"},
    {"mnuConnection", "mnuConnCustom", "Connect to..."},
    {"mnuConnection", "mnuConnPort", "Connection Port..."},
    {"mnuConnection", "mnuDisconnect", "Disconnect"},
    {"mnuConnection", "mnuPhonebook", "Phonebook"},
    {"mnuPhonebook", "mnuPhonebookEdit", "Edit..."},
    {"mnuPhonebook", "mnuConnList_1", "Home"},
    {"mnuPhonebook", "mnuConnList_2", "Away && far"},
    {"", "mnuTheaters", "T&heaters"},
    {"mnuTheaters", "mnuModifyTheater", "M&odify Theaters..."},
    {"mnuTheaters", "mnuTheatername_1", "First theater"},
    {"mnuTheaters", "mnuTheatername_2", "Second theater"},
    {"", "mnuBullseyes", "B&ullseyes"},
    {"mnuBullseyes", "mnuModifyBullseyes", "Modify Bull&seyes..."},
    {"mnuBullseyes", "mnuBullseyesName_1", "Alpha"},
    {"mnuBullseyes", "mnuBullseyesName_2", "Bravo"},
    {"", "mnuScreen", "S&creen"},
    {"mnuScreen", "mnuFormsShow", "Show..."},
    {"mnuFormsShow", "mnuShowAll", "Show All Floating Windows"},
    {"mnuFormsShow", "mnuHideAll", "Hide All Floating Windows"},
    {"mnuFormsShow", "mnuFClients", "Clients"},
    {"mnuFormsShow", "mnuFOptions", "Options"},
    {"mnuFormsShow", "mnuFBullseye", "Bullseye"},
    {"mnuFormsShow", "mnuFCursor", "Cursor"},
    {"mnuFormsShow", "mnuFAreas", "Areas"},
    {"mnuFormsShow", "mnuFRec", "Playback"},
    {"mnuFormsShow", "mnuFMiniMap", "MiniMap"},
    {"mnuFormsShow", "mnuFrequencies", "Frequencies"},
    {"mnuScreen", "mnuResetFloating", "Re&set Floating Windows Position"},
    {"mnuScreen", "mnuResetTransparency", "R&eset Floating Windows Transparency"},
    {"mnuResetTransparency", "mnuTR100", "To 100% (Opaque)"},
    {"mnuResetTransparency", "mnuTR75", "To 75%"},
    {"mnuResetTransparency", "mnuTR50", "To 50%"},
    {"mnuResetTransparency", "mnuTR25", "To 25%"},
    {"mnuResetTransparency", "mnuTR5", "To 5%"},
    {"mnuScreen", "mnuResteZoomCenter", "Reset Z&oom and Screen Center"},
    {"mnuScreen", "mnuResetMainWindowPosition", "Reset Ma&in Window Position"},
    {"mnuScreen", "mnuFind", "Find Aircraft..."},
    {"mnuScreen", "mnuArrangeRight", "Arrange Floating Windows at the Ri&ght Edge"},
    {"mnuScreen", "mnuUndoPositions", "&Undo Floating Windows Position"},
    {"", "mnuRecording", "Re&cording"},
    {"mnuRecording", "mnuStartRec", "Star&t Recording"},
    {"mnuRecording", "mnuStopRecording", "Sto&p Recording"},
    {"mnuRecording", "mnuPlaybackMode", "Play&back Mode"},
    {"mnuRecording", "mnuOpenPlaybackFile", "Ope&n File for Playback"},
    {"mnuRecording", "mnuExportTape", "Export Tape to Tacview..."},
    {"", "mnuLinks", "Li&nks"},
    {"mnuLinks", "mnuManageLinks", "Mana&ge Links..."},
    {"mnuLinks", "mnuLinksNames", "(No Links)"},
    {"", "mnuTools", "Too&ls"},
    {"mnuTools", "mnuFalconTools", "Falcon Tools"},
    {"mnuFalconTools", "mnuImportNewTheater", "Import New T&heater"},
    {"mnuFalconTools", "mnuImportObjectives", "Import Ob&jectives"},
    {"mnuFalconTools", "mnuGetBullseyFromTac", "Get Bu&llseye from tac/cam/trn"},
    {"mnuFalconTools", "mnuImportFalconINI", "Import Areas from Falcon INI files"},
    {"mnuTools", "mnuSaveSetup", "Sa&ve Setup..."},
    {"mnuTools", "mnuLoadSetup", "Loa&d Setup..."},
    {"", "mnuHelp", "Hel&p"},
    {"mnuHelp", "mnuOnlineDocs", "Online Do&cuments"},
    {"mnuHelp", "mnuAutoUpdate", "Auto Check for Update"},
    {"mnuHelp", "mnuAbout", "About..."},
    {"mnuHelp", "mnuKeys", "&Keys..."},
    {"mnuHelp", "mnuGuide", "&Guide"},
    {"PopUp2", "mnuSetCenterOfMap", "Set Center of Map"},
    {"PopUp2", "mnuSetNewBulls", "Set New Bullseye"},
    {"PopUp2", "mnuAddnewIconArea", "Add New Icon Area"},
    {"PopUp1", "ClsCon", "Close Connection"},
    {"PopUp3", "mnuP3ShowPlot", "Show Plot"},
    {"PopUp3", "mnuP3HidePlot", "Hide Plot"},
    {"mnupopup4", "mnuTuneUHF", "Tune UHF"},
    {"mnupopup4", "mnuTuneVHF", "Tune VHF"},
    {"mnupopup4", "mnuCopyFreq", "Copy\tCtrl+C"},
    {"mnupopup4", "mnuShowFreqOnMap", "Show on Map"},
};

TEST_F(FrameWindow, EveryMenuHasItsEntriesInOrderWithTheirCaptions) {
  std::map<std::string, std::vector<std::string>> wanted;
  for (const Caption& each : Captions) {
    EXPECT_EQ(Action(each.Name).text(), QString::fromLatin1(each.Text)) << each.Name;
    wanted[each.Menu].emplace_back(each.Name);
  }
  for (const auto& [menu, names] : wanted) {
    std::vector<std::string> shown;
    for (const QAction* action : menu.empty() ? Frame().menuBar()->actions() : Frame().PopUp(menu.c_str()).actions()) {
      if (!action->isSeparator()) shown.push_back(action->objectName().toStdString());
    }
    EXPECT_EQ(shown, names) << menu;
  }
}

TEST_F(FrameWindow, AreasAreImportedAndExportedFromTheMenu) {
  Action("mnuImportAreas").trigger();
  ASSERT_EQ(desk.FileQuestions.size(), 1U);
  EXPECT_EQ(desk.FileQuestions[0].Title, "Import Areas...");
  Action("mnuExportSelectedAreas").trigger();
  ASSERT_EQ(desk.Boxes.size(), 1U);
  EXPECT_EQ(desk.Boxes[0].Text, "No Area was selected for export...");
}

TEST_F(FrameWindow, MissionAreasAreImported) {
  Write("m.ini", "[MISSION]\r\ntitle=Strike\r\n[STPT]\r\ntarget_0=1,1,1,1\r\n");
  desk.FileAnswers.push_back(folder.filePath(QStringLiteral("m.ini")).toStdString());
  const std::uint64_t draws = Picture().MapDraws();
  ASSERT_TRUE(Action("mnuImportFalconINI").isEnabled());
  Action("mnuImportFalconINI").trigger();
  ASSERT_EQ(station.Areas.AreaFolders.UpperBound(), 1u);
  EXPECT_EQ(station.Areas.AreaFolders[1].Name, "Strike");
  EXPECT_EQ(Picture().MapDraws(), draws + 1);
}

TEST_F(FrameWindow, EntriesWithoutActionAreEnabledAndDoNothing) {
  const std::uint64_t draws = Picture().MapDraws();
  for (const char* name : {"mnuOpenSession", "mnuOpenFlight", "mnuResetMainWindowPosition", "mnuPlaybackMode",
                           "mnuOpenPlaybackFile", "mnuManageLinks", "mnuLinksNames", "ClsCon"}) {
    EXPECT_TRUE(Action(name).isEnabled()) << name;
    Action(name).trigger();
  }
  EXPECT_EQ(Picture().MapDraws(), draws);
  EXPECT_TRUE(desk.Boxes.empty());
  EXPECT_TRUE(desk.Files.empty());
  EXPECT_TRUE(socket.Log.empty());
}

TEST_F(FrameWindow, StartDrawsTheMapOnce) {
  EXPECT_EQ(Picture().MapDraws(), 1u);
  EXPECT_EQ(Frame().windowTitle(), QStringLiteral("KESTREL v1.0.0"));
  EXPECT_EQ(Frame().Map().windowTitle(), QStringLiteral("KESTREL v1.0.0b"));
  EXPECT_EQ(ReadOut("lblZoom"), QStringLiteral("Zoom: x1.0"));
}

TEST_F(FrameWindow, PhonebookItemsShowNamesAndConnect) {
  EXPECT_EQ(Action("mnuConnList_1").text(), QStringLiteral("Home"));
  EXPECT_EQ(Action("mnuConnList_2").text(), QStringLiteral("Away && far"));
  Action("mnuConnList_2").trigger();
  EXPECT_EQ(socket.Host, "away.invalid");
  EXPECT_EQ(socket.Port, 5556);
}

TEST_F(FrameWindow, ConnectingElsewhereTellsTheOldServerFirst) {
  Connect();
  socket.Log.clear();
  Action("mnuConnList_2").trigger();
  EXPECT_EQ(socket.Log, (std::vector<std::string>{"send AWAEND", "close", "connect away.invalid:5556"}));
}

TEST_F(FrameWindow, PhonebookMenuFollowsThePhonebook) {
  station.LinkOptions.ConnList.Remove(1);
  windows.Refresh(base::Changed::ConnectionMenus);
  EXPECT_EQ(Action("mnuConnList_1").text(), QStringLiteral("Away && far"));
  EXPECT_EQ(Frame().findChild<QAction*>(QStringLiteral("mnuConnList_2")), nullptr);
}

TEST_F(FrameWindow, CaptionAndDisconnectFollowTheSession) {
  EXPECT_FALSE(Action("mnuDisconnect").isEnabled());
  Connect(Qt::Key_R);
  EXPECT_TRUE(Action("mnuDisconnect").isEnabled());
  EXPECT_EQ(Frame().windowTitle(), QStringLiteral("KESTREL v1.0.0 - RED CHANNEL"));
  EXPECT_TRUE(Frame().findChild<Lamp*>(QStringLiteral("StatPic_Conn"))->Lit());

  Action("mnuDisconnect").trigger();
  EXPECT_EQ(socket.Log.back(), "close");
  EXPECT_FALSE(Action("mnuDisconnect").isEnabled());
  EXPECT_EQ(Frame().windowTitle(), QStringLiteral("KESTREL v1.0.0"));
  EXPECT_FALSE(Frame().findChild<Lamp*>(QStringLiteral("StatPic_Conn"))->Lit());
}

TEST_F(FrameWindow, TheaterItemSwitchesTheTheaterAndItsCheck) {
  EXPECT_EQ(Action("mnuTheatername_2").text(), QStringLiteral("Second theater"));
  EXPECT_TRUE(Action("mnuTheatername_1").isChecked());
  Action("mnuBullseyesName_2").trigger();
  const std::uint64_t draws = Picture().MapDraws();
  Action("mnuTheatername_2").trigger();
  EXPECT_EQ(station.Catalogue.CurrentTheater, 2);
  EXPECT_EQ(View().Size, 512);
  EXPECT_FALSE(Action("mnuTheatername_1").isChecked());
  EXPECT_TRUE(Action("mnuTheatername_2").isChecked());
  EXPECT_TRUE(Action("mnuBullseyesName_1").isChecked());
  EXPECT_EQ(Picture().MapDraws(), draws + 1);
}

TEST_F(FrameWindow, TheaterWithoutPictureLeavesTheFormerChecked) {
  ASSERT_TRUE(QFile::remove(folder.filePath(QStringLiteral("Theaters/two.png"))));
  Action("mnuTheatername_2").trigger();
  ASSERT_EQ(desk.Boxes.size(), 1u);
  EXPECT_EQ(desk.Boxes[0].Title, "Error");
  EXPECT_TRUE(Action("mnuTheatername_1").isChecked());
  EXPECT_FALSE(Action("mnuTheatername_2").isChecked());
}

TEST_F(FrameWindow, BullseyeItemMovesTheBullseyeAndItsCheck) {
  EXPECT_TRUE(Action("mnuBullseyesName_1").isChecked());
  const std::uint64_t draws = Picture().MapDraws();
  Action("mnuBullseyesName_2").trigger();
  EXPECT_FALSE(Action("mnuBullseyesName_1").isChecked());
  EXPECT_TRUE(Action("mnuBullseyesName_2").isChecked());
  EXPECT_EQ(View().BullsViewX, 300 * 15);
  EXPECT_EQ(View().BullsViewY, (1024 - 400) * 15);
  EXPECT_EQ(Picture().MapDraws(), draws + 1);
}

TEST_F(FrameWindow, ChoosingTheCurrentItemAgainKeepsItChecked) {
  Action("mnuBullseyesName_1").trigger();
  EXPECT_TRUE(Action("mnuBullseyesName_1").isChecked());
}

TEST_F(FrameWindow, AutoUpdateTogglesTheKeyInItsFile) {
  EXPECT_FALSE(Action("mnuAutoUpdate").isChecked());
  Action("mnuAutoUpdate").trigger();
  EXPECT_TRUE(Action("mnuAutoUpdate").isChecked());
  EXPECT_EQ(Read("common.ini"), QByteArray("[GENERAL]\r\nAUTOUPDATE=1\r\n"));
  Action("mnuAutoUpdate").trigger();
  EXPECT_FALSE(Action("mnuAutoUpdate").isChecked());
  EXPECT_EQ(Read("common.ini"), QByteArray("[GENERAL]\r\nAUTOUPDATE=0\r\n"));
}

TEST_F(FrameWindow, AutoUpdateThatCannotBeSavedIsToldAndStays) {
  ASSERT_TRUE(QFile::remove(folder.filePath(QStringLiteral("common.ini"))));
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("common.ini")));
  Action("mnuAutoUpdate").trigger();
  EXPECT_EQ(desk.Boxes.size(), 1u);
  EXPECT_FALSE(station.AutoUpdate);
  EXPECT_FALSE(Action("mnuAutoUpdate").isChecked());
}

TEST_F(FrameWindow, OnlineDocumentsOpenTheirPage) {
  Action("mnuOnlineDocs").trigger();
  ASSERT_EQ(desk.Files.size(), 1u);
  EXPECT_EQ(desk.Files[0].File, "https://docs.invalid/kestrel");
}

TEST_F(FrameWindow, ResetZoomAndCenterDrawsOnceAndShowsTheZoom) {
  View().Resolution = 8;
  View().ViewCenterX = 1;
  windows.Refresh(base::Changed::Zoom);
  EXPECT_EQ(ReadOut("lblZoom"), QStringLiteral("Zoom: x8.0"));
  const std::uint64_t draws = Picture().MapDraws();
  Action("mnuResteZoomCenter").trigger();
  EXPECT_EQ(View().Resolution, 1);
  EXPECT_EQ(View().ViewCenterX, 512 * 15);
  EXPECT_EQ(Picture().MapDraws(), draws + 1);
  EXPECT_EQ(ReadOut("lblZoom"), QStringLiteral("Zoom: x1.0"));
  EXPECT_EQ(View().MapWidth, 1024 * 15);
}

TEST_F(FrameWindow, ResetZoomAndCenterPutsThePointerToTheMiddleOfTheMap) {
  QCursor::setPos(Frame().frameGeometry().topLeft() + QPoint(3, 3));
  Action("mnuResteZoomCenter").trigger();
  const QPoint frame = Frame().frameGeometry().topLeft();
  EXPECT_NEAR(QCursor::pos().x(), frame.x() + Picture().width() / 2.0 + 4, 1);    // 60 / 15
  EXPECT_NEAR(QCursor::pos().y(), frame.y() + Picture().height() / 2.0 + 43, 1);  // 645 / 15
}

TEST_F(FrameWindow, OnePulseLightsTheActivityLampForOneTick) {
  auto* lamp = Frame().findChild<Lamp*>(QStringLiteral("StatPic_Act"));
  ASSERT_FALSE(lamp->Lit());
  windows.Refresh(base::Changed::Activity);
  EXPECT_FALSE(lamp->Lit());
  ASSERT_TRUE(QTest::qWaitFor([lamp] { return lamp->Lit(); }));
  EXPECT_EQ(lamp->toolTip(), QStringLiteral("Data"));
  ASSERT_TRUE(QTest::qWaitFor([lamp] { return !lamp->Lit(); }));
  EXPECT_EQ(lamp->toolTip(), QStringLiteral("No data"));
}

TEST_F(FrameWindow, APulseWhileTheActivityLampIsLitKeepsItForOneMoreTick) {
  auto* lamp = Frame().findChild<Lamp*>(QStringLiteral("StatPic_Act"));
  windows.Refresh(base::Changed::Activity);
  ASSERT_TRUE(QTest::qWaitFor([lamp] { return lamp->Lit(); }));
  std::vector<bool> ticks;
  // After the strip's own work on the tick.
  auto* timer = Frame().findChild<QTimer*>(QStringLiteral("TimerAct"));
  const auto told = QObject::connect(timer, &QTimer::timeout, &Frame(), [&] { ticks.push_back(lamp->Lit()); });
  windows.Refresh(base::Changed::Activity);
  EXPECT_TRUE(QTest::qWaitFor([&] { return ticks.size() >= 2; }));
  QObject::disconnect(told);
  EXPECT_EQ(ticks, (std::vector<bool>{true, false}));
}

TEST_F(FrameWindow, ClosingRunsTheStopStepsOnce) {
  Connect();
  socket.Log.clear();
  ASSERT_TRUE(QFile::remove(folder.filePath(QStringLiteral("KESTREL.ini"))));
  QSignalSpy closed(&Frame(), &MDIForm1::Closed);
  Action("mnuExit").trigger();
  Frame().close();
  EXPECT_EQ(closed.count(), 1);
  EXPECT_EQ(socket.Log, (std::vector<std::string>{"send AWAEND", "close"}));
  EXPECT_TRUE(Read("KESTREL.ini").startsWith("\"KESTREL v1.0.0 Main INI File\""));
  EXPECT_FALSE(Frame().isVisible());
}

TEST_F(FrameWindow, EndByTheServerIsToldInABoxWithEmptyTables) {
  Connect();
  const char messages[] =
      "NEWCLT7\x1e"
      "Viper\x1e"
      "F-16\x1e"
      "O\0"
      "DISCON";
  socket.Arrive(std::string_view(messages, sizeof messages));
  ASSERT_EQ(desk.Boxes.size(), 1u);
  EXPECT_EQ(desk.Boxes[0].Title, "Info");
  EXPECT_EQ(desk.Boxes[0].Text, "The connection was closed by the server.");
  EXPECT_FALSE(Action("mnuDisconnect").isEnabled());
  EXPECT_TRUE(station.Plots.Clients.Empty());
}

}  // namespace
}  // namespace kestrel::shell
