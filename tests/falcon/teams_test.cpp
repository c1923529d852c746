#include "falcon/teams.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "campaign_writer.h"

namespace kestrel::falcon {
namespace {

using test::TeamPlan;

CampaignInfo Info(int version) {
  CampaignInfo info;
  info.DataVersion = version;
  for (std::size_t n = 0; n < Countries; ++n) info.Names[n].Name = "Country " + std::to_string(n);
  return info;
}

/// Eight teams; the second plays in the third, which is active, and the last two do not play.
std::vector<TeamPlan> EightTeams() {
  std::vector<TeamPlan> teams;
  for (int n = 0; n < 8; ++n) {
    teams.push_back({.Number = n, .Side = n, .Flags = n < 6 ? 5 : 4, .Name = "Team " + std::to_string(n)});
  }
  teams[1].Side = 2;
  teams[1].Flags = 6;
  teams[2].Motto = "Ever ready";
  teams[2].Stance = {3, 1, 1, 1, 4, 4, 5, 3};
  teams[3].Airbases = 2;
  teams[3].Requests = 3;
  return teams;
}

TEST(Teams, EveryVersionIsReadToItsEnd) {
  for (const int version : test::KnownVersions) {
    SCOPED_TRACE(version);
    const std::size_t missions = test::MissionKinds(version);
    const TeamList list = ReadTeams(test::TeamPiece(EightTeams(), missions), Info(version));
    EXPECT_EQ(list.Trouble, "");
    EXPECT_EQ(list.Told, 8U);
    EXPECT_EQ(list.Missions, missions);
    const Country& third = list.Teams[2];
    EXPECT_EQ(third.Name, "Team 2");
    EXPECT_EQ(third.Motto, "Ever ready");
    EXPECT_EQ(third.Side, 2);
    EXPECT_TRUE(third.Active);
    EXPECT_EQ(third.Flag, 22);
    EXPECT_EQ(third.Colour, 32);
    EXPECT_EQ(third.Stance, (std::array<std::int16_t, 8>{3, 1, 1, 1, 4, 4, 5, 3}));
    EXPECT_EQ(list.Teams[1].Side, 2);
    EXPECT_FALSE(list.Teams[1].Active);
    EXPECT_EQ(list.Teams[7].Name, "Team 7");
  }
}

TEST(Teams, CountryPlaysAsATeamOrInOne) {
  const TeamList list = ReadTeams(test::TeamPiece(EightTeams(), 50), Info(103));
  EXPECT_TRUE(IsInPlay(list.Teams, 1)) << "in the third";
  EXPECT_TRUE(IsInPlay(list.Teams, 2));
  EXPECT_FALSE(IsInPlay(list.Teams, 7));
}

TEST(Teams, ThereMayBeFewerThanEight) {
  std::vector<TeamPlan> three = EightTeams();
  three.resize(3);
  three[2].Number = 6;
  const TeamList list = ReadTeams(test::TeamPiece(three, 41), Info(73));
  EXPECT_EQ(list.Trouble, "");
  EXPECT_EQ(list.Told, 3U);
  EXPECT_EQ(list.Teams[6].Name, "Team 2") << "each says which it is";
  EXPECT_EQ(list.Teams[2].Name, "") << "no name, though the description has one";
  EXPECT_EQ(list.Teams[2].Side, 2);
}

TEST(Teams, AnyCountOfMissionsIsFound) {
  for (const std::size_t missions : {40U, 47U, 64U}) {
    const TeamList list = ReadTeams(test::TeamPiece(EightTeams(), missions), Info(109));
    EXPECT_EQ(list.Trouble, "") << missions;
    EXPECT_EQ(list.Missions, missions);
    EXPECT_EQ(list.Teams[5].Name, "Team 5");
  }
}

TEST(Teams, UnusualVehiclesDoNotMatterWhenTheNamesAreText) {
  std::string piece = test::TeamPiece(EightTeams(), 50);
  for (std::size_t at = piece.find("\x10\x10\x10\x10"); at != std::string::npos; at = piece.find("\x10\x10\x10\x10")) {
    piece.replace(at, 4, "\x08\x08\x08\x08");
  }
  const TeamList list = ReadTeams(piece, Info(103));
  EXPECT_EQ(list.Trouble, "");
  EXPECT_EQ(list.Teams[5].Name, "Team 5");
}

TEST(Teams, NamesThatAreNoTextAreNotTaken) {
  std::vector<TeamPlan> teams = EightTeams();
  teams[4].Name = "\x01\x02";
  const TeamList list = ReadTeams(test::TeamPiece(teams, 50), Info(103));
  EXPECT_EQ(list.Trouble, "teams: its names are no text; 7 were recognised");
  EXPECT_EQ(list.Teams[4].Name, "Country 4");
  EXPECT_EQ(list.Teams[5].Name, "Team 5");
}

TEST(Teams, TypeOfATeamIsThatOfItsClassTable) {
  std::string piece = test::TeamPiece(EightTeams(), 50);
  piece.replace(2 + 8, 2, test::Bytes2(1234));
  EXPECT_EQ(ReadTeams(piece, Info(103)).Trouble, "");
}

TEST(Teams, SideThatThereIsNotIsItsOwn) {
  std::vector<TeamPlan> teams = EightTeams();
  teams[4].Side = 200;
  EXPECT_EQ(ReadTeams(test::TeamPiece(teams, 50), Info(103)).Teams[4].Side, 4);
}

TEST(Teams, MoreThanEightAreLeftOut) {
  std::vector<TeamPlan> teams = EightTeams();
  teams.push_back({.Number = 3, .Name = "Ninth"});
  teams[7].Number = 99;
  const TeamList list = ReadTeams(test::TeamPiece(teams, 50), Info(103));
  EXPECT_EQ(list.Told, 9U);
  EXPECT_EQ(list.Teams[3].Name, "Team 3");
  EXPECT_EQ(list.Teams[7].Name, "");
}

TEST(Teams, DescriptionNamesThemWithoutThePiece) {
  const TeamList list = ReadTeams(std::nullopt, Info(103));
  EXPECT_EQ(list.Teams[5].Name, "Country 5");
  EXPECT_EQ(list.Teams[5].Side, 5);
  EXPECT_EQ(list.Trouble, "it holds no teams");
}

TEST(Teams, DamagedPieceGivesWhatCanBeRecognised) {
  // A byte too many at the end: no size walks to the end.
  const TeamList list = ReadTeams(test::TeamPiece(EightTeams(), 50) + "x", Info(103));
  EXPECT_EQ(list.Trouble, "teams: bytes follow the last team; 8 were recognised");
  EXPECT_EQ(list.Teams[2].Name, "Team 2");
  EXPECT_EQ(list.Teams[1].Side, 2);
  EXPECT_TRUE(list.Teams[2].Active);
}

TEST(Teams, PieceCutAnywhereIsTold) {
  std::vector<TeamPlan> two = EightTeams();
  two.resize(2);
  const std::string piece = test::TeamPiece(two, 50);
  for (std::size_t length = 0; length < piece.size(); ++length) {
    const TeamList list = ReadTeams(piece.substr(0, length), Info(103));
    ASSERT_NE(list.Trouble, "") << length;
    ASSERT_FALSE(list.Teams[0].Name.empty()) << length;
    ASSERT_EQ(list.Teams[5].Name, "Country 5") << length;
  }
}

TEST(Teams, CountsThatLieAreTold) {
  const std::string good = test::TeamPiece(EightTeams(), 50);
  for (const int lie : {-1, 7, 9, 0x7FFF}) {
    std::string bad = good;
    bad.replace(0, 2, test::Bytes2(lie));
    EXPECT_NE(ReadTeams(bad, Info(103)).Trouble, "") << lie;
  }
  EXPECT_EQ(ReadTeams(test::Bytes2(0), Info(103)).Trouble, "") << "none, and nothing behind";
  EXPECT_NE(ReadTeams(test::Bytes2(-1), Info(103)).Trouble, "");
  // The count of requests of the first team: behind 748 bytes of the team, 13 + 8 of the manager's and an empty list.
  std::string bad = good;
  const std::size_t requests = 2 + 748 + 13 + 2 + 2 + 2 + 1 + 1 + 1;
  ASSERT_EQ(good.substr(requests, 2), test::Bytes2(0));
  bad.replace(requests, 2, test::Bytes2(-1));
  EXPECT_NE(ReadTeams(bad, Info(103)).Trouble, "");
}

}  // namespace
}  // namespace kestrel::falcon
