#pragma once

#include <cstdint>
#include <string>

#include "base/colour.h"
#include "base/table.h"

// The drawings of the controller on the map of the current theater: areas in groups, groups in folders. Positions are
// map units (`Y` to the north).
namespace kestrel::areas {

/// A boolean as the files hold it, kept whatever its number. Of folders any but Off is true, of groups and areas On
/// alone (Shows).
using Flag = std::int16_t;
inline constexpr Flag On = -1;
inline constexpr Flag Off = 0;

/// What an area is. Files may hold other numbers; such an area is kept and shown as nothing.
enum class AreaType : std::int16_t { Region = 1, Circle, Icon, Text, FlightPlan };

/// What a point of a flight plan is. Other numbers are kept and have no marker.
enum class PointType : std::int16_t { Nav = 1, IP, Target };

/// One straight segment of a region; segments need not meet.
struct AreaLine {
  double X1 = 0, Y1 = 0;
  double X2 = 0, Y2 = 0;
};

struct FlightPlanPoint {
  double X = 0, Y = 0;
  double Z = 0;  ///< altitude, feet
  PointType Type = PointType::Nav;
};

struct AreaFont {
  std::string Name = "Verdana";
  float Size = 8;  ///< points
  Flag Bold = Off;
  Flag Italic = Off;
  Flag Strikethru = Off;
  Flag Underline = Off;
};

/// One drawing. Every type has all fields; what a type does not use is kept.
struct Area {
  std::string Name = "New Area";
  AreaType Type = AreaType::Region;
  std::int16_t Reserved1 = 0;  ///< carried through the files
  Flag ShowWaypointElevation = On;
  double Radius = 0;           ///< Circle: nautical miles
  std::int16_t Reserved2 = 0;  ///< as Reserved1
  std::int16_t Reserved3 = 0;  ///< as Reserved1
  base::Table<AreaLine> Lines = {};
  double X = 0;  ///< Circle: centre; Icon: position; Text: upper left point
  double Y = 0;
  base::Table<FlightPlanPoint> Points = {};                ///< in flying order
  AreaFont AltFont{.Name = "OCR A Extended", .Bold = On};  ///< of the altitudes of a flight plan
  base::Colour Color = 0;
  std::int16_t Icon = 1;  ///< of the icon table, map/icon_strokes
  Flag Visible = On;
  std::string Text = {};
  AreaFont TextFont = {};                         ///< of a Text
  bool Editing = false;                           ///< the editor holds it and shows its own copy; never in a file
  double MinX = 0, MinY = 0, MaxX = 0, MaxY = 0;  ///< bounding box (AreaBounds); the files hold it
};

struct AreaGroup {
  base::Table<Area> Areas = {};  ///< in drawing order
  Flag Visible = On;
  std::string Name = {};
  std::int32_t FolderIndex = 0;  ///< of AreaFolders, from 1; what names no folder puts the group out of sight
};

struct AreaFolder {
  std::string Name = {};
  Flag Visible = On;
};

/// All drawings of the current theater. The order of the groups does not depend on the folders.
struct AreaCatalogue {
  base::Table<AreaFolder> AreaFolders;
  base::Table<AreaGroup> AreaGroups;
  std::uint64_t Revision = 0;  ///< grows with each change by the person, for what keeps up with it
};

/// Whether the folder of a group is there and shown, and the group itself.
bool Shows(const AreaCatalogue& catalogue, const AreaGroup& group);
/// Whether an area that stands in a group which shows is drawn by the renderer.
inline bool Shows(const Area& area) { return area.Visible == On && !area.Editing; }

/// "Region", "Circle", "Icon", "Text", "FlightPlan"; empty for any other.
std::string ShapeToText(AreaType type);

}  // namespace kestrel::areas
