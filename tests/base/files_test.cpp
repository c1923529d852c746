#include "base/files.h"

#include <gtest/gtest.h>

#include <array>
#include <span>
#include <string>

#include "base/code_page.h"
#include "base/failure.h"
#include "temp_folder.h"

namespace kestrel::base {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

TEST(Files, FindFileTakesEitherSlashAndAnyCase) {
  const test::TempFolder folder;
  fs::create_directories(folder / "Data/Terrain");
  test::WriteBytes(folder / "Data/Terrain/Theater.MAP", "x");
  for (const char* name : {"Data/Terrain/Theater.MAP", "data\\TERRAIN\\theater.map", ".\\data//terrain/./THEATER.map",
                           "data/missing/..\\terrain/theater.map"}) {
    EXPECT_EQ(test::ReadBytes(FindFile(folder.Path(), name)), "x") << name;
  }
}

TEST(Files, AMissingStepStandsAsWritten) {
  const test::TempFolder folder;
  fs::create_directory(folder / "Data");
  EXPECT_EQ(FindFile(folder.Path(), "DATA/New File.txt").filename(), "New File.txt");
  EXPECT_EQ(FindFile(folder.Path(), "other\\Deep.txt"), folder.Path() / "other" / "Deep.txt");
  EXPECT_EQ(FindFile(folder.Path(), ""), folder.Path());
}

#ifndef _WIN32
TEST(Files, TheExactSpellingWins) {
  const test::TempFolder folder;
  for (const char* name : {"name", "NAME", "Name"}) test::WriteBytes(folder / name, name);
  EXPECT_EQ(test::ReadBytes(FindFile(folder.Path(), "Name")), "Name");
  EXPECT_EQ(test::ReadBytes(FindFile(folder.Path(), "name")), "name");
  // None is exact: always the same one.
  EXPECT_EQ(test::ReadBytes(FindFile(folder.Path(), "nAmE")), "NAME");
}

TEST(Files, NamesInTheCodePageAreFoundInBothSpellings) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "K\xC3\xB6ln.ini", "unicode");
  test::WriteBytes(folder / "Z\xFCrich.ini", "bytes");
  EXPECT_EQ(test::ReadBytes(FindFile(folder.Path(), "k\xF6LN.ini")), "unicode");
  EXPECT_EQ(test::ReadBytes(FindFile(folder.Path(), "z\xFCrich.INI")), "bytes");
}
#endif

#ifdef _WIN32
TEST(Files, NamesInTheActiveCodePageAreFound) {
  const test::TempFolder folder;
  const std::u16string name = u"K\u00F6ln.ini";
  const std::string bytes = FromUnicode(name);
  if (bytes.find('?') != std::string::npos) GTEST_SKIP() << "the active code page has no such letter";
  test::WriteBytes(folder.Path() / fs::path(name), "found");
  EXPECT_EQ(test::ReadBytes(FindFile(folder.Path(), bytes)), "found");
  EXPECT_EQ(ReadWholeFile(FindFile(folder.Path(), bytes), 100), "found");
}
#endif

TEST(Files, ANameNeverLeavesItsFolder) {
  const test::TempFolder folder;
  fs::create_directory(folder / "Data");
  for (const char* name : {"..", "../x", "..\\x", "Data/../../x", "Data\\..\\..", "./../x", "a/b/../../../c",
                           "Data/C:\\x", "file.txt:hidden"}) {
    EXPECT_THROW(FindFile(folder.Path(), name), RuntimeFailure) << name;
  }
  EXPECT_THROW(FindFile(folder.Path(), "a\0b"s), RuntimeFailure);
  EXPECT_EQ(FindFile(folder.Path(), "Data/../Data"), folder.Path() / "Data");
  EXPECT_EQ(FindFile(folder.Path(), "..."), folder.Path() / "...");
}

TEST(Files, AnAbsoluteNameIsTakenAsItIs) {
  const test::TempFolder folder;
  EXPECT_EQ(FindFile(folder.Path(), "/somewhere/Else.txt"), fs::path("/somewhere/Else.txt"));
  EXPECT_EQ(FindFile(folder.Path(), "C:\\Falcon\\x.txt"), fs::path("C:/Falcon/x.txt"));
}

TEST(Files, FileExistsIsForFilesOnly) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "file", "");
  EXPECT_TRUE(FileExists(folder / "file"));
  EXPECT_FALSE(FileExists(folder.Path()));
  EXPECT_FALSE(FileExists(folder / "missing"));
  EXPECT_FALSE(FileExists(folder / "file/below"));
}

TEST(Files, ReadingKeepsToTheLimit) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "file", "12345");
  EXPECT_EQ(ReadWholeFile(folder / "file", 5), "12345");
  EXPECT_THROW(ReadWholeFile(folder / "file", 4), RuntimeFailure);
  EXPECT_THROW(ReadWholeFile(folder / "missing", 5), RuntimeFailure);
  EXPECT_THROW(ReadWholeFile(folder.Path(), 5), RuntimeFailure);
}

TEST(Files, WritingReplacesTheWholeFile) {
  const test::TempFolder folder;
  const std::string binary = "a\0b\r\n\n\xFF"s;
  WriteWholeFile(folder / "file", std::string(1000, 'x'));
  WriteWholeFile(folder / "file", binary);
  EXPECT_EQ(test::ReadBytes(folder / "file"), binary);
  WriteWholeFile(folder / "file", "");
  EXPECT_EQ(test::ReadBytes(folder / "file"), "");
  EXPECT_FALSE(fs::exists(folder / "file.new"));
}

TEST(Files, ANeighbourLeftByAKilledProgramIsNoHindrance) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "file.new", "half");
  WriteWholeFile(folder / "file", "whole");
  EXPECT_EQ(test::ReadBytes(folder / "file"), "whole");
  EXPECT_FALSE(fs::exists(folder / "file.new"));
}

TEST(Files, WritingWhereNoFileCanBeThrows) {
  const test::TempFolder folder;
  fs::create_directory(folder / "folder");
  test::WriteBytes(folder / "folder/inside", "kept");
  EXPECT_THROW(WriteWholeFile(folder / "missing/file", "x"), RuntimeFailure);
  EXPECT_THROW(WriteWholeFile(folder / "folder", "x"), RuntimeFailure);
  EXPECT_FALSE(fs::exists(folder / "folder.new"));
  EXPECT_EQ(test::ReadBytes(folder / "folder/inside"), "kept");
}

#ifndef _WIN32
TEST(Files, ALinkKeepsStandingAndItsFileIsWritten) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "real", "old");
  fs::create_symlink("real", folder / "link");
  WriteWholeFile(folder / "link", "new");
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(test::ReadBytes(folder / "real"), "new");
}

TEST(Files, TheRightsOfTheOldFileStay) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "file", "old");
  const fs::perms rights = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_write;
  fs::permissions(folder / "file", rights);
  WriteWholeFile(folder / "file", "new");
  EXPECT_EQ(fs::status(folder / "file").permissions(), rights);
}
#endif

TEST(Files, MakeFolderMakesThoseAboveToo) {
  const test::TempFolder folder;
  MakeFolder(folder / "a/b/c");
  MakeFolder(folder / "a/b/c");
  EXPECT_TRUE(fs::is_directory(folder / "a/b/c"));
  test::WriteBytes(folder / "file", "");
  EXPECT_THROW(MakeFolder(folder / "file"), RuntimeFailure);
  EXPECT_THROW(MakeFolder(folder / "file/below"), RuntimeFailure);
}

TEST(Files, DeleteFileIsContentWithAMissingFile) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "file", "");
  EXPECT_TRUE(DeleteFile(folder / "file"));
  EXPECT_FALSE(fs::exists(folder / "file"));
  EXPECT_TRUE(DeleteFile(folder / "file"));
  fs::create_directories(folder / "full/inside");
  EXPECT_FALSE(DeleteFile(folder / "full"));
}

TEST(Files, FreeSpaceIsToldForAFolderThatIsThere) {
  const test::TempFolder folder;
  const std::optional<std::uint64_t> free = FreeSpace(folder.Path());
  ASSERT_TRUE(free);
  // Others write to the disk meanwhile.
  constexpr double some = 4.0 * 1024 * 1024 * 1024;
  EXPECT_NEAR(static_cast<double>(*free), static_cast<double>(fs::space(folder.Path()).available), some);
  EXPECT_EQ(FreeSpace(folder / "none"), std::nullopt);
}

TEST(Files, NamesAreCutOffTheirFolders) { EXPECT_EQ(NameForMessage(fs::path("a") / "c.txt"), "c.txt"); }

TEST(Files, MessagesShowNamesInTheCodePage) {
  const fs::path path = fs::path(u"b\u00E9ta") / u"\u0416.txt";
  EXPECT_EQ(NameForMessage(path), "?.txt");
  EXPECT_EQ(PathForMessage(path), FromUnicode(path.u16string()));
  EXPECT_EQ(PathForMessage("a/b"), "a" + std::string(1, fs::path::preferred_separator) + "b");
  EXPECT_EQ(PathForMessage(path).substr(0, 5), "b\xE9ta" + std::string(1, fs::path::preferred_separator));
#ifndef _WIN32
  EXPECT_EQ(NameForMessage("a/\xFFx"), "\xFFx") << "bytes that are no text of the system's encoding";
#endif
}

TEST(Files, APathComesBackFromItsTextWhateverItsCharacters) {
  const fs::path path = fs::path(u"b\u00E9ta") / u"\u0416 \u6771.txt";
  EXPECT_EQ(TextOfPath(fs::path(u"\u00E9")), "\xC3\xA9");
  EXPECT_EQ(PathOfText(TextOfPath(path)), path);
}

TEST(Files, ReadHeadGivesWhatThereIsUpToTheRoom) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "heights", "abcdef");
  struct Case {
    std::size_t room, read;
    std::string_view text;
  };
  for (const Case& each : {Case{4, 4, "abcd"}, {6, 6, "abcdef"}, {8, 6, "abcdef.."}, {0, 0, ""}}) {
    std::string into(each.room, '.');
    EXPECT_EQ(ReadHead(folder / "heights", std::as_writable_bytes(std::span(into))), each.read) << each.room;
    EXPECT_EQ(into, each.text);
  }
}

TEST(Files, ReadHeadFailsForAMissingFileOrAFolder) {
  const test::TempFolder folder;
  std::array<std::byte, 4> into{};
  EXPECT_THROW(ReadHead(folder / "none", into), RuntimeFailure);
  EXPECT_THROW(ReadHead(folder.Path(), into), RuntimeFailure);
}

}  // namespace
}  // namespace kestrel::base
