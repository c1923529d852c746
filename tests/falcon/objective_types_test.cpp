#include "falcon/objective_types.h"

#include <gtest/gtest.h>

namespace kestrel::falcon {
namespace {

TEST(ObjectiveTypes, HaveTheirNames) {
  EXPECT_EQ(ObjectiveTypeName(AirbaseType), "Airbase");
  EXPECT_EQ(ObjectiveTypeName(AirstripType), "Airstrip");
  EXPECT_EQ(ObjectiveTypeName(9), "Headquarters");
  EXPECT_EQ(ObjectiveTypeName(16), "Nav Beacon");
  EXPECT_EQ(ObjectiveTypeName(18), "TYPE_PASS");
  EXPECT_EQ(ObjectiveTypeName(24), "Railroad");
  EXPECT_EQ(ObjectiveTypeName(30), "HART Site");
  EXPECT_EQ(ObjectiveTypeName(31), "SAM Site");
}

TEST(ObjectiveTypes, BeyondTheKnownOnesAreTheirNumber) {
  EXPECT_EQ(ObjectiveTypeName(0), "Unknown 0");
  EXPECT_EQ(ObjectiveTypeName(32), "Unknown 32");
  EXPECT_EQ(ObjectiveTypeName(255), "Unknown 255");
}

}  // namespace
}  // namespace kestrel::falcon
