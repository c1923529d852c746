// The panel of the frequencies: what it shows, its tabs, marks and filter.

#include "shell/radio/freq_frm.h"

#include "shell/parts/line_icon.h"
#include "shell/radio/freq_panel_fixture.h"

namespace kestrel::shell {
namespace {

TEST_F(FreqPanel, CaptionsAreWordForWord) {
  EXPECT_EQ(In<QLabel>(panel, "Label1").text(), QStringLiteral("FREQs"));
  QStringList tabs;
  for (int tab = 0; tab < Tabs().count(); ++tab) tabs << Tabs().tabText(tab);
  EXPECT_EQ(tabs, Words({"Custom Channels", "Airports", "Custom Freqs"}));
  const std::pair<const char*, const char*> captions[] = {
      {"cmdEditChannel", "Edit Freq"},
      {"cmdLoadChannels", "Load from Falcon"},
      {"cmdSaveChannels", "Save to Falcon"},
      {"cmdLoadBMS", "Load BMS defaults"},
      {"cmdLoadAirports", "Load from Theater"},
      {"chkSelectAllAirf", "Select All Airfields"},
      {"chkSelectAllTACANs", "Select All TACANs"},
      {"chkSelectAllILS1", "Select All ILS1"},
      {"chkSelectAllILS2", "Select All ILS2"},
      {"chkSelectAllILS3", "Select All ILS3"},
      {"chkSelectAllILS4", "Select All ILS4"},
      {"cmdAddFolder", "Add Folder"},
      {"cmdEditFolder", "Edit Folder"},
      {"cmdDeleteFolder", "Delete Folder"},
      {"cmdAddFreq", "Add Freq"},
      {"cmdEditFreq", "Edit Freq"},
      {"cmdDeleteFreq", "Delete Freq"},
  };
  for (const auto& [button, caption] : captions) {
    EXPECT_EQ(In<QAbstractButton>(panel, button).text().remove(u'&'), QString::fromLatin1(caption)) << button;
  }
}

TEST_F(FreqPanel, MoveButtonsAreToldByTheirTipsAndImages) {
  const std::pair<const char*, const char*> tips[] = {
      {"cmdMoveAllUp", "Move Selected To Top"},
      {"cmdMoveUp", "Move Selected Up"},
      {"cmdMoveDown", "Move Selected Down"},
      {"cmdMoveAllDown", "Move Selected To Bottom"},
  };
  QList<QImage> images;
  for (const auto& [button, tip] : tips) {
    for (const char* suffix : {"", "Airf"}) {
      auto& found = In<QAbstractButton>(panel, (std::string(button) + suffix).c_str());
      EXPECT_EQ(found.toolTip(), QString::fromLatin1(tip));
      EXPECT_EQ(found.accessibleName(), QString::fromLatin1(tip)) << "it has no caption";
      const QImage image = found.icon().pixmap(16).toImage();
      if (*suffix == '\0') {
        EXPECT_FALSE(images.contains(image)) << button;
        images << image;
      }
      EXPECT_EQ(images.back(), image);
    }
  }
}

TEST_F(FreqPanel, AccessKeysAreNotThoseOfTheMenuBarNorTwiceOnATab) {
  for (int tab = 1; tab <= 3; ++tab) {
    Open(tab);
    QString keys;
    for (const QAbstractButton* button : panel.findChildren<QAbstractButton*>()) {
      const qsizetype at = button->text().indexOf(u'&');
      if (button->isVisible() && at >= 0) keys += button->text().at(at + 1).toUpper();
    }
    EXPECT_FALSE(keys.isEmpty());
    for (const QChar key : keys) {
      EXPECT_EQ(keys.count(key), 1) << tab << ": " << qPrintable(keys);
      EXPECT_FALSE(QStringLiteral("FNHUCLP").contains(key)) << qPrintable(key);
    }
  }
}

TEST_F(FreqPanel, ButtonsThatNeedTheSimulatorAskForIt) {
  QStringList asked;
  QObject::connect(&panel, &FreqFrm::LoadChannelsAsked, &panel, [&] { asked << QStringLiteral("load"); });
  QObject::connect(&panel, &FreqFrm::SaveChannelsAsked, &panel, [&] { asked << QStringLiteral("save"); });
  QObject::connect(&panel, &FreqFrm::LoadAirportsAsked, &panel, [&] { asked << QStringLiteral("airports"); });
  SelectNothing(1);
  Press(panel, "cmdLoadChannels");
  Press(panel, "cmdSaveChannels");
  SelectNothing(2);
  Press(panel, "cmdLoadAirports");
  EXPECT_EQ(asked, Words({"load", "save", "airports"}));
}

TEST_F(FreqPanel, LoadedChannelsAreShownOnTheSelectedNode) {
  Stand(1, "FV2");
  Tables().CustomVHF[2] = "59401";
  panel.ShowLoadedChannels();
  EXPECT_EQ(TextOf(Tree(1), "FV2"), QStringLiteral("[2](): 59401"));
  EXPECT_EQ(Selected(), "FV2");
  EXPECT_TRUE(Tree(1).isExpanded(At(Tree(1), "V")));
}

TEST_F(FreqPanel, TreesShowTheTables) {
  EXPECT_EQ(Keys(Tree(1)).substr(0, 16), "U FU1 FU2 FU3 FU");
  EXPECT_EQ(Texts(Tree(1)).size(), 3 + 20 + 20 + 2);
  EXPECT_EQ(TextOf(Tree(1), "FU1"), QStringLiteral("[1](Flight 1): 297500"));
  EXPECT_EQ(TextOf(Tree(1), "FI1"), QStringLiteral("[F1]: 243000"));
  EXPECT_EQ(Keys(Tree(2)),
            "R0 R1 A1 UF1 VF1 TC1 I11 I21 I31 I41 A3 UF3 VF3 TC3 I13 I23 I33 I43 "
            "R2 A2 UF2 VF2 TC2 I12 I22 I32 I42 R3 R4 R5 R6 R7 ");
  EXPECT_EQ(TextOf(Tree(2), "R1"), QStringLiteral("Blue"));
  EXPECT_EQ(TextOf(Tree(2), "TC2"), QStringLiteral("76X [150nm]"));
  EXPECT_EQ(TextOf(Tree(2), "I11"), QStringLiteral("[09L]: 10930"));
  EXPECT_EQ(Keys(Tree(3)), "C1 D1_C1 D2_C1 D3_C1 C2 D1_C2 ");
  EXPECT_EQ(TextOf(Tree(3), "D2_C1"), QStringLiteral("[Track two]: 138050"));
}

TEST_F(FreqPanel, ImagesAreThoseOfTheValues) {
  const auto image = [this](int tab, const char* key) {
    return At(Tree(tab), key).data(Qt::DecorationRole).value<QIcon>().pixmap(16).toImage();
  };
  const auto icon = [](IconKind kind) { return LineIcon(kind).pixmap(16).toImage(); };
  EXPECT_EQ(image(1, "U"), icon(IconKind::AreaFolder));
  EXPECT_EQ(image(1, "FU1"), icon(IconKind::RadioUHF));
  EXPECT_EQ(image(1, "FV2"), icon(IconKind::RadioVHF));
  EXPECT_EQ(image(1, "FU2"), icon(IconKind::Unknown)) << "000000";
  EXPECT_EQ(image(1, "FU3"), icon(IconKind::ILS)) << "0";
  EXPECT_EQ(image(2, "A1"), icon(IconKind::Airfield));
  EXPECT_EQ(image(2, "TC1"), icon(IconKind::TACAN));
  EXPECT_EQ(image(2, "I11"), icon(IconKind::ILS));
  EXPECT_EQ(image(3, "D3_C1"), icon(IconKind::Unknown)) << "999";
}

TEST_F(FreqPanel, OneTabIsShownAtATime) {
  for (int shown : {3, 1, 2}) {
    Open(shown);
    for (int tab = 1; tab <= 3; ++tab) {
      EXPECT_EQ(Tree(tab).isVisible(), tab == shown) << tab;
      EXPECT_EQ(In<QWidget>(panel, ("Frame1_" + std::to_string(tab)).c_str()).isVisible(), tab == shown) << tab;
    }
    EXPECT_EQ(Filter().isVisible(), shown != 1);
  }
}

TEST_F(FreqPanel, RefreshListBuildsTheTreeThatIsAskedFor) {
  const auto change = [this](const char* text) {
    Tables().CustomUHF[1] = Tables().Airfields[1].UHF = Tables().FreqFolders[1].Entries[1].Value = text;
  };
  const auto shown = [this] {
    return QStringList(
               {TextOf(Tree(1), "FU1").right(1), TextOf(Tree(2), "UF1").right(1), TextOf(Tree(3), "D1_C1").right(1)})
        .join(QString());
  };
  change("1");
  panel.RefreshList(2, 2, {}, false);
  EXPECT_EQ(shown(), QStringLiteral("010"));
  panel.RefreshList(3, 3, {}, true);
  EXPECT_EQ(shown(), QStringLiteral("011"));
  panel.RefreshList(1, 1, {}, false);
  EXPECT_EQ(shown(), QStringLiteral("111"));
  change("2");
  panel.RefreshList(0, 0, {}, true);
  EXPECT_EQ(shown(), QStringLiteral("222"));
  change("3");
  panel.RefreshList(4, 1, {}, false);
  EXPECT_EQ(shown(), QStringLiteral("333"));
}

TEST_F(FreqPanel, WithoutAKeyTheFirstRootNothingAndTheFirstFolderAreSelected) {
  for (const bool collapse : {true, false}) {
    for (int tab = 1; tab <= 3; ++tab) Stand(tab, tab == 1 ? "FV3" : tab == 2 ? "A1" : "D1_C2");
    panel.RefreshList(0, 0, {}, collapse);
    EXPECT_EQ(SelectedIn(Tree(1)), "U");
    EXPECT_EQ(SelectedIn(Tree(2)), "");
    EXPECT_EQ(SelectedIn(Tree(3)), "C1");
  }
  Tables().FreqFolders.Clear();
  panel.RefreshList(3, 3, {}, true);
  EXPECT_EQ(SelectedIn(Tree(3)), "");
}

TEST_F(FreqPanel, KeyIsSelectedInItsTreeAloneAndBroughtIntoView) {
  panel.RefreshList(0, 2, QStringLiteral("TC2"), true);
  EXPECT_EQ(SelectedIn(Tree(2)), "TC2");
  EXPECT_TRUE(Tree(2).isExpanded(At(Tree(2), "R2")));
  EXPECT_TRUE(Tree(2).isExpanded(At(Tree(2), "A2")));
  EXPECT_FALSE(Tree(2).isExpanded(At(Tree(2), "R1")));
  EXPECT_EQ(SelectedIn(Tree(3)), "C1");
  panel.RefreshList(2, 2, QStringLiteral("A9"), false);
  EXPECT_EQ(SelectedIn(Tree(2)), "") << "no such node: nothing, and nothing is lost";
  EXPECT_EQ(Airfields(), "North Field;Far Harbour;South Field;");
}

TEST_F(FreqPanel, TheaterClosesAllNodesAndAnEditNone) {
  for (int tab = 1; tab <= 3; ++tab) Tree(tab).expandAll();
  panel.RefreshList(0, 0, {}, false);
  EXPECT_TRUE(Tree(1).isExpanded(At(Tree(1), "V")));
  EXPECT_TRUE(Tree(2).isExpanded(At(Tree(2), "R2")));
  EXPECT_TRUE(Tree(3).isExpanded(At(Tree(3), "C2")));
  panel.Refresh(base::Changed::Frequencies);
  EXPECT_FALSE(Tree(1).isExpanded(At(Tree(1), "V")));
  EXPECT_FALSE(Tree(2).isExpanded(At(Tree(2), "R2")));
  EXPECT_FALSE(Tree(3).isExpanded(At(Tree(3), "C2")));
}

TEST_F(FreqPanel, ChangesOfOtherThingsAreNotItsOwn) {
  Tables().CustomUHF[1] = "1";
  panel.Refresh(base::Changed::Areas | base::Changed::Map | base::Changed::Roster);
  EXPECT_EQ(TextOf(Tree(1), "FU1"), QStringLiteral("[1](Flight 1): 297500"));
}

TEST_F(FreqPanel, MarkOfAnAirfieldIsItsFlag) {
  Open(2);
  Tree().expandAll();
  ClickMark(Tree(), "A1");
  EXPECT_EQ(Flags(1), "10.0000");
  EXPECT_EQ(MapDraws(), 1);
  EXPECT_FALSE(Marked(Tree(), "R1")) << "South Field has none";
  ClickMark(Tree(), "A3");
  EXPECT_TRUE(Marked(Tree(), "R1")) << "all of its airfields";
  EXPECT_FALSE(Ticked("chkSelectAllAirf"));
  ClickMark(Tree(), "A2");
  EXPECT_TRUE(Ticked("chkSelectAllAirf"));
  ClickMark(Tree(), "A1");
  EXPECT_EQ(Flags(1), "00.0000");
  EXPECT_FALSE(Ticked("chkSelectAllAirf"));
  EXPECT_FALSE(Marked(Tree(), "R1"));
  EXPECT_EQ(MapDraws(), 3);
}

TEST_F(FreqPanel, MarksOfTacanAndRunwaysAreTheirFlags) {
  Open(2);
  Tree().expandAll();
  ClickMark(Tree(), "TC2");
  EXPECT_EQ(Flags(2), "01.0000");
  ClickMark(Tree(), "I12");
  ClickMark(Tree(), "I42");
  EXPECT_EQ(Flags(2), "01.1001");
  EXPECT_TRUE(Marked(Tree(), "I42"));
  EXPECT_EQ(MapDraws(), 3);
  EXPECT_EQ(Flags(1) + Flags(3), "00.000000.0000");
}

TEST_F(FreqPanel, MarkOfATeamIsThatOfAllItsAirfields) {
  Open(2);
  Tree().expandAll();
  ClickMark(Tree(), "R1");
  EXPECT_EQ(Flags(1), "10.0000");
  EXPECT_EQ(Flags(2), "00.0000") << "another team's";
  EXPECT_EQ(Flags(3), "10.0000");
  EXPECT_TRUE(Marked(Tree(), "R1"));
  EXPECT_TRUE(Marked(Tree(), "A3"));
  EXPECT_EQ(MapDraws(), 1);
  EXPECT_TRUE(Tree().isExpanded(At(Tree(), "A2"))) << "a mark closes nothing";
  ClickMark(Tree(), "R1");
  EXPECT_EQ(Flags(1) + Flags(3), "00.000000.0000");
  EXPECT_FALSE(Marked(Tree(), "A1"));
}

TEST_F(FreqPanel, MarkOfATeamWithoutAirfieldsDoesNotStay) {
  Open(2);
  ClickMark(Tree(), "R5");
  EXPECT_FALSE(Marked(Tree(), "R5"));
}

TEST_F(FreqPanel, MarkOfATowerDoesNotStay) {
  Open(2);
  Tree().expandAll();
  for (const char* key : {"UF1", "VF1"}) {
    ClickMark(Tree(), key);
    EXPECT_FALSE(Marked(Tree(), key)) << key;
    EXPECT_EQ(MapDraws(), 1) << key;
  }
  EXPECT_EQ(Flags(1), "00.0000");
}

TEST_F(FreqPanel, SpaceMarksToo) {
  KeyAt(2, "TC1", Qt::Key_Space);
  EXPECT_EQ(Flags(1), "01.0000");
}

TEST_F(FreqPanel, SelectAllIsOfAllAirfieldsWithOneDraw) {
  const std::pair<const char*, const char*> boxes[] = {
      {"chkSelectAllAirf", "10.0000"}, {"chkSelectAllTACANs", "01.0000"}, {"chkSelectAllILS1", "00.1000"},
      {"chkSelectAllILS2", "00.0100"}, {"chkSelectAllILS3", "00.0010"},   {"chkSelectAllILS4", "00.0001"},
  };
  Open(2);
  for (const auto& [box, flags] : boxes) {
    SCOPED_TRACE(box);
    Press(panel, box);
    EXPECT_TRUE(Ticked(box));
    for (std::size_t airfield = 1; airfield <= 3; ++airfield) EXPECT_EQ(Flags(airfield), flags);
    EXPECT_EQ(MapDraws(), 1);
    EXPECT_EQ(Marked(Tree(), "I43"), flags[6] == '1');
    EXPECT_EQ(Marked(Tree(), "R1"), flags[0] == '1');
    Press(panel, box);
    EXPECT_EQ(Flags(1) + Flags(2) + Flags(3), "00.000000.000000.0000");
    EXPECT_EQ(MapDraws(), 1);
  }
}

TEST_F(FreqPanel, SelectAllOfNoAirfieldDoesNotStayTicked) {
  Tables().Airfields.Clear();
  panel.Refresh(base::Changed::Frequencies);
  Open(2);
  Press(panel, "chkSelectAllAirf");
  EXPECT_FALSE(Ticked("chkSelectAllAirf"));
}

TEST_F(FreqPanel, BoxesAndTeamsComeInLineWithoutAChange) {
  for (radio::Airfield& airfield : Tables().Airfields.Live()) airfield.VIS = airfield.ILS_VIS[2] = true;
  Tables().Airfields[2].VIS = false;
  panel.UpdateTreeviewCheckBoxes();
  EXPECT_FALSE(Ticked("chkSelectAllAirf"));
  EXPECT_FALSE(Ticked("chkSelectAllTACANs"));
  EXPECT_TRUE(Ticked("chkSelectAllILS3"));
  EXPECT_TRUE(Marked(Tree(2), "R1"));
  EXPECT_FALSE(Marked(Tree(2), "R2"));
  EXPECT_FALSE(Marked(Tree(2), "R0")) << "a team without airfields";
  panel.ClearCheckboxes();
  EXPECT_FALSE(Ticked("chkSelectAllILS3"));
  EXPECT_EQ(Flags(1) + Flags(2), "10.001000.0010") << "no flag has changed";
  EXPECT_EQ(MapDraws(), 0);
}

TEST_F(FreqPanel, TheaterBringsItsBoxesAndMarks) {
  for (radio::Airfield& airfield : Tables().Airfields.Live()) airfield.TACAN_VIS = true;
  panel.Refresh(base::Changed::Frequencies);
  EXPECT_TRUE(Ticked("chkSelectAllTACANs"));
  EXPECT_TRUE(Marked(Tree(2), "TC3"));
}

}  // namespace
}  // namespace kestrel::shell
