// Reads the sources below src/ and holds the table of who may include whom, and that each file name tells which it is.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "project_paths.h"

namespace {

namespace fs = std::filesystem;

const fs::path sources = fs::path(KESTREL_SOURCE_DIR) / "src";

using Rooms = std::set<std::string>;

// docs/architecture.md shows the same table.
const std::map<std::string, Rooms> mayInclude = {
    {"base", {}},
    {"theaters", {"base"}},
    {"link", {"base", "theaters"}},
    {"areas", {"base", "theaters"}},
    {"tape", {"base", "theaters", "link"}},
    {"falcon", {"base"}},
    {"radio", {"base", "falcon"}},
    {"map", {"base", "theaters", "link", "areas", "radio"}},
    {"core", {"base", "theaters", "link", "areas", "tape", "falcon", "radio", "map"}},
    {"platform", {"base", "falcon", "radio", "core"}},
    {"shell", {"base", "theaters", "link", "areas", "tape", "falcon", "radio", "map", "core"}},
};

// The folders of shell/; each may include parts. Those that are made of the windows stand above them.
const Rooms windowFolders = {"link", "areas", "tape", "radio", "map", "options", "theaters", "falcon"};
const std::map<std::string, Rooms> frameAndCore = {
    {"frame", windowFolders},
    {"core", {"link", "areas", "tape", "radio", "map", "options", "theaters", "falcon", "frame"}},
};

struct Include {
  std::string File;  ///< below src/, forward slashes
  std::string Room;  ///< of the file; empty for main.cpp
  std::string What;  ///< as written between the quotes or brackets
  bool Quoted = false;
};

std::vector<Include> AllIncludes() {
  static const std::regex line(R"(^\s*#\s*include\s*(["<])([^">]+)[">])");
  std::vector<Include> found;
  for (const auto& entry : fs::recursive_directory_iterator(sources)) {
    const auto extension = entry.path().extension();
    if (extension != ".h" && extension != ".cpp") continue;
    const fs::path below = fs::relative(entry.path(), sources);
    const std::string room = std::distance(below.begin(), below.end()) > 1 ? below.begin()->string() : "";
    std::ifstream file(entry.path());
    std::smatch match;
    for (std::string text; std::getline(file, text);) {
      if (std::regex_search(text, match, line))
        found.push_back({below.generic_string(), room, match[2], match[1] == "\""});
    }
  }
  return found;
}

/// The file names below src/ with `extension`, and where each stands.
std::map<std::string, std::vector<std::string>> FilesByName(const char* extension) {
  std::map<std::string, std::vector<std::string>> found;
  for (const auto& entry : fs::recursive_directory_iterator(sources)) {
    if (entry.path().extension() != extension) continue;
    found[entry.path().filename().string()].push_back(fs::relative(entry.path(), sources).generic_string());
  }
  return found;
}

std::string RoomOf(const std::string& include) {
  const std::size_t slash = include.find('/');
  return slash == std::string::npos ? "" : include.substr(0, slash);
}

TEST(House, EveryRoomIncludesOnlyTheRoomsItMay) {
  const std::vector<Include> includes = AllIncludes();
  ASSERT_GT(includes.size(), 100U) << "the sources were not found";
  for (const Include& include : includes) {
    if (include.Room.empty() || !include.Quoted) continue;
    const auto row = mayInclude.find(include.Room);
    ASSERT_NE(row, mayInclude.end()) << "no row for the room of " << include.File;
    const std::string room = RoomOf(include.What);
    if (!mayInclude.contains(room) || room == include.Room) continue;
    EXPECT_TRUE(row->second.contains(room)) << include.File << " includes " << include.What;
  }
}

TEST(House, FoldersOfTheShellIncludeOnlyThoseBelowThem) {
  std::size_t judged = 0;
  for (const Include& include : AllIncludes()) {
    if (include.Room != "shell" || !include.Quoted || RoomOf(include.What) != "shell") continue;
    const std::string from = RoomOf(include.File.substr(std::string("shell/").size()));
    const std::string to = RoomOf(include.What.substr(std::string("shell/").size()));
    if (from == to || (to == "parts" && from != "parts")) continue;
    ++judged;
    const auto row = frameAndCore.find(from);
    EXPECT_TRUE(row != frameAndCore.end() && row->second.contains(to)) << include.File << " includes " << include.What;
  }
  EXPECT_GT(judged, 10U);
}

TEST(House, IncludesAreWrittenFromSrc) {
  for (const Include& include : AllIncludes()) {
    if (!include.Quoted) continue;
    const bool generated =
        include.What == "version.h" || include.What.starts_with("ui_") || include.What.ends_with(".moc");
    EXPECT_TRUE(generated || fs::exists(sources / include.What)) << include.File << " includes " << include.What;
  }
}

TEST(House, NoTwoFilesHaveOneName) {
  for (const char* extension : {".h", ".cpp", ".ui"}) {
    const auto files = FilesByName(extension);
    ASSERT_GT(files.size(), 10U) << "the sources were not found";
    for (const auto& [name, places] : files) EXPECT_EQ(places.size(), 1U) << places.front() << " and " << places.back();
  }
}

TEST(House, OnlyTheShellKnowsQt) {
  for (const Include& include : AllIncludes()) {
    if (include.Quoted || include.Room == "shell" || include.Room.empty()) continue;
    const bool qt =
        include.What.size() > 1 && include.What[0] == 'Q' && include.What[1] >= 'A' && include.What[1] <= 'Z';
    EXPECT_FALSE(qt) << include.File << " includes " << include.What;
  }
}

TEST(House, OnlyThePictureLoaderKnowsFreeImage) {
  for (const Include& include : AllIncludes()) {
    if (include.What == "FreeImage.h") {
      EXPECT_EQ(include.File, "base/picture.cpp");
    }
  }
}

}  // namespace
