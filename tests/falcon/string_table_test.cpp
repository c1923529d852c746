#include "falcon/string_table.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"
#include "base/files.h"
#include "base/little_endian.h"
#include "base/temp_folder.h"

namespace kestrel::falcon {
namespace {

using test::Bytes2;

/// An index that tells of `told` offsets and holds `offsets`.
std::string Index(int told, const std::vector<int>& offsets) {
  std::string bytes = Bytes2(told);
  for (const int offset : offsets) bytes += Bytes2(offset);
  return bytes;
}

TEST(StringTable, TextsStandBetweenTheirOffsets) {
  const StringTable table = ReadStringTable(Index(4, {0, 7, 7, 13}), "NowhereK\xF6ln X");
  EXPECT_EQ(table.Count(), 3U);
  EXPECT_EQ(table[0], "Nowhere");
  EXPECT_EQ(table[1], "");
  EXPECT_EQ(table[2], "K\xF6ln X");
  EXPECT_EQ(table[3], "");
  EXPECT_EQ(table[65535], "");
  EXPECT_EQ(table.Damaged(), 0U);
}

TEST(StringTable, ThereMayBeMoreOffsetsThanAreTold) {
  const StringTable table = ReadStringTable(Index(3, {0, 1, 3, 6}), "abbccc");
  EXPECT_EQ(table.Count(), 2U);
  EXPECT_EQ(table[1], "bb");
}

TEST(StringTable, LastTextWithoutAnEndGoesOnToThatOfTheFile) {
  const StringTable table = ReadStringTable(Index(3, {0, 1}), "abbccc");
  EXPECT_EQ(table.Count(), 2U);
  EXPECT_EQ(table[1], "bbccc");
}

TEST(StringTable, OffsetsHaveNoSign) {
  const StringTable table = ReadStringTable(Index(3, {0, 40000, 40002}), std::string(40000, 'a') + "zz");
  EXPECT_EQ(table[0].size(), 40000U);
  EXPECT_EQ(table[1], "zz");
}

TEST(StringTable, WrongOffsetsGiveAnEmptyText) {
  // 0 to 4 is good, 4 to 2 decreases, 2 to 3 is good, 3 to 9 lies outside.
  const StringTable table = ReadStringTable(Index(5, {0, 4, 2, 3, 9}), "abcd");
  EXPECT_EQ(table[0], "abcd");
  EXPECT_EQ(table[1], "");
  EXPECT_EQ(table[2], "c");
  EXPECT_EQ(table[3], "");
  EXPECT_EQ(table.Damaged(), 2U);
}

TEST(StringTable, EmptyTablesAreTables) {
  EXPECT_EQ(ReadStringTable(Index(0, {}), "").Count(), 0U);
  EXPECT_EQ(ReadStringTable(Index(1, {0}), "").Count(), 0U);
  EXPECT_EQ(StringTable()[0], "");
}

TEST(StringTable, CutIndexIsRefused) {
  const std::string whole = Index(4, {0, 7, 7, 13});
  for (std::size_t length = 0; length < whole.size(); ++length) {
    if (length == 8) continue;  // three offsets are as many as three texts need
    EXPECT_THROW(ReadStringTable(whole.substr(0, length), std::string(13, 'x')), base::RuntimeFailure) << length;
  }
}

TEST(StringTable, CutTextsAreTold) {
  const std::string texts = "Nowhereabcdef";
  for (std::size_t length = 0; length < texts.size(); ++length) {
    EXPECT_GT(ReadStringTable(Index(4, {0, 7, 7, 13}), texts.substr(0, length)).Damaged(), 0U) << length;
  }
}

TEST(StringTable, LinesHaveATabOrABlankBehindTheirNumber) {
  const StringTable table = ReadStringLines("0\tNowhere\r\n2\t miss\n\n3 RELOCATE\n4\n5\tsurvivor\xE2\x80\x99s");
  EXPECT_EQ(table[0], "Nowhere");
  EXPECT_EQ(table[1], "");
  EXPECT_EQ(table[2], " miss") << "the blank belongs to the text";
  EXPECT_EQ(table[3], "RELOCATE");
  EXPECT_EQ(table[4], "");
  EXPECT_EQ(table[5], "survivor\x92s");
  EXPECT_EQ(table.Count(), 6U);
  EXPECT_EQ(table.Damaged(), 0U);
}

TEST(StringTable, LinesWithoutANumberAreTold) {
  const StringTable table = ReadStringLines("x\ty\n-1\ta\n65536\tb\n7a\tc\n65535\td\n99999999999999999999\te");
  EXPECT_EQ(table.Damaged(), 5U);
  EXPECT_EQ(table[65535], "d");
  EXPECT_EQ(table[7], "");
}

class StringFiles : public testing::Test {
 protected:
  void Write(const std::string& name, const std::string& bytes) { test::WriteBytes(folder.Path() / name, bytes); }
  test::TempFolder folder;
};

TEST_F(StringFiles, NamesAreFoundWhateverTheCase) {
  Write("KOREA.IDX", Index(2, {0, 5}));
  Write("korea.WCH", "Seoul");
  const auto names = LoadTheaterNames(folder.Path(), "Korea");
  ASSERT_TRUE(names);
  EXPECT_EQ((*names)[0], "Seoul");
}

TEST_F(StringFiles, DefaultStandsIn) {
  EXPECT_FALSE(LoadTheaterNames(folder.Path(), "Korea"));
  Write("DEFAULT.idx", Index(2, {0, 5}));
  Write("DEFAULT.wch", "Seoul");
  EXPECT_TRUE(LoadTheaterNames(folder.Path(), "Korea"));
  EXPECT_TRUE(LoadTheaterNames(folder.Path(), "")) << "a campaign without a theater";
}

TEST_F(StringFiles, NameThatLeadsElsewhereIsNoFile) {
  Write("secret.idx", Index(2, {0, 5}));
  Write("secret.wch", "Seoul");
  base::MakeFolder(folder.Path() / "in");
  for (const char* const name : {"../secret", "..\\secret", "/secret", "c:secret", "a\nb"}) {
    EXPECT_FALSE(LoadTheaterNames(folder.Path() / "in", name)) << name;
  }
}

TEST_F(StringFiles, DamagedIndexIsNamed) {
  Write("korea.idx", "\x05");
  Write("korea.wch", "");
  try {
    LoadTheaterNames(folder.Path(), "korea");
    FAIL();
  } catch (const base::RuntimeFailure& failure) {
    EXPECT_STREQ(failure.what(), "korea.idx: the file ends too early");
  }
}

TEST_F(StringFiles, GeneralStringsStandInEitherForm) {
  EXPECT_FALSE(LoadGeneralStrings(folder.Path()));
  Write("strings.txt", "40\tXX\n501\tAirbase\n");
  auto strings = LoadGeneralStrings(folder.Path());
  ASSERT_TRUE(strings);
  EXPECT_EQ((*strings)[FirstCountryString], "XX");
  EXPECT_EQ((*strings)[FirstObjectiveTypeString + 1], "Airbase");
  Write("Strings.idx", Index(2, {0, 5}));
  Write("Strings.wch", "Seoul");
  strings = LoadGeneralStrings(folder.Path());
  ASSERT_TRUE(strings);
  EXPECT_EQ((*strings)[0], "Seoul");
}

}  // namespace
}  // namespace kestrel::falcon
