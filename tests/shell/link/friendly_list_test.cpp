#include "shell/link/clients_fixture.h"

// The list of AI aircraft with their friendly checks.
namespace kestrel::shell {
namespace {

TEST_F(ClientsWindow, SnapshotFillsTheListWithItsChecks) {
  Connect();
  station.Plots.FriendlyList.Append("Viper1");
  Snapshot({"Viper12", "Cobra11", "Ajax31"});
  EXPECT_EQ(Items(), (Texts{"Ajax31    ", "Cobra11   ", "Viper12   "}));
  EXPECT_FALSE(Checked(0));
  EXPECT_FALSE(Checked(1));
  EXPECT_TRUE(Checked(2));
  EXPECT_EQ(Friends(), (Texts{"Viper1"})) << "filling is not checking";
  Snapshot({});
  EXPECT_TRUE(Items().empty());
}

TEST_F(ClientsWindow, ChangedCheckChangesTheFriendlyList) {
  Connect();
  Snapshot({"Ajax31", "Cobra11"});
  PressCheck(1);
  EXPECT_TRUE(Checked(1));
  EXPECT_EQ(Friends(), (Texts{"Cobra11   "}));
  EXPECT_EQ(station.Plots.AIPlots[2].Hostile, 1) << "judged by the next snapshot";
  Snapshot({"Ajax31", "Cobra11", "Cobra12"});
  EXPECT_FALSE(Checked(0));
  EXPECT_TRUE(Checked(1));
  EXPECT_TRUE(Checked(2)) << "the same flight";
  PressCheck(1);
  EXPECT_FALSE(Checked(1));
  EXPECT_TRUE(Friends().empty());
}

TEST_F(ClientsWindow, SpaceKeyChangesTheCheckToo) {
  Connect();
  Snapshot({"Ajax31"});
  List().setFocus();
  List().setCurrentIndex(List().model()->index(0, 0));
  QTest::keyClick(&List(), Qt::Key_Space);
  EXPECT_EQ(Friends(), (Texts{"Ajax31    "}));
}

TEST_F(ClientsWindow, CheckThatTheNextSnapshotDoesNotBearOutIsTakenBack) {
  Connect();
  station.Plots.FriendlyList.Append("Cobra1");
  station.Plots.FriendlyList.Append("the Cobra1 flight");
  Snapshot({"Cobra11"});
  PressCheck(0);
  EXPECT_FALSE(Checked(0));
  EXPECT_EQ(Friends(), (Texts{"the Cobra1 flight"}));
  Snapshot({"Cobra11"});
  EXPECT_TRUE(Checked(0));
}

TEST_F(ClientsWindow, ResetUnchecksAllAndEmptiesTheFriendlyList) {
  Connect();
  Snapshot({"Ajax31", "Cobra11"});
  PressCheck(0);
  PressCheck(1);
  QTest::mouseClick(&Part<QPushButton>("Command2"), Qt::LeftButton);
  EXPECT_FALSE(Checked(0));
  EXPECT_FALSE(Checked(1));
  EXPECT_TRUE(Friends().empty());
}

TEST_F(ClientsWindow, ResetIsDisabledWhileFriendsAreAutomatic) {
  Connect();
  station.Plots.FriendlyList.Append("Ajax3");
  SetAutoFriends(true);
  Snapshot({"Ajax31"});
  EXPECT_FALSE(Part<QPushButton>("Command2").isEnabled());
  QTest::mouseClick(&Part<QPushButton>("Command2"), Qt::LeftButton);
  EXPECT_EQ(Friends(), (Texts{"Ajax3"}));
  EXPECT_TRUE(Checked(0));
  SetAutoFriends(false);
  EXPECT_TRUE(Part<QPushButton>("Command2").isEnabled());
}

TEST_F(ClientsWindow, ChecksCannotBeChangedWhileFriendsAreAutomatic) {
  Connect();
  station.Plots.FriendlyList.Append("Ajax3");
  SetAutoFriends(true);
  Snapshot({"Ajax31", "Cobra11"});
  PressCheck(0);
  PressCheck(1);
  EXPECT_TRUE(Checked(0) && !Checked(1));
  EXPECT_EQ(Friends(), (Texts{"Ajax3"}));
  const QSignalSpy changed(List().model(), &QAbstractItemModel::dataChanged);
  SetAutoFriends(false);
  EXPECT_EQ(changed.count(), 1) << "the rows are shown anew";
  PressCheck(1);
  EXPECT_EQ(Friends(), (Texts{"Ajax3", "Cobra11   "}));
}

}  // namespace
}  // namespace kestrel::shell
