#include "falcon/campaign_info.h"

#include <gtest/gtest.h>

#include <string>

#include "base/failure.h"
#include "campaign_writer.h"

namespace kestrel::falcon {
namespace {

using test::WorldPlan;

CampaignInfo ReadBlock(const std::string& block, int version) {
  return ReadCampaignInfo(CampaignFile(
      test::Container({{"a.ver", std::to_string(version)}, {"a.cmp", test::DescriptionPiece(block, version)}})));
}

CampaignInfo Read(const WorldPlan& plan) { return ReadBlock(test::DescriptionBytes(plan), plan.Place.Version); }

WorldPlan SomePlan(int version) {
  return {.Place = {.Version = version, .Width = 2048, .Height = 1024, .X = 310, .Y = 650},
          .Theater = "Korea [2]/a",
          .Scenario = "te_new",
          .SaveName = "save0",
          .ShownName = "Red Herring",
          .Names = {"XX", "U.S."},
          .Events = 3,
          .MapBytes = 58140,
          .Squadrons = 2};
}

TEST(CampaignInfo, EveryVersionIsReadToItsEnd) {
  for (const int version : test::KnownVersions) {
    SCOPED_TRACE(version);
    const CampaignInfo info = Read(SomePlan(version));
    EXPECT_EQ(info.DataVersion, version);
    EXPECT_EQ(info.Place.Width, 2048);
    EXPECT_EQ(info.Place.Height, 1024);
    EXPECT_EQ(info.Place.BullseyeX, 310);
    EXPECT_EQ(info.Place.BullseyeY, 650);
    EXPECT_EQ(info.BullseyeName, 0x7E);
    EXPECT_EQ(info.Theater, "Korea [2]/a");
    EXPECT_EQ(info.Scenario, "te_new");
    EXPECT_EQ(info.SaveName, "save0");
    EXPECT_EQ(info.ShownName, "Red Herring");
    EXPECT_EQ(info.Names[1].Name, "U.S.");
    EXPECT_EQ(info.Names[1].Colour, 1);
    EXPECT_EQ(info.Names[2].Name, "");
    EXPECT_EQ(info.RestTrouble, "");
    EXPECT_EQ(info.Squadrons, 2U);
    // Two of 68, 196 or 200 bytes behind 58,140 bytes of a map, which are more than a signed number holds.
    EXPECT_EQ(info.SquadronBytes, version < 100 ? 68U : version < 109 ? 196U : 200U);
  }
}

TEST(CampaignInfo, VersionThatIsNotToldShowsInTheSquadrons) {
  for (const int version : {63, 103, 109}) {
    const std::string piece = test::DescriptionPiece(test::DescriptionBytes(SomePlan(version)), version);
    EXPECT_EQ(ReadCampaignInfo(CampaignFile(test::Container({{"a.cmp", piece}}))).DataVersion, version);
  }
}

TEST(CampaignInfo, WithoutVersionAndSquadronsItIsTheOldest) {
  WorldPlan plan = SomePlan(103);
  plan.Squadrons = 0;
  const CampaignFile file(test::Container({{"a.cmp", test::DescriptionPiece(test::DescriptionBytes(plan), 103)}}));
  EXPECT_EQ(ReadCampaignInfo(file).DataVersion, 63);
}

TEST(CampaignInfo, OldVersionsHaveNoNamesOfCountries) {
  // Behind the bullseye: four names, squadron, no events, no map, last index, no squadrons; version 40 ends with 1
  // byte.
  std::string block = test::CampaignBlock({.Version = 40});
  for (const char* const name : {"korea", "te", "save", "shown"}) block += test::GarbageEnded(name, 40);
  block += std::string(8 + 2 + 2 + 2 + 2 + 2 + 1, '\0');
  const CampaignInfo info = ReadBlock(block, 40);
  EXPECT_EQ(info.Theater, "korea");
  EXPECT_EQ(info.RestTrouble, "");
}

TEST(CampaignInfo, DescriptionCutBeforeTheEndOfItsNamesIsRefused) {
  const std::string block = test::DescriptionBytes(SomePlan(103));
  for (std::size_t length = 0; length < 2110; ++length) {
    ASSERT_THROW(ReadBlock(block.substr(0, length), 103), base::RuntimeFailure) << length;
  }
}

TEST(CampaignInfo, ListsCutAnywhereAreTold) {
  WorldPlan plan = SomePlan(103);
  plan.MapBytes = 40;
  const std::string block = test::DescriptionBytes(plan);
  for (std::size_t length = 2110; length < block.size(); ++length) {
    const CampaignInfo info = ReadBlock(block.substr(0, length), 103);
    // What ends within the squadrons by an even number of bytes has smaller squadrons.
    if (info.SquadronBytes != 0 && info.SquadronBytes < 196) continue;
    ASSERT_NE(info.RestTrouble, "") << length;
    ASSERT_EQ(info.Squadrons, 0U) << length;
  }
}

TEST(CampaignInfo, ListsThatLieAreNamed) {
  WorldPlan plan = SomePlan(103);
  plan.Events = 0;
  plan.MapBytes = 0;
  plan.Squadrons = 0;
  const std::string block = test::DescriptionBytes(plan);
  // From 2118: recent events, priority events, map, last index, squadrons, each a count of two bytes.
  const std::pair<std::size_t, const char*> counts[] = {
      {2118, "recent events: "}, {2120, "priority events: "}, {2122, "map of occupation: "}, {2126, "squadrons: "}};
  for (const auto& [at, name] : counts) {
    for (const int lie : {0x7FFF, 0xFFFF, 0x8000}) {
      std::string bad = block;
      bad.replace(at, 2, test::Bytes2(lie));
      EXPECT_EQ(ReadBlock(bad, 103).RestTrouble.rfind(name, 0), 0U) << name << lie;
    }
  }
}

TEST(CampaignInfo, NamesThatAreNoTextAreRefused) {
  WorldPlan plan = SomePlan(103);
  plan.Theater = "a\nb";
  EXPECT_THROW(Read(plan), base::RuntimeFailure);
  plan = SomePlan(103);
  plan.Scenario = "\x01";
  EXPECT_THROW(Read(plan), base::RuntimeFailure);
}

TEST(CampaignInfo, NumbersThatAreNoPlaceAreRefused) {
  WorldPlan plan = SomePlan(103);
  plan.Place.Width = 32;
  EXPECT_THROW(Read(plan), base::RuntimeFailure);
  plan = SomePlan(103);
  plan.Place.Y = 1024;
  EXPECT_THROW(Read(plan), base::RuntimeFailure);
}

}  // namespace
}  // namespace kestrel::falcon
