#include "falcon/bml_shape.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "bml_writer.h"
#include "failure_text.h"

namespace kestrel::falcon {
namespace {

using test::BmlWriter;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

ModelShape Read(const std::string& bytes, const BmlExpander& expand = {}) {
  return ReadBmlShape({"Model_0.bml", bytes}, expand);
}

/// The corners that edges begin at, in whole feet.
std::vector<std::string> Corners(const ModelShape& shape) {
  const auto part = [](double feet) { return std::to_string(std::lround(feet)); };
  std::vector<std::string> corners;
  for (const ModelEdge& edge : shape.Edges) {
    corners.push_back(part(edge.From.X) + "," + part(edge.From.Y) + "," + part(edge.From.Z));
  }
  return corners;
}

const std::vector<BmlWriter::Place> Triangle = {{1, 2, 3}, {4, 2, 3}, {1, 7, 3}};

TEST(BmlShape, RightUpForwardBecomesForwardRightDown) {
  const ModelShape shape = Read(BmlWriter().Triangles(Triangle).File());
  EXPECT_EQ(shape.Triangles, 1U);
  EXPECT_THAT(Corners(shape), ElementsAre("3,1,-2", "3,4,-2", "3,1,-7"));
}

TEST(BmlShape, EverythingThatIsSeenIsThere) {
  // Of the small one: the first, the one 10 to the right, the one of the branch that is on.
  const ModelShape shape = Read(test::SmallBml().File());
  EXPECT_EQ(shape.Triangles, 3U);
  EXPECT_THAT(Corners(shape),
              ElementsAre("0,0,0", "0,1,0", "2,0,0", "0,10,0", "0,11,0", "2,10,0", "4,4,-4", "4,5,-4", "5,4,-4"));
}

TEST(BmlShape, JointsAreAtRest) {
  // A quarter turn right to up: (x, y, z) to (-y, x, z), then 10 to the right.
  const std::array<float, 9> quarter = {0, -1, 0, 1, 0, 0, 0, 0, 1};
  const auto corners = [&](unsigned kind) {
    return Corners(Read(BmlWriter().Joint(kind, {10, 0, 0}, quarter).Triangles(Triangle).EndJoint().File()));
  };
  EXPECT_THAT(corners(0), ElementsAre("3,8,-1", "3,8,-4", "3,3,-1")) << "turned and shifted";
  EXPECT_THAT(corners(1), ElementsAre("3,1,-2", "3,4,-2", "3,1,-7")) << "stays";
  EXPECT_THAT(corners(2), ElementsAre("3,11,-2", "3,14,-2", "3,11,-7")) << "shifted";
}

TEST(BmlShape, JointsAndSwitchesLieWithinEachOther) {
  BmlWriter bml;
  bml.Joint(0, {10, 0, 0}).Joint(0, {0, 5, 0}).Triangles(Triangle).EndJoint();
  bml.Switch(0, false).Switch(0, true).Triangles(Triangle).EndSwitch().EndSwitch().EndJoint();
  bml.Slot().Triangles({{9, 9, 9}, {8, 8, 8}, {7, 8, 9}}).EndSlot().RenderControl();
  EXPECT_THAT(Corners(Read(bml.File())), ElementsAre("3,11,-7", "3,14,-7", "3,11,-12"));
}

TEST(BmlShape, OtherThanTrianglesIsNotDrawn) {
  BmlWriter bml;
  bml.Triangles(Triangle, {.Topology = 2}).Triangles(Triangle, {.Stride = 44}).Triangles({});
  EXPECT_THAT(Read(bml.File()).Edges, IsEmpty());
  // Two corners more than a triangle has.
  bml.Triangles({{1, 2, 3}, {4, 2, 3}, {1, 7, 3}, {0, 0, 0}, {0, 0, 9}});
  EXPECT_EQ(Read(bml.File()).Triangles, 1U);
}

TEST(BmlShape, FirstVersionHasNumbersForMaterialsAndLargerPrimitives) {
  const ModelShape shape = Read(test::SmallBml(1).File());
  EXPECT_EQ(shape.Triangles, 3U);
  EXPECT_EQ(Corners(shape)[3], "0,10,0");
  BmlWriter indexed(1);
  indexed.Triangles(Triangle, {.Stride = 32})
      .Triangles({{0, 0, 0}, {0, 0, 1}, {0, 0, 2}, {5, 0, 0}}, {.Stride = 40, .Indices = {3, 1, 0, 0, 2, 3}});
  EXPECT_EQ(Read(indexed.File()).Triangles, 3U);
  EXPECT_EQ(Corners(Read(indexed.File()))[3], "0,5,0");
  EXPECT_EQ(Corners(Read(indexed.File()))[4], "1,0,0");
}

TEST(BmlShape, IndicesThatLieAreRefused) {
  BmlWriter bml(1);
  bml.Triangles(Triangle, {.Indices = {0, 1, 3}});
  EXPECT_THAT(test::FailureOf([&] { Read(bml.File()); }), HasSubstr("node 0 has an index that is none"));
  BmlWriter cut(1);
  cut.Triangles(Triangle, {.Indices = {0, 1, 2}});
  cut.Indices.resize(4);
  EXPECT_THAT(test::FailureOf([&] { Read(cut.File()); }), HasSubstr("node 0 has indices outside of the file"));
}

TEST(BmlShape, PackedContentIsExpanded) {
  const BmlWriter bml = test::SmallBml();
  for (const unsigned packing : {1U, 2U}) {
    const std::string file = bml.Packed(packing, "packed", bml.Content().size());
    const BmlExpander expand = [&](BmlPacking how, std::string_view packed, std::size_t size) {
      EXPECT_EQ(static_cast<unsigned>(how), packing);
      EXPECT_EQ(packed, "packed");
      EXPECT_EQ(size, bml.Content().size());
      return bml.Content();
    };
    EXPECT_EQ(Read(file, expand).Triangles, 3U);
    EXPECT_EQ(test::FailureOf([&] { Read(file); }),
              "Model_0.bml: its packing, " + std::to_string(packing) + ", is not known");
    EXPECT_THAT(test::FailureOf([&] { Read(file, [](auto...) { return std::string("short"); }); }),
                HasSubstr("its content has 5 bytes"));
  }
  EXPECT_THAT(test::FailureOf([&] { Read(bml.Packed(3, "packed", 6), [](auto...) { return std::string(); }); }),
              HasSubstr("its packing, 3"));
}

TEST(BmlShape, SizesOfTheHeadThatLieAreRefused) {
  const std::string whole = test::SmallBml().File();
  const auto with = [&](std::size_t at, const std::string& bytes) {
    std::string bad = whole;
    return test::FailureOf([&] { Read(bad.replace(at, bytes.size(), bytes)); });
  };
  EXPECT_EQ(with(0, "BMLX"), "Model_0.bml: it is no shape");
  EXPECT_EQ(with(4, test::Bytes4(3)), "Model_0.bml: its version is 3");
  EXPECT_NE(with(4, test::Bytes4(1)), "");
  EXPECT_THAT(with(12, test::Bytes8(std::uint64_t{1} << 40)), HasSubstr("would have 1099511627776 bytes"));
  EXPECT_THAT(with(12, test::Bytes8(5)), HasSubstr("bytes and not 5"));
  EXPECT_THAT(with(20, test::Bytes8(0xFFFFFFFFFFFFFFFF)), HasSubstr("tells of 18446744073709551615"));
}

TEST(BmlShape, FileAndContentCutAnywhereAreRefused) {
  const BmlWriter bml = test::SmallBml();
  const std::string whole = bml.File(), content = bml.Content();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THAT(test::FailureOf([&] { Read(whole.substr(0, length)); }), HasSubstr("Model_0.bml: ")) << length;
  }
  for (std::size_t length = 0; length < content.size(); ++length) {
    EXPECT_THAT(test::FailureOf([&] { Read(bml.Packed(0, content.substr(0, length), length)); }),
                HasSubstr("Model_0.bml: "))
        << length;
  }
  EXPECT_THAT(test::FailureOf([&] { Read(bml.Packed(0, content + "x", content.size() + 1)); }),
              HasSubstr("goes on behind its vertices"));
}

TEST(BmlShape, CountsThatLieAreRefused) {
  const BmlWriter bml = test::SmallBml();
  const std::string content = bml.Content();
  // Materials, length of the first one's name, nodes, and of the first node: kind, offset and number of vertices, size.
  for (const std::size_t at : {4U, 8U, 36U, 40U, 72U, 76U}) {
    for (const std::uint32_t count : {0x7000U, 0x10000000U, 0xFFFFFFFFU}) {
      std::string bad = content;
      bad.replace(at, 4, test::Bytes4(count));
      EXPECT_THAT(test::FailureOf([&] { Read(bml.Packed(0, bad, bad.size())); }), HasSubstr("Model_0.bml: "))
          << at << ' ' << count;
    }
  }
}

TEST(BmlShape, NodesThatDoNotFitIntoEachOtherAreRefused) {
  EXPECT_EQ(test::FailureOf([&] { Read(BmlWriter().EndJoint().File()); }),
            "Model_0.bml: node 0 ends what has not begun");
  EXPECT_NE(test::FailureOf([&] { Read(BmlWriter().Switch(0, true).EndJoint().File()); }), "");
  EXPECT_NE(test::FailureOf([&] { Read(BmlWriter().Slot().File()); }), "");
}

TEST(BmlShape, ImpossiblePlacesAreLeftOut) {
  const float noNumber = std::numeric_limits<float>::quiet_NaN();
  const ModelShape shape = Read(BmlWriter().Triangles({{noNumber, 0, 0}, {1, 0, 0}, {0, 0, 3e38F}}).File());
  EXPECT_THAT(shape.Edges, IsEmpty());
}

TEST(BmlShape, TrianglesToldOverAndOverAreRefused) {
  // 1000 primitives that all name the same 300 vertices.
  BmlWriter bml;
  std::vector<BmlWriter::Place> many;
  for (int n = 0; n < 300; ++n) many.push_back({static_cast<float>(n), static_cast<float>(n % 7), 0});
  bml.Triangles(many);
  const std::string node = bml.Nodes;
  EXPECT_EQ(Read(bml.File()).Triangles, 100U);
  for (int n = 1; n < 1000; ++n) bml.Triangles({});
  const std::size_t size = node.size();
  for (std::size_t n = 1; n < 1000; ++n) bml.Nodes.replace(n * size, size, node);
  EXPECT_THAT(test::FailureOf([&] { Read(bml.File()); }), HasSubstr("triangles that have been told often"));
}

}  // namespace
}  // namespace kestrel::falcon
