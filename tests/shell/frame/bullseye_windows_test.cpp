#include "shell/frame/bullseye_windows.h"

#include <QMenuBar>

#include "base/program_title.h"
#include "falcon/campaign_bytes.h"
#include "shell/theaters/mdf_bulls_frm.h"
#include "shell/theaters/theater_windows_fixture.h"

namespace kestrel::shell {
namespace {

class Bullseyes : public TheaterWindows {
 protected:
  /// The details, which are no modal dialog.
  BullsDetailsFrm& Details() {
    BullsDetailsFrm* shown = nullptr;
    EXPECT_TRUE(QTest::qWaitFor([&] {
      const auto all = Frame().findChildren<BullsDetailsFrm*>();
      for (BullsDetailsFrm* each : all) {
        if (each->isVisible()) shown = each;
      }
      return shown != nullptr;
    }));
    if (shown == nullptr) throw std::runtime_error("the details are not shown");
    return *shown;
  }
  bool DetailsShown() {
    const auto all = Frame().findChildren<BullsDetailsFrm*>();
    return std::any_of(all.begin(), all.end(), [](BullsDetailsFrm* each) { return each->isVisible(); });
  }
  /// Opens the list and the details from it: `button` is Add... or Edit... of `row`.
  void OpenDetails(const char* button, int row = 1) {
    InNextDialog([button, row](QWidget& list) {
      ClickRow(list, row);
      Press(list, button);
    });
    Action("mnuModifyBullseyes").trigger();
  }
  /// Presses `button` of the details; the list that comes back is closed.
  void CloseDetails(const char* button) {
    listCameBack = false;
    InNextDialog([this](QWidget& list) {
      listCameBack = list.objectName() == QStringLiteral("MdfBullsFrm");
      Press(list, "Command1_3");
    });
    Press(Details(), button);
    EXPECT_TRUE(listCameBack);
  }
  /// A place on the map in the middle of its picture.
  void ClickMap() { QTest::mouseClick(&Picture(), Qt::LeftButton, {}, Picture().rect().center() + QPoint(20, 30)); }
  QString PointerText(double value) { return QString::number(value, 'f', 2); }

  bool listCameBack = false;
};

TEST_F(Bullseyes, ListShowsNumberNameAndPlace) {
  Current().Bulls[2].X = 1.5;
  MdfBullsFrm list(program, &Frame());
  EXPECT_EQ(Row(list, 0), Texts({"#", "Name", "X", "Y"}));
  ASSERT_EQ(Rows(list), 2);
  EXPECT_EQ(Row(list, 1), Texts({"1", "Alpha", "100.00", "200.00"}));
  EXPECT_EQ(Row(list, 2), Texts({"2", "Bravo", "1.50", "400.00"}));
  EXPECT_EQ(SelectedRow(list), 1);
  EXPECT_EQ(List(list).model()->index(0, 0).data(Qt::UserRole).toString(), QStringLiteral("D1"));
  const char* captions[] = {"Add...", "Edit...", "Delete", "Close"};
  for (int n = 0; n < 4; ++n) {
    EXPECT_EQ(In<QPushButton>(list, ("Command1_" + std::to_string(n)).c_str()).text(),
              QString::fromLatin1(captions[n]));
  }
}

TEST_F(Bullseyes, DoubleClickMakesCurrent) {
  MdfBullsFrm list(program, &Frame());
  list.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&list));
  ClickRow(list, 2);
  EXPECT_EQ(Current().CurrentBull, 1);
  QTest::mouseDClick(List(list).viewport(), Qt::LeftButton, {}, PlaceOf(List(list), 2));
  EXPECT_EQ(Current().CurrentBull, 2);
  EXPECT_EQ(View().BullsViewX, 300 * 15);
  EXPECT_TRUE(Action("mnuBullseyesName_2").isChecked());
  EXPECT_FALSE(Action("mnuBullseyesName_1").isChecked());
  EXPECT_EQ(SelectedRow(list), 2);
}

TEST_F(Bullseyes, CurrentOneCannotBeDeleted) {
  MdfBullsFrm list(program, &Frame());
  list.show();
  Press(list, "Command1_2");
  ExpectBox("Bullseye delete...",
            "The Bullseye you selected is the currently active Bullseye. This Bullseye can't be deleted.");
  EXPECT_EQ(Rows(list), 2);
}

TEST_F(Bullseyes, AnotherOneIsDeletedOnYes) {
  core::SelectBullseye(program, 2);
  MdfBullsFrm list(program, &Frame());
  list.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&list));
  ClickRow(list, 1);
  Press(list, "Command1_2");
  EXPECT_EQ(desk.Boxes[0].Buttons, base::MessageButtons::YesNo);
  ExpectBox("Bullseye delete...", "Are you sure you want to delete the Alpha Bullseye?");
  EXPECT_EQ(Rows(list), 2);
  ClickRow(list, 1);
  desk.Answers = {base::Answer::Yes};
  Press(list, "Command1_2");
  EXPECT_EQ(Rows(list), 1);
  EXPECT_EQ(Current().CurrentBull, 1);
  EXPECT_EQ(Current().Bulls[1].Name, "Bravo");
  EXPECT_EQ(SelectedRow(list), 1);
  EXPECT_EQ(Action("mnuBullseyesName_1").text(), QStringLiteral("Bravo"));
}

TEST_F(Bullseyes, TheaterWithoutOneHasNothingToEdit) {
  Current().Bulls.Clear();
  Current().CurrentBull = 0;
  MdfBullsFrm list(program, &Frame());
  EXPECT_EQ(Rows(list), 0);
  EXPECT_TRUE(In<QPushButton>(list, "Command1_0").isEnabled());
  EXPECT_FALSE(In<QPushButton>(list, "Command1_1").isEnabled());
  EXPECT_FALSE(In<QPushButton>(list, "Command1_2").isEnabled());
}

TEST_F(Bullseyes, NewOneBeginsAtZeroAndBecomesCurrent) {
  OpenDetails("Command1_0");
  EXPECT_EQ(Details().windowTitle(), QStringLiteral("New Bullseye"));
  EXPECT_EQ(Label(Details(), "lblPrompt"),
            QStringLiteral("Enter the X and Y coordinates as they appear in Falcon 4, or click on the map"));
  EXPECT_EQ(TextOf(Details(), "txtName"), QStringLiteral("New"));
  EXPECT_EQ(TextOf(Details(), "txtX"), QStringLiteral("0"));
  EXPECT_EQ(TextOf(Details(), "txtY"), QStringLiteral("0"));
  Type(Details(), "txtName", "Charlie");
  Type(Details(), "txtX", "12,5");
  Type(Details(), "txtY", "700.25");
  CloseDetails("Command1");
  EXPECT_FALSE(DetailsShown());
  ASSERT_EQ(Current().Bulls.UpperBound(), 3u);
  EXPECT_EQ(Current().CurrentBull, 3);
  EXPECT_EQ(Current().Bulls[3].Name, "Charlie");
  EXPECT_EQ(Current().Bulls[3].X, 12.5);
  EXPECT_EQ(Current().Bulls[3].Y, 700.25);
  EXPECT_EQ(View().BullsViewX, 12.5 * 15);
  EXPECT_TRUE(Action("mnuBullseyesName_3").isChecked());
}

TEST_F(Bullseyes, EditedOneIsWrittenAndTheCurrentOneStays) {
  Current().Bulls[2].X = 300.125;
  OpenDetails("Command1_1", 2);
  EXPECT_EQ(Details().windowTitle(), QStringLiteral("Bullseye: Bravo"));
  EXPECT_EQ(TextOf(Details(), "txtName"), QStringLiteral("Bravo"));
  EXPECT_EQ(TextOf(Details(), "txtX"), QStringLiteral("300.13"));
  EXPECT_EQ(TextOf(Details(), "txtY"), QStringLiteral("400.00"));
  Type(Details(), "txtName", "Delta");
  CloseDetails("Command1");
  EXPECT_EQ(Current().Bulls[2].Name, "Delta");
  EXPECT_EQ(Current().CurrentBull, 1);
  EXPECT_EQ(Action("mnuBullseyesName_2").text(), QStringLiteral("Delta"));
}

TEST_F(Bullseyes, CancelChangesNothingAndShowsTheListAgain) {
  OpenDetails("Command1_1");
  Type(Details(), "txtName", "Other");
  CloseDetails("Command2");
  EXPECT_EQ(Current().Bulls[1].Name, "Alpha");
  EXPECT_FALSE(DetailsShown());
}

TEST_F(Bullseyes, ClickOnTheMapFillsThePlaceAndSetsTheCursorStart) {
  OpenDetails("Command1_0");
  ClickMap();
  EXPECT_EQ(TextOf(Details(), "txtX"), PointerText(View().CursorMapX));
  EXPECT_EQ(TextOf(Details(), "txtY"), PointerText(View().CursorMapY));
  EXPECT_NE(View().CursorMapX, 0);
  EXPECT_NEAR(View().AnchorViewX / 15, View().CursorMapX, 0.01) << "the map's own work goes on";
  CloseDetails("Command1");
  EXPECT_NEAR(Current().Bulls[3].X, View().CursorMapX, 0.006);
}

TEST_F(Bullseyes, ClickOnTheMapFillsNothingOnceTheDetailsAreClosed) {
  OpenDetails("Command1_1");
  CloseDetails("Command2");
  ClickMap();
  EXPECT_FALSE(DetailsShown());
  EXPECT_EQ(Current().Bulls[1].X, 100);
}

TEST_F(Bullseyes, MenusWaitWhileTheDetailsAreOpen) {
  OpenDetails("Command1_0");
  EXPECT_FALSE(Frame().menuBar()->isEnabled());
  EXPECT_FALSE(Action("mnuSetNewBulls").isEnabled());
  EXPECT_TRUE(dialogs.Open());
  EXPECT_TRUE(Picture().isEnabled());
  CloseDetails("Command2");
  EXPECT_TRUE(Frame().menuBar()->isEnabled());
  EXPECT_TRUE(Action("mnuSetNewBulls").isEnabled());
  EXPECT_FALSE(dialogs.Open());
}

TEST_F(Bullseyes, NewOneFromTheMapBeginsAtThePointerAndLeavesTheMapInFront) {
  QTest::mouseMove(&Picture(), Picture().rect().center() + QPoint(40, 50));
  for (const char* button : {"Command1", "Command2"}) {
    Action("mnuSetNewBulls").trigger();
    EXPECT_EQ(Details().windowTitle(), QStringLiteral("New Bullseye"));
    EXPECT_EQ(TextOf(Details(), "txtName"), QStringLiteral("New"));
    EXPECT_EQ(TextOf(Details(), "txtX"), PointerText(View().CursorMapX));
    EXPECT_EQ(TextOf(Details(), "txtY"), PointerText(View().CursorMapY));
    EXPECT_EQ(Details().pos(), Frame().pos());
    Press(Details(), button);
    EXPECT_FALSE(DetailsShown());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &Frame(); }));
    EXPECT_EQ(Current().Bulls.UpperBound(), 3u) << button;
  }
  EXPECT_EQ(Current().CurrentBull, 3);
}

TEST_F(Bullseyes, PlaceThatCannotBeIsToldAndTheDetailsStay) {
  Action("mnuSetNewBulls").trigger();
  Type(Details(), "txtX", "99999999999");
  Press(Details(), "Command1");
  ExpectBox("Error", "X and Y of a bullseye must lie between -100000 and 100000.");
  EXPECT_TRUE(DetailsShown());
  EXPECT_EQ(Current().Bulls.UpperBound(), 2u);
  Press(Details(), "Command2");
}

TEST_F(Bullseyes, FieldsOfThePlaceTakeNumbersOnly) {
  Action("mnuSetNewBulls").trigger();
  for (const char* field : {"txtX", "txtY"}) {
    Type(Details(), field, "-1a2,5 e.");
    EXPECT_EQ(TextOf(Details(), field), QStringLiteral("12,5."));
  }
  Press(Details(), "Command2");
}

TEST_F(Bullseyes, FieldsJudgeWhatIsTypedAndNotWhatTheMapHasFilledIn) {
  Action("mnuSetNewBulls").trigger();
  BullsDetailsFrm& details = Details();
  // As a click left of and below the map does.
  details.FillPosition(-12.5, -5);
  for (const auto& [field, filled] : {std::pair("txtX", "-12.50"), std::pair("txtY", "-5.00")}) {
    SCOPED_TRACE(field);
    const QString before = QString::fromLatin1(filled);
    auto& line = In<QLineEdit>(details, field);
    EXPECT_EQ(line.text(), before);
    line.end(false);
    QTest::keyClicks(&line, QStringLiteral("x-7 e"));
    EXPECT_EQ(line.text(), before + u'7');
    QTest::keyClicks(&line, QStringLiteral("y"));
    EXPECT_EQ(line.text(), before + u'7');
    line.selectAll();
    QTest::keyClick(&line, Qt::Key_Delete);
    EXPECT_EQ(line.text(), QString());
    QTest::keySequence(&line, QKeySequence::Undo);
    EXPECT_EQ(line.text(), before + u'7') << "what stood comes back";
    line.end(false);
    QTest::keyClicks(&line, QStringLiteral("z8"));
    EXPECT_EQ(line.text(), before + QStringLiteral("78"));
  }
  Press(details, "Command1");
  EXPECT_EQ(Current().Bulls[3].X, -12.5078);
  EXPECT_EQ(Current().Bulls[3].Y, -5.0078);
}

TEST_F(Bullseyes, StoredPlaceThatCouldNotBeTypedBlocksNothing) {
  Current().Bulls[2].X = 2000000;
  Current().Bulls[2].Y = -2000000;
  OpenDetails("Command1_1", 2);
  Type(Details(), "txtName", "Delta");
  CloseDetails("Command1");
  EXPECT_TRUE(desk.Boxes.empty());
  EXPECT_EQ(Current().Bulls[2].Name, "Delta");
  EXPECT_EQ(Current().Bulls[2].X, 2000000);
  EXPECT_EQ(Current().Bulls[2].Y, -2000000);
  OpenDetails("Command1_1", 2);
  Type(Details(), "txtX", "3000000");
  Press(Details(), "Command1");
  ExpectBox("Error", "X and Y of a bullseye must lie between -100000 and 100000.");
  CloseDetails("Command2");
}

TEST_F(Bullseyes, NameThatTheCodePageDoesNotHoldIsRefused) {
  Action("mnuSetNewBulls").trigger();
  BullsDetailsFrm& details = Details();
  auto& name = In<QLineEdit>(details, "txtName");
  name.clear();
  Commit(name, QStringLiteral("\u65E5"));
  Press(details, "Command1");
  EXPECT_TRUE(DetailsShown());
  EXPECT_EQ(Label(details, "lblRefused"), QStringLiteral("This character cannot be used here: \u65E5."));
  EXPECT_EQ(name.text(), QStringLiteral("\u65E5"));
  EXPECT_EQ(Current().Bulls.UpperBound(), 2u);
  Type(details, "txtName", "Nippon");
  Press(details, "Command1");
  EXPECT_EQ(Current().Bulls[3].Name, "Nippon");
}

TEST_F(Bullseyes, DeleteTakesTheRowThatIsHighlighted) {
  core::SelectBullseye(program, 2);
  MdfBullsFrm list(program, &Frame());
  list.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&list));
  ClickRow(list, 1);
  // The keyboard may stand on a row that is not highlighted.
  List(list).selectionModel()->setCurrentIndex(List(list).model()->index(1, 0), QItemSelectionModel::NoUpdate);
  ASSERT_TRUE(List(list).selectionModel()->isRowSelected(0));
  Press(list, "Command1_2");
  ExpectBox("Bullseye delete...", "Are you sure you want to delete the Alpha Bullseye?");
  // Nothing is highlighted: there is nothing to take.
  QTest::mouseClick(List(list).viewport(), Qt::LeftButton, Qt::ControlModifier, PlaceOf(List(list), 1));
  ASSERT_FALSE(List(list).selectionModel()->hasSelection());
  EXPECT_FALSE(In<QPushButton>(list, "Command1_1").isEnabled());
  EXPECT_FALSE(In<QPushButton>(list, "Command1_2").isEnabled());
  ClickRow(list, 1);
  EXPECT_TRUE(In<QPushButton>(list, "Command1_2").isEnabled());
}

TEST_F(Bullseyes, ClosingTheFrameClosesTheDetailsAndNothingComesBack) {
  OpenDetails("Command1_0");
  Frame().close();
  EXPECT_FALSE(DetailsShown());
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Bullseyes, CampaignFileGivesOneThatIsCurrent) {
  Write("save0.cam", QByteArray::fromStdString(test::CampaignBytes({.X = 585, .Y = 821})));
  Choose("save0.cam");
  Action("mnuGetBullseyFromTac").trigger();
  ASSERT_EQ(desk.FileQuestions.size(), 1u);
  EXPECT_EQ(desk.FileQuestions[0].Title, "Open Campaign File");
  EXPECT_EQ(desk.FileQuestions[0].Filter, "Falcon tac/cam/trn files|*.tac;*.cam;*.trn");
  EXPECT_EQ(Current().CurrentBull, 3);
  EXPECT_EQ(Current().Bulls[3].Name, "save0.cam");
  EXPECT_EQ(Current().Bulls[3].X, 585);
  EXPECT_EQ(Current().Bulls[3].Y, 821);
  EXPECT_EQ(View().BullsViewX, 585 * 15);
  EXPECT_TRUE(Action("mnuBullseyesName_3").isChecked());
  EXPECT_TRUE(desk.Boxes.empty());
}

TEST_F(Bullseyes, CampaignFileThatCannotBeReadLeavesTheList) {
  Write("bad.tac", "no campaign");
  Choose("bad.tac");
  Action("mnuGetBullseyFromTac").trigger();
  ExpectBox(base::ProgramTitle().c_str(), "The bullseye cannot be read from \"bad.tac\": it is no campaign file.");
  EXPECT_EQ(Current().Bulls.UpperBound(), 2u);
  Action("mnuGetBullseyFromTac").trigger();
  EXPECT_TRUE(desk.Boxes.empty()) << "a cancelled choice is no failure";
}

TEST_F(Bullseyes, TapesTakeTheChoiceAway) {
  station.Tapes.Bullseye.emplace();
  windows.Refresh(base::Changed::Tape);
  EXPECT_FALSE(Action("mnuBullseyes").isEnabled());
  EXPECT_FALSE(Action("mnuSetNewBulls").isEnabled());
  // Nor does another holder give it back.
  Frame().Hold("mnuSetNewBulls", Frame().Tools(), true);
  Frame().Hold("mnuSetNewBulls", Frame().Tools(), false);
  EXPECT_FALSE(Action("mnuSetNewBulls").isEnabled());
  station.Tapes.Bullseye.reset();
  windows.Refresh(base::Changed::Tape);
  EXPECT_TRUE(Action("mnuBullseyes").isEnabled());
  EXPECT_TRUE(Action("mnuSetNewBulls").isEnabled());
}

}  // namespace
}  // namespace kestrel::shell
