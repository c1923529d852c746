// Whole installations of each generation read back as the world that they were made of. What is expected is worked out
// by hand from made_world.h.

#include "made_installation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "base/files.h"
#include "base/temp_folder.h"
#include "doubles/fake_install_keys.h"
#include "falcon/campaign.h"
#include "falcon/class_table.h"
#include "falcon/config_file.h"
#include "falcon/installations.h"
#include "falcon/object_table_files.h"
#include "falcon/objective_types.h"
#include "falcon/pilot_file.h"
#include "falcon/runways.h"
#include "falcon/shape_file.h"
#include "falcon/stations.h"
#include "falcon/terrain_files.h"
#include "falcon/wine_registry.h"
#include "made_world.h"

namespace kestrel::falcon {
namespace {

namespace fs = std::filesystem;
using made::Generation;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using States = std::vector<FeatureState>;

class MadeInstallation : public testing::TestWithParam<Generation> {
 protected:
  /// The definition of the theater, as it is found on the disk.
  FalconInstalls Discover(const InstallKeys& keys) const {
    const InstallKeys* const sources[] = {&keys};
    return DiscoverFalcon(sources);
  }
  FalconInstall DiscoverHere() const {
    doubles::FakeInstallKeys keys;
    keys.DriveC = folder.Path();
    const std::string key = IsOld() ? "SOFTWARE\\Microprose\\Falcon\\4.0" : "SOFTWARE\\Benchmark Sims\\" + made.Key;
    keys.AddText(key, "baseDir", "C:\\install");
    const FalconInstalls found = Discover(keys);
    EXPECT_THAT(found.Messages, IsEmpty());
    EXPECT_THAT(IsOld() ? found.Falcon : found.Bms, SizeIs(1));
    return (IsOld() ? found.Falcon : found.Bms).at(0);
  }
  World Load(const std::string& name) const {
    World world = LoadCampaign(made.Campaign / name, made.Campaign);
    EXPECT_THAT(world.Notes, IsEmpty()) << name;
    return world;
  }
  bool IsOld() const { return GetParam() == Generation::Falcon40; }

  test::TempFolder folder;
  const made::Installation made = made::WriteInstallation(folder / "install", GetParam());
};

/// As it stands, and as an add-on without one of its own has it.
void ExpectTheaters(const FalconInstall& install, const made::Installation& made) {
  using T = TheaterDefinition;
  ASSERT_EQ(install.Theaters.UpperBound(), made.Which >= Generation::Bms435 ? 2U : 1U);
  EXPECT_EQ(install.Theaters[1].Definition.Name, "Made Straits");
  EXPECT_EQ(install.Theaters[1].Definition.MinTacan, 70);
  EXPECT_EQ(install.Theaters[1].TheaterSize, "64");
  for (std::size_t n = 1; n <= install.Theaters.UpperBound(); ++n) {
    const T& theater = install.Theaters[n].Definition;
    EXPECT_EQ(TheaterFolder(install, theater, &T::TerrainDir), made.Terrain);
    EXPECT_EQ(TheaterFolder(install, theater, &T::ThreeDDataDir), made.Objects);
  }
  EXPECT_EQ(TheaterFolder(install, install.Theaters[1].Definition, &T::CampaignDir), made.Campaign);
  EXPECT_EQ(TheaterFolder(install, install.Theaters[1].Definition, &T::ObjectDir), made.Objects);
  if (made.Which < Generation::Bms435) return;
  EXPECT_EQ(install.Theaters[2].Definition.Name, "Made Add-On 0.2");
  EXPECT_EQ(install.Theaters[2].TheaterSize, "64") << "the default theater's";
  EXPECT_EQ(TheaterFolder(install, install.Theaters[2].Definition, &T::CampaignDir),
            made.Data / "Add-On Made/Campaign");
  EXPECT_EQ(TheaterFolder(install, install.Theaters[2].Definition, &T::ObjectDir),
            made.Data / "Add-On Made/TerrData/Objects");
}

TEST_P(MadeInstallation, IsDiscovered) {
  const FalconInstall install = DiscoverHere();
  EXPECT_EQ(install.Key, made.Key);
  EXPECT_EQ(install.Root, made.Data);
  ExpectTheaters(install, made);
}

TEST_P(MadeInstallation, CampaignsAreRead) {
  const int version = GetParam() == Generation::Falcon40 ? 63
                      : GetParam() == Generation::Bms433 ? 73
                      : GetParam() == Generation::Bms435 ? 103
                      : GetParam() == Generation::Bms437 ? 108
                                                         : 109;
  for (const std::string name : {"Save0.cam", "te_new.tac", "Mission.tac", "Training.trn"}) {
    SCOPED_TRACE(name);
    const World world = Load(name);
    EXPECT_EQ(world.DataVersion, version);
    EXPECT_EQ(world.Theater, "korea");
    EXPECT_EQ(world.Width, 64);
    EXPECT_EQ(world.Height, 64);
    EXPECT_EQ(world.BullseyeX, 40);
    EXPECT_EQ(world.BullseyeY, 22);
    EXPECT_EQ(world.Teams[1].Name, "Azuria");
    EXPECT_EQ(world.Teams[1].Side, 2);
    EXPECT_FALSE(world.Teams[1].Active);
    EXPECT_EQ(world.Teams[6].Name, "Fenland");
    EXPECT_TRUE(world.Teams[6].Active);
    EXPECT_FALSE(world.NamesMissing);
    ASSERT_THAT(world.Objectives, SizeIs(9));
    const bool isOwn = name == "Save0.cam" || name == "te_new.tac";
    EXPECT_EQ(world.ObjectivesFrom, made.Campaign / (isOwn ? name : "te_new.tac"));
  }
}

TEST_P(MadeInstallation, ObjectivesAreThoseOfTheWorld) {
  const World world = Load("Save0.cam");
  ASSERT_THAT(world.Objectives, SizeIs(9));
  const Objective& anvil = world.Objectives[0];
  EXPECT_EQ(anvil.CampId, 101);
  EXPECT_EQ(anvil.ClassIndex, 3);
  EXPECT_EQ(anvil.CellX, 20);
  EXPECT_EQ(anvil.CellY, 12);
  EXPECT_EQ(anvil.Owner, 2);
  EXPECT_THAT(anvil.Links, ElementsAre(EntityId{503, 0}, EntityId{504, 0}));
  ASSERT_GE(anvil.States.size(), 4U);
  EXPECT_EQ(States(anvil.States.begin(), anvil.States.begin() + 4), (States{0, 3, 0, 0}));
  const Objective& dorn = world.Objectives[2];
  EXPECT_EQ(dorn.Owner, 2);
  EXPECT_EQ(dorn.FirstOwner, 6);
  ASSERT_GE(dorn.States.size(), 5U);
  EXPECT_EQ(States(dorn.States.begin(), dorn.States.begin() + 5), (States{0, 0, 0, 0, 2}));
  EXPECT_TRUE(world.Objectives[6].HasRadar);
  EXPECT_FALSE(world.Objectives[7].HasRadar);
  EXPECT_EQ(world.Objectives[8].CellX, 13);
  EXPECT_EQ(world.Objectives[8].CellY, 62);

  const Objective& bridge = world.Objectives[3];
  EXPECT_EQ(bridge.CampId, 7);
  EXPECT_EQ(bridge.X(), 31.5);
  EXPECT_EQ(bridge.Y(), 24.5);
  ASSERT_EQ(bridge.Exact.has_value(), GetParam() >= Generation::Bms435);
  if (!bridge.Exact) return;
  // 31.5 * 3279.98 and 24.5 * 3279.98, in 4.38 500 feet east and 250 south of it.
  const bool isTurned = GetParam() == Generation::Bms438;
  EXPECT_NEAR(bridge.Exact->East, isTurned ? 103819.37 : 103319.37, 0.01);
  EXPECT_NEAR(bridge.Exact->North, isTurned ? 80109.51 : 80359.51, 0.01);
  EXPECT_EQ(bridge.Exact->Heading, isTurned ? 41.5F : 0.0F);
}

TEST_P(MadeInstallation, NamesAreThoseOfTheWorld) {
  const World world = Load("Mission.tac");
  const ObjectiveNames names(world);
  std::vector<std::string> shown;
  for (const Objective& one : world.Objectives) shown.push_back(names.Of(one, "Bridge"));
  EXPECT_THAT(shown, ElementsAre("Anvil Airbase", "Birch Airbase", "Dorn", "Dorn Bridge", "Elmsted Works",
                                 "Farrow Power", "Gannet Radar", "Heron SAM Site", "\xC9pine"));
}

TEST_P(MadeInstallation, MissionHasChangedTheWorld) {
  const World world = Load("Mission.tac");
  EXPECT_EQ(world.Objectives.at(1).Owner, 2);
  EXPECT_EQ(world.Objectives[1].FirstOwner, 6);
  ASSERT_GE(world.Objectives[1].States.size(), 3U);
  EXPECT_EQ(States(world.Objectives[1].States.begin(), world.Objectives[1].States.begin() + 3), (States{3, 0, 0}));
  EXPECT_EQ(States(world.Objectives[4].States.begin(), world.Objectives[4].States.begin() + 3), (States{0, 0, 3}));
  EXPECT_EQ(world.Objectives[0].Owner, 2);
  EXPECT_EQ(Load("Training.trn").Objectives.at(1).Owner, 6);
}

TEST_P(MadeInstallation, GroundIsThatOfTheWorld) {
  const TheaterDefinition theater = DiscoverHere().Theaters[1].Definition;
  const fs::path cover = base::FindFile(made.Campaign, "korea.thr");
  const TheaterGround ground = ReadTheaterGround(FindTerrainFiles(made.Terrain, theater.TileSet),
                                                 base::FileExists(cover) ? cover : fs::path(), {});
  EXPECT_THAT(ground.Notes, IsEmpty());
  const Terrain& terrain = ground.Heights;
  ASSERT_EQ(terrain.Size, 64);
  const struct {
    int X, Y, Height;
  } places[] = {{0, 0, 0},     {11, 19, 0},   {12, 19, 169},  {11, 20, 171},  {63, 0, 163},
                {0, 63, 289},  {63, 63, 352}, {44, 50, 2500}, {43, 49, 1500}, {42, 50, 292},
                {50, 44, 282}, {44, 13, 183}, {19, 50, 269},  {5, 60, -70}};
  for (const auto& [x, y, height] : places) EXPECT_EQ(terrain.HeightAt(x, y), height) << x << ", " << y;
  EXPECT_EQ(terrain.Lowest, -70);
  EXPECT_EQ(terrain.Highest, 2500);
  // 12 by 20 map units.
  EXPECT_EQ(std::count(terrain.Sea.begin(), terrain.Sea.end(), 1), 240);
  EXPECT_TRUE(terrain.Sea[terrain.IndexOf(11, 19)]);
  EXPECT_FALSE(terrain.Sea[terrain.IndexOf(19, 11)]);
  const bool tells = GetParam() != Generation::Falcon40 && GetParam() != Generation::Bms438;
  EXPECT_EQ(ground.HasCorner, tells);
  EXPECT_NEAR(ground.Longitude, tells ? 34.5 : 119.1148778, 1e-6);
  EXPECT_NEAR(ground.Latitude, tells ? -29.25 : 33.775918333, 1e-6);
}

TEST_P(MadeInstallation, GeneralStringsAreThere) {
  const auto strings = LoadGeneralStrings(made.Campaign);
  ASSERT_TRUE(strings);
  EXPECT_EQ((*strings)[46], "Country 6");
  EXPECT_EQ((*strings)[501], "Airbase");
  EXPECT_EQ((*strings)[531], "SAM Site");
  EXPECT_EQ(strings->Damaged(), 0U);
}

TEST_P(MadeInstallation, StationsAreThoseOfTheWorld) {
  if (IsOld()) {
    EXPECT_FALSE(base::FileExists(base::FindFile(made.Campaign, StationsFile)));
    return;
  }
  const StationList list = LoadStations(made.Campaign);
  EXPECT_EQ(list.Trouble, "");
  ASSERT_THAT(list.Stations, SizeIs(4));
  EXPECT_EQ(list.Stations[0].CampId, 101);
  EXPECT_EQ(list.Stations[0].Text(StationField::TacanChannel), "042");
  EXPECT_EQ(list.Stations[0].Text(StationField::Ils3), "11070");
  EXPECT_EQ(list.Stations[1].Text(StationField::TacanBand), "Y");
  EXPECT_EQ(list.Stations[1].Text(StationField::TowerVhf), "126200");
  EXPECT_EQ(list.Stations[3].CampId, 900);
  EXPECT_EQ(list.Stations[0].Told, GetParam() == Generation::Bms433 ? 12U : 21U);
}

TEST_P(MadeInstallation, PilotsAndConfigurationAreThere) {
  if (IsOld()) return;
  const fs::path config = base::FindFile(made.Folder, ConfigFolderName);
  EXPECT_EQ(config, made.Config);
  const std::vector<Callsign> pilots = ListCallsigns(config);
  ASSERT_THAT(pilots, SizeIs(2));
  EXPECT_EQ(pilots[0].Name, "Ghost");
  EXPECT_EQ(pilots[1].Name, "Viper");
  const RadioPresets presets = LoadRadioFile(pilots[1].File);
  EXPECT_EQ(presets.Uhf[1], "226000");
  EXPECT_EQ(presets.Uhf[20], "245000");
  EXPECT_EQ(presets.Vhf[1], "118025");
  EXPECT_EQ(presets.Vhf[3], "59400");
  EXPECT_EQ(presets.Vhf[20], "118500");
  EXPECT_EQ(LoadRadioFile(pilots[0].File).Uhf[1], "276000");
  const fs::path file = base::FindFile(made.Folder, ConfigFileName);
  EXPECT_EQ(ReadCfgValue(file, true), "339750");
  EXPECT_EQ(ReadCfgValue(file, false), "1234");
  EXPECT_FALSE(SetsCfgValue(base::FindFile(made.Folder, OwnConfigFileName), true));
}

INSTANTIATE_TEST_SUITE_P(OfEachGeneration, MadeInstallation, testing::ValuesIn(made::Generations));

#ifndef _WIN32
TEST(MadeWinePrefix, HoldsInstallationsOfBothFamilies) {
  const test::TempFolder prefix;
  const std::vector<made::Installation> made = made::WriteWinePrefix(
      prefix.Path(),
      {Generation::Falcon40, Generation::Bms433, Generation::Bms435, Generation::Bms437, Generation::Bms438});
  const WineRegistry registry = WineRegistry::Load(prefix.Path());
  const InstallKeys* const sources[] = {&registry};
  const FalconInstalls found = DiscoverFalcon(sources);
  EXPECT_THAT(found.Messages, IsEmpty());
  ASSERT_THAT(found.Falcon, SizeIs(1));
  EXPECT_EQ(found.Falcon[0].InstallDir, "C:\\Games\\Falcon4\\");
  ASSERT_THAT(found.Bms, SizeIs(4));
  EXPECT_EQ(found.Bms[0].Key, "Falcon BMS 4.38");
  EXPECT_EQ(found.Bms[3].Key, "Falcon BMS 4.33");
  EXPECT_EQ(found.Bms[1].InstallDir, "C:\\Games\\Falcon BMS 4.37\\");
  EXPECT_EQ(found.Bms[1].CurTheater, "Made Straits");
  EXPECT_EQ(found.Bms[1].PilotCallsign, "Viper");
  // Through the link of the drive.
  EXPECT_TRUE(fs::equivalent(found.Bms[1].Folder, made[3].Folder));
  ASSERT_EQ(found.Bms[1].Theaters.UpperBound(), 2U);
  EXPECT_EQ(found.Bms[1].Theaters[1].TheaterSize, "64");
  ASSERT_EQ(found.Falcon[0].Theaters.UpperBound(), 1U);
  EXPECT_EQ(found.Falcon[0].Theaters[1].Definition.Name, "Made Straits");
  EXPECT_EQ(found.Falcon[0].Theaters[1].TheaterSize, "64");
}
#endif

}  // namespace
}  // namespace kestrel::falcon
