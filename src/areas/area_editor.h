#pragma once

#include <cstdint>
#include <vector>

#include "areas/area.h"

namespace kestrel::areas {

/// The editor of one area. It works on a copy, which the map shows above what moves; the catalogue changes at OK.
struct AreaEditor {
  bool Open = false;
  bool AreaEditMode = false;  ///< clicks on the map go to the editor
  Area WorkArea;
  bool IsNew = true;                      ///< OK appends to the group; otherwise it replaces
  std::int32_t GroupIndex = 0;            ///< of AreaGroups, from 1
  std::int32_t AreaIndex = 0;             ///< in the group, from 1; not used when IsNew
  bool FromIconMenu = false;              ///< opened from the map's menu, not from the area list
  bool FirstPointPending = true;          ///< Region: the next click starts a segment
  bool SingleClick = false;               ///< Region: each click after the first adds a segment from the last point
  bool BulkDelete = false;                ///< Region: segments are being checked; clicks on the map are ignored
  double X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;  ///< the point or segment that is being added
  double Z = 0;
  areas::PointType PointType = areas::PointType::Nav;
  std::size_t Selected = 0;   ///< row of Lines or Points, from 1; 0 none
  std::vector<bool> Checked;  ///< of Lines, from 0; while BulkDelete
};

/// The segments of WorkArea that are drawn with emphasis, by their index from 1: of a Region the checked ones while
/// BulkDelete, otherwise the selected one.
std::vector<std::size_t> HighLights(const AreaEditor& editor);

}  // namespace kestrel::areas
