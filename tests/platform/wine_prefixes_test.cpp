#ifdef __linux__

#include "platform/linux/wine_prefixes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <string>

#include "base/temp_folder.h"
#include "falcon/installations.h"
#include "falcon/small_install.h"
#include "platform/make_seams.h"

namespace kestrel::platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class WinePrefixes : public testing::Test {
 protected:
  WinePrefixes() { fs::create_directories(home); }

  void Write(const fs::path& name, std::string_view bytes) {
    fs::create_directories((disk.Path() / name).parent_path());
    test::WriteBytes(disk.Path() / name, bytes);
  }
  /// A prefix, named below the test's folder.
  void AddPrefix(const fs::path& name) { Write(name / "system.reg", "WINE REGISTRY Version 2\n"); }
  /// The prefixes that are found, below the test's folder.
  std::vector<std::string> Found() {
    std::vector<std::string> names;
    for (const fs::path& prefix : FindWinePrefixes(places)) {
      names.push_back(fs::relative(prefix, fs::canonical(disk.Path())).string());
    }
    return names;
  }

  test::TempFolder disk;
  fs::path home = disk / "home";
  PrefixPlaces places{home, {}, {}, {}};
};

TEST_F(WinePrefixes, AreThoseOfWine) {
  AddPrefix("home/.wine");
  AddPrefix("elsewhere");
  places.WinePrefix = disk / "elsewhere";
  EXPECT_THAT(Found(), ElementsAre("elsewhere", "home/.wine"));
  fs::remove(home / ".wine/system.reg");
  fs::create_directory(home / ".wine/system.reg");
  EXPECT_THAT(Found(), ElementsAre("elsewhere")) << "without a file of that name there is none";
  EXPECT_THAT(FindWinePrefixes({}), IsEmpty());
}

TEST_F(WinePrefixes, OfSteamAreThoseOfAllItsLibraries) {
  AddPrefix("home/.local/share/Steam/steamapps/compatdata/429530/pfx");
  AddPrefix("games/Library \"2\"/steamapps/compatdata/17/pfx");
  AddPrefix("old/steamapps/compatdata/18/pfx");
  AddPrefix("home/.var/app/com.valvesoftware.Steam/.local/share/Steam/steamapps/compatdata/19/pfx");
  fs::create_directories(home / ".local/share/Steam/steamapps/compatdata/20/pfx");
  const std::string root = disk.Path().string();
  Write("home/.local/share/Steam/steamapps/libraryfolders.vdf",
        "\"libraryfolders\"\n{\n\t\"0\"\n\t{\n\t\t\"path\"\t\t\"" + root +
            "/games/Library "
            "\\\"2\\\"\"\r\n\t\t\"label\"\t\"\"\n\t\t\"apps\"\n\t\t{\n\t\t\t\"429530\"\t\"1\"\n\t\t}\n\t}\n"
            "\t\"1\"\t\"" +
            root + "/old\"\n\t\"2\"\t\"relative\"\n\t\"unfinished");
  EXPECT_THAT(Found(), testing::UnorderedElementsAre(
                           "home/.local/share/Steam/steamapps/compatdata/429530/pfx",
                           "games/Library \"2\"/steamapps/compatdata/17/pfx", "old/steamapps/compatdata/18/pfx",
                           "home/.var/app/com.valvesoftware.Steam/.local/share/Steam/steamapps/compatdata/19/pfx"));
}

TEST_F(WinePrefixes, OfLutrisAreThoseOfItsGames) {
  for (const char* const name : {"a", "b", "c c c", "home/d", "e", "home/Games/f"}) AddPrefix(name);
  const std::string root = disk.Path().string();
  Write("home/.config/lutris/games/falcon-1.yml",
        "game:\n  exe: drive_c/x.exe\n  prefix: " + root + "/a\r\n  prefix_command: " + root + "/e\nwine: {}\n");
  Write("home/.local/share/lutris/games/falcon-2.yml", "game:\n  prefix: '" + root + "/b'\n");
  Write("home/.local/share/lutris/games/falcon-3.yml",
        "game:\n  prefix: " + root + "/c\n    c\n    c\n  arch: win64\n");
  Write("home/.local/share/lutris/games/falcon-4.yml", "  prefix: \"~/d\"");
  Write("home/.local/share/lutris/games/falcon-5.txt", "  prefix: " + root + "/e\n");
  Write("home/.local/share/lutris/games/falcon-6.yml", "prefix:\nprefix: relative\n");
  EXPECT_THAT(Found(), testing::UnorderedElementsAre("a", "b", "c c c", "home/d", "home/Games/f"));
}

TEST_F(WinePrefixes, OfBottlesAreItsFolders) {
  AddPrefix("home/.local/share/bottles/bottles/One");
  AddPrefix("home/.var/app/com.usebottles.bottles/data/bottles/bottles/Two");
  Write("home/.local/share/bottles/bottles/no folder", "");
  EXPECT_THAT(Found(), ElementsAre("home/.local/share/bottles/bottles/One",
                                   "home/.var/app/com.usebottles.bottles/data/bottles/bottles/Two"));
}

TEST_F(WinePrefixes, FoldersThatTheEnvironmentNamesCountToo) {
  AddPrefix("data/Steam/steamapps/compatdata/1/pfx");
  AddPrefix("data/bottles/bottles/One");
  AddPrefix("game");
  Write("config/lutris/games/g.yml", "prefix: " + (disk / "game").string());
  places.DataHome = disk / "data";
  places.ConfigHome = disk / "config";
  EXPECT_THAT(Found(), testing::UnorderedElementsAre("data/Steam/steamapps/compatdata/1/pfx",
                                                     "data/bottles/bottles/One", "game"));
}

TEST_F(WinePrefixes, EachIsFoundOnceWhateverLeadsToIt) {
  AddPrefix("home/.local/share/Steam/steamapps/compatdata/1/pfx");
  fs::create_directory(home / ".steam");
  for (const char* const link : {"steam", "root"})
    fs::create_directory_symlink(home / ".local/share/Steam", home / ".steam" / link);
  fs::create_directory_symlink(home / ".local/share/Steam/steamapps/compatdata/1/pfx", home / ".wine");
  places.WinePrefix = home / ".wine/../.wine/";
  EXPECT_THAT(Found(), ElementsAre("home/.local/share/Steam/steamapps/compatdata/1/pfx"));
}

TEST_F(WinePrefixes, LinksInCirclesAndFilesThatCannotBeReadAreLeftOut) {
  AddPrefix("home/.wine");
  fs::create_directories(home / ".local/share/Steam/steamapps/compatdata");
  fs::create_directory_symlink(home / "Games/circle", home / "Games-link");
  fs::create_directory(home / "Games");
  fs::create_directory_symlink(home / "Games-link", home / "Games/circle");
  fs::create_directory_symlink(home / "Games", home / "Games/itself");
  fs::create_directory_symlink(home / "Games/circle", home / ".local/share/Steam/steamapps/compatdata/1");
  ASSERT_EQ(mkfifo((home / "Games/system.reg").c_str(), 0600), 0) << "reading it would wait for ever";
  fs::create_directories(home / ".local/share/Steam/steamapps/libraryfolders.vdf");
  Write("home/.config/lutris/games/large.yml", "prefix: " + (home / "large").string() + std::string(2 << 20, '\n'));
  AddPrefix("home/large");
  EXPECT_THAT(Found(), ElementsAre("home/.wine"));
}

/// The environment for the time of a test.
class Environment {
 public:
  Environment(const char* name, const std::string& value) : variable(name) {
    if (const char* const present = std::getenv(name)) former = present;
    setenv(name, value.c_str(), 1);
  }
  ~Environment() {
    if (former) {
      setenv(variable, former->c_str(), 1);
    } else {
      unsetenv(variable);
    }
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  const char* variable;
  std::optional<std::string> former;
};

TEST_F(WinePrefixes, InstallationsInThemAreFound) {
  const Environment own[] = {
      {"HOME", home.string()}, {"XDG_DATA_HOME", ""}, {"XDG_CONFIG_HOME", ""}, {"WINEPREFIX", ""}};
  const test::SmallInstall install(home / ".wine/drive_c/Falcon BMS 4.37");
  install.AddTheaters({"Korea"});
  AddPrefix("home/Games/without drives");
  Write("home/.wine/system.reg",
        "WINE REGISTRY Version 2\n\n[Software\\\\Wow6432Node\\\\Benchmark Sims\\\\Falcon BMS 4.37] 1795306149\n"
        "#time=1\n\"baseDir\"=\"C:\\\\Falcon BMS 4.37\"\n\"curTheater\"=\"Korea\"\n");
  fs::create_directory(home / ".wine/dosdevices");
  fs::create_directory_symlink("../drive_c", home / ".wine/dosdevices/c:");
  const falcon::InstallSources sources = MakeInstallKeys();
  EXPECT_THAT(sources, SizeIs(2));
  std::vector<const falcon::InstallKeys*> asked;
  for (const auto& source : sources) asked.push_back(source.get());
  const falcon::FalconInstalls found = falcon::DiscoverFalcon(asked);
  ASSERT_THAT(found.Bms, SizeIs(1));
  EXPECT_TRUE(fs::equivalent(found.Bms[0].Folder, install.Folder()));
  EXPECT_EQ(found.Bms[0].Theaters.UpperBound(), 1U);
}

}  // namespace
}  // namespace kestrel::platform

#endif
