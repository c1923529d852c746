#include "falcon/campaign_bullseye.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "base/failure.h"
#include "campaign_bytes.h"

namespace kestrel::falcon {
namespace {

using test::CampaignPlan;

CampaignBullseye Read(const CampaignPlan& plan) {
  return ReadCampaignBullseye(CampaignFile(test::CampaignBytes(plan)));
}

TEST(CampaignBullseye, EveryVersionHasItsPlace) {
  for (const int version : {1, 18, 19, 47, 48, 49, 50, 51, 52, 63, 73, 103, 109}) {
    const CampaignBullseye place = Read({.Version = version, .X = 585, .Y = 821});
    EXPECT_EQ(place.X, 585) << version;
    EXPECT_EQ(place.Y, 821) << version;
  }
}

TEST(CampaignBullseye, StandsAtByte1946OfTheUsualDescription) {
  EXPECT_EQ(test::CampaignBlock({}).size(), 1950U);
  std::string block(1950, '\0');
  block.replace(1934, 4, test::Bytes2(1024) + test::Bytes2(512));
  block.replace(1946, 4, test::Bytes2(597) + test::Bytes2(20));
  const CampaignFile file(test::Container({{"a.ver", "103"}, {"a.cmp", test::CampaignPiece(block)}}));
  EXPECT_EQ(ReadCampaignBullseye(file).X, 597);
  EXPECT_EQ(ReadCampaignBullseye(file).Y, 20);
}

TEST(CampaignBullseye, PackedSizeOfTheHeadIsNotTrusted) {
  for (const std::uint32_t size : {0U, 4U, 0xFFFFFFFFU}) {
    const CampaignFile file(
        test::Container({{"a.ver", "63"}, {"a.cmp", test::CampaignPiece(test::CampaignBlock({}), size)}}));
    EXPECT_EQ(ReadCampaignBullseye(file).X, 390) << size;
  }
}

TEST(CampaignBullseye, FileWithoutAVersionIsReadAsUsual) {
  const CampaignFile file(test::Container({{"a.cmp", test::CampaignPiece(test::CampaignBlock({}))}}));
  EXPECT_EQ(ReadCampaignBullseye(file).Y, 464);
}

TEST(CampaignBullseye, EdgesOfTheTheaterAreWithin) {
  EXPECT_EQ(Read({.Width = 64, .Height = 8192, .X = 0, .Y = 8191}).Y, 8191);
  EXPECT_EQ(Read({.Width = 64, .Height = 64, .X = 63, .Y = 0}).X, 63);
}

TEST(CampaignBullseye, NumbersThatAreNoTheaterAreRefused) {
  const CampaignPlan bad[] = {
      {.Width = 63}, {.Height = 63}, {.Width = 8193}, {.Height = -1},         {.X = -1},
      {.Y = -1},     {.X = 1024},    {.Y = 1024},     {.Width = 64, .X = 64}, {.Width = 0},
  };
  for (const CampaignPlan& plan : bad) {
    EXPECT_THROW(Read(plan), base::RuntimeFailure)
        << plan.Width << " by " << plan.Height << ", " << plan.X << " " << plan.Y;
  }
}

TEST(CampaignBullseye, FileWithoutADescriptionIsRefused) {
  EXPECT_THROW(ReadCampaignBullseye(CampaignFile(test::Container({{"a.ver", "63"}}))), base::RuntimeFailure);
}

TEST(CampaignBullseye, DescriptionCutAnywhereIsRefused) {
  const std::string piece = test::CampaignPiece(test::CampaignBlock({}));
  for (std::size_t length = 0; length < piece.size(); length += length < 32 ? 1 : 61) {
    const CampaignFile file(test::Container({{"a.ver", "63"}, {"a.cmp", piece.substr(0, length)}}));
    EXPECT_THROW(ReadCampaignBullseye(file), base::RuntimeFailure) << length;
  }
}

TEST(CampaignBullseye, DescriptionTooShortForABullseyeIsRefused) {
  for (const std::size_t length : {0U, 4U, 1934U, 1949U}) {
    const std::string piece = test::CampaignPiece(test::CampaignBlock({}).substr(0, length));
    const CampaignFile file(test::Container({{"a.ver", "63"}, {"a.cmp", piece}}));
    EXPECT_THROW(ReadCampaignBullseye(file), base::RuntimeFailure) << length;
  }
}

TEST(CampaignBullseye, ImpossibleUnpackedSizeIsRefused) {
  for (const std::uint32_t size : {0x80000000U, 0xFFFFFFFFU, 0x7FFFFFFFU, 0x00100001U}) {
    std::string piece = test::CampaignPiece(test::CampaignBlock({}));
    piece.replace(4, 4, test::Bytes4(size));
    const CampaignFile file(test::Container({{"a.ver", "63"}, {"a.cmp", piece}}));
    EXPECT_THROW(ReadCampaignBullseye(file), base::RuntimeFailure) << size;
  }
}

TEST(CampaignBullseye, DamagedFilesAreReadOrRefused) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  const std::string good = test::CampaignBytes({});
  int refused = 0;
  for (int round = 0; round < 2000; ++round) {
    std::string bad = good;
    for (int change = 0; change < 4; ++change) bad[random() % bad.size()] = static_cast<char>(random());
    try {
      const CampaignBullseye place = ReadCampaignBullseye(CampaignFile(bad));
      ASSERT_GE(place.X, 0);
      ASSERT_LT(place.Y, 8192);
    } catch (const base::RuntimeFailure&) {
      ++refused;
    }
  }
  EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace kestrel::falcon
