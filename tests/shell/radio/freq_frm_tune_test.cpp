// Clicks in the panel of the frequencies: tuning, the state of the voice client, what is copied.

#include "shell/radio/freq_panel_fixture.h"

namespace kestrel::shell {
namespace {

class FreqTune : public FreqPanel {
 protected:
  /// What a click on a node has tuned.
  std::string Tunes(int tab, const char* key) {
    Open(tab);
    voiceWindows.Tuned.clear();
    Click(key);
    std::string tuned;
    for (const std::string& each : voiceWindows.Tuned) tuned += each + ";";
    return tuned;
  }
  QString UhfBox() { return In<QLineEdit>(panel, "txtIVC_UHF").text(); }
  /// Opens the pop-up menu at a node by the mouse; `asked` counts what comes of it.
  void RightClick(const char* key) {
    const QPoint place = PlaceOf(Tree(), key);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, Tree().viewport()->mapToGlobal(place));
    QApplication::sendEvent(Tree().viewport(), &event);
  }
};

TEST_F(FreqTune, ClickOnAChannelTunesTheRadioOfItsKind) {
  EXPECT_EQ(Tunes(1, "FU1"), "UHF  297500 ;") << "as it stands";
  EXPECT_EQ(Tunes(1, "FV2"), "VHF 138050;");
  EXPECT_EQ(Tunes(1, "FU3"), "UHF 0;VHF 0;") << "0 is of both";
  EXPECT_EQ(Tunes(1, "FU2"), "") << "000000 is of none";
  EXPECT_EQ(Tunes(1, "FI1"), "") << "a left click on a UI channel tunes nothing";
  EXPECT_EQ(Tunes(1, "U"), "");
}

TEST_F(FreqTune, ClickOnATowerOrAnEntryTunes) {
  EXPECT_EQ(Tunes(2, "UF1"), "UHF 292300;");
  EXPECT_EQ(Tunes(2, "VF1"), "VHF 126500;");
  EXPECT_EQ(Tunes(2, "VF2"), "UHF 0;VHF 0;");
  EXPECT_EQ(Tunes(2, "UF3"), "");
  for (const char* key : {"R1", "A1", "TC1", "I11"}) EXPECT_EQ(Tunes(2, key), "") << key;
  EXPECT_EQ(Tunes(3, "D1_C1"), "UHF 251000;");
  EXPECT_EQ(Tunes(3, "D3_C1"), "");
  EXPECT_EQ(Tunes(3, "C1"), "");
}

TEST_F(FreqTune, ClickWhileTheClientIsNotConnectedTunesNothing) {
  voiceWindows.Status = "NO CONNECTION";
  EXPECT_EQ(Tunes(1, "FU1"), "");
  voiceWindows.Running = false;
  EXPECT_EQ(Tunes(1, "FU1"), "");
}

TEST_F(FreqTune, ClickIsOneOperationAndShowsWhatItTuned) {
  Open(3);
  Click("D1_C1");
  EXPECT_EQ(voiceWindows.Operations, 1);
  EXPECT_EQ(UhfBox(), QStringLiteral("251000"));
}

TEST_F(FreqTune, EachClickAsksForTheStatus) {
  voiceWindows.UHF = "111111";
  Open(2);
  Click("R5");
  EXPECT_EQ(UhfBox(), QStringLiteral("111111"));
}

TEST_F(FreqTune, ClickOnAMarkIsNoClickOnItsNode) {
  Open(2);
  Tree().expandAll();
  ClickMark(Tree(), "UF1");
  ClickMark(Tree(), "A1");
  EXPECT_EQ(voiceWindows.Operations, 0) << "a client that hangs does not hold up the marks";
  Click("UF1");
  EXPECT_EQ(voiceWindows.Tuned, std::vector<std::string>{"UHF 292300"});
}

TEST_F(FreqTune, ClickAfterAMarkByTheKeyboardTunes) {
  KeyAt(2, "UF1", Qt::Key_Space);
  Click("UF1");
  EXPECT_EQ(voiceWindows.Tuned, std::vector<std::string>{"UHF 292300"});
}

TEST_F(FreqTune, EnterIsAClickOnTheSelectedNode) {
  KeyAt(3, "D2_C1", Qt::Key_Return);
  EXPECT_EQ(voiceWindows.Tuned, std::vector<std::string>{"VHF 138050"});
  KeyAt(1, "FI1", Qt::Key_Enter);
  EXPECT_EQ(voiceWindows.Tuned.size(), 1u);
  EXPECT_EQ(voiceWindows.Operations, 2);
}

TEST_F(FreqTune, StatusIsAskedWhenThePanelOpensAndByItsButton) {
  panel.hide();
  voiceWindows.UHF = "222222";
  panel.show();
  EXPECT_EQ(UhfBox(), QStringLiteral("222222"));
  EXPECT_EQ(voiceWindows.Operations, 1);
  panel.MinFrm();
  panel.MaxFrm();
  EXPECT_EQ(voiceWindows.Operations, 2) << "rolled down it opens too";
  voiceWindows.UHF = "333333";
  Press(panel, "cmdRefresh");
  EXPECT_EQ(UhfBox(), QStringLiteral("333333"));
}

TEST_F(FreqTune, RowsThatARadioHasAreMarked) {
  const auto bold = [this](int tab, const char* key) {
    return At(Tree(tab), key).data(Qt::FontRole).value<QFont>().bold();
  };
  EXPECT_FALSE(bold(3, "D1_C1"));
  Open(3);
  Click("D1_C1");
  EXPECT_TRUE(bold(3, "D1_C1"));
  EXPECT_TRUE(At(Tree(3), "D1_C1").data(Qt::ToolTipRole).toString().contains(QStringLiteral("on UHF")));
  Click("D2_C1");
  EXPECT_TRUE(bold(3, "D2_C1"));
  EXPECT_TRUE(bold(1, "FV2")) << "on every tab";
  Press(panel, "cmdMoveDown");
  EXPECT_TRUE(bold(3, "D3_C1")) << "where it has moved to";
  EXPECT_FALSE(bold(3, "D2_C1"));
}

TEST_F(FreqTune, RightClickOffersTheValueOfItsNode) {
  QSignalSpy asked(&panel, &FreqFrm::PopUp4Asked);
  Open(1);
  voiceWindows.UHF = "111111";
  RightClick("FI1");
  EXPECT_EQ(asked.size(), 1);
  EXPECT_EQ(UhfBox(), QStringLiteral("111111")) << "the status is asked first";
  EXPECT_TRUE(panel.MayTune());
  EXPECT_TRUE(voiceWindows.Tuned.empty());
  panel.TuneVHF();
  panel.TuneUHF();
  EXPECT_EQ(voiceWindows.Tuned, (std::vector<std::string>{"VHF 243000", "UHF 243000"})) << "of whatever kind it is";
  EXPECT_EQ(UhfBox(), QStringLiteral("243000"));
  RightClick("I");
  EXPECT_FALSE(panel.MayTune());
  EXPECT_FALSE(panel.MayCopy());
  voiceWindows.Status = "connecting";
  RightClick("FI1");
  EXPECT_FALSE(panel.MayTune());
  EXPECT_TRUE(panel.MayCopy()) << "that needs no client";
}

TEST_F(FreqTune, RightClickBesideTheNodesOffersNothing) {
  QSignalSpy asked(&panel, &FreqFrm::PopUp4Asked);
  Open(3);
  const QPoint place(5, Tree().viewport()->height() - 3);
  ASSERT_FALSE(Tree().indexAt(place).isValid());
  QContextMenuEvent event(QContextMenuEvent::Mouse, place, Tree().viewport()->mapToGlobal(place));
  QApplication::sendEvent(Tree().viewport(), &event);
  EXPECT_TRUE(asked.isEmpty());
}

TEST_F(FreqTune, KeyOfTheMenuOffersTheSelectedNode) {
  QSignalSpy asked(&panel, &FreqFrm::PopUp4Asked);
  Stand(3, "D1_C2");
  QContextMenuEvent event(QContextMenuEvent::Keyboard, Tree().rect().center(), QPoint());
  QApplication::sendEvent(&Tree(), &event);
  ASSERT_EQ(asked.size(), 1);
  const QPoint place = Tree().viewport()->mapFromGlobal(asked[0][0].toPoint());
  EXPECT_EQ(Tree().indexAt(place), At(Tree(), "D1_C2"));
  panel.TuneVHF();
  EXPECT_EQ(voiceWindows.Tuned, std::vector<std::string>{"VHF 118250"});
}

TEST_F(FreqTune, CopyPutsTheValueOnTheClipboard) {
  QClipboard& clipboard = *QGuiApplication::clipboard();
  const auto copied = [&](int tab, const char* key) {
    Stand(tab, key);
    clipboard.setText(QStringLiteral("before"));
    QTest::keySequence(&Tree(), QKeySequence::Copy);
    return clipboard.text();
  };
  EXPECT_EQ(copied(1, "FU1"), QStringLiteral("297500"));
  EXPECT_EQ(copied(1, "FI1"), QStringLiteral("243000"));
  EXPECT_EQ(copied(2, "UF1"), QStringLiteral("292300"));
  EXPECT_EQ(copied(2, "TC1"), QStringLiteral("75X"));
  EXPECT_EQ(copied(2, "I11"), QStringLiteral("10930"));
  EXPECT_EQ(copied(2, "I21"), QStringLiteral("before")) << "there is no such ILS";
  EXPECT_EQ(copied(2, "A1"), QStringLiteral("before"));
  EXPECT_EQ(copied(3, "D2_C1"), QStringLiteral("138050"));
  RightClick("D1_C1");
  panel.CopyOffered();
  EXPECT_EQ(clipboard.text(), QStringLiteral("251000"));
}

TEST_F(FreqTune, ShowOnMapBringsTheAirfieldIntoView) {
  station.View.SurfaceWidth = 1000 * 15;
  station.View.SurfaceHeight = 1000 * 15;
  Open(2);
  // In view units: 15 to the map unit, Y from the upper edge of 1024. The TACAN lies at 200 and 700, the runway's end 2
  // to the east and 4 to the north.
  RightClick("TC2");
  panel.ShowOfferedOnMap();
  EXPECT_EQ(station.View.ViewCenterX, 200 * 15);
  EXPECT_EQ(station.View.ViewCenterY, (1024 - 700) * 15);
  EXPECT_EQ(MapDraws(), 1);
  RightClick("I12");
  panel.ShowOfferedOnMap();
  EXPECT_EQ(station.View.ViewCenterX, 202 * 15);
  EXPECT_EQ(station.View.ViewCenterY, (1024 - 704) * 15);
  RightClick("A2");
  panel.ShowOfferedOnMap();
  EXPECT_EQ(station.View.ViewCenterX, 201 * 15) << "the middle of both";
  EXPECT_EQ(station.View.ViewCenterY, (1024 - 702) * 15);
  EXPECT_TRUE(panel.MayShowOnMap());
  for (const char* key : {"UF2", "R2", "I22"}) {
    RightClick(key);
    EXPECT_FALSE(panel.MayShowOnMap()) << key;
  }
}

TEST_F(FreqTune, WhereTheClientCannotRunThePanelWorks) {
  voiceWindows.CanRun = voiceWindows.Running = false;
  ModalCount other;
  FreqFrm there(program, other, &frame);
  there.Refresh(base::Changed::Frequencies);
  Activate(there);
  auto& tree = In<QTreeView>(there, "TreeView1");
  ClickNode(tree, "U");
  EXPECT_EQ(SelectedIn(tree), "U");
  EXPECT_TRUE(In<QLabel>(there, "lblIVCNone").isVisible());
}

}  // namespace
}  // namespace kestrel::shell
