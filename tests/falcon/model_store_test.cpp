#include "falcon/model_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/failure.h"
#include "base/temp_folder.h"
#include "falcon/bml_writer.h"
#include "falcon/failure_text.h"
#include "falcon/model_writer.h"
#include "falcon/shape_writer.h"

namespace kestrel::falcon {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::SizeIs;

std::string NoExpander(BmlPacking, std::string_view, std::size_t) { throw base::RuntimeFailure("it is packed"); }

/// A square whose corners stand at those many feet.
std::string SquareShape(float side) {
  return test::ShapeBytes(
      test::Root({{0, 0, 0}, {side, 0, 0}, {side, side, 0}, {0, side, 0}}, {test::Polygon({0, 1, 2, 3})}));
}

/// Folders "objects" and "3d". Of the directories model 1 is a shape, model 2 a damaged one in a box, model 3 a box
/// alone, model 4 a shape whose place lies outside of the file.
class ModelStores : public testing::Test {
 protected:
  ModelStores() {
    for (const char* folder : {"objects", "3d"}) fs::create_directory(disk / folder);
  }
  void Write(const std::string& name, const std::string& bytes) {
    fs::create_directories((disk / name).parent_path());
    test::WriteBytes(disk / name, bytes);
  }
  void WriteDirectory(const std::string& header, const std::string& shapes, float side = 10) {
    const std::string good = SquareShape(side), bad = "no shape at all";
    test::DirectoryPlan plan;
    plan.Places = {{0, good.size()}, {good.size(), bad.size()}, {good.size(), 1000}};
    plan.Models.resize(5);
    for (auto& model : plan.Models) model.Box = {-5, 5, -7, 7, -9, 0};
    plan.Models[1].Details = {{0, 500}};
    plan.Models[2].Details = {{1, 500}};
    plan.Models[4].Details = {{2, 500}};
    Write(header, test::DirectoryBytes(plan));
    Write(shapes, good + bad);
  }
  ModelStore Store() { return ModelStore({disk / "3d", disk / "objects"}, NoExpander); }
  /// The forward end of the first model's square, or 0 when it has no shape.
  double SideOf(const ModelReading& reading) {
    double most = 0;
    if (reading.Shape) {
      for (const ModelEdge& edge : reading.Shape->Edges) most = std::max(most, edge.To.X);
    }
    return most;
  }

  test::TempFolder disk;
};

TEST_F(ModelStores, ReadADirectoryWhateverItsCase) {
  WriteDirectory("3d/koreaobj.hdr", "3d/KOREAOBJ.lod");
  ModelStore store = Store();
  const ModelReading whole = store.Read(1);
  ASSERT_TRUE(whole.Shape);
  EXPECT_THAT(whole.Shape->Edges, SizeIs(4));
  EXPECT_EQ(whole.Trouble, "");
}

TEST_F(ModelStores, WhatCannotBeReadHasItsBoxAndAReason) {
  WriteDirectory("3d/KoreaObj.HDR", "3d/KoreaObj.LOD");
  ModelStore store = Store();
  for (const int model : {2, 4}) {
    SCOPED_TRACE(model);
    const ModelReading reading = store.Read(model);
    EXPECT_FALSE(reading.Shape);
    ASSERT_TRUE(reading.Box);
    EXPECT_EQ(reading.Box->Least.Y, -7);
    EXPECT_THAT(reading.Trouble, HasSubstr("KoreaObj.LOD, model " + std::to_string(model)));
  }
}

TEST_F(ModelStores, ModelWithoutAShapeOrBeyondTheDirectoryIsNone) {
  WriteDirectory("3d/KoreaObj.HDR", "3d/KoreaObj.LOD");
  ModelStore store = Store();
  for (const int model : {-1, 0, 3, 5, 32767}) {
    SCOPED_TRACE(model);
    const ModelReading reading = store.Read(model);
    EXPECT_FALSE(reading.Shape);
    EXPECT_FALSE(reading.Box);
    EXPECT_EQ(reading.Trouble, "");
  }
}

TEST_F(ModelStores, NewerDirectoryGoesBeforeTheOlderWhenItsShapesAreThere) {
  WriteDirectory("3d/KoreaObj.HDR", "3d/KoreaObj.LOD", 10);
  WriteDirectory("3d/KoreaObj.DXH", "3d/KoreaObj.DXL", 20);
  EXPECT_EQ(SideOf(Store().Read(1)), 20);
  fs::remove(disk / "3d/KoreaObj.DXL");
  EXPECT_EQ(SideOf(Store().Read(1)), 10);
}

TEST_F(ModelStores, DirectoryWithoutItsShapesTellsBoxes) {
  WriteDirectory("3d/KoreaObj.HDR", "3d/KoreaObj.LOD");
  fs::remove(disk / "3d/KoreaObj.LOD");
  const ModelReading reading = Store().Read(1);
  EXPECT_TRUE(reading.Box);
  EXPECT_NE(reading.Trouble, "");
}

TEST_F(ModelStores, FolderOfAModelGoesBeforeTheDirectory) {
  WriteDirectory("3d/KoreaObj.HDR", "3d/KoreaObj.LOD");
  // Right, up, forward: a triangle that reaches 30 feet forward. The nearer shape is the more detailed.
  const std::string bml = test::BmlWriter().Triangles({{0, 0, 0}, {1, 0, 0}, {0, 0, 30}}).File();
  Write("objects/MODELS/1/parent.DAT", "Dimensions = 9 -1 1 -2 2 -3 0\nAddLOD = far.bml 900\nAddLOD = Near.bml 200\n");
  Write("objects/MODELS/1/near.BML", bml);
  ModelStore store = Store();
  const ModelReading reading = store.Read(1);
  EXPECT_EQ(SideOf(reading), 30) << reading.Trouble;
  EXPECT_EQ(store.Read(2).Box->Most.X, 5) << "that is the directory's";
}

TEST_F(ModelStores, FolderWhoseShapeCannotBeReadHasItsBox) {
  const std::string content = test::SmallBml().Content();
  Write("objects/Models/7/Parent.dat", "Dimensions = 9 -1 1 -2 2 -3 0\nAddLOD = Model_0.bml 200\n");
  Write("objects/Models/7/Model_0.bml", test::SmallBml().Packed(2, "packed", content.size()));
  Write("objects/Models/8/Parent.dat", "Dimensions = 0.29 0 0 0 0 0 0\nAddLOD = gone.bml 200\n");
  Write("objects/Models/9/Model_0.bml", "no parent");
  ModelStore store = Store();
  const ModelReading packed = store.Read(7);
  EXPECT_EQ(packed.Box->Most.Y, 2);
  EXPECT_THAT(packed.Trouble, HasSubstr("it is packed"));
  const ModelReading flat = store.Read(8);
  EXPECT_FALSE(flat.Box);
  EXPECT_THAT(flat.Trouble, HasSubstr("model 8"));
  EXPECT_THAT(store.Read(9).Trouble, HasSubstr("model 9"));
  const ModelReading none = store.Read(10);
  EXPECT_TRUE(!none.Shape && !none.Box && none.Trouble.empty());
}

TEST_F(ModelStores, NeverReadOutsideOfAModelsFolder) {
  const std::string bml = test::SmallBml().File();
  Write("objects/Models/outside.bml", bml);
  int number = 1;
  const std::string absolute = (disk / "objects/Models/outside.bml").string();
  for (const std::string& file : {std::string("../outside.bml"), std::string("..\\outside.bml"), absolute}) {
    SCOPED_TRACE(file);
    Write("objects/Models/" + std::to_string(number) + "/Parent.dat", "AddLOD = " + file + " 200\n");
    const ModelReading reading = Store().Read(number++);
    EXPECT_FALSE(reading.Shape);
    EXPECT_NE(reading.Trouble, "");
  }
}

TEST_F(ModelStores, WithoutModelsCannotBeOpened) {
  EXPECT_THAT(test::FailureOf([this] { Store().Open(); }), HasSubstr("KoreaObj.HDR"));
  Write("3d/KoreaObj.HDR", "cut");
  EXPECT_THAT(test::FailureOf([this] { Store().Open(); }), HasSubstr("KoreaObj.HDR"));
  // A leftover is no hindrance to what is newer.
  fs::create_directories(disk / "objects/Models/1");
  EXPECT_EQ(test::FailureOf([this] { Store().Open(); }), "");
}

}  // namespace
}  // namespace kestrel::falcon
