// What the buttons of the panel of the frequencies change.

#include "shell/radio/freq_panel_fixture.h"

namespace kestrel::shell {
namespace {

using FreqEdits = FreqPanel;

TEST_F(FreqEdits, ChannelIsStoredAsItIsTyped) {
  Stand(1, "FU1");
  InDialog([](QWidget& dialog) {
    EXPECT_EQ(In<QLineEdit>(dialog, "txtFreqValue").text(), QStringLiteral("297500")) << "trimmed";
    EXPECT_FALSE(In<QWidget>(dialog, "txtFreqDescr").isVisible());
    Type(dialog, "txtFreqValue", "no frequency");
    Press(dialog, "cmdOK");
  });
  Press(panel, "cmdEditChannel");
  EXPECT_EQ(Tables().CustomUHF[1], "no frequency");
  EXPECT_EQ(TextOf(Tree(), "FU1"), QStringLiteral("[1](Flight 1): no frequency"));
  EXPECT_EQ(Selected(), "FU1");
  EXPECT_FALSE(modal.Open());
}

TEST_F(FreqEdits, ChannelOfEachKindIsEdited) {
  const std::pair<const char*, std::string*> channels[] = {{"FU20", &Tables().CustomUHF[20]},
                                                           {"FV1", &Tables().CustomVHF[1]},
                                                           {"FV12", &Tables().CustomVHF[12]},
                                                           {"FI1", &Tables().CustomF1},
                                                           {"FI2", &Tables().CustomF2}};
  for (const auto& [key, text] : channels) {
    TypeFreq("118300");
    PressAt(1, key, "cmdEditChannel");
    EXPECT_EQ(*text, "118300") << key;
    EXPECT_EQ(Selected(), key);
    *text = "1";
  }
}

TEST_F(FreqEdits, CancelledDialogsChangeNothing) {
  CancelDialog();
  PressAt(1, "FU1", "cmdEditChannel");
  EXPECT_EQ(Tables().CustomUHF[1], " 297500 ");
  CancelDialog();
  PressAt(3, "D1_C1", "cmdEditFreq");
  CancelDialog();
  Press(panel, "cmdAddFreq");
  EXPECT_EQ(Folders(), BothFolders);
  SelectNothing(3);
  CancelDialog();
  Press(panel, "cmdAddFreq");
  EXPECT_EQ(Folders(), BothFolders) << "no folder for nothing";
}

TEST_F(FreqEdits, DefaultsReplaceTheChannelsOnYesAlone) {
  Stand(1, "FV2");
  Press(panel, "cmdLoadBMS");
  ExpectQuestion("Confirm", "All your custom channels will be replaced by BMS default channels. Are you sure?");
  EXPECT_EQ(Tables().CustomUHF[1], " 297500 ");
  desk.Answers = {base::Answer::Yes};
  Press(panel, "cmdLoadBMS");
  EXPECT_EQ(Tables().CustomUHF[20], "302000");
  EXPECT_EQ(Tables().CustomVHF[1], "130100");
  EXPECT_EQ(Tables().CustomF1 + Tables().CustomF2, "3490000");
  EXPECT_EQ(TextOf(Tree(), "FI1"), QStringLiteral("[F1]: 349000"));
  EXPECT_EQ(Folders(), BothFolders);
  EXPECT_EQ(Selected(), "U");
}

TEST_F(FreqEdits, NewFolderComesLastAndIsSelected) {
  Open(3);
  Press(panel, "cmdAddFolder");
  EXPECT_EQ(Folders(), std::string(BothFolders) + "New Folder()");
  EXPECT_EQ(Selected(), "C3");
  EXPECT_EQ(MapDraws(), 0) << "nothing on the map has changed";
}

class FreqFolderName : public FreqPanel {
 protected:
  QLineEdit* Editor() { return qobject_cast<QLineEdit*>(Tree(3).indexWidget(Tree(3).currentIndex())); }
  bool EditorGone() {
    return QTest::qWaitFor([this] { return Editor() == nullptr; });
  }
  void TypeName(const QString& name) {
    QLineEdit* editor = Editor();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    Commit(*editor, name);
    QTest::keyClick(editor, Qt::Key_Return);
  }
};

TEST_F(FreqFolderName, IsEditedInPlace) {
  PressAt(3, "C2", "cmdEditFolder");
  TypeName(QStringLiteral("Caf\u00e9 <b>"));
  ASSERT_TRUE(EditorGone());
  EXPECT_EQ(Tables().FreqFolders[2].Name, "Caf\xe9 <b>");
  EXPECT_EQ(TextOf(Tree(), "C2"), QStringLiteral("Caf\u00e9 <b>"));
  EXPECT_EQ(voiceWindows.Operations, 0) << "Enter was for the name";
}

TEST_F(FreqFolderName, IsEditedByF2AndAnEntryIsNot) {
  KeyAt(3, "C1", Qt::Key_F2);
  TypeName(QStringLiteral("Named"));
  ASSERT_TRUE(EditorGone());
  EXPECT_EQ(Tables().FreqFolders[1].Name, "Named");
  EXPECT_FALSE(At(Tree(), "D1_C1").flags().testFlag(Qt::ItemIsEditable));
}

TEST_F(FreqFolderName, ThatTheCodePageDoesNotHoldIsRefusedInWords) {
  PressAt(3, "C1", "cmdEditFolder");
  TypeName(QStringLiteral("Base \u2192"));
  auto& refused = In<QLabel>(panel, "lblRefused");
  ASSERT_TRUE(QTest::qWaitFor([&refused] { return refused.isVisible(); }));
  EXPECT_EQ(refused.text(), QStringLiteral("This character cannot be used here: \u2192."));
  EXPECT_EQ(Tables().FreqFolders[1].Name, "Tankers");
  ASSERT_TRUE(QTest::qWaitFor([this] { return Editor() != nullptr; })) << "what was typed can be mended";
  TypeName(QStringLiteral("Base"));
  ASSERT_TRUE(EditorGone());
  EXPECT_EQ(Tables().FreqFolders[1].Name, "Base");
  EXPECT_FALSE(refused.isVisible());
}

TEST_F(FreqFolderName, ThatIsEmptyIsSeenAndLongOnesStay) {
  Tables().FreqFolders[1].Name = "";
  Tables().FreqFolders[2].Name = std::string(700, 'y');
  panel.Refresh(base::Changed::Frequencies);
  EXPECT_EQ(TextOf(Tree(3), "C1"), QStringLiteral("(no name)"));
  PressAt(3, "C2", "cmdEditFolder");
  ASSERT_NE(Editor(), nullptr);
  QTest::keyClick(Editor(), Qt::Key_Return);
  ASSERT_TRUE(EditorGone());
  EXPECT_EQ(Tables().FreqFolders[2].Name, std::string(700, 'y')) << "it was only looked at";
}

TEST_F(FreqEdits, FolderWithFrequenciesIsDeletedOnYesAlone) {
  PressAt(3, "C1", "cmdDeleteFolder");
  ExpectQuestion("Folder delete...",
                 "Are you sure you want to delete the Tankers Folder? All Frequencies under it will be deleted also.");
  EXPECT_EQ(Folders(), BothFolders);
  desk.Answers = {base::Answer::Yes};
  Press(panel, "cmdDeleteFolder");
  EXPECT_EQ(Folders(), "Ranges(Tower=118250;)");
  EXPECT_EQ(Selected(), "C1") << "the one that follows";
  EXPECT_TRUE(Tree().hasFocus());
}

TEST_F(FreqEdits, EmptyFolderGoesWithoutAQuestion) {
  AddEntries("Empty", {});
  panel.Refresh(base::Changed::Frequencies);
  PressAt(3, "C3", "cmdDeleteFolder");
  EXPECT_TRUE(desk.Boxes.empty());
  EXPECT_EQ(Folders(), BothFolders);
  EXPECT_EQ(Selected(), "C2") << "the last";
}

TEST_F(FreqEdits, OnlyFolderLeavesTheTabEmpty) {
  Tables().FreqFolders.Clear();
  AddEntries("Only", {});
  panel.Refresh(base::Changed::Frequencies);
  PressAt(3, "C1", "cmdDeleteFolder");
  EXPECT_EQ(Keys(Tree()), "");
  EXPECT_EQ(Selected(), "");
  EXPECT_FALSE(Enabled(panel, "cmdDeleteFolder"));
}

TEST_F(FreqEdits, NewFrequencyBeginsWithItsTextsAndGoesToTheSelectedFolder) {
  Stand(3, "C2");
  InDialog([](QWidget& dialog) {
    EXPECT_EQ(In<QLineEdit>(dialog, "txtFreqDescr").text(), QStringLiteral("New Frequency"));
    EXPECT_EQ(In<QLineEdit>(dialog, "txtFreqValue").text(), QStringLiteral("243000"));
    Press(dialog, "cmdOK");
  });
  Press(panel, "cmdAddFreq");
  EXPECT_EQ(Tables().FreqFolders[2].Entries.UpperBound(), 2u);
  EXPECT_EQ(Tables().FreqFolders[2].Entries[2].Description, "New Frequency");
  EXPECT_EQ(Selected(), "D2_C2");
}

TEST_F(FreqEdits, NewFrequencyGoesToTheFolderOfTheSelectedOne) {
  TypeFreq("30", "Low");
  PressAt(3, "D2_C1", "cmdAddFreq");
  EXPECT_EQ(Folders(), "Tankers(Track one=251000;Track two=138050;Spare=999;Low=30;)Ranges(Tower=118250;)");
  EXPECT_EQ(Selected(), "D4_C1");
}

TEST_F(FreqEdits, NewFrequencyWithoutASelectionMakesAFolder) {
  SelectNothing(3);
  TypeFreq("243000", "Guard");
  Press(panel, "cmdAddFreq");
  EXPECT_EQ(Folders(), std::string(BothFolders) + "New Folder(Guard=243000;)");
  EXPECT_EQ(Selected(), "D1_C3");
  Tables().FreqFolders.Clear();
  panel.Refresh(base::Changed::Frequencies);
  TypeFreq("243000", "Guard");
  Press(panel, "cmdAddFreq");
  EXPECT_EQ(Folders(), "New Folder(Guard=243000;)") << "with no folder at all";
}

TEST_F(FreqEdits, FrequencyIsEditedWithItsDescription) {
  Tables().FreqFolders[1].Entries[2] = {" Track two ", " 138050 "};
  Stand(3, "D2_C1");
  InDialog([](QWidget& dialog) {
    EXPECT_EQ(In<QLineEdit>(dialog, "txtFreqDescr").text(), QStringLiteral("Track two"));
    EXPECT_EQ(In<QLineEdit>(dialog, "txtFreqValue").text(), QStringLiteral("138050"));
    Type(dialog, "txtFreqDescr", "a=b");
    Type(dialog, "txtFreqValue", "x");
    Press(dialog, "cmdOK");
  });
  Press(panel, "cmdEditFreq");
  EXPECT_EQ(Folders(), "Tankers(Track one=251000;a=b=x;Spare=999;)Ranges(Tower=118250;)");
  EXPECT_EQ(TextOf(Tree(), "D2_C1"), QStringLiteral("[a=b]: x"));
  EXPECT_EQ(Selected(), "D2_C1");
}

TEST_F(FreqEdits, DeletedFrequencyGivesWayToTheNext) {
  PressAt(3, "D1_C1", "cmdDeleteFreq");
  EXPECT_TRUE(desk.Boxes.empty()) << "without a question";
  EXPECT_EQ(Selected(), "D1_C1");
  Stand(3, "D2_C1");
  Press(panel, "cmdDeleteFreq");
  EXPECT_EQ(Folders(), "Tankers(Track two=138050;)Ranges(Tower=118250;)");
  EXPECT_EQ(Selected(), "D1_C1") << "the last";
  Press(panel, "cmdDeleteFreq");
  EXPECT_EQ(Selected(), "C1") << "the folder, empty now";
  EXPECT_TRUE(Tree().hasFocus());
}

TEST_F(FreqEdits, DeleteKeyIsTheButtonOfTheNode) {
  KeyAt(3, "D3_C1", Qt::Key_Delete);
  EXPECT_EQ(Tables().FreqFolders[1].Entries.UpperBound(), 2u);
  KeyAt(3, "C1", Qt::Key_Delete);
  ExpectQuestion("Folder delete...",
                 "Are you sure you want to delete the Tankers Folder? All Frequencies under it will be deleted also.");
  KeyAt(1, "FU1", Qt::Key_Delete);
  EXPECT_EQ(Tables().CustomUHF[1], " 297500 ");
}

TEST_F(FreqEdits, F2EditsAChannelAndAFrequency) {
  TypeFreq("118000");
  KeyAt(1, "FV2", Qt::Key_F2);
  EXPECT_EQ(Tables().CustomVHF[2], "118000");
  TypeFreq("119000", "Ground");
  KeyAt(3, "D1_C2", Qt::Key_F2);
  EXPECT_EQ(Tables().FreqFolders[2].Entries[1].Value, "119000");
}

TEST_F(FreqEdits, IsTakenBackAndDoneAgainByKeysOnItsTab) {
  PressAt(3, "D3_C1", "cmdDeleteFreq");
  Open(1);
  QTest::keyClick(&Tree(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Folders(), BothFolders);
  EXPECT_TRUE(Tree(3).isVisible()) << "where it has come back";
  EXPECT_EQ(Selected(), "D3_C1");
  QTest::keyClick(&Tree(), Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(Tables().FreqFolders[1].Entries.UpperBound(), 2u);
  QTest::keyClick(&Tree(), Qt::Key_Z, Qt::ControlModifier);
  QTest::keyClick(&Tree(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Tables().FreqFolders[1].Entries.UpperBound(), 2u);
  EXPECT_EQ(MapDraws(), 0);
}

TEST_F(FreqEdits, EachIsAStepThatIsTakenBack) {
  const auto undo = [this] {
    // A dialog has been open.
    Activate(panel);
    QTest::keyClick(&Tree(), Qt::Key_Z, Qt::ControlModifier);
  };
  TypeFreq("118000");
  PressAt(1, "FU1", "cmdEditChannel");
  undo();
  EXPECT_EQ(TextOf(Tree(1), "FU1"), QStringLiteral("[1](Flight 1): 297500"));
  desk.Answers = {base::Answer::Yes};
  Press(panel, "cmdLoadBMS");
  undo();
  EXPECT_EQ(Tables().CustomUHF[1], " 297500 ");
  TypeFreq("118000", "Other");
  PressAt(3, "D1_C1", "cmdEditFreq");
  undo();
  Press(panel, "cmdAddFolder");
  undo();
  PressAt(3, "C1", "cmdMoveDown");
  undo();
  EXPECT_EQ(Folders(), BothFolders);
  desk.Answers = {base::Answer::Yes};
  PressAt(3, "C2", "cmdDeleteFolder");
  undo();
  EXPECT_EQ(Folders(), BothFolders);
  PressAt(2, "A3", "cmdMoveUpAirf");
  MapDraws();
  undo();
  EXPECT_EQ(Airfields(), "North Field;Far Harbour;South Field;");
  EXPECT_EQ(MapDraws(), 1);
}

TEST_F(FreqEdits, MarksThatAreTakenBackAreSeen) {
  Open(2);
  Press(panel, "chkSelectAllAirf");
  QTest::keyClick(&Tree(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Flags(1), "00.0000");
  EXPECT_FALSE(Ticked("chkSelectAllAirf"));
  EXPECT_FALSE(Marked(Tree(), "A1"));
  EXPECT_FALSE(Marked(Tree(), "R1"));
  EXPECT_EQ(MapDraws(), 2);
  QTest::keyClick(&Tree(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(MapDraws(), 0) << "there is nothing more";
}

}  // namespace
}  // namespace kestrel::shell
