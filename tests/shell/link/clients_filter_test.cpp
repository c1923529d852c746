// The lists of the window Clients filtered and sorted by name.

#include "shell/link/clients_fixture.h"

namespace kestrel::shell {
namespace {

class ClientsFiltered : public ClientsWindow {
 protected:
  QLineEdit& Filter() { return Part<QLineEdit>("txtFilter"); }
  void OpenFilter() {
    Window().activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &Window(); }));
    QTest::keyClick(&Tree(), Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(Filter().isVisible());
    ASSERT_TRUE(Filter().hasFocus());
  }
  void Type(const char* text) {
    Filter().selectAll();
    QTest::keyClicks(&Filter(), QString::fromLatin1(text));
  }
  void ClickHead(const char* name) { QTest::mouseClick(&Part<QLabel>(name), Qt::LeftButton); }
};

TEST_F(ClientsFiltered, TheFieldComesByCtrlFAndGoesByEsc) {
  Join();
  Snapshot({"Bandit1", "Cobra1"});
  const int height = Window().height();
  EXPECT_TRUE(Filter().isHidden()) << "as the station ships";
  OpenFilter();
  EXPECT_GT(Window().height(), height);
  EXPECT_EQ(Names(), (Texts{"Adams", "Baker", "Clark"})) << "an empty one filters nothing";
  Type("BA");
  EXPECT_EQ(Names(), Texts{"Baker"});
  EXPECT_EQ(Items(), Texts{"Bandit1   "});
  QTest::keyClick(&Filter(), Qt::Key_Escape);
  EXPECT_TRUE(Filter().isHidden());
  EXPECT_EQ(Window().height(), height);
  EXPECT_EQ(Names(), (Texts{"Adams", "Baker", "Clark"}));
  EXPECT_EQ(Items(), (Texts{"Bandit1   ", "Cobra1    "}));
}

TEST_F(ClientsFiltered, ListsFollowTheSessionWhileTheyAreFiltered) {
  Join();
  OpenFilter();
  Type("a");
  EXPECT_EQ(Names(), (Texts{"Adams", "Baker", "Clark"}));
  socket.Arrive(Message("NEWCLT", ClientData("40", "Dora")) + Message("NEWCLT", ClientData("50", "Eve")) +
                Message("DELCLT", "10"));
  EXPECT_EQ(Names(), (Texts{"Baker", "Clark", "Dora"}));
  Snapshot({"Alpha1", "Echo1"});
  EXPECT_EQ(Items(), Texts{"Alpha1    "});
  Snapshot({"Alpha1", "Beta1"});
  EXPECT_EQ(Items(), (Texts{"Alpha1    ", "Beta1     "}));
  ClickHead("lblPlayers");
  ClickHead("lblPlayers");
  EXPECT_EQ(Names(), (Texts{"Dora", "Clark", "Baker"})) << "filtered and sorted";
  socket.Arrive(Message("NEWCLT", ClientData("60", "Cara")));
  EXPECT_EQ(Names(), (Texts{"Dora", "Clark", "Cara", "Baker"}));
}

TEST_F(ClientsFiltered, AClickOnTheHeadSortsByNameAndTheThirdIsAsTold) {
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("1", "clark")) + Message("NEWCLT", ClientData("2", "Adams")) +
                Message("NEWCLT", ClientData("3", "Baker")));
  const Texts told = {"clark", "Adams", "Baker"};
  EXPECT_EQ(Names(), told);
  ClickHead("lblPlayers");
  EXPECT_EQ(Names(), (Texts{"Adams", "Baker", "clark"}));
  EXPECT_EQ(Part<QLabel>("lblPlayers").text(), QStringLiteral("Players, A-Z"));
  socket.Arrive(Message("NEWCLT", ClientData("4", "Amber")));
  EXPECT_EQ(Names(), (Texts{"Adams", "Amber", "Baker", "clark"}));
  socket.Arrive(Message("DELCLT", "4"));
  ClickHead("lblPlayers");
  EXPECT_EQ(Names(), (Texts{"clark", "Baker", "Adams"}));
  EXPECT_EQ(Part<QLabel>("lblPlayers").text(), QStringLiteral("Players, Z-A"));
  ClickHead("lblPlayers");
  EXPECT_EQ(Names(), told);
  EXPECT_EQ(Part<QLabel>("lblPlayers").text(), QStringLiteral("Players"));
}

TEST_F(ClientsFiltered, ASelectionIsTheSamePlayersInAnyOrder) {
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("1", "Clark")) + Message("NEWCLT", ClientData("2", "Adams")));
  Click(0);
  ASSERT_EQ(User(), QStringLiteral("USER: Clark"));
  ClickHead("lblPlayers");
  EXPECT_EQ(User(), QStringLiteral("USER: Clark"));
  EXPECT_EQ(Tree().currentIndex().data().toString(), QStringLiteral("Clark"));
  Click(0);
  EXPECT_EQ(User(), QStringLiteral("USER: Adams"));
  EXPECT_EQ(SelectedPlot(), 2U);
  OpenFilter();
  Type("cla");
  EXPECT_EQ(User(), QStringLiteral("USER: Adams")) << "one who is out of sight stays picked";
  EXPECT_FALSE(Tree().selectionModel()->hasSelection());
  QTest::keyClick(&Filter(), Qt::Key_Escape);
  ASSERT_TRUE(Tree().selectionModel()->hasSelection());
  EXPECT_EQ(Tree().currentIndex().data().toString(), QStringLiteral("Adams"));
}

TEST_F(ClientsFiltered, ChecksAndMenuGoToTheRowThatIsSeen) {
  Connect();
  socket.Arrive(Message("NEWCLT", ClientData("1", "Clark")) + Message("NEWCLT", ClientData("2", "Adams")));
  Snapshot({"Alpha1", "Bravo1"});
  ClickHead("lblAircraft");
  ClickHead("lblAircraft");
  EXPECT_EQ(Items(), (Texts{"Bravo1    ", "Alpha1    "}));
  PressCheck(0);
  EXPECT_EQ(Friends(), Texts{"Bravo1    "});
  EXPECT_TRUE(Checked(0));
  OpenFilter();
  Type("br");
  EXPECT_TRUE(Checked(0)) << "a check stays while the list is filtered";
  ClickHead("lblPlayers");
  Type("a");
  QTest::mouseClick(Tree().viewport(), Qt::RightButton, {}, Tree().visualRect(Node(0)).center());
  const QPoint place = Tree().visualRect(Node(0)).center();
  QContextMenuEvent asked(QContextMenuEvent::Mouse, place, Tree().viewport()->mapToGlobal(place));
  QCoreApplication::sendEvent(Tree().viewport(), &asked);
  EXPECT_EQ(Window().PopUp3Client(), 2U) << "Adams";
  QMenu& menu = Frame().PopUp("PopUp3");
  menu.close();
}

}  // namespace
}  // namespace kestrel::shell
