#include "falcon/object_tables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace kestrel::falcon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();

/// Class 1: an objective with two features, the classes 2 (a hangar, models 10 and, destroyed, 13) and 3 (virtual).
ObjectTables World() {
  ObjectTables tables;
  tables.Classes.resize(4);
  tables.Classes[1] = {.Domain = 3, .Class = 4, .Type = 1, .Data = DataKind::Objective, .DataIndex = 1};
  tables.Classes[2] = {.Class = 2, .Models = {10, 0, 0, 13, 0, 0, 0}, .Data = DataKind::Feature, .DataIndex = 1};
  tables.Classes[3] = {.Class = 2, .Data = DataKind::Feature, .DataIndex = 2};
  tables.Objectives.resize(2);
  tables.Objectives[1] = {.ClassIndex = 1, .Name = "Airbase", .FirstFeature = 1, .FeatureCount = 2, .FirstHeader = 1};
  tables.Features.resize(3);
  tables.Features[1] = {.ClassIndex = 2, .East = 100, .North = 200, .Heading = 90};
  tables.Features[2] = {.ClassIndex = 3};
  tables.FeatureClasses.resize(3);
  tables.FeatureClasses[1] = {.ClassIndex = 2, .Name = "Hangar"};
  tables.FeatureClasses[2] = {.ClassIndex = 3, .Flags = FeatureClass::Virtual};
  return tables;
}

std::vector<std::int32_t> Numbers(const std::vector<PlacedFeature>& features) {
  std::vector<std::int32_t> numbers;
  for (const PlacedFeature& feature : features) numbers.push_back(feature.Number);
  return numbers;
}

TEST(ObjectTables, ObjectiveHasItsClass) {
  const ObjectTables tables = World();
  EXPECT_EQ(ClassAt(tables, 1), &tables.Classes[1]);
  ASSERT_EQ(ObjectiveClassAt(tables, 1), &tables.Objectives[1]);
  EXPECT_EQ(ObjectiveClassAt(tables, 1)->Name, "Airbase");
}

TEST(ObjectTables, ObjectiveWithoutAClassHasNone) {
  ObjectTables tables = World();
  EXPECT_EQ(ObjectiveClassAt(tables, 2), nullptr) << "a feature";
  for (const std::int32_t index : {4, -1, -100, std::numeric_limits<std::int32_t>::max()}) {
    EXPECT_EQ(ClassAt(tables, index), nullptr) << index;
    EXPECT_EQ(ObjectiveClassAt(tables, index), nullptr) << index;
  }
  tables.Classes[1].Data = DataKind::Feature;
  EXPECT_EQ(ObjectiveClassAt(tables, 1), nullptr) << "its index leads into another table";
  tables.Classes[1].Data = DataKind::Objective;
  tables.Classes[1].Class = FeatureClassCode;
  EXPECT_EQ(ObjectiveClassAt(tables, 1), nullptr) << "no objective";
  tables.Classes[1].Class = ObjectiveClassCode;
  for (const std::int32_t index : {2, -1, std::numeric_limits<std::int32_t>::max()}) {
    tables.Classes[1].DataIndex = index;
    EXPECT_EQ(ObjectiveClassAt(tables, 1), nullptr) << index;
  }
  EXPECT_EQ(ObjectiveClassAt(ObjectTables{}, 1), nullptr);
}

TEST(ObjectTables, FeaturesAreThoseThatCanBeDrawn) {
  const ObjectTables tables = World();
  const std::vector<PlacedFeature> features = FeaturesOf(tables, tables.Objectives[1]);
  ASSERT_THAT(features, SizeIs(1)) << "the other one is virtual";
  EXPECT_EQ(features[0].Number, 0);
  EXPECT_EQ(features[0].Entry, &tables.Features[1]);
  EXPECT_EQ(features[0].Class, &tables.Classes[2]);
  EXPECT_EQ(features[0].Data, &tables.FeatureClasses[1]);
}

TEST(ObjectTables, FeatureKeepsItsNumberBehindOneThatIsLeftOut) {
  ObjectTables tables = World();
  tables.Features[1].ClassIndex = 0;
  tables.FeatureClasses[2].Flags = 0x10;
  EXPECT_THAT(Numbers(FeaturesOf(tables, tables.Objectives[1])), ElementsAre(1));
}

TEST(ObjectTables, ClassWithoutFeaturesHasNone) {
  ObjectTables tables = World();
  EXPECT_THAT(FeaturesOf(tables, tables.Objectives[0]), IsEmpty());
  tables.Objectives[1].FeatureCount = -1;
  EXPECT_THAT(FeaturesOf(tables, tables.Objectives[1]), IsEmpty());
}

TEST(ObjectTables, FeaturesBeyondTheTableAreLeftOut) {
  ObjectTables tables = World();
  tables.Objectives[1].FeatureCount = std::numeric_limits<std::int32_t>::max();
  EXPECT_THAT(Numbers(FeaturesOf(tables, tables.Objectives[1])), ElementsAre(0));
  for (const std::int32_t first : {3, -1, std::numeric_limits<std::int32_t>::max()}) {
    tables.Objectives[1].FirstFeature = first;
    EXPECT_THAT(FeaturesOf(tables, tables.Objectives[1]), IsEmpty()) << first;
  }
}

TEST(ObjectTables, FeatureWhoseClassIsNotThereIsLeftOut) {
  ObjectTables tables = World();
  for (const std::int32_t index : {-1, 4, 32767}) {
    tables.Features[1].ClassIndex = index;
    EXPECT_THAT(FeaturesOf(tables, tables.Objectives[1]), IsEmpty()) << index;
  }
}

TEST(ObjectTables, FeatureOfACutTableOfClassesIsDrawnWithoutAName) {
  ObjectTables tables = World();
  tables.FeatureClasses.clear();
  const std::vector<PlacedFeature> features = FeaturesOf(tables, tables.Objectives[1]);
  ASSERT_THAT(features, SizeIs(2));
  EXPECT_EQ(features[0].Data, nullptr);
}

TEST(ObjectTables, FeatureWhoseIndexLeadsIntoAnotherTableHasNoData) {
  ObjectTables tables = World();
  tables.Classes[3].Data = DataKind::None;
  const std::vector<PlacedFeature> features = FeaturesOf(tables, tables.Objectives[1]);
  ASSERT_THAT(features, SizeIs(2)) << "the index is that of a virtual one, but not of this table";
  EXPECT_EQ(features[1].Data, nullptr);
}

TEST(ObjectTables, FeatureAtAnImpossiblePlaceIsLeftOut) {
  for (const double bad : {NoNumber, 1e300, -1e300, std::numeric_limits<double>::infinity(), 1.6e7}) {
    for (double FeatureEntry::*field : {&FeatureEntry::East, &FeatureEntry::North}) {
      ObjectTables tables = World();
      tables.Features[1].*field = bad;
      EXPECT_THAT(FeaturesOf(tables, tables.Objectives[1]), IsEmpty()) << bad;
    }
  }
  ObjectTables tables = World();
  tables.Features[1].Heading = NoNumber;
  EXPECT_THAT(FeaturesOf(tables, tables.Objectives[1]), IsEmpty());
}

TEST(ObjectTables, ModelGoesByStatusAndFallsBackToTheNormalOne) {
  const EntityClass hangar{.Models = {10, 0, -5, 13, 0, 0, 0}};
  EXPECT_EQ(ModelOf(hangar, 0), 10);
  EXPECT_EQ(ModelOf(hangar, 1), 10);
  EXPECT_EQ(ModelOf(hangar, 2), 10);
  EXPECT_EQ(ModelOf(hangar, 3), 13);
  EXPECT_EQ(ModelOf(hangar, 7), 10);
  EXPECT_EQ(ModelOf(hangar, -1), 10);
}

TEST(ObjectTables, ThingWithoutAModelHasNone) {
  EXPECT_EQ(ModelOf({}, 0), std::nullopt);
  EXPECT_EQ(ModelOf({.Models = {-1, 0, 0, 0, 0, 0, 0}}, 3), std::nullopt);
}

TEST(ObjectTables, HeadersFollowTheirChain) {
  ObjectTables tables = World();
  tables.Headers.resize(4);
  tables.Headers[1].Next = 3;
  tables.Headers[3].Next = 2;
  EXPECT_THAT(PointHeadersOf(tables, tables.Objectives[1]),
              ElementsAre(&tables.Headers[1], &tables.Headers[3], &tables.Headers[2]));
  EXPECT_THAT(PointHeadersOf(tables, tables.Objectives[0]), IsEmpty()) << "0 is no header";
}

TEST(ObjectTables, ChainThatRunsInACircleEndsThere) {
  ObjectTables tables = World();
  tables.Headers.resize(4);
  tables.Headers[1].Next = 3;
  tables.Headers[3].Next = 3;
  EXPECT_THAT(PointHeadersOf(tables, tables.Objectives[1]), ElementsAre(&tables.Headers[1], &tables.Headers[3]));
  tables.Headers[3].Next = 2;
  tables.Headers[2].Next = 1;
  EXPECT_THAT(PointHeadersOf(tables, tables.Objectives[1]), SizeIs(3));
}

TEST(ObjectTables, ChainEndsBeyondTheTable) {
  ObjectTables tables = World();
  tables.Headers.resize(2);
  for (const std::int32_t next : {2, 32767, -1, -32768}) {
    tables.Headers[1].Next = next;
    EXPECT_THAT(PointHeadersOf(tables, tables.Objectives[1]), ElementsAre(&tables.Headers[1])) << next;
  }
  tables.Objectives[1].FirstHeader = 900;
  EXPECT_THAT(PointHeadersOf(tables, tables.Objectives[1]), IsEmpty());
}

TEST(ObjectTables, PointsOfACutTableAreThoseThatAreThere) {
  ObjectTables tables;
  tables.Points.resize(5);
  EXPECT_THAT(PointsOf(tables, {.FirstPoint = 1, .PointCount = 2}), SizeIs(2));
  EXPECT_EQ(PointsOf(tables, {.FirstPoint = 3, .PointCount = 200}).data(), &tables.Points[3]);
  EXPECT_THAT(PointsOf(tables, {.FirstPoint = 3, .PointCount = 200}), SizeIs(2));
  EXPECT_THAT(PointsOf(tables, {.FirstPoint = 5, .PointCount = 1}), IsEmpty());
  EXPECT_THAT(PointsOf(tables, {.FirstPoint = -1, .PointCount = 3}), IsEmpty());
}

}  // namespace
}  // namespace kestrel::falcon
