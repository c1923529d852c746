#include "falcon/campaign_file.h"

#include <gtest/gtest.h>

#include <string>

#include "base/failure.h"
#include "campaign_bytes.h"

namespace kestrel::falcon {
namespace {

using namespace std::string_literals;

TEST(CampaignFile, PiecesAreFoundByExtensionWhateverTheCase) {
  const CampaignFile file(test::Container({{"SAVE0.OBJ", "objectives"}, {"old name.ver", "73"}, {"x.y.Cmp", ""}}));
  EXPECT_EQ(file.Piece("obj"), "objectives");
  EXPECT_EQ(file.Piece("VER"), "73");
  EXPECT_EQ(file.Piece("cmp"), "");
  EXPECT_EQ(file.Piece("y"), std::nullopt);
  EXPECT_EQ(file.Piece("obd"), std::nullopt);
}

TEST(CampaignFile, NameWithoutAPointHasNoExtension) {
  EXPECT_EQ(CampaignFile(test::Container({{"obj", "x"}})).Piece("obj"), std::nullopt);
}

TEST(CampaignFile, BytesMayFollowTheDirectory) {
  EXPECT_EQ(CampaignFile(test::Container({{"a.ver", "63"}}, "rest of a longer file")).DataVersion(), 63);
}

TEST(CampaignFile, GoldenBytesAreRead) {
  // Directory at 6: one entry of five letters, two bytes long at position 4.
  const CampaignFile file(
      "\x06\0\0\0"
      "63"
      "\x01\0\0\0"
      "\x05"
      "a.ver"
      "\x04\0\0\0"
      "\x02\0\0\0"s);
  EXPECT_EQ(file.DataVersion(), 63);
}

TEST(CampaignFile, VersionIsTrimmed) {
  EXPECT_EQ(CampaignFile(test::Container({{"a.ver", " 109 "}})).DataVersion(), 109);
}

TEST(CampaignFile, VersionMayBeMissing) { EXPECT_EQ(CampaignFile(test::Container({})).DataVersion(), std::nullopt); }

TEST(CampaignFile, VersionThatIsNoneIsRefused) {
  for (const char* text : {"", "x", "0", "-1", "1000", "99999", "6 3"}) {
    const CampaignFile file(test::Container({{"a.ver", text}}));
    EXPECT_THROW(file.DataVersion(), base::RuntimeFailure) << text;
  }
}

TEST(CampaignFile, FileCutAnywhereIsRefused) {
  const std::string whole = test::Container({{"a.ver", "63"}, {"b.cmp", "content"}});
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THROW(CampaignFile(whole.substr(0, length)), base::RuntimeFailure) << length;
  }
}

TEST(CampaignFile, DirectoryThatLiesIsRefused) {
  const std::string good = test::Container({{"a.ver", "63"}});
  const auto with = [&good](std::size_t at, std::string_view bytes) {
    std::string bad = good;
    return bad.replace(at, bytes.size(), bytes);
  };
  ASSERT_EQ(CampaignFile(good).DataVersion(), 63);
  EXPECT_THROW(CampaignFile(with(0, test::Bytes4(0))), base::RuntimeFailure) << "directory within its own position";
  EXPECT_THROW(CampaignFile(with(0, test::Bytes4(0xFFFFFFFF))), base::RuntimeFailure) << "directory outside";
  EXPECT_THROW(CampaignFile(with(6, test::Bytes4(0xFFFFFFFF))), base::RuntimeFailure) << "too many entries";
  EXPECT_THROW(CampaignFile(with(16, test::Bytes4(1000))), base::RuntimeFailure) << "piece behind the end";
  EXPECT_THROW(CampaignFile(with(20, test::Bytes4(0xFFFFFFFE))), base::RuntimeFailure) << "piece longer than the file";
}

TEST(CampaignFile, EntriesAreToldAsTheyStand) {
  const CampaignFile file(test::Container({{"a.ver", "63"}, {"b.cmp", "content"}}));
  ASSERT_EQ(file.Entries().size(), 2U);
  EXPECT_EQ(file.Entries()[1].Name, "b.cmp");
  EXPECT_EQ(file.Entries()[1].Position, 6U);
  EXPECT_EQ(file.Entries()[1].Size, 7U);
}

TEST(CampaignFile, PiecesMayShareBytes) {
  // An entry each: the directory itself, the whole file, and two with the same bytes.
  const std::string first = test::Container({{"a.dir", "63"}, {"b.all", "63"}, {"c.ver", "63"}, {"d.obj", "63"}});
  std::string bytes = first;
  const std::size_t directory = 4 + 4 * 2;
  const auto place = [&](std::size_t entry, std::size_t position, std::size_t size) {
    const std::size_t at = directory + 4 + entry * 14 + 6;
    bytes.replace(at, 8,
                  test::Bytes4(static_cast<std::int64_t>(position)) + test::Bytes4(static_cast<std::int64_t>(size)));
  };
  place(0, directory, bytes.size() - directory);
  place(1, 0, bytes.size());
  place(3, 4 + 2 * 2, 2);  // as the third
  const CampaignFile file(bytes);
  EXPECT_EQ(file.Piece("dir"), bytes.substr(directory));
  EXPECT_EQ(file.Piece("all"), bytes);
  EXPECT_EQ(file.Piece("obj"), "63");
  EXPECT_EQ(file.DataVersion(), 63);
}

TEST(CampaignFile, FirstOfTwoWithOneExtensionCounts) {
  EXPECT_EQ(CampaignFile(test::Container({{"a.ver", "63"}, {"b.ver", "73"}})).DataVersion(), 63);
}

TEST(CampaignFile, MorePiecesThanAnyoneWritesAreRefused) {
  EXPECT_EQ(CampaignFile(test::Container(test::Pieces(1000, {"a", ""}))).Entries().size(), 1000U);
  EXPECT_THROW(CampaignFile(test::Container(test::Pieces(1001, {"a", ""}))), base::RuntimeFailure);
}

}  // namespace
}  // namespace kestrel::falcon
