#include "core/theater_source.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "falcon/island_install.h"

namespace kestrel::core {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const std::string NoBullseye = "No campaign tells the bullseye: it will be in the middle of the map.";
const std::string NoCorner =
    "No theater.map tells where the lower left corner of the map lies: latitudes and longitudes will be those of "
    "Korea.";

class TheaterSourceOf : public testing::Test {
 protected:
  TheaterSource Find() const { return FindTheaterSource(island.Install, 1); }
  void Terrain(const std::string& name, std::string_view bytes) {
    island.Write("Terrdata/korea/terrain/" + name, bytes);
  }

  test::IslandInstall island;
};

TEST_F(TheaterSourceOf, AWholeTheaterMissesNothing) {
  const TheaterSource source = Find();
  EXPECT_EQ(source.Name, "Isle");
  EXPECT_EQ(source.Size, "32");
  EXPECT_TRUE(source.HasHeights);
  ASSERT_TRUE(source.Bullseye);
  EXPECT_EQ(source.Bullseye->X, 200);
  EXPECT_EQ(source.Bullseye->Y, 900);
  EXPECT_EQ(source.BullseyeFile, "te_new.tac");
  EXPECT_EQ(source.Cover.filename(), "isle.thr");
  EXPECT_THAT(source.Missing, IsEmpty());
  EXPECT_THAT(source.Notes, IsEmpty());
}

TEST_F(TheaterSourceOf, TheBullseyeIsOfTheNextCampaignWithoutTeNew) {
  island.Remove("Campaign/te_new.tac");
  island.WriteCampaign("Alpha.cam", 1, 2);
  island.WriteCampaign("SAVE0.CAM", 3, 4);
  EXPECT_EQ(Find().Bullseye->X, 3);
  island.WriteCampaign("te_new.trn", 5, 6);
  EXPECT_EQ(Find().Bullseye->X, 5);
  island.Remove("Campaign/te_new.trn");
  island.Remove("Campaign/SAVE0.CAM");
  EXPECT_EQ(Find().Bullseye->Y, 2);
  EXPECT_EQ(Find().BullseyeFile, "Alpha.cam");
}

TEST_F(TheaterSourceOf, ACampaignThatCannotBeReadIsNotedAndTheNextOneCounts) {
  island.Write("Campaign/te_new.tac", "no campaign");
  island.WriteCampaign("b.trn", 7, 8);
  island.Write("Campaign/a.trn", "");
  const TheaterSource source = Find();
  ASSERT_TRUE(source.Bullseye);
  EXPECT_EQ(source.Bullseye->X, 7);
  EXPECT_THAT(source.Notes, ElementsAre(HasSubstr("te_new.tac tells no bullseye: "), HasSubstr("a.trn tells no")));
  EXPECT_THAT(source.Missing, IsEmpty());
}

TEST_F(TheaterSourceOf, WithoutACampaignTheBullseyeIsSaidToBeMissing) {
  island.Remove("Campaign/te_new.tac");
  const TheaterSource source = Find();
  EXPECT_FALSE(source.Bullseye);
  EXPECT_TRUE(source.HasHeights);
  EXPECT_THAT(source.Missing, ElementsAre(NoBullseye));
}

TEST_F(TheaterSourceOf, OfSeveralGroundCoversTheOneOfTheCampaignsTheaterCounts) {
  island.Write("Campaign/another.thr", "");
  EXPECT_EQ(Find().Cover.filename(), "isle.thr");
  island.Remove("Campaign/te_new.tac");
  EXPECT_EQ(Find().Cover, "");
  island.Remove("Campaign/another.thr");
  EXPECT_EQ(Find().Cover.filename(), "isle.thr");
}

TEST_F(TheaterSourceOf, EachGenerationOfHeightsIsEnough) {
  island.Remove("Terrdata/korea/terrain/theater.o2");
  EXPECT_FALSE(Find().HasHeights);
  Terrain("TERRAIN.BIL", test::GridBytes(32, 32, [](std::size_t, std::size_t) { return 5; }));
  EXPECT_TRUE(Find().HasHeights);
  island.Remove("Terrdata/korea/terrain/TERRAIN.BIL");
  island.Write("Terrdata/korea/NewTerrain/HeightMaps/HeightMap.raw", "12");
  EXPECT_TRUE(Find().HasHeights);
}

TEST_F(TheaterSourceOf, WithoutHeightsItIsSaidWhereTheyWereLookedFor) {
  island.Remove("Terrdata/korea/terrain/theater.l2");
  const TheaterSource source = Find();
  EXPECT_FALSE(source.HasHeights);
  ASSERT_THAT(source.Missing, SizeIs(1));
  EXPECT_THAT(source.Missing[0], HasSubstr("korea"));
  EXPECT_THAT(source.Missing[0], HasSubstr("theater.L2"));
}

TEST_F(TheaterSourceOf, AMapWithoutACornerIsTold) {
  Terrain("theater.map", test::TerrainMapBytes({.Levels = {8, 4, 2, 1}}));
  EXPECT_THAT(Find().Missing, ElementsAre(NoCorner));
  Terrain("TERRAIN.BIL", test::GridBytes(32, 32, [](std::size_t, std::size_t) { return 5; }));
  Terrain("theater.map", "cut");
  EXPECT_THAT(Find().Missing, ElementsAre(NoCorner));
  EXPECT_THAT(Find().Notes, ElementsAre(HasSubstr("theater.map: ")));
}

TEST_F(TheaterSourceOf, AFolderOutsideOfTheInstallationIsNotLookedInto) {
  island.Install.Theaters[1].Definition.TerrainDir = "..\\elsewhere";
  island.Install.Theaters[1].Definition.CampaignDir = "D:\\campaign";
  const TheaterSource source = Find();
  EXPECT_FALSE(source.HasHeights);
  EXPECT_THAT(source.Missing, ElementsAre(HasSubstr("The theater cannot be imported: "), NoBullseye));
  EXPECT_THAT(source.Notes, SizeIs(1));
}

}  // namespace
}  // namespace kestrel::core
