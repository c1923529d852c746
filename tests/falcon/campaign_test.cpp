#include "falcon/campaign.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/temp_folder.h"
#include "campaign_writer.h"

namespace kestrel::falcon {
namespace {

using test::WorldPlan;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using States = std::vector<FeatureState>;

std::vector<test::TeamPlan> EightTeams() {
  std::vector<test::TeamPlan> teams;
  for (int n = 0; n < 8; ++n) teams.push_back({.Number = n, .Side = n, .Name = "Team " + std::to_string(n)});
  return teams;
}

/// A campaign that holds its objectives and names itself, as campaigns do.
WorldPlan Campaign(int version) {
  return {.Place = {.Version = version, .X = 310, .Y = 650},
          .Scenario = "Save0",
          .SaveName = "save0",
          .ShownName = "Red Herring",
          .Teams = EightTeams(),
          .Objectives = test::SomeObjectives(version)};
}

/// A mission of the scenario "te_new" in which the airbase has changed its owner and the bridge is destroyed.
WorldPlan Mission(int version) {
  return {.Place = {.Version = version},
          .Teams = EightTeams(),
          .Deltas = {{.Id = 501, .Owner = 6, .Status = std::string("\x30\x08", 2)},
                     {.Id = 502, .Owner = 2, .Status = "\x03"}}};
}

class CampaignFiles : public testing::Test {
 protected:
  void Write(const std::string& name, const std::string& bytes) { test::WriteBytes(folder / name, bytes); }
  void Write(const std::string& name, const WorldPlan& plan) { Write(name, test::WorldBytes(plan)); }
  World Load(const std::string& name, const FeatureCounts& features = {}) {
    return LoadCampaign(folder / name, folder.Path(), features);
  }
  std::string FailureOf(const std::string& name) {
    try {
      Load(name);
    } catch (const base::RuntimeFailure& failure) {
      return failure.what();
    }
    return "";
  }
  /// Names of objectives: "Nowhere", "Uijongbu", "", "Kunsan".
  void WriteNames(const std::string& stem) {
    std::string index = test::Bytes2(5);
    for (const int offset : {0, 7, 15, 15, 21}) index += test::Bytes2(offset);
    Write(stem + ".idx", index);
    Write(stem + ".wch", "NowhereUijongbuKunsan");
  }
  test::TempFolder folder;
};

TEST_F(CampaignFiles, CampaignOfEveryVersionIsRead) {
  WriteNames("Korea");
  for (const int version : test::KnownVersions) {
    SCOPED_TRACE(version);
    Write("Save0.cam", Campaign(version));
    const World world = Load("Save0.cam");
    EXPECT_THAT(world.Notes, ElementsAre());
    EXPECT_EQ(world.DataVersion, version);
    EXPECT_EQ(world.Theater, "korea");
    EXPECT_EQ(world.Scenario, "Save0");
    EXPECT_EQ(world.SaveName, "save0");
    EXPECT_EQ(world.ShownName, "Red Herring");
    EXPECT_EQ(world.Width, 1024);
    EXPECT_EQ(world.Height, 1024);
    EXPECT_EQ(world.BullseyeX, 310);
    EXPECT_EQ(world.BullseyeY, 650);
    EXPECT_EQ(world.Teams[6].Name, "Team 6");
    ASSERT_EQ(world.Objectives.size(), 3U);
    EXPECT_EQ(world.Objectives[0].Owner, 2);
    EXPECT_EQ(world.ObjectivesFrom, folder / "Save0.cam");
    EXPECT_FALSE(world.NamesMissing);
    const ObjectiveNames names(world);
    EXPECT_EQ(names.Of(world.Objectives[0], "Airbase"), version >= 108 ? "Kunsan Airbase" : "Kunsan");
    EXPECT_EQ(names.Of(world.Objectives[1], "Bridge"), version >= 108 ? std::string(79, 'n') : "Kunsan Bridge");
    EXPECT_EQ(names.Of(world.Objectives[2], "Town"), version >= 108 ? std::string(80, 'z') : "");
  }
}

TEST_F(CampaignFiles, MissionTakesTheObjectivesOfItsScenario) {
  WriteNames("korea");
  for (const int version : test::KnownVersions) {
    SCOPED_TRACE(version);
    // Each with its own version: a scenario is older than its missions.
    Write("TE_NEW.TAC", Campaign(73));
    Write("mission.trn", Mission(version));
    const World world = Load("mission.trn");
    EXPECT_THAT(world.Notes, ElementsAre());
    EXPECT_EQ(world.DataVersion, version);
    EXPECT_TRUE(std::filesystem::equivalent(world.ObjectivesFrom, folder / "TE_NEW.TAC"));
    EXPECT_EQ(world.BullseyeX, 390) << "the mission's own";
    EXPECT_EQ(world.SaveName, "mission");
    EXPECT_EQ(world.Objectives.at(0).Owner, 6);
    EXPECT_EQ(world.Objectives.at(0).FirstOwner, 6);
    EXPECT_EQ(world.Objectives.at(1).Owner, 2);
    EXPECT_EQ(world.Objectives.at(1).States.at(0), 3);
  }
}

TEST_F(CampaignFiles, PackedChangesFitStatesOfEitherForm) {
  Write("te_new.tac", Campaign(103));
  WorldPlan mission = Mission(103);
  mission.Deltas[0].Status = std::string("\x02\x04", 2);
  Write("mission.tac", mission);
  EXPECT_EQ(Load("mission.tac").Objectives.at(0).States, (States{2, 0, 0, 0, 0, 1}));
  const FeatureCounts six = [](std::uint16_t index) { return std::optional<std::size_t>(index == 333 ? 6 : 1); };
  Write("te_new.tac", Campaign(63));
  EXPECT_EQ(Load("mission.tac", six).Objectives.at(0).States, (States{2, 0, 0, 0, 0, 1}));
}

TEST_F(CampaignFiles, ScenarioMayHaveTheOtherSuffix) {
  Write("te_new.cam", Campaign(103));
  Write("mission.tac", Mission(103));
  EXPECT_EQ(Load("mission.tac").ObjectivesFrom, folder / "te_new.cam");
  // Missions look for missions first, campaigns for campaigns.
  Write("te_new.tac", Campaign(103));
  Write("mission.cam", Mission(103));
  EXPECT_EQ(Load("mission.tac").ObjectivesFrom, folder / "te_new.tac");
  EXPECT_EQ(Load("mission.cam").ObjectivesFrom, folder / "te_new.cam");
}

TEST_F(CampaignFiles, ScenarioWithoutObjectivesIsNone) {
  Write("te_new.tac", Mission(103));
  Write("te_new.cam", Campaign(103));
  Write("mission.tac", Mission(103));
  EXPECT_EQ(Load("mission.tac").ObjectivesFrom, folder / "te_new.cam");
}

TEST_F(CampaignFiles, OwnObjectivesGoBeforeTheScenario) {
  Write("te_new.tac", Campaign(103));
  WorldPlan own = Campaign(103);
  own.Scenario = "te_new";
  own.Objectives.resize(1);
  own.Deltas = {{.Id = 501, .Owner = 5, .Status = std::string(2, '\0')}};
  Write("save1.cam", own);
  const World world = Load("save1.cam");
  EXPECT_EQ(world.ObjectivesFrom, folder / "save1.cam");
  EXPECT_EQ(world.Objectives.size(), 1U);
  EXPECT_EQ(world.Objectives.at(0).Owner, 5);
}

TEST_F(CampaignFiles, EmptyPieceOfObjectivesIsNone) {
  Write("te_new.tac", Campaign(103));
  for (const std::string& empty : {std::string(), test::ObjectivePiece("", 0)}) {
    test::Pieces pieces = test::WorldPieces(Mission(103));
    pieces.emplace_back("mission.obj", empty);
    Write("mission.tac", test::Container(pieces));
    EXPECT_EQ(Load("mission.tac").ObjectivesFrom, folder / "te_new.tac") << empty.size();
  }
}

TEST_F(CampaignFiles, FileThatNamesItselfHasNoOtherObjectives) {
  WorldPlan mission = Mission(103);
  for (const std::string scenario : {"mission", "MISSION", "nothing", "", "../mission", "/mission", "c:mission", "."}) {
    SCOPED_TRACE(scenario);
    mission.Scenario = scenario;
    Write("mission.cam", mission);
    const World world = Load("mission.cam");
    EXPECT_TRUE(world.Objectives.empty());
    EXPECT_TRUE(world.ObjectivesFrom.empty());
    EXPECT_THAT(world.Notes,
                ElementsAre("the file holds no objectives and its scenario \"" + scenario + "\" was not found",
                            "2 changes are of no objective"));
    EXPECT_FALSE(world.NamesMissing);
  }
}

TEST_F(CampaignFiles, ScenarioBesideTheCampaignFolderIsNotLookedFor) {
  std::filesystem::create_directory(folder / "in");
  Write("te_new.tac", Campaign(103));
  Write("in/mission.tac", Mission(103));
  EXPECT_TRUE(LoadCampaign(folder / "in/mission.tac", folder / "in").Objectives.empty());
  EXPECT_EQ(LoadCampaign(folder / "in/mission.tac", folder.Path()).Objectives.size(), 3U);
}

TEST_F(CampaignFiles, MissingNamesAreToldWhenTheyAreNeeded) {
  Write("save0.cam", Campaign(103));
  World world = Load("save0.cam");
  EXPECT_TRUE(world.NamesMissing);
  EXPECT_THAT(world.Notes, ElementsAre("the theater \"korea\" has no file of names"));
  EXPECT_EQ(ObjectiveNames(world).Of(world.Objectives[0], "Airbase"), "");
  Write("save0.cam", Campaign(108));
  EXPECT_FALSE(Load("save0.cam").NamesMissing) << "each objective has its own";
  WorldPlan nameless = Campaign(103);
  nameless.Objectives[0].NameId = 0;
  Write("save0.cam", nameless);
  EXPECT_FALSE(Load("save0.cam").NamesMissing) << "none has the number of a name";
  Write("korea.idx", "\x09\x01");
  Write("korea.wch", "");
  Write("save0.cam", Campaign(103));
  world = Load("save0.cam");
  EXPECT_TRUE(world.NamesMissing);
  EXPECT_THAT(world.Notes, ElementsAre("korea.idx: it ends before its last offset"));
}

TEST_F(CampaignFiles, OddThingsAreTold) {
  WorldPlan odd = Campaign(108);
  odd.Objectives[0].Owner = 8;
  odd.Deltas = {{.Id = 77}, {.Id = 502, .Owner = 9, .Status = "xyz"}};
  test::Pieces pieces = test::WorldPieces(odd);
  pieces.back().second = "108";
  pieces[3].second += "x";  // teams
  Write("odd.cam", test::Container(pieces));
  EXPECT_THAT(
      Load("odd.cam").Notes,
      ElementsAre("teams: bytes follow the last team; 8 were recognised",
                  "1 objectives are of a country that there is not; they are neutral", "1 changes are of no objective",
                  "1 changes do not fit the features of their objectives, whose states stayed",
                  "1 changes name a country that there is not; those objectives are neutral"));
}

TEST_F(CampaignFiles, FileWithoutAVersionIsReadByItsLooks) {
  for (const int version : {63, 103, 109}) {
    WorldPlan plan = Campaign(version);
    plan.Squadrons = 2;
    test::Pieces pieces = test::WorldPieces(plan);
    pieces.pop_back();
    Write("save0.cam", test::Container(pieces));
    const World world = Load("save0.cam");
    EXPECT_EQ(world.DataVersion, version);
    EXPECT_EQ(world.Objectives.size(), 3U);
    EXPECT_EQ(world.Notes.at(0), "the file does not tell its data version; it looks like " + std::to_string(version));
  }
}

TEST_F(CampaignFiles, FailureNamesFileRecordAndReason) {
  Write("no.cam", "this is no campaign");
  EXPECT_THAT(FailureOf("no.cam"), StartsWith("no.cam: "));
  EXPECT_EQ(FailureOf("missing.cam"), "missing.cam is no file");
  WorldPlan plan = Campaign(103);
  plan.Place.X = 1024;
  Write("a.cam", plan);
  EXPECT_EQ(FailureOf("a.cam"), "a.cam, description: its bullseye lies outside the theater");
  plan = Campaign(103);
  plan.Objectives[1].Type = 99;
  Write("te_new.tac", plan);
  Write("b.tac", Mission(103));
  EXPECT_EQ(FailureOf("b.tac"), "te_new.tac, objectives: objective 2 of 3: it has no class");
  test::Pieces pieces = test::WorldPieces(Campaign(103));
  pieces[2].second = test::DeltaPiece("x", 1);
  Write("c.cam", test::Container(pieces));
  EXPECT_EQ(FailureOf("c.cam"), "c.cam, changes of objectives: change 1 of 1: the file ends too early");
}

TEST_F(CampaignFiles, FileCutAnywhereIsRefused) {
  const std::string whole = test::WorldBytes(Campaign(103));
  // The reading alone: a file for each byte would be slow. What LoadCampaign begins with refuses them all.
  for (std::size_t length = 0; length < whole.size(); ++length) {
    ASSERT_THROW(CampaignFile(whole.substr(0, length)), base::RuntimeFailure) << length;
  }
  for (const std::size_t length : {std::size_t{0}, std::size_t{100}, whole.size() - 1}) {
    Write("cut.cam", whole.substr(0, length));
    EXPECT_THAT(FailureOf("cut.cam"), StartsWith("cut.cam: ")) << length;
  }
}

TEST_F(CampaignFiles, DirectoryBeforeThePiecesMakesNoDifference) {
  // The same pieces behind their directory: cut, such a file has a whole directory of what is not there.
  const test::Pieces pieces = test::WorldPieces(Campaign(108));
  std::size_t position = 4 + 4;
  for (const auto& [name, content] : pieces) position += 9 + name.size();
  std::string bytes = test::Bytes4(4) + test::Bytes4(static_cast<std::int64_t>(pieces.size()));
  std::string contents;
  for (const auto& [name, content] : pieces) {
    bytes += static_cast<char>(name.size()) + name + test::Bytes4(static_cast<std::int64_t>(position)) +
             test::Bytes4(static_cast<std::int64_t>(content.size()));
    position += content.size();
    contents += content;
  }
  bytes += contents;
  Write("first.cam", bytes);
  EXPECT_THAT(Load("first.cam").Notes, ElementsAre());
  EXPECT_EQ(Load("first.cam").Objectives.size(), 3U);
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    ASSERT_THROW(CampaignFile(bytes.substr(0, length)), base::RuntimeFailure) << length;
  }
}

TEST_F(CampaignFiles, DamagedFilesAreReadOrRefused) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  const std::string good = test::WorldBytes(Campaign(103));
  int refused = 0;
  for (int round = 0; round < 300; ++round) {
    std::string bad = good;
    for (int change = 0; change < 4; ++change) bad[random() % bad.size()] = static_cast<char>(random());
    Write("bad.cam", bad);
    try {
      const World world = Load("bad.cam");
      for (const Objective& one : world.Objectives) {
        ASSERT_LT(one.Owner, Countries);
        ASSERT_LT(one.CellX, world.Width);
        ASSERT_LT(one.CellY, world.Height);
      }
    } catch (const base::RuntimeFailure& failure) {
      EXPECT_THAT(failure.what(), HasSubstr("bad.cam"));
      ++refused;
    }
  }
  EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace kestrel::falcon
