#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "areas/area.h"
#include "areas/area_bounds.h"
#include "areas/area_changes.h"
#include "base/changed.h"

namespace kestrel::areas {

/// The texts of the editor's fields, named as in the window. Several stand for one number: each type has a panel.
struct EditorFields {
  std::string Text13 = {};  ///< name of the area
  std::string Text3 = {};   ///< Circle: X
  std::string Text4 = {};   ///< Circle: Y
  std::string Text5 = {};   ///< Circle: radius, nautical miles
  std::string Text8 = {};   ///< Icon: X
  std::string Text7 = {};   ///< Icon: Y
  std::string Text6 = {};   ///< Text: X
  std::string Text2 = {};   ///< Text: Y
  std::string Text1 = {};   ///< Text: what is printed
};
using EditorField = std::string EditorFields::*;

/// The editor of one area. It works on a copy, which the map shows above what moves; the catalogue changes at OK.
struct AreaEditor {
  bool Open = false;
  bool AreaEditMode = false;  ///< clicks on the map go to the editor
  std::string Title = {};     ///< of the window; stays as it was at the opening
  EditorFields Fields = {};   ///< what the window shows; FieldEdited keeps it true
  Area WorkArea = {};
  bool IsNew = true;                      ///< OK appends to the group; otherwise it replaces
  std::int32_t GroupIndex = 0;            ///< of AreaGroups, from 1
  std::int32_t AreaIndex = 0;             ///< in the group, from 1; not used when IsNew
  bool FromIconMenu = false;              ///< opened from the map's menu, not from the area list
  bool FirstPointPending = true;          ///< Region: the next click starts a segment
  bool FirstPointAdded = false;           ///< Region: a segment or chain has its first point and no more (the prompt)
  bool SingleClick = false;               ///< Region: each click after the first adds a segment from the last point
  bool BulkDelete = false;                ///< Region: segments are being checked; clicks on the map are ignored
  double X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;  ///< the point or segment that is being added
  double Z = 0;
  areas::PointType PointType = areas::PointType::Nav;
  std::size_t Selected = 0;        ///< row of Lines, from 1; 0 none
  std::size_t SelectedPoint = 0;   ///< row of Points, from 1; 0 none
  std::vector<bool> Checked = {};  ///< of Lines, from 0; while BulkDelete
  std::size_t RowsOfOpening = 0;   ///< the first rows of Points that stand as the opening wrote them
};

/// The segments of WorkArea that are drawn with emphasis, by their index from 1: of a Region the checked ones while
/// BulkDelete, otherwise the selected one.
std::vector<std::size_t> HighLights(const AreaEditor& editor);

// What the procedures return is what must be drawn anew: the plots when WorkArea has changed, since it is drawn with
// what moves; the map when an area is taken from the catalogue or given back. Each change of WorkArea fills its box.
// Whatever is asked of an editor that is not open does nothing.

/// Opens for a new area in a group; a group that is not there, or an editor that is open, is refused (Nothing).
base::Changed OpenNew(AreaEditor& editor, const AreaCatalogue& catalogue, std::int32_t groupIndex, TextMeasure& texts);
/// The same for a new icon at (x, y) from the map's menu; sets FromIconMenu.
base::Changed PopulateFromNewIconMenu(AreaEditor& editor, const AreaCatalogue& catalogue, std::int32_t groupIndex,
                                      double x, double y, TextMeasure& texts);
/// Opens for an area of the catalogue, which is marked as `Editing` until OK or Cancel. One that is not there is
/// refused.
base::Changed OpenExisting(AreaEditor& editor, AreaCatalogue& catalogue, std::int32_t groupIndex,
                           std::int32_t areaIndex, TextMeasure& texts);

/// Another type: its panel's fields are filled, bulk delete ends. What the other types use is kept.
base::Changed ChooseType(AreaEditor& editor, AreaType type, TextMeasure& texts);
/// The person has changed the text of a field. Numbers are read at once; the name is read at OK.
base::Changed FieldEdited(AreaEditor& editor, EditorField field, std::string text, TextMeasure& texts);
/// A field was left: a number is shown again with two decimals.
void FieldLeft(AreaEditor& editor, EditorField field);
base::Changed ChooseIcon(AreaEditor& editor, std::int16_t icon, TextMeasure& texts);
base::Changed SetColor(AreaEditor& editor, base::Colour color, TextMeasure& texts);
/// The font of a Text, with the colour that its dialog gives too.
base::Changed SetTextFont(AreaEditor& editor, AreaFont font, base::Colour color, TextMeasure& texts);
/// The font of the altitudes of a flight plan, with the colour.
base::Changed SetAltFont(AreaEditor& editor, AreaFont font, base::Colour color, TextMeasure& texts);
base::Changed ShowElevation(AreaEditor& editor, bool on, TextMeasure& texts);

/// OK: reads position, radius, name and text back from the fields, so numbers have two decimals from here on, and
/// appends or replaces. Nothing is asked of the area. Closes the editor; FromIconMenu tells which window comes back.
base::Changed Accept(AreaEditor& editor, AreaCatalogue& catalogue, AreaHistory& history, TextMeasure& texts);
/// Cancel: the area of the catalogue shows again as it was. Closes the editor.
base::Changed Cancel(AreaEditor& editor, AreaCatalogue& catalogue);

/// For what changes WorkArea by itself: fills the box, tells what to draw.
base::Changed WorkAreaChanged(AreaEditor& editor, TextMeasure& texts);
/// Writes X and Y of WorkArea into the fields of its type's panel, with two decimals.
void ShowPosition(AreaEditor& editor);

}  // namespace kestrel::areas
