#ifndef _WIN32

#include "falcon/wine_registry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "base/temp_folder.h"
#include "falcon/failure_text.h"
#include "falcon/installations.h"

namespace kestrel::falcon {
namespace {

namespace fs = std::filesystem;
using test::FailureOf;
using test::TempFolder;
using test::WriteBytes;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string Bms = "SOFTWARE\\Benchmark Sims";

WineRegistry Taken(std::string_view text) {
  WineRegistry registry("prefix");
  registry.Take(text);
  return registry;
}

/// The value of a key, "bytes:" before one that is binary; "none" when it is not there.
std::string ValueOf(const WineRegistry& registry, const std::string& key, const std::string& value) {
  const std::optional<KeyValue> found = registry.ReadValue(key, value);
  return !found ? "none" : (found->IsBinary ? "bytes:" : "") + found->Bytes;
}

/// What is read as the baseDir when `written` stands behind its "=".
std::string BaseDirOf(const std::string& written) {
  return ValueOf(Taken("[Software\\\\Benchmark Sims\\\\Falcon BMS 4.37] 17\n\"baseDir\"=" + written + "\n"),
                 Bms + "\\Falcon BMS 4.37", "baseDir");
}

const std::string Example =
    "WINE REGISTRY Version 2\n;; All keys relative to \\\\Machine\n\n#arch=win64\n\n"
    "[Software\\\\Wow6432Node\\\\Benchmark Sims\\\\Falcon BMS 4.37] 1795306149\n#time=1dc5a3c\n"
    "@=\"default\"\n\"baseDir\"=\"C:\\\\Games\\\\Falcon BMS 4.37\"\n\"curTheater\"=\"Korea KTO\"\n"
    "\"PilotCallsign\"=hex:56,69,70,65,72,00,\\\n  00,00,00,00,00,00\n\"Other\"=dword:00000001\n\n"
    "[Software\\\\Wine] 1\n\"baseDir\"=\"C:\\\\none\"\n";

TEST(WineRegistry, ValuesOfAnInstallationAreRead) {
  const WineRegistry registry = Taken(Example);
  EXPECT_THAT(registry.SubKeys(Bms), ElementsAre("Falcon BMS 4.37"));
  const std::string key = Bms + "\\Falcon BMS 4.37";
  EXPECT_EQ(ValueOf(registry, key, "baseDir"), "C:\\Games\\Falcon BMS 4.37");
  EXPECT_EQ(ValueOf(registry, key, "CURTHEATER"), "Korea KTO");
  EXPECT_EQ(ValueOf(registry, key, "PilotCallsign"), "bytes:Viper" + std::string(7, '\0'));
  EXPECT_EQ(ValueOf(registry, key, "Other"), "none");
  EXPECT_EQ(ValueOf(registry, "SOFTWARE\\Wine", "baseDir"), "none");
  EXPECT_THAT(registry.SubKeys("SOFTWARE"), IsEmpty());
}

TEST(WineRegistry, PiecesOfAnySizeGiveTheSame) {
  for (std::size_t size = 1; size < 20; ++size) {
    WineRegistry registry("prefix");
    for (std::size_t at = 0; at < Example.size(); at += size) registry.Take(std::string_view(Example).substr(at, size));
    EXPECT_EQ(ValueOf(registry, Bms + "\\Falcon BMS 4.37", "baseDir"), "C:\\Games\\Falcon BMS 4.37") << size;
    EXPECT_EQ(ValueOf(registry, Bms + "\\Falcon BMS 4.37", "PilotCallsign"), "bytes:Viper" + std::string(7, '\0'));
  }
}

TEST(WineRegistry, CutAnywhereItTakesWholeValuesAlone) {
  const std::string key = Bms + "\\Falcon BMS 4.37";
  const auto endOf = [](std::string_view text) { return Example.find(text) + text.size() + 1; };
  const std::size_t baseDirEnd = endOf("4.37\""), callsignEnd = endOf("00,00,00,00,00,00");
  for (std::size_t length = 0; length <= Example.size(); ++length) {
    const WineRegistry registry = Taken(Example.substr(0, length));
    EXPECT_EQ(ValueOf(registry, key, "baseDir"), length < baseDirEnd ? "none" : "C:\\Games\\Falcon BMS 4.37") << length;
    EXPECT_EQ(ValueOf(registry, key, "PilotCallsign"),
              length < callsignEnd ? "none" : "bytes:Viper" + std::string(7, '\0'))
        << length;
  }
}

TEST(WineRegistry, TextsAreWrittenInManyWays) {
  EXPECT_EQ(BaseDirOf(R"("a\"b\\c")"), "a\"b\\c");
  // U+0141 is not in the code page, U+20AC is its 0x80.
  EXPECT_EQ(BaseDirOf(R"("\xe9|\x141|\x20acd|\x00e9e")"),
            "\xE9|?|\x80"
            "d|\xE9"
            "e");
  EXPECT_EQ(BaseDirOf(R"("\t\n\e\101\x")"),
            "\t\n\x1B"
            "Ax");
  EXPECT_EQ(BaseDirOf(R"("C:\\a\0\0")"), std::string("C:\\a\0\0", 6));
  EXPECT_EQ(BaseDirOf(R"(str(2):"%a%\\b")"), "%a%\\b");
  EXPECT_EQ(BaseDirOf("hex(1):43,00,3a,00,AC,20"), "C:\x80");
  EXPECT_EQ(BaseDirOf("hex(2):43,00,3a"), "C") << "half a unit at the end";
  EXPECT_EQ(BaseDirOf("\"a\"\r"), "a") << "CR LF";
  EXPECT_EQ(BaseDirOf("\"\""), "");
  for (const char* const wrong : {"\"a", "a", "\"a\"b", "\"a\\\"", "hex:4", "hex:1,", "hex:", "hex:123", "hex:4g",
                                  "hex(7):41,00", "dword:0", "str(7):\"a\"", ""}) {
    EXPECT_EQ(BaseDirOf(wrong), std::string_view(wrong) == "hex:4" ? "bytes:\x04" : "none") << wrong;
  }
}

TEST(WineRegistry, ViewOf32BitsGoesFirst) {
  const std::string wide =
      "[Software\\\\Benchmark Sims\\\\FALCON BMS 4.38] 1\n\"baseDir\"=\"C:\\\\64\"\n"
      "\"curTheater\"=\"64\"\n";
  const std::string narrow =
      "[SOFTWARE\\\\WOW6432Node\\\\benchmark sims\\\\Falcon BMS 4.38]\n\"BASEDIR\"=\"C:\\\\32\"\n";
  for (const std::string& text : {wide + narrow, narrow + wide}) {
    const WineRegistry registry = Taken(text);
    EXPECT_THAT(registry.SubKeys(Bms), SizeIs(1));
    EXPECT_EQ(ValueOf(registry, Bms + "\\Falcon BMS 4.38", "baseDir"), "C:\\32");
    EXPECT_EQ(ValueOf(registry, Bms + "\\Falcon BMS 4.38", "curTheater"), "64");
  }
}

TEST(WineRegistry, OnlyKeysOfInstallationsAreKept) {
  std::string text =
      "[Software\\\\Microprose\\\\Falcon\\\\4.0] 1\n\"baseDir\"=\"C:\\\\4\"\n"
      "[Software\\\\Benchmark Sims\\\\a\\\\b] 1\n\"baseDir\"=\"C:\\\\b\"\n"
      "[Software\\\\Benchmark Sims] 1\n\"baseDir\"=\"C:\\\\c\"\n"
      "[Software\\\\Benchmark Sims\\\\\\[4\\]] 1\n"
      "[Software\\\\Benchmark Sims\\\\open\n\"baseDir\"=\"C:\\\\d\"\n";
  EXPECT_EQ(ValueOf(Taken(text), "SOFTWARE\\Microprose\\Falcon\\4.0", "baseDir"), "C:\\4");
  EXPECT_THAT(Taken(text).SubKeys(Bms), ElementsAre("[4]"));
  for (int at = 0; at < 1000; ++at) text += "[Software\\\\Benchmark Sims\\\\Falcon BMS " + std::to_string(at) + "] 1\n";
  // One of them is that of the older Falcon.
  EXPECT_THAT(Taken(text).SubKeys(Bms), SizeIs(WineRegistry::MostKeys - 1));
}

TEST(WineRegistry, LinesThatAreTooLongArePassedOver) {
  const std::string longest(WineRegistry::LongestLine - std::string("\"baseDir\"=\"\"").size(), 'x');
  EXPECT_EQ(BaseDirOf("\"" + longest + "\""), longest);
  EXPECT_EQ(BaseDirOf("\"" + longest + "x\""), "none");
  EXPECT_EQ(BaseDirOf("\"" + longest + "x\"\n\"baseDir\"=\"y\""), "y") << "the next one counts";
  EXPECT_EQ(BaseDirOf("\"" + longest + "\"\r and more"), "none");
  std::string hex = "hex:41";
  while (hex.size() < 2 * WineRegistry::LongestLine) hex += ",\\\n  42,43";
  EXPECT_EQ(BaseDirOf(hex), "none");
  EXPECT_EQ(BaseDirOf(hex + "\n\"baseDir\"=\"y\""), "y");
}

class WinePrefix : public testing::Test {
 protected:
  WinePrefix() {
    fs::create_directories(folder / "drive_c/Games");
    fs::create_directories(folder / "dosdevices");
    fs::create_directory_symlink("../drive_c", folder / "dosdevices/c:");
  }
  TempFolder folder;
};

TEST_F(WinePrefix, DrivesAreItsLinks) {
  fs::create_directory_symlink("nowhere", folder / "dosdevices/e:");
  const WineRegistry registry(folder.Path());
  const fs::path drive = folder / "dosdevices/c:";
  EXPECT_EQ(registry.FolderOf("C:\\GAMES\\Falcon"), drive / "Games/Falcon");
  EXPECT_EQ(registry.FolderOf("c:/games/"), drive / "Games");
  EXPECT_EQ(registry.FolderOf("C:\\"), drive);
  EXPECT_EQ(registry.FolderOf("C:"), drive);
  for (const char* const none : {"D:\\Games", "E:\\Games", "C:Games", "Games", "\\\\server\\share", "", "C",
                                 "C:\\..\\x", "C:\\a:b", "..\\x", "/:"}) {
    EXPECT_EQ(registry.FolderOf(none), fs::path()) << none;
  }
}

TEST_F(WinePrefix, WithoutDrivesNoFolderIsThere) {
  fs::remove_all(folder / "dosdevices");
  EXPECT_EQ(WineRegistry(folder.Path()).FolderOf("C:\\Games"), fs::path());
}

TEST_F(WinePrefix, MissingRegistryIsAFailure) {
  EXPECT_NE(FailureOf([&] { WineRegistry::Load(folder.Path()); }), "");
  fs::create_directory(folder / "system.reg");
  EXPECT_NE(FailureOf([&] { WineRegistry::Load(folder.Path()); }), "");
}

TEST_F(WinePrefix, InstallationsInItAreFound) {
  const fs::path data = folder / "drive_c/Games/Falcon BMS 4.37/Data";
  fs::create_directories(data / "TerrData/TheaterDefinition");
  WriteBytes(data / "TerrData/TheaterDefinition/Theater.lst", "Korea.tdf\r\n");
  WriteBytes(data / "KOREA.TDF", "name Korea KTO\r\n");
  WriteBytes(folder / "system.reg", Example);
  const WineRegistry registry = WineRegistry::Load(folder.Path());
  const InstallKeys* const sources[] = {&registry};
  const FalconInstalls found = DiscoverFalcon(sources);
  ASSERT_THAT(found.Bms, SizeIs(1));
  EXPECT_EQ(found.Bms[0].PilotCallsign, "Viper");
  ASSERT_EQ(found.Bms[0].Theaters.UpperBound(), 1U);
  EXPECT_EQ(found.Bms[0].Theaters[1].Definition.Name, "Korea KTO");
}

long PeakKilobytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

TEST_F(WinePrefix, LargeRegistryIsNotHeld) {
  const fs::path file = folder / "system.reg";
  std::string lines;
  for (int at = 0; at < 5000; ++at) lines += "\"value " + std::to_string(at) + "\"=\"" + std::string(200, 'x') + "\"\n";
  WriteBytes(file, "[Software\\\\Benchmark Sims\\\\Falcon BMS 4.37] 1\n" + lines);
  fs::resize_file(file, std::uintmax_t{100} << 20);  // a line of NULs
  std::ofstream(file, std::ios::binary | std::ios::app) << "\n" << Example;
  const pid_t child = fork();
  if (child == 0) {
    const long before = PeakKilobytes();
    const WineRegistry registry = WineRegistry::Load(folder.Path());
    const bool isRead = registry.ReadValue(Bms + "\\Falcon BMS 4.37", "baseDir").has_value();
    _exit(!isRead ? 1 : PeakKilobytes() - before > 16 << 10 ? 2 : 0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0) << "1: not read, 2: more than 16 MB were taken";
}

}  // namespace
}  // namespace kestrel::falcon

#endif
