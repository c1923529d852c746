// Whole installations of each generation. What is expected is worked out by hand from falcon/made_world.h.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "falcon/made_installation.h"
#include "falcon_info_run.h"

namespace kestrel::test {
namespace {

namespace fs = std::filesystem;
using made::Generation;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

class FalconInfoMade : public FalconInfo, public testing::WithParamInterface<Generation> {
 protected:
  bool IsBms() const { return GetParam() != Generation::Falcon40; }
  Report TellPlace(const fs::path& place) { return Tell(fs::relative(place, folder.Path()).string()); }
  const made::Installation made = made::WriteInstallation(folder / "install", GetParam());
};

std::vector<std::string> Texts(const Report& report, const std::string& list, const std::string& member) {
  std::vector<std::string> texts;
  for (std::size_t n = 0; n < report.Size(list); ++n) {
    texts.push_back(report.Text(list + "/" + std::to_string(n) + "/" + member));
  }
  return texts;
}

TEST_P(FalconInfoMade, InstallationIsToldWithoutAFailure) {
  options.At = {{44.5, 50.2}, {5, 60}};
  options.Models = {1};
  const Report report = TellPlace(made.Folder);
  EXPECT_EQ(failures, 0u) << report.Printed();
  EXPECT_EQ(report.Text("kind"), "installation");
  ASSERT_GE(report.Size("theaters"), 1u);
  EXPECT_EQ(report.Text("theaters/0/definition/name"), "Made Straits");
  for (int table = 0; table < 6; ++table) {
    EXPECT_GT(report.Number("theaters/0/tables/" + std::to_string(table) + "/records"), 0) << table;
  }
  // A box without a floor: five sides of two triangles, twelve edges; where shapes are of triangles five diagonals.
  EXPECT_EQ(report.Number("theaters/0/models/0/shape/triangles"), 10);
  EXPECT_EQ(report.Number("theaters/0/models/0/shape/lines"), IsBms() ? 17 : 12);
  EXPECT_THAT(report.Numbers("theaters/0/models/0/shape/lines_box/most"), ElementsAre(50, 30, 0));
  EXPECT_EQ(report.Number("theaters/0/map_size"), 64);
  EXPECT_EQ(report.Number("theaters/0/heights/lowest"), -70);
  EXPECT_EQ(report.Number("theaters/0/heights/highest"), 2500);
  EXPECT_EQ(report.Number("theaters/0/heights/at/0/height"), 2500);
  EXPECT_EQ(report.Number("theaters/0/heights/at/1/height"), -70);
  ASSERT_EQ(report.Size("theaters/0/campaigns"), 4u);
  for (int campaign = 0; campaign < 4; ++campaign) {
    const std::string way = "theaters/0/campaigns/" + std::to_string(campaign);
    EXPECT_EQ(report.Number(way + "/objective_count"), 9);
    EXPECT_EQ(report.Number(way + "/campaign/bullseye_x"), 40);
    EXPECT_EQ(report.Number(way + "/campaign/bullseye_y"), 22);
    EXPECT_EQ(report.Number(way + "/campaign/data_version"), made::DataVersion(GetParam()));
  }
  if (!IsBms()) {
    EXPECT_TRUE(report.IsNull("theaters/0/stations")) << "Falcon 4.0 has another list";
    return;
  }
  EXPECT_EQ(report.Number("theaters/0/stations/count"), 4);
  EXPECT_THAT(Texts(report, "pilots", "callsign"), testing::Contains("Viper"));
  EXPECT_EQ(report.Text("configurations/0/f1"), "339750");
}

TEST_P(FalconInfoMade, MissionIsToldWithItsTables) {
  const Report report = TellPlace(made.Campaign / "Mission.tac");
  ASSERT_EQ(report.Size("objectives"), 9u);
  EXPECT_THAT(Texts(report, "objectives", "name"),
              UnorderedElementsAre("Anvil Airbase", "Birch Airbase", "Dorn", "Dorn Bridge", "Elmsted Works",
                                   "Farrow Power", "Gannet Radar", "Heron SAM Site", "\xC3\x89pine"));
  options.Objectives = {102};
  const Report birch = TellPlace(made.Campaign / "Mission.tac");
  ASSERT_EQ(birch.Size("objectives"), 1u);
  EXPECT_EQ(birch.Number("objectives/0/id"), 502);
  EXPECT_EQ(birch.Text("objectives/0/type_name"), "Airbase");
  EXPECT_EQ(birch.Number("objectives/0/features"), 3);
  EXPECT_EQ(birch.Number("objectives/0/x"), 50.5);
  EXPECT_EQ(birch.Number("objectives/0/owner"), 2);
  EXPECT_THAT(birch.Numbers("objectives/0/states"), ElementsAre(3, 0, 0));
  EXPECT_EQ(birch.Number("objectives/0/before/owner"), 6);
  EXPECT_THAT(birch.Numbers("objectives/0/before/states"), ElementsAre(0, 0, 2));
  EXPECT_THAT(Texts(birch, "objectives/0/class/runway_ends", "name"), UnorderedElementsAre("02", "20"));
  EXPECT_EQ(birch.Number("objectives/0/class/features/0/entry/east"), -2000);
  EXPECT_EQ(birch.Text("objectives/0/class/features/1/name"), "Hangar & Shed");
  options.Objectives = {101};
  const Report anvil = TellPlace(made.Campaign / "Mission.tac");
  EXPECT_THAT(Texts(anvil, "objectives/0/class/runway_ends", "name"), UnorderedElementsAre("09L", "27R", "09R", "27L"));
  EXPECT_TRUE(anvil.IsNull("objectives/0/before"));
}

INSTANTIATE_TEST_SUITE_P(Each, FalconInfoMade, testing::ValuesIn(made::Generations), [](const auto& generation) {
  return "Version" + std::to_string(made::DataVersion(generation.param));
});

class FalconInfoMadePrefix : public FalconInfo {};

#ifndef _WIN32
TEST_F(FalconInfoMadePrefix, TellsEachInstallation) {
  made::WriteWinePrefix(folder / "prefix", {std::begin(made::Generations), std::end(made::Generations)});
  const Ran ran = RunFalconInfo((folder / "prefix").string());
  EXPECT_EQ(ran.Exit, 0);
  const Report report(ran.Out);
  ASSERT_EQ(report.Size("installations"), 5u);
  EXPECT_EQ(report.Text("installations/0/key"), "Falcon BMS 4.38") << "the newest first";
  EXPECT_EQ(report.Text("installations/0/pilot"), "Viper");
  for (int n = 0; n < 5; ++n) {
    const std::string way = "installations/" + std::to_string(n) + "/installation/theaters/0";
    EXPECT_EQ(report.Text(way + "/definition/name"), "Made Straits");
    EXPECT_EQ(report.Size(way + "/campaigns"), 4u);
  }
}
#endif

TEST_F(FalconInfoMadePrefix, FoldersOfNewInstallationsAreKnown) {
  const made::Installation made = made::WriteInstallation(folder / "install", Generation::Bms438);
  const std::string objects = fs::relative(made.Objects, folder.Path()).string();
  // The airbase with one runway is the second class.
  const Report one = Tell(objects + "/ObjectiveRelatedData/OCD_00002");
  EXPECT_EQ(one.Text("kind"), "objective class");
  EXPECT_EQ(one.Text("objective/name"), "Airbase 02_20");
  EXPECT_EQ(one.Size("features"), 3u);
  EXPECT_EQ(one.Size("runway_ends"), 2u);
  const Report file = Tell(objects + "/ObjectiveRelatedData/OCD_00002/OCD_00002.XML");
  EXPECT_EQ(file.Text("table"), "ocd");
  EXPECT_EQ(file.Number("records"), 3) << "of which two are empty";
  options.Classes = {4};
  options.Records = {{"ct", 4}};
  const Report all = Tell(objects);
  EXPECT_EQ(all.Text("kind"), "objects");
  EXPECT_EQ(all.Number("tables/1/records"), 10) << "nine classes behind an empty one";
  EXPECT_EQ(all.Text("classes/0/objective/name"), "Airbase 02_20");
  EXPECT_EQ(all.Number("records/0/record/type"), 1);
  const Report camp = Tell(fs::relative(made.Campaign, folder.Path()).string() + "/CampObjData.XML");
  EXPECT_EQ(camp.Text("kind"), "campaign objects");
  EXPECT_EQ(camp.Number("count"), 9);
  EXPECT_EQ(camp.Number("objects/0/camp_id"), 7) << "by their numbers: the bridge";
  EXPECT_EQ(camp.Number("objects/0/heading"), 41.5);
  EXPECT_EQ(failures, 0u);
}

TEST_F(FalconInfoMadePrefix, XmlThatIsCutIsAnError) {
  const made::Files files = made::InstallationFiles(Generation::Bms435);
  for (const auto& [name, bytes] : files) {
    const std::string file = fs::path(name).filename().string();
    if (!name.ends_with(".XML") && !name.ends_with(".xml")) continue;
    Write(file, bytes);
    EXPECT_FALSE(Tell(file).Has("error")) << name;
    Write(file, bytes.substr(0, bytes.size() / 2));
    EXPECT_TRUE(Tell(file).Has("error")) << name;
  }
}

}  // namespace
}  // namespace kestrel::test
