#include "falcon/model_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "failure_text.h"
#include "model_writer.h"

namespace kestrel::falcon {
namespace {

using test::DirectoryPlan;
using testing::HasSubstr;

ModelDirectory Read(const std::string& bytes) { return ReadModelDirectory({"KoreaObj.HDR", bytes}); }

void ExpectTwoModels(const ModelDirectory& directory) {
  ASSERT_EQ(directory.Places.size(), 2U);
  EXPECT_EQ(directory.Places[1].Offset, 100U);
  EXPECT_EQ(directory.Places[1].Size, 50U);
  ASSERT_EQ(directory.Models.size(), 2U);
  EXPECT_TRUE(directory.Models[0].Details.empty());
  const DirectoryModel& model = directory.Models[1];
  EXPECT_EQ(model.Radius, 47.5);
  ASSERT_TRUE(model.Box);
  EXPECT_EQ(model.Box->Least.X, -27.75);
  EXPECT_EQ(model.Box->Most.X, 36);
  EXPECT_EQ(model.Box->Least.Y, -21.5);
  EXPECT_EQ(model.Box->Most.Y, 21.5);
  EXPECT_EQ(model.Box->Least.Z, -8.25);
  EXPECT_EQ(model.Box->Most.Z, 0);
  ASSERT_EQ(model.Dynamic.size(), 2U);
  EXPECT_EQ(model.Dynamic[1].X, 4);
  EXPECT_EQ(model.Dynamic[1].Z, 6);
  ASSERT_EQ(model.Details.size(), 2U);
  EXPECT_EQ(model.Details[0].Number, 1U);
  EXPECT_EQ(model.Details[0].Range, 500);
  EXPECT_EQ(model.Details[1].Number, 0U);
}

TEST(ModelDirectory, ClassicOneIsReadWhole) {
  const ModelDirectory directory = Read(test::DirectoryBytes(test::TwoModels()));
  EXPECT_EQ(directory.Version, 0x03087000U);
  EXPECT_EQ(directory.ColourCount, 3U);
  EXPECT_EQ(directory.PaletteCount, 1U);
  EXPECT_EQ(directory.TextureCount, 2U);
  ExpectTwoModels(directory);
}

TEST(ModelDirectory, NewerOneHasLargerRecords) {
  DirectoryPlan plan = test::TwoModels();
  plan.Version = 0x03087001;
  plan.TextureBytes = 48;
  plan.PlaceBytes = 28;
  ExpectTwoModels(Read(test::DirectoryBytes(plan)));
  plan.Places[1] = {std::uint64_t{5} << 32 | 7, std::uint64_t{1} << 33};
  EXPECT_EQ(Read(test::DirectoryBytes(plan)).Places[1].Offset, 0x500000007U);
  EXPECT_EQ(Read(test::DirectoryBytes(plan)).Places[1].Size, 0x200000000U);
}

TEST(ModelDirectory, SizesGoByTheFilesEndWhereTheVersionIsWrong) {
  DirectoryPlan plan = test::TwoModels();
  plan.Version = 0x03087001;
  ExpectTwoModels(Read(test::DirectoryBytes(plan)));
  plan.Version = 77;
  plan.TextureBytes = 48;
  plan.PlaceBytes = 28;
  ExpectTwoModels(Read(test::DirectoryBytes(plan)));
}

TEST(ModelDirectory, NamesMayStandBeforeTheShapes) {
  DirectoryPlan plan = test::TwoModels();
  plan.NameBytes = 32;
  ExpectTwoModels(Read(test::DirectoryBytes(plan)));
}

TEST(ModelDirectory, WithoutTexturesTheirLargestSizeIsMissing) {
  DirectoryPlan plan = test::TwoModels();
  plan.Textures = 0;
  ExpectTwoModels(Read(test::DirectoryBytes(plan)));
}

TEST(ModelDirectory, ShapeWithoutAPlaceIsLeftOut) {
  DirectoryPlan plan = test::TwoModels();
  plan.Models[1].Details[0].Number = 2;
  const ModelDirectory directory = Read(test::DirectoryBytes(plan));
  ASSERT_EQ(directory.Models[1].Details.size(), 1U);
  EXPECT_EQ(directory.Models[1].Details[0].Range, 20000);
}

TEST(ModelDirectory, ImpossibleBoxIsNone) {
  const float noNumber = std::numeric_limits<float>::quiet_NaN();
  const std::array<float, 6> boxes[] = {{noNumber, 1, 0, 1, 0, 1},
                                        {0, 1, 0, 1, 0, 3e38F},
                                        {0, 0, 0, 0, 0, 0},
                                        {2, 1, 0, 1, 0, 1},
                                        {0, 1, 0, 1, 0, noNumber}};
  for (const std::array<float, 6>& box : boxes) {
    DirectoryPlan plan = test::TwoModels();
    plan.Models[1].Box = box;
    EXPECT_FALSE(Read(test::DirectoryBytes(plan)).Models[1].Box) << box[0] << ' ' << box[5];
  }
}

TEST(ModelDirectory, FlatBoxIsOne) {
  DirectoryPlan plan = test::TwoModels();
  plan.Models[1].Box = {-5, 5, -5, 5, 0, 0};
  EXPECT_TRUE(Read(test::DirectoryBytes(plan)).Models[1].Box);
}

TEST(ModelDirectory, FileCutAnywhereIsRefused) {
  for (const std::size_t name : {0U, 32U}) {
    DirectoryPlan plan = test::TwoModels();
    plan.NameBytes = name;
    const std::string whole = test::DirectoryBytes(plan);
    for (std::size_t length = 0; length < whole.size(); ++length) {
      EXPECT_THAT(test::FailureOf([&] { Read(whole.substr(0, length)); }), HasSubstr("KoreaObj.HDR: ")) << length;
    }
    EXPECT_NE(test::FailureOf([&] { Read(whole + '\0'); }), "");
  }
}

TEST(ModelDirectory, CountsThatLieAreRefused) {
  const DirectoryPlan plan = test::TwoModels();
  const std::string whole = test::DirectoryBytes(plan);
  const std::size_t palettes = 12 + 3 * 16, textures = palettes + 4 + 1032, places = textures + 8 + 2 * 40 + 4,
                    models = places + 4 + 2 * 20, dynamic = models + 4 + 48 + 38;
  ASSERT_EQ(whole.substr(places, 4), test::Bytes4(2));
  ASSERT_EQ(whole.substr(models, 4), test::Bytes4(2));
  ASSERT_EQ(whole.substr(dynamic, 2), test::Bytes2(2));
  for (const std::size_t at : {std::size_t{4}, palettes, textures, places, models}) {
    for (const std::uint32_t count : {4U, 0x10000000U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
      std::string bad = whole;
      bad.replace(at, 4, test::Bytes4(count));
      EXPECT_NE(test::FailureOf([&] { Read(bad); }), "") << at << ' ' << count;
    }
  }
  std::string bad = whole;
  EXPECT_EQ(test::FailureOf([&] { Read(bad.replace(dynamic, 2, test::Bytes2(-2))); }),
            "KoreaObj.HDR: model 1 has fewer than no points");
}

}  // namespace
}  // namespace kestrel::falcon
