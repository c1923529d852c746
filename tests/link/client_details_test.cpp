#include "link/client_details.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "base/failure.h"
#include "link/roster.h"
#include "link/session.h"

namespace kestrel::link {
namespace {

using base::Changed;

class ClientDetailsTest : public testing::Test {
 protected:
  ClientDetailsTest() {
    Add(10, "Adams");
    Add(20, "Baker");
    Add(30, "Clark");
  }
  void Add(int id, const std::string& name) {
    AddAWASCClient(std::to_string(id) + '\x1e' + name + "\x1einfo\x1eO", false, tables);
  }
  void ExpectReset() const {
    EXPECT_FALSE(session.Details.Enabled);
    EXPECT_EQ(session.Details.Caption, "USER:");
    EXPECT_EQ(session.Details.Label, "");
    EXPECT_EQ(session.Details.Color, 0U);
    EXPECT_FALSE(session.Details.ShowAllHistory);
    EXPECT_FALSE(session.Details.Hidden);
  }
  /// Every edit there is, with values that differ from those of a new client.
  Changed EditAll() {
    return SetCallsign("Viper 1", tables, session) | SetColor(0x112233, tables, session) |
           SetShowAllHistory(true, tables, session) | SetHidden(true, tables, session);
  }
  void ExpectEdited(const PlotRecord& client, bool edited) const {
    EXPECT_EQ(client.Label == "Viper 1", edited);
    EXPECT_EQ(client.Color == 0x112233U, edited);
    EXPECT_EQ(client.ShowAllHistory, edited);
    EXPECT_EQ(client.PlotVisible, !edited && client.ClientId != 0) << "the dummy is not";
  }

  Tables tables;
  SessionState session;
};

TEST(ClientKey, IsTheIdAndAnN) {
  EXPECT_EQ(ClientKey(7), "7N");
  EXPECT_EQ(ClientKey(-12), "-12N");
  EXPECT_EQ(ClientKey(std::numeric_limits<std::int16_t>::min()), "-32768N");
}

TEST(StatusPicture, IsOneTwoThreeOrNone) {
  const struct {
    const char* Status;
    int Picture;
  } cases[] = {{"O", 1}, {"X", 2}, {"-", 3}, {"", 0}, {"o", 0}, {"x", 0}, {"OO", 0}, {" O", 0}, {"--", 0}};
  for (const auto& each : cases) EXPECT_EQ(StatusPicture(each.Status), each.Picture) << each.Status;
}

TEST_F(ClientDetailsTest, SelectedClientFillsTheFields) {
  PlotRecord& client = tables.Clients[2];
  client.Label = "Viper 1";
  client.Color = 0xAABBCC;
  client.ShowAllHistory = true;
  client.PlotVisible = false;
  SelectPlot("20N", tables, session);
  EXPECT_EQ(session.SelectedPlot, 2U);
  EXPECT_TRUE(session.Details.Enabled);
  EXPECT_EQ(session.Details.Caption, "USER: Baker");
  EXPECT_EQ(session.Details.Label, "Viper 1");
  EXPECT_EQ(session.Details.Color, 0xAABBCCU);
  EXPECT_TRUE(session.Details.ShowAllHistory);
  EXPECT_TRUE(session.Details.Hidden);
}

TEST_F(ClientDetailsTest, KeyOfNobodyResetsTheFields) {
  SelectPlot("20N", tables, session);
  SelectPlot("21N", tables, session);
  EXPECT_EQ(session.SelectedPlot, 0U);
  ExpectReset();
}

TEST_F(ClientDetailsTest, KeyWithoutAnIdChangesNothing) {
  SelectPlot("20N", tables, session);
  for (const char* key : {"", "N", "xN", "99999N"}) {
    EXPECT_THROW(SelectPlot(key, tables, session), base::RuntimeFailure) << key;
    EXPECT_EQ(session.SelectedPlot, 2U);
    EXPECT_TRUE(session.Details.Enabled);
  }
}

TEST_F(ClientDetailsTest, SecondNodeOfAnIdSelectsTheFirstClient) {
  Add(20, "Twin");
  SelectPlot("20N", tables, session);
  EXPECT_EQ(session.SelectedPlot, 2U);
  EXPECT_EQ(session.Details.Caption, "USER: Baker");
}

TEST_F(ClientDetailsTest, PressInTheTreeSelectsNobody) {
  SelectPlot("20N", tables, session);
  DeselectPlot(session);
  EXPECT_EQ(session.SelectedPlot, 0U);
  ExpectReset();
}

TEST_F(ClientDetailsTest, EditsChangeTheSelectedClientOnly) {
  SelectPlot("20N", tables, session);
  EXPECT_EQ(EditAll(), Changed::Plots);
  ExpectEdited(tables.Clients[1], false);
  ExpectEdited(tables.Clients[2], true);
  ExpectEdited(tables.Clients[3], false);
  EXPECT_EQ(session.Details.Label, "Viper 1");
  EXPECT_EQ(session.Details.Color, 0x112233U);
  EXPECT_TRUE(session.Details.ShowAllHistory);
  EXPECT_TRUE(session.Details.Hidden);
  EXPECT_EQ(SetHidden(false, tables, session), Changed::Plots);
  EXPECT_TRUE(tables.Clients[2].PlotVisible);
  EXPECT_FALSE(session.Details.Hidden);
}

TEST_F(ClientDetailsTest, EditsWithNobodySelectedChangeNothing) {
  EXPECT_EQ(EditAll(), Changed::Nothing);
  for (std::size_t index = 0; index <= 3; ++index) ExpectEdited(tables.Clients[index], false);
  ExpectReset();
}

TEST_F(ClientDetailsTest, SelectedPlotStaysWhenAnEarlierClientLeaves) {
  tables.Clients[3].Color = 0x123456;
  tables.Clients[3].ShowAllHistory = true;
  tables.Clients[3].PlotVisible = false;
  SelectPlot("20N", tables, session);
  DelAWACSClient("10", tables);
  FollowSelectedPlot(tables, session);
  EXPECT_EQ(session.SelectedPlot, 2U) << "it is not moved";
  EXPECT_TRUE(session.Details.Enabled);
  EXPECT_EQ(session.Details.Caption, "USER: Clark") << "the fields show whom an edit changes";
  EXPECT_EQ(session.Details.Id, 30);
  EXPECT_EQ(session.Details.Label, "Airplane 30");
  EXPECT_EQ(session.Details.Color, 0x123456U);
  EXPECT_TRUE(session.Details.ShowAllHistory);
  EXPECT_TRUE(session.Details.Hidden);
  tables.Clients[2].ShowAllHistory = false;
  tables.Clients[2].PlotVisible = true;
  EXPECT_EQ(EditAll(), Changed::Plots);
  ExpectEdited(tables.Clients[1], false);
  ExpectEdited(tables.Clients[2], true);
  EXPECT_EQ(tables.Clients[2].Name, "Clark") << "edits go to the one that has taken the place";
}

TEST_F(ClientDetailsTest, SelectedPlotPastTheLastClientChangesNothing) {
  SelectPlot("30N", tables, session);
  DelAWACSClient("10", tables);
  ASSERT_EQ(session.SelectedPlot, tables.Clients.UpperBound() + 1);
  FollowSelectedPlot(tables, session);
  ExpectReset();
  EXPECT_EQ(EditAll(), Changed::Nothing);
  for (std::size_t index = 0; index <= tables.Clients.UpperBound(); ++index) {
    ExpectEdited(tables.Clients[index], false);
  }
  // Whoever takes the empty place later has not been selected.
  Add(40, "Dent");
  FollowSelectedPlot(tables, session);
  ExpectReset();
  EXPECT_EQ(EditAll(), Changed::Nothing);
  ExpectEdited(tables.Clients[3], false);
}

TEST_F(ClientDetailsTest, UpdateOfTheServerIsFollowed) {
  SelectPlot("20N", tables, session);
  SetCallsign("Viper 1", tables, session);
  UpdateClientStatus("20\x1eRenamed\x1einfo\x1eX", tables);
  FollowSelectedPlot(tables, session);
  EXPECT_EQ(session.Details.Caption, "USER: Renamed");
  EXPECT_EQ(session.Details.Label, "Airplane 20");
}

TEST_F(ClientDetailsTest, ResetFieldsAreNotFilledByFollowing) {
  SelectPlot("20N", tables, session);
  HidePlotControl(session.Details);
  FollowSelectedPlot(tables, session);
  ExpectReset();
}

TEST_F(ClientDetailsTest, ShowAndHidePlotAreBoundToTheTable) {
  EXPECT_EQ(HidePlot(1, tables), Changed::Plots);
  EXPECT_FALSE(tables.Clients[1].PlotVisible);
  EXPECT_EQ(ShowPlot(1, tables), Changed::Plots);
  EXPECT_TRUE(tables.Clients[1].PlotVisible);
  for (const std::size_t index : {std::size_t{0}, std::size_t{4}, std::numeric_limits<std::size_t>::max()}) {
    EXPECT_EQ(HidePlot(index, tables), Changed::Nothing) << index;
    EXPECT_EQ(ShowPlot(index, tables), Changed::Nothing) << index;
  }
  EXPECT_FALSE(tables.Clients[0].PlotVisible) << "the dummy";
}

TEST_F(ClientDetailsTest, CheckedNameGoesIntoTheFriendlyListAsItIs) {
  CheckFriendly("Viper11   ", true, tables);
  ASSERT_EQ(tables.FriendlyList.UpperBound(), 1U);
  EXPECT_EQ(tables.FriendlyList[1], "Viper11   ");
  CheckFriendly("Viper11   ", false, tables);
  EXPECT_TRUE(tables.FriendlyList.Empty());
}

TEST_F(ClientDetailsTest, UncheckedNameTakesItsFlightAlong) {
  for (const char* name : {"Viper1", "Viper", "Viper2", "Cobra1", "Viper1"}) CheckFriendly(name, true, tables);
  CheckFriendly("Viper1", false, tables);
  ASSERT_EQ(tables.FriendlyList.UpperBound(), 2U);
  EXPECT_EQ(tables.FriendlyList[1], "Viper2");
  EXPECT_EQ(tables.FriendlyList[2], "Cobra1");
}

TEST_F(ClientDetailsTest, FriendsAreResetOnlyWhileTheyAreTheControllers) {
  Options options;
  CheckFriendly("Viper1", true, tables);
  options.AUTOFRIENDS = true;
  EXPECT_FALSE(ResetFriends(options, tables));
  EXPECT_EQ(tables.FriendlyList.UpperBound(), 1U);
  options.AUTOFRIENDS = false;
  EXPECT_TRUE(ResetFriends(options, tables));
  EXPECT_TRUE(tables.FriendlyList.Empty());
}

}  // namespace
}  // namespace kestrel::link
