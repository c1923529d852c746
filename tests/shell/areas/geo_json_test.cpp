#include "shell/areas/geo_json.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "base/failure.h"
#include "doubles/recording_windows.h"

namespace kestrel::shell {
namespace {

using areas::Area;
using areas::AreaType;

constexpr theaters::Corner Korea{34, 125};
/// Map units; a round trip goes through degrees with the station's own constants.
constexpr double Near = 0.01;

class GeoJson : public testing::Test {
 protected:
  GeoJson() {
    catalogue.AreaFolders.Append({"Caf\xe9", areas::On});
    AddGroup("Strikes", 1);
  }
  void AddGroup(const char* name, std::int32_t folder) {
    areas::AreaGroup group;
    group.Name = name;
    group.FolderIndex = folder;
    catalogue.AreaGroups.Append(std::move(group));
  }
  Area& Add(AreaType type, std::size_t group = 1) {
    Area area;
    area.Type = type;
    area.Name = "<b>&\xe9";
    return catalogue.AreaGroups[group].Areas.Append(std::move(area));
  }
  QByteArray Write() { return WriteGeoJson(catalogue, {1}, Korea); }
  areas::AreaFile Read(const QByteArray& bytes) { return ReadGeoJson(bytes, Korea, "file", texts); }
  /// The only area of what is read.
  Area Only(const QByteArray& bytes) {
    areas::AreaFile file = Read(bytes);
    EXPECT_EQ(file.AreaGroups.UpperBound(), 1u);
    EXPECT_EQ(file.AreaGroups[1].Areas.UpperBound(), 1u);
    return file.AreaGroups[1].Areas[1];
  }
  Area ThereAndBack() { return Only(Write()); }
  static QByteArray Feature(const QByteArray& geometry, const char* properties = "{}") {
    return QByteArray(R"({"type":"Feature","properties":)") + properties + R"(,"geometry":)" + geometry + "}";
  }
  std::string Refusal(const QByteArray& bytes) {
    try {
      Read(bytes);
    } catch (const base::RuntimeFailure& failure) {
      return failure.what();
    }
    return "";
  }

  areas::AreaCatalogue catalogue;
  doubles::FixedTexts texts;
};

TEST_F(GeoJson, PlaceIsLongitudeAndLatitude) {
  Area& icon = Add(AreaType::Icon);
  icon.X = 0;
  icon.Y = 0;
  const QJsonObject file = QJsonDocument::fromJson(Write()).object();
  EXPECT_EQ(file[QLatin1String("type")].toString(), QStringLiteral("FeatureCollection"));
  const QJsonObject geometry =
      file[QLatin1String("features")].toArray()[0].toObject()[QLatin1String("geometry")].toObject();
  EXPECT_EQ(geometry[QLatin1String("type")].toString(), QStringLiteral("Point"));
  // The lower left corner itself, but for the last digits of the station's constants.
  EXPECT_NEAR(geometry[QLatin1String("coordinates")].toArray()[0].toDouble(), 125, 1e-4);
  EXPECT_NEAR(geometry[QLatin1String("coordinates")].toArray()[1].toDouble(), 34, 1e-4);
}

TEST_F(GeoJson, WhatAnAreaIsComesBack) {
  Area& area = Add(AreaType::Text);
  area.X = 123.25;
  area.Y = 456.5;
  area.Text = "Bulls\xe9ye";
  area.Color = 0x112233;
  area.Icon = 17;
  area.Radius = 12.5;
  area.Visible = areas::Off;
  area.ShowWaypointElevation = areas::Off;
  area.Reserved1 = 3;
  area.Reserved2 = -7;
  area.Reserved3 = 32767;
  area.TextFont = {"Courier New", 11.5F, areas::On, areas::On, areas::Off, areas::On};
  area.AltFont = {"Arial", 6, areas::Off, areas::Off, areas::On, areas::Off};
  const Area back = ThereAndBack();
  EXPECT_EQ(back.Name, "<b>&\xe9");
  EXPECT_EQ(back.Type, AreaType::Text);
  EXPECT_NEAR(back.X, 123.25, Near);
  EXPECT_NEAR(back.Y, 456.5, Near);
  EXPECT_EQ(back.Text, "Bulls\xe9ye");
  EXPECT_EQ(back.Color, 0x112233u);
  EXPECT_EQ(back.Icon, 17);
  EXPECT_EQ(back.Radius, 12.5);
  EXPECT_EQ(back.Visible, areas::Off);
  EXPECT_EQ(back.ShowWaypointElevation, areas::Off);
  EXPECT_EQ(back.Reserved1, 3);
  EXPECT_EQ(back.Reserved2, -7);
  EXPECT_EQ(back.Reserved3, 32767);
  EXPECT_EQ(back.TextFont.Name, "Courier New");
  EXPECT_EQ(back.TextFont.Size, 11.5F);
  EXPECT_EQ(back.TextFont.Bold, areas::On);
  EXPECT_EQ(back.TextFont.Italic, areas::On);
  EXPECT_EQ(back.TextFont.Strikethru, areas::Off);
  EXPECT_EQ(back.TextFont.Underline, areas::On);
  EXPECT_EQ(back.AltFont.Name, "Arial");
  EXPECT_EQ(back.AltFont.Strikethru, areas::On);
  // 8 characters of 6 by 13, and 5 around them.
  EXPECT_NEAR(back.MaxX, 123.25 + 8 * 6 + 5, Near) << "its box is made";
}

TEST_F(GeoJson, EveryTypeComesBack) {
  for (const int type : {2, 3, 4, 0, 9}) {
    catalogue.AreaGroups[1].Areas.Clear();
    Area& area = Add(static_cast<AreaType>(type));
    area.X = 700;
    area.Y = 10;
    const Area back = ThereAndBack();
    EXPECT_EQ(static_cast<int>(back.Type), type);
    EXPECT_NEAR(back.X, 700, Near);
    EXPECT_NEAR(back.Y, 10, Near);
  }
}

TEST_F(GeoJson, RegionComesBackSegmentBySegment) {
  Area& region = Add(AreaType::Region);
  region.Lines.Append({1, 2, 3, 4});
  region.Lines.Append({500, 600, 1000, 20});
  const Area back = ThereAndBack();
  EXPECT_EQ(back.Type, AreaType::Region);
  ASSERT_EQ(back.Lines.UpperBound(), 2u) << "segments that do not meet are not joined";
  EXPECT_NEAR(back.Lines[1].X1, 1, Near);
  EXPECT_NEAR(back.Lines[1].Y2, 4, Near);
  EXPECT_NEAR(back.Lines[2].Y1, 600, Near);
  EXPECT_NEAR(back.Lines[2].X2, 1000, Near);
  EXPECT_NEAR(back.MaxX, 1000, Near);
}

TEST_F(GeoJson, FlightPlanComesBackWithAltitudesAndTypes) {
  Area& plan = Add(AreaType::FlightPlan);
  plan.Points.Append({100, 200, 25000, areas::PointType::IP});
  plan.Points.Append({300, 400, -12.5, areas::PointType::Target});
  const Area back = ThereAndBack();
  EXPECT_EQ(back.Type, AreaType::FlightPlan);
  ASSERT_EQ(back.Points.UpperBound(), 2u);
  EXPECT_NEAR(back.Points[1].X, 100, Near);
  EXPECT_NEAR(back.Points[2].Y, 400, Near);
  EXPECT_EQ(back.Points[1].Z, 25000);
  EXPECT_EQ(back.Points[2].Z, -12.5);
  EXPECT_EQ(back.Points[1].Type, areas::PointType::IP);
  EXPECT_EQ(back.Points[2].Type, areas::PointType::Target);
}

TEST_F(GeoJson, EmptyRegionAndPlanComeBack) {
  Add(AreaType::Region);
  EXPECT_EQ(ThereAndBack().Type, AreaType::Region);
  catalogue.AreaGroups[1].Areas.Clear();
  Add(AreaType::FlightPlan);
  EXPECT_EQ(ThereAndBack().Type, AreaType::FlightPlan);
}

TEST_F(GeoJson, FoldersAndGroupsComeBackThoseOfOneNameApart) {
  AddGroup("Strikes", 1);
  AddGroup("Left out", 1);
  for (const std::size_t group : {1u, 2u, 3u}) Add(AreaType::Icon, group);
  const areas::AreaFile file = Read(WriteGeoJson(catalogue, {1, 2}, Korea));
  ASSERT_EQ(file.AreaFolders.UpperBound(), 1u);
  EXPECT_EQ(file.AreaFolders[1].Name, "Caf\xe9");
  ASSERT_EQ(file.AreaGroups.UpperBound(), 2u);
  EXPECT_EQ(file.AreaGroups[2].Name, "Strikes");
  EXPECT_EQ(file.AreaGroups[2].FolderIndex, 1);
}

TEST_F(GeoJson, WhatDoesNotLieOnEarthHasNoPlace) {
  Area& far = Add(AreaType::Icon);
  far.X = std::numeric_limits<double>::quiet_NaN();
  Add(AreaType::Icon).Y = 1e12;
  Add(AreaType::Circle).X = 5;
  EXPECT_EQ(Only(Write()).Type, AreaType::Circle) << "the others are read all the same";
}

TEST_F(GeoJson, ForeignGeometriesBecomeIconsAndRegions) {
  const char* const place = "[126.5,35.5]";
  const std::string line = R"([[126,35],[126.5,35],[126.5,35.5],[126,35]])";
  const auto geometry = [](const char* type, const std::string& coordinates) {
    return QByteArray(R"({"type":")") + type + R"(","coordinates":)" + coordinates.c_str() + "}";
  };
  EXPECT_EQ(Only(Feature(geometry("Point", place), R"({"name":"VOR","type":"beacon"})")).Type, AreaType::Icon);
  EXPECT_EQ(Only(Feature(geometry("Point", place), R"({"name":"VOR"})")).Name, "VOR");
  EXPECT_EQ(Only(geometry("LineString", line)).Lines.UpperBound(), 3u) << "a bare geometry";
  EXPECT_EQ(Only(geometry("Polygon", "[" + line + "," + line + "]")).Lines.UpperBound(), 6u);
  EXPECT_EQ(Only(geometry("MultiPolygon", "[[" + line + "],[" + line + "]]")).Lines.UpperBound(), 6u);
  EXPECT_EQ(Only(geometry("MultiLineString", "[" + line + "]")).Type, AreaType::Region);
  const areas::AreaFile points = Read(geometry("MultiPoint", "[[126,35],[127,36]]"));
  EXPECT_EQ(points.AreaGroups[1].Areas.UpperBound(), 2u);
  EXPECT_EQ(points.AreaFolders[1].Name, "file") << "what tells of no folder is in one of the file's name";
  const areas::AreaFile both = Read(Feature(R"({"type":"GeometryCollection","geometries":[)" +
                                            geometry("Point", place) + "," + geometry("LineString", line) + "]}"));
  ASSERT_EQ(both.AreaGroups[1].Areas.UpperBound(), 2u);
  EXPECT_EQ(both.AreaGroups[1].Areas[1].Type, AreaType::Icon);
  EXPECT_EQ(both.AreaGroups[1].Areas[2].Type, AreaType::Region);
  EXPECT_EQ(Read(R"({"type":"FeatureCollection","features":[]})").AreaGroups.UpperBound(), 0u);
}

TEST_F(GeoJson, BrokenInputIsRefusedInWords) {
  const std::pair<QByteArray, const char*> cases[] = {
      {"", "it is no GeoJSON: "},
      {"[1,2]", "it is no GeoJSON"},
      {R"({"type":"FeatureCollection","features":[)", "it is no GeoJSON: "},
      {QByteArray(100'000, '['), "it is no GeoJSON: "},
      {QByteArray(R"({"a":)").repeated(100'000), "it is no GeoJSON: "},
      {R"({"type":"Topology"})", "the coordinates of a geometry are missing"},
      {R"({"type":"Topology","coordinates":[]})", "something in it is neither a feature nor a geometry"},
      {R"({"type":"FeatureCollection","features":[7]})", "something in it is no GeoJSON object"},
      {R"({"type":"Point","coordinates":7})", "the coordinates of a geometry are missing"},
      {R"({"type":"Point","coordinates":[]})", "a position in it is no longitude and latitude"},
      {R"({"type":"Point","coordinates":["1","2"]})", "a position in it is no longitude and latitude"},
      {R"({"type":"Point","coordinates":[126,90]})", "a position in it is no longitude and latitude"},
      {R"({"type":"Point","coordinates":[null,35]})", "a position in it is no longitude and latitude"},
      {R"({"type":"LineString","coordinates":[[1,2],3]})", "the coordinates of a geometry are missing"},
  };
  for (const auto& [bytes, why] : cases) {
    EXPECT_EQ(Refusal(bytes).substr(0, std::string(why).size()), why) << bytes.left(60).toStdString();
  }
  EXPECT_NE(Refusal(R"({"type":"Point","coordinates":[1e999,35]})"), "");
  EXPECT_EQ(Refusal(QByteArray(static_cast<qsizetype>(MaxGeoJsonBytes) + 1, ' ')), "it is too large");
}

TEST_F(GeoJson, FileCutAnywhereIsRefused) {
  Add(AreaType::Region).Lines.Append({1, 2, 3, 4});
  Add(AreaType::FlightPlan).Points.Append({1, 2, 3});
  const QByteArray whole = Write().trimmed();
  ASSERT_EQ(Refusal(whole), "");
  for (qsizetype size = 0; size < whole.size(); ++size) EXPECT_NE(Refusal(whole.left(size)), "") << size;
}

TEST_F(GeoJson, ByteThatIsAnotherIsReadOrRefused) {
  Add(AreaType::Region).Lines.Append({1, 2, 3, 4});
  Add(AreaType::FlightPlan).Points.Append({1, 2, 3});
  const QByteArray whole = Write();
  for (qsizetype at = 0; at < whole.size(); ++at) {
    for (const char other : {'\0', '"', '[', '9', '\xff'}) {
      QByteArray bytes = whole;
      bytes[at] = other;
      try {
        for (const areas::AreaGroup& group : Read(bytes).AreaGroups.Live()) {
          for (const Area& area : group.Areas.Live()) EXPECT_TRUE(std::isfinite(area.X) && std::isfinite(area.MaxX));
        }
      } catch (const base::RuntimeFailure&) {
      }
    }
  }
}

TEST_F(GeoJson, TooManyFeaturesAreRefused) {
  QByteArray points = R"({"type":"MultiPoint","coordinates":[[1,2])";
  for (std::size_t n = 0; n < MaxGeoJsonAreas; ++n) points += ",[1,2]";
  EXPECT_EQ(Refusal(points + "]}"), "it holds too many features");
}

TEST_F(GeoJson, PropertiesThatDoNotFitAreLeftOut) {
  const Area back = Only(Feature(R"({"type":"Point","coordinates":[126,35]})",
                                 R"({"name":7,"color":"red","icon":99999,"radius":"x","textFontSize":1e300})"));
  const Area fresh;
  EXPECT_EQ(back.Name, fresh.Name);
  EXPECT_EQ(back.Color, fresh.Color);
  EXPECT_EQ(back.Icon, fresh.Icon);
  EXPECT_EQ(back.Radius, fresh.Radius);
  EXPECT_EQ(back.TextFont.Size, fresh.TextFont.Size);
  EXPECT_EQ(Only(Feature(R"({"type":"Point","coordinates":[126,35]})",
                         (R"({"name":")" + std::string(300, 'n') + R"("})").c_str()))
                .Name,
            std::string(100, 'n'));
}

}  // namespace
}  // namespace kestrel::shell
