#include "shell/link/clients_frm.h"

#include "shell/commit_text.h"
#include "shell/link/clients_fixture.h"

namespace kestrel::shell {
namespace {

TEST_F(ClientsWindow, NodesHaveKeyTextAndPictureOfTheirClient) {
  Join();
  socket.Arrive(Message("NEWCLT", ClientData("-4", " Dent ", "i", "?")));
  EXPECT_EQ(Names(), (Texts{"Adams", "Baker", "Clark", "Dent"}));
  EXPECT_EQ(TextsOf(*Tree().model(), ClientsModel::KeyRole), (Texts{"10N", "20N", "30N", "-4N"}));
  const int pictures[] = {1, 2, 3, 0};
  for (int row = 0; row < 4; ++row) {
    EXPECT_EQ(NodeData(row, ClientsModel::PictureRole).toInt(), pictures[row]);
  }
}

TEST_F(ClientsWindow, PicturesDifferInShape) {
  Join();
  socket.Arrive(Message("NEWCLT", ClientData("40", "Dent", "i", "?")));
  std::vector<QImage> shapes;
  for (int row = 0; row < 4; ++row) {
    const QImage drawn = NodeData(row, Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage();
    shapes.push_back(drawn.convertToFormat(QImage::Format_Alpha8));
  }
  for (std::size_t a = 0; a < shapes.size(); ++a) {
    for (std::size_t b = 0; b < a; ++b) EXPECT_NE(shapes[a], shapes[b]) << a << " and " << b;
  }
}

TEST_F(ClientsWindow, UpdateChangesTextAndPictureOfTheNode) {
  Join();
  socket.Arrive(Message("PLSUPD", ClientData("20", "Bishop", "i", "O")));
  EXPECT_EQ(Names(), (Texts{"Adams", "Bishop", "Clark"}));
  EXPECT_EQ(NodeData(1, ClientsModel::PictureRole).toInt(), 1);
  socket.Arrive(Message("PLSUPD", ClientData("21", "Nobody", "i", "X")));
  EXPECT_EQ(Names(), (Texts{"Adams", "Bishop", "Clark"}));
}

TEST_F(ClientsWindow, LeavingClientTakesItsNodeAlong) {
  Join();
  socket.Arrive(Message("DELCLT", "20"));
  EXPECT_EQ(Names(), (Texts{"Adams", "Clark"}));
}

TEST_F(ClientsWindow, SameIdTwiceStandsTwiceInTheTree) {
  Join();
  socket.Arrive(Message("NEWCLT", ClientData("20", "Twin")));
  EXPECT_EQ(Names(), (Texts{"Adams", "Baker", "Clark", "Twin"}));
  Click(3);
  EXPECT_EQ(SelectedPlot(), 2U) << "the first one that holds the Id";
  EXPECT_EQ(User(), QStringLiteral("USER: Baker"));
  socket.Arrive(Message("DELCLT", "20"));
  EXPECT_EQ(Names(), (Texts{"Adams", "Clark", "Twin"}));
  ExpectReset();
}

TEST_F(ClientsWindow, DetailsAreResetAtTheStart) { ExpectReset(); }

TEST_F(ClientsWindow, ClickedNodeFillsTheDetails) {
  Join();
  Client(2).Label = "Viper 1";
  Client(2).ShowAllHistory = true;
  Client(2).PlotVisible = false;
  Client(2).Color = 0x0000FF;
  Click(1);
  EXPECT_EQ(SelectedPlot(), 2U);
  EXPECT_EQ(User(), QStringLiteral("USER: Baker"));
  EXPECT_EQ(Callsign().text(), QStringLiteral("Viper 1"));
  EXPECT_TRUE(Check("Check1").isChecked());
  EXPECT_TRUE(Check("chkHide").isChecked());
  for (const char* name : {"Text1", "cmdPlotColor", "Check1", "chkHide"}) {
    EXPECT_TRUE(Part<QWidget>(name).isEnabled()) << name;
  }
  const QSize size = Part<QPushButton>("cmdPlotColor").iconSize();
  const QImage field = Part<QPushButton>("cmdPlotColor").icon().pixmap(size).toImage();
  EXPECT_EQ(field.pixelColor(field.rect().center()), QColor(Qt::red));
  // Filling is not editing.
  EXPECT_TRUE(Client(2).ShowAllHistory);
  EXPECT_FALSE(Client(2).PlotVisible);
}

TEST_F(ClientsWindow, ArrowKeysSelectToo) {
  Join();
  Click(0);
  QTest::keyClick(&Tree(), Qt::Key_Down);
  EXPECT_EQ(SelectedPlot(), 2U);
  EXPECT_EQ(User(), QStringLiteral("USER: Baker"));
}

TEST_F(ClientsWindow, KeyboardThatComesToTheTreeSelectsNobody) {
  Join();
  Window().activateWindow();
  Callsign().setEnabled(true);
  Callsign().setFocus();
  Tree().setFocus();
  ASSERT_TRUE(QTest::qWaitFor([this] { return Tree().hasFocus(); }));
  EXPECT_EQ(SelectedPlot(), 0U);
  EXPECT_EQ(User(), QStringLiteral("USER:"));
  QTest::keyClick(&Tree(), Qt::Key_Down);
  EXPECT_NE(SelectedPlot(), 0U);
}

TEST_F(ClientsWindow, PressBesideTheNodesResetsTheDetails) {
  Join();
  Click(1);
  ClickEmptyPlace();
  EXPECT_EQ(SelectedPlot(), 0U);
  ExpectReset();
}

TEST_F(ClientsWindow, PressOnTheSelectedNodeFillsTheDetailsAnew) {
  Join();
  Click(1);
  Client(2).Label = "Changed";
  Click(1);
  EXPECT_EQ(SelectedPlot(), 2U);
  EXPECT_EQ(Callsign().text(), QStringLiteral("Changed"));
}

TEST_F(ClientsWindow, TypedCallsignIsTheLabelAndIsDrawnAtOnce) {
  Join();
  Click(1);
  Callsign().selectAll();
  const std::uint64_t draws = Picture().PlotDraws();
  QTest::keyClicks(&Callsign(), QStringLiteral("Vi"));
  EXPECT_EQ(Client(2).Label, "Vi");
  EXPECT_EQ(Picture().PlotDraws(), draws + 2);
  EXPECT_EQ(Client(1).Label, "Airplane 10");
  EXPECT_EQ(Client(3).Label, "Airplane 30");
}

TEST_F(ClientsWindow, CallsignThatTheCodePageDoesNotHoldIsNotTaken) {
  Join();
  Click(1);
  Window().activateWindow();
  Callsign().setFocus();
  ASSERT_TRUE(QTest::qWaitFor([this] { return Callsign().hasFocus(); }));
  Callsign().selectAll();
  QTest::keyClicks(&Callsign(), QStringLiteral("Vi"));
  const int height = Window().height();
  Commit(Callsign(), QStringLiteral("\uD55C"));
  auto& refused = Part<QLabel>("lblRefused");
  EXPECT_TRUE(refused.isVisible());
  EXPECT_EQ(refused.text(), QStringLiteral("This character cannot be used here: \uD55C."));
  EXPECT_GT(Window().height(), height) << "the window has room for it";
  EXPECT_EQ(Callsign().text(), QStringLiteral("Vi\uD55C")) << "as typed";
  EXPECT_EQ(Client(2).Label, "Vi") << "the last that could be taken";
  QTest::keyClick(&Callsign(), Qt::Key_Backspace);
  EXPECT_FALSE(refused.isVisible());
  EXPECT_LE(Window().height(), height) << "and takes it back";
  Commit(Callsign(), QStringLiteral("\uAD6D"));
  EXPECT_TRUE(refused.isVisible());
  Tree().setFocus();
  EXPECT_EQ(Callsign().text(), QStringLiteral("Vi")) << "the callsign that the plot has";
  EXPECT_FALSE(refused.isVisible());
  EXPECT_EQ(Client(2).Label, "Vi");
}

TEST_F(ClientsWindow, UpdateResetsTheCallsignThatWasTyped) {
  Join();
  Click(1);
  Callsign().selectAll();
  QTest::keyClicks(&Callsign(), QStringLiteral("Viper"));
  Tree().setFocus();
  socket.Arrive(Message("PLSUPD", ClientData("20", "Baker")));
  EXPECT_EQ(Client(2).Label, "Airplane 20");
  EXPECT_EQ(Callsign().text(), QStringLiteral("Airplane 20"));
}

TEST_F(ClientsWindow, CallsignThatWasResetWhileItWasTypedIsShownOnceTheFieldIsLeft) {
  Join();
  Click(1);
  Window().activateWindow();
  Callsign().setFocus();
  ASSERT_TRUE(QTest::qWaitFor([this] { return Callsign().hasFocus(); }));
  Callsign().selectAll();
  QTest::keyClicks(&Callsign(), QStringLiteral("Viper"));
  socket.Arrive(Message("PLSUPD", ClientData("20", "Baker")));
  EXPECT_EQ(Client(2).Label, "Airplane 20");
  EXPECT_EQ(Callsign().text(), QStringLiteral("Viper")) << "it is being typed";
  Tree().setFocus();
  EXPECT_EQ(Callsign().text(), QStringLiteral("Airplane 20"));
  EXPECT_EQ(Client(2).Label, "Airplane 20");
}

TEST_F(ClientsWindow, ColorIsAskedForFromThePresentOne) {
  Join();
  Click(1);
  Client(2).Color = 0x010203;
  Click(1);
  desk.ColourAnswers = {0x112233, std::nullopt};
  QTest::mouseClick(&Part<QPushButton>("cmdPlotColor"), Qt::LeftButton);
  EXPECT_EQ(desk.ColourQuestions, (std::vector<base::Colour>{0x010203}));
  EXPECT_EQ(Client(2).Color, 0x112233U);
  QTest::mouseClick(&Part<QPushButton>("cmdPlotColor"), Qt::LeftButton);
  EXPECT_EQ(desk.ColourQuestions.back(), 0x112233U);
  EXPECT_EQ(Client(2).Color, 0x112233U) << "cancelled";
}

TEST_F(ClientsWindow, BoxesSetHistoryAndVisibility) {
  Join();
  Click(1);
  Press(Check("Check1"));
  EXPECT_TRUE(Client(2).ShowAllHistory);
  Press(Check("Check1"));
  EXPECT_FALSE(Client(2).ShowAllHistory);
  const std::uint64_t draws = Picture().PlotDraws();
  Press(Check("chkHide"));
  EXPECT_FALSE(Client(2).PlotVisible);
  EXPECT_EQ(Picture().PlotDraws(), draws + 1);
  Press(Check("chkHide"));
  EXPECT_TRUE(Client(2).PlotVisible);
}

TEST_F(ClientsWindow, ClientThatLeavesWhileSelectedResetsTheDetails) {
  Join();
  Click(1);
  socket.Arrive(Message("DELCLT", "20"));
  EXPECT_EQ(SelectedPlot(), 2U) << "it stays, now the place of the next client";
  ExpectReset();
  EXPECT_EQ(Client(2).Label, "Airplane 30");
  socket.Arrive(Message("DELCLT", "30"));  // at SelectedPlot again
  ExpectReset();
}

TEST_F(ClientsWindow, DetailsShowWhomAnEditChangesWhenAnotherClientLeaves) {
  Join();
  Client(3).ShowAllHistory = true;
  Client(3).PlotVisible = false;
  Click(1);
  // Also while the callsign is being typed: it was another one's.
  Window().activateWindow();
  Callsign().setFocus();
  ASSERT_TRUE(QTest::qWaitFor([this] { return Callsign().hasFocus(); }));
  QTest::keyClicks(&Callsign(), QStringLiteral("X"));
  socket.Arrive(Message("DELCLT", "10"));
  EXPECT_EQ(SelectedPlot(), 2U) << "it is not moved";
  EXPECT_EQ(User(), QStringLiteral("USER: Clark"));
  EXPECT_EQ(Callsign().text(), QStringLiteral("Airplane 30"));
  EXPECT_TRUE(Check("Check1").isChecked());
  EXPECT_TRUE(Check("chkHide").isChecked());
  EXPECT_TRUE(Callsign().isEnabled());
  ASSERT_EQ(Tree().selectionModel()->selectedRows().size(), 1);
  EXPECT_EQ(Tree().selectionModel()->selectedRows().front().data().toString(), QStringLiteral("Clark"));
  QTest::keyClick(&Callsign(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Callsign().text(), QStringLiteral("Airplane 30")) << "the other one's callsign has come back";
  Callsign().selectAll();
  QTest::keyClicks(&Callsign(), QStringLiteral("V"));
  EXPECT_EQ(Client(1).Label, "Airplane 20X");
  EXPECT_EQ(Client(2).Label, "V") << "the edit goes where SelectedPlot points";
  socket.Arrive(Message("DELCLT", "30"));  // found where SelectedPlot points
  ExpectReset();
}

TEST_F(ClientsWindow, EditPastTheLastClientChangesNothing) {
  Join();
  Click(2);
  socket.Arrive(Message("DELCLT", "10"));
  ExpectReset();
  QTest::keyClicks(&Callsign(), QStringLiteral("V"));
  Press(Check("Check1"));
  Press(Check("chkHide"));
  desk.ColourAnswers = {0x112233};
  QTest::mouseClick(&Part<QPushButton>("cmdPlotColor"), Qt::LeftButton);
  for (std::size_t index = 0; index <= 2; ++index) {
    EXPECT_NE(Client(index).Label, "V");
    EXPECT_EQ(Client(index).Color, 0U);
    EXPECT_FALSE(Client(index).ShowAllHistory);
    EXPECT_EQ(Client(index).PlotVisible, index != 0) << "the dummy is not";
  }
}

TEST_F(ClientsWindow, RightClickOpensTheMenuForItsNode) {
  Join();
  QMenu& menu = Frame().PopUp("PopUp3");
  for (const int row : {1, 0}) {
    const QPoint place = Tree().visualRect(Node(row)).center();
    QTest::mousePress(Tree().viewport(), Qt::RightButton, {}, place);
    EXPECT_EQ(SelectedPlot(), static_cast<std::size_t>(row) + 1);
    QContextMenuEvent asked(QContextMenuEvent::Mouse, place, Tree().viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(Tree().viewport(), &asked);
    ASSERT_TRUE(menu.isVisible());
    Action("mnuP3HidePlot").trigger();
    menu.close();
    EXPECT_FALSE(Client(static_cast<std::size_t>(row) + 1).PlotVisible);
    EXPECT_TRUE(Check("chkHide").isChecked());
  }
  const std::uint64_t draws = Picture().PlotDraws();
  Action("mnuP3ShowPlot").trigger();
  EXPECT_TRUE(Client(1).PlotVisible);
  EXPECT_FALSE(Check("chkHide").isChecked());
  EXPECT_FALSE(Client(2).PlotVisible);
  EXPECT_EQ(Picture().PlotDraws(), draws + 1);
}

TEST_F(ClientsWindow, MenuIsForItsClientThoughOthersLeaveMeanwhile) {
  Join();
  const QPoint place = Tree().visualRect(Node(1)).center();
  QContextMenuEvent asked(QContextMenuEvent::Mouse, place, Tree().viewport()->mapToGlobal(place));
  QCoreApplication::sendEvent(Tree().viewport(), &asked);
  socket.Arrive(Message("DELCLT", "10"));
  Action("mnuP3HidePlot").trigger();
  EXPECT_FALSE(Client(1).PlotVisible);
  EXPECT_TRUE(Client(2).PlotVisible);
  socket.Arrive(Message("DELCLT", "20"));
  Action("mnuP3HidePlot").trigger();
  EXPECT_TRUE(Client(1).PlotVisible);
  Frame().PopUp("PopUp3").close();
}

TEST_F(ClientsWindow, MenuDoesNotOpenBesideTheNodes) {
  Join();
  const QPoint place(20, Tree().viewport()->height() - 3);
  QContextMenuEvent asked(QContextMenuEvent::Mouse, place, Tree().viewport()->mapToGlobal(place));
  QCoreApplication::sendEvent(Tree().viewport(), &asked);
  EXPECT_FALSE(Frame().PopUp("PopUp3").isVisible());
}

TEST_F(ClientsWindow, PictureTellsWhetherThereIsAConnection) {
  EXPECT_FALSE(Part<QLabel>("ImageCon").isVisible());
  EXPECT_TRUE(Part<QLabel>("ImageDiscon").isVisible());
  Connect();
  EXPECT_TRUE(Part<QLabel>("ImageCon").isVisible());
  EXPECT_FALSE(Part<QLabel>("ImageDiscon").isVisible());
  Action("mnuDisconnect").trigger();
  EXPECT_FALSE(Part<QLabel>("ImageCon").isVisible());
  EXPECT_TRUE(Part<QLabel>("ImageDiscon").isVisible());
}

TEST_F(ClientsWindow, EndOfTheConnectionEmptiesTreeListAndDetails) {
  Join();
  Snapshot({"Ajax31"});
  Click(1);
  Action("mnuDisconnect").trigger();
  EXPECT_TRUE(Names().empty());
  EXPECT_TRUE(Items().empty());
  EXPECT_EQ(SelectedPlot(), 0U);
  ExpectReset();
}

TEST_F(ClientsWindow, NothingIsDoneUnseenAndCaughtUpWhenSeen) {
  struct {
    const char* What;
    std::function<void()> Away, Back;
  } const ways[] = {
      {"hidden", [this] { Frame().Strip().Check(core::ToolWindow::Clients).setChecked(false); },
       [this] { Frame().Strip().Check(core::ToolWindow::Clients).setChecked(true); }},
      {"rolled up", [this] { Window().MinFrm(); }, [this] { Window().MaxFrm(); }},
  };
  for (const auto& way : ways) {
    SCOPED_TRACE(way.What);
    Join();
    Snapshot({"Ajax31"});
    Click(1);
    way.Away();
    socket.Arrive(Message("DELCLT", "20") + Message("NEWCLT", ClientData("40", "Dent")));
    Snapshot({"Ajax31", "Cobra11"});
    EXPECT_EQ(Names(), (Texts{"Adams", "Baker", "Clark"}));
    EXPECT_EQ(Items().size(), 1U);
    way.Back();
    EXPECT_EQ(Names(), (Texts{"Adams", "Clark", "Dent"}));
    EXPECT_EQ(Items().size(), 2U);
    ExpectReset();
    way.Away();
    Action("mnuDisconnect").trigger();
    way.Back();
    EXPECT_TRUE(Names().empty());
    EXPECT_TRUE(Part<QLabel>("ImageDiscon").isVisible());
  }
}

TEST_F(ClientsWindow, PickingAPlayerMovesNothing) {
  Join();
  const auto places = [this] {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    std::vector<std::pair<std::string, QRect>> all{{"window", Window().geometry()}};
    for (QWidget* part : Tree().parentWidget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
      all.emplace_back(part->objectName().toStdString(), part->geometry());
    }
    for (QWidget* part : Part<QFrame>("FraClientDetails").findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
      all.emplace_back(part->objectName().toStdString(), part->geometry());
    }
    return all;
  };
  const auto before = places();
  ASSERT_GT(before.size(), 10u);
  Click(1);
  const auto after = places();
  for (std::size_t n = 0; n < before.size(); ++n) EXPECT_EQ(after[n].second, before[n].second) << before[n].first;
  ClickEmptyPlace();
  EXPECT_TRUE(places() == before);
}

TEST_F(ClientsWindow, EveryControlTellsWhatItIsFor) {
  for (const char* name : {"Text1", "cmdPlotColor", "Check1", "chkHide", "Command2"}) {
    EXPECT_FALSE(Part<QWidget>(name).toolTip().isEmpty()) << name;
  }
  EXPECT_EQ(Part<QLabel>("lblCallsign").text(), QStringLiteral("Callsign:"));
  EXPECT_EQ(Part<QLabel>("lblColor").text(), QStringLiteral("Color:"));
  EXPECT_EQ(Check("Check1").text(), QStringLiteral("Show All History Points"));
  EXPECT_EQ(Part<QPushButton>("Command2").text(), QStringLiteral("Reset"));
}

/// Names that sort by number: "Flight017".
std::string FlightName(int number) {
  std::string digits = std::to_string(number);
  return "Flight" + std::string(3 - digits.size(), '0') + digits;
}

TEST_F(ClientsWindow, StreamLeavesSelectionPlaceAndTypingAlone) {
  Connect();
  std::string joining;
  for (int id = 1; id <= 64; ++id) {
    joining += Message("NEWCLT", ClientData(std::to_string(id), "Player " + std::to_string(id)));
  }
  socket.Arrive(joining);
  std::vector<std::string> names;
  for (int number = 0; number < 400; ++number) names.push_back(FlightName(number));
  Snapshot(names);

  // The chosen client stands above all those that leave, so that SelectedPlot keeps pointing at it.
  Tree().scrollTo(Node(29), QAbstractItemView::PositionAtTop);
  Click(31);
  ASSERT_EQ(User(), QStringLiteral("USER: Player 32"));
  List().scrollTo(List().model()->index(200, 0), QAbstractItemView::PositionAtTop);
  ASSERT_GT(List().verticalScrollBar()->value(), 0);
  List().setCurrentIndex(List().indexAt(QPoint(5, 2 * List().visualRect(List().indexAt(QPoint(5, 0))).height() + 1)));
  const QString item = List().currentIndex().data().toString();
  const int itemTop = List().visualRect(List().currentIndex()).top();
  const int nodeTop = Tree().visualRect(Tree().currentIndex()).top();
  Window().activateWindow();
  Callsign().setFocus();
  ASSERT_TRUE(QTest::qWaitFor([this] { return Callsign().hasFocus(); }));
  Callsign().selectAll();
  QTest::keyClicks(&Callsign(), QStringLiteral("Vper"));
  Callsign().setCursorPosition(1);

  for (int round = 0; round < 200; ++round) {
    SCOPED_TRACE(round);
    const std::string joins = std::to_string(100 + round);
    const std::string leaves = round < 100 ? std::to_string(round % 32 + 33) : std::to_string(round);
    socket.Arrive(Message("NEWCLT", ClientData(joins, "Late " + joins)) + Message("DELCLT", leaves) +
                  Message("PLSUPD", ClientData("5", "Player 5", "", round % 2 == 0 ? "X" : "O")) +
                  Message("PLSUPD", ClientData("32", "Player 32")));
    // Names come and go above and below what is seen.
    std::vector<std::string> seen;
    for (int number = 0; number < 400; ++number) {
      const bool above = number < 50, below = number >= 350;
      if ((above || below) && (number + round) % 3 == 0) continue;
      seen.push_back(FlightName(number));
    }
    Snapshot(seen);
    ASSERT_EQ(Names().size(), station.Plots.Clients.UpperBound());
    ASSERT_EQ(Items().size(), seen.size());
    ASSERT_EQ(SelectedPlot(), 32U);
    ASSERT_EQ(User(), QStringLiteral("USER: Player 32"));
    ASSERT_EQ(Tree().currentIndex().data().toString(), QStringLiteral("Player 32"));
    ASSERT_EQ(Tree().visualRect(Tree().currentIndex()).top(), nodeTop);
    ASSERT_EQ(List().currentIndex().data().toString(), item);
    ASSERT_EQ(List().visualRect(List().currentIndex()).top(), itemTop);
    ASSERT_EQ(Callsign().text(), QStringLiteral("Vper"));
    ASSERT_EQ(Callsign().cursorPosition(), 1);
  }
  EXPECT_EQ(Client(32).Label, "Airplane 32") << "an update of the server takes the callsign back";
  QTest::keyClicks(&Callsign(), QStringLiteral("i"));
  EXPECT_EQ(Client(32).Label, "Viper");
}

TEST_F(ClientsWindow, TreeKeepsItsPlaceWhenClientsAboveItLeave) {
  Connect();
  std::string joining;
  for (int id = 1; id <= 64; ++id) joining += Message("NEWCLT", ClientData(std::to_string(id), std::to_string(id)));
  socket.Arrive(joining);
  Tree().scrollTo(Node(40), QAbstractItemView::PositionAtTop);
  const QPersistentModelIndex seen = Tree().indexAt(QPoint(5, 5));
  const int top = Tree().visualRect(seen).top();
  for (int id = 1; id <= 20; ++id) socket.Arrive(Message("DELCLT", std::to_string(id)));
  ASSERT_TRUE(seen.isValid());
  EXPECT_EQ(Tree().visualRect(seen).top(), top);
}

}  // namespace
}  // namespace kestrel::shell
