#include "falcon/object_database.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "base/temp_folder.h"
#include "falcon/objective_folders.h"
#include "falcon/runways.h"
#include "falcon/xml_writer.h"

namespace kestrel::falcon {
namespace {

namespace fs = std::filesystem;
using test::XmlAge;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// A database of an airbase, class 1, with two buildings, of which the first is virtual, and a runway from 100 to 280
/// degrees, whose outline comes first; its threshold is 50 east, its far end 1050.
class ObjectDatabases : public testing::Test {
 protected:
  const std::vector<test::ClassPlan> classes = {{.Domain = 0, .Class = 0, .Data = 2},
                                                {.Index = 1},
                                                {.Class = 2, .Models = {7, 0, 0, 0, 0, 0, 0}, .Data = 1, .Index = 1},
                                                {.Class = 2, .Models = {8, 0, 0, 0, 0, 0, 0}, .Data = 1, .Index = 2}};
  const std::vector<test::FeatureEntryPlan> features = {{.Class = 2}, {.Class = 3, .East = 10, .North = 20}};
  const std::vector<test::FeatureClassPlan> featureClasses = {
      {}, {.Class = 2, .Flags = 2, .Name = "Hidden"}, {.Class = 3, .Name = "Tower"}};
  const std::vector<test::PointPlan> points = {{.East = 1, .Kind = 8},
                                               {.East = 50, .Kind = 2},
                                               {.East = 1050, .Kind = 1},
                                               {.East = 1050, .Kind = 2},
                                               {.East = 50, .Kind = 1}};

  /// The headers of the airbase when the first of them has that number and the first point that one.
  static std::vector<test::HeaderPlan> Headers(int first, int firstPoint) {
    return {{.Objective = 1, .Kind = 8, .Count = 1, .Data = 10, .First = firstPoint, .Runway = 0, .Next = first + 1},
            {.Objective = 1, .Count = 2, .Data = 100, .First = firstPoint + 1, .Runway = 0, .Next = first + 2},
            {.Objective = 1, .Count = 2, .Data = 280, .First = firstPoint + 3, .Runway = 0}};
  }

  void Write(const fs::path& file, const std::string& bytes) {
    fs::create_directories((disk.Path() / file).parent_path());
    test::WriteBytes(disk.Path() / file, bytes);
  }
  void Remove(const fs::path& file) { fs::remove_all(disk.Path() / file); }

  template <class Plan>
  static std::vector<std::string> Texts(const std::vector<Plan>& plans, std::string (*write)(const Plan&)) {
    std::vector<std::string> texts;
    for (const Plan& plan : plans) texts.push_back(write(plan));
    return texts;
  }

  void WriteBinary(const fs::path& folder) {
    Write(folder / "FALCON4.CT", test::TableOf(classes, test::ClassRecord));
    Write(folder / "Falcon4.ocd",
          test::TableOf<test::ObjectiveClassPlan>({{}, {.Class = 1, .Name = "Binary", .Header = 1, .Features = 2}},
                                                  test::ObjectiveClassRecord));
    Write(folder / "Falcon4.FED", test::TableOf(features, test::FeatureEntryRecord));
    Write(folder / "Falcon4.FCD", test::TableOf(featureClasses, test::FeatureClassRecord));
    std::vector<test::HeaderPlan> headers = Headers(1, 0);
    headers.insert(headers.begin(), test::HeaderPlan{});
    Write(folder / "Falcon4.PHD", test::TableOf(headers, test::HeaderRecord));
    Write(folder / "Falcon4.PD", test::TableOf(points, test::PointRecord));
  }

  void WriteSharedXml(const fs::path& folder) {
    Write(folder / "FALCON4_CT.XML", test::XmlTable("CTRecords", "CT", Texts(classes, test::XmlClass)));
    Write(folder / "Falcon4_FCD.xml",
          test::XmlTable("FCDRecords", "FCD", Texts(featureClasses, test::XmlFeatureClass)));
  }
  void WriteXml(const fs::path& folder) {
    WriteSharedXml(folder);
    Write(folder / "FALCON4_OCD.XML",
          test::XmlTable("OCDRecords", "OCD",
                         {test::XmlObjectiveClass({}),
                          test::XmlObjectiveClass({.Class = 1, .Name = "Xml", .Header = 1, .Features = 2})}));
    Write(folder / "FALCON4_FED.XML", test::XmlTable("FEDRecords", "FED", Texts(features, test::XmlFeatureEntry)));
    std::vector<test::HeaderPlan> headers = Headers(1, 0);
    headers.insert(headers.begin(), test::HeaderPlan{});
    Write(folder / "FALCON4_PHD.XML", test::XmlTable("PHDRecords", "PHD", Texts(headers, test::XmlHeader)));
    Write(folder / "FALCON4_PDX.XML", test::XmlTable("PDRecords", "PD", Texts(points, test::XmlPoint)));
  }

  /// The airbase as class `number`, with its files in a folder.
  void WriteFolder(const fs::path& folder, int number, const std::string& name) {
    const std::string digits = std::to_string(100000 + number).substr(1);
    const fs::path place = folder / "ObjectiveRelatedData" / ("OCD_" + digits);
    Write(
        place / ("OCD_" + digits + ".XML"),
        test::XmlTable("OCDRecords", "OCD", {test::XmlObjectiveClass({.Class = number, .Name = name}, XmlAge::Folders)},
                       static_cast<std::size_t>(number)));
    Write(place / ("FED_" + digits + ".XML"),
          test::XmlTable("FEDRecords", "FED", Texts(features, test::XmlFeatureEntry)));
    std::vector<std::string> headers;
    for (const test::HeaderPlan& plan : Headers(0, 0)) {
      headers.push_back(test::XmlHeader(plan, std::to_string(plan.Data) + ".448", XmlAge::Folders));
    }
    Write(place / ("PHD_" + digits + ".XML"), test::XmlTable("PHDRecords", "PHD", headers));
    Write(place / ("PDX_" + digits + ".XML"), test::XmlTable("PDRecords", "PD", Texts(points, test::XmlPoint)));
  }

  ObjectDatabase Load(const std::vector<std::string>& names = {"Objects"}) {
    std::vector<fs::path> folders;
    for (const std::string& name : names) folders.push_back(disk / name);
    return LoadObjectDatabase(folders);
  }
  /// "KIND: reason" of the failure.
  std::string Refusal(const std::vector<std::string>& names = {"Objects"}) {
    try {
      Load(names);
    } catch (const TableFailure& failure) {
      return failure.Kind + ": " + failure.what();
    }
    return "";
  }

  static void ExpectAirbase(const ObjectTables& tables, const std::string& name, double heading) {
    const ObjectiveClass* const airbase = ObjectiveClassAt(tables, 1);
    ASSERT_NE(airbase, nullptr);
    EXPECT_EQ(airbase->Name, name);
    const std::vector<PlacedFeature> seen = FeaturesOf(tables, *airbase);
    ASSERT_THAT(seen, SizeIs(1));
    EXPECT_EQ(seen[0].Number, 1);
    EXPECT_EQ(seen[0].Data->Name, "Tower");
    EXPECT_EQ(seen[0].Entry->North, 20);
    const Runways runways = CollectRunways(tables, *airbase);
    ASSERT_TRUE(runways[0][0] && runways[0][1]);
    EXPECT_NEAR(runways[0][0]->Heading, heading, 1e-9);
    EXPECT_EQ(runways[0][0]->Begin->East, 50);
    EXPECT_EQ(runways[0][0]->FarEnd->East, 1050);
    EXPECT_NEAR(runways[0][1]->Heading, heading + 180, 1e-9);
    EXPECT_EQ(runways[0][1]->Begin->East, 1050);
    EXPECT_FALSE(runways[1][0]);
  }

  const test::TempFolder disk;
};

TEST_F(ObjectDatabases, EachGenerationIsReadIntoTheSame) {
  WriteBinary("Objects");
  ExpectAirbase(Load().Tables, "Binary", 100);
  WriteXml("Objects");
  ExpectAirbase(Load().Tables, "Xml", 100);
  WriteFolder("Objects", 1, "Folder");
  const ObjectDatabase database = Load();
  ExpectAirbase(database.Tables, "Folder", 100.448);
  EXPECT_THAT(database.Notes, IsEmpty());
}

TEST_F(ObjectDatabases, FoldersAloneAreEnoughForObjectives) {
  WriteSharedXml("Objects");
  WriteFolder("Objects", 1, "Folder");
  ExpectAirbase(Load().Tables, "Folder", 100.448);
}

TEST_F(ObjectDatabases, ClassesInFoldersDoNotMix) {
  WriteSharedXml("Objects");
  for (const int number : {0, 1, 3}) WriteFolder("Objects", number, "Class " + std::to_string(number));
  const ObjectTables tables = Load().Tables;
  ExpectAirbase(tables, "Class 1", 100.448);
  ASSERT_THAT(tables.Objectives, SizeIs(4));
  EXPECT_EQ(tables.Objectives[2].FeatureCount, 0) << "there is no such folder";
  EXPECT_EQ(tables.Objectives[2].FirstHeader, 0);
  EXPECT_EQ(tables.Objectives[3].FirstFeature, 4);
  for (const int number : {0, 1, 3}) {
    const std::vector<const PointHeader*> headers =
        PointHeadersOf(tables, tables.Objectives[static_cast<std::size_t>(number)]);
    ASSERT_THAT(headers, SizeIs(3)) << number;
    for (const PointHeader* const header : headers) EXPECT_EQ(header->Objective, number);
    EXPECT_EQ(PointsOf(tables, *headers[0])[0].East, 1);
  }
}

TEST_F(ObjectDatabases, PointsOfTheNextClassAreNotThoseOfACutOne) {
  WriteSharedXml("Objects");
  WriteFolder("Objects", 1, "Cut");
  WriteFolder("Objects", 2, "Next");
  const fs::path folder = "Objects/ObjectiveRelatedData/OCD_00001";
  Write(folder / "PDX_00001.XML", test::XmlTable("PDRecords", "PD", {test::XmlPoint({}), test::XmlPoint({.Kind = 2})}));
  const auto counted = [this] {
    const ObjectTables tables = Load().Tables;
    std::vector<std::size_t> counts;
    for (const PointHeader* header : PointHeadersOf(tables, tables.Objectives[1])) {
      counts.push_back(PointsOf(tables, *header).size());
    }
    return counts;
  };
  EXPECT_THAT(counted(), ElementsAre(1, 1, 0));
  Remove(folder / "PDX_00001.XML");
  EXPECT_THAT(counted(), ElementsAre(0, 0, 0));
}

TEST_F(ObjectDatabases, HeaderThatLiesLeadsNowhere) {
  WriteSharedXml("Objects");
  WriteFolder("Objects", 1, "Lies");
  for (const int first : {-1, 5, 2147483647}) {
    Write("Objects/ObjectiveRelatedData/OCD_00001/PHD_00001.XML",
          test::XmlTable("PHDRecords", "PHD",
                         {test::XmlHeader({.Count = 2147483647U, .First = first}, "1", XmlAge::Folders)}));
    const ObjectTables tables = Load().Tables;
    EXPECT_THAT(PointsOf(tables, *PointHeadersOf(tables, tables.Objectives[1])[0]), SizeIs(0));
  }
}

TEST_F(ObjectDatabases, FolderThatIsMissingIsTakenFromTheNextDatabase) {
  WriteSharedXml("Common");
  WriteFolder("Common", 1, "Common");
  WriteFolder("Common", 2, "Common 2");
  WriteFolder("AddOn", 2, "Own");
  ObjectTables tables = Load({"AddOn", "Common"}).Tables;
  ExpectAirbase(tables, "Common", 100.448);
  EXPECT_EQ(tables.Objectives[2].Name, "Own");
  // One with other files alone counts as missing.
  Remove("AddOn/ObjectiveRelatedData/OCD_00002/OCD_00002.XML");
  WriteFolder("AddOn", 3, "Third");
  tables = Load({"AddOn", "Common"}).Tables;
  EXPECT_EQ(tables.Objectives[2].Name, "Common 2");
  EXPECT_EQ(tables.Objectives[3].Name, "Third");
}

TEST_F(ObjectDatabases, NamesAreFoundWhateverTheirCase) {
  WriteSharedXml("Objects");
  WriteFolder("Objects", 1, "Folder");
  const fs::path objects = disk / "Objects";
  fs::rename(objects / "ObjectiveRelatedData/OCD_00001/PHD_00001.XML",
             objects / "ObjectiveRelatedData/OCD_00001/phd_00001.xml");
  fs::rename(objects / "ObjectiveRelatedData/OCD_00001", objects / "ObjectiveRelatedData/ocd_00001");
  fs::rename(objects / "ObjectiveRelatedData", objects / "OBJECTIVERELATEDDATA");
  ExpectAirbase(Load().Tables, "Folder", 100.448);
}

TEST_F(ObjectDatabases, OtherFoldersAreNoClasses) {
  WriteSharedXml("Objects");
  WriteFolder("Objects", 1, "Folder");
  for (const char* const name : {"OCD_1", "OCD_-0001", "OCD_0000x", "OCD_000001", "XCD_00009", "OCD_"}) {
    Write(fs::path("Objects/ObjectiveRelatedData") / name / "OCD_00009.XML", "x");
  }
  Write("Objects/ObjectiveRelatedData/OCD_00007", "a file");
  EXPECT_THAT(Load().Tables.Objectives, SizeIs(2));
}

TEST_F(ObjectDatabases, TablesMayComeFromSeveralFoldersAndForms) {
  WriteBinary("Common");
  Write("AddOn/Falcon4_CT.xml", test::XmlTable("CTRecords", "CT", Texts(classes, test::XmlClass)));
  ExpectAirbase(Load({"AddOn", "Common"}).Tables, "Binary", 100);
  // The first folder counts even when a newer form stands in the second.
  WriteXml("Second");
  ExpectAirbase(Load({"Common", "Second"}).Tables, "Binary", 100);
}

TEST_F(ObjectDatabases, LargePointsComeBeforePlainOnes) {
  WriteBinary("Objects");
  Write("Objects/Falcon4.PDX", test::TableOf(points, test::LargePointRecord));
  Write("Objects/Falcon4.PD", "damaged");
  ExpectAirbase(Load().Tables, "Binary", 100);
}

TEST_F(ObjectDatabases, FirstTableThatCannotBeReadIsTold) {
  const auto expectEach = [this](const std::vector<std::pair<std::string, std::string>>& cases) {
    for (const auto& [file, kind] : cases) {
      SCOPED_TRACE(file);
      const std::string bytes = test::ReadBytes(disk / file);
      Write(file, bytes.substr(0, bytes.size() / 2));
      EXPECT_THAT(Refusal(), testing::StartsWith(kind + ": " + fs::path(file).filename().string()));
      Write(file, bytes);
    }
    EXPECT_EQ(Refusal(), "");
  };
  EXPECT_EQ(Refusal(), "CT: Falcon4.ct is in no folder of objects, nor is a newer form of it");
  WriteBinary("Objects");
  expectEach({{"Objects/FALCON4.CT", "CT"}, {"Objects/Falcon4.ocd", "OCD"}, {"Objects/Falcon4.PD", "PD"}});
  WriteXml("Objects");
  expectEach({{"Objects/FALCON4_CT.XML", "CT"},
              {"Objects/FALCON4_OCD.XML", "OCD"},
              {"Objects/FALCON4_FED.XML", "FED"},
              {"Objects/FALCON4_PHD.XML", "PHD"},
              {"Objects/FALCON4_PDX.XML", "PD"}});
  WriteFolder("Objects", 1, "Folder");
  expectEach({{"Objects/FALCON4_CT.XML", "CT"},
              {"Objects/ObjectiveRelatedData/OCD_00001/OCD_00001.XML", "OCD"},
              {"Objects/ObjectiveRelatedData/OCD_00001/FED_00001.XML", "FED"},
              {"Objects/ObjectiveRelatedData/OCD_00001/PHD_00001.XML", "PHD"},
              {"Objects/ObjectiveRelatedData/OCD_00001/PDX_00001.XML", "PD"}});
}

TEST_F(ObjectDatabases, TableWithoutRecordsIsRefused) {
  WriteXml("Objects");
  Write("Objects/FALCON4_PHD.XML", "<PHDRecords/>");
  EXPECT_EQ(Refusal(), "PHD: FALCON4_PHD.XML: it tells of no records");
}

TEST_F(ObjectDatabases, ClassesOfBuildingsMayBeMissing) {
  WriteXml("Objects");
  Write("Objects/Falcon4_FCD.xml", "x");
  ObjectDatabase database = Load();
  EXPECT_THAT(database.Tables.FeatureClasses, IsEmpty());
  EXPECT_THAT(database.Notes, ElementsAre(HasSubstr("Falcon4_FCD.xml: ")));
  EXPECT_THAT(FeaturesOf(database.Tables, database.Tables.Objectives[1]), SizeIs(2));
  Remove("Objects/Falcon4_FCD.xml");
  EXPECT_THAT(Load().Notes, ElementsAre(HasSubstr("Falcon4.FCD is in no folder")));
}

}  // namespace
}  // namespace kestrel::falcon
