#include "falcon/object_table_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "failure_text.h"
#include "table_writer.h"

namespace kestrel::falcon {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(ObjectTableFiles, ClassOfObjectives) {
  ASSERT_EQ(test::ObjectiveClassRecord({}).size(), 54U);
  const std::string bytes = test::TableOf<test::ObjectiveClassPlan>(
      {{}, {.Class = 321, .Name = "Airbase", .Header = 5, .Icon = 44, .Features = 255, .Radar = 12, .First = 700}},
      test::ObjectiveClassRecord);
  const std::vector<ObjectiveClass> classes = ReadObjectiveClasses({"Falcon4.OCD", bytes});
  ASSERT_EQ(classes.size(), 2U);
  EXPECT_EQ(classes[0].RadarFeature, std::nullopt);
  EXPECT_EQ(classes[1].ClassIndex, 321);
  EXPECT_EQ(classes[1].Name, "Airbase");
  EXPECT_EQ(classes[1].FirstHeader, 5);
  EXPECT_EQ(classes[1].Icon, 44);
  EXPECT_EQ(classes[1].FeatureCount, 255);
  EXPECT_EQ(classes[1].RadarFeature, 12);
  EXPECT_EQ(classes[1].FirstFeature, 700);
}

TEST(ObjectTableFiles, NameEndsAtItsFirstZeroOrItsWidth) {
  std::string bytes = test::TableOf<test::ObjectiveClassPlan>({{}}, test::ObjectiveClassRecord);
  bytes.replace(4, 20, std::string("Fort\0left of another", 20));
  EXPECT_EQ(ReadObjectiveClasses({"x", bytes})[0].Name, "Fort");
  bytes.replace(4, 20, "12345678901234567890");
  EXPECT_EQ(ReadObjectiveClasses({"x", bytes})[0].Name, "12345678901234567890");
}

TEST(ObjectTableFiles, FeatureEntry) {
  ASSERT_EQ(test::FeatureEntryRecord({}).size(), 32U);
  const std::string bytes = test::TableOf<test::FeatureEntryPlan>(
      {{.Class = 900, .Flags = 5, .Value = 40, .East = 100.5F, .North = -200.25F, .Up = 3, .Heading = -180}},
      test::FeatureEntryRecord);
  const FeatureEntry entry = ReadFeatureEntries({"Falcon4.FED", bytes})[0];
  EXPECT_EQ(entry.ClassIndex, 900);
  EXPECT_EQ(entry.Flags, 5);
  EXPECT_EQ(entry.Value, 40);
  EXPECT_EQ(entry.East, 100.5);
  EXPECT_EQ(entry.North, -200.25);
  EXPECT_EQ(entry.Up, 3);
  EXPECT_EQ(entry.Heading, -180);
}

TEST(ObjectTableFiles, ClassOfFeatures) {
  ASSERT_EQ(test::FeatureClassRecord({}).size(), 60U);
  const std::string bytes = test::TableOf<test::FeatureClassPlan>(
      {{.Class = 901, .Repair = 12, .Flags = 0x8002, .Name = "Hangar", .HitPoints = 250}}, test::FeatureClassRecord);
  const FeatureClass feature = ReadFeatureClasses({"Falcon4.FCD", bytes})[0];
  EXPECT_EQ(feature.ClassIndex, 901);
  EXPECT_EQ(feature.RepairTime, 12);
  EXPECT_EQ(feature.Flags, 0x8002);
  EXPECT_EQ(feature.Name, "Hangar");
  EXPECT_EQ(feature.HitPoints, 250);
}

TEST(ObjectTableFiles, HeaderOfPoints) {
  ASSERT_EQ(test::HeaderRecord({}).size(), 28U);
  const std::string bytes = test::TableOf<test::HeaderPlan>({{},
                                                             {.Objective = 7,
                                                              .Kind = 8,
                                                              .Count = 200,
                                                              .Features = {3, 255, 0, 255, 254},
                                                              .Data = 236,
                                                              .First = 1234,
                                                              .Runway = 1,
                                                              .Side = -1,
                                                              .Next = 9}},
                                                            test::HeaderRecord);
  const std::vector<PointHeader> headers = ReadPointHeaders({"Falcon4.PHD", bytes});
  EXPECT_EQ(headers[0].RunwayNumber, -1);
  EXPECT_THAT(headers[0].Features, IsEmpty());
  EXPECT_EQ(headers[1].Objective, 7);
  EXPECT_EQ(headers[1].Kind, PointHeader::Outline);
  EXPECT_EQ(headers[1].PointCount, 200);
  EXPECT_THAT(headers[1].Features, ElementsAre(3, 0, 254));
  EXPECT_EQ(headers[1].Data, 236);
  EXPECT_EQ(headers[1].FirstPoint, 1234);
  EXPECT_EQ(headers[1].RunwayNumber, 1);
  EXPECT_EQ(headers[1].BaseLeg, -1);
  EXPECT_EQ(headers[1].Next, 9);
}

TEST(ObjectTableFiles, PointsOfEitherSize) {
  const std::vector<test::PointPlan> plans = {
      {}, {.East = 2699.5F, .North = -3348, .Kind = 2, .Flags = 5, .Up = 12}, {.East = 1, .Kind = 19}};
  ASSERT_EQ(test::PointRecord({}).size(), 12U);
  ASSERT_EQ(test::LargePointRecord({}).size(), 28U);
  for (const bool large : {false, true}) {
    const std::vector<ObjectPoint> points =
        large ? ReadLargePoints({"Falcon4.PDX", test::TableOf(plans, test::LargePointRecord)})
              : ReadPoints({"Falcon4.PD", test::TableOf(plans, test::PointRecord)});
    ASSERT_EQ(points.size(), 3U);
    EXPECT_EQ(points[1].East, 2699.5);
    EXPECT_EQ(points[1].North, -3348);
    EXPECT_EQ(points[1].Up, large ? 12 : 0);
    // Two numbers of a byte, though some read them as one of 16 bits.
    EXPECT_EQ(points[1].Kind, ObjectPoint::Threshold);
    EXPECT_EQ(points[1].Flags, 5);
    EXPECT_EQ(points[2].Kind, 19);
  }
}

TEST(ObjectTableFiles, ImpossibleNumbersStandAsTheyAre) {
  const float infinite = std::numeric_limits<float>::infinity();
  const std::string bytes = test::TableOf<test::FeatureEntryPlan>(
      {{.East = std::numeric_limits<float>::quiet_NaN(), .North = -infinite, .Up = 3e38F}}, test::FeatureEntryRecord);
  const FeatureEntry entry = ReadFeatureEntries({"x", bytes})[0];
  EXPECT_NE(entry.East, entry.East);
  EXPECT_EQ(entry.North, -infinite);
  EXPECT_EQ(entry.Up, 3e38F);
}

/// Each table: its bytes with three records, and how many records its reader takes out of some bytes.
struct Table {
  std::string Name;
  std::string Bytes;
  std::string CountBehind;
  std::function<std::size_t(const std::string&)> Read;
};

template <class Plan, class Writer, class Reader>
Table Made(const std::string& name, const Writer& record, const Reader& read) {
  const std::vector<Plan> plans(3);
  return {name, test::TableOf(plans, record), test::TableOf(plans, record, test::Count::Behind),
          [=](const std::string& bytes) {
            return read({name, bytes}).size();
          }};
}

std::vector<Table> AllTables() {
  return {Made<test::ObjectiveClassPlan>("Falcon4.OCD", test::ObjectiveClassRecord, ReadObjectiveClasses),
          Made<test::FeatureEntryPlan>("Falcon4.FED", test::FeatureEntryRecord, ReadFeatureEntries),
          Made<test::FeatureClassPlan>("Falcon4.FCD", test::FeatureClassRecord, ReadFeatureClasses),
          Made<test::HeaderPlan>("Falcon4.PHD", test::HeaderRecord, ReadPointHeaders),
          Made<test::PointPlan>("Falcon4.PD", test::PointRecord, ReadPoints),
          Made<test::PointPlan>("Falcon4.PDX", test::LargePointRecord, ReadLargePoints)};
}

TEST(ObjectTableFiles, TableCutAnywhereIsRefusedByNameAndRecord) {
  for (const Table& table : AllTables()) {
    ASSERT_EQ(table.Read(table.Bytes), 3U) << table.Name;
    for (std::size_t length = 0; length < table.Bytes.size(); ++length) {
      EXPECT_THAT(test::FailureOf([&] { table.Read(table.Bytes.substr(0, length)); }), HasSubstr(table.Name + ": "))
          << length;
    }
  }
  const Table entries = AllTables()[1];
  EXPECT_EQ(test::FailureOf([&] { entries.Read(entries.Bytes.substr(0, 2 + 32 + 31)); }),
            "Falcon4.FED: record 1 of 3 is cut");
}

TEST(ObjectTableFiles, CountThatLiesIsRefused) {
  for (const Table& table : AllTables()) {
    for (const int count : {-1, -32768, 0, 1, 2, 4, 32767}) {
      std::string bytes = table.Bytes;
      bytes.replace(0, 2, test::Bytes2(count));
      EXPECT_NE(test::FailureOf([&] { table.Read(bytes); }), "") << table.Name << ' ' << count;
    }
    EXPECT_THAT(test::FailureOf([&] { table.Read(table.Bytes + '\0'); }), HasSubstr("goes on")) << table.Name;
  }
}

TEST(ObjectTableFiles, CountBehindTheRecordsIsKnownOfThreeTables) {
  for (const Table& table : AllTables()) {
    const bool known = table.Name == "Falcon4.OCD" || table.Name == "Falcon4.FED" || table.Name == "Falcon4.FCD";
    if (known) {
      EXPECT_EQ(table.Read(table.CountBehind), 3U) << table.Name;
    } else {
      EXPECT_EQ(test::FailureOf([&] { table.Read(table.CountBehind); }), table.Name + ": it tells of no records");
    }
  }
}

}  // namespace
}  // namespace kestrel::falcon
