#include "falcon/installations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "base/files.h"
#include "base/temp_folder.h"
#include "doubles/fake_install_keys.h"
#include "falcon/failure_text.h"
#include "falcon/terrain_writer.h"

namespace kestrel::falcon {
namespace {

namespace fs = std::filesystem;
using test::FailureOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string OldKey = "SOFTWARE\\Microprose\\Falcon\\4.0";
const std::string BmsKey = "SOFTWARE\\Benchmark Sims\\Falcon BMS ";
const std::string ListFile = "Data/Terrdata/TheaterDefinition/Theater.lst";

class Installations : public testing::Test {
 protected:
  Installations() { keys.DriveC = folder.Path(); }

  void Write(const fs::path& name, std::string_view bytes) {
    fs::create_directories((folder.Path() / name).parent_path());
    test::WriteBytes(folder.Path() / name, bytes);
  }
  /// A BMS in the folder of its version, with a list of theaters.
  void AddBms(const std::string& version, std::string_view list) {
    keys.AddText(BmsKey + version, "baseDir", "C:\\" + version);
    Write(fs::path(version) / ListFile, list);
  }
  FalconInstalls Discover() const {
    const InstallKeys* const sources[] = {&keys};
    return DiscoverFalcon(sources);
  }
  static std::vector<std::string> KeysOf(const std::vector<FalconInstall>& installs) {
    std::vector<std::string> names;
    for (const FalconInstall& install : installs) names.push_back(install.Key);
    return names;
  }
  static std::vector<std::string> TheatersOf(const FalconInstall& install) {
    std::vector<std::string> names;
    for (std::size_t at = 1; at <= install.Theaters.UpperBound(); ++at) {
      names.push_back(install.Theaters[at].Definition.Name);
    }
    return names;
  }

  test::TempFolder folder;
  doubles::FakeInstallKeys keys;
};

TEST_F(Installations, WithoutKeysThereAreNone) {
  const FalconInstalls found = Discover();
  EXPECT_THAT(found.Falcon, IsEmpty());
  EXPECT_THAT(found.Bms, IsEmpty());
  EXPECT_THAT(found.Messages, IsEmpty());
  EXPECT_THAT(DiscoverFalcon({}).Bms, IsEmpty());
}

TEST_F(Installations, KeysAreReadWithoutNuls) {
  AddBms("4.37", "");
  keys.AddText(BmsKey + "4.37", "baseDir", std::string("C:\\4.37\0\0", 9));
  keys.AddText(BmsKey + "4.37", "curTheater", std::string("Korea\0KTO\0", 10));
  keys.Keys[BmsKey + "4.37"]["PilotCallsign"] = {true, std::string("Viper\0old\0\0\0", 12)};
  const FalconInstalls found = Discover();
  ASSERT_THAT(found.Bms, SizeIs(1));
  EXPECT_EQ(found.Bms[0].Kind, InstallKind::Bms);
  EXPECT_EQ(found.Bms[0].Key, "Falcon BMS 4.37");
  EXPECT_EQ(found.Bms[0].InstallDir, "C:\\4.37\\");
  EXPECT_EQ(found.Bms[0].Folder, folder / "4.37");
  EXPECT_EQ(found.Bms[0].CurTheater, "KoreaKTO");
  EXPECT_EQ(found.Bms[0].PilotCallsign, "Viper") << "what stands behind the first NUL is left over";

  keys.AddText(BmsKey + "4.37", "PilotCallsign", "Ace");
  keys.Keys[BmsKey + "4.37"].erase("curTheater");
  EXPECT_EQ(Discover().Bms[0].PilotCallsign, "Ace");
  EXPECT_EQ(Discover().Bms[0].CurTheater, "");
}

TEST_F(Installations, FalconIsOfTwoKinds) {
  keys.AddText(OldKey, "curTheater", "Korea");
  EXPECT_THAT(Discover().Falcon, IsEmpty()) << "without a folder";
  keys.AddText(OldKey, "baseDir", "C:\\Falcon4");
  ASSERT_THAT(Discover().Falcon, SizeIs(1)) << "were the folder not there";
  EXPECT_EQ(Discover().Falcon[0].Kind, InstallKind::Falcon);
  Write("Falcon4/TerrData/Objects/koreaobj.dxl", "");
  EXPECT_EQ(Discover().Falcon[0].Kind, InstallKind::FalconModels);
  keys.AddText(OldKey, "baseDir", "D:\\Falcon4");
  ASSERT_THAT(Discover().Falcon, SizeIs(1)) << "were the drive not there";
  EXPECT_EQ(Discover().Falcon[0].Kind, InstallKind::Falcon);
  EXPECT_TRUE(Discover().Falcon[0].Theaters.Empty());
}

TEST_F(Installations, BmsCountsWithItsListOfTheaters) {
  keys.AddText(BmsKey + "4.37", "baseDir", "C:\\4.37");
  EXPECT_THAT(Discover().Bms, IsEmpty());
  fs::create_directories(folder / "4.37/Data/Terrdata/theaterdefinition/theater.lst");
  EXPECT_THAT(Discover().Bms, IsEmpty()) << "a folder of that name is no list";
  keys.AddText(BmsKey + "4.36", "baseDir", "D:\\4.36");
  keys.AddText(BmsKey + "4.35", "curTheater", "Korea");
  EXPECT_THAT(Discover().Bms, IsEmpty());
}

TEST_F(Installations, NewestVersionComesFirst) {
  for (const char* const version : {"4.4", "4.32", "4.33", "4.33 U1", "4.38", "4.37 (Internal)", "4.38.2", "4.37"}) {
    AddBms(version, "");
  }
  AddBms("9", "");
  keys.Keys["SOFTWARE\\Benchmark Sims\\Other 9"] = keys.Keys[BmsKey + "9"];
  keys.Keys.erase(BmsKey + "9");
  EXPECT_THAT(KeysOf(Discover().Bms),
              ElementsAre("Falcon BMS 4.38.2", "Falcon BMS 4.38", "Falcon BMS 4.37", "Falcon BMS 4.37 (Internal)",
                          "Falcon BMS 4.33 U1", "Falcon BMS 4.33", "Falcon BMS 4.32", "Falcon BMS 4.4"));
}

TEST_F(Installations, InstallationsOfAllSourcesAreListed) {
  AddBms("4.35", "");
  keys.AddText(OldKey, "baseDir", "C:\\Falcon4");
  doubles::FakeInstallKeys others = keys;
  others.Keys[BmsKey + "4.38"] = others.Keys[BmsKey + "4.35"];
  others.AddText(OldKey, "baseDir", "C:\\Other");
  const InstallKeys* const sources[] = {&keys, &others};
  const FalconInstalls found = DiscoverFalcon(sources);
  EXPECT_THAT(KeysOf(found.Bms), ElementsAre("Falcon BMS 4.38", "Falcon BMS 4.35", "Falcon BMS 4.35"));
  ASSERT_THAT(found.Falcon, SizeIs(2));
  EXPECT_EQ(found.Falcon[1].InstallDir, "C:\\Other\\");
}

TEST_F(Installations, ListNamesTheatersWithEitherSlash) {
  AddBms("4.37",
         "# ALL\r\n\r\n Terrdata/theaterdefinition/KOREA kto.tdf \r\nAdd-On\\TvT.tdf\r\nMissing/One.tdf\n/slash.tdf");
  Write("4.37/Data/Terrdata/TheaterDefinition/Korea KTO.tdf", "NAME Korea KTO\nMINTACAN 70\n");
  Write("4.37/Data/Add-On/TvT.tdf", "name\nDESC Two");
  Write("4.37/Data/slash.tdf", "name Slash");
  const FalconInstalls found = Discover();
  ASSERT_THAT(found.Bms, SizeIs(1));
  EXPECT_THAT(TheatersOf(found.Bms[0]), ElementsAre("Korea KTO", "", "Slash"));
  EXPECT_EQ(found.Bms[0].Theaters[1].TdfPath, "Terrdata\\theaterdefinition\\KOREA kto.tdf");
  EXPECT_EQ(found.Bms[0].Theaters[1].Definition.MinTacan, 70);
  EXPECT_EQ(found.Bms[0].Theaters[2].Definition.Desc, "Two");
  EXPECT_THAT(
      found.Messages,
      ElementsAre("The theaters.lst entry \"Missing/One.tdf\" doesn't exist on your system. It will be discarded."));
}

TEST_F(Installations, EntriesOutsideOfTheInstallationAreDiscarded) {
  Write("outside.tdf", "name Outside");
  AddBms("4.37", "..\\..\\outside.tdf\n" + base::TextOfPath(folder / "outside.tdf") +
                     "\nC:\\outside.tdf\nZ:\\x.tdf\nTerrdata\n");
  const FalconInstalls found = Discover();
  EXPECT_THAT(TheatersOf(found.Bms[0]), IsEmpty());
  EXPECT_THAT(found.Messages, SizeIs(5)) << "a folder is no definition";
}

TEST_F(Installations, TooLargeFilesAreNotTaken) {
  AddBms("4.37", "Large.tdf\n");
  Write("4.37/Data/Large.tdf", std::string(MaxDefinitionBytes + 1, ' '));
  EXPECT_THAT(Discover().Messages, SizeIs(1));
  Write(fs::path("4.37") / ListFile, std::string(MaxDefinitionBytes, ' ') + "\n");
  EXPECT_THAT(Discover().Messages, IsEmpty()) << "a list that cannot be read is empty";
}

TEST_F(Installations, ListsOfOlderFalconsAreRelativeToTheirFolder) {
  keys.AddText(OldKey, "baseDir", "C:\\Falcon4");
  AddBms("4.37", "Gone.tdf");
  Write("Falcon4/THEATER.LST", "Korea.tdf\nNone.tdf");
  Write("Falcon4/korea.tdf", "name Korea");
  const FalconInstalls found = Discover();
  EXPECT_THAT(TheatersOf(found.Falcon[0]), ElementsAre("Korea"));
  ASSERT_THAT(found.Messages, SizeIs(2));
  EXPECT_THAT(found.Messages[0], testing::HasSubstr("None.tdf")) << "older Falcons first";
}

TEST_F(Installations, SizeIsThatOfTheTerrain) {
  AddBms("4.37", "a.tdf\nb.tdf\nc.tdf\nd.tdf\ne.tdf");
  Write("4.37/Data/a.tdf", "terraindir Add-On/Alpha");
  Write("4.37/Data/b.tdf", "name no terrain of its own");
  Write("4.37/Data/c.tdf", "terraindir Nowhere");
  Write("4.37/Data/d.tdf", "terraindir ..\\..\\..");
  Write("4.37/Data/e.tdf", "terraindir C:\\4.37\\Data\\Add-On\\Alpha");
  // The third level counts blocks of 16 units.
  Write("4.37/Data/add-on/ALPHA/terrain/Theater.map", test::TerrainMapBytes({.Levels = {1024, 512, 256}}));
  Write("4.37/Data/Terrdata/KOREA/terrain/theater.map", test::TerrainMapBytes({.Levels = {256, 128, 64}}));
  const FalconInstall install = Discover().Bms[0];
  ASSERT_EQ(install.Theaters.UpperBound(), 5U);
  EXPECT_EQ(install.Theaters[1].TheaterSize, "4096");
  EXPECT_EQ(install.Theaters[2].TheaterSize, "1024") << "the default theater's";
  EXPECT_EQ(install.Theaters[3].TheaterSize, "") << "no file tells it";
  EXPECT_EQ(install.Theaters[4].TheaterSize, "") << "outside of the installation";
  EXPECT_EQ(install.Theaters[5].TheaterSize, "") << "on a drive";
}

TEST_F(Installations, FoldersThatAreNotToldAreThoseOfTheDefaultTheater) {
  using T = TheaterDefinition;
  FalconInstall install;
  install.Root = folder.Path();
  T told;
  told.CampaignDir = "Add-On/Campaign";
  EXPECT_EQ(TheaterDir(told, &T::CampaignDir), "Add-On/Campaign");
  EXPECT_EQ(TheaterDir({}, &T::CampaignDir), "Campaign");
  EXPECT_EQ(TheaterDir({}, &T::TerrainDir), "Terrdata\\korea");
  EXPECT_EQ(TheaterDir({}, &T::ObjectDir), "Terrdata\\objects");
  EXPECT_EQ(TheaterDir({}, &T::ThreeDDataDir), "Terrdata\\objects");
  EXPECT_EQ(TheaterDir({}, &T::SoundDir), "");
  fs::create_directories(folder / "add-on/CAMPAIGN");
  EXPECT_EQ(TheaterFolder(install, told, &T::CampaignDir), folder / "add-on/CAMPAIGN");
  T outside;
  outside.CampaignDir = "..";
  outside.ObjectDir = "C:\\objects";
  EXPECT_NE(FailureOf([&] { TheaterFolder(install, outside, &T::CampaignDir); }), "");
  EXPECT_EQ(FailureOf([&] { TheaterFolder(install, outside, &T::ObjectDir); }), "\"C:\\objects\" names a drive");
}

}  // namespace
}  // namespace kestrel::falcon
