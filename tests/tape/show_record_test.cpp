#include "tape/show_record.h"

#include <gtest/gtest.h>

#include <string>

#include "link/client_details.h"
#include "link/plot_feed.h"

namespace kestrel::tape {
namespace {

constexpr base::Colour red = 255;

link::PlotRecord Client(std::int16_t id, const std::string& name, bool placed) {
  link::PlotRecord client;
  client.Id = id;
  client.ClientId = id;
  client.Name = name;
  client.Status = "O";
  client.Info = "F-16";
  client.X = 300;
  client.Y = 400;
  client.Altitude = 210;
  client.Speed = 450;
  client.Reserved1 = 7;
  client.Reserved2 = 8;
  if (placed) client.PosText = "0299.0000400.000";
  client.History.Append({299, 400});
  // What a tape stores and a replay does not use.
  client.Label = "recorded";
  client.Color = 0x112233;
  client.ShowAllHistory = true;
  client.PlotVisible = false;
  client.ShowLabel = false;
  return client;
}

link::AIPlotRecord Plot(const std::string& name, double bearing, double range) {
  link::AIPlotRecord plot;
  plot.Name = name;
  plot.Bearing = bearing;
  plot.Range = range;
  plot.Altitude = 350;
  plot.X = -1;
  plot.Y = -1;
  plot.Hostile = 9;
  return plot;
}

class ShownRecord : public testing::Test {
 protected:
  ShownRecord() { session.Bull = {100, 200}; }

  void Show(TapeRecord record) { ShowTapeRecord(std::move(record), red, tables, session); }
  static TapeRecord WithClients(std::initializer_list<link::PlotRecord> clients) {
    TapeRecord record;
    for (const link::PlotRecord& client : clients) record.Clients.Append(client);
    return record;
  }
  static TapeRecord WithPlots(std::initializer_list<link::AIPlotRecord> plots) {
    TapeRecord record;
    for (const link::AIPlotRecord& plot : plots) record.AI.Append(plot);
    return record;
  }

  link::Tables tables;
  link::SessionState session;
};

TEST_F(ShownRecord, AircraftArePlacedAfreshByTheBullseyeInForceAndTheFriendsOfNow) {
  tables.FriendlyList.Append("Viper");
  Show(WithPlots({Plot("Viper1    ", 90, 10), Plot("Bandit2   ", 180, 20)}));
  ASSERT_EQ(tables.AIPlots.UpperBound(), 2u);
  EXPECT_FLOAT_EQ(tables.AIPlots[1].X, 118.52F);
  EXPECT_FLOAT_EQ(tables.AIPlots[1].Y, 200);
  EXPECT_EQ(tables.AIPlots[1].Hostile, 0);
  EXPECT_EQ(tables.AIPlots[1].Altitude, 350);
  EXPECT_FLOAT_EQ(tables.AIPlots[2].X, 100);
  EXPECT_FLOAT_EQ(tables.AIPlots[2].Y, 237.04F);
  EXPECT_EQ(tables.AIPlots[2].Hostile, 1);
}

TEST_F(ShownRecord, AircraftStandInTheOrderOfTheTape) {
  Show(WithPlots({Plot("Zulu1", 0, 0), Plot("Alpha1", 0, 0)}));
  EXPECT_EQ(tables.AIPlots[1].Name, "Zulu1");
  EXPECT_EQ(tables.AIPlots[2].Name, "Alpha1");
}

TEST_F(ShownRecord, AircraftAreWhatTheFeedMakesOfTheSameSnapshot) {
  tables.FriendlyList.Append("Viper");
  const std::string feed = "Bandit2   18002035Viper1    09001021Viper2    271  3 9";
  link::Tables live;
  live.FriendlyList = tables.FriendlyList;
  link::ParseAI(feed, session.Bull, live);
  TapeRecord record;
  record.AI = live.AIPlots;
  for (link::AIPlotRecord& plot : record.AI.Live()) plot.X = plot.Y = 0;
  Show(std::move(record));
  ASSERT_EQ(tables.AIPlots.UpperBound(), 3u);
  for (std::size_t n = 1; n <= 3; ++n) {
    EXPECT_FLOAT_EQ(tables.AIPlots[n].X, live.AIPlots[n].X);
    EXPECT_FLOAT_EQ(tables.AIPlots[n].Y, live.AIPlots[n].Y);
    EXPECT_EQ(tables.AIPlots[n].Hostile, live.AIPlots[n].Hostile);
  }
}

TEST_F(ShownRecord, EachTrailDotIsThereTwice) {
  tables.FriendlyList.Append("Viper");
  Show(WithPlots({Plot("Viper1", 90, 10), Plot("Bandit2", 180, 20)}));
  EXPECT_TRUE(tables.AIHistory.Empty()) << "the dots are those of the record before";
  Show(WithPlots({}));
  ASSERT_EQ(tables.AIHistory.UpperBound(), 4u);
  for (const std::size_t n : {1u, 3u}) {
    EXPECT_FLOAT_EQ(tables.AIHistory[n].X, 118.52F);
    EXPECT_EQ(tables.AIHistory[n].Age, 1);
    EXPECT_EQ(tables.AIHistory[n].Color, link::FriendlyHistoryColour);
  }
  for (const std::size_t n : {2u, 4u}) EXPECT_EQ(tables.AIHistory[n].Color, red);
  for (int age = 2; age < link::DroppedAge; ++age) Show(WithPlots({}));
  EXPECT_EQ(tables.AIHistory.UpperBound(), 4u);
  EXPECT_EQ(tables.AIHistory[4].Age, 6);
  Show(WithPlots({}));
  EXPECT_TRUE(tables.AIHistory.Empty());
}

TEST_F(ShownRecord, EverythingOfAClientButItsLooksComesFromTheTape) {
  Show(WithClients({Client(5, "Smith", true)}));
  ASSERT_EQ(tables.Clients.UpperBound(), 1u);
  const link::PlotRecord& client = tables.Clients[1];
  EXPECT_EQ(client.Id, 5);
  EXPECT_EQ(client.ClientId, 5);
  EXPECT_EQ(client.Name, "Smith");
  EXPECT_EQ(client.Status, "O");
  EXPECT_EQ(client.Info, "F-16");
  EXPECT_EQ(client.X, 300);
  EXPECT_EQ(client.Y, 400);
  EXPECT_EQ(client.PosText, "0299.0000400.000");
  EXPECT_EQ(client.Altitude, 210);
  EXPECT_EQ(client.Speed, 450);
  EXPECT_EQ(client.Reserved1, 7u);
  EXPECT_EQ(client.Reserved2, 8u);
  ASSERT_EQ(client.History.UpperBound(), 1u);
  EXPECT_EQ(client.History[1].X, 299);
  EXPECT_EQ(tables.FindClient(5), 1u);
}

TEST_F(ShownRecord, TheFirstOneTakesNothingFromTheTablesBefore) {
  tables.Clients[0].Label = FirstTime;
  link::PlotRecord before = Client(9, "Before", true);
  before.Label = "of another session";
  tables.Clients.Append(before);
  Show(WithClients({Client(5, "Smith", true)}));
  const link::PlotRecord& client = tables.Clients[1];
  EXPECT_EQ(client.Label, "Airplane1") << "no blank before the number";
  EXPECT_EQ(client.Color, 0u);
  EXPECT_TRUE(client.ShowLabel);
  EXPECT_TRUE(client.PlotVisible);
  EXPECT_FALSE(client.ShowAllHistory);
  EXPECT_EQ(tables.Clients[0].Label, "");
}

TEST_F(ShownRecord, WhatThePersonHasSetStaysWithItsSlot) {
  tables.Clients[0].Label = FirstTime;
  Show(WithClients({Client(5, "Smith", true), Client(6, "Jones", true)}));
  link::PlotRecord& edited = tables.Clients[2];
  edited.Label = "Eagle 1";
  edited.Color = 0x00FF00;
  edited.ShowLabel = false;
  edited.PlotVisible = false;
  edited.ShowAllHistory = true;
  // Another client has moved up into the slot: this stands.
  Show(WithClients({Client(5, "Smith", true), Client(7, "Brown", true)}));
  EXPECT_EQ(tables.Clients[1].Label, "Airplane1");
  const link::PlotRecord& kept = tables.Clients[2];
  EXPECT_EQ(kept.Name, "Brown");
  EXPECT_EQ(kept.Label, "Eagle 1");
  EXPECT_EQ(kept.Color, 0x00FF00u);
  EXPECT_FALSE(kept.ShowLabel);
  EXPECT_FALSE(kept.PlotVisible);
  EXPECT_TRUE(kept.ShowAllHistory);
}

TEST_F(ShownRecord, AClientWithoutAPositionGetsTheUsualLooksEachTime) {
  Show(WithClients({Client(5, "Smith", false)}));
  tables.Clients[1].Label = "Eagle 1";
  Show(WithClients({Client(5, "Smith", false)}));
  EXPECT_EQ(tables.Clients[1].Label, "Airplane1");
}

TEST_F(ShownRecord, AClientInASlotThatWasNotThereGetsTheUsualLooks) {
  Show(WithClients({Client(5, "Smith", true)}));
  Show(WithClients({Client(5, "Smith", true), Client(6, "Jones", true), Client(7, "Brown", true)}));
  EXPECT_EQ(tables.Clients[3].Label, "Airplane3");
  EXPECT_TRUE(tables.Clients[3].PlotVisible);
  EXPECT_EQ(tables.FindClient(7), 3u);
}

TEST_F(ShownRecord, DetailsStayWhileTheirClientIsThereAndAreHiddenWhenItIsNot) {
  Show(WithClients({Client(5, "Smith", true), Client(6, "Jones", true)}));
  link::SelectPlot("6N", tables, session);
  Show(WithClients({Client(6, "Jones", true)}));
  EXPECT_TRUE(session.Details.Enabled);
  EXPECT_EQ(session.Details.Id, 6);
  Show(WithClients({Client(5, "Smith", true)}));
  EXPECT_FALSE(session.Details.Enabled);
  EXPECT_EQ(session.Details.Caption, "USER:");
}

TEST_F(ShownRecord, WhatThePersonHasSetIsGoneAfterARecordWithoutItsSlot) {
  Show(WithClients({Client(5, "Smith", true), Client(6, "Jones", true)}));
  tables.Clients[1].Label = "Eagle 1";
  tables.Clients[2].Label = "Eagle 2";
  Show(WithClients({Client(5, "Smith", true)}));
  Show(WithClients({Client(5, "Smith", true), Client(6, "Jones", true)}));
  EXPECT_EQ(tables.Clients[1].Label, "Eagle 1");
  EXPECT_EQ(tables.Clients[2].Label, "Airplane2");
}

TEST_F(ShownRecord, EditsReachTheClientOfTheDetailsWhateverHisSlot) {
  Show(WithClients({Client(5, "Smith", true), Client(6, "Jones", true), Client(7, "Brown", true)}));
  tables.Clients[1].Label = "Eagle 1";
  link::SelectPlot("6N", tables, session);
  // Smith has left, and Brown stands where Jones was.
  Show(WithClients({Client(6, "Jones", true), Client(7, "Brown", true)}));
  EXPECT_EQ(session.SelectedPlot, 1u);
  link::FollowSelectedPlot(tables, session);
  EXPECT_EQ(session.Details.Caption, "USER: Jones");
  EXPECT_EQ(session.Details.Label, "Eagle 1") << "looks stay with the slot";
  link::SetCallsign("Viper 1", tables, session);
  EXPECT_EQ(tables.Clients[1].Label, "Viper 1");
  EXPECT_EQ(tables.Clients[2].Label, "Airplane2");
  Show(WithClients({Client(7, "Brown", true)}));
  EXPECT_EQ(session.SelectedPlot, 0u);
  EXPECT_EQ(link::SetCallsign("nobody's", tables, session), base::Changed::Nothing);
}

TEST_F(ShownRecord, NumbersThatAreNoneDoNoHarm) {
  Show(WithPlots({Plot("Viper1", std::numeric_limits<double>::quiet_NaN(), 1e300),
                  Plot("Viper2", 1e300, std::numeric_limits<double>::infinity())}));
  EXPECT_EQ(tables.AIPlots.UpperBound(), 2u);
}

}  // namespace
}  // namespace kestrel::tape
