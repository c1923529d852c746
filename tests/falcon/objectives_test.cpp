#include "falcon/objectives.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "base/failure.h"
#include "campaign_writer.h"

namespace kestrel::falcon {
namespace {

using test::ObjectivePlan;
using States = std::vector<FeatureState>;

constexpr CampaignPlace Korea = {1024, 1024, 390, 464};

ObjectiveList ReadBytes(const std::string& bytes, int count, int version, const FeatureCounts& features = {}) {
  return ReadObjectives(test::ObjectivePiece(bytes, count), version, Korea, features);
}

ObjectiveList Read(const std::vector<ObjectivePlan>& plan, int version, const FeatureCounts& features = {}) {
  return ReadBytes(test::ObjectiveListBytes(plan, version), static_cast<int>(plan.size()), version, features);
}

std::string FailureOf(const std::string& bytes, int count, int version) {
  try {
    ReadBytes(bytes, count, version);
  } catch (const base::RuntimeFailure& failure) {
    return failure.what();
  }
  return "";
}

TEST(Objectives, EveryVersionIsRead) {
  for (const int version : test::KnownVersions) {
    SCOPED_TRACE(version);
    const ObjectiveList list = Read(test::SomeObjectives(version), version);
    ASSERT_EQ(list.Objectives.size(), 3U);
    EXPECT_EQ(list.TailBytes, version < 100 ? 0U : version < 108 ? 28U : 108U);
    EXPECT_EQ(list.StrangeOwners, 0U);
    const Objective& base = list.Objectives[0];
    EXPECT_EQ(base.Id, (EntityId{501, 0}));
    EXPECT_EQ(base.ClassIndex, 333) << "the type less 100";
    EXPECT_EQ(base.CellX, 398);
    EXPECT_EQ(base.CellY, 236);
    EXPECT_EQ(base.X(), 398.5);
    EXPECT_EQ(base.Y(), 236.5);
    EXPECT_EQ(base.Owner, 2);
    EXPECT_EQ(base.FirstOwner, 6);
    EXPECT_EQ(base.CampId, 766);
    EXPECT_EQ(base.Flags, 0x20000U);
    EXPECT_EQ(base.Supply, 0x50);
    EXPECT_EQ(base.Fuel, 0x40);
    EXPECT_EQ(base.Losses, 0x30);
    EXPECT_EQ(base.Priority, 20);
    EXPECT_EQ(base.NameId, version >= 108 ? 0 : 3);
    EXPECT_EQ(base.Parent, EntityId{});
    EXPECT_EQ(base.Links, (std::vector<EntityId>{{502, 0}, {503, 0}}));
    EXPECT_TRUE(base.HasRadar);
    EXPECT_EQ(base.States, version >= 100 ? (States{0, 0, 3, 0, 0, 2}) : (States{0, 0, 3, 0, 0, 2, 0, 0}));
    EXPECT_EQ(base.OwnName, version >= 108 ? "Kunsan Airbase" : "");
    EXPECT_EQ(base.Exact.has_value(), version >= 100);
    if (base.Exact) {
      EXPECT_EQ(base.Exact->North, 775715.27);
      EXPECT_EQ(base.Exact->East, 1307072.03);
      EXPECT_EQ(base.Exact->Heading, 41.5F);
      EXPECT_NEAR(MapUnitsOfFeet(base.Exact->North), base.Y(), 1e-9);
    }
    EXPECT_EQ(list.Objectives[1].Parent, (EntityId{501, 0}));
    EXPECT_FALSE(list.Objectives[1].HasRadar);
    EXPECT_EQ(list.Objectives[2].CellX, 1023);
    EXPECT_TRUE(list.Objectives[2].States.empty());
    if (version >= 108) {
      EXPECT_EQ(list.Objectives[1].OwnName, std::string(79, 'n'));
      EXPECT_EQ(list.Objectives[2].OwnName, std::string(80, 'z')) << "without a NUL";
    }
  }
}

TEST(Objectives, LayoutIsFoundWhateverTheVersionSays) {
  // As one version writes it, in a file that says another.
  for (const int written : {63, 73, 103, 108}) {
    for (const int told : {63, 73, 103, 105, 108, 109, 200}) {
      SCOPED_TRACE(std::to_string(written) + " told as " + std::to_string(told));
      const std::string bytes = test::ObjectiveListBytes(test::SomeObjectives(written), written);
      const ObjectiveList list = ReadBytes(bytes, 3, told);
      EXPECT_EQ(list.TailBytes, written < 100 ? 0U : written < 108 ? 28U : 108U);
      EXPECT_EQ(list.Objectives.at(2).CampId, 13);
    }
  }
}

TEST(Objectives, LaterVersionsMayHaveALongerTail) {
  std::string bytes;
  for (const ObjectivePlan& one : test::SomeObjectives(109))
    bytes += test::ObjectiveBytes(one, 109) + std::string(12, 'x');
  const ObjectiveList list = ReadBytes(bytes, 3, 110);
  EXPECT_EQ(list.TailBytes, 120U);
  EXPECT_EQ(list.Objectives.at(0).OwnName, "Kunsan Airbase");
  EXPECT_THROW(ReadBytes(bytes, 3, 108), base::RuntimeFailure) << "a version that is known has none";
}

TEST(Objectives, OtherMarkOfARadarIsTriedWithoutRangesAndWithThem) {
  std::vector<ObjectivePlan> plan = test::SomeObjectives(73);
  plan[1].Radar = 17;
  EXPECT_FALSE(Read(plan, 73).Objectives.at(1).HasRadar);
  const std::string ranges(32, '\x3F');
  std::string bytes = test::ObjectiveBytes(plan[0], 73) + test::ObjectiveBytes(plan[1], 73) + ranges;
  bytes += test::ObjectiveBytes(plan[2], 73);
  EXPECT_TRUE(ReadBytes(bytes, 3, 73).Objectives.at(1).HasRadar);
}

TEST(Objectives, OldestVersionsHaveNeitherRadarNorLongFlags) {
  // type, id, type, x, y, spotted, spotted by, flags, owner, camp id, repair, flags, supplies, no states, priority,
  // name, parent, first owner, no links.
  const std::string bytes = test::Bytes2(150) + test::Bytes8(9) + test::Bytes2(150) + test::Bytes2(5) +
                            test::Bytes2(6) + test::Bytes4(0) + test::Bytes4(0) + test::Bytes1(3) + test::Bytes2(44) +
                            test::Bytes4(0) + test::Bytes2(0x101) + "abc" + test::Bytes1(0) + test::Bytes1(1) +
                            test::Bytes2(2) + test::Bytes8(0) + test::Bytes1(3) + test::Bytes1(0);
  const ObjectiveList list = ReadBytes(bytes, 1, 1);
  EXPECT_EQ(list.Objectives.at(0).Flags, 0x101U);
  EXPECT_EQ(list.Objectives.at(0).CampId, 44);
  EXPECT_EQ(list.Objectives.at(0).NameId, 2);
}

TEST(Objectives, NoneIsAList) { EXPECT_TRUE(ReadBytes("", 0, 103).Objectives.empty()); }

TEST(Objectives, ListCutAnywhereIsRefused) {
  for (const int version : test::KnownVersions) {
    const std::string bytes = test::ObjectiveListBytes(test::SomeObjectives(version), version);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
      ASSERT_THROW(ReadBytes(bytes.substr(0, length), 3, version), base::RuntimeFailure) << version << " " << length;
    }
  }
}

TEST(Objectives, PieceCutAnywhereIsRefused) {
  const std::string piece = test::ObjectivePiece(test::ObjectiveListBytes(test::SomeObjectives(103), 103), 3);
  for (std::size_t length = 0; length < piece.size(); ++length) {
    ASSERT_THROW(ReadObjectives(piece.substr(0, length), 103, Korea), base::RuntimeFailure) << length;
  }
}

TEST(Objectives, CountsThatLieAreRefused) {
  const std::string bytes = test::ObjectiveListBytes(test::SomeObjectives(103), 103);
  for (const int count : {-1, -32768, 0, 2, 4, 32767}) EXPECT_NE(FailureOf(bytes, count, 103), "") << count;
  EXPECT_EQ(FailureOf(bytes, 32767, 103), "it is too small for its objectives") << "before memory is taken";
}

TEST(Objectives, SizesThatLieAreRefused) {
  const std::string good = test::ObjectivePiece(test::ObjectiveListBytes(test::SomeObjectives(103), 103), 3);
  for (const std::int64_t size : {0LL, 1LL, 0x7FFFFFFFLL, 0x80000000LL, 0xFFFFFFFFLL, 0x04000001LL}) {
    std::string bad = good;
    bad.replace(2, 4, test::Bytes4(size));
    EXPECT_THROW(ReadObjectives(bad, 103, Korea), base::RuntimeFailure) << size;
  }
}

TEST(Objectives, FailureNamesTheObjective) {
  std::vector<ObjectivePlan> plan = test::SomeObjectives(103);
  plan[1].X = 1024;
  EXPECT_EQ(FailureOf(test::ObjectiveListBytes(plan, 103), 3, 103), "objective 2 of 3: it lies outside the theater");
  plan = test::SomeObjectives(103);
  plan[2].Type = 99;
  EXPECT_EQ(FailureOf(test::ObjectiveListBytes(plan, 103), 3, 103), "objective 3 of 3: it has no class");
  plan = test::SomeObjectives(103);
  plan[0].Y = -1;
  EXPECT_EQ(FailureOf(test::ObjectiveListBytes(plan, 103), 3, 103), "objective 1 of 3: it lies outside the theater");
}

TEST(Objectives, CountryThatThereIsNotIsNeutral) {
  std::vector<ObjectivePlan> plan = test::SomeObjectives(103);
  plan[0].Owner = 8;
  plan[1].Owner = 255;
  plan[2].FirstOwner = 9;
  const ObjectiveList list = Read(plan, 103);
  EXPECT_EQ(list.StrangeOwners, 2U);
  EXPECT_EQ(list.Objectives[0].Owner, 0);
  EXPECT_EQ(list.Objectives[1].Owner, 0);
  EXPECT_EQ(list.Objectives[2].FirstOwner, 0);
}

TEST(Objectives, PlaceThatIsNoneIsLeftOut) {
  // 1024 * 3279.98 = 3,358,699.52 feet is the far edge.
  for (const double bad : {std::nan(""), 1e300, -1.0, 3358700.0, std::numeric_limits<double>::infinity()}) {
    std::vector<ObjectivePlan> plan = test::SomeObjectives(103);
    plan[0].North = bad;
    plan[1].East = bad;
    const ObjectiveList list = Read(plan, 103);
    EXPECT_FALSE(list.Objectives[0].Exact) << bad;
    EXPECT_FALSE(list.Objectives[1].Exact) << bad;
    EXPECT_TRUE(list.Objectives[2].Exact);
    EXPECT_EQ(list.Objectives[0].X(), 398.5) << "its cell tells it";
  }
}

/// Class 333 has six features, all others one.
std::optional<std::size_t> SixFeatures(std::uint16_t index) { return index == 333 ? 6 : 1; }

TEST(Objectives, ClassesTellTheFormOfTheStates) {
  // Each form in a version that usually has the other.
  const auto withStatus = [](std::string status) {
    std::vector<ObjectivePlan> plan = test::SomeObjectives(103);
    plan[0].Status = std::move(status);
    return plan;
  };
  const ObjectiveList packed = Read(withStatus({"\x30\x08", 2}), 103, SixFeatures);
  EXPECT_EQ(packed.States, StatusForm::Packed);
  EXPECT_EQ(packed.Objectives[0].States, (States{0, 0, 3, 0, 0, 2}));
  const ObjectiveList bytes = Read(withStatus({"\0\0\3\0\0\2", 6}), 63, SixFeatures);
  EXPECT_EQ(bytes.States, StatusForm::Bytes);
  EXPECT_EQ(bytes.Objectives[0].States, (States{0, 0, 3, 0, 0, 2}));
  EXPECT_EQ(bytes.Objectives[2].States, States{0}) << "one feature of which the file tells nothing";
}

TEST(Objectives, ClassThatIsNotKnownLeavesTheForm) {
  const FeatureCounts none = [](std::uint16_t) { return std::optional<std::size_t>(); };
  EXPECT_EQ(Read(test::SomeObjectives(103), 103, none).States, StatusForm::Bytes);
  EXPECT_EQ(Read(test::SomeObjectives(63), 63, none).States, StatusForm::Packed);
}

TEST(Objectives, LeftOversInTheStatesAreNoDamage) {
  std::vector<ObjectivePlan> plan = test::SomeObjectives(108);
  plan[0].Status = std::string("\x55\x55\0\0\0\0", 6);
  EXPECT_EQ(Read(plan, 108).Objectives[0].States, (States{1, 1, 0, 0, 0, 0}));
}

TEST(Objectives, BetweenTheVersionsLongStatesAreBytes) {
  std::vector<ObjectivePlan> plan = test::SomeObjectives(73);
  plan[0].Status = std::string(65, '\1');
  EXPECT_EQ(Read(plan, 90).States, StatusForm::Bytes);
  plan[0].Status = std::string(64, '\1');
  EXPECT_EQ(Read(plan, 90).States, StatusForm::Packed);
  plan[0].Status = std::string(65, '\4');
  EXPECT_EQ(Read(plan, 90).States, StatusForm::Packed);
}

}  // namespace
}  // namespace kestrel::falcon
