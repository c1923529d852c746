#include "shell/areas/geo_json_files.h"

#include <QFile>
#include <QTemporaryDir>

#include "shell/areas/area_tables_fixture.h"

namespace kestrel::shell {
namespace {

class GeoJsonFiles : public AreaTables {
 protected:
  void SetUp() override {
    ASSERT_TRUE(folder.isValid());
    AddFolder("Shown");
    AddFolder("Hidden", areas::Off);
    AddGroup("One", 1);
    AddGroup("Two", 2);
    AddGroup("Three", 1, areas::Off);
    for (const std::size_t group : {1u, 2u, 3u}) AddArea(group, "Icon", areas::AreaType::Icon);
  }
  std::string PathOf(const char* name) { return folder.filePath(QString::fromLatin1(name)).toStdString(); }
  void Write(const char* name, const QByteArray& bytes) {
    QFile file(folder.filePath(QString::fromLatin1(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
  }
  /// Exports by that key and imports what has been written into an empty catalogue; its groups.
  std::string Exported(const char* key) {
    desk.SaveAnswers = {PathOf("out.geojson")};
    ExportGeoJson(program, key);
    Catalogue() = {};
    desk.FileAnswers = {PathOf("out.geojson")};
    ImportGeoJson(program);
    return Folders() + " " + Groups();
  }

  QTemporaryDir folder;
};

TEST_F(GeoJsonFiles, ExportIsOfTheVisibleGroups) {
  EXPECT_EQ(Exported(""), "Shown; One@1;");
  EXPECT_EQ(desk.SaveQuestions[0].Title, "Export as GeoJSON");
  EXPECT_EQ(desk.SaveQuestions[0].Filter, "GeoJSON files|*.geojson");
}

TEST_F(GeoJsonFiles, ExportIsOfTheNode) { EXPECT_EQ(Exported("D2"), "Hidden; Two@1;"); }

TEST_F(GeoJsonFiles, ExportIsOfAllGroupsOfAFolder) { EXPECT_EQ(Exported("C1"), "Shown; One@1;Three@1;"); }

TEST_F(GeoJsonFiles, NothingToExportIsTold) {
  Catalogue().AreaFolders[1].Visible = areas::Off;
  ExportGeoJson(program, "");
  EXPECT_TRUE(desk.SaveQuestions.empty());
  ASSERT_EQ(desk.Boxes.size(), 1u);
  EXPECT_EQ(desk.Boxes[0].Text, "There is no group of areas to be exported.");
}

TEST_F(GeoJsonFiles, ExportThatCannotBeWrittenIsTold) {
  desk.SaveAnswers = {PathOf("no such folder/out.geojson")};
  ExportGeoJson(program, "D1");
  ASSERT_EQ(desk.Boxes.size(), 1u);
  EXPECT_EQ(desk.Boxes[0].Text.find("The areas could not be exported: "), 0u);
}

TEST_F(GeoJsonFiles, ImportIsOneStep) {
  Write("in.json", R"({"type":"FeatureCollection","features":[
      {"type":"Feature","properties":{"folder":"F","group":"G"},"geometry":{"type":"Point","coordinates":[1,2]}},
      {"type":"Feature","properties":{"folder":"H"},"geometry":{"type":"Point","coordinates":[1,2]}}]})");
  desk.FileAnswers = {PathOf("in.json")};
  EXPECT_EQ(ImportGeoJson(program), "C3");
  EXPECT_EQ(Folders(), "Shown;Hidden;F;H;");
  EXPECT_EQ(Groups(), "One@1;Two@2;Three@1;G@3;in@4;");
  EXPECT_TRUE(station.AreaSteps.Undo(Catalogue()).Done);
  EXPECT_EQ(Folders(), "Shown;Hidden;");
  EXPECT_EQ(Groups(), "One@1;Two@2;Three@1;");
}

TEST_F(GeoJsonFiles, ImportThatFailsIsToldAndChangesNothing) {
  Write("bad.json", R"({"type":"FeatureCollection","features":[
      {"type":"Feature","properties":{},"geometry":{"type":"Point","coordinates":[1,2]}},
      {"type":"Feature","properties":{},"geometry":{"type":"Point","coordinates":[1,200]}}]})");
  desk.FileAnswers = {PathOf("bad.json")};
  EXPECT_EQ(ImportGeoJson(program), "");
  ASSERT_EQ(desk.Boxes.size(), 1u);
  EXPECT_EQ(desk.Boxes[0].Text,
            "The areas cannot be read from \"bad.json\": a position in it is no longitude and latitude.");
  EXPECT_EQ(Groups(), "One@1;Two@2;Three@1;");
  EXPECT_EQ(station.AreaSteps.UndoText(), "");
  Write("none.json", R"({"type":"FeatureCollection","features":[]})");
  desk.FileAnswers = {PathOf("none.json"), PathOf("not there.json")};
  EXPECT_EQ(ImportGeoJson(program), "");
  EXPECT_EQ(desk.Boxes.back().Text, "The areas cannot be read from \"none.json\": there is no position in it.");
  EXPECT_EQ(ImportGeoJson(program), "");
  EXPECT_EQ(desk.Boxes.size(), 3u);
}

TEST_F(GeoJsonFiles, CancelledChoiceDoesNothing) {
  ExportGeoJson(program, "D1");
  EXPECT_EQ(ImportGeoJson(program), "");
  EXPECT_TRUE(desk.Boxes.empty());
}

}  // namespace
}  // namespace kestrel::shell
