// Single files: campaigns, tables, texts, missions.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <limits>
#include <string>

#include "base/files.h"
#include "falcon/lzss_packer.h"
#include "falcon_info_run.h"
#include "falcon_info_worlds.h"

namespace kestrel::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

class FalconInfoFiles : public FalconInfo {
 protected:
  void WriteTables(const std::string& below = "") {
    Write(below + "Falcon4.ct", SmallClassTable());
    Write(below + "FALCON4.OCD", SmallObjectiveClasses());
    Write(below + "falcon4.fed", SmallFeatures());
    Write(below + "Falcon4.FCD", SmallFeatureClasses());
    Write(below + "Falcon4.PHD", SmallHeaders());
    Write(below + "Falcon4.PD", TableOf(SmallPoints(), PointRecord));
  }
};

TEST_F(FalconInfoFiles, ContainerTellsItsParts) {
  const WorldPlan plan = SmallWorld();
  Write("Save0.cam", WorldBytes(plan));
  const Report report = Tell("Save0.cam");
  EXPECT_EQ(report.Text("kind"), "campaign");
  EXPECT_EQ(report.Number("container/data_version"), 103);
  ASSERT_EQ(report.Size("container/parts"), 5u);
  EXPECT_EQ(report.Text("container/parts/0/name"), "save0.cmp");
  EXPECT_EQ(report.Number("container/parts/0/position"), 4);
  const std::string description = DescriptionBytes(plan);
  EXPECT_EQ(report.Number("container/parts/0/size"), DescriptionPiece(description, 103).size());
  EXPECT_EQ(report.Number("container/parts/0/unpacked_size"), description.size());
  EXPECT_EQ(report.Number("container/parts/1/unpacked_size"), ObjectiveListBytes(plan.Objectives, 103).size());
  EXPECT_EQ(report.Number("container/parts/2/unpacked_size"), 0) << "no changes";
  EXPECT_EQ(report.Text("container/parts/3/name"), "save0.tea");
  EXPECT_TRUE(report.IsNull("container/parts/3/unpacked_size")) << "it is not packed";
  EXPECT_EQ(failures, 0u);
}

TEST_F(FalconInfoFiles, PartThatIsNotReadTellsNoUnpackedSize) {
  Pieces pieces = WorldPieces(SmallWorld());
  pieces.emplace_back("other.OBJ", std::string(20, '\x01'));
  Write("Save0.cam", Container(pieces));
  const Report report = Tell("Save0.cam");
  EXPECT_FALSE(report.IsNull("container/parts/1/unpacked_size"));
  EXPECT_EQ(report.Text("container/parts/5/name"), "other.OBJ");
  EXPECT_TRUE(report.IsNull("container/parts/5/unpacked_size")) << "the first of an ending is read";
}

TEST_F(FalconInfoFiles, CampaignTellsItsPlaceAndTeams) {
  Write("Save0.cam", WorldBytes(SmallWorld()));
  const Report report = Tell("Save0.cam");
  EXPECT_EQ(report.Text("campaign/theater"), "sample");
  EXPECT_EQ(report.Text("campaign/scenario"), "save0");
  EXPECT_EQ(report.Text("campaign/shown_name"), "A caf\xC3\xA9") << "the code page's e with an accent, in UTF-8";
  EXPECT_EQ(report.Number("campaign/width"), 512);
  EXPECT_EQ(report.Number("campaign/bullseye_x"), 390) << "whole ones, as the station takes it";
  EXPECT_EQ(report.Number("campaign/bullseye_y"), 464);
  ASSERT_EQ(report.Size("teams"), 8u);
  EXPECT_EQ(report.Text("teams/2/name"), "Blue");
  EXPECT_EQ(report.Text("teams/2/motto"), "Onward");
  EXPECT_EQ(report.Number("teams/2/flag"), 22);
  EXPECT_THAT(report.Numbers("teams/2/stance"), ElementsAre(3, 3, 1, 3, 3, 3, 5, 3));
  EXPECT_EQ(report.Text("teams/5/name"), "");
}

TEST_F(FalconInfoFiles, ObjectivesAreToldWithWhatTheTablesSay) {
  WriteTables();
  Write("Save0.cam", WorldBytes(SmallWorld()));
  Write("sample.idx", SmallNameIndex());
  Write("sample.wch", SmallNameTexts());
  const Report report = Tell("Save0.cam");
  EXPECT_EQ(report.Number("objective_count"), 2);
  EXPECT_FALSE(report.IsTrue("names_missing"));
  ASSERT_EQ(report.Size("objectives"), 2u);
  EXPECT_EQ(report.Number("objectives/0/id"), 501);
  EXPECT_EQ(report.Number("objectives/0/camp_id"), 766);
  EXPECT_EQ(report.Text("objectives/0/name"), "K\xC3\xB6ln");
  EXPECT_EQ(report.Number("objectives/0/class_index"), 1);
  EXPECT_EQ(report.Number("objectives/0/type"), 1);
  EXPECT_EQ(report.Text("objectives/0/type_name"), "Airbase");
  EXPECT_EQ(report.Text("objectives/0/class_name"), "Airbase A");
  EXPECT_EQ(report.Number("objectives/0/features"), 2);
  EXPECT_EQ(report.Number("objectives/0/owner"), 2);
  EXPECT_EQ(report.Number("objectives/0/first_owner"), 6);
  EXPECT_EQ(report.Number("objectives/0/x"), 398.5);
  EXPECT_EQ(report.Number("objectives/0/y"), 236.5);
  EXPECT_EQ(report.Number("objectives/0/exact/north"), 775715.27);
  EXPECT_EQ(report.Number("objectives/0/exact/heading"), 41.5);
  EXPECT_THAT(report.Numbers("objectives/0/states"), ElementsAre(0, 3));
  EXPECT_THAT(report.Numbers("objectives/0/links"), ElementsAre(502));
  EXPECT_TRUE(report.IsTrue("objectives/0/radar"));
  EXPECT_TRUE(report.IsNull("objectives/0/before")) << "no mission has changed it";
  EXPECT_TRUE(report.IsNull("objectives/1/type")) << "its class is beyond the table";
  EXPECT_TRUE(report.IsNull("objectives/1/features"));
  EXPECT_EQ(report.Number("objectives/1/parent"), 501);
}

TEST_F(FalconInfoFiles, MissionTellsBothSidesOfItsChanges) {
  WriteTables("objects/");
  Write("campaign/te_new.tac", WorldBytes(SmallWorld()));
  Write("campaign/mission.tac", WorldBytes(SmallMission()));
  options.Objects = {folder / "objects"};
  const Report report = Tell("campaign/mission.tac");
  EXPECT_THAT(report.Text("objectives_from"), testing::EndsWith("te_new.tac"));
  EXPECT_EQ(report.Number("changes/told"), 2);
  EXPECT_EQ(report.Number("changes/applied"), 1);
  EXPECT_EQ(report.Number("changes/of_no_objective"), 1);
  EXPECT_EQ(report.Number("objectives/0/owner"), 6);
  EXPECT_EQ(report.Number("objectives/0/supply"), 1);
  EXPECT_EQ(report.Number("objectives/0/losses"), 3);
  EXPECT_THAT(report.Numbers("objectives/0/states"), ElementsAre(3, 0));
  EXPECT_EQ(report.Number("objectives/0/before/owner"), 2);
  EXPECT_EQ(report.Number("objectives/0/before/supply"), 0x50) << "as the scenario has it";
  EXPECT_THAT(report.Numbers("objectives/0/before/states"), ElementsAre(0, 3));
  EXPECT_TRUE(report.IsNull("objectives/1/before"));

  fs::remove(folder / "campaign/te_new.tac");
  const Report alone = Tell("campaign/mission.tac");
  EXPECT_EQ(alone.Number("objective_count"), 0);
  EXPECT_TRUE(alone.IsNull("objectives_from"));
  EXPECT_THAT(alone.Text("notes/0"), HasSubstr("te_new"));
  Write("elsewhere/te_new.tac", WorldBytes(SmallWorld()));
  options.Campaign = folder / "elsewhere";
  EXPECT_EQ(Tell("campaign/mission.tac").Number("objective_count"), 2) << "the folder that was asked for";
}

TEST_F(FalconInfoFiles, NamesMayStandInAnotherFolder) {
  Write("Save0.cam", WorldBytes(SmallWorld()));
  EXPECT_TRUE(Tell("Save0.cam").IsTrue("names_missing"));
  Write("names/Sample.IDX", SmallNameIndex());
  Write("names/sample.wch", SmallNameTexts());
  options.Strings = folder / "names";
  const Report report = Tell("Save0.cam");
  EXPECT_FALSE(report.IsTrue("names_missing"));
  EXPECT_EQ(report.Text("objectives/0/name"), "K\xC3\xB6ln");
}

TEST_F(FalconInfoFiles, OneObjectiveIsToldWithItsClass) {
  WriteTables();
  Write("Save0.cam", WorldBytes(SmallWorld()));
  options.Objectives = {766};
  const Report report = Tell("Save0.cam");
  ASSERT_EQ(report.Size("objectives"), 1u);
  EXPECT_EQ(report.Text("objectives/0/class/objective/name"), "Airbase A");
  options.Objectives = {7};
  EXPECT_EQ(Tell("Save0.cam").Size("objectives"), 0u);
}

TEST_F(FalconInfoFiles, TablesTellTheirCountsAndRecords) {
  WriteTables();
  options.Records = {{"ct", 2}, {"ocd", 1}, {"fed", 1}, {"fcd", 1}, {"phd", 2}, {"pd", 1}, {"pd", 5}};
  const Report report = Tell("");
  EXPECT_EQ(report.Text("kind"), "objects");
  EXPECT_EQ(report.Text("tables/0/table"), "ct");
  EXPECT_EQ(report.Number("tables/0/records"), 4);
  EXPECT_THAT(report.Text("tables/1/file"), testing::EndsWith("FALCON4.OCD"));
  EXPECT_EQ(report.Number("tables/5/records"), 5);
  EXPECT_THAT(report.Numbers("records/0/record/models"), ElementsAre(701, 0, 0, 703, 0, 0, 0));
  EXPECT_EQ(report.Number("records/0/record/class"), 2);
  EXPECT_EQ(report.Text("records/1/record/name"), "Airbase A");
  EXPECT_EQ(report.Number("records/1/record/radar_feature"), 1);
  EXPECT_EQ(report.Number("records/2/record/east"), 100.5);
  EXPECT_EQ(report.Number("records/2/record/value"), 20);
  EXPECT_EQ(report.Number("records/3/record/hit_points"), 300);
  EXPECT_EQ(report.Number("records/4/record/data"), 90);
  EXPECT_EQ(report.Number("records/4/record/next"), 3);
  EXPECT_EQ(report.Number("records/5/record/east"), 4000);
  EXPECT_TRUE(report.IsNull("records/6/record")) << "beyond the table";

  const Report table = Tell("FALCON4.OCD");
  EXPECT_EQ(table.Text("kind"), "table");
  EXPECT_EQ(table.Number("records"), 2);
  ASSERT_EQ(table.Size("asked"), 1u) << "what is asked of this table alone";
  EXPECT_EQ(table.Text("asked/0/record/name"), "Airbase A");
}

TEST_F(FalconInfoFiles, ClassTellsItsFeaturesHeadersAndRunwayEnds) {
  WriteTables();
  options.Classes = {1, 2, 77};
  const Report report = Tell("");
  EXPECT_EQ(report.Text("classes/0/type_name"), "Airbase");
  ASSERT_EQ(report.Size("classes/0/features"), 1u) << "the other is virtual";
  EXPECT_EQ(report.Text("classes/0/features/0/name"), "Hangar");
  EXPECT_EQ(report.Number("classes/0/features/0/entry/north"), -50);
  EXPECT_THAT(report.Numbers("classes/0/features/0/models"), ElementsAre(701, 701, 701, 703));
  ASSERT_EQ(report.Size("classes/0/headers"), 3u);
  EXPECT_EQ(report.Number("classes/0/headers/1/index"), 2);
  EXPECT_EQ(report.Number("classes/0/headers/1/points/1/east"), -4000);
  ASSERT_EQ(report.Size("classes/0/runway_ends"), 2u) << "the outline is none";
  EXPECT_EQ(report.Text("classes/0/runway_ends/0/name"), "09");
  EXPECT_EQ(report.Number("classes/0/runway_ends/0/begin/east"), -4000);
  EXPECT_EQ(report.Number("classes/0/runway_ends/0/far_end/east"), 4000);
  EXPECT_EQ(report.Text("classes/0/runway_ends/1/name"), "27");
  EXPECT_TRUE(report.IsNull("classes/1/objective")) << "a hangar";
  EXPECT_TRUE(report.IsNull("classes/2/type")) << "beyond the table";
}

TEST_F(FalconInfoFiles, NumberThatIsNoneIsNull) {
  Write("Falcon4.FED",
        TableOf(std::vector<FeatureEntryPlan>{{.Class = 2, .East = std::numeric_limits<float>::quiet_NaN()}},
                FeatureEntryRecord));
  options.Records = {{"fed", 0}};
  const Report report = Tell("Falcon4.FED");
  EXPECT_EQ(report.Number("asked/0/record/class_index"), 2);
  EXPECT_TRUE(report.IsNull("asked/0/record/east"));
}

TEST_F(FalconInfoFiles, LargePointsComeBeforeSmallOnes) {
  Write("Falcon4.PDX", TableOf(SmallPoints(), LargePointRecord));
  Write("Falcon4.PD", TableOf(std::vector<PointPlan>{{}}, PointRecord));
  EXPECT_EQ(Tell("Falcon4.PDX").Number("records"), 5);
  EXPECT_EQ(Tell("Falcon4.PD").Number("records"), 1);
  const Report report = Tell("");
  EXPECT_THAT(report.Text("tables/5/file"), testing::EndsWith("Falcon4.PDX"));
  EXPECT_EQ(report.Number("tables/5/records"), 5);
  EXPECT_TRUE(report.IsNull("tables/0/file")) << "no class table";
}

TEST_F(FalconInfoFiles, StringsAreToldByTheirNumbers) {
  Write("korea.idx", SmallNameIndex());
  Write("KOREA.WCH", SmallNameTexts());
  for (const char* const name : {"korea.idx", "KOREA.WCH"}) {
    const Report report = Tell(name);
    EXPECT_EQ(report.Number("count"), 4);
    ASSERT_EQ(report.Size("strings"), 4u);
    EXPECT_EQ(report.Number("strings/3/number"), 3);
    EXPECT_EQ(report.Text("strings/3/text"), "K\xC3\xB6ln");
  }
  Write("Strings.txt", "501\tAirbase\r\n40 Nobody\r\nno number\r\n");
  const Report lines = Tell("Strings.txt");
  EXPECT_EQ(lines.Number("count"), 502);
  EXPECT_EQ(lines.Number("damaged"), 1);
  EXPECT_EQ(lines.Text("strings/0/text"), "Nobody");
  EXPECT_EQ(lines.Number("strings/1/number"), 501);
}

TEST_F(FalconInfoFiles, StationsAreToldAsTheyAreWritten) {
  Write("Stations+ILS.dat", "# none\r\n764 042 X 18 35 1 250200\r\nnobody\r\n");
  const Report report = Tell("Stations+ILS.dat");
  EXPECT_EQ(report.Number("count"), 1);
  EXPECT_THAT(report.Text("trouble"), HasSubstr("3"));
  EXPECT_EQ(report.Number("stations/0/camp_id"), 764);
  EXPECT_EQ(report.Number("stations/0/told"), 7);
  EXPECT_EQ(report.Text("stations/0/tacan_channel"), "042");
  EXPECT_EQ(report.Text("stations/0/tower_uhf"), "250200");
  EXPECT_EQ(report.Text("stations/0/atis_voice"), "");
}

// 10 map units are 32799.8 feet, 20 are 65599.6; 12152.23098 feet are 2 nautical miles.
constexpr std::string_view Steerpoints =
    "[STPT]\r\ntarget_0=32799.8, 65599.6, -2000, 1, Not set\r\nppt_3=32799.8, 65599.6, 0, 12152.23098, SA-2\r\n";

TEST_F(FalconInfoFiles, MissionTellsWhatItsImportDraws) {
  Write("mission.ini", "[MISSION]\r\ntitle=Strike\r\n" + std::string(Steerpoints));
  const Report report = Tell("mission.ini");
  EXPECT_EQ(report.Text("kind"), "mission");
  EXPECT_EQ(report.Text("title"), "Strike");
  ASSERT_EQ(report.Size("groups"), 2u);
  EXPECT_EQ(report.Text("groups/0/name"), "STPs");
  EXPECT_DOUBLE_EQ(report.Number("groups/0/areas/0/points/0/x"), 20);
  EXPECT_DOUBLE_EQ(report.Number("groups/0/areas/0/points/0/y"), 10);
  EXPECT_EQ(report.Number("groups/0/areas/0/points/0/altitude"), 2000);
  EXPECT_EQ(report.Text("groups/1/areas/1/type"), "Circle");
  EXPECT_NEAR(report.Number("groups/1/areas/1/radius"), 2, 1e-9);
  EXPECT_TRUE(report.IsNull("uhf")) << "no pilot's";
}

TEST_F(FalconInfoFiles, PilotTellsHisChannels) {
  Write("Viper.ini", std::string(Steerpoints) + "[Radio]\r\nUHF_1=297500\r\nVHF_20=38825\r\n");
  Write("Viper.LBK", "");
  const Report report = Tell("Viper.LBK");
  EXPECT_EQ(report.Text("kind"), "pilot");
  EXPECT_EQ(report.Text("callsign"), "Viper");
  ASSERT_EQ(report.Size("uhf"), 20u);
  EXPECT_EQ(report.Text("uhf/0"), "297500");
  EXPECT_EQ(report.Text("vhf/0"), "000000");
  EXPECT_EQ(report.Text("vhf/19"), "38825");
  EXPECT_EQ(report.Size("groups"), 2u);
  EXPECT_EQ(Tell("Viper.ini").Text("kind"), "pilot");
  fs::remove(folder / "Viper.ini");
  EXPECT_TRUE(Tell("Viper.LBK").IsNull("settings_file")) << "no pilot's";
  EXPECT_EQ(failures, 0u);
}

TEST_F(FalconInfoFiles, ConfigurationTellsTheTeamsFrequencies) {
  Write("falcon bms.cfg", "set g_nF1TeamUiFreq 307300 // F1\r\nset g_nOther 1\r\n");
  const Report report = Tell("falcon bms.cfg");
  EXPECT_EQ(report.Text("f1"), "307300");
  EXPECT_TRUE(report.IsNull("f2"));
}

}  // namespace
}  // namespace kestrel::test
