#include "base/file_replacement.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"
#include "temp_folder.h"

namespace kestrel::base {
namespace {

namespace fs = std::filesystem;

std::span<const std::byte> BytesOf(std::string_view text) { return std::as_bytes(std::span(text)); }

TEST(FileReplacement, TakesTheNameOnceAllPiecesAreWritten) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "file", "the old one");
  {
    FileReplacement fresh(folder / "file");
    fresh.Write(BytesOf("one "));
    std::vector<std::span<const std::byte>> pieces = {BytesOf("two "), BytesOf(""), BytesOf("three ")};
    fresh.Write(pieces);
    fresh.Write(BytesOf("four"));
    EXPECT_EQ(test::ReadBytes(folder / "file"), "the old one");
    fresh.Commit();
  }
  EXPECT_EQ(test::ReadBytes(folder / "file"), "one two three four");
  EXPECT_FALSE(fs::exists(folder / "file.new"));
}

TEST(FileReplacement, LeavesNothingBehindUnlessItTakesTheName) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "file", "the old one");
  {
    FileReplacement fresh(folder / "file");
    fresh.Write(BytesOf("half"));
    EXPECT_TRUE(fs::exists(folder / "file.new"));
  }
  EXPECT_EQ(test::ReadBytes(folder / "file"), "the old one");
  EXPECT_FALSE(fs::exists(folder / "file.new"));
}

TEST(FileReplacement, NamesTheFileThatCannotBeWritten) {
  const test::TempFolder folder;
  fs::create_directories(folder / "file" / "in the way");
  const auto reason = [](const fs::path& path) -> std::string {
    try {
      FileReplacement fresh(path);
      fresh.Commit();
    } catch (const RuntimeFailure& failure) {
      return failure.what();
    }
    return "written";
  };
  EXPECT_EQ(reason(folder / "file"), "file cannot be written");
  EXPECT_FALSE(fs::exists(folder / "file.new"));
  EXPECT_EQ(reason(folder / "missing" / "file"), "file cannot be written");
}

}  // namespace
}  // namespace kestrel::base
