// Connecting, leaving and coming back, as the windows show it.

#include <QAbstractButton>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

#include "shell/link/vld_from2.h"
#include "shell/map/lost_link.h"
#include "shell/map/replay_sign.h"
#include "shell/station_fixture.h"
#include "shell/tape/rec_frm.h"

namespace kestrel::shell {
namespace {

class Leaving : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
    Frame().Strip().Check(core::ToolWindow::Rec).setChecked(true);
    Rec().MaxFrm();
    clock.Date = 46347.5;  // 2026-11-21, noon
  }
  RecFrm& Rec() { return Frame().Tools().The<RecFrm>(); }
  QPushButton& WayBack() { return *Rec().findChild<QPushButton*>(QStringLiteral("cmdBackToSession")); }
  ReplaySign& Sign() { return *Picture().findChild<ReplaySign*>(); }
  void PressInRec(const char* name) {
    QTest::mouseClick(Rec().findChild<QAbstractButton*>(QString::fromLatin1(name)), Qt::LeftButton);
  }
  void Record() {
    Connect();
    Action("mnuStartRec").trigger();
    for (int n = 0; n < 3; ++n) {
      clock.Ticks += 1000;
      clock.Date += 1.0 / 86400;
      socket.Arrive(std::string("SYNCRO\0", 7));
    }
    Action("mnuStopRecording").trigger();
  }
  void RecordAndLoad() {
    Record();
    Load();
  }
  void Load() {
    desk.FileAnswers = {folder.filePath(QStringLiteral("TAPES/21-11-26_120000.tap")).toStdString()};
    PressInRec("Command1");
    ASSERT_TRUE(station.Tapes.Player.State().Loaded());
  }
  bool ConnectTo(const char* name, const char* address) {
    VldFrom2 dialog(program, &Frame());
    dialog.show();
    dialog.findChild<QLineEdit*>(QStringLiteral("Text1"))->setText(QString::fromLatin1(name));
    dialog.findChild<QLineEdit*>(QStringLiteral("Text2"))->setText(QString::fromLatin1(address));
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
    return !dialog.isVisible();
  }
};

TEST_F(Leaving, MapSaysReplayWithTheTimeOfTheRecord) {
  EXPECT_TRUE(Sign().isHidden());
  RecordAndLoad();
  ASSERT_TRUE(Sign().isVisible());
  EXPECT_EQ(Sign().text(), QStringLiteral("REPLAY 12:00:01"));
  EXPECT_EQ(Sign().geometry().right() + 1, Picture().width() - 8);
  EXPECT_EQ(Sign().geometry().top(), 8);
  EXPECT_GE(Sign().width(), Sign().sizeHint().width());
  PressInRec("Command2");
  PressInRec("Command3");
  QTest::keyClick(Rec().findChild<QWidget*>(QStringLiteral("HScroll1")), Qt::Key_End);
  EXPECT_EQ(Sign().text(), QStringLiteral("REPLAY 12:00:03"));
  Frame().resize(Frame().size() - QSize(100, 50));
  ASSERT_TRUE(QTest::qWaitFor([this] { return Sign().geometry().right() + 1 == Picture().width() - 8; }));
  // The mouse goes through it to the map.
  EXPECT_EQ(Picture().childAt(Sign().geometry().center()), nullptr);
  PressInRec("Command6");
  EXPECT_TRUE(Sign().isHidden());
}

TEST_F(Leaving, PlaybackHasTheWayBackToTheSessionThatWasLeft) {
  EXPECT_TRUE(WayBack().isHidden());
  const QSize before = Rec().size();
  RecordAndLoad();
  ASSERT_TRUE(WayBack().isVisible());
  EXPECT_GT(Rec().height(), before.height());
  EXPECT_EQ(WayBack().toolTip(), QStringLiteral("Closes the tape and connects again to Home"));
  QTest::mouseClick(&WayBack(), Qt::LeftButton);
  EXPECT_FALSE(station.Tapes.Player.State().Loaded());
  EXPECT_TRUE(WayBack().isHidden());
  EXPECT_EQ(Rec().size(), before);
  EXPECT_EQ(socket.Log.back(), "connect 10.0.0.1:5556");
  InNextDialog([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
  socket.Accept();
  EXPECT_TRUE(station.Session.Connected);
}

TEST_F(Leaving, IsAskedInEachOfTheThreeWays) {
  station.SessionExtras.ASKTOLEAVE = true;
  Connect();
  Action("mnuConnList_2").trigger();
  EXPECT_FALSE(ConnectTo("New", "10.0.0.9"));
  PressInRec("Command1");
  ASSERT_EQ(desk.Boxes.size(), 3u);
  for (const auto& box : desk.Boxes) EXPECT_EQ(box.Text, "Leave the session on Home?");
  EXPECT_TRUE(station.Session.Connected);
  desk.Answers = {base::Answer::Yes};
  EXPECT_TRUE(ConnectTo("New", "10.0.0.9"));
  EXPECT_EQ(socket.Host, "10.0.0.9");
}

TEST_F(Leaving, FailedConnectNamesWhatWasTriedAndTheMenuDropsIt) {
  EXPECT_TRUE(ConnectTo("Ty&po", "10.0.0.9:7777"));
  socket.Fail("Connection refused");
  ASSERT_EQ(desk.Boxes.size(), 1u);
  EXPECT_EQ(desk.Boxes[0].Title, "Connection");
  EXPECT_EQ(desk.Boxes[0].Text,
            "Connection refused\nTy&po: 10.0.0.9, port 7777. Is the server running, are address and port right, does a "
            "firewall let the station through? The end of the Phonebook menu drops its entry.");
  QAction& drop = Action("mnuDropEntry_1");
  EXPECT_EQ(drop.text(), QStringLiteral("Drop Ty&&po (never connected)"));
  EXPECT_EQ(Frame().PopUp("mnuPhonebook").actions().back(), &drop);
  drop.trigger();
  EXPECT_EQ(station.LinkOptions.ConnList.UpperBound(), 2u);
  EXPECT_EQ(Frame().findChild<QAction*>(QStringLiteral("mnuDropEntry_1")), nullptr);
  EXPECT_EQ(Frame().findChild<QAction*>(QStringLiteral("mnuConnList_3")), nullptr);
}

TEST_F(Leaving, ConnectionThatBreaksIsToldAsTheSystemTellsIt) {
  Connect();
  socket.Fail("Connection reset by peer");
  ASSERT_EQ(desk.Boxes.size(), 1u);
  EXPECT_EQ(desk.Boxes[0].Text, "Connection reset by peer");
}

TEST_F(Leaving, ConnectToSaysThatAPortCameAlong) {
  VldFrom2 dialog(program, &Frame());
  dialog.show();
  auto& address = *dialog.findChild<QLineEdit*>(QStringLiteral("Text2"));
  auto& said = *dialog.findChild<QLabel*>(QStringLiteral("lblPort"));
  QTest::keyClicks(&address, QStringLiteral("host.invalid:777"));
  EXPECT_TRUE(said.isVisible());
  EXPECT_EQ(said.text(), QStringLiteral("Port 777 becomes the Connection Port."));
  QTest::keyClicks(&address, QStringLiteral("77"));
  EXPECT_FALSE(said.isVisible()) << "77777 is no port";
  address.setText(QStringLiteral("host.invalid:5556"));
  EXPECT_FALSE(said.isVisible()) << "it is that already";
}

TEST_F(Leaving, ATapeTakesTheGreyPictureOfALostLinkAway) {
  Record();
  socket.PeerCloses();
  ASSERT_TRUE(Frame().Lost().HoldsPicture());
  Load();
  EXPECT_FALSE(Frame().Lost().HoldsPicture()) << "at once";
  EXPECT_FALSE(Picture().findChild<QFrame*>(QStringLiteral("LinkWords"))->isVisible());
  EXPECT_TRUE(Sign().isVisible());
}

}  // namespace
}  // namespace kestrel::shell
