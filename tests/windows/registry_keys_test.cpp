// Installations in the registry of Windows.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "falcon/installations.h"
#include "falcon/small_install.h"
#include "platform/make_seams.h"
#include "platform/windows/windows_install_keys.h"

namespace kestrel::platform {
namespace {

using falcon::BmsKeys;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string Bms = std::string(BmsKeys);
const std::string Old = std::string(falcon::FalconKey);

/// Keys of the session's own registry, gone with the test.
class InstallKeysOfWindows : public testing::Test {
 protected:
  InstallKeysOfWindows() { Clear(); }
  ~InstallKeysOfWindows() override { Clear(); }

  static void Clear() {
    for (const REGSAM view : {KEY_WOW64_32KEY, KEY_WOW64_64KEY}) {
      for (const char* const below : {"Benchmark Sims", "Microprose"}) {
        HKEY software = nullptr;
        if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE", 0, KEY_ALL_ACCESS | view, &software) != ERROR_SUCCESS)
          continue;
        RegDeleteTreeA(software, below);
        RegCloseKey(software);
      }
    }
  }
  static void Put(const std::string& key, const char* value, DWORD kind, const std::string& bytes,
                  REGSAM view = KEY_WOW64_32KEY) {
    HKEY made = nullptr;
    ASSERT_EQ(
        RegCreateKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, 0, KEY_WRITE | view, nullptr, &made, nullptr),
        ERROR_SUCCESS);
    EXPECT_EQ(RegSetValueExA(made, value, 0, kind, reinterpret_cast<const BYTE*>(bytes.data()),
                             static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
    RegCloseKey(made);
  }
  std::string Text(const std::string& key, const char* value) {
    return keys.ReadValue(key, value).value_or(falcon::KeyValue{false, "none"}).Bytes;
  }

  WindowsInstallKeys keys;
};

TEST_F(InstallKeysOfWindows, WithoutKeysThereIsNothing) {
  EXPECT_THAT(keys.SubKeys(Bms), IsEmpty());
  EXPECT_EQ(keys.ReadValue(Old, "baseDir"), std::nullopt);
}

TEST_F(InstallKeysOfWindows, ValuesAreTextsAndBytes) {
  Put(Old, "baseDir", REG_SZ, std::string("C:\\F\xE9lix\0", 9));
  Put(Old, "curTheater", REG_EXPAND_SZ, std::string("%one%\0", 6));
  Put(Old, "PilotCallsign", REG_BINARY, std::string("Viper\0x\0", 8));
  Put(Old, "number", REG_DWORD, std::string(4, '\1'));
  Put(Old, "long", REG_SZ, std::string(5000, 'x') + '\0');
  EXPECT_EQ(Text(Old, "basedir"), "C:\\F\xE9lix");
  EXPECT_EQ(Text(Old, "curTheater"), "%one%");
  const auto bytes = keys.ReadValue(Old, "PilotCallsign");
  ASSERT_TRUE(bytes.has_value());
  EXPECT_TRUE(bytes->IsBinary);
  EXPECT_EQ(bytes->Bytes, std::string("Viper\0x\0", 8));
  EXPECT_EQ(Text(Old, "number"), "none");
  EXPECT_EQ(Text(Old, "long"), "none");
  EXPECT_EQ(Text(Old, "missing"), "none");
}

TEST_F(InstallKeysOfWindows, BothViewsAreReadThatOf32BitsFirst) {
  Put(Bms + "\\Falcon BMS 4.37", "baseDir", REG_SZ, "C:\\32");
  Put(Bms + "\\Falcon BMS 4.37", "baseDir", REG_SZ, "C:\\64", KEY_WOW64_64KEY);
  Put(Bms + "\\Falcon BMS 4.37", "curTheater", REG_SZ, "Korea", KEY_WOW64_64KEY);
  Put(Bms + "\\Falcon BMS 4.38", "baseDir", REG_SZ, "C:\\new", KEY_WOW64_64KEY);
  EXPECT_THAT(keys.SubKeys(Bms), ElementsAre("Falcon BMS 4.37", "Falcon BMS 4.38"));
  EXPECT_EQ(Text(Bms + "\\Falcon BMS 4.37", "baseDir"), "C:\\32");
  EXPECT_EQ(Text(Bms + "\\Falcon BMS 4.37", "curTheater"), "Korea");
  EXPECT_EQ(Text(Bms + "\\Falcon BMS 4.38", "baseDir"), "C:\\new");
}

TEST_F(InstallKeysOfWindows, FoldersAreThoseOfDrivesThatAreThere) {
  EXPECT_EQ(keys.FolderOf("C:\\windows"), std::filesystem::path("C:/windows"));
  EXPECT_EQ(keys.FolderOf("C:/windows"), std::filesystem::path("C:/windows"));
  for (const char* const text : {"", "C:", "Q:\\sim", "sim", "\\sim", "1:\\sim"}) {
    EXPECT_EQ(keys.FolderOf(text), std::filesystem::path()) << text;
  }
}

TEST_F(InstallKeysOfWindows, InstallationIsFoundByThem) {
  const test::TempFolder folder;
  const test::SmallInstall install(folder / "Sim");
  install.AddTheaters({"Korea"});
  Put(Bms + "\\Falcon BMS 4.37", "baseDir", REG_SZ, install.Folder().string());
  const falcon::InstallSources sources = MakeInstallKeys();
  ASSERT_THAT(sources, SizeIs(1));
  const falcon::InstallKeys* const asked[] = {sources[0].get()};
  const falcon::FalconInstalls found = falcon::DiscoverFalcon(asked);
  ASSERT_THAT(found.Bms, SizeIs(1));
  EXPECT_EQ(found.Bms[0].Key, "Falcon BMS 4.37");
  ASSERT_EQ(found.Bms[0].Theaters.UpperBound(), 1U);
  EXPECT_EQ(found.Bms[0].Theaters[1].Definition.Name, "Korea");
}

}  // namespace
}  // namespace kestrel::platform
