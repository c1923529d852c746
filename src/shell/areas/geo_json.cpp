#include "shell/areas/geo_json.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

#include "areas/area_tree.h"
#include "base/failure.h"
#include "link/tables.h"
#include "map/geometry.h"
#include "map/lat_long.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

using areas::Area;
using areas::AreaType;
using base::RuntimeFailure;

/// Bytes of a name; the files hold no more.
constexpr std::size_t LongestName = 100;
constexpr areas::Flag OnFlag = areas::On;

QLatin1String Key(const char* name) { return QLatin1String(name); }

// A property of an area is one line below, from which writing and reading both follow.

QJsonValue Told(const std::string& text) { return FromBytes(text); }
QJsonValue Told(double number) { return number; }
QJsonValue Told(float number) { return static_cast<double>(number); }
/// A flag, and any other small number.
QJsonValue Told(std::int16_t number) { return number; }
QJsonValue Told(base::Colour colour) {
  if (colour > 0xFFFFFF) return static_cast<double>(colour);
  return QStringLiteral("#%1%2%3")
      .arg(base::RedOf(colour), 2, 16, QLatin1Char('0'))
      .arg(base::GreenOf(colour), 2, 16, QLatin1Char('0'))
      .arg(base::BlueOf(colour), 2, 16, QLatin1Char('0'));
}

void Take(const QJsonValue& value, std::string& text) {
  if (value.isString()) text = ToBytes(value.toString()).substr(0, LongestName);
}
void Take(const QJsonValue& value, double& number) {
  if (value.isDouble()) number = value.toDouble();
}
void Take(const QJsonValue& value, float& number) {
  const double told = value.toDouble();
  if (value.isDouble() && std::abs(told) <= std::numeric_limits<float>::max()) number = static_cast<float>(told);
}
void Take(const QJsonValue& value, std::int16_t& number) {
  if (value.isBool()) number = value.toBool() ? OnFlag : areas::Off;
  const double told = value.toDouble();
  const bool fits =
      told >= std::numeric_limits<std::int16_t>::min() && told <= std::numeric_limits<std::int16_t>::max();
  if (value.isDouble() && fits) number = static_cast<std::int16_t>(told);
}
void Take(const QJsonValue& value, base::Colour& colour) {
  if (value.isDouble() && value.toDouble() >= 0 && value.toDouble() <= std::numeric_limits<base::Colour>::max()) {
    colour = static_cast<base::Colour>(value.toDouble());
  }
  bool valid = false;
  const QString text = value.toString();
  const uint rgb = text.mid(1).toUInt(&valid, 16);
  if (!valid || text.size() != 7 || text[0] != u'#') return;
  colour = (rgb >> 16 & 0xFF) | (rgb & 0xFF00) | (rgb & 0xFF) << 16;
}

template <class Font, class Walk>
void WalkFont(Font& font, const char* prefix, Walk walk) {
  const auto each = [&](const char* name, auto& field) { walk((std::string(prefix) + name).c_str(), field); };
  each("Name", font.Name);
  each("Size", font.Size);
  each("Bold", font.Bold);
  each("Italic", font.Italic);
  each("Strikethru", font.Strikethru);
  each("Underline", font.Underline);
}

/// The properties of an area, but for its type, group and points.
template <class Record, class Walk>
void WalkProperties(Record& area, Walk walk) {
  walk("name", area.Name);
  walk("color", area.Color);
  walk("visible", area.Visible);
  walk("icon", area.Icon);
  walk("radius", area.Radius);
  walk("text", area.Text);
  walk("showWaypointElevation", area.ShowWaypointElevation);
  walk("reserved1", area.Reserved1);
  walk("reserved2", area.Reserved2);
  walk("reserved3", area.Reserved3);
  WalkFont(area.TextFont, "textFont", walk);
  WalkFont(area.AltFont, "altFont", walk);
}

/// Whether a position can be told to others: not at a pole, nor beyond it.
bool IsOnEarth(double lat, double lon) { return std::abs(lat) < 90 && std::abs(lon) <= 360; }

/// Makes positions of the map's, and keeps whether all of them are places on Earth.
class Positions {
 public:
  explicit Positions(theaters::Corner theater) : corner(theater) {}

  QJsonArray At(double x, double y) {
    const map::LatLong place = map::LatLongFromFeet(corner, x * link::FeetPerMapUnit, y * link::FeetPerMapUnit);
    if (!IsOnEarth(place.Lat, place.Long)) good = false;
    return {place.Long, place.Lat};
  }
  bool Good() const { return good; }

 private:
  theaters::Corner corner;
  bool good = true;
};

QJsonObject Geometry(const char* type, const QJsonArray& coordinates) {
  return {{Key("type"), Key(type)}, {Key("coordinates"), coordinates}};
}

QJsonObject GeometryOf(const Area& area, Positions& positions) {
  if (area.Type == AreaType::Region) {
    QJsonArray lines;
    for (const areas::AreaLine& line : area.Lines.Live()) {
      lines.append(QJsonArray{positions.At(line.X1, line.Y1), positions.At(line.X2, line.Y2)});
    }
    return Geometry("MultiLineString", lines);
  }
  if (area.Type == AreaType::FlightPlan) {
    QJsonArray points;
    for (const areas::FlightPlanPoint& point : area.Points.Live()) {
      QJsonArray place = positions.At(point.X, point.Y);
      place.append(std::isfinite(point.Z) ? point.Z : 0);
      points.append(place);
    }
    return Geometry("LineString", points);
  }
  return Geometry("Point", positions.At(area.X, area.Y));
}

QJsonObject FeatureOf(const Area& area, theaters::Corner corner) {
  QJsonObject properties;
  WalkProperties(area, [&properties](const char* name, const auto& field) { properties[Key(name)] = Told(field); });
  const std::string type = areas::ShapeToText(area.Type);
  properties[Key("type")] = type.empty() ? QJsonValue(static_cast<int>(area.Type)) : QJsonValue(FromBytes(type));
  if (area.Type == AreaType::FlightPlan) {
    QJsonArray types;
    for (const areas::FlightPlanPoint& point : area.Points.Live()) types.append(static_cast<int>(point.Type));
    properties[Key("pointTypes")] = types;
  }
  Positions positions(corner);
  const QJsonObject geometry = GeometryOf(area, positions);
  return {{Key("type"), Key("Feature")},
          {Key("properties"), properties},
          {Key("geometry"), positions.Good() ? QJsonValue(geometry) : QJsonValue()}};
}

/// Makes areas of the geometries of a file.
class Reader {
 public:
  Reader(theaters::Corner theater, const std::string& name, areas::TextMeasure& measure)
      : corner(theater), otherwise(name.substr(0, LongestName)), texts(measure) {}

  void ReadAny(const QJsonObject& object) {
    const QString type = object.value(Key("type")).toString();
    if (type == Key("FeatureCollection")) {
      for (const QJsonValue& feature : ArrayOf(object, "features")) ReadAny(ObjectOf(feature));
    } else if (type == Key("Feature")) {
      ReadFeature(object);
    } else {
      ReadGeometry(object, {});
    }
  }

  areas::AreaFile Done() && { return std::move(file); }

 private:
  [[noreturn]] static void Refuse(const char* why) { throw RuntimeFailure(why); }
  static QJsonObject ObjectOf(const QJsonValue& value) {
    if (!value.isObject()) Refuse("something in it is no GeoJSON object");
    return value.toObject();
  }
  static QJsonArray ArrayOf(const QJsonValue& value) {
    if (!value.isArray()) Refuse("the coordinates of a geometry are missing");
    return value.toArray();
  }
  static QJsonArray ArrayOf(const QJsonObject& object, const char* name) { return ArrayOf(object.value(Key(name))); }

  void ReadFeature(const QJsonObject& feature) {
    const QJsonValue geometry = feature.value(Key("geometry"));
    // A Feature may have no place.
    if (geometry.isNull() || geometry.isUndefined()) return;
    ReadGeometry(ObjectOf(geometry), feature.value(Key("properties")).toObject());
  }

  void ReadGeometry(const QJsonObject& geometry, const QJsonObject& properties) {
    const QString type = geometry.value(Key("type")).toString();
    if (type == Key("GeometryCollection")) {
      for (const QJsonValue& each : ArrayOf(geometry, "geometries")) ReadGeometry(ObjectOf(each), properties);
      return;
    }
    const QJsonArray places = ArrayOf(geometry, "coordinates");
    if (type == Key("Point")) {
      AddPoint(places, properties);
    } else if (type == Key("MultiPoint")) {
      for (const QJsonValue& place : places) AddPoint(ArrayOf(place), properties);
    } else if (type == Key("LineString") && properties.value(Key("type")) == Key("FlightPlan")) {
      AddPlan(places, properties);
    } else if (type == Key("LineString")) {
      AddRegion({places}, properties);
    } else if (type == Key("MultiLineString") || type == Key("Polygon")) {
      AddRegion(LinesOf(places), properties);
    } else if (type == Key("MultiPolygon")) {
      std::vector<QJsonArray> rings;
      for (const QJsonValue& polygon : places) {
        for (const QJsonArray& ring : LinesOf(ArrayOf(polygon))) rings.push_back(ring);
      }
      AddRegion(rings, properties);
    } else {
      Refuse("something in it is neither a feature nor a geometry");
    }
  }

  static std::vector<QJsonArray> LinesOf(const QJsonArray& places) {
    std::vector<QJsonArray> lines;
    for (const QJsonValue& line : places) lines.push_back(ArrayOf(line));
    return lines;
  }

  /// Map units.
  map::MapPoint Place(const QJsonArray& position) const {
    const double lon = position.at(0).toDouble(std::nan("")), lat = position.at(1).toDouble(std::nan(""));
    if (!IsOnEarth(lat, lon)) Refuse("a position in it is no longitude and latitude");
    const map::Feet feet = map::FeetFromLatLong(corner, lat, lon);
    return {feet.X / link::FeetPerMapUnit, feet.Y / link::FeetPerMapUnit};
  }

  void AddPoint(const QJsonArray& position, const QJsonObject& properties) {
    Area area = AreaOf(properties, AreaType::Icon);
    // Of what other programs call a type, none is one of ours.
    const QJsonValue type = properties.value(Key("type"));
    if (type == Key("Circle")) area.Type = AreaType::Circle;
    if (type == Key("Text")) area.Type = AreaType::Text;
    auto number = static_cast<std::int16_t>(area.Type);
    if (type.isDouble()) {
      shell::Take(type, number);
      area.Type = static_cast<AreaType>(number);
    }
    const map::MapPoint place = Place(position);
    area.X = place.X;
    area.Y = place.Y;
    Add(std::move(area), properties);
  }

  void AddPlan(const QJsonArray& places, const QJsonObject& properties) {
    Area area = AreaOf(properties, AreaType::FlightPlan);
    const QJsonArray types = properties.value(Key("pointTypes")).toArray();
    for (qsizetype at = 0; at < places.size(); ++at) {
      const QJsonArray position = ArrayOf(places[at]);
      const map::MapPoint place = Place(position);
      std::int16_t type = static_cast<std::int16_t>(areas::PointType::Nav);
      shell::Take(types.at(at), type);
      area.Points.Append({place.X, place.Y, position.at(2).toDouble(), static_cast<areas::PointType>(type)});
    }
    Add(std::move(area), properties);
  }

  void AddRegion(const std::vector<QJsonArray>& lines, const QJsonObject& properties) {
    Area area = AreaOf(properties, AreaType::Region);
    for (const QJsonArray& line : lines) {
      std::optional<map::MapPoint> before;
      for (const QJsonValue& each : line) {
        const map::MapPoint place = Place(ArrayOf(each));
        if (before) area.Lines.Append({before->X, before->Y, place.X, place.Y});
        before = place;
      }
    }
    Add(std::move(area), properties);
  }

  static Area AreaOf(const QJsonObject& properties, AreaType type) {
    Area area;
    area.Type = type;
    WalkProperties(area,
                   [&properties](const char* name, auto& field) { shell::Take(properties.value(Key(name)), field); });
    return area;
  }

  void Add(Area area, const QJsonObject& properties) {
    if (++count > MaxGeoJsonAreas) Refuse("it holds too many features");
    areas::AreaBounds(area, texts);
    GroupOf(properties).Areas.Append(std::move(area));
  }

  /// The group that an area is in; the one of the area before it mostly.
  areas::AreaGroup& GroupOf(const QJsonObject& properties) {
    std::string folder = otherwise, group = otherwise;
    shell::Take(properties.value(Key("folder")), folder);
    shell::Take(properties.value(Key("group")), group);
    auto& folderIndex = folders[folder];
    if (folderIndex == 0) {
      file.AreaFolders.Append({folder, areas::On});
      folderIndex = static_cast<std::int32_t>(file.AreaFolders.UpperBound());
    }
    // Groups of one name in one folder are told apart by their number.
    auto& index = groups[{folderIndex, group, properties.value(Key("groupNumber")).toDouble()}];
    if (index == 0) {
      areas::AreaGroup made;
      made.Name = group;
      made.FolderIndex = folderIndex;
      file.AreaGroups.Append(std::move(made));
      index = file.AreaGroups.UpperBound();
    }
    return file.AreaGroups[index];
  }

  theaters::Corner corner;
  std::string otherwise;  ///< name of a folder or group that is not told
  areas::TextMeasure& texts;
  areas::AreaFile file;
  std::map<std::string, std::int32_t> folders;
  std::map<std::tuple<std::int32_t, std::string, double>, std::size_t> groups;
  std::size_t count = 0;
};

}  // namespace

QByteArray WriteGeoJson(const areas::AreaCatalogue& catalogue, const std::vector<std::size_t>& groups,
                        theaters::Corner corner) {
  QJsonArray features;
  int number = 0;
  for (const std::size_t index : groups) {
    const areas::AreaGroup& group = catalogue.AreaGroups[index];
    ++number;
    for (const Area& area : group.Areas.Live()) {
      QJsonObject feature = FeatureOf(area, corner);
      QJsonObject properties = feature[Key("properties")].toObject();
      if (areas::HasFolder(catalogue, group)) {
        properties[Key("folder")] = FromBytes(catalogue.AreaFolders[static_cast<std::size_t>(group.FolderIndex)].Name);
      }
      properties[Key("group")] = FromBytes(group.Name);
      properties[Key("groupNumber")] = number;
      feature[Key("properties")] = properties;
      features.append(feature);
    }
  }
  return QJsonDocument(QJsonObject{{Key("type"), Key("FeatureCollection")}, {Key("features"), features}}).toJson();
}

areas::AreaFile ReadGeoJson(const QByteArray& bytes, theaters::Corner corner, const std::string& name,
                            areas::TextMeasure& texts) {
  if (static_cast<std::size_t>(bytes.size()) > MaxGeoJsonBytes) throw RuntimeFailure("it is too large");
  QJsonParseError failure;
  const QJsonDocument document = QJsonDocument::fromJson(bytes, &failure);
  if (failure.error != QJsonParseError::NoError || !document.isObject()) {
    throw RuntimeFailure("it is no GeoJSON" + (failure.error == QJsonParseError::NoError
                                                   ? std::string()
                                                   : ": " + ToBytes(failure.errorString())));
  }
  Reader reader(corner, name, texts);
  reader.ReadAny(document.object());
  return std::move(reader).Done();
}

}  // namespace kestrel::shell
