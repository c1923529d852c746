#include "falcon/class_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"
#include "failure_text.h"
#include "falcon/class_table_layout.h"
#include "table_writer.h"

namespace kestrel::falcon {
namespace {

using test::ClassPlan;
using testing::ElementsAre;
using testing::HasSubstr;

std::vector<EntityClass> Read(const std::string& bytes) { return ReadClassTable({"Falcon4.ct", bytes}); }

std::string Usual(const std::vector<ClassPlan>& plans, test::Count where = test::Count::Before) {
  return test::TableOf(plans, test::ClassRecord, where);
}

/// Every field of one record, and that the others stand where they should.
void ExpectMany(const std::vector<EntityClass>& classes, std::size_t pairs) {
  ASSERT_EQ(classes.size(), 2 * pairs + 1);
  EXPECT_EQ(classes[0].Class, 0);
  EXPECT_EQ(classes[0].Data, DataKind::None);
  // Pair 5: an objective at record 9, a feature at record 10.
  EXPECT_EQ(classes[9].Domain, 3);
  EXPECT_EQ(classes[9].Class, ObjectiveClassCode);
  EXPECT_EQ(classes[9].Type, 6);
  EXPECT_EQ(classes[9].SubType, 2);
  EXPECT_EQ(classes[9].Specific, 9);
  EXPECT_EQ(classes[9].Data, DataKind::Objective);
  EXPECT_EQ(classes[9].DataIndex, 5);
  EXPECT_THAT(classes[9].Models, ElementsAre(505, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(classes[10].Class, FeatureClassCode);
  EXPECT_EQ(classes[10].Data, DataKind::Feature);
  EXPECT_EQ(classes[10].DataIndex, static_cast<std::int32_t>(pairs) - 4);
  EXPECT_THAT(classes[10].Models, ElementsAre(1005, 0, 0, 7, 0, 0, 0));
}

TEST(ClassTable, RecordHas81BytesOnDisks) {
  ASSERT_EQ(test::ClassRecord({}).size(), 81U);
  ExpectMany(Read(Usual(test::ManyClasses(20))), 20);
}

TEST(ClassTable, EveryFieldStandsWhereItShould) {
  std::string record(81, '\x5A');
  record.replace(8, 6, "\x02\x07\x03\x04\x05\x06");
  for (int n = 0; n < 7; ++n) record.replace(60 + 2 * n, 2, test::Bytes2(n == 6 ? -1 : 300 + n));
  record.replace(76, 5, "\x05" + test::Bytes4(7000));
  const std::vector<EntityClass> classes = Read(test::Bytes2(1) + record);
  ASSERT_EQ(classes.size(), 1U);
  EXPECT_EQ(classes[0].Domain, 2);
  EXPECT_EQ(classes[0].Class, 7);
  EXPECT_EQ(classes[0].Type, 3);
  EXPECT_EQ(classes[0].SubType, 4);
  EXPECT_EQ(classes[0].Specific, 5);
  EXPECT_EQ(classes[0].Owner, 6);
  EXPECT_THAT(classes[0].Models, ElementsAre(300, 301, 302, 303, 304, 305, -1));
  EXPECT_EQ(classes[0].Data, DataKind::Vehicle);
  EXPECT_EQ(classes[0].DataIndex, 7000);
}

TEST(ClassTable, CountMayStandBehindTheRecords) {
  ExpectMany(Read(Usual(test::ManyClasses(20), test::Count::Behind)), 20);
}

TEST(ClassTable, CountMayHave32Bits) {
  const std::string usual = Usual(test::ManyClasses(20));
  ExpectMany(Read(test::Bytes4(41) + usual.substr(2)), 20);
}

TEST(ClassTable, RecordsOfAnotherSizeAreFoundByWhatTheyHold) {
  const std::vector<ClassPlan> plans = test::ManyClasses(150);
  for (const std::size_t stride : {std::size_t{84}, std::size_t{88}}) {
    SCOPED_TRACE(stride);
    const auto aligned = [stride](const ClassPlan& plan) { return test::AlignedClassRecord(plan, stride); };
    ASSERT_EQ(aligned(plans[0]).size(), stride);
    ExpectMany(Read(test::TableOf(plans, aligned)), 150);
  }
}

TEST(ClassTable, RecordsOf88BytesAsDescribedAreFoundByWhatTheyHold) {
  ASSERT_EQ(test::DescribedClassRecord({}).size(), 88U);
  ASSERT_EQ(test::DescribedClassRecord({.Type = 77})[13], 77);
  ASSERT_EQ(test::DescribedClassRecord({.Index = 77})[84], 77);
  ExpectMany(Read(test::TableOf(test::ManyClasses(150), test::DescribedClassRecord)), 150);
}

TEST(ClassTable, OtherNumbersInARowAreNotTakenForIndices) {
  std::vector<ClassPlan> plans = test::ManyClasses(150);
  for (std::size_t n = 1; n < plans.size(); n += 2) plans[n].Models[2] = plans[n].Index;
  const auto aligned = [](const ClassPlan& plan) { return test::AlignedClassRecord(plan, 84); };
  const std::vector<EntityClass> classes = Read(test::TableOf(plans, aligned));
  EXPECT_EQ(classes[9].DataIndex, 5);
  EXPECT_EQ(classes[10].DataIndex, 146);
}

TEST(ClassTable, KindOfDataIsTheNearestByteBeforeTheIndexThatTellsAllClasses) {
  const std::vector<ClassPlan> plans = test::ManyClasses(150);
  // Before the index stand a byte that is that of objectives everywhere and one that is that of features; far before it
  // is one that is right as well.
  const auto aligned = [](const ClassPlan& plan) {
    std::string record = test::AlignedClassRecord(plan, 84);
    record.replace(77, 3, "\x03\x01\x03");
    record[40] = static_cast<char>(plan.Data);
    return record;
  };
  ExpectMany(Read(test::TableOf(plans, aligned)), 150);
}

TEST(ClassTable, FewObjectivesTellNothingOfAnotherSize) {
  const auto aligned = [](const ClassPlan& plan) { return test::AlignedClassRecord(plan, 84); };
  EXPECT_THAT(test::FailureOf([&] { Read(test::TableOf(test::ManyClasses(99), aligned)); }),
              HasSubstr("Falcon4.ct: nothing in its records of 84 bytes"));
  EXPECT_EQ(Read(test::TableOf(test::ManyClasses(100), aligned)).size(), 201U);
}

TEST(ClassTable, IndicesMayHaveAFewGapsAndNoMore) {
  const auto aligned = [](const ClassPlan& plan) { return test::AlignedClassRecord(plan, 84); };
  std::vector<ClassPlan> plans = test::ManyClasses(200);
  // The last objective goes from 200 to 203: three gaps.
  plans[399].Index = 203;
  EXPECT_EQ(Read(test::TableOf(plans, aligned)).size(), 401U);
  // Three of 200 beyond what a few gaps can be: more than 1 %.
  for (const std::size_t n : {395U, 397U, 399U}) plans[n].Index = static_cast<int>(n) - 185;
  EXPECT_THROW(Read(test::TableOf(plans, aligned)), base::RuntimeFailure);
  // Every second one: 2, 4, 6 ... 400.
  for (std::size_t n = 1; n < plans.size(); n += 2) plans[n].Index = static_cast<int>(n) + 1;
  EXPECT_THROW(Read(test::TableOf(plans, aligned)), base::RuntimeFailure);
}

TEST(ClassTable, RecordsOfNoSenseAreRefused) {
  for (const std::size_t stride :
       {std::size_t{59}, std::size_t{60}, std::size_t{88}, std::size_t{256}, std::size_t{257}}) {
    std::string bytes = test::Bytes2(300);
    for (std::size_t n = 0; n < 300 * stride; ++n) bytes += static_cast<char>(n * n % 251);
    EXPECT_THAT(test::FailureOf([&] { Read(bytes); }), HasSubstr("records of " + std::to_string(stride))) << stride;
  }
}

TEST(ClassTable, LayoutIsSoughtWithinTheRecord) {
  // All bytes alike: each is a class of objectives, none a row of indices.
  EXPECT_EQ(FindClassTableLayout(std::string(60 * 200, '\x04'), 60), std::nullopt);
  EXPECT_EQ(FindClassTableLayout("", 60), std::nullopt);
}

TEST(ClassTable, TableCutAnywhereIsRefused) {
  const std::string whole = Usual(test::ManyClasses(3));
  ASSERT_EQ(Read(whole).size(), 7U);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THAT(test::FailureOf([&] { Read(whole.substr(0, length)); }), HasSubstr("Falcon4.ct: ")) << length;
  }
  EXPECT_THAT(test::FailureOf([&] { Read(whole.substr(0, 2 + 81 * 4 + 80)); }), HasSubstr("record 4 of 7 is cut"));
}

TEST(ClassTable, CountThatLiesIsRefused) {
  std::string bytes = Usual(test::ManyClasses(3));
  for (const int count : {0, 6, 8, 32767, -1, -7}) {
    EXPECT_THROW(Read(bytes.replace(0, 2, test::Bytes2(count))), base::RuntimeFailure) << count;
  }
  EXPECT_THROW(Read(bytes.replace(0, 4, test::Bytes4(0x7FFFFFFF))), base::RuntimeFailure);
  EXPECT_THROW(Read(Usual(test::ManyClasses(3)) + "x"), base::RuntimeFailure);
}

}  // namespace
}  // namespace kestrel::falcon
