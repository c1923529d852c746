#include "falcon/objective_deltas.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"
#include "campaign_writer.h"

namespace kestrel::falcon {
namespace {

using test::DeltaPlan;
using States = std::vector<FeatureState>;

std::vector<ObjectiveDelta> Read(const std::string& bytes, int count, int version) {
  return ReadObjectiveDeltas(test::DeltaPiece(bytes, count), version);
}

std::vector<ObjectiveDelta> Read(const std::vector<DeltaPlan>& plan, int version) {
  return Read(test::DeltaBytes(plan, version), static_cast<int>(plan.size()), version);
}

std::vector<DeltaPlan> SomeDeltas() {
  return {{.Id = 501, .Owner = 6, .Supply = 90, .Fuel = 80, .Losses = 7, .Status = std::string("\x0C\x01", 2)},
          {.Id = 999, .Owner = 1, .Status = "\x01"},
          {.Id = 502, .Owner = 3}};
}

/// An airbase with six features, the third destroyed, and a bridge with one.
std::vector<Objective> SomeObjectives() {
  std::vector<Objective> objectives(2);
  objectives[0].Id = {501, 0};
  objectives[0].Owner = 2;
  objectives[0].States = {0, 0, 3, 0, 0, 0};
  objectives[1].Id = {502, 0};
  objectives[1].States = {0};
  return objectives;
}

TEST(ObjectiveDeltas, EveryVersionIsRead) {
  for (const int version : test::KnownVersions) {
    SCOPED_TRACE(version);
    const std::vector<ObjectiveDelta> deltas = Read(SomeDeltas(), version);
    ASSERT_EQ(deltas.size(), 3U);
    EXPECT_EQ(deltas[0].Id, (EntityId{501, 0}));
    EXPECT_EQ(deltas[0].Owner, 6);
    EXPECT_EQ(deltas[0].Supply, 90);
    EXPECT_EQ(deltas[0].Fuel, 80);
    EXPECT_EQ(deltas[0].Losses, 7);
    EXPECT_EQ(deltas[0].StatusBytes, 2);
    EXPECT_EQ(deltas[0].Status.size(), version < 64 ? 1U : 2U) << "one byte is stored before version 64";
    EXPECT_EQ(deltas[2].Id, (EntityId{502, 0}));
  }
}

TEST(ObjectiveDeltas, OtherStorageOfStatesIsTried) {
  std::vector<DeltaPlan> two = SomeDeltas();
  two.resize(2);
  EXPECT_EQ(Read(test::DeltaBytes(two, 103), 2, 63).at(0).Status.size(), 2U);
  EXPECT_EQ(Read(test::DeltaBytes(two, 63), 2, 103).at(0).Status.size(), 1U);
}

TEST(ObjectiveDeltas, NoneIsAList) {
  // Ten bytes: that is what a file without changes holds.
  EXPECT_TRUE(ReadObjectiveDeltas(test::Bytes4(6) + test::Bytes2(0) + test::Bytes4(0), 103).empty());
}

TEST(ObjectiveDeltas, AppliedTheyReplaceWhatTheyTell) {
  std::vector<Objective> objectives = SomeObjectives();
  const DeltaTally tally = ApplyDeltas(Read(SomeDeltas(), 103), objectives);
  EXPECT_EQ(tally.Applied, 2U);
  EXPECT_EQ(tally.Unknown, 1U);
  EXPECT_EQ(tally.Misfit, 1U) << "the bridge has one feature and no state is told";
  EXPECT_EQ(objectives[0].Owner, 6);
  EXPECT_EQ(objectives[0].Supply, 90);
  EXPECT_EQ(objectives[0].Fuel, 80);
  EXPECT_EQ(objectives[0].Losses, 7);
  // 0x0C: the second is 3; 0x01: the fifth is 1. The third is whole again.
  EXPECT_EQ(objectives[0].States, (States{0, 3, 0, 0, 1, 0}));
  EXPECT_EQ(objectives[1].Owner, 3);
  EXPECT_EQ(objectives[1].States, States{0});
}

TEST(ObjectiveDeltas, LengthDecidesTheFormForEach) {
  const auto statesAfter = [](const std::string& status, const FeatureCounts& features) {
    std::vector<Objective> objectives = SomeObjectives();
    ApplyDeltas(Read({{.Id = 501, .Status = status}}, 103), objectives, features);
    return objectives[0].States;
  };
  EXPECT_EQ(statesAfter(std::string("\x02\0", 2), {}), (States{2, 0, 0, 0, 0, 0}));
  EXPECT_EQ(statesAfter(std::string("\2\0\0\0\0\1", 6), {}), (States{2, 0, 0, 0, 0, 1}));
  EXPECT_EQ(statesAfter("\2\2\2", {}), (States{0, 0, 3, 0, 0, 0})) << "neither";
  const FeatureCounts nine = [](std::uint16_t) { return std::optional<std::size_t>(9); };
  EXPECT_EQ(statesAfter("\2\2\2", nine), (States{2, 0, 0, 0, 2, 0, 0, 0, 2})) << "the class knows better";
}

TEST(ObjectiveDeltas, FirstByteAloneChangesTheFirstFour) {
  std::vector<Objective> objectives = SomeObjectives();
  objectives[0].States = {0, 0, 0, 0, 3, 3};
  ApplyDeltas(Read({{.Id = 501, .Status = "\x01\xFF"}}, 63), objectives);
  EXPECT_EQ(objectives[0].States, (States{1, 0, 0, 0, 3, 3}));
}

TEST(ObjectiveDeltas, BothNumbersOfAnIdCount) {
  std::vector<Objective> objectives = SomeObjectives();
  objectives[0].Id.Creator = 1;
  EXPECT_EQ(ApplyDeltas(Read({{.Id = 501}}, 103), objectives).Unknown, 1U);
}

TEST(ObjectiveDeltas, OfTwoWithOneIdTheFirstChanges) {
  std::vector<Objective> objectives = SomeObjectives();
  objectives[1].Id = objectives[0].Id;
  ApplyDeltas(Read({{.Id = 501, .Owner = 7}}, 103), objectives);
  EXPECT_EQ(objectives[0].Owner, 7);
  EXPECT_EQ(objectives[1].Owner, 0);
}

TEST(ObjectiveDeltas, CountryThatThereIsNotIsNeutral) {
  std::vector<Objective> objectives = SomeObjectives();
  EXPECT_EQ(ApplyDeltas(Read({{.Id = 501, .Owner = 8}}, 103), objectives).StrangeOwners, 1U);
  EXPECT_EQ(objectives[0].Owner, 0);
}

TEST(ObjectiveDeltas, ListCutAnywhereIsRefused) {
  const std::string bytes = test::DeltaBytes(SomeDeltas(), 103);
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_THROW(Read(bytes.substr(0, length), 3, 103), base::RuntimeFailure) << length;
  }
  const std::string piece = test::DeltaPiece(bytes, 3);
  for (std::size_t length = 0; length < piece.size(); ++length) {
    EXPECT_THROW(ReadObjectiveDeltas(piece.substr(0, length), 103), base::RuntimeFailure) << length;
  }
}

TEST(ObjectiveDeltas, NumbersThatLieAreRefused) {
  const std::string bytes = test::DeltaBytes(SomeDeltas(), 103);
  for (const int count : {-1, 2, 4, 32767}) EXPECT_THROW(Read(bytes, count, 103), base::RuntimeFailure) << count;
  for (const std::int64_t size : {0LL, 5LL, 0x7FFFFFFFLL, 0xFFFFFFFFLL}) {
    std::string piece = test::DeltaPiece(bytes, 3);
    piece.replace(6, 4, test::Bytes4(size));
    EXPECT_THROW(ReadObjectiveDeltas(piece, 103), base::RuntimeFailure) << size;
  }
  try {
    Read(bytes, 4, 103);
    FAIL();
  } catch (const base::RuntimeFailure& failure) {
    EXPECT_STREQ(failure.what(), "change 4 of 4: the file ends too early");
  }
}

}  // namespace
}  // namespace kestrel::falcon
