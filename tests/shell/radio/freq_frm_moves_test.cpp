// Moves and drags in the panel of the frequencies.

#include "shell/radio/freq_panel_fixture.h"

namespace kestrel::shell {
namespace {

class FreqMoves : public FreqPanel {
 protected:
  /// Whether a press refreshes the tree: a name that has been changed beneath it is shown then.
  bool Refreshes(const char* button) {
    const std::string before = Tables().FreqFolders[2].Name;
    Tables().FreqFolders[2].Name = "Changed";
    const QStringList shown = Texts(Tree(3));
    Press(panel, button);
    const bool refreshed = shown != Texts(Tree(3));
    for (radio::FreqFolder& folder : Tables().FreqFolders.Live()) {
      if (folder.Name == "Changed") folder.Name = before;
    }
    return refreshed;
  }
};

TEST_F(FreqMoves, EntryMovesWithinItsFolder) {
  PressAt(3, "D3_C1", "cmdMoveUp");
  EXPECT_EQ(Folders(), "Tankers(Track one=251000;Spare=999;Track two=138050;)Ranges(Tower=118250;)");
  EXPECT_EQ(Selected(), "D2_C1");
  Press(panel, "cmdMoveAllUp");
  EXPECT_EQ(Folders(), "Tankers(Spare=999;Track one=251000;Track two=138050;)Ranges(Tower=118250;)");
  EXPECT_EQ(Selected(), "D1_C1");
  Press(panel, "cmdMoveDown");
  EXPECT_EQ(Folders(), "Tankers(Track one=251000;Spare=999;Track two=138050;)Ranges(Tower=118250;)");
  EXPECT_EQ(Selected(), "D2_C1");
  Press(panel, "cmdMoveAllDown");
  EXPECT_EQ(Folders(), BothFolders);
  EXPECT_EQ(Selected(), "D3_C1");
  EXPECT_EQ(MapDraws(), 0);
}

TEST_F(FreqMoves, FolderMovesAmongTheFolders) {
  AddEntries("Third", {});
  panel.Refresh(base::Changed::Frequencies);
  PressAt(3, "C3", "cmdMoveAllUp");
  EXPECT_EQ(Selected(), "C1");
  EXPECT_EQ(Tables().FreqFolders[1].Name + Tables().FreqFolders[3].Name, "ThirdRanges");
  Press(panel, "cmdMoveDown");
  EXPECT_EQ(Selected(), "C2");
  EXPECT_EQ(Tables().FreqFolders[1].Name + Tables().FreqFolders[2].Name, "TankersThird");
  Press(panel, "cmdMoveAllDown");
  EXPECT_EQ(Selected(), "C3");
  Press(panel, "cmdMoveUp");
  EXPECT_EQ(Selected(), "C2");
  EXPECT_EQ(Tables().FreqFolders[2].Name + Tables().FreqFolders[3].Name, "ThirdRanges");
}

TEST_F(FreqMoves, AtTheEdgeUpAndDownDoNotEvenRefresh) {
  Stand(3, "D1_C2");
  EXPECT_FALSE(Refreshes("cmdMoveUp"));
  EXPECT_FALSE(Refreshes("cmdMoveDown")) << "it is the only one";
  Stand(3, "C2");
  EXPECT_FALSE(Refreshes("cmdMoveDown"));
  Stand(3, "C1");
  EXPECT_FALSE(Refreshes("cmdMoveUp"));
  EXPECT_EQ(Folders(), BothFolders);
  EXPECT_EQ(Selected(), "C1");
}

TEST_F(FreqMoves, ToTopAndToBottomRefreshAtTheEdgeToo) {
  Stand(3, "C1");
  EXPECT_TRUE(Refreshes("cmdMoveAllUp"));
  Stand(3, "D1_C2");
  panel.RefreshList(3, 3, QStringLiteral("D1_C2"), false);
  EXPECT_TRUE(Refreshes("cmdMoveAllUp"));
  panel.RefreshList(3, 3, QStringLiteral("C2"), false);
  EXPECT_TRUE(Refreshes("cmdMoveAllDown"));
  EXPECT_EQ(Folders(), BothFolders);
}

TEST_F(FreqMoves, AirfieldMovesAmongAllOfThem) {
  PressAt(2, "A3", "cmdMoveUpAirf");
  EXPECT_EQ(Airfields(), "North Field;South Field;Far Harbour;") << "its neighbour is another team's";
  EXPECT_EQ(Selected(), "A2");
  EXPECT_EQ(TextOf(Tree(), "A2"), QStringLiteral("South Field"));
  EXPECT_EQ(MapDraws(), 1) << "the order of drawing has changed";
  Press(panel, "cmdMoveAllUpAirf");
  EXPECT_EQ(Airfields(), "South Field;North Field;Far Harbour;");
  EXPECT_EQ(Selected(), "A1");
  Press(panel, "cmdMoveDownAirf");
  EXPECT_EQ(Airfields(), "North Field;South Field;Far Harbour;");
  EXPECT_EQ(Selected(), "A2");
}

TEST_F(FreqMoves, NodeBelowAnAirfieldMovesItAndIsSelectedAgain) {
  for (const char* key : {"TC3", "I13", "VF3"}) {
    PressAt(2, key, "cmdMoveUpAirf");
    EXPECT_EQ(Airfields(), "North Field;South Field;Far Harbour;");
    EXPECT_EQ(Selected(), std::string(key, 2) + "2") << "the first two characters stay";
    Press(panel, "cmdMoveDownAirf");
    EXPECT_EQ(Selected(), key);
  }
}

TEST_F(FreqMoves, KeyAfterAMoveToTheBottomCountsTheFolders) {
  // Two folders, three airfields.
  PressAt(2, "A1", "cmdMoveAllDownAirf");
  EXPECT_EQ(Airfields(), "Far Harbour;South Field;North Field;");
  EXPECT_EQ(Selected(), "A2");
  Tables().FreqFolders.Clear();
  PressAt(2, "TC1", "cmdMoveAllDownAirf");
  EXPECT_EQ(Airfields(), "South Field;North Field;Far Harbour;");
  EXPECT_EQ(Selected(), "TC3") << "without such an airfield the moved one";
}

TEST_F(FreqMoves, AirfieldAtTheEdgeStaysAndNothingIsDrawn) {
  PressAt(2, "A1", "cmdMoveUpAirf");
  PressAt(2, "A3", "cmdMoveDownAirf");
  EXPECT_EQ(Airfields(), "North Field;Far Harbour;South Field;");
  EXPECT_EQ(MapDraws(), 0);
}

TEST_F(FreqMoves, WhatIsOpenStaysOpenUnderItsNewNumber) {
  Stand(2, "R1");
  Tree().expand(At(Tree(), "R1"));
  Tree().expand(At(Tree(), "A1"));
  PressAt(2, "A3", "cmdMoveAllUpAirf");
  EXPECT_FALSE(Tree().isExpanded(At(Tree(), "A1"))) << "South Field";
  EXPECT_TRUE(Tree().isExpanded(At(Tree(), "A2"))) << "North Field";
  Stand(3, "C2");
  Tree().expand(At(Tree(), "C2"));
  Press(panel, "cmdMoveUp");
  EXPECT_TRUE(Tree().isExpanded(At(Tree(), "C1")));
  EXPECT_FALSE(Tree().isExpanded(At(Tree(), "C2")));
  desk.Answers = {base::Answer::Yes};
  PressAt(3, "C2", "cmdDeleteFolder");
  EXPECT_TRUE(Tree().isExpanded(At(Tree(), "C1")));
  AddEntries("Other", {{"a", "b"}});
  panel.RefreshList(3, 3, {}, false);
  desk.Answers = {base::Answer::Yes};
  PressAt(3, "C1", "cmdDeleteFolder");
  EXPECT_FALSE(Tree().isExpanded(At(Tree(), "C1"))) << "what was open is gone";
}

TEST_F(FreqMoves, WhatIsOpenStaysOpenWhenAFilterIsEmptied) {
  AddEntries("Tank two", {{"a", "b"}});
  panel.RefreshList(3, 3, {}, false);
  Open(3);
  QTest::keyClicks(&Filter(), QStringLiteral("tank"));
  Tree().expand(At(Tree(), "C3"));
  desk.Answers = {base::Answer::Yes};
  PressAt(3, "C1", "cmdDeleteFolder");
  EXPECT_EQ(Filter().text(), QString()) << "Ranges, which is selected, had been hidden";
  EXPECT_EQ(Selected(), "C1");
  EXPECT_TRUE(Tree().isExpanded(At(Tree(), "C2"))) << "Tank two";
}

class FreqDrag : public FreqPanel {
 protected:
  void SetUp() override {
    FreqPanel::SetUp();
    Open(3);
    Tree().expandAll();
  }
  bool MayDrop(const char* from, const char* to) {
    const std::unique_ptr<QMimeData> data(Model().mimeData({At(Tree(), from)}));
    return Model().canDropMimeData(data.get(), Qt::MoveAction, -1, -1, At(Tree(), to));
  }
  void Drop(const char* from, const char* to) {
    const std::unique_ptr<QMimeData> data(Model().mimeData({At(Tree(), from)}));
    Model().dropMimeData(data.get(), Qt::MoveAction, -1, -1, At(Tree(), to));
  }
  QAbstractItemModel& Model() { return *Tree().model(); }
};

TEST_F(FreqDrag, EntriesAloneAreDragged) {
  EXPECT_TRUE(Model().flags(At(Tree(), "D1_C1")).testFlag(Qt::ItemIsDragEnabled));
  EXPECT_FALSE(Model().flags(At(Tree(), "C1")).testFlag(Qt::ItemIsDragEnabled));
  EXPECT_EQ(Tree(1).dragDropMode(), QAbstractItemView::NoDragDrop);
  EXPECT_EQ(Tree(2).dragDropMode(), QAbstractItemView::NoDragDrop);
}

TEST_F(FreqDrag, EntryDroppedOnAnotherFolderGoesToItsEnd) {
  ASSERT_TRUE(MayDrop("D1_C1", "C2"));
  Drop("D1_C1", "C2");
  EXPECT_EQ(Folders(), "Tankers(Track two=138050;Spare=999;)Ranges(Tower=118250;Track one=251000;)");
  EXPECT_EQ(Selected(), "D2_C2");
  EXPECT_TRUE(Tree().isExpanded(At(Tree(), "C1")));
}

TEST_F(FreqDrag, OwnFolderAndOtherTargetsDoNothing) {
  Drop("D1_C1", "C1");
  EXPECT_FALSE(MayDrop("D1_C1", "D1_C2"));
  Drop("D1_C1", "D1_C2");
  EXPECT_EQ(Folders(), BothFolders);
}

TEST_F(FreqDrag, IsDoneByKeysToo) {
  const auto press = [this](Qt::Key key) { QTest::keyClick(&Tree(), key, Qt::ControlModifier | Qt::ShiftModifier); };
  Stand(3, "D2_C1");
  press(Qt::Key_Up);
  EXPECT_EQ(Folders(), BothFolders) << "there is none above";
  EXPECT_EQ(Selected(), "D2_C1");
  press(Qt::Key_Down);
  EXPECT_EQ(Folders(), "Tankers(Track one=251000;Spare=999;)Ranges(Tower=118250;Track two=138050;)");
  EXPECT_EQ(Selected(), "D2_C2");
  press(Qt::Key_Down);
  press(Qt::Key_Up);
  EXPECT_EQ(Folders(), "Tankers(Track one=251000;Spare=999;Track two=138050;)Ranges(Tower=118250;)");
  EXPECT_EQ(Selected(), "D3_C1");
  QTest::keyClicks(&Filter(), QStringLiteral("t"));
  press(Qt::Key_Down);
  EXPECT_EQ(Selected(), "D3_C1") << "among folders that may be hidden it goes nowhere";
}

}  // namespace
}  // namespace kestrel::shell
