#include "falcon/parent_file.h"

#include <gtest/gtest.h>

#include <string>

#include "failure_text.h"

namespace kestrel::falcon {
namespace {

ParentFile Read(const std::string& text) { return ReadParentFile({"Parent.dat", text}); }

TEST(ParentFile, TellsBoxAndShapes) {
  const ParentFile parent = Read(
      "// AddLOD = none.bml 1\r\nDimensions       = 47.5 -27.75 36 -21.5 21.5 -8.25 0\r\nTextureSets = 6\r\n"
      "Switches = -1\r\nAddSlot = 1.5 -10 -0.5\r\nAddLOD           = Model_0.bml 75\r\nAddLOD\t=\tsecond "
      "one.bml\t1500.5\r\n");
  EXPECT_EQ(parent.Radius, 47.5);
  ASSERT_TRUE(parent.Box);
  EXPECT_EQ(parent.Box->Least.X, -27.75);
  EXPECT_EQ(parent.Box->Most.X, 36);
  EXPECT_EQ(parent.Box->Least.Y, -21.5);
  EXPECT_EQ(parent.Box->Most.Y, 21.5);
  EXPECT_EQ(parent.Box->Least.Z, -8.25);
  EXPECT_EQ(parent.Box->Most.Z, 0);
  ASSERT_EQ(parent.Details.size(), 2U);
  EXPECT_EQ(parent.Details[0].File, "Model_0.bml");
  EXPECT_EQ(parent.Details[0].Range, 75);
  EXPECT_EQ(parent.Details[1].File, "second one.bml");
  EXPECT_EQ(parent.Details[1].Range, 1500.5);
}

TEST(ParentFile, BoxOfZerosIsNone) {
  const ParentFile parent = Read("Dimensions = 0.294511 0.0 0.0 0.0 0.0 0.0 0.0\nAddLOD = a.bml 600000");
  EXPECT_EQ(parent.Radius, 0.294511);
  EXPECT_FALSE(parent.Box);
}

TEST(ParentFile, DimensionsThatAreCutOrImpossibleAreNoBox) {
  for (const char* numbers :
       {"1", "1 -1 1 -1 1 -1", "1 -1 1 -1 1 -1 1e300", "1 -1 1 -1 1 1 -1", "nan nan nan nan nan nan nan"}) {
    const ParentFile parent = Read(std::string("Dimensions = ") + numbers);
    EXPECT_FALSE(parent.Box) << numbers;
  }
  EXPECT_EQ(Read("Dimensions = 1e999 -1 1 -1 1 -1 1").Radius, 0);
}

TEST(ParentFile, ShapeMayHaveNoRange) {
  const ParentFile parent = Read("AddLOD = a.bml\nAddLOD = b.bml far");
  ASSERT_EQ(parent.Details.size(), 2U);
  EXPECT_EQ(parent.Details[0].File, "a.bml");
  EXPECT_EQ(parent.Details[1].File, "b.bml");
  EXPECT_EQ(parent.Details[1].Range, 0);
}

TEST(ParentFile, FileThatTellsNothingIsRefused) {
  for (const char* text : {"", "TextureSets = 1", "// Dimensions = 1 2 3 4 5 6 7", "Dimensions\nAddLOD"}) {
    EXPECT_EQ(test::FailureOf([&] { Read(text); }), "Parent.dat: it tells neither dimensions nor a shape") << text;
  }
}

TEST(ParentFile, FileCutAnywhereIsReadOrRefused) {
  const std::string whole = "Dimensions = 47.5 -27.75 36 -21.5 21.5 -8.25 0\nAddLOD = Model_0.bml 75";
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const std::string complaint = test::FailureOf([&] {
      const ParentFile parent = Read(whole.substr(0, length));
      EXPECT_EQ(parent.Box.has_value(), length >= whole.find(" 0\n") + 2) << length;
    });
    EXPECT_EQ(complaint.empty(), length >= 14) << length << complaint;
  }
}

}  // namespace
}  // namespace kestrel::falcon
