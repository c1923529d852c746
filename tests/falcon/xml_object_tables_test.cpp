#include "falcon/xml_object_tables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "failure_text.h"
#include "falcon/xml_writer.h"

namespace kestrel::falcon {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST(XmlObjectTables, ClassIsTaken) {
  const std::string text = test::XmlTable(
      "CTRecords", "CT",
      {test::XmlClass({.Domain = 0, .Class = 0, .Data = 2}), test::XmlClass({.Domain = 3,
                                                                             .Class = 4,
                                                                             .Type = 31,
                                                                             .SubType = 5,
                                                                             .Specific = 255,
                                                                             .Owner = 2,
                                                                             .Models = {829, 0, 830, 4414, 1, 2, -1},
                                                                             .Data = 3,
                                                                             .Index = 834})});
  const std::vector<EntityClass> classes = ReadXmlClasses({"Falcon4_CT.xml", text});
  ASSERT_THAT(classes, SizeIs(2));
  const EntityClass& one = classes[1];
  EXPECT_EQ(one.Domain, 3);
  EXPECT_EQ(one.Class, 4);
  EXPECT_EQ(one.Type, 31);
  EXPECT_EQ(one.SubType, 5);
  EXPECT_EQ(one.Specific, 255);
  EXPECT_EQ(one.Owner, 2);
  EXPECT_THAT(one.Models, ElementsAre(829, 0, 830, 4414, 1, 2, -1));
  EXPECT_EQ(one.Data, DataKind::Objective);
  EXPECT_EQ(one.DataIndex, 834);
}

TEST(XmlObjectTables, ObjectiveClassIsTaken) {
  const std::string text = test::XmlTable("OCDRecords", "OCD",
                                          {test::XmlObjectiveClass({.Class = 125,
                                                                    .Name = "Airbase 02_20 &amp; Co",
                                                                    .Header = 732,
                                                                    .Icon = 10159,
                                                                    .Features = 255,
                                                                    .Radar = 9,
                                                                    .First = 18757}),
                                           test::XmlObjectiveClass({.Radar = 255})});
  const std::vector<ObjectiveClass> classes = ReadXmlObjectiveClasses({"FALCON4_OCD.XML", text});
  ASSERT_THAT(classes, SizeIs(2));
  EXPECT_EQ(classes[0].ClassIndex, 125);
  EXPECT_EQ(classes[0].Name, "Airbase 02_20 & Co");
  EXPECT_EQ(classes[0].FirstHeader, 732);
  EXPECT_EQ(classes[0].Icon, 10159);
  EXPECT_EQ(classes[0].FeatureCount, 255);
  EXPECT_EQ(classes[0].FirstFeature, 18757);
  EXPECT_EQ(classes[0].RadarFeature, 9);
  EXPECT_EQ(classes[1].RadarFeature, std::nullopt);
}

TEST(XmlObjectTables, FeatureEntryIsTaken) {
  const std::string text =
      test::XmlTable("FEDRecords", "FED",
                     {test::XmlFeatureEntry({}),
                      test::XmlFeatureEntry({.Class = 698, .Value = 40, .East = 100.5F, .North = -200.25F, .Up = 3}) +
                          test::XmlField("Flags", 5)});
  const std::vector<FeatureEntry> entries = ReadXmlFeatureEntries({"FALCON4_FED.XML", text});
  ASSERT_THAT(entries, SizeIs(2));
  EXPECT_EQ(entries[0].Value, 0) << "what is not told is 0";
  EXPECT_EQ(entries[1].ClassIndex, 698);
  EXPECT_EQ(entries[1].Flags, 5);
  EXPECT_EQ(entries[1].Value, 40);
  EXPECT_EQ(entries[1].East, 100.5);
  EXPECT_EQ(entries[1].North, -200.25);
  EXPECT_EQ(entries[1].Up, 3);
}

TEST(XmlObjectTables, HeadingMayBeNegativeAndHaveFractions) {
  const auto heading = [](const std::string& text) {
    return ReadXmlFeatureEntries({"FED", test::XmlTable("R", "FED", {test::XmlField("Heading", text)})})[0].Heading;
  };
  EXPECT_EQ(heading("-180.000"), -180);
  EXPECT_EQ(heading("41.999"), 41.999);
  EXPECT_TRUE(std::isnan(heading("-nan(ind)")));
}

TEST(XmlObjectTables, FeatureClassIsTaken) {
  const std::string text = test::XmlTable(
      "FCDRecords", "FCD",
      {test::XmlFeatureClass(
          {.Class = 151, .Repair = 9999, .Flags = 33285, .Name = "RKSO Runway Section", .HitPoints = 500})});
  const FeatureClass one = ReadXmlFeatureClasses({"FALCON4_FCD.XML", text})[0];
  EXPECT_EQ(one.ClassIndex, 151);
  EXPECT_EQ(one.RepairTime, 9999);
  EXPECT_EQ(one.Flags, 33285);
  EXPECT_EQ(one.Name, "RKSO Runway Section");
  EXPECT_EQ(one.HitPoints, 500);
}

TEST(XmlObjectTables, HeaderIsTakenByEitherNameOfItsFields) {
  const test::HeaderPlan plan{.Objective = 834,
                              .Kind = 8,
                              .Count = 250,
                              .Features = {3, 0, 255, 255, 7},
                              .First = 30453,
                              .Runway = 1,
                              .Side = -1,
                              .Next = 742};
  for (const test::XmlAge age : {test::XmlAge::OneFile, test::XmlAge::Folders}) {
    const std::string text = test::XmlTable("PHDRecords", "PHD", {test::XmlHeader(plan, "25.448", age)});
    const PointHeader header = ReadXmlPointHeaders({"PHD", text})[0];
    EXPECT_EQ(header.Objective, 834);
    EXPECT_EQ(header.Kind, 8);
    EXPECT_EQ(header.PointCount, 250);
    EXPECT_THAT(header.Features, ElementsAre(3, 0, 7));
    EXPECT_EQ(header.Data, 25.448);
    EXPECT_EQ(header.FirstPoint, 30453);
    EXPECT_EQ(header.RunwayNumber, 1);
    EXPECT_EQ(header.BaseLeg, -1);
    EXPECT_EQ(header.Next, age == test::XmlAge::OneFile ? 742 : 0);
  }
}

TEST(XmlObjectTables, HeaderOfNoRunwayHasANumberBelowZero) {
  for (const int none : {-1, 255}) {
    const std::string text = test::XmlTable("PHDRecords", "PHD", {test::XmlHeader({.Runway = none})});
    EXPECT_EQ(ReadXmlPointHeaders({"PHD", text})[0].RunwayNumber, -1);
  }
  EXPECT_EQ(ReadXmlPointHeaders({"PHD", test::XmlTable("R", "PHD", {""})})[0].RunwayNumber, 0);
}

TEST(XmlObjectTables, PointIsTaken) {
  const std::string text = test::XmlTable(
      "PDRecords", "PD",
      {test::XmlPoint({.East = -1954.5F, .North = -4276.625F, .Kind = 8, .Flags = 1, .Up = 2}), test::XmlPoint({})});
  const std::vector<ObjectPoint> points = ReadXmlPoints({"FALCON4_PDX.XML", text});
  ASSERT_THAT(points, SizeIs(2));
  EXPECT_EQ(points[0].East, -1954.5);
  EXPECT_EQ(points[0].North, -4276.625);
  EXPECT_EQ(points[0].Up, 2);
  EXPECT_EQ(points[0].Kind, 8);
  EXPECT_EQ(points[0].Flags, 1);
  EXPECT_EQ(points[1].Flags, 0);
}

TEST(XmlObjectTables, RecordStandsAtItsNumber) {
  const std::string text = "<R>" + test::XmlRecord("FCD", 3, test::XmlField("CtIdx", 30)) +
                           test::XmlRecord("FCD", 1, test::XmlField("CtIdx", 10)) + "</R>";
  const std::vector<FeatureClass> classes = ReadXmlFeatureClasses({"FCD", text});
  ASSERT_THAT(classes, SizeIs(4));
  EXPECT_EQ(classes[3].ClassIndex, 30);
  EXPECT_EQ(classes[1].ClassIndex, 10);
  EXPECT_EQ(classes[2].ClassIndex, 0);
}

TEST(XmlObjectTables, TwoRecordsWithOneNumberAreRefused) {
  const std::string text = "<R>" + test::XmlRecord("PD", 5, "") + test::XmlRecord("PD", 5, "") + "</R>";
  EXPECT_EQ(test::FailureOf([&] {
              ReadXmlPoints({"PDX.XML", text});
            }),
            "PDX.XML: record 5, another record has this number");
}

TEST(XmlObjectTables, NumbersThatDoNotFitAreRefusedWithTheirRecord) {
  const auto refused = [](const std::string& fields) {
    return test::FailureOf([&] { ReadXmlClasses({"CT.XML", test::XmlTable("CTRecords", "CT", {fields}, 5)}); });
  };
  EXPECT_EQ(refused(test::XmlField("Class", 256)), "CT.XML: record 5, Class: \"256\" does not fit");
  EXPECT_EQ(refused(test::XmlField("GraphicsNormal", 40000)),
            "CT.XML: record 5, GraphicsNormal: \"40000\" does not fit");
  EXPECT_EQ(refused(test::XmlField("EntityIdx", "1e30")), "CT.XML: record 5, EntityIdx: \"1e30\" does not fit");
  EXPECT_EQ(refused(test::XmlField("EntityType", "a")), "CT.XML: record 5, EntityType: \"a\" is no number");
}

TEST(XmlObjectTables, FileOfAFolderHasOneClass) {
  const std::string class834 = test::XmlObjectiveClass({.Class = 4623, .Name = "Yard"}, test::XmlAge::Folders);
  EXPECT_EQ(ReadXmlObjectiveClass({"OCD", test::XmlTable("OCDRecords", "OCD", {class834}, 834)}).ClassIndex, 4623);
  EXPECT_EQ(test::FailureOf([] {
              ReadXmlObjectiveClass({"OCD", "<OCDRecords/>"});
            }),
            "OCD: it has 0 records and not one");
  EXPECT_EQ(test::FailureOf([&] {
              ReadXmlObjectiveClass({"OCD", test::XmlTable("R", "OCD", {class834, class834})});
            }),
            "OCD: it has 2 records and not one");
  const std::string lies = test::XmlObjectiveClass({.Header = 9, .Features = 9, .First = 9});
  const ObjectiveClass lied = ReadXmlObjectiveClass({"OCD", test::XmlTable("R", "OCD", {lies})});
  EXPECT_EQ(lied.FirstHeader + lied.FeatureCount + lied.FirstFeature, 0);
}

TEST(XmlObjectTables, CutAnywhereIsRefused) {
  const std::string text = test::XmlTable("PDRecords", "PD", {test::XmlPoint({.Kind = 1}), test::XmlPoint({})});
  const std::size_t whole = text.rfind('>') + 1;
  for (std::size_t length = 0; length < whole; ++length) {
    EXPECT_THAT(test::FailureOf([&] { ReadXmlPoints({"PDX.XML", text.substr(0, length)}); }), HasSubstr("PDX.XML: "));
  }
  EXPECT_THAT(ReadXmlPoints({"PDX.XML", text.substr(0, whole)}), SizeIs(2));
  EXPECT_THAT(ReadXmlPoints({"PDX.XML", "<PDRecords/>"}), IsEmpty());
}

}  // namespace
}  // namespace kestrel::falcon
