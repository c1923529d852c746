#include "falcon/written_installs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/files.h"
#include "falcon/installations.h"
#include "falcon/small_install.h"

namespace kestrel::falcon {
namespace {

namespace fs = std::filesystem;
using test::SmallInstall;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class WrittenInstalls : public testing::Test {
 protected:
  /// What is found by the lines of the section, "@" standing for the test's folder.
  FalconInstalls Found(std::string lines) {
    for (std::size_t at = lines.find('@'); at != std::string::npos; at = lines.find('@')) {
      lines.replace(at, 1, base::TextOfPath(folder.Path()));
    }
    const InstallSources sources = ReadWrittenInstalls(base::ProfileFile("[installations]\r\n" + lines));
    std::vector<const InstallKeys*> asked;
    for (const auto& source : sources) asked.push_back(source.get());
    return DiscoverFalcon(asked);
  }
  std::vector<std::string> Names(const std::string& lines) {
    std::vector<std::string> names;
    for (const FalconInstall& install : Found(lines).Bms) names.push_back(install.Key);
    return names;
  }

  test::TempFolder folder;
};

TEST_F(WrittenInstalls, AreFoundLikeThoseThatHaveRegisteredThemselves) {
  SmallInstall(folder / "Sim").AddTheaters({"Korea", "Balkans"});
  fs::create_directory(folder / "Old");
  test::WriteBytes(folder / "Old/theater.lst", "korea.tdf\n");
  test::WriteBytes(folder / "Old/korea.tdf", "name Old Korea\n");
  const FalconInstalls found = Found("BMS1=@/Sim\nBMS1_NAME=Falcon BMS 4.37\nFALCON1=@/Old\n");
  ASSERT_THAT(found.Bms, SizeIs(1));
  EXPECT_EQ(found.Bms[0].Key, "Falcon BMS 4.37");
  EXPECT_EQ(found.Bms[0].Folder, folder / "Sim");
  ASSERT_EQ(found.Bms[0].Theaters.UpperBound(), 2U);
  EXPECT_EQ(found.Bms[0].Theaters[2].Definition.Name, "Balkans");
  EXPECT_EQ(found.Bms[0].PilotCallsign, "");
  ASSERT_THAT(found.Falcon, SizeIs(1));
  EXPECT_EQ(found.Falcon[0].Folder, folder / "Old");
  ASSERT_EQ(found.Falcon[0].Theaters.UpperBound(), 1U);
  EXPECT_EQ(found.Falcon[0].Theaters[1].Definition.Name, "Old Korea");
}

TEST_F(WrittenInstalls, AreNamedByTheKeyOrTheFolder) {
  for (const char* const name : {"Falcon BMS 4.38", "Sim"}) SmallInstall(folder / name);
  EXPECT_THAT(Names("BMS1=@/Falcon BMS 4.38/\n"), ElementsAre("Falcon BMS 4.38"));
  EXPECT_THAT(Names("BMS1=@/Falcon BMS 4.38\nBMS1_NAME=4.37\n"), ElementsAre("Falcon BMS 4.37"));
  EXPECT_THAT(Names("BMS1=@/Sim\n"), ElementsAre("Falcon BMS"));
  EXPECT_THAT(Names("BMS1=@/Sim\nBMS1_NAME=falcon bms 4.35\n"), ElementsAre("falcon bms 4.35"));
}

TEST_F(WrittenInstalls, MayHaveGapsBetweenTheirNumbers) {
  SmallInstall(folder / "Sim");
  EXPECT_THAT(Names("BMS99=@/Sim\nBMS99_NAME=4.33\nBMS3=@/Sim\nBMS3_NAME=4.38\nBMS100=@/Sim\nBMS0=@/Sim\nBMS=@/Sim\n"),
              ElementsAre("Falcon BMS 4.38", "Falcon BMS 4.33"));
}

TEST_F(WrittenInstalls, ThatAreNotThereAreNone) {
  SmallInstall(folder / "Sim");
  EXPECT_THAT(Names(""), IsEmpty());
  EXPECT_THAT(Names("BMS1=@/Elsewhere\nBMS2=Sim\nBMS3=../Sim\nBMS4=/\nBMS5=@/Sim/Data\nBMS6=Q:\\Sim\n"), IsEmpty());
  const FalconInstalls found = Found("FALCON1=@/Elsewhere\n");
  ASSERT_THAT(found.Falcon, SizeIs(1)) << "as one that is registered";
  EXPECT_TRUE(found.Falcon[0].Folder.empty());
  EXPECT_TRUE(found.Falcon[0].Theaters.Empty());
}

#ifndef _WIN32
TEST_F(WrittenInstalls, AreFoundByBytesOfTheSystemAndOfTheCodePage) {
  SmallInstall(folder /
               "F\xC3\xA9"
               "e");
  EXPECT_THAT(Names("BMS1=@/F\xC3\xA9"
                    "e\n"),
              SizeIs(1))
      << "as editors of this system write it";
  EXPECT_THAT(Names("BMS1=@/F\xE9"
                    "e\n"),
              SizeIs(1))
      << "as the rest of the file is written";
}
#endif

}  // namespace
}  // namespace kestrel::falcon
