#include "link/roster.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"

namespace kestrel::link {
namespace {

std::vector<std::string> Friends(const Tables& tables) {
  const auto live = tables.FriendlyList.Live();
  return {live.begin(), live.end()};
}

TEST(Roster, NewClientHasTheValuesOfItsMessage) {
  Tables tables;
  AddAWASCClient("-12\x1e  Smith \x1e in fo \x1eO", false, tables);
  ASSERT_EQ(tables.Clients.UpperBound(), 1u);
  const PlotRecord& client = tables.Clients[1];
  EXPECT_EQ(client.Id, -12);
  EXPECT_EQ(client.ClientId, -12);
  EXPECT_EQ(client.Label, "Airplane -12");
  EXPECT_EQ(client.Name, "Smith");
  EXPECT_EQ(client.Info, " in fo ");
  EXPECT_EQ(client.Status, "O");
  EXPECT_EQ(client.X, 0);
  EXPECT_EQ(client.Y, 0);
  EXPECT_EQ(client.PosText, "");
  EXPECT_EQ(client.Color, 0u);
  EXPECT_TRUE(client.PlotVisible);
  EXPECT_FALSE(client.ShowAllHistory);
  EXPECT_TRUE(client.History.Empty());
  EXPECT_FALSE(client.ShowLabel);
  AddAWASCClient("3\x1e\x1e\x1e", true, tables);
  EXPECT_TRUE(tables.Clients[2].ShowLabel);
}

TEST(Roster, SecondClientOfTheSameIdIsAdded) {
  Tables tables;
  AddAWASCClient(
      "5\x1e"
      "First\x1e\x1eO",
      true, tables);
  AddAWASCClient("5\x1eSecond\x1e\x1eX", true, tables);
  ASSERT_EQ(tables.Clients.UpperBound(), 2u);
  ASSERT_TRUE(
      UpdateClientStatus("5\x1e"
                         "Changed\x1e\x1e-",
                         tables));
  EXPECT_EQ(tables.Clients[1].Name, "Changed");
  EXPECT_EQ(tables.Clients[2].Name, "Second");
  EXPECT_EQ(DelAWACSClient("5", tables), 1u);
  EXPECT_EQ(tables.Clients[1].Name, "Second");
  EXPECT_EQ(DelAWACSClient("5", tables), 1u);
  EXPECT_TRUE(tables.Clients.Empty());
}

TEST(Roster, FullTableTakesNoFurtherClient) {
  Tables tables;
  for (std::size_t n = 0; n < MaxClients; ++n)
    AddAWASCClient(
        "1\x1e"
        "A\x1e"
        "I\x1eO",
        true, tables);
  EXPECT_THROW(AddAWASCClient("2\x1e"
                              "B\x1e"
                              "I\x1eO",
                              true, tables),
               base::RuntimeFailure);
  EXPECT_EQ(tables.Clients.UpperBound(), MaxClients);
  EXPECT_EQ(tables.FindClient(2), 0U);
}

TEST(Roster, UpdateOverwritesAnEditedCallsignOnly) {
  Tables tables;
  AddAWASCClient(
      "5\x1e"
      "A\x1e"
      "B\x1eO",
      true, tables);
  PlotRecord& client = tables.Clients[1];
  client.Label = "Edited";
  client.X = 7;
  client.Color = 255;
  client.History.Append({1, 2});
  ASSERT_TRUE(
      UpdateClientStatus("5\x1e C \x1e"
                         "D\x1eX\x1emore\x1e",
                         tables));
  EXPECT_EQ(client.Label, "Airplane 5");
  EXPECT_EQ(client.Name, "C");
  EXPECT_EQ(client.Info, "D");
  EXPECT_EQ(client.Status, "X");
  EXPECT_EQ(client.X, 7);
  EXPECT_EQ(client.Color, 255u);
  EXPECT_EQ(client.History.UpperBound(), 1u);
}

TEST(Roster, UpdateOfAnUnknownIdChangesNothing) {
  Tables tables;
  AddAWASCClient(
      "5\x1e"
      "A\x1e"
      "B\x1eO",
      true, tables);
  EXPECT_FALSE(
      UpdateClientStatus("6\x1e"
                         "C\x1e"
                         "D\x1eX",
                         tables));
  EXPECT_EQ(tables.Clients[0].Name, "");
  EXPECT_EQ(tables.Clients[1].Name, "A");
}

TEST(Roster, DeletionKeepsTheOrder) {
  Tables tables;
  for (const char* id : {"1", "2", "3", "4"}) AddAWASCClient(std::string(id) + "\x1e\x1e\x1e", true, tables);
  EXPECT_EQ(DelAWACSClient("2", tables), 2u);
  EXPECT_EQ(DelAWACSClient("9", tables), 0u);
  ASSERT_EQ(tables.Clients.UpperBound(), 3u);
  EXPECT_EQ(tables.Clients[1].Id, 1);
  EXPECT_EQ(tables.Clients[2].Id, 3);
  EXPECT_EQ(tables.Clients[3].Id, 4);
  EXPECT_EQ(tables.FindClient(4), 3u);
}

TEST(Roster, BadMessagesChangeNothing) {
  const std::vector<std::string> bad = {"",
                                        "5",
                                        "5\x1e"
                                        "a",
                                        "5\x1e"
                                        "a\x1e"
                                        "b",
                                        "x\x1e"
                                        "a\x1e"
                                        "b\x1eO",
                                        "\x1e"
                                        "a\x1e"
                                        "b\x1eO",
                                        "32768\x1e"
                                        "a\x1e"
                                        "b\x1eO",
                                        "-32769\x1e"
                                        "a\x1e"
                                        "b\x1eO",
                                        "5.5\x1e"
                                        "a\x1e"
                                        "b\x1eO",
                                        "1e1\x1e"
                                        "a\x1e"
                                        "b\x1eO",
                                        "99999999999999999999\x1e"
                                        "a\x1e"
                                        "b\x1eO",
                                        "nan\x1e"
                                        "a\x1e"
                                        "b\x1eO"};
  Tables tables;
  AddAWASCClient(
      "5\x1e"
      "A\x1e"
      "B\x1eO",
      true, tables);
  for (const std::string& data : bad) {
    EXPECT_THROW(AddAWASCClient(data, true, tables), base::RuntimeFailure) << data;
    EXPECT_THROW(UpdateClientStatus(data, tables), base::RuntimeFailure) << data;
  }
  for (const char* data : {"", "x", "32768", "5 5", "\x1e", "5\x1e",
                           "5\x1e"
                           "a"}) {
    EXPECT_THROW(DelAWACSClient(data, tables), base::RuntimeFailure) << data;
  }
  ASSERT_EQ(tables.Clients.UpperBound(), 1u);
  EXPECT_EQ(tables.Clients[1].Name, "A");
}

TEST(Roster, RemovingAFriendRemovesItsFlightToo) {
  struct Case {
    std::string Removed;
    std::vector<std::string> Left;
  };
  const std::vector<Case> cases = {
      {"Viper1", {"viper1", "Vipe", "Viper12", "", " Viper1", "Viper1    ", "Viper1 "}},
      {"Viper1    ", {"Viper1", "viper1", "Vipe", "Viper12", "", " Viper1", "Viper1 "}},
      {"Viper12", {"Viper", "viper1", "Vipe", "", " Viper1", "Viper1    ", "Viper1 "}},
      {"7", {"Viper1", "Viper", "viper1", "Vipe", "Viper12", " Viper1", "Viper1    ", "Viper1 "}},
      {"ViperX", {"Viper1", "Viper", "viper1", "Vipe", "Viper12", "", " Viper1", "Viper1    ", "Viper1 "}},
  };
  for (const Case& c : cases) {
    Tables tables;
    for (const char* name : {"Viper1", "Viper", "viper1", "Vipe", "Viper12", "", " Viper1", "Viper1    ", "Viper1 "}) {
      AddToFriendlyList(name, tables);
    }
    DeleteFromFriendlyList(c.Removed, tables);
    EXPECT_EQ(Friends(tables), c.Left) << c.Removed;
  }
}

TEST(Roster, LabelFlagsAreSetOnLiveRecordsAlone) {
  Tables tables;
  AddAWASCClient("10\x1eName\x1e\x1eO", false, tables);
  AddAWASCClient("20\x1eName\x1e\x1eO", false, tables);
  tables.Clients[2].ClientId = 0;
  ShowLabels(true, tables);
  EXPECT_TRUE(tables.Clients[1].ShowLabel);
  EXPECT_FALSE(tables.Clients[2].ShowLabel);
  ShowLabels(false, tables);
  EXPECT_FALSE(tables.Clients[1].ShowLabel);
}

}  // namespace
}  // namespace kestrel::link
