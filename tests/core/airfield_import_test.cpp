#include "core/airfield_import.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "base/program_title.h"
#include "base/temp_folder.h"
#include "doubles/station_around.h"
#include "falcon/campaign_writer.h"
#include "falcon/table_writer.h"
#include "falcon/xml_writer.h"
#include "radio/frequency_file.h"

namespace kestrel::core {
namespace {

namespace fs = std::filesystem;
using base::Changed;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// An installation with an airbase of country 6 in cell 398, 236: one runway, from a map unit south of it to half a map
/// unit north; and a station whose airfields and teams are others.
class AirfieldImports : public testing::Test {
 protected:
  AirfieldImports() {
    for (const char* folder : {"Campaign", "Objects", "Common"}) fs::create_directory(disk / folder);
    Write("Objects/falcon4.CT",
          test::TableOf<test::ClassPlan>({{.Domain = 0, .Class = 0, .Data = 2}, {.Index = 1}}, test::ClassRecord));
    Write("Objects/FALCON4.ocd", test::TableOf<test::ObjectiveClassPlan>(
                                     {{}, {.Class = 1, .Name = "Airbase", .Header = 1}}, test::ObjectiveClassRecord));
    Write("Objects/Falcon4.FED", test::TableOf<test::FeatureEntryPlan>({{}}, test::FeatureEntryRecord));
    Write("Objects/Falcon4.FCD", test::TableOf<test::FeatureClassPlan>({{}}, test::FeatureClassRecord));
    Write("Objects/Falcon4.PHD",
          test::TableOf<test::HeaderPlan>({{},
                                           {.Kind = 8, .Data = 360, .Runway = 0, .Next = 2},
                                           {.Count = 2, .Data = 360, .First = 0, .Runway = 0, .Next = 3},
                                           {.Count = 2, .Data = 180, .First = 2, .Runway = 0}},
                                          test::HeaderRecord));
    const float south = -3279.98F, north = 1639.99F;
    Write("Objects/Falcon4.PD", test::TableOf<test::PointPlan>({{.North = south, .Kind = 2},
                                                                {.North = north, .Kind = 1},
                                                                {.North = north, .Kind = 2},
                                                                {.North = south, .Kind = 1}},
                                                               test::PointRecord));
    WriteCampaign(108, 0);
    Write("Campaign/Stations+ILS.dat", "# all\r\n766 75 X 18 35 1 292300 126500 11030 0 0 0\r\n5 7\r\n");

    around.State.Frequencies.Teams[1] = "Old";
    around.State.Frequencies.Airfields.Append({}).Name = "Old field";
    around.State.Frequencies.CustomF1 = "243000";
    before = radio::WriteFrequencies(around.State.Frequencies);
  }

  void Write(const std::string& name, const std::string& bytes) { test::WriteBytes(disk / name, bytes); }
  void WriteCampaign(int version, int nameId) {
    std::vector<test::TeamPlan> teams;
    for (int n = 0; n < 8; ++n) teams.push_back({.Number = n, .Side = n, .Name = n == 2 ? "" : "Country"});
    const test::ObjectivePlan airbase{.Type = 101,
                                      .X = 398,
                                      .Y = 236,
                                      .Owner = 6,
                                      .CampId = 766,
                                      .NameId = nameId,
                                      .North = 775715.27,
                                      .East = 1307072.03,
                                      .Name = "Kunsan"};
    Write("Campaign/Save0.cam", test::WorldBytes({.Place = {.Version = version},
                                                  .Scenario = "Save0",
                                                  .SaveName = "save0",
                                                  .Teams = teams,
                                                  .Objectives = {airbase}}));
  }

  bool Import() {
    return ImportAirfields(around.All, {disk / "Campaign", {disk / "Objects", disk / "Common"}},
                           disk / "Campaign/Save0.cam");
  }
  /// Imports what cannot be read: one box says so.
  void ExpectBox(const std::string& text) {
    around.Desk.Boxes.clear();
    EXPECT_FALSE(Import());
    ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
    EXPECT_EQ(around.Desk.Boxes[0].Text, text);
    around.Desk.Boxes.clear();
  }
  /// Imports what cannot be read: the one box says so, and nothing has changed.
  void ExpectRefused(const std::string& title, const std::string& text) {
    around.Desk.Boxes.clear();
    EXPECT_FALSE(Import());
    ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
    EXPECT_EQ(around.Desk.Boxes[0].Title, title);
    EXPECT_EQ(around.Desk.Boxes[0].Text, text);
    EXPECT_EQ(around.Desk.Boxes[0].Buttons, base::MessageButtons::Ok);
    EXPECT_EQ(radio::WriteFrequencies(around.State.Frequencies), before);
    EXPECT_EQ(around.State.Frequencies.Revision, 0U);
    EXPECT_EQ(around.State.FrequencySteps.UndoText(), "");
    EXPECT_THAT(around.Shown.Refreshes, IsEmpty());
  }

  test::TempFolder disk;
  doubles::StationAround<> around;
  std::string before;
};

TEST_F(AirfieldImports, ReplaceTeamsAndAirfields) {
  EXPECT_TRUE(Import());
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  const radio::Frequencies& tables = around.State.Frequencies;
  EXPECT_THAT(tables.Teams,
              ElementsAre("Country", "Country", "Team #2", "Country", "Country", "Country", "Country", "Country"));
  ASSERT_EQ(tables.Airfields.UpperBound(), 2U);
  const radio::Airfield& field = tables.Airfields[1];
  EXPECT_EQ(field.Name, "Kunsan");
  EXPECT_EQ(field.TEAM_INDEX, 6);
  EXPECT_EQ(field.TACANX, 398.5);
  EXPECT_EQ(field.TACANY, 236.5);
  EXPECT_EQ(field.TACAN, "075");
  EXPECT_EQ(field.TACAN_BAND, "X");
  EXPECT_EQ(field.TACANR, 35);
  EXPECT_EQ(field.UHF, "292300");
  EXPECT_EQ(field.VHF, "126500");
  EXPECT_THAT(field.ILS, ElementsAre("11030", "-", "-", "-"));
  EXPECT_THAT(field.ILS_DES, ElementsAre("18", "36", "-", "-"));
  // Offsets stand in the file with 24 bits, which is some thousandths of a foot.
  EXPECT_NEAR(field.ILS_R[0].RX, 398.5, 1e-6);
  EXPECT_NEAR(field.ILS_R[0].RY, 237, 1e-6);
  EXPECT_NEAR(field.ILS_DRAW_HEADING[0], 90, 1e-6) << "whoever lands southward comes from the north";
  EXPECT_NEAR(field.ILS_R[1].RY, 235.5, 1e-6);
  EXPECT_NEAR(field.ILS_DRAW_HEADING[1], -90, 1e-6);
  EXPECT_EQ(tables.Airfields[2].Name, "**Not an Airbase!");
  EXPECT_EQ(tables.Airfields[2].TACAN, "007");
  EXPECT_EQ(tables.CustomF1, "243000") << "the rest stays";
  EXPECT_THAT(around.Shown.Refreshes, ElementsAre(Changed::Frequencies | Changed::Map));
}

TEST_F(AirfieldImports, AreOneStep) {
  ASSERT_TRUE(Import());
  EXPECT_EQ(around.State.Frequencies.Revision, 1U);
  EXPECT_TRUE(around.State.FrequencySteps.Undo(around.State.Frequencies).Done);
  EXPECT_EQ(radio::WriteFrequencies(around.State.Frequencies), before);
  EXPECT_EQ(around.State.FrequencySteps.UndoText(), "");
}

TEST_F(AirfieldImports, TableThatCannotBeReadIsTold) {
  const struct {
    const char *File, *Kind;
  } cases[] = {{"Objects/falcon4.CT", "CT"},
               {"Objects/FALCON4.ocd", "OCD"},
               {"Objects/Falcon4.FED", "FED"},
               {"Objects/Falcon4.PHD", "PHD"},
               {"Objects/Falcon4.PD", "PD"}};
  for (const auto& [file, kind] : cases) {
    SCOPED_TRACE(kind);
    const std::string bytes = test::ReadBytes(disk / file);
    const std::string text = "Could not load " + std::string(kind) + " file.";
    fs::remove(disk / file);
    ExpectRefused("Error", text);
    Write(file, bytes.substr(0, bytes.size() - 1));
    ExpectRefused("Error", text);
    Write(file, bytes);
  }
}

TEST_F(AirfieldImports, ClassesOfBuildingsAreNotNeeded) {
  Write("Objects/Falcon4.FCD", "x");
  EXPECT_TRUE(Import());
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  fs::remove(disk / "Objects/Falcon4.FCD");
  EXPECT_TRUE(Import());
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(AirfieldImports, TableMissingInTheFirstFolderIsTakenFromTheNext) {
  fs::rename(disk / "Objects/Falcon4.PD", disk / "Common/Falcon4.PD");
  Write("Common/Falcon4.PHD", "the first one counts");
  EXPECT_TRUE(Import());
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  EXPECT_NEAR(around.State.Frequencies.Airfields[1].ILS_R[0].RY, 237, 1e-6);
}

TEST_F(AirfieldImports, TablesInXmlGiveTheSame) {
  ASSERT_TRUE(Import());
  const std::string airfields = radio::WriteFrequencies(around.State.Frequencies);
  fs::remove_all(disk / "Objects");
  fs::create_directories(disk / "Objects");
  const float south = -3279.98F, north = 1639.99F;
  const auto points = [&] {
    std::vector<std::string> texts;
    for (const test::PointPlan& plan : std::vector<test::PointPlan>{{.North = south, .Kind = 2},
                                                                    {.North = north, .Kind = 1},
                                                                    {.North = north, .Kind = 2},
                                                                    {.North = south, .Kind = 1}}) {
      texts.push_back(test::XmlPoint(plan));
    }
    return test::XmlTable("PDRecords", "PD", texts);
  }();
  const test::HeaderPlan outline{.Kind = 8, .Data = 360, .Runway = 0, .Next = 2};
  const test::HeaderPlan northward{.Count = 2, .Data = 360, .First = 0, .Runway = 0, .Next = 3};
  const test::HeaderPlan southward{.Count = 2, .Data = 180, .First = 2, .Runway = 0};
  Write("Objects/FALCON4_CT.XML",
        test::XmlTable("CTRecords", "CT",
                       {test::XmlClass({.Domain = 0, .Class = 0, .Data = 2}), test::XmlClass({.Index = 1})}));
  Write("Objects/FALCON4_OCD.XML",
        test::XmlTable(
            "OCDRecords", "OCD",
            {test::XmlObjectiveClass({}), test::XmlObjectiveClass({.Class = 1, .Name = "Airbase", .Header = 1})}));
  Write("Objects/FALCON4_FED.XML", test::XmlTable("FEDRecords", "FED", {test::XmlFeatureEntry({})}));
  Write("Objects/FALCON4_PHD.XML", test::XmlTable("PHDRecords", "PHD",
                                                  {test::XmlHeader({}), test::XmlHeader(outline),
                                                   test::XmlHeader(northward), test::XmlHeader(southward)}));
  Write("Objects/FALCON4_PDX.XML", points);
  ASSERT_TRUE(Import());
  EXPECT_EQ(radio::WriteFrequencies(around.State.Frequencies), airfields);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());

  for (const char* const table : {"OCD", "FED", "PHD", "PDX"}) {
    fs::remove(disk / ("Objects/FALCON4_" + std::string(table) + ".XML"));
  }
  ExpectBox("Could not load OCD file.");
  const std::string folder = "Objects/ObjectiveRelatedData/OCD_00001";
  fs::create_directories(disk / folder);
  const auto header = [](const test::HeaderPlan& plan) {
    return test::XmlHeader(plan, std::to_string(plan.Data) + ".000", test::XmlAge::Folders);
  };
  Write(folder + "/OCD_00001.XML",
        test::XmlTable("OCDRecords", "OCD",
                       {test::XmlObjectiveClass({.Class = 1, .Name = "Airbase"}, test::XmlAge::Folders)}, 1));
  Write(folder + "/PHD_00001.XML",
        test::XmlTable("PHDRecords", "PHD", {header(outline), header(northward), header(southward)}));
  Write(folder + "/PDX_00001.XML", points);
  ASSERT_TRUE(Import());
  EXPECT_EQ(radio::WriteFrequencies(around.State.Frequencies), airfields);
}

TEST_F(AirfieldImports, NamesMayStandBesideTheCampaign) {
  WriteCampaign(103, 0);
  Write(
      "Campaign/CampObjData.XML",
      test::XmlTable("CampObjData", "CampObj",
                     {test::XmlCampObject({.Name = "Gunsan", .North = 775715.27, .East = 1307072.03})}, 766, "CampId"));
  ASSERT_TRUE(Import());
  EXPECT_EQ(around.State.Frequencies.Airfields[1].Name, "Gunsan");
}

TEST_F(AirfieldImports, CampaignThatCannotBeReadIsTold) {
  Write("Campaign/Save0.cam", "");
  around.Desk.Boxes.clear();
  EXPECT_FALSE(Import());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes[0].Text, testing::StartsWith("An error occured: Error #321. Save0.cam"));
  EXPECT_EQ(radio::WriteFrequencies(around.State.Frequencies), before);
  fs::remove(disk / "Campaign/Save0.cam");
  ExpectRefused(base::ProgramTitle(), "An error occured: Error #53. Save0.cam is no file");
}

TEST_F(AirfieldImports, MissingNamesAreToldWhenTheyAreNeeded) {
  WriteCampaign(103, 1);
  ExpectRefused("Error", "Could not load Theater strings.");
  Write("Campaign/Korea.idx", test::Bytes2(3) + test::Bytes2(0) + test::Bytes2(7) + test::Bytes2(11));
  Write("Campaign/Korea.wch", "NowhereOsan");
  EXPECT_TRUE(Import());
  EXPECT_EQ(around.State.Frequencies.Airfields[1].Name, "Osan");
}

TEST_F(AirfieldImports, WithoutStationsAreNone) {
  fs::remove(disk / "Campaign/Stations+ILS.dat");
  ExpectRefused(base::ProgramTitle(), "An error occured: Error #53. stations+ils.dat is no file");
}

TEST_F(AirfieldImports, GoAsFarAsTheStationsCanBeRead) {
  Write("Campaign/Stations+ILS.dat", "766 1\nseven 2\n766 3\n");
  EXPECT_TRUE(Import());
  EXPECT_EQ(around.State.Frequencies.Airfields.UpperBound(), 1U);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.Desk.Boxes[0].Title, base::ProgramTitle());
  EXPECT_THAT(around.Desk.Boxes[0].Text, testing::StartsWith("An error occured: Error #321. Stations+ILS.dat, line 2"));
}

}  // namespace
}  // namespace kestrel::core
