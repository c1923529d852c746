#include "shell/frame/area_windows.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeView>

#include "areas/area_list.h"
#include "core/theater_data.h"
#include "map/geometry.h"
#include "shell/areas/areas_details_frm.h"
#include "shell/areas/areas_details_list_frm.h"
#include "shell/areas/areas_frm.h"
#include "shell/frame/bullseye_windows.h"
#include "shell/station_fixture.h"
#include "shell/theaters/bulls_details_frm.h"

namespace kestrel::shell {
namespace {

class WaysOfAreas : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
    station.Areas.AreaFolders.Append({"Front"});
    station.Areas.AreaGroups.Append({.Name = "Threats", .FolderIndex = 1});
    windows.Refresh(base::Changed::Areas | base::Changed::Map);
    Check().setChecked(true);
    Tree().MaxFrm();
  }

  QToolButton& Check() { return Frame().Strip().Check(core::ToolWindow::Areas); }
  AreasFrm& Tree() { return Frame().Tools().The<AreasFrm>(); }
  template <class Window>
  Window* Shown() {
    for (Window* each : Frame().findChildren<Window*>()) {
      if (each->isVisible()) return each;
    }
    return nullptr;
  }
  AreasDetailsListFrm* List() { return Shown<AreasDetailsListFrm>(); }
  AreasDetailsFrm* Editor() { return Shown<AreasDetailsFrm>(); }
  /// Presses a button of a window that has to be shown.
  template <class Window>
  void Press(Window* window, const char* button) {
    ASSERT_NE(window, nullptr) << button;
    auto* found = window->template findChild<QAbstractButton*>(QString::fromLatin1(button));
    ASSERT_NE(found, nullptr) << button;
    ASSERT_TRUE(found->isEnabled()) << button;
    found->click();
  }
  /// Edit Group of the first group.
  void OpenList() {
    Tree().RefreshList(QStringLiteral("D1"));
    Press(&Tree(), "Command2");
    ASSERT_NE(List(), nullptr);
  }
  bool Held(const char* entry) { return !Action(entry).isEnabled(); }
  void ClickMap(QPoint place) { QTest::mouseClick(&Picture(), Qt::LeftButton, {}, place); }
  areas::AreaGroup& Group(std::size_t index = 1) { return station.Areas.AreaGroups[index]; }
};

TEST_F(WaysOfAreas, AGroupOpensItsListInPlaceOfTheTree) {
  OpenList();
  EXPECT_FALSE(Tree().isVisible());
  EXPECT_TRUE(Held("mnuTheaters"));
  EXPECT_TRUE(Held("mnuFAreas"));
  EXPECT_FALSE(Check().isEnabled());
  EXPECT_FALSE(Held("mnuAddnewIconArea")) << "that waits for the editor alone";
  Press(List(), "Command4");
  EXPECT_EQ(List(), nullptr);
  EXPECT_TRUE(Tree().isVisible());
  EXPECT_FALSE(Held("mnuTheaters"));
  EXPECT_FALSE(Held("mnuFAreas"));
  EXPECT_TRUE(Check().isEnabled());
}

TEST_F(WaysOfAreas, TheListGivesWayToTheEditorAndComesBackWithTheArea) {
  OpenList();
  Press(List(), "Command1");
  EXPECT_EQ(List(), nullptr);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(Editor()->windowTitle(), QStringLiteral("New Area in Threats"));
  for (const char* entry : {"mnuTheaters", "mnuFAreas", "mnuAddnewIconArea", "mnuSetNewBulls", "mnuBullseyes"}) {
    EXPECT_TRUE(Held(entry)) << entry;
  }
  ClickMap({100, 100});
  ClickMap({200, 150});
  Press(Editor(), "Command2_0");
  EXPECT_EQ(Editor(), nullptr);
  ASSERT_NE(List(), nullptr);
  ASSERT_EQ(Group().Areas.UpperBound(), 1U);
  EXPECT_EQ(Group().Areas[1].Lines.UpperBound(), 1U);
  EXPECT_TRUE(Held("mnuTheaters")) << "the list still shows a group by its index";
  EXPECT_FALSE(Held("mnuAddnewIconArea"));
  EXPECT_FALSE(Held("mnuBullseyes"));
  EXPECT_FALSE(Tree().isVisible());
}

TEST_F(WaysOfAreas, EscapeOfTheEditorLeavesTheAreaAsItWas) {
  areas::AppendArea(station.Areas, station.AreaSteps, 1, {.Name = "Box"});
  OpenList();
  Press(List(), "Command2");
  ASSERT_NE(Editor(), nullptr);
  EXPECT_TRUE(Group().Areas[1].Editing);
  QTest::keyClick(Editor(), Qt::Key_Escape);
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_FALSE(Group().Areas[1].Editing);
  EXPECT_NE(List(), nullptr);
}

TEST_F(WaysOfAreas, ANewIconStandsWhereThePointerWas) {
  View().CursorMapX = 120.5;
  View().CursorMapY = 300.25;
  Action("mnuAddnewIconArea").trigger();
  ASSERT_NE(Editor(), nullptr);
  EXPECT_FALSE(Tree().isVisible());
  EXPECT_TRUE(Held("mnuTheaters"));
  Press(Editor(), "Command2_0");
  ASSERT_EQ(station.Areas.AreaFolders.UpperBound(), 2U);
  EXPECT_EQ(station.Areas.AreaFolders[2].Name, "Temporary Folder");
  ASSERT_EQ(station.Areas.AreaGroups.UpperBound(), 2U);
  EXPECT_EQ(Group(2).Name, "Temp Area 1");
  ASSERT_EQ(Group(2).Areas.UpperBound(), 1U);
  EXPECT_EQ(Group(2).Areas[1].Type, areas::AreaType::Icon);
  EXPECT_EQ(Group(2).Areas[1].X, 120.5);
  EXPECT_EQ(Group(2).Areas[1].Y, 300.25);
  EXPECT_TRUE(Tree().isVisible());
  EXPECT_EQ(List(), nullptr);
  EXPECT_FALSE(Held("mnuTheaters"));
}

TEST_F(WaysOfAreas, ACancelledIconLeavesItsGroup) {
  Action("mnuAddnewIconArea").trigger();
  Press(Editor(), "Command2_1");
  ASSERT_EQ(station.Areas.AreaGroups.UpperBound(), 2U);
  EXPECT_TRUE(Group(2).Areas.Empty());
  Action("mnuAddnewIconArea").trigger();
  Press(Editor(), "Command2_1");
  EXPECT_EQ(station.Areas.AreaFolders.UpperBound(), 2U) << "the folder is used again";
  EXPECT_EQ(Group(3).Name, "Temp Area 2");
}

TEST_F(WaysOfAreas, AnIconFromTheMenuGoesBackToTheListThatWasOpen) {
  OpenList();
  Action("mnuAddnewIconArea").trigger();
  EXPECT_EQ(List(), nullptr);
  Press(Editor(), "Command2_1");
  ASSERT_NE(List(), nullptr);
  EXPECT_FALSE(Tree().isVisible());
  EXPECT_TRUE(Held("mnuTheaters"));
}

TEST_F(WaysOfAreas, TheEditorWaitsForTheDetailsOfABullseye) {
  Action("mnuSetNewBulls").trigger();
  EXPECT_TRUE(Held("mnuAddnewIconArea"));
  auto* details = Shown<BullsDetailsFrm>();
  ASSERT_NE(details, nullptr);
  QTest::keyClick(details, Qt::Key_Escape);
  EXPECT_FALSE(Held("mnuAddnewIconArea"));
}

TEST_F(WaysOfAreas, WindowsComeBackWhereTheyStood) {
  OpenList();
  const QPoint place = Frame().pos() + QPoint(120, 90);
  List()->move(place);
  Press(List(), "Command1");
  Editor()->move(place + QPoint(30, 30));
  Press(Editor(), "Command2_1");
  Press(List(), "Command4");
  EXPECT_EQ(station.Editors.AREADETAILLISTLEFT, place.x() * 15);
  EXPECT_EQ(station.Editors.AREADETAILLISTTOP, place.y() * 15);
  EXPECT_EQ(station.Editors.AREADETAILLEFT, (place.x() + 30) * 15);
  EXPECT_EQ(station.Editors.AREADETAILTOP, (place.y() + 30) * 15);
  OpenList();
  EXPECT_EQ(List()->pos(), place);
}

TEST_F(WaysOfAreas, TheEndWithTheEditorOpenLosesNoStoredArea) {
  areas::AppendArea(station.Areas, station.AreaSteps, 1, {.Name = "Kept"});
  OpenList();
  Press(List(), "Command2");
  ASSERT_NE(Editor(), nullptr);
  ClickMap({100, 100});
  Frame().close();
  EXPECT_TRUE(Read("Theaters/one_Areas.dat").contains("Kept"));
}

TEST_F(WaysOfAreas, TheTreeHasNoAccessKeyOfTheMenuBar) {
  // In a floating window the menu bar's keys work too, and of two that are one neither would act.
  QSet<QKeySequence> taken;
  for (const QAction* menu : Frame().menuBar()->actions()) taken.insert(QKeySequence::mnemonic(menu->text()));
  taken.remove(QKeySequence());
  ASSERT_GT(taken.size(), 5);
  for (const QAbstractButton* button : Tree().findChildren<QAbstractButton*>()) {
    EXPECT_FALSE(taken.contains(QKeySequence::mnemonic(button->text()))) << qPrintable(button->text());
  }
}

TEST_F(WaysOfAreas, AnAreaThatIsBeingEditedIsOnTheMapOnce) {
  areas::Area circle{.Name = "C", .Type = areas::AreaType::Circle, .Radius = 50, .X = 512, .Y = 512};
  circle.Color = 0x0000FF;
  areas::AreaBounds(circle, windows.Texts());
  areas::AppendArea(station.Areas, station.AreaSteps, 1, circle);
  windows.Refresh(base::Changed::Map);
  const QImage stored = Picture().grab().toImage();
  OpenList();
  Press(List(), "Command2");
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(Picture().grab().toImage(), stored) << "the editor's copy stands where the area stood";
  Press(Editor(), "Command2_1");
  EXPECT_EQ(Picture().grab().toImage(), stored);
}

}  // namespace
}  // namespace kestrel::shell
