#include "shell/falcon/import_obj_frm.h"

#include <QElapsedTimer>

#include "shell/falcon/import_obj_fixture.h"

namespace kestrel::shell {
namespace {

class ImportObjLists : public ImportObjWindows {};

TEST_F(ImportObjLists, ShowNameTypeTeamAndBuildings) {
  Open();
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Import Objectives"));
  EXPECT_EQ(Names(), "bravo Alpha charlie <b> delta");
  const QAbstractItemModel& rows = *List().model();
  QStringList first;
  for (int column = 0; column < rows.columnCount(); ++column) first << rows.index(0, column).data().toString();
  EXPECT_EQ(first, Words({"bravo", "Airbase", "Red", "1"}));
  EXPECT_EQ(rows.index(3, 1).data().toString(), QStringLiteral("Unknown 0"));
  EXPECT_EQ(rows.index(3, 2).data().toString(), QStringLiteral("Team #0"));
  EXPECT_EQ(Count(), QStringLiteral("Objectives Selected: 0"));
  EXPECT_FALSE(AllChecked());
}

TEST_F(ImportObjLists, OptionsAreTheTeamsAndTheTypes) {
  Open();
  const auto caption = [this](const char* option) { return In<QRadioButton>(*window, option).text(); };
  EXPECT_EQ(caption("OptTeam_0"), QStringLiteral("All Teams"));
  EXPECT_EQ(caption("OptTeam_1"), QStringLiteral("Team #0"));
  EXPECT_EQ(caption("OptTeam_3"), QStringLiteral("Blue && co")) << "no access key";
  EXPECT_EQ(caption("OptTeam_8"), QStringLiteral("Team #7"));
  EXPECT_EQ(window->findChild<QWidget*>(QStringLiteral("OptTeam_9")), nullptr);
  EXPECT_EQ(caption("OptTypes_0"), QStringLiteral("All Types"));
  EXPECT_EQ(caption("OptTypes_3"), QStringLiteral("Army Base"));
  EXPECT_EQ(caption("OptTypes_10"), QStringLiteral("HART Site"));
  EXPECT_EQ(caption("OptTypes_20"), QStringLiteral("TYPE_PASS"));
  EXPECT_EQ(caption("OptTypes_32"), QStringLiteral("Unknown"));
  EXPECT_EQ(window->findChild<QWidget*>(QStringLiteral("OptTypes_33")), nullptr);
  EXPECT_TRUE(In<QRadioButton>(*window, "OptTeam_0").isChecked());
  EXPECT_TRUE(In<QRadioButton>(*window, "OptTypes_0").isChecked());
}

TEST_F(ImportObjLists, OptionsFilterTheList) {
  Open();
  Choose("OptTeam_3");
  EXPECT_EQ(Names(), "Alpha charlie <b>");
  Choose("OptTypes_1");
  EXPECT_EQ(Names(), "");
  Choose("OptTeam_0");
  EXPECT_EQ(Names(), "bravo");
  Choose("OptTypes_32");
  EXPECT_EQ(Names(), "delta");
  Choose("OptTypes_0");
  EXPECT_EQ(Names(), "bravo Alpha charlie <b> delta");
}

TEST_F(ImportObjLists, ColumnsSortWithMouseAndKeys) {
  Open();
  ClickColumn(0);
  EXPECT_EQ(Names(), "Alpha bravo charlie <b> delta");
  ClickColumn(0);
  EXPECT_EQ(Names(), "delta charlie <b> bravo Alpha");
  ClickColumn(2);
  EXPECT_EQ(Names(), "charlie <b> Alpha bravo delta") << "Blue, Blue, Red, Team #0";
  Key(Qt::Key_2, Qt::ControlModifier);
  EXPECT_EQ(Names(), "bravo charlie <b> Alpha delta");
  Key(Qt::Key_2, Qt::ControlModifier);
  EXPECT_EQ(Names(), "delta charlie <b> Alpha bravo");
  Choose("OptTeam_3");
  EXPECT_EQ(Names(), "charlie <b> Alpha") << "the order stays";
}

TEST_F(ImportObjLists, MarksCountWithMouseAndKeyboard) {
  Open();
  ClickMark(List(), "D2");
  EXPECT_TRUE(Marked(List(), "D2"));
  EXPECT_EQ(Count(), QStringLiteral("Objectives Selected: 1"));
  List().setFocus();
  ClickNode(List(), "D3");
  QTest::keyClick(&List(), Qt::Key_Down, Qt::ShiftModifier);
  QTest::keyClick(&List(), Qt::Key_Space);
  EXPECT_TRUE(Marked(List(), "D3"));
  EXPECT_TRUE(Marked(List(), "D4"));
  EXPECT_EQ(Count(), QStringLiteral("Objectives Selected: 3"));
  EXPECT_FALSE(AllChecked());
  QTest::keyClick(&List(), Qt::Key_Space);
  EXPECT_EQ(Count(), QStringLiteral("Objectives Selected: 1"));
  ClickMark(List(), "D2");
  EXPECT_EQ(Count(), QStringLiteral("Objectives Selected: 0"));
}

TEST_F(ImportObjLists, SelectAllIsOfTheRowsShown) {
  Open();
  Choose("OptTeam_3");
  Press(*window, "chkSelectAll");
  EXPECT_EQ(Count(), QStringLiteral("Objectives Selected: 2"));
  EXPECT_TRUE(Marked(List(), "D2"));
  Choose("OptTeam_0");
  EXPECT_FALSE(Marked(List(), "D1"));
  EXPECT_FALSE(AllChecked()) << "not all that are shown now are selected";
  Press(*window, "chkSelectAll");
  EXPECT_EQ(Count(), QStringLiteral("Objectives Selected: 4"));
  Choose("OptTypes_1");
  EXPECT_TRUE(AllChecked());
  Press(*window, "chkSelectAll");
  EXPECT_EQ(Count(), QStringLiteral("Objectives Selected: 3")) << "those that are not shown stay";
}

TEST_F(ImportObjLists, NextWantsASelection) {
  Open();
  Press(*window, "cmdImport");
  ASSERT_EQ(desk.Boxes.size(), 1U);
  EXPECT_EQ(desk.Boxes[0].Title, "Ooops");
  EXPECT_EQ(desk.Boxes[0].Text, "You haven't selected any Objective...");
  EXPECT_TRUE(window->isVisible());
}

TEST_F(ImportObjLists, BackKeepsTheSelectionAndWhatWasChosen) {
  Open();
  ClickMark(List(), "D1");
  InOptions([](ImportObjOptionsFrm& options) {
    Press(options, "OptImportType_1");
    Press(options, "cmdBack");
  });
  Press(*window, "cmdImport");
  EXPECT_TRUE(optionsSeen);
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(Count(), QStringLiteral("Objectives Selected: 1"));
  EXPECT_TRUE(Marked(List(), "D1"));
  EXPECT_TRUE(Catalogue().AreaGroups.Empty());
  bool lines = false;
  InOptions([&lines](ImportObjOptionsFrm& options) {
    lines = In<QRadioButton>(options, "OptImportType_1").isChecked();
    QTest::keyClick(&options, Qt::Key_Escape);
  });
  Press(*window, "cmdImport");
  EXPECT_TRUE(lines);
  EXPECT_TRUE(window->isVisible());
}

TEST_F(ImportObjLists, ImportClosesBothWindows) {
  Open();
  ClickMark(List(), "D2");
  InOptions([](ImportObjOptionsFrm& options) { Press(options, "cmdImport"); });
  Press(*window, "cmdImport");
  EXPECT_TRUE(optionsSeen);
  EXPECT_EQ(window->result(), QDialog::Accepted);
  EXPECT_FALSE(window->isVisible());
  ASSERT_EQ(Imported().UpperBound(), 1U);
  EXPECT_EQ(Imported()[1].Name, "Alpha");
  EXPECT_EQ(Imported()[1].Icon, 18);
  EXPECT_EQ(MapDraws(), 1);
}

TEST_F(ImportObjLists, CancelClosesThemWithoutAnything) {
  Open();
  ClickMark(List(), "D2");
  InOptions([](ImportObjOptionsFrm& options) { Press(options, "cmdCancel"); });
  Press(*window, "cmdImport");
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(window->result(), QDialog::Rejected);
  Open();
  Press(*window, "cmdCancel");
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(Catalogue().AreaGroups.Empty());
}

TEST_F(ImportObjLists, AllCanBeDoneByKeyboard) {
  Open();
  EXPECT_EQ(QApplication::focusWidget(), &List());
  Key(Qt::Key_Space);
  EXPECT_EQ(Count(), QStringLiteral("Objectives Selected: 1"));
  Key(Qt::Key_Tab);
  Key(Qt::Key_Space);
  EXPECT_EQ(Count(), QStringLiteral("Objectives Selected: 4"));
  Key(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("OptTeam_0"));
  Key(Qt::Key_Down);
  Key(Qt::Key_Down);
  EXPECT_EQ(Names(), "bravo");
  Key(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("OptTypes_0"));
  Key(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("cmdImport"));
}

TEST_F(ImportObjLists, WithoutObjectivesSaySo) {
  data.World.Objectives.clear();
  Open();
  EXPECT_EQ(Names(), "");
  Press(*window, "chkSelectAll");
  EXPECT_FALSE(AllChecked());
  EXPECT_EQ(Count(), QStringLiteral("Objectives Selected: 0"));
}

TEST_F(ImportObjLists, ListOfThousandsMakesNoControlsOfItsRows) {
  Open();
  const qsizetype few = window->findChildren<QObject*>().size();
  for (int n = 0; n < 4000; ++n) test::AddObjective(data, 3, "more");
  Open();
  EXPECT_EQ(List().model()->rowCount(), 4004);
  Press(*window, "chkSelectAll");
  ClickColumn(0);
  ClickColumn(1);
  EXPECT_EQ(Count(), QStringLiteral("Objectives Selected: 4004"));
  EXPECT_LT(window->findChildren<QObject*>().size(), few + 10);
}

}  // namespace
}  // namespace kestrel::shell
