// The filter of the panel of the frequencies, its keys and what is enabled on which node.

#include "shell/radio/freq_panel_fixture.h"

namespace kestrel::shell {
namespace {

class FreqFilter : public FreqPanel {
 protected:
  void Type(int tab, const char* text) {
    Open(tab);
    Filter().setFocus();
    Filter().selectAll();
    QTest::keyClicks(&Filter(), QString::fromLatin1(text));
    if (*text == '\0') QTest::keyClick(&Filter(), Qt::Key_Delete);
  }
  QString Hint(int tab) {
    auto* hint = Tree(tab).viewport()->findChild<QLabel*>();
    return hint != nullptr && hint->isVisible() ? hint->text() : QString();
  }
};

TEST_F(FreqFilter, FindsAirfieldsByTheirNamesWithAllBelowThem) {
  Type(2, "harb");
  EXPECT_EQ(Keys(Tree()), "R2 A2 UF2 VF2 TC2 I12 I22 I32 I42 ");
  EXPECT_TRUE(Tree().isExpanded(At(Tree(), "R2")));
  EXPECT_FALSE(Tree().isExpanded(At(Tree(), "A2"))) << "it is what was looked for";
  Type(2, "");
  EXPECT_EQ(Keys(Tree()).substr(0, 9), "R0 R1 A1 ");
}

TEST_F(FreqFilter, FindsAirfieldsByTheirDigits) {
  Type(2, "118.25");
  EXPECT_EQ(Keys(Tree()), "R1 A3 VF3 ");
  EXPECT_TRUE(Tree().isExpanded(At(Tree(), "A3"))) << "what was found is seen";
  Type(2, "76x");
  EXPECT_EQ(Keys(Tree()), "R2 A2 TC2 ");
  Type(2, "1093");
  EXPECT_EQ(Keys(Tree()), "R1 A1 I11 A3 I13 R2 A2 I12 ");
}

TEST_F(FreqFilter, NeitherTeamsNorBandsAreLookedAt) {
  Type(2, "blue");
  EXPECT_EQ(Keys(Tree()), "");
  EXPECT_EQ(Hint(2), QStringLiteral("No airfield has this in its name or frequencies."));
  Type(2, "nm");
  EXPECT_EQ(Keys(Tree()), "");
}

TEST_F(FreqFilter, FindsFoldersAndEntries) {
  Type(3, "tank");
  EXPECT_EQ(Keys(Tree()), "C1 D1_C1 D2_C1 D3_C1 ");
  Type(3, "t");
  EXPECT_EQ(Keys(Tree()), "C1 D1_C1 D2_C1 D3_C1 C2 D1_C2 ");
  Type(3, "118");
  EXPECT_EQ(Keys(Tree()), "C2 D1_C2 ");
  EXPECT_TRUE(Tree().isExpanded(At(Tree(), "C2")));
  Type(3, "nowhere");
  EXPECT_EQ(Hint(3), QStringLiteral("No folder or frequency has this."));
}

TEST_F(FreqFilter, ChannelsAreNotFiltered) {
  Type(2, "nowhere");
  Open(1);
  EXPECT_EQ(Texts(Tree()).size(), 45);
}

TEST_F(FreqFilter, SelectAllStillMeansAll) {
  Type(2, "harb");
  Press(panel, "chkSelectAllAirf");
  EXPECT_EQ(Flags(1) + Flags(2) + Flags(3), "10.000010.000010.0000");
  Type(2, "field");
  ClickMark(Tree(), "R1");
  EXPECT_EQ(Flags(1) + Flags(2) + Flags(3), "00.000010.000000.0000");
}

TEST_F(FreqFilter, MarkOfATeamIsOfTheAirfieldsThatAreNotFoundToo) {
  Type(2, "north");
  ClickMark(Tree(), "R1");
  EXPECT_EQ(Flags(1) + Flags(2) + Flags(3), "10.000000.000010.0000");
}

TEST_F(FreqFilter, NothingMovesAmongNeighboursThatAreNotSeen) {
  Type(2, "south");
  Stand(2, "A3");
  for (const char* name : {"cmdMoveAllUpAirf", "cmdMoveUpAirf", "cmdMoveDownAirf", "cmdMoveAllDownAirf"}) {
    EXPECT_FALSE(Enabled(panel, name)) << name;
  }
  Type(3, "track");
  Stand(3, "C1");
  EXPECT_FALSE(Enabled(panel, "cmdMoveDown"));
  EXPECT_TRUE(Enabled(panel, "cmdEditFolder"));
  Stand(3, "D1_C1");
  EXPECT_FALSE(Enabled(panel, "cmdMoveDown"));
  EXPECT_TRUE(Enabled(panel, "cmdEditFreq"));
  Type(3, "");
  EXPECT_TRUE(Enabled(panel, "cmdMoveDown"));
}

TEST_F(FreqFilter, WhatIsMadeIsSeenThoughTheFilterHidesIt) {
  Type(3, "track");
  Press(panel, "cmdAddFolder");
  EXPECT_EQ(Filter().text(), QString());
  EXPECT_EQ(Selected(), "C3");
}

TEST_F(FreqFilter, EmptyTreeOfFoldersSaysWhatToDo) {
  Open(3);
  EXPECT_EQ(Hint(3), QString());
  Tables().FreqFolders.Clear();
  panel.Refresh(base::Changed::Frequencies);
  EXPECT_EQ(Hint(3), QStringLiteral("There are no frequencies yet. Add Folder makes a place for them."));
  Press(panel, "cmdAddFolder");
  EXPECT_EQ(Hint(3), QString());
}

TEST_F(FreqFilter, ButtonsNeedTheirKindOfNode) {
  const auto enabled = [this](std::initializer_list<const char*> names) {
    std::string list;
    for (const char* name : names) list += Enabled(panel, name) ? '1' : '0';
    return list;
  };
  const auto channels = [&] { return enabled({"cmdEditChannel", "cmdLoadBMS"}); };
  Stand(1, "V");
  EXPECT_EQ(channels(), "01");
  Stand(1, "FV20");
  EXPECT_EQ(channels(), "11");
  Stand(1, "FI2");
  EXPECT_EQ(channels(), "11");
  const auto moves = [&] { return enabled({"cmdMoveAllUpAirf", "cmdMoveUpAirf", "cmdMoveDownAirf"}); };
  SelectNothing(2);
  EXPECT_EQ(moves(), "000");
  Stand(2, "R1");
  EXPECT_EQ(moves(), "000");
  for (const char* key : {"A1", "UF1", "TC1", "I41"}) {
    Stand(2, key);
    EXPECT_EQ(moves(), "111") << key;
  }
  const auto freqs = [&] {
    return enabled({"cmdAddFolder", "cmdEditFolder", "cmdDeleteFolder", "cmdAddFreq", "cmdEditFreq", "cmdDeleteFreq",
                    "cmdMoveUp", "cmdMoveAllDown"});
  };
  SelectNothing(3);
  EXPECT_EQ(freqs(), "10010000");
  Stand(3, "C1");
  EXPECT_EQ(freqs(), "11110011");
  Stand(3, "D1_C1");
  EXPECT_EQ(freqs(), "10011111");
}

TEST_F(FreqFilter, EverythingIsReachedByTab) {
  const std::pair<int, QStringList> wanted[] = {
      {1, Words({"TabStrip1", "TreeView1", "cmdEditChannel", "cmdLoadBMS", "cmdRefresh"})},
      {2, Words({"TabStrip1", "txtFilter", "TreeView2", "chkSelectAllAirf", "chkSelectAllILS4", "cmdMoveAllUpAirf",
                 "cmdMoveAllDownAirf", "cmdRefresh"})},
      {3, Words({"TabStrip1", "txtFilter", "TreeView3", "cmdAddFolder", "cmdAddFreq", "cmdEditFreq", "cmdDeleteFreq",
                 "cmdMoveAllUp", "cmdMoveAllDown", "cmdRefresh"})},
  };
  for (const auto& [tab, names] : wanted) {
    SCOPED_TRACE(tab);
    Stand(tab, tab == 1 ? "FU1" : tab == 2 ? "A1" : "D1_C1");
    Tabs().setFocus();
    QStringList reached;
    for (int step = 0; step < 30; ++step) {
      reached << QApplication::focusWidget()->objectName();
      Key(Qt::Key_Tab);
    }
    for (const QString& name : names) EXPECT_TRUE(reached.contains(name)) << qPrintable(name);
    qsizetype last = -1;
    for (const QString& name : names) {
      EXPECT_GT(reached.indexOf(name), last) << qPrintable(name) << ": in the order in which they stand";
      last = reached.indexOf(name);
    }
  }
}

TEST_F(FreqFilter, TabsAreChangedByArrowKeys) {
  Tabs().setFocus();
  Key(Qt::Key_Right);
  EXPECT_TRUE(Tree(2).isVisible());
  Key(Qt::Key_Right);
  EXPECT_TRUE(Tree(3).isVisible());
}

}  // namespace
}  // namespace kestrel::shell
