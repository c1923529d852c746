#pragma once

#include <array>
#include <cstdint>

#include "base/colour.h"
#include "base/font.h"

namespace kestrel::map {

using base::FontRecord;

/// Settings of the map; fields named as their keys.
struct Options {
  bool REALLABELSVISIBLE = true;
  bool AILABELSVISIBLE = true;
  bool REALVISIBLE = true;
  bool AIVISIBLE = true;
  bool SHOWHISTORY = true;
  bool STATICCURSOR = false;
  bool MAP_AUTOFOCUS = true;
  std::int32_t REFRESHRATE = 10;  ///< kept in the settings; nothing depends on it
  base::Colour AICOLOR_FRIENDS = 16711680;
  base::Colour GRID_PRIM_COLOR = 0;
  base::Colour GRID_SEC_COLOR = 14737632;
  base::Colour CURSOR_COLOR = 16711935;
  base::Colour CURSOR_TEXT_COOR = 16711680;
  base::Colour BULLSEYE_COLOR = 16711680;
  bool SHOWGRID = true;
  bool SHOWGRID_SEC = true;
  bool SHOWAINAMES = true;
  bool SHOWAREANAMES = true;
  std::int16_t MINIMAPSCALE = 5;    ///< view-unit pixels to the mini map's pixel
  double AIRF_ILS_DIST = 10;        ///< nautical miles
  double AIRF_ILS_ANGLE = 5;        ///< degrees
  double AIRF_ILS_TAIL_ANGLE = 60;  ///< degrees
  base::Colour AIRF_TACAN_COL = 0;
  std::int32_t AIRF_TACAN_ICO = 20;
  base::Colour AIRF_TACAN_RANGE_COL = 0;
  std::array<base::Colour, 4> AIRF_ILS_COL = {};
  bool DRAW_ILS_LABELS = true;
  bool DRAW_ILS_LABELS_BOXED = true;
  bool DRAW_TACAN_LABELS = true;
  bool DRAW_TACAN_ICON_VISIBLE = true;
  bool DRAW_TACAN_RANGE_VISIBLE = true;
  bool DRAW_TACAN_LABELS_BOXED = true;
  std::int32_t TACAN_LABEL_POSITION = 0;  ///< 0..3; 4 and above select no option button
  bool AIRF_SHOW_ALL_ILS = true;
  FontRecord ILS_LABEL_FONT;    ///< its Color is ILS_LABEL_COLOR
  FontRecord TACAN_LABEL_FONT;  ///< its Color is TACAN_LABEL_COLOR
  FontRecord CURSOR_FONT{.FontName = "OCR A Extended", .FontBold = true};
  FontRecord AREAS_TITLE_FONT;
};

/// The font of all plot labels, set when the map window loads; but for its size fixed in this version.
struct LabelFont {
  static constexpr const char* Name = "MS Sans Serif";
  float Size = 8;  ///< points
  bool Bold = false;
  bool Italic = false;
};
/// So many percent of it; below 50 it is 50, above 300 it is 300.
LabelFont SizedLabelFont(double percent);

/// Which lines of a player's label are shown, in their order.
struct LabelLines {
  bool Id = true;
  bool Callsign = true;
  bool Name = true;
  bool Altitude = true;
  bool Speed = true;
};

}  // namespace kestrel::map
