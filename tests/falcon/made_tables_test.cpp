// What stands on the ground of whole installations: classes, buildings, runways and models.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/temp_folder.h"
#include "falcon/bml_expander.h"
#include "falcon/camp_objects.h"
#include "falcon/object_database.h"
#include "falcon/parent_file.h"
#include "falcon/runways.h"
#include "falcon/shape_file.h"
#include "falcon/xml_records.h"
#include "made_installation.h"

namespace kestrel::falcon {
namespace {

namespace fs = std::filesystem;
using made::Generation;
using testing::SizeIs;

/// The tables of an installation.
ObjectTables ReadTables(const std::vector<fs::path>& folders) {
  ObjectDatabase database = LoadObjectDatabase(folders);
  EXPECT_THAT(database.Notes, SizeIs(0));
  return std::move(database.Tables);
}

class MadeTables : public testing::TestWithParam<Generation> {
 protected:
  const ObjectiveClass& KindOf(int classIndex) const {
    const ObjectiveClass* const kind = ObjectiveClassAt(tables, classIndex);
    EXPECT_NE(kind, nullptr) << classIndex;
    static const ObjectiveClass none;
    return kind ? *kind : none;
  }
  /// Headings before 4.37 are whole degrees.
  double Told(double heading, double rounded) const { return GetParam() >= Generation::Bms437 ? heading : rounded; }

  test::TempFolder folder;
  const made::Installation made = made::WriteInstallation(folder / "install", GetParam());
  const ObjectTables tables = ReadTables({made.Objects});
};

TEST_P(MadeTables, KindsAreThoseOfTheWorld) {
  ASSERT_THAT(tables.Classes, SizeIs(24));
  const struct {
    int Class, Type, Features;
    const char* Name;
  } kinds[] = {{3, 1, 4, "Airbase Dual"}, {4, 1, 3, "Airbase 02_20"}, {7, 8, 5, "City"},
               {8, 6, 1, "Bridge"},       {9, 11, 3, "Factory"},      {12, 20, 1, "Power Plant"},
               {13, 21, 1, "Radar Site"}, {14, 31, 2, "SAM Site"},    {15, 29, 0, "Village"}};
  for (const auto& [number, type, features, name] : kinds) {
    SCOPED_TRACE(name);
    EXPECT_EQ(tables.Classes[static_cast<std::size_t>(number)].Type, type);
    EXPECT_EQ(KindOf(number).Name, name);
    EXPECT_EQ(KindOf(number).ClassIndex, number);
    EXPECT_EQ(KindOf(number).FeatureCount, features);
  }
  EXPECT_EQ(KindOf(13).RadarFeature, 0);
  EXPECT_FALSE(KindOf(14).RadarFeature);
  for (const int other : {0, 1, 16, 20, 23, 24}) EXPECT_EQ(ObjectiveClassAt(tables, other), nullptr) << other;
}

TEST_P(MadeTables, BuildingsStandWhereTheWorldHasThem) {
  const std::vector<PlacedFeature> anvil = FeaturesOf(tables, KindOf(3));
  ASSERT_THAT(anvil, SizeIs(3)) << "the light is not seen";
  EXPECT_EQ(anvil[1].Number, 1);
  EXPECT_EQ(anvil[1].Entry->East, 800);
  EXPECT_EQ(anvil[1].Entry->North, 2000);
  EXPECT_EQ(anvil[1].Entry->Heading, 90);
  ASSERT_TRUE(anvil[1].Data);
  EXPECT_EQ(anvil[1].Data->Name, "Hangar & Shed");
  EXPECT_EQ(anvil[1].Data->HitPoints, 500);
  EXPECT_EQ(ModelOf(*anvil[1].Class, 0), 1);
  EXPECT_EQ(ModelOf(*anvil[1].Class, 2), 1);
  EXPECT_EQ(ModelOf(*anvil[1].Class, 3), 3);
  EXPECT_EQ(anvil[2].Number, 3);
  EXPECT_EQ(ModelOf(*anvil[2].Class, 3), 2) << "none of its own";

  const std::vector<PlacedFeature> city = FeaturesOf(tables, KindOf(7));
  ASSERT_THAT(city, SizeIs(5));
  EXPECT_EQ(city[4].Entry->East, -300);
  EXPECT_EQ(city[4].Entry->North, -300);
  EXPECT_EQ(city[4].Entry->Heading, 270);
  ASSERT_THAT(FeaturesOf(tables, KindOf(13)), SizeIs(1));
  EXPECT_EQ(FeaturesOf(tables, KindOf(13))[0].Entry->Heading, -90);
  const std::vector<PlacedFeature> site = FeaturesOf(tables, KindOf(14));
  ASSERT_THAT(site, SizeIs(1)) << "the first slot is empty";
  EXPECT_EQ(site[0].Number, 1);
  EXPECT_EQ(site[0].Entry->North, -250);
  EXPECT_THAT(FeaturesOf(tables, KindOf(15)), SizeIs(0));
}

TEST_P(MadeTables, AddOnTakesWhatItLacksFromTheDefaultTheater) {
  if (GetParam() < Generation::Bms435) return;
  const fs::path own = made.Data / "Add-On Made/TerrData/Objects";
  const std::string buildings = GetParam() == Generation::Bms435 ? "FALCON4_FCD.XML" : "Falcon4_FCD.xml";
  fs::remove(made.Objects / buildings);
  const ObjectTables addOn = ReadTables({own, made.Objects});
  EXPECT_THAT(addOn.FeatureClasses, SizeIs(4)) << "its own";
  EXPECT_THAT(addOn.Classes, SizeIs(24));
  const ObjectiveClass* const kind = ObjectiveClassAt(addOn, 3);
  ASSERT_NE(kind, nullptr);
  EXPECT_THAT(FeaturesOf(addOn, *kind), SizeIs(3));
  EXPECT_TRUE(CollectRunways(addOn, *kind)[1][1]);
}

TEST_P(MadeTables, CampaignObjectsAreThoseOfTheWorld) {
  if (GetParam() < Generation::Bms435) return;
  const std::map<std::int32_t, CampObject> objects =
      ReadCampObjects(ReadDataFile(made.Campaign / "CampObjData.XML", MaxXmlBytes));
  ASSERT_THAT(objects, SizeIs(9));
  const bool isNewest = GetParam() == Generation::Bms438;
  const CampObject& bridge = objects.at(7);
  EXPECT_EQ(bridge.Name, isNewest ? "Dorn Bridge" : "");
  EXPECT_EQ(bridge.Heading, isNewest ? 41.5 : 0);
  // 31.5 * 3279.98 and 24.5 * 3279.98, in 4.38 500 feet east and 250 south of it.
  EXPECT_NEAR(bridge.East, isNewest ? 103819.37 : 103319.37, 0.01);
  EXPECT_NEAR(bridge.North, isNewest ? 80109.51 : 80359.51, 0.01);
  EXPECT_EQ(objects.at(2005).Name, isNewest ? "\xC9pine" : "");
}

TEST_P(MadeTables, RunwaysAreThoseOfTheWorld) {
  const Runways dual = CollectRunways(tables, KindOf(3));
  ASSERT_TRUE(dual[0][0] && dual[0][1] && dual[1][0] && dual[1][1]);
  EXPECT_EQ(dual[0][0]->Name, "09L");
  EXPECT_EQ(dual[0][1]->Name, "27R");
  EXPECT_EQ(dual[1][0]->Name, "09R");
  EXPECT_EQ(dual[1][1]->Name, "27L");
  EXPECT_EQ(dual[0][0]->Heading, Told(90.25, 90));
  EXPECT_EQ(dual[1][1]->Heading, Told(269.75, 270));
  ASSERT_TRUE(dual[1][1]->Begin && dual[1][1]->FarEnd);
  EXPECT_EQ(dual[1][1]->Begin->East, 3000);
  EXPECT_EQ(dual[1][1]->Begin->North, -500);
  EXPECT_EQ(dual[1][1]->FarEnd->East, -4000);

  const Runways single = CollectRunways(tables, KindOf(4));
  ASSERT_TRUE(single[0][0] && single[0][1]);
  EXPECT_EQ(single[0][0]->Name, "02");
  EXPECT_EQ(single[0][1]->Name, "20");
  EXPECT_EQ(single[0][1]->Heading, Told(199.75, 200));
  ASSERT_TRUE(single[0][0]->Begin);
  EXPECT_EQ(single[0][0]->Begin->East, -1500);
  EXPECT_EQ(single[0][0]->Begin->North, -3500);
  EXPECT_FALSE(single[1][0] || single[1][1]);
  EXPECT_FALSE(CollectRunways(tables, KindOf(7))[0][0]);
}

INSTANTIATE_TEST_SUITE_P(OfEachGeneration, MadeTables, testing::ValuesIn(made::Generations));

/// How many lines of a shape lie on the ground.
std::ptrdiff_t OnGround(const ModelShape& shape) {
  return std::count_if(shape.Edges.begin(), shape.Edges.end(),
                       [](const ModelEdge& edge) { return edge.From.Z == 0 && edge.To.Z == 0; });
}

/// The farthest that the wedge goes forward, to the right and up.
void ExpectWedge(const ModelShape& shape) {
  double forward = 0, right = 0, up = 0;
  for (const ModelEdge& edge : shape.Edges) {
    for (const ModelPoint& point : {edge.From, edge.To}) {
      forward = std::max(forward, point.X);
      right = std::max(right, point.Y);
      up = std::max(up, -point.Z);
    }
  }
  EXPECT_EQ(forward, 40);
  EXPECT_EQ(right, 20);
  EXPECT_EQ(up, 10);
}

TEST(MadeModels, DirectoryHoldsThoseOfTheWorld) {
  for (const Generation which : {Generation::Falcon40, Generation::Bms433, Generation::Bms435}) {
    SCOPED_TRACE(made::KeyName(which));
    const test::TempFolder folder;
    const made::Installation made = made::WriteInstallation(folder / "install", which);
    const ModelDirectory directory =
        ReadModelDirectory(ReadDataFile(made.Objects / "KoreaObj.HDR", MaxModelDirectoryBytes));
    ASSERT_THAT(directory.Models, SizeIs(4));
    EXPECT_THAT(directory.Models[0].Details, SizeIs(0));
    ASSERT_TRUE(directory.Models[1].Box);
    EXPECT_EQ(directory.Models[1].Box->Least.X, -50);
    EXPECT_EQ(directory.Models[1].Box->Most.Y, 30);
    EXPECT_EQ(directory.Models[1].Box->Least.Z, -30);
    const auto shapeOf = [&](std::size_t model) {
      return ReadDirectoryShape(made.Objects / "KoreaObj.LOD", directory, model);
    };
    // Triangles show a diagonal of each side with four corners: the box has five of them, the wedge three, what is left
    // of the box one, which lies on the ground.
    const bool isClassic = which == Generation::Falcon40;
    EXPECT_THAT(shapeOf(1).Edges, SizeIs(isClassic ? 12 : 17));
    EXPECT_EQ(OnGround(shapeOf(1)), 4);
    EXPECT_THAT(shapeOf(2).Edges, SizeIs(isClassic ? 9 : 12));
    EXPECT_EQ(OnGround(shapeOf(2)), 3);
    ExpectWedge(shapeOf(2));
    EXPECT_EQ(OnGround(shapeOf(3)), isClassic ? 4 : 5);
  }
}

TEST(MadeModels, FoldersHoldThoseOfTheWorld) {
  for (const Generation which : {Generation::Bms437, Generation::Bms438}) {
    SCOPED_TRACE(made::KeyName(which));
    const test::TempFolder folder;
    const made::Installation made = made::WriteInstallation(folder / "install", which);
    const auto shapeOf = [&](const std::string& model, std::size_t detail) {
      const fs::path own = made.Objects / "Models" / model;
      const ParentFile parent = ReadParentFile(ReadDataFile(own / "Parent.dat", MaxParentFileBytes));
      EXPECT_THAT(parent.Details, SizeIs(2));
      return ReadBmlShape(ReadDataFile(own / parent.Details.at(detail).File, MaxBmlBytes), SystemBmlExpander());
    };
    // Triangles as above. Packed as LZ4, as LZMA and not at all.
    EXPECT_THAT(shapeOf("1", 0).Edges, SizeIs(17));
    EXPECT_EQ(OnGround(shapeOf("1", 0)), 4);
    EXPECT_THAT(shapeOf("2", 0).Edges, SizeIs(12));
    EXPECT_EQ(OnGround(shapeOf("2", 0)), 3);
    ExpectWedge(shapeOf("2", 0));
    EXPECT_EQ(OnGround(shapeOf("3", 0)), 5);
    EXPECT_EQ(shapeOf("1", 1).Triangles, 2U) << "the roof alone";
    const ParentFile box = ReadParentFile(ReadDataFile(made.Objects / "Models/2/Parent.dat", MaxParentFileBytes));
    ASSERT_TRUE(box.Box);
    EXPECT_EQ(box.Box->Most.X, 40);
    EXPECT_EQ(box.Box->Least.Y, 0);
    EXPECT_EQ(box.Box->Least.Z, -10);
  }
}

}  // namespace
}  // namespace kestrel::falcon
