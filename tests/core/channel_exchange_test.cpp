#include "core/channel_exchange.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "base/files.h"
#include "base/program_title.h"
#include "falcon/small_install.h"
#include "radio/frequency_file.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* Config = "User/Config/falcon bms.cfg";
constexpr const char* OwnConfig = "User/Config/Falcon BMS User.cfg";

/// A station with channels of its own, and an installation with a pilot.
class ChannelExchange : public testing::Test {
 protected:
  ChannelExchange() {
    folder.Write("KESTREL.ini", "[INSTALLATIONS]\r\nBMS1=" + base::TextOfPath(sim.Folder()) + "\r\n");
    sim.AddPilot("Viper", "UHF_1=251000\r\nVHF_20=59401\r\n");
    sim.Write(Config, "set g_nF1TeamUiFreq 339750 // old 339750\r\nset g_nF2TeamUiFreq 349750\r\n");
    Tables().CustomUHF[1] = "297500";
    Tables().CustomVHF[20] = "138050";
    Tables().CustomF1 = "1";
    Tables().CustomF2 = "2";
    State().DefaultFrequencies.DefaultUHF[1] = "300100";
    State().DefaultFrequencies.DefaultF1 = "300300";
    State().DefaultFrequencies.DefaultF2 = "300400";
    before = radio::WriteFrequencies(Tables());
  }

  Station& State() { return around.State; }
  radio::Frequencies& Tables() { return around.State.Frequencies; }
  void Exchange(ChannelUse use) {
    around.Desk.Boxes.clear();
    around.Desk.Answers = {base::Answer::Yes};
    const std::vector<falcon::FalconInstall> installs = BeginExchange(around.All, use);
    around.Desk.Boxes.clear();
    around.Desk.Answers.clear();
    ASSERT_THAT(installs, SizeIs(1));
    ExchangeChannels(around.All, use, installs[0], sim.Folder() / "User/Config/Viper.ini");
  }
  std::string OnlyBox() {
    EXPECT_THAT(around.Desk.Boxes, SizeIs(1));
    return around.Desk.Boxes.empty() ? "" : around.Desk.Boxes[0].Text;
  }

  ProgramFolder folder;
  test::TempFolder disk;
  test::SmallInstall sim{disk / "Falcon BMS 4.37"};
  Around around{folder.Path};
  std::string before;
};

TEST_F(ChannelExchange, WithoutBmsIsRefused) {
  folder.Write("KESTREL.ini", "");
  for (const ChannelUse use : {ChannelUse::Load, ChannelUse::Save, ChannelUse::SaveDefaults}) {
    around.Desk.Boxes.clear();
    EXPECT_THAT(BeginExchange(around.All, use), IsEmpty());
    EXPECT_EQ(OnlyBox(), "No Falcon BMS Installation found on your system");
    EXPECT_EQ(around.Desk.Boxes[0].Title, base::ProgramTitle());
    EXPECT_EQ(around.Desk.Boxes[0].Buttons, base::MessageButtons::Ok);
  }
}

TEST_F(ChannelExchange, OfASaveIsAskedFor) {
  EXPECT_THAT(BeginExchange(around.All, ChannelUse::Load), SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  for (const ChannelUse use : {ChannelUse::Save, ChannelUse::SaveDefaults}) {
    around.Desk.Boxes.clear();
    around.Desk.Answers = {base::Answer::No};
    EXPECT_THAT(BeginExchange(around.All, use), IsEmpty());
    EXPECT_EQ(OnlyBox(),
              "The Channels in your Falcon installation will be replaced. This means that, unless everyone has the "
              "same values in a multiplayer environment, you won't be able to communicate using channels. Are you "
              "sure?");
    EXPECT_EQ(around.Desk.Boxes[0].Title, "Attention");
    EXPECT_EQ(around.Desk.Boxes[0].Buttons, base::MessageButtons::YesNo);
    EXPECT_EQ(around.Desk.Boxes[0].Enter, base::Answer::No);
    around.Desk.Answers = {base::Answer::Yes};
    EXPECT_THAT(BeginExchange(around.All, use), SizeIs(1));
  }
}

TEST_F(ChannelExchange, LoadsAllInOneStep) {
  Exchange(ChannelUse::Load);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  EXPECT_EQ(Tables().CustomUHF[1], "251000");
  EXPECT_EQ(Tables().CustomUHF[20], "000000") << "the file does not tell it";
  EXPECT_EQ(Tables().CustomVHF[1], "000000");
  EXPECT_EQ(Tables().CustomVHF[20], "59401");
  EXPECT_EQ(Tables().CustomF1, "339750");
  EXPECT_EQ(Tables().CustomF2, "349750");
  EXPECT_EQ(Tables().Revision, 1U);
  EXPECT_EQ(State().FrequencySteps.UndoText(), "loaded channels");
  EXPECT_TRUE(State().FrequencySteps.Undo(Tables()).Done);
  EXPECT_EQ(radio::WriteFrequencies(Tables()), before);
}

TEST_F(ChannelExchange, LoadsNothingFromAFileWithoutThem) {
  sim.Write("User/Config/Viper.ini", "[Other]\r\nUHF_1=1\r\n");
  sim.Write(Config, "// set g_nF1TeamUiFreq 1\r\n");
  Exchange(ChannelUse::Load);
  for (std::size_t at = 1; at <= radio::ChannelCount; ++at) {
    EXPECT_EQ(Tables().CustomUHF[at], "000000");
    EXPECT_EQ(Tables().CustomVHF[at], "000000");
  }
  EXPECT_EQ(Tables().CustomF1, "");
  EXPECT_EQ(Tables().CustomF2, "");
}

TEST_F(ChannelExchange, SavesThePilotAndTheConfigurationAndKeepsTheRest) {
  Exchange(ChannelUse::Save);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  EXPECT_THAT(sim.Read("User/Config/Viper.ini"), testing::StartsWith("[Radio]\r\nUHF_1=297500\r\nVHF_20=138050\r\n"));
  EXPECT_THAT(sim.Read("User/Config/Viper.ini"), HasSubstr("UHF_2=000000\r\n"));
  EXPECT_EQ(sim.Read(Config), "set g_nF1TeamUiFreq 1 // old 1\r\nset g_nF2TeamUiFreq 2\r\n");
  const std::string backup = "set g_nF1TeamUiFreq 339750 // old 339750\r\nset g_nF2TeamUiFreq 349750\r\n";
  EXPECT_EQ(sim.Read(std::string(Config) + "_backup"), backup);
  Tables().CustomF1 = "3";
  Exchange(ChannelUse::Save);
  EXPECT_EQ(sim.Read(Config), "set g_nF1TeamUiFreq 3 // old 3\r\nset g_nF2TeamUiFreq 2\r\n");
  EXPECT_EQ(sim.Read(std::string(Config) + "_backup"), backup) << "it is what was there before the first save";
  EXPECT_EQ(State().FrequencySteps.UndoText(), "");
}

TEST_F(ChannelExchange, SavesTheDefaults) {
  Exchange(ChannelUse::SaveDefaults);
  EXPECT_THAT(sim.Read("User/Config/Viper.ini"), testing::StartsWith("[Radio]\r\nUHF_1=300100\r\n"));
  EXPECT_EQ(sim.Read(Config), "set g_nF1TeamUiFreq 300300 // old 300300\r\nset g_nF2TeamUiFreq 300400\r\n");
  EXPECT_EQ(radio::WriteFrequencies(Tables()), before);
}

TEST_F(ChannelExchange, OfAMissingPilotIsToldAndDoesNothing) {
  fs::remove(sim.Folder() / "User/Config/Viper.ini");
  Exchange(ChannelUse::Load);
  EXPECT_EQ(OnlyBox(), "The channels could not be loaded: Viper.ini is no file.");
  EXPECT_EQ(radio::WriteFrequencies(Tables()), before);
  EXPECT_EQ(State().FrequencySteps.UndoText(), "");
  const std::string config = sim.Read(Config);
  Exchange(ChannelUse::Save);
  EXPECT_EQ(OnlyBox(), "The channels could not be saved: Viper.ini is no file.");
  EXPECT_EQ(sim.Read(Config), config);
  EXPECT_FALSE(fs::exists(sim.Folder() / "User/Config/Viper.ini"));
}

TEST_F(ChannelExchange, OfAMissingConfigurationIsToldAndTheChannelsStay) {
  fs::remove(sim.Folder() / Config);
  Exchange(ChannelUse::Load);
  EXPECT_EQ(OnlyBox(), "The channels have been loaded, F1 and F2 could not be: falcon bms.cfg is no file.");
  EXPECT_EQ(Tables().CustomUHF[1], "251000");
  EXPECT_EQ(Tables().CustomF1, "1");
  EXPECT_EQ(Tables().CustomF2, "2");
  Tables().CustomUHF[1] = "222000";
  Exchange(ChannelUse::Save);
  EXPECT_EQ(OnlyBox(), "The channels have been saved, F1 and F2 could not be: falcon bms.cfg is no file.");
  EXPECT_THAT(sim.Read("User/Config/Viper.ini"), HasSubstr("UHF_1=222000\r\n"));
  EXPECT_FALSE(fs::exists(sim.Folder() / Config));
  EXPECT_FALSE(fs::exists(sim.Folder() / (std::string(Config) + "_backup")));
}

TEST_F(ChannelExchange, TellsThatThePersonsOwnConfigurationCounts) {
  sim.Write(OwnConfig, "set g_nF2TeamUiFreq 7\r\n");
  Exchange(ChannelUse::Load);
  EXPECT_EQ(OnlyBox(),
            "\"Falcon BMS User.cfg\" of this installation sets F2. That counts in Falcon, whatever \"falcon bms.cfg\" "
            "holds, and is neither loaded nor changed here.");
  EXPECT_EQ(around.Desk.Boxes[0].Icon, base::MessageIcon::Information);
  EXPECT_EQ(Tables().CustomF2, "349750");
  sim.Write(OwnConfig, "set g_nF2TeamUiFreq 7\r\nset g_nF1TeamUiFreq 8\r\n");
  Exchange(ChannelUse::Save);
  EXPECT_THAT(OnlyBox(), HasSubstr(" sets F1 and F2. "));
  EXPECT_EQ(sim.Read(OwnConfig), "set g_nF2TeamUiFreq 7\r\nset g_nF1TeamUiFreq 8\r\n");
  sim.Write(OwnConfig, "// set g_nF2TeamUiFreq 7\r\n");
  Exchange(ChannelUse::Save);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

}  // namespace
}  // namespace kestrel::core
