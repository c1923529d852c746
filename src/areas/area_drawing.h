#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "areas/area_editor.h"
#include "base/changed.h"

// The points and segments of the area that the editor holds: clicks on the map, the two lists, bulk delete.
namespace kestrel::areas {

/// What the panel of the area's type asks for; empty while BulkDelete and for an unknown type.
std::string Prompt(const AreaEditor& editor);

/// A click on the map at map position (px, py); nothing when AreaEditMode is off.
base::Changed MapClick(AreaEditor& editor, double px, double py, TextMeasure& texts);
/// Takes X1, Y1, X2, Y2, Z and PointType of the editor into WorkArea by its type; a new row is selected.
base::Changed GetXYFromMap(AreaEditor& editor, TextMeasure& texts);
/// Each click after the first adds a segment. Turned off, the next click starts anew.
void SetSingleClick(AreaEditor& editor, bool on);
/// Takes back what the last click drew: the first point of a segment, the last segment (a chain goes on from where that
/// began), the last point of a flight plan. Of one position (Circle, Icon, Text) there is nothing to take back, nor
/// while AreaEditMode is off.
base::Changed TakeBack(AreaEditor& editor, TextMeasure& texts);

/// "#", "X1", "Y1", "X2", "Y2" of a segment, `row` from 1.
std::array<std::string, 5> LineRow(const AreaEditor& editor, std::size_t row);
/// "#", "X", "Y", "ELEVATION", "POINT TYPE" of a point. The elevation has two decimals as the opening filled the list
/// and none once it is refreshed: this stands.
std::array<std::string, 5> PointRow(const AreaEditor& editor, std::size_t row);
/// "Nav Point", "IP Point", "Target Point"; empty for any other.
std::string PointTypeToText(PointType type);

/// Selects a row of the list; 0, or what is none, is no row.
base::Changed SelectLine(AreaEditor& editor, std::size_t row);
base::Changed SelectPoint(AreaEditor& editor, std::size_t row);
/// The window of a segment or point: index 0 adds, another writes the element; one that is not there is left.
base::Changed PointDetails(AreaEditor& editor, std::size_t index, const AreaLine& line, TextMeasure& texts);
base::Changed FPPointDetails(AreaEditor& editor, std::size_t index, const FlightPlanPoint& point, TextMeasure& texts);
/// Without BulkDelete the selected segment goes and its successor is selected, the last one at the end; with it the
/// checked ones go.
base::Changed DeleteLine(AreaEditor& editor, TextMeasure& texts);
base::Changed DeletePoint(AreaEditor& editor, TextMeasure& texts);
/// "Reset All" of either list.
base::Changed ResetLines(AreaEditor& editor, TextMeasure& texts);
base::Changed ResetPoints(AreaEditor& editor, TextMeasure& texts);

/// On, clicks on the map are ignored and no segment is checked.
base::Changed SetBulkDelete(AreaEditor& editor, bool on);
/// Checks a row, from 1, or all of them.
base::Changed CheckLine(AreaEditor& editor, std::size_t row, bool on);
base::Changed CheckAllLines(AreaEditor& editor, bool on);

}  // namespace kestrel::areas
