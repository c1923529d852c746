#include "falcon/classic_shape.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "failure_text.h"
#include "shape_writer.h"

namespace kestrel::falcon {
namespace {

using test::NodePlan;
using test::Polygon;
using test::Root;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

ModelShape ReadBytes(const std::string& bytes, const std::vector<ModelPoint>& dynamic = {}) {
  return ReadClassicShape({"KoreaObj.LOD", bytes}, dynamic);
}
ModelShape Read(const NodePlan& root, const std::vector<ModelPoint>& dynamic = {}) {
  return ReadBytes(test::ShapeBytes(root), dynamic);
}

/// The edges as text, in whole feet: "0,0,0-10,0,0".
std::vector<std::string> Edges(const ModelShape& shape) {
  const auto text = [](const ModelPoint& p) {
    const auto part = [](double feet) { return std::to_string(std::lround(feet)); };
    return part(p.X) + "," + part(p.Y) + "," + part(p.Z);
  };
  std::vector<std::string> edges;
  for (const ModelEdge& edge : shape.Edges) edges.push_back(text(edge.From) + "-" + text(edge.To));
  return edges;
}

const std::vector<test::Point> Triangle = {{0, 0, 0}, {5, 0, 0}, {0, 5, 0}};

TEST(ClassicShape, TagsAreReadSiblingFirst) {
  // Root, square, its sibling the joint, the joint's sibling the switch, then below the switch, then below the joint.
  EXPECT_THAT(test::ShapeWriter(test::SmallShape()).Tags, ElementsAre(2, 7, 4, 5, 1, 7, 0, 7));
  const ModelShape shape = Read(test::SmallShape());
  EXPECT_THAT(Edges(shape), ElementsAre("0,0,0-10,0,0", "10,0,0-10,10,0", "10,10,0-0,10,0", "0,10,0-0,0,0",
                                        "20,0,0-25,0,0", "25,0,0-20,5,0", "20,5,0-20,0,0", "0,0,-3-0,0,-9"));
  EXPECT_EQ(shape.Triangles, 3U) << "the square counts as two";
}

TEST(ClassicShape, JointTurnsAndShiftsWhatIsBelowIt) {
  // A quarter turn: x' = -y, y' = x; the inner joint lies 10 forward in the turned frame, which is 10 to the right.
  const std::array<float, 9> quarter = {0, -1, 0, 1, 0, 0, 0, 0, 1};
  for (const unsigned tag : {4U, 14U}) {
    const NodePlan inner{.Tag = tag, .Points = Triangle, .Shift = {10, 0, 0}, .Children = {{Polygon({0, 1, 2})}}};
    const NodePlan outer{.Tag = tag, .Turn = quarter, .Shift = {0, 0, -2}, .Children = {{inner}}};
    EXPECT_THAT(Edges(Read(Root({}, {outer}))), ElementsAre("0,10,-2-0,15,-2", "0,15,-2--5,10,-2", "-5,10,-2-0,10,-2"));
  }
}

TEST(ClassicShape, TranslatorAndScalerAreAtRest) {
  for (const unsigned tag : {12U, 13U}) {
    const NodePlan part{.Tag = tag, .Points = Triangle, .Shift = {99, 99, 99}, .Children = {{Polygon({0, 1}, 1)}}};
    EXPECT_THAT(Edges(Read(Root({}, {part}))), ElementsAre("0,0,0-5,0,0")) << tag;
  }
}

TEST(ClassicShape, NumbersOfPointsBeginAnewBelowAPartAndGoOnInASubtree) {
  // The subtree's points are 3 and 4 of the root's list; behind the joint the root's own count again.
  const NodePlan subtree{.Tag = 1, .Points = {{7, 7, 7}, {8, 8, 8}}, .Children = {{Polygon({0, 3}, 1)}}};
  const NodePlan joint{.Tag = 4, .Points = {{1, 1, 1}, {2, 2, 2}}, .Children = {{Polygon({0, 1}, 1)}}};
  const NodePlan special{.Tag = 10, .Points = {{3, 3, 3}, {4, 4, 4}}, .Children = {{Polygon({0, 1}, 1)}}};
  // Point 5 is that of a subtree behind them all.
  const NodePlan last{.Tag = 1, .Points = {{9, 9, 9}}, .Children = {{Polygon({4, 5}, 1)}}};
  EXPECT_THAT(Edges(Read(Root(Triangle, {subtree, joint, special, Polygon({4, 1}, 1), last}))),
              ElementsAre("0,0,0-7,7,7", "1,1,1-2,2,2", "3,3,3-4,4,4", "8,8,8-5,0,0", "8,8,8-9,9,9"));
}

TEST(ClassicShape, OfASwitchTheFirstChoiceIsShown) {
  for (const unsigned tag : {5U, 15U}) {
    const NodePlan first{.Tag = 1, .Points = {{1, 0, 0}, {2, 0, 0}}, .Children = {{Polygon({0, 1}, 1)}}};
    const NodePlan second{.Tag = 1, .Points = {{3, 0, 0}, {4, 0, 0}}, .Children = {{Polygon({0, 1}, 1)}}};
    const NodePlan choice{.Tag = tag, .Children = {{first}, {second}}};
    EXPECT_THAT(Edges(Read(Root({}, {choice}))), ElementsAre("1,0,0-2,0,0")) << tag;
    EXPECT_THAT(Edges(Read(Root(Triangle, {{.Tag = tag}, Polygon({0, 1}, 1)}))), ElementsAre("0,0,0-5,0,0")) << tag;
  }
}

TEST(ClassicShape, BothSidesOfASplitterAreShown) {
  const NodePlan splitter{.Tag = 6, .Children = {{Polygon({0, 1}, 1)}, {Polygon({1, 2}, 1), Polygon({2, 0}, 1)}}};
  EXPECT_THAT(Edges(Read(Root(Triangle, {splitter}))), ElementsAre("0,0,0-5,0,0", "5,0,0-0,5,0", "0,5,0-0,0,0"));
}

TEST(ClassicShape, PolygonsOfAllKindsOfNodesAreShownAndTheRestIsNot) {
  const NodePlan lit{.Tag = 8, .Corners = {0, 1, 2}}, culled{.Tag = 9, .Corners = {2, 3, 0}};
  const std::vector<test::Point> points = {{0, 0, 0}, {5, 0, 0}, {0, 5, 0}, {0, 9, 0}};
  const ModelShape shape = Read(Root(points, {lit, {.Tag = 3}, {.Tag = 11}, {.Tag = 16}, {.Tag = 0}, culled}));
  EXPECT_EQ(shape.Triangles, 2U);
  EXPECT_THAT(Edges(shape), ElementsAre("0,0,0-5,0,0", "5,0,0-0,5,0", "0,5,0-0,0,0", "0,5,0-0,9,0", "0,9,0-0,0,0"))
      << "the side of both is there once";
}

TEST(ClassicShape, PointsAndWhatHasNoLengthDrawNothing) {
  const ModelShape shape = Read(Root({{1, 1, 1}, {1, 1, 1.001F}, {4, 4, 4}},
                                     {Polygon({0, 2}, 0), Polygon({0, 1}, 1), Polygon({2}, 1), Polygon({}, 2)}));
  EXPECT_THAT(shape.Edges, IsEmpty());
  EXPECT_EQ(shape.Triangles, 0U);
}

TEST(ClassicShape, LastPointsMayBeThoseOfTheModel) {
  NodePlan root = Root({{1, 0, 0}}, {Polygon({0, 1, 2})});
  root.Dynamic = 2;
  root.FirstDynamic = 1;
  const std::vector<ModelPoint> dynamic = {{9, 9, 9}, {2, 0, 0}, {3, 3, 0}};
  EXPECT_THAT(Edges(Read(root, dynamic)), ElementsAre("1,0,0-2,0,0", "2,0,0-3,3,0", "3,3,0-1,0,0"));
  for (const int first : {2, 3, -1, 0x7FFFFFFF}) {
    root.FirstDynamic = first;
    EXPECT_THAT(test::FailureOf([&] { Read(root, dynamic); }), HasSubstr("node 0 has points that its model lacks"));
  }
}

TEST(ClassicShape, ImpossiblePlacesAreLeftOut) {
  const float noNumber = std::numeric_limits<float>::quiet_NaN();
  const std::vector<test::Point> points = {{0, 0, 0}, {noNumber, 0, 0}, {0, 3e38F, 0}, {0, 5, 0}};
  EXPECT_THAT(Edges(Read(Root(points, {Polygon({0, 1, 2, 3})}))), ElementsAre("0,5,0-0,0,0"));
}

TEST(ClassicShape, FileCutAnywhereIsRefused) {
  const std::string whole = test::ShapeBytes(test::SmallShape());
  ASSERT_EQ(ReadBytes(whole).Edges.size(), 8U);
  // The root's points stand last.
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THAT(test::FailureOf([&] { ReadBytes(whole.substr(0, length)); }), HasSubstr("KoreaObj.LOD: ")) << length;
  }
}

TEST(ClassicShape, TagsThatLieAreRefused) {
  const std::string whole = test::ShapeBytes(test::SmallShape());
  const auto with = [&](std::size_t at, std::int64_t number) {
    std::string bad = whole;
    return test::FailureOf([&] { ReadBytes(bad.replace(at, 4, test::Bytes4(number))); });
  };
  for (const std::int64_t count : {std::int64_t{0}, std::int64_t{200001}, std::int64_t{0xFFFFFFFF}}) {
    EXPECT_THAT(with(0, count), HasSubstr("no room for")) << count;
  }
  EXPECT_NE(with(0, 7), "");
  EXPECT_EQ(with(4, 1), "KoreaObj.LOD: its first node is no root");
  EXPECT_EQ(with(8, 17), "KoreaObj.LOD: node 1 has the tag 17");
  test::ShapeWriter writer(test::SmallShape());
  writer.Tags.push_back(0);
  EXPECT_EQ(test::FailureOf([&] { ReadBytes(writer.Bytes()); }), "KoreaObj.LOD: its nodes leave tags over");
}

TEST(ClassicShape, OffsetsThatLeadOutsideAreRefused) {
  const test::ShapeWriter good(test::SmallShape());
  // Of the root at 0: sibling, points, how many, how many of the model, children.
  for (const std::size_t at : {4U, 8U, 12U, 16U, 32U}) {
    for (const std::int64_t number : {std::int64_t{1} << 20, std::int64_t{0x7FFFFFFF}}) {
      test::ShapeWriter bad = good;
      bad.Area.replace(at, 4, test::Bytes4(number));
      EXPECT_THAT(test::FailureOf([&] { ReadBytes(bad.Bytes()); }), HasSubstr("KoreaObj.LOD: ")) << at;
    }
  }
  test::ShapeWriter bad = good;
  bad.Area.replace(12, 4, test::Bytes4(-1));
  EXPECT_THAT(test::FailureOf([&] { ReadBytes(bad.Bytes()); }), HasSubstr("impossible number of points"));
}

TEST(ClassicShape, CornersThatAreNoPointsAreRefused) {
  for (const int corner : {3, -1, 0x7FFFFFFF}) {
    EXPECT_EQ(test::FailureOf([&] {
                Read(Root(Triangle, {Polygon({0, 1, corner})}));
              }),
              "KoreaObj.LOD: node 1 has a corner that is none of its points");
  }
  EXPECT_THAT(test::FailureOf([&] { Read(Root(Triangle, {Polygon(std::vector<int>(1025, 0))})); }),
              HasSubstr("impossible number of corners"));
}

TEST(ClassicShape, TreeThatRunsInACircleEndsWithItsTags) {
  // The root is its own child, again and again.
  test::ShapeWriter writer(Root({}, {}));
  writer.Area.replace(32, 4, test::Bytes4(0));
  EXPECT_THAT(test::FailureOf([&] { ReadBytes(writer.Bytes()); }), HasSubstr("too many children"));
  writer.Tags.assign(1000, 2);
  EXPECT_THAT(test::FailureOf([&] { ReadBytes(writer.Bytes()); }), HasSubstr("KoreaObj.LOD: "));
}

TEST(ClassicShape, TreeOf256NodesDepthIsReadAndNoDeeper) {
  const auto nested = [](int depth) {
    NodePlan node = Polygon({0, 1}, 1);
    for (int n = 1; n < depth; ++n) node = NodePlan{.Tag = 1, .Children = {{node}}};
    return Root(Triangle, {node});
  };
  EXPECT_THAT(Edges(Read(nested(256))), ElementsAre("0,0,0-5,0,0"));
  EXPECT_THAT(test::FailureOf([&] { Read(nested(257)); }), HasSubstr("lies too deep"));
}

TEST(ClassicShape, PointsToldOverAndOverAreRefused) {
  // 200 parts that all name the root's 100 points, whose bytes are there once. The parts stand behind the root.
  test::ShapeWriter shared(Root(std::vector<test::Point>(100, {1, 2, 3}),
                                std::vector<NodePlan>(200, {.Tag = 4, .Children = {{{.Tag = 0}}}})));
  const std::string place = shared.Area.substr(8, 8);
  for (std::size_t n = 0; n < 200; ++n) shared.Area.replace(48 + 88 * n + 8, 8, place);
  EXPECT_THAT(test::FailureOf([&] { ReadBytes(shared.Bytes()); }), HasSubstr("points that have been told often"));
}

TEST(ClassicShape, ChildrenToldOverAndOverAreRefused) {
  // 300 switches that all name one list of 300 children, none of which is there.
  test::ShapeWriter shared(Root(Triangle, std::vector<NodePlan>(300, {.Tag = 5})));
  const auto list = static_cast<std::int64_t>(shared.Area.size());
  for (int n = 0; n < 300; ++n) shared.Area += test::Bytes4(-1);
  for (std::size_t n = 0; n < 300; ++n) {
    shared.Area.replace(48 + 20 * n + 12, 8, test::Bytes4(n < 5 ? 300 : 0) + test::Bytes4(list));
  }
  EXPECT_THAT(ReadBytes(shared.Bytes()).Edges, IsEmpty()) << "five of them are fewer than the file has room for";
  for (std::size_t n = 0; n < 300; ++n) shared.Area.replace(48 + 20 * n + 12, 4, test::Bytes4(300));
  EXPECT_THAT(test::FailureOf([&] { ReadBytes(shared.Bytes()); }), HasSubstr("too many children"));
}

TEST(ClassicShape, LinesToldOverAndOverAreRefused) {
  // 300 nodes that all name one polygon of 1000 sides.
  test::ShapeWriter shared(Root(Triangle, std::vector<NodePlan>(300, {.Tag = 7})));
  const auto list = static_cast<std::int64_t>(shared.Area.size());
  for (int n = 0; n < 1000; ++n) shared.Area += test::Bytes4(n % 2);
  const auto polygon = static_cast<std::int64_t>(shared.Area.size());
  shared.Area += test::Bytes4(2) + test::Bytes4(1000) + test::Bytes4(list);
  shared.Area.replace(48 + 8, 4, test::Bytes4(polygon));
  EXPECT_THAT(Edges(ReadBytes(shared.Bytes())), ElementsAre("0,0,0-5,0,0")) << "once, it is drawn";
  for (std::size_t n = 0; n < 300; ++n) shared.Area.replace(48 + 12 * n + 8, 4, test::Bytes4(polygon));
  EXPECT_THAT(test::FailureOf([&] { ReadBytes(shared.Bytes()); }), HasSubstr("lines that have been told often"));
}

}  // namespace
}  // namespace kestrel::falcon
