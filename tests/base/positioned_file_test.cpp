#include "base/positioned_file.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "temp_folder.h"

namespace kestrel::base {
namespace {

namespace fs = std::filesystem;
using Mode = PositionedFile::Mode;

std::span<const std::byte> BytesOf(std::string_view text) { return std::as_bytes(std::span(text)); }

std::string ReadFrom(const PositionedFile& file, std::uint64_t position, std::size_t count) {
  std::string text(count, '?');
  text.resize(file.Read(position, std::as_writable_bytes(std::span(text))));
  return text;
}

TEST(PositionedFile, WritesAndReadsAtAnyPosition) {
  const test::TempFolder folder;
  PositionedFile file(folder / "f", Mode::Replace);
  file.Write(0, BytesOf("0123456789"));
  file.Write(3, BytesOf("abc"));
  EXPECT_EQ(ReadFrom(file, 2, 5), "2abc6");
  EXPECT_EQ(file.Size(), 10U);
  file.Write(12, BytesOf("x"));
  file.Close();
  EXPECT_FALSE(file.IsOpen());
  EXPECT_EQ(test::ReadBytes(folder / "f"), std::string("012abc6789\0\0x", 13));
}

TEST(PositionedFile, WhatIsWrittenIsThereBeforeItIsClosed) {
  const test::TempFolder folder;
  PositionedFile file(folder / "f", Mode::Create);
  file.Write(0, BytesOf("at once"));
  EXPECT_EQ(test::ReadBytes(folder / "f"), "at once");
}

TEST(PositionedFile, ReadingTellsHowMuchThereWas) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "f", "short");
  const PositionedFile file(folder / "f", Mode::Read);
  EXPECT_EQ(ReadFrom(file, 3, 10), "rt");
  EXPECT_EQ(ReadFrom(file, 5, 10), "");
  EXPECT_EQ(ReadFrom(file, std::uint64_t{1} << 40, 10), "");
}

TEST(PositionedFile, PiecesStandOneBehindTheOther) {
  const test::TempFolder folder;
  std::vector<std::string> texts;
  std::string joined;
  for (int n = 0; n < 3000; ++n) {
    // Empty ones among them.
    texts.push_back(std::string(static_cast<std::size_t>(n % 5), static_cast<char>('a' + n % 26)));
    joined += texts.back();
  }
  std::vector<std::span<const std::byte>> pieces;
  for (const std::string& text : texts) pieces.push_back(BytesOf(text));
  PositionedFile file(folder / "f", Mode::Replace);
  file.Write(2, pieces);
  EXPECT_EQ(test::ReadBytes(folder / "f"), std::string(2, '\0') + joined);
}

TEST(PositionedFile, PositionsBeyond4GigabytesAreKeptApart) {
  const test::TempFolder folder;
  constexpr std::uint64_t far = (std::uint64_t{5} << 30) + 3;
  PositionedFile file(folder / "f", Mode::Replace);
  file.Write(far, BytesOf("far"));
  EXPECT_EQ(file.Size(), far + 3);
  EXPECT_EQ(ReadFrom(file, far, 9), "far");
  EXPECT_EQ(ReadFrom(file, far & 0xFFFFFFFF, 1), std::string(1, '\0'));
  file.CutTo(far + 1);
  EXPECT_EQ(ReadFrom(file, far, 9), "f");
}

TEST(PositionedFile, ReplaceEmptiesAndCreateRefusesWhatIsThere) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "f", "a longer old content");
  EXPECT_THROW(PositionedFile(folder / "f", Mode::Create), RuntimeFailure);
  EXPECT_EQ(test::ReadBytes(folder / "f"), "a longer old content");
  PositionedFile(folder / "f", Mode::Replace).Write(0, BytesOf("new"));
  EXPECT_EQ(test::ReadBytes(folder / "f"), "new");
}

TEST(PositionedFile, FailureNamesTheFileAndTheReason) {
  const test::TempFolder folder;
  try {
    PositionedFile(folder / "missing", Mode::Read);
    FAIL();
  } catch (const RuntimeFailure& failure) {
    EXPECT_STREQ(failure.what(), "missing cannot be read: No such file or directory");
  }
  EXPECT_THROW(PositionedFile(folder.Path(), Mode::Read), RuntimeFailure);
  EXPECT_THROW(PositionedFile(folder.Path(), Mode::Replace), RuntimeFailure);
}

TEST(PositionedFile, MovesWithItsFile) {
  const test::TempFolder folder;
  PositionedFile file(folder / "f", Mode::Replace);
  PositionedFile other = std::move(file);
  EXPECT_FALSE(file.IsOpen());
  other.Write(0, BytesOf("moved"));
  file = std::move(other);
  EXPECT_EQ(ReadFrom(file, 0, 9), "moved");
}

}  // namespace
}  // namespace kestrel::base
