// The panel of the frequencies in its frame: its start, its pop-up menu.

#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>
#include <QTreeView>

#include "core/theater_data.h"
#include "shell/frame/floating_windows.h"
#include "shell/radio/freq_frm.h"

namespace kestrel::shell {
namespace {

class FreqWindows : public FloatingWindows {
 protected:
  void SetUp() override {
    FloatingWindows::SetUp();
    Write("Theaters/one_Frequencies.dat",
          "[CUS_UHF]\r\nUHF_1=297500\r\n[AIRFIELDS]\r\nNUM=1\r\n[AIRFIELD_1]\r\nNAME=North Field\r\nTACANX=300\r\n"
          "TACANY=600\r\nTEAM_INDEX=1\r\nTACAN_VIS=1\r\n");
  }
  FreqFrm& Panel() { return Frame().Tools().The<FreqFrm>(); }
  QTreeView& Tree(const char* name) { return *Panel().findChild<QTreeView*>(QString::fromLatin1(name)); }
  static QModelIndex At(QTreeView& tree, const char* key) {
    return tree.model()
        ->match(tree.model()->index(0, 0), Qt::UserRole, QString::fromLatin1(key), 1,
                Qt::MatchExactly | Qt::MatchRecursive)
        .value(0);
  }
  /// Opens the pop-up menu at a node of a tab by the key of the menu.
  QMenu& OpenPopUp(int tab, const char* tree, const char* key) {
    Panel().ShowTab(tab);
    Tree(tree).setCurrentIndex(At(Tree(tree), key));
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(&Tree(tree), &event);
    return Frame().PopUp("mnupopup4");
  }
  std::string EnabledEntries() {
    std::string enabled;
    for (const char* name : {"mnuTuneUHF", "mnuTuneVHF", "mnuCopyFreq", "mnuShowFreqOnMap"}) {
      enabled += Action(name).isEnabled() ? '1' : '0';
    }
    return enabled;
  }
};

TEST_F(FreqWindows, StartShowsTheFirstTabWithItsBoxesInLine) {
  StartWith("FREQFORMX=600\r\nFREQFORMMIN=0\r\n");
  EXPECT_TRUE(Panel().isVisible());
  EXPECT_TRUE(Tree("TreeView1").isVisible());
  EXPECT_EQ(At(Tree("TreeView1"), "FU1").data().toString(), QStringLiteral("[1](): 297500"));
  EXPECT_TRUE(Panel().findChild<QCheckBox*>(QStringLiteral("chkSelectAllTACANs"))->isChecked());
  EXPECT_FALSE(Panel().findChild<QCheckBox*>(QStringLiteral("chkSelectAllAirf"))->isChecked());
}

TEST_F(FreqWindows, ItsStepLeavesItHiddenWhereThatIsKept) {
  StartWith("FREQFORMHID=1\r\n");
  Panel().ShowTab(3);
  windows.OpenFreqFrm();
  EXPECT_FALSE(Panel().isVisible());
  EXPECT_FALSE(Check(ToolWindow::Freq).isChecked());
  Check(ToolWindow::Freq).setChecked(true);
  EXPECT_TRUE(Panel().isVisible());
  EXPECT_EQ(Panel().findChild<QTabBar*>(QStringLiteral("TabStrip1"))->currentIndex(), 0);
}

TEST_F(FreqWindows, ItsStepShowsItOverNoDialog) {
  StartWith("FREQFORMX=600\r\n");
  Frame().Tools().ShowAllWindows(false);
  windows.OpenFreqFrm();
  EXPECT_FALSE(Panel().isVisible());
  Frame().Tools().ShowAllWindows(true);
  EXPECT_TRUE(Panel().isVisible());
}

TEST_F(FreqWindows, IsNotWiderThanTheOthers) {
  Start();
  int widest = 0;
  for (const ToolEntry& each : ToolEntries()) {
    if (each.Which != ToolWindow::Freq) widest = qMax(widest, Window(each.Which).width());
  }
  EXPECT_LE(Panel().width(), widest);
}

TEST_F(FreqWindows, PopUpTunesWhileTheClientIsConnected) {
  StartWith("FREQFORMX=600\r\nFREQFORMMIN=0\r\n");
  OpenPopUp(1, "TreeView1", "FU1").close();
  EXPECT_EQ(EnabledEntries(), "1110");
  Action("mnuTuneVHF").trigger();
  Action("mnuTuneUHF").trigger();
  EXPECT_EQ(voiceWindows.Tuned, (std::vector<std::string>{"VHF 297500", "UHF 297500"}));
  OpenPopUp(1, "TreeView1", "U").close();
  EXPECT_EQ(EnabledEntries(), "0000");
  voiceWindows.Status = "NO CONNECTION";
  OpenPopUp(1, "TreeView1", "FU1").close();
  EXPECT_EQ(EnabledEntries(), "0010");
}

TEST_F(FreqWindows, PopUpCopiesAndShowsOnTheMap) {
  StartWith("FREQFORMX=600\r\nFREQFORMMIN=0\r\n");
  OpenPopUp(1, "TreeView1", "FU1").close();
  Action("mnuCopyFreq").trigger();
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("297500"));
  OpenPopUp(2, "TreeView2", "A1").close();
  EXPECT_EQ(EnabledEntries(), "0001");
  const std::uint64_t draws = Picture().MapDraws();
  Action("mnuShowFreqOnMap").trigger();
  EXPECT_EQ(Picture().MapDraws(), draws + 1);
}

TEST_F(FreqWindows, TheaterThatIsChosenShowsItsFrequencies) {
  StartWith("FREQFORMX=600\r\nFREQFORMMIN=0\r\n");
  station.Frequencies.CustomUHF[1] = "1";
  windows.Refresh(core::LoadTheaterData(program));
  EXPECT_EQ(At(Tree("TreeView1"), "FU1").data().toString(), QStringLiteral("[1](): 297500"));
}

TEST_F(FreqWindows, DialogOfAChannelTakesTheFloatingWindowsAway) {
  StartWith("FREQFORMX=600\r\nFREQFORMMIN=0\r\n");
  Tree("TreeView1").setCurrentIndex(At(Tree("TreeView1"), "FU1"));
  InNextDialog([this](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName(), QStringLiteral("EditFreqFrm"));
    EXPECT_FALSE(Panel().isVisible());
    dialog.findChild<QLineEdit*>(QStringLiteral("txtFreqValue"))->setText(QStringLiteral("118000"));
    dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
  });
  Panel().findChild<QPushButton*>(QStringLiteral("cmdEditChannel"))->click();
  EXPECT_TRUE(Panel().isVisible());
  EXPECT_EQ(station.Frequencies.CustomUHF[1], "118000");
}

}  // namespace
}  // namespace kestrel::shell
