#include "core/zip_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/temp_folder.h"
#include "core/zip_writer.h"
#include "made_zip.h"

namespace kestrel::core {
namespace {

using base::RuntimeFailure;
using test::MadeZip;
using testing::HasSubstr;

constexpr std::size_t ReadLimit = 1 << 20;

class ZipReaders : public testing::Test {
 protected:
  void Put(const std::string& bytes) { test::WriteBytes(path, bytes); }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    const ZipReader zip(path);
    for (const ZipEntry& entry : zip.Entries()) names.push_back(entry.Name);
    return names;
  }
  /// What a zip is refused with; "" when it is read to its end.
  std::string Refusal() const {
    try {
      const ZipReader zip(path);
      for (const ZipEntry& entry : zip.Entries()) zip.Text(entry, ReadLimit);
    } catch (const RuntimeFailure& failure) {
      return failure.what();
    }
    return "";
  }

  const test::TempFolder folder;
  const std::filesystem::path path = folder / "a.zip";
  const std::string text = std::string(200'000, 'a') + "end";
};

TEST_F(ZipReaders, WhatTheStationHasPackedComesBack) {
  std::string bytes;
  ZipWriter writer("one.txt", [&bytes](std::span<const std::byte> piece) {
    bytes.append(reinterpret_cast<const char*>(piece.data()), piece.size());
  });
  writer.Write(text);
  writer.Next("empty.txt");
  writer.Next("Theaters/two.txt");
  writer.Write("second");
  writer.Finish();
  Put(bytes);
  EXPECT_THAT(Names(), testing::ElementsAre("one.txt", "empty.txt", "Theaters/two.txt"));
  const ZipReader zip(path);
  EXPECT_EQ(zip.Text(zip.Entries()[0], ReadLimit), text);
  EXPECT_EQ(zip.Text(zip.Entries()[1], ReadLimit), "");
  EXPECT_EQ(zip.Text(zip.Entries()[2], ReadLimit), "second");
}

TEST_F(ZipReaders, AnotherProgramsZipIsRead) {
  Put(MadeZip({{"Theaters/", "", true}, {"stored", "abc", true}, {"deflated", text}}, "a word about it"));
  EXPECT_THAT(Names(), testing::ElementsAre("stored", "deflated")) << "folders are left out";
  const ZipReader zip(path);
  EXPECT_EQ(zip.Text(zip.Entries()[0], ReadLimit), "abc");
  EXPECT_EQ(zip.Text(zip.Entries()[1], ReadLimit), text);
}

TEST_F(ZipReaders, AnEmptyZipHoldsNothing) {
  Put(MadeZip({}));
  EXPECT_TRUE(ZipReader(path).Entries().empty());
}

TEST_F(ZipReaders, WhatIsNoZipIsRefused) {
  for (const std::string& bytes : {std::string(), std::string("PK"), std::string(21, 'x'), std::string(70'000, 'P')}) {
    Put(bytes);
    EXPECT_THAT(Refusal(), HasSubstr("is no zip")) << bytes.size();
  }
}

TEST_F(ZipReaders, AZipCutAnywhereIsRefused) {
  const std::string whole = MadeZip({{"a", "first"}, {"b", "second", true}});
  for (std::size_t size = 0; size < whole.size(); ++size) {
    Put(whole.substr(0, size));
    EXPECT_NE(Refusal(), "") << size;
  }
}

TEST_F(ZipReaders, ADamagedByteIsSeenOrDoesNotCount) {
  const std::string whole = MadeZip({{"a", "first of them"}, {"b", "second", true}});
  for (std::size_t at = 0; at < whole.size(); ++at) {
    std::string damaged = whole;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x41);
    Put(damaged);
    if (Refusal() == "") {
      const ZipReader zip(path);
      ASSERT_EQ(zip.Entries().size(), 2U) << at;
      EXPECT_EQ(zip.Text(zip.Entries()[0], ReadLimit), "first of them") << at;
      EXPECT_EQ(zip.Text(zip.Entries()[1], ReadLimit), "second") << at;
    }
  }
}

TEST_F(ZipReaders, NamesThatLeaveTheFolderRefuseTheZip) {
  for (const char* name : {"../a", "a/../../b", "a/..", "/etc/passwd", "C:a", "C:/a", "..\\a", "a\\b",
                           "\\\\server\\share\\a", ".", "..", "a//b", "a/./b", ".../a", ".. /a", "a\nb", "a\x7F"}) {
    Put(MadeZip({{"good", "x"}, {name, "x"}}));
    EXPECT_THAT(Refusal(), HasSubstr("would leave its folder")) << name;
  }
  Put(MadeZip({{"good", "x"}, {std::string("a\0b", 3), "x"}}));
  EXPECT_THAT(Refusal(), HasSubstr("would leave its folder"));
  Put(MadeZip({{"..a/b..c/.d", "x"}}));
  EXPECT_EQ(Refusal(), "");
}

TEST_F(ZipReaders, ANameThatStandsTwiceRefusesTheZip) {
  Put(MadeZip({{"KESTREL.ini", "x"}, {"kestrel.INI", "y"}}));
  EXPECT_THAT(Refusal(), HasSubstr("twice"));
}

TEST_F(ZipReaders, AFileThatIsCalledOtherwiseBeforeItsBytesIsDamaged) {
  Put(MadeZip({{"a.txt", "x", true, 0, "b.txt"}}));
  EXPECT_THAT(Refusal(), HasSubstr("a.txt in the zip is damaged"));
}

TEST_F(ZipReaders, AWrongSumIsDamage) {
  Put(MadeZip({{"a", "x", false, 0, "", 0xFFFFFFFE, 1}}));
  EXPECT_THAT(Refusal(), HasSubstr("a in the zip is damaged"));
}

TEST_F(ZipReaders, MoreThanIsDeclaredIsNeverUnpacked) {
  Put(MadeZip({{"a", text, false, 0, "", 100}}));
  const ZipReader zip(path);
  std::size_t told = 0;
  EXPECT_THROW(zip.Unpack(zip.Entries()[0], [&told](std::span<const std::byte> bytes) { told += bytes.size(); }),
               RuntimeFailure);
  EXPECT_LE(told, 100U);
}

TEST_F(ZipReaders, LessThanIsDeclaredIsDamage) {
  Put(MadeZip({{"a", text, false, 0, "", 200'004}}));
  EXPECT_THAT(Refusal(), HasSubstr("a in the zip is damaged"));
}

TEST_F(ZipReaders, ASizeThatItsBytesCannotHoldRefusesTheZip) {
  Put(MadeZip({{"a", "x", false, 0, "", 4'000'000'000U}}));
  EXPECT_THAT(Refusal(), HasSubstr("declares more than it holds"));
  Put(MadeZip({{"a", "x", true, 0, "", 2}}));
  EXPECT_THAT(Refusal(), HasSubstr("declares more than it holds"));
}

TEST_F(ZipReaders, FilesThatLieOverEachOtherRefuseTheZip) {
  // The same bytes told as two files, and one that reaches into the list.
  Put(MadeZip({{"a", text}, {"b", text, false, 0, "", 0xFFFFFFFE, 0, "", 0}}));
  EXPECT_THAT(Refusal(), HasSubstr("lie over each other"));
  Put(MadeZip({{"a", "xyz", true, 0, "", 0xFFFFFFFE, 0, "", 10}}));
  EXPECT_THAT(Refusal(), HasSubstr("lie over each other"));
}

TEST_F(ZipReaders, ALimitHoldsBeforeAnythingIsUnpacked) {
  Put(MadeZip({{"a", text}}));
  const ZipReader zip(path);
  EXPECT_THROW(zip.Text(zip.Entries()[0], text.size() - 1), RuntimeFailure);
  EXPECT_EQ(zip.Text(zip.Entries()[0], text.size()), text);
}

TEST_F(ZipReaders, FormsThatAreNotReadAreToldSo) {
  Put(MadeZip({{"a", "x", true, 1}}));  // encrypted
  EXPECT_THAT(Refusal(), HasSubstr("of a form that is not read"));
  Put(MadeZip({{"a", "x", true, 0, "", 0xFFFFFFFF}}));  // its sizes elsewhere
  EXPECT_THAT(Refusal(), HasSubstr("of a form that is not read"));
}

TEST_F(ZipReaders, BytesBehindTheEndOfWhatIsPackedAreDamage) {
  Put(MadeZip({{"a", "x", false, 0, "", 0xFFFFFFFE, 0, test::Deflated("x") + "more"}}));
  EXPECT_THAT(Refusal(), HasSubstr("a in the zip is damaged"));
}

TEST_F(ZipReaders, TooManyFilesRefuseTheZip) {
  std::vector<test::ZipFile> files;
  for (std::size_t n = 0; n <= ZipReader::MostEntries; ++n) files.push_back({std::to_string(n), "", true});
  Put(MadeZip(files));
  EXPECT_THAT(Refusal(), HasSubstr("holds too many files"));
}

}  // namespace
}  // namespace kestrel::core
