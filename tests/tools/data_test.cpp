#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "base/files.h"
#include "base/profile_file.h"
#include "project_paths.h"
#include "radio/frequency_file.h"
#include "sample-theater/facts.h"
#include "session-sim/world.h"

namespace kestrel {
namespace {

const std::filesystem::path Data = std::filesystem::path(KESTREL_SOURCE_DIR) / "data";

std::string TextOf(const char* name) { return base::ReadWholeFile(Data / name, base::MaxTextFileBytes); }

TEST(ShippedFiles, HaveWindowsLineEnds) {
  for (const char* name : {"KESTREL.ini", "common.ini", "update.txt", "FriendlyNames.ini", "DefFreq.ini"}) {
    const std::string text = TextOf(name);
    for (std::size_t k = 0; k < text.size(); ++k) {
      if (text[k] == '\n') {
        EXPECT_TRUE(k > 0 && text[k - 1] == '\r') << name << " at " << k;
      }
    }
    EXPECT_EQ(text.substr(text.size() - 2), "\r\n") << name;
  }
}

TEST(ShippedFiles, MainFileNamesTheSampleTheaterAndTheDemo) {
  const auto file = base::ProfileFile::Load(Data / "KESTREL.ini");
  EXPECT_EQ(file.ReadIniValue("maps", "totalmaps", ""), "1");
  EXPECT_EQ(file.ReadIniValue("maps", "map1", ""), std::string(land::TheaterName) + ".ini");
  EXPECT_EQ(file.ReadIniValue("maps", "currentmap", ""), "1");
  EXPECT_EQ(file.ReadIniValue("options", "connport", ""), "5556");
  EXPECT_EQ(file.ReadIniValue("connlist", "num", ""), "1");
  EXPECT_EQ(file.ReadIniValue("connlist1", "name", ""), "Demo session");
  EXPECT_EQ(file.ReadIniValue("connlist1", "ip", ""), "127.0.0.1");
}

TEST(ShippedFiles, UpdaterIsOff) {
  EXPECT_EQ(base::ProfileFile::Load(Data / "common.ini").ReadIniValue("general", "autoupdate", "1"), "0");
}

TEST(ShippedFiles, FriendlyNamesAreThoseOfTheBlueFlights) {
  const std::string names = TextOf("FriendlyNames.ini");
  const sim::World world({0, 500, 1});
  for (const sim::AIAircraft& aircraft : world.AI()) {
    // A line that holds the name less its last character makes a friend.
    const std::string flight = aircraft.Name.substr(0, aircraft.Name.size() - 1);
    EXPECT_EQ(names.find(flight) != std::string::npos, aircraft.Of == sim::Side::Blue) << aircraft.Name;
  }
}

TEST(ShippedFiles, DefaultChannelsHaveNamesAndFrequenciesOfTheirOwn) {
  const auto channels = radio::ReadDefaultFrequencies(base::ProfileFile::Load(Data / "DefFreq.ini"));
  std::set<std::string> names, uhf, vhf;
  for (std::size_t i = 1; i <= radio::ChannelCount; ++i) {
    names.insert(channels.ChannelNames[i]);
    uhf.insert(channels.DefaultUHF[i]);
    vhf.insert(channels.DefaultVHF[i]);
    EXPECT_EQ(radio::FreqValToIcon(channels.DefaultUHF[i]), radio::FreqImage::UHF) << channels.DefaultUHF[i];
    EXPECT_EQ(radio::FreqValToIcon(channels.DefaultVHF[i]), radio::FreqImage::VHF) << channels.DefaultVHF[i];
  }
  EXPECT_EQ(uhf.size(), 20u);
  EXPECT_EQ(vhf.size(), 20u);
  EXPECT_EQ(names.size(), 20u);
  for (const char* name : {"Flight 1", "Flight 5", "Package 1", "Package 5", "From Package", "Proximity", "Team",
                           "Broadcast/Guard", "Open"}) {
    EXPECT_EQ(names.count(name), 1u) << name;
  }
  EXPECT_TRUE(radio::IsUHF(channels.DefaultF1));
  EXPECT_TRUE(radio::IsUHF(channels.DefaultF2));
  EXPECT_NE(channels.DefaultF1, channels.DefaultF2);
}

}  // namespace
}  // namespace kestrel
