#include "shell/theaters/mdf_theaters_frm.h"

#include "shell/theaters/theater_windows_fixture.h"

namespace kestrel::shell {
namespace {

class MdfTheaters : public TheaterWindows {
 protected:
  void SetUp() override {
    TheaterWindows::SetUp();
    window = std::make_unique<MdfTheatersFrm>(program, dialogs, &Frame());
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }
  void TearDown() override {
    window.reset();
    TheaterWindows::TearDown();
  }

  std::unique_ptr<MdfTheatersFrm> window;
};

TEST_F(MdfTheaters, ListShowsNumberNameAndSize) {
  EXPECT_EQ(Row(*window, 0), Texts({"#", "Name", "Size"}));
  ASSERT_EQ(Rows(*window), 2);
  EXPECT_EQ(Row(*window, 1), Texts({"1", "First theater", "1024"}));
  EXPECT_EQ(Row(*window, 2), Texts({"2", "Second theater", "512"}));
  EXPECT_EQ(List(*window).model()->index(1, 0).data(Qt::UserRole).toString(), QStringLiteral("D2"));
}

TEST_F(MdfTheaters, CurrentTheaterIsSelected) {
  EXPECT_EQ(SelectedRow(*window), 1);
  station.Catalogue.CurrentTheater = 2;
  window->RefreshGrid();
  EXPECT_EQ(SelectedRow(*window), 2);
}

TEST_F(MdfTheaters, ButtonsHaveTheirCaptions) {
  const char* captions[] = {"Add...", "Edit...", "Delete", "Close"};
  for (int n = 0; n < 4; ++n) {
    const std::string name = "Command1_" + std::to_string(n);
    EXPECT_EQ(In<QPushButton>(*window, name.c_str()).text(), QString::fromLatin1(captions[n]));
    EXPECT_FALSE(In<QPushButton>(*window, name.c_str()).toolTip().isEmpty());
  }
}

TEST_F(MdfTheaters, CloseAndEscapeCloseIt) {
  Press(*window, "Command1_3");
  EXPECT_FALSE(window->isVisible());
  window->show();
  QTest::keyClick(window.get(), Qt::Key_Escape);
  EXPECT_FALSE(window->isVisible());
}

TEST_F(MdfTheaters, CurrentTheaterCannotBeDeleted) {
  Press(*window, "Command1_2");
  ExpectBox("Theater delete...",
            "The Theater you selected is the currently active Theater. This Theater can't be deleted.");
  EXPECT_EQ(Rows(*window), 2);
}

TEST_F(MdfTheaters, AnyAnswerButYesKeepsTheTheater) {
  for (const base::Answer answer : {base::Answer::No, base::Answer::Cancel}) {
    ClickRow(*window, 2);
    desk.Answers = {answer};
    Press(*window, "Command1_2");
    EXPECT_EQ(desk.Boxes[0].Buttons, base::MessageButtons::YesNo);
    ExpectBox("Theater delete...", "Are you sure you want to delete the Second theater Theater?");
    EXPECT_EQ(Rows(*window), 2);
    EXPECT_FALSE(Read("Theaters/two.ini").isEmpty());
  }
}

TEST_F(MdfTheaters, DeleteTakesTheRowThatIsHighlighted) {
  ClickRow(*window, 2);
  // The keyboard may stand on a row that is not highlighted.
  List(*window).selectionModel()->setCurrentIndex(List(*window).model()->index(0, 0), QItemSelectionModel::NoUpdate);
  ASSERT_TRUE(List(*window).selectionModel()->isRowSelected(1));
  Press(*window, "Command1_2");
  ExpectBox("Theater delete...", "Are you sure you want to delete the Second theater Theater?");
}

TEST_F(MdfTheaters, NothingIsTakenWhenNothingIsHighlighted) {
  QTreeView& list = List(*window);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, PlaceOf(list, 1));
  ASSERT_FALSE(list.selectionModel()->hasSelection());
  EXPECT_FALSE(In<QPushButton>(*window, "Command1_1").isEnabled());
  EXPECT_FALSE(In<QPushButton>(*window, "Command1_2").isEnabled());
  EXPECT_TRUE(In<QPushButton>(*window, "Command1_0").isEnabled());
  Press(*window, "Command1_2");
  EXPECT_TRUE(desk.Boxes.empty());
  ClickRow(*window, 2);
  EXPECT_TRUE(In<QPushButton>(*window, "Command1_1").isEnabled());
  EXPECT_TRUE(In<QPushButton>(*window, "Command1_2").isEnabled());
}

TEST_F(MdfTheaters, DeletedTheaterIsGoneWithItsFilesAndItsMenuEntry) {
  for (const char* end : {"_Areas.dat", "_Elevation.dat", "_ViewShort.dat", "_Frequencies.dat"}) {
    Write((std::string("Theaters/two") + end).c_str(), "x");
  }
  ClickRow(*window, 2);
  desk.Answers = {base::Answer::Yes};
  Press(*window, "Command1_2");
  EXPECT_EQ(Rows(*window), 1);
  EXPECT_EQ(SelectedRow(*window), 1);
  EXPECT_EQ(QDir(folder.filePath(QStringLiteral("Theaters"))).entryList(QStringList{QStringLiteral("two*")}),
            QStringList());
  EXPECT_EQ(Frame().findChild<QAction*>(QStringLiteral("mnuTheatername_2")), nullptr);
  EXPECT_TRUE(Read("KESTREL.ini").contains("TOTALMAPS=1\r\n")) << "saved at once";
}

TEST_F(MdfTheaters, DeletingTheTheaterBelowKeepsTheSameOneCurrent) {
  core::SwitchTheater(program, 2);
  window->RefreshGrid();
  ClickRow(*window, 1);
  desk.Answers = {base::Answer::Yes};
  Press(*window, "Command1_2");
  EXPECT_EQ(station.Catalogue.CurrentTheater, 1);
  EXPECT_EQ(Current().Name, "two");
  EXPECT_EQ(SelectedRow(*window), 1);
  EXPECT_TRUE(Action("mnuTheatername_1").isChecked());
}

TEST_F(MdfTheaters, AddedTheaterIsListedSavedAndInTheMenu) {
  InNextDialog([this](QWidget& details) {
    EXPECT_EQ(details.windowTitle(), QStringLiteral("New Theater"));
    EXPECT_TRUE(dialogs.Open());
    Type(details, "txtName", "a/b");
    Press(details, "Command1");
  });
  Press(*window, "Command1_0");
  EXPECT_FALSE(dialogs.Open());
  ASSERT_EQ(Rows(*window), 3);
  EXPECT_EQ(Row(*window, 3), Texts({"3", "a/b", "1024"}));
  EXPECT_EQ(SelectedRow(*window), 1) << "the current theater stays";
  EXPECT_EQ(Action("mnuTheatername_3").text(), QStringLiteral("a/b"));
  EXPECT_TRUE(Read("Theaters/ab.ini").contains("NAME=a/b\r\n"));
  EXPECT_TRUE(Read("Theaters/ab.gif").startsWith("GIF"));
  EXPECT_TRUE(Read("KESTREL.ini").contains("MAP3=ab.ini\r\n"));
  EXPECT_TRUE(desk.Boxes.empty());
}

TEST_F(MdfTheaters, EditedTheaterIsShownAnewAndTheMapWhole) {
  View().Resolution = 8;
  ClickRow(*window, 2);
  InNextDialog([](QWidget& details) {
    EXPECT_EQ(details.windowTitle(), QStringLiteral("Theater: Second theater"));
    Type(details, "txtName", "Other name");
    Type(details, "txtSize", "600");
    Press(details, "Command1");
  });
  Press(*window, "Command1_1");
  EXPECT_EQ(Row(*window, 2), Texts({"2", "Other name", "600"}));
  EXPECT_EQ(Action("mnuTheatername_2").text(), QStringLiteral("Other name"));
  EXPECT_EQ(station.Catalogue.Theaters[2].Name, "two");
  EXPECT_EQ(View().Resolution, 1);
  EXPECT_TRUE(Read("Theaters/two.ini").contains("DISPLNAME=Other name\r\n"));
}

TEST_F(MdfTheaters, CancelledDetailsChangeNothing) {
  View().Resolution = 8;
  InNextDialog([](QWidget& details) {
    Type(details, "txtName", "Other name");
    Press(details, "Command2");
  });
  Press(*window, "Command1_1");
  EXPECT_EQ(Current().DisplayName, "First theater");
  EXPECT_EQ(View().Resolution, 8);
}

TEST_F(MdfTheaters, MenuOpensIt) {
  window->hide();
  InNextDialog([this](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName(), QStringLiteral("MdfTheatersFrm"));
    EXPECT_TRUE(dialogs.Open());
    Press(dialog, "Command1_3");
  });
  Action("mnuModifyTheater").trigger();
  EXPECT_FALSE(dialogs.Open());
}

}  // namespace
}  // namespace kestrel::shell
