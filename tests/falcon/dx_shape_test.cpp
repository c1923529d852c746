#include "falcon/dx_shape.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "base/temp_folder.h"
#include "dx_writer.h"
#include "failure_text.h"
#include "falcon/shape_file.h"
#include "shape_writer.h"

namespace kestrel::falcon {
namespace {

using test::DxWriter;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

ModelShape Read(const std::string& bytes) { return ReadDxShape({"KoreaObj.DXL", bytes}); }

/// The edges as text, in whole feet and without heights: "0,0-5,0".
std::vector<std::string> Edges(const ModelShape& shape) {
  const auto text = [](const ModelPoint& p) {
    return std::to_string(std::lround(p.X)) + "," + std::to_string(std::lround(p.Y));
  };
  std::vector<std::string> edges;
  for (const ModelEdge& edge : shape.Edges) edges.push_back(text(edge.From) + "-" + text(edge.To));
  return edges;
}

DxWriter Square() {
  DxWriter dx;
  dx.Points = {{0, 0, 0}, {5, 0, 0}, {5, 5, 0}, {0, 5, 0}};
  return dx;
}

TEST(DxShape, IsToldByItsVersion) {
  EXPECT_TRUE(IsDxShape(test::SmallDx().File()));
  EXPECT_TRUE(IsDxShape(test::Bytes4(0xFFFF0000)));
  EXPECT_FALSE(IsDxShape(test::Bytes4(0x00010001)));
  EXPECT_FALSE(IsDxShape(test::ShapeBytes(test::SmallShape())));
  EXPECT_FALSE(IsDxShape("abc"));
}

TEST(DxShape, SurfacesAndJointsAreDrawn) {
  const ModelShape shape = Read(test::SmallDx().File());
  EXPECT_EQ(shape.Triangles, 2U);
  EXPECT_THAT(Edges(shape), ElementsAre("0,0-5,0", "5,0-0,5", "0,5-0,0", "10,0-15,0", "15,0-10,5", "10,5-10,0"));
}

TEST(DxShape, EveryKindOfPrimitiveHasItsOrder) {
  const auto edges = [](unsigned primitive) { return Edges(Read(Square().Surface(primitive, {0, 1, 2, 3}).File())); };
  EXPECT_THAT(edges(1), IsEmpty());
  EXPECT_THAT(edges(2), ElementsAre("0,0-5,0", "5,5-0,5"));
  EXPECT_THAT(edges(3), ElementsAre("0,0-5,0", "5,0-5,5", "5,5-0,5"));
  EXPECT_THAT(edges(4), ElementsAre("0,0-5,0", "5,0-5,5", "5,5-0,0")) << "the fourth corner is left over";
  EXPECT_THAT(edges(5), ElementsAre("0,0-5,0", "5,0-5,5", "5,5-0,0", "5,5-0,5", "0,5-5,0"));
  EXPECT_THAT(edges(6), ElementsAre("0,0-5,0", "5,0-5,5", "5,5-0,0", "5,5-0,5", "0,5-0,0"));
  EXPECT_THAT(edges(7), IsEmpty());
  EXPECT_EQ(Read(Square().Surface(5, {0, 1, 2, 3}).File()).Triangles, 2U);
}

TEST(DxShape, PointsAreRowsBeforeTheTurn) {
  // As a row times this, (x, y) becomes (-y, x).
  const std::array<float, 9> quarter = {0, 1, 0, -1, 0, 0, 0, 0, 1};
  for (const unsigned kind : {1U, 2U}) {
    const std::string file = Square().Joint(kind, {10, 0, 0}, quarter).Surface(3, {0, 1, 2}).EndJoint().File();
    EXPECT_THAT(Edges(Read(file)), ElementsAre("10,0-10,5", "10,5-5,5")) << kind;
  }
}

TEST(DxShape, ShiftBehindTheMatrixGoesBeforeThatWithin) {
  const std::array<float, 9> none = {1, 0, 0, 0, 1, 0, 0, 0, 1};
  EXPECT_THAT(Edges(Read(Square().Joint(1, {1, 0, 0}, none, 0, {7, 7, 7}).Surface(3, {0, 1}).EndJoint().File())),
              ElementsAre("1,0-6,0"));
  EXPECT_THAT(Edges(Read(Square().Joint(1, {0, 0, 0}, none, 0, {7, 7, 7}).Surface(3, {0, 1}).EndJoint().File())),
              ElementsAre("7,7-12,7"));
}

TEST(DxShape, OtherJointsAreAtRestAndSwitchesShowTheirFirstBranch) {
  for (const unsigned kind : {3U, 4U}) {
    EXPECT_THAT(Edges(Read(Square().Joint(kind, {9, 9, 9}).Surface(3, {0, 1}).EndJoint().File())),
                ElementsAre("0,0-5,0"));
  }
  for (const unsigned kind : {5U, 6U}) {
    DxWriter dx = Square();
    dx.Joint(kind, {0, 0, 0}, {}, 1).Surface(3, {2, 3}).Joint(kind, {0, 0, 0}).Surface(3, {1, 2}).EndJoint().EndJoint();
    dx.Joint(kind, {0, 0, 0}).Surface(3, {0, 1}).EndJoint();
    EXPECT_THAT(Edges(Read(dx.File())), ElementsAre("0,0-5,0")) << kind;
  }
}

TEST(DxShape, FileCutAnywhereIsRefused) {
  const std::string whole = test::SmallDx().File();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_THAT(test::FailureOf([&] { Read(whole.substr(0, length)); }), HasSubstr("KoreaObj.DXL: ")) << length;
  }
}

TEST(DxShape, CountsThatLieAreRefused) {
  const std::string whole = test::SmallDx().File();
  // Points, place of the pool, nodes, textures.
  for (const std::size_t at : {16U, 24U, 28U, 72U}) {
    for (const std::uint32_t number : {4000U, 0x10000000U, 0xFFFFFFFFU}) {
      std::string bad = whole;
      bad.replace(at, 4, test::Bytes4(number));
      EXPECT_THAT(test::FailureOf([&] { Read(bad); }), HasSubstr("KoreaObj.DXL: ")) << at << ' ' << number;
    }
  }
}

TEST(DxShape, NodesThatLieAreRefused) {
  const auto complaint = [](const DxWriter& dx) { return test::FailureOf([&] { Read(dx.File()); }); };
  EXPECT_EQ(complaint(Square().Surface(4, {0, 1, 4})), "KoreaObj.DXL: node 0 has a corner that is none of its points");
  EXPECT_EQ(complaint(Square().EndJoint()), "KoreaObj.DXL: node 0 ends what has not begun");
  EXPECT_EQ(complaint(Square().Joint(1, {0, 0, 0})), "KoreaObj.DXL: a node of it is left open");
  EXPECT_EQ(complaint(Square().Node(1, "short")), "KoreaObj.DXL: node 0 is too short for a surface");
  EXPECT_EQ(complaint(Square().Node(4, "short")), "KoreaObj.DXL: node 0 is too short for a joint");
  for (const std::uint32_t size : {0U, 11U, 1000U, 0xFFFFFFFFU}) {
    DxWriter dx = Square().Surface(4, {0, 1, 2});
    dx.Nodes.replace(0, 4, test::Bytes4(size));
    EXPECT_EQ(complaint(dx), "KoreaObj.DXL: node 0 has " + std::to_string(size) + " bytes");
  }
  DxWriter corners = Square().Surface(4, {0, 1, 2});
  corners.Nodes.replace(16, 4, test::Bytes4(4));
  EXPECT_EQ(complaint(corners), "KoreaObj.DXL: node 0 is too short for its 4 corners");
}

TEST(DxShape, WhatStandsBehindTheEndIsNotDrawn) {
  EXPECT_THAT(Read(Square().Node(9, "").Surface(4, {0, 1, 2}).File()).Edges, IsEmpty());
}

class ShapeFile : public testing::Test {
 protected:
  ShapeFile() {
    const std::string classic = test::ShapeBytes(test::SmallShape()), dx = test::SmallDx().File();
    Directory.Places = {{7, classic.size()}, {7 + classic.size(), dx.size()}};
    Directory.Models.resize(3);
    Directory.Models[1].Details = {{0, 100}, {1, 5000}};
    Directory.Models[2].Details = {{1, 100}};
    test::WriteBytes(Path(), "unknown" + classic + dx);
  }
  std::filesystem::path Path() const { return folder / "KoreaObj.LOD"; }
  std::string Complaint(std::size_t model) {
    return test::FailureOf([&] { ReadDirectoryShape(Path(), Directory, model); });
  }

  ModelDirectory Directory;
  test::TempFolder folder;
};

TEST_F(ShapeFile, MostDetailedShapeIsReadInItsForm) {
  EXPECT_EQ(ReadDirectoryShape(Path(), Directory, 1).Edges.size(), 8U);
  EXPECT_EQ(ReadDirectoryShape(Path(), Directory, 2).Edges.size(), 6U);
}

TEST_F(ShapeFile, ModelWithoutAShapeIsTold) {
  EXPECT_EQ(Complaint(0), "KoreaObj.LOD, model 0: it has no shape");
  EXPECT_EQ(Complaint(3), "KoreaObj.LOD, model 3: it is none of the directory");
}

TEST_F(ShapeFile, PlacesOutsideOfTheFileAreRefused) {
  const std::uint64_t end = std::filesystem::file_size(Path());
  for (const DetailPlace place : {DetailPlace{end, 1}, DetailPlace{end + 1, 0}, DetailPlace{0, end + 1},
                                  DetailPlace{0xFFFFFFFFFFFFFFFF, 2}, DetailPlace{1, 0xFFFFFFFFFFFFFFFF}}) {
    Directory.Places[0] = place;
    EXPECT_EQ(Complaint(1), "KoreaObj.LOD, model 1: it lies outside of the file") << place.Offset;
  }
  std::filesystem::resize_file(Path(), MaxShapeBytes + 1);
  Directory.Places[0] = {0, MaxShapeBytes + 1};
  EXPECT_EQ(Complaint(1), "KoreaObj.LOD, model 1: it would have 16777217 bytes");
  Directory.Places[0] = {0, 0};
  EXPECT_EQ(Complaint(1), "KoreaObj.LOD, model 1: it ends within its number of nodes");
}

}  // namespace
}  // namespace kestrel::falcon
