// What the panel of the frequencies takes from the simulator and gives it, through the windows of the running station.

#include "shell/frame/falcon_windows.h"

#include <QCheckBox>
#include <QMenuBar>
#include <QTreeView>

#include "base/program_title.h"
#include "radio/frequency_file.h"
#include "shell/falcon/installed_falcon.h"
#include "shell/radio/freq_frm.h"

namespace kestrel::shell {
namespace {

class FalconWindowsTest : public InstalledFalcon {
 protected:
  FreqFrm& Panel() { return Frame().Tools().The<FreqFrm>(); }
  radio::Frequencies& Tables() { return station.Frequencies; }
  QTreeView& Tree(int tab) { return In<QTreeView>(Panel(), ("TreeView" + std::to_string(tab)).c_str()); }
  QModelIndex At(int tab, const char* key) {
    QAbstractItemModel& model = *Tree(tab).model();
    return model
        .match(model.index(0, 0), Qt::UserRole, QString::fromLatin1(key), 1, Qt::MatchExactly | Qt::MatchRecursive)
        .value(0);
  }
  /// Presses a button of the panel and runs `act` on the window that opens, if one is expected.
  template <class Act>
  void PressAnd(int tab, const char* button, Act act) {
    Panel().ShowTab(tab);
    opened = false;
    InNextDialog([this, act](QWidget& dialog) {
      opened = true;
      act(dialog);
    });
    In<QAbstractButton>(Panel(), button).click();
    EXPECT_TRUE(opened);
  }
  void PressAlone(int tab, const char* button) {
    Panel().ShowTab(tab);
    In<QAbstractButton>(Panel(), button).click();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  }
  void AnswerFile(const std::filesystem::path& file) { desk.FileAnswers.emplace_back(base::TextOfPath(file)); }

  bool opened = false;
};

TEST_F(FalconWindowsTest, WithoutBmsTheChannelButtonsSayThatThereIsNone) {
  AddFalcon("Old Korea");
  for (const char* button : {"cmdLoadChannels", "cmdSaveChannels"}) {
    PressAlone(1, button);
    ExpectBox(base::ProgramTitle().c_str(), "No Falcon BMS Installation found on your system");
  }
}

TEST_F(FalconWindowsTest, KeysOfTheButtonsAreNoMenus) {
  // A floating window shares the frame's keys: one that a menu has too would press neither.
  QList<QKeySequence> menus;
  for (const QAction* menu : Frame().menuBar()->actions()) menus << QKeySequence::mnemonic(menu->text());
  for (const char* button : {"cmdLoadChannels", "cmdSaveChannels", "cmdLoadAirports"}) {
    const QKeySequence key = QKeySequence::mnemonic(In<QAbstractButton>(Panel(), button).text());
    EXPECT_FALSE(key.isEmpty()) << button;
    EXPECT_FALSE(menus.contains(key)) << button;
  }
}

TEST_F(FalconWindowsTest, ChannelsOfThePilotWhoFlewLastAreLoaded) {
  const test::SmallInstall sim = AddBms("4.37", "Viper");
  sim.AddPilot("Ace", "UHF_1=222000\r\n");
  sim.AddPilot("viper", "UHF_1=251000\r\nVHF_2=59401\r\n");
  sim.Write("User/Config/falcon bms.cfg", "set g_nF1TeamUiFreq 339750\r\n");
  Panel().ShowTab(1);
  Tree(1).expandAll();
  Tree(1).setCurrentIndex(At(1, "FV2"));
  PressAnd(1, "cmdLoadChannels", [](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName(), QStringLiteral("ListCallsignsFrm"));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Callsigns"));
    EXPECT_EQ(Label(dialog, "lblCallsign"), QStringLiteral("Select Callsign"));
    EXPECT_FALSE(In<QComboBox>(dialog, "cboInstall").isVisible());
    EXPECT_EQ(Items(dialog), Words({"Ace", "viper"}));
    EXPECT_EQ(Current(dialog), QStringLiteral("viper"));
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  EXPECT_TRUE(desk.Boxes.empty());
  EXPECT_EQ(Tables().CustomUHF[1], "251000");
  EXPECT_EQ(Tables().CustomF1, "339750");
  EXPECT_EQ(Tables().CustomF2, "");
  EXPECT_EQ(At(1, "FV2").data().toString(), QStringLiteral("[2](): 59401"));
  EXPECT_EQ(Tree(1).currentIndex(), At(1, "FV2"));
  Panel().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Panel()));
  QTest::keyClick(&Tree(1), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Tables().CustomUHF[1], "000000") << "all is one step";
  EXPECT_EQ(Tables().CustomVHF[2], "000000");
}

TEST_F(FalconWindowsTest, WithoutAChosenCallsignNothingIsDone) {
  const test::SmallInstall sim = AddBms("4.37", "Gone");
  sim.AddPilot("Viper", "UHF_1=251000\r\n");
  PressAnd(1, "cmdLoadChannels", [](QWidget& dialog) {
    EXPECT_EQ(In<QComboBox>(dialog, "Combo1").currentIndex(), -1);
    Press(dialog, "cmdOK");
  });
  PressAnd(1, "cmdLoadChannels", [](QWidget& dialog) {
    In<QComboBox>(dialog, "Combo1").setCurrentIndex(0);
    Press(dialog, "cmdCancel");
  });
  EXPECT_EQ(station.FrequencySteps.UndoText(), "");
  EXPECT_TRUE(desk.Boxes.empty());
}

TEST_F(FalconWindowsTest, WithoutPilotsTheCallsignsSayWhereTheyWereLookedFor) {
  AddBms("4.37");
  PressAnd(1, "cmdLoadChannels", [](QWidget& dialog) {
    EXPECT_TRUE(In<QLabel>(dialog, "lblHint").isVisible());
    EXPECT_TRUE(Label(dialog, "lblHint").endsWith(QStringLiteral("4.37/User/Config.")));
    Press(dialog, "cmdOK");
  });
  EXPECT_EQ(station.FrequencySteps.UndoText(), "");
}

TEST_F(FalconWindowsTest, ChannelsAreSavedOnlyAfterYes) {
  const test::SmallInstall sim = AddBms("4.37", "Viper");
  sim.AddPilot("Viper", "UHF_1=251000\r\n");
  sim.Write("User/Config/falcon bms.cfg", "set g_nF1TeamUiFreq 1\r\nset g_nF2TeamUiFreq 2\r\n");
  Tables().CustomUHF[1] = "297500";
  Tables().CustomF1 = "243000";
  const std::string before = sim.Read("User/Config/Viper.ini");
  PressAlone(1, "cmdSaveChannels");
  ASSERT_EQ(desk.Boxes.size(), 1U) << "No is the answer of nobody";
  EXPECT_EQ(desk.Boxes[0].Title, "Attention");
  EXPECT_EQ(sim.Read("User/Config/Viper.ini"), before);
  desk.Answers = {base::Answer::Yes};
  PressAnd(1, "cmdSaveChannels", [](QWidget& dialog) { Press(dialog, "cmdOK"); });
  EXPECT_TRUE(sim.Read("User/Config/Viper.ini").starts_with("[Radio]\r\nUHF_1=297500\r\n"));
  EXPECT_TRUE(sim.Read("User/Config/falcon bms.cfg").starts_with("set g_nF1TeamUiFreq 243000\r\n"));
  EXPECT_EQ(sim.Read("User/Config/falcon bms.cfg_backup"), "set g_nF1TeamUiFreq 1\r\nset g_nF2TeamUiFreq 2\r\n");
}

TEST_F(FalconWindowsTest, DefaultChannelsAreSavedByTheSameWay) {
  const test::SmallInstall sim = AddBms("4.37", "Viper");
  sim.AddPilot("Viper", "UHF_1=251000\r\n");
  sim.Write("User/Config/falcon bms.cfg", "");
  station.DefaultFrequencies.DefaultUHF[1] = "300100";
  Frame().Falcon().SaveDefaultChannels();
  EXPECT_EQ(desk.Boxes.size(), 1U) << "the question";
  desk.Answers = {base::Answer::Yes};
  InNextDialog([](QWidget& dialog) { Press(dialog, "cmdOK"); });
  Frame().Falcon().SaveDefaultChannels();
  EXPECT_TRUE(sim.Read("User/Config/Viper.ini").starts_with("[Radio]\r\nUHF_1=300100\r\n"));
}

TEST_F(FalconWindowsTest, OfSeveralInstallationsTheNewestIsTakenUnlessAnotherIsChosen) {
  for (const char* const version : {"4.35", "4.38"}) {
    const test::SmallInstall sim = AddBms(version, version);
    sim.AddPilot(version, std::string("UHF_1=") + version + "\r\n");
    sim.AddPilot("Both", std::string("UHF_1=") + version + "\r\n");
    sim.Write("User/Config/falcon bms.cfg", "");
  }
  PressAnd(1, "cmdLoadChannels", [](QWidget& dialog) {
    EXPECT_TRUE(In<QComboBox>(dialog, "cboInstall").isVisible());
    EXPECT_EQ(Items(dialog), Words({"4.38", "Both"}));
    Press(dialog, "cmdOK");
  });
  EXPECT_EQ(Tables().CustomUHF[1], "4.38");
  PressAnd(1, "cmdLoadChannels", [](QWidget& dialog) {
    QTest::keyClick(&In<QComboBox>(dialog, "cboInstall"), Qt::Key_Down);
    EXPECT_EQ(Items(dialog), Words({"4.35", "Both"}));
    EXPECT_EQ(Current(dialog), QStringLiteral("4.35"));
    Press(dialog, "cmdOK");
  });
  EXPECT_EQ(Tables().CustomUHF[1], "4.35");
}

TEST_F(FalconWindowsTest, AirfieldsOfATheaterAreLoadedAndShown) {
  const test::SmallInstall sim = AddBms("4.37");
  sim.AddTheaters({"Korea", "Balkans"});
  sim.AddAirbase("Balkans");
  Tables().Airfields.Append({}).Name = "Old field";
  Tables().Airfields[1].VIS = true;
  Panel().Refresh(base::Changed::Frequencies);
  auto& all = In<QCheckBox>(Panel(), "chkSelectAllAirf");
  EXPECT_TRUE(all.isChecked());
  AnswerFile(sim.Folder() / "Data/Balkans/te_new.tac");
  const auto draws = Picture().MapDraws();
  PressAnd(2, "cmdLoadAirports", [](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName(), QStringLiteral("ListTheatersfrm"));
    In<QComboBox>(dialog, "Combo1").setCurrentIndex(1);
    Press(dialog, "cmdNext");
  });
  EXPECT_TRUE(desk.Boxes.empty());
  ASSERT_EQ(desk.FileQuestions.size(), 1U);
  EXPECT_EQ(desk.FileQuestions[0].Folder, base::TextOfPath(sim.Folder() / "Data/Balkans"));
  ASSERT_EQ(Tables().Airfields.UpperBound(), 1U);
  EXPECT_EQ(Tables().Airfields[1].Name, "Kunsan");
  EXPECT_EQ(Tables().Teams[6], "Country 6");
  EXPECT_EQ(At(2, "A1").data().toString(), QStringLiteral("Kunsan"));
  EXPECT_EQ(At(2, "R6").data().toString(), QStringLiteral("Country 6"));
  EXPECT_FALSE(all.isChecked());
  EXPECT_TRUE(QTest::qWaitFor([&] { return Picture().MapDraws() > draws; }));
}

TEST_F(FalconWindowsTest, AirfieldsThatCannotBeReadLeaveAllAsItIsAndTheWindowOpen) {
  const test::SmallInstall sim = AddBms("4.37");
  sim.AddTheaters({"Korea"});
  sim.AddAirbase("Korea");
  sim.Write("Data/Korea/te_new.tac", "no campaign");
  Tables().Airfields.Append({}).VIS = true;
  Panel().Refresh(base::Changed::Frequencies);
  const std::string before = radio::WriteFrequencies(Tables());
  AnswerFile(sim.Folder() / "Data/Korea/te_new.tac");
  PressAnd(2, "cmdLoadAirports", [this](QWidget& dialog) {
    desk.WhileOpen = [&dialog] { EXPECT_TRUE(dialog.isVisible()); };
    Press(dialog, "cmdNext");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(desk.FileQuestions.size(), 1U);
    EXPECT_EQ(desk.Boxes.size(), 1U);
    if (!desk.Boxes.empty()) {
      EXPECT_TRUE(desk.Boxes[0].Text.starts_with("An error occured: Error #321. te_new.tac")) << desk.Boxes[0].Text;
    }
    // The file dialog is cancelled.
    Press(dialog, "cmdNext");
    EXPECT_EQ(desk.FileQuestions.size(), 2U);
    EXPECT_TRUE(dialog.isVisible());
    Press(dialog, "cmdCancel");
  });
  EXPECT_EQ(desk.Boxes.size(), 1U);
  EXPECT_EQ(radio::WriteFrequencies(Tables()), before);
  EXPECT_TRUE(In<QCheckBox>(Panel(), "chkSelectAllAirf").isChecked());
}

TEST_F(FalconWindowsTest, TheaterWithAFolderElsewhereIsTold) {
  const test::SmallInstall sim = AddBms("4.37");
  sim.WriteList("one.tdf\n");
  sim.Write("Data/one.tdf", "name One\ncampaigndir ..\\..\\Elsewhere\n");
  PressAnd(2, "cmdLoadAirports", [](QWidget& dialog) {
    Press(dialog, "cmdNext");
    EXPECT_TRUE(dialog.isVisible());
    Press(dialog, "cmdCancel");
  });
  ExpectBox(base::ProgramTitle().c_str(), "The theater cannot be used: \"..\\..\\Elsewhere\" leaves its folder.");
  EXPECT_TRUE(desk.FileQuestions.empty());
}

}  // namespace
}  // namespace kestrel::shell
