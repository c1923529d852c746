#include "core/view_options.h"

#include <algorithm>
#include <stdexcept>

#include "base/numbers.h"
#include "core/debug_files.h"
#include "core/friends.h"
#include "core/healing.h"
#include "link/roster.h"

namespace kestrel::core {
namespace {

using base::Changed;

/// An angle goes from 0 up to this, degrees.
constexpr double GreatestAngle = 180;

void LabelEveryClient(Program& program) {
  link::ShowLabels(program.State.MapOptions.REALLABELSVISIBLE, program.State.Plots);
}

void CopyBullseye(Program& program) { program.State.View.BullseyeVisible = program.State.LinkOptions.BULLSEYEVISIBLE; }

void AddViewPanel(std::vector<OptionRow>& rows, map::Options& map, link::Options& link) {
  rows.insert(rows.end(),
              {
                  {"Check1", &map.REALVISIBLE, Changed::Plots},
                  {"Check2", &map.AIVISIBLE, Changed::Plots},
                  {"Check4", &map.REALLABELSVISIBLE, Changed::Plots, LabelEveryClient},
                  {"Check6", &map.AILABELSVISIBLE, Changed::Plots},
                  {"Check3", &link.BULLSEYEVISIBLE, Changed::Map, CopyBullseye},
                  {"Check5", &map.SHOWHISTORY, Changed::Plots},
                  {"Check9", &map.SHOWAREANAMES, Changed::Map},
                  {"chkShowLat", &map.SHOWGRID, Changed::Map},
                  {"chkGrid30Resolution", &map.SHOWGRID_SEC, Changed::Map},
                  {"cmdAIEnemy", &link.AICOLOR, Changed::Plots},
                  {"cmdAIFriends", &map.AICOLOR_FRIENDS, Changed::Plots},
                  {"cmdGridPrimCol", &map.GRID_PRIM_COLOR, Changed::Map},
                  {"cmdGridSecCol", &map.GRID_SEC_COLOR, Changed::Map},
                  {"cmdBullseyeColor", &map.BULLSEYE_COLOR, Changed::Map},
                  // The line and its text lie over the map: no redraw.
                  {"cmdCursorCol", &map.CURSOR_COLOR, Changed::CursorLine},
                  {"cmdCursorTextColor", &map.CURSOR_TEXT_COOR, Changed::CursorLine},
                  {"cmdCursorFont", FontField{&map.CURSOR_FONT, &map.CURSOR_TEXT_COOR}, Changed::CursorLine},
                  {"cmdAreaNameFont", FontField{&map.AREAS_TITLE_FONT, nullptr}, Changed::Map},
              });
}

void AddOptionsPanel(std::vector<OptionRow>& rows, Station& station) {
  map::Options& map = station.MapOptions;
  rows.insert(rows.end(), {
                              {"chkDebug", &station.DebugLog, Changed::Nothing, FollowDebug},
                              {"chkMapAutofocus", &map.MAP_AUTOFOCUS, Changed::Nothing},
                              {"Check7", &station.LinkOptions.AUTOFRIENDS, Changed::Options, TakeFriends},
                              {"Check8", &map.SHOWAINAMES, Changed::Plots},
                              {"Combo1", &map.MINIMAPSCALE, Changed::MiniMap},
                          });
}

void AddNavaids(std::vector<OptionRow>& rows, map::Options& map) {
  map::FontRecord& ils = map.ILS_LABEL_FONT;
  map::FontRecord& tacan = map.TACAN_LABEL_FONT;
  rows.insert(rows.end(), {
                              {"chkShowTACANRange", &map.DRAW_TACAN_RANGE_VISIBLE, Changed::Map},
                              {"chkShowTACANIcon", &map.DRAW_TACAN_ICON_VISIBLE, Changed::Map},
                              {"chkTACANLabels", &map.DRAW_TACAN_LABELS, Changed::Map},
                              {"chkTACANLabelsBoxed", &map.DRAW_TACAN_LABELS_BOXED, Changed::Map},
                              {"chkILSLabels", &map.DRAW_ILS_LABELS, Changed::Map},
                              {"chkILSLabelsBoxed", &map.DRAW_ILS_LABELS_BOXED, Changed::Map},
                              {"chkShowAll", &map.AIRF_SHOW_ALL_ILS, Changed::Map},
                              {"cmbSelectIcon", &map.AIRF_TACAN_ICO, Changed::Map},
                              {"OptTACANLabelPos", &map.TACAN_LABEL_POSITION, Changed::Map},
                              {"txtILSDrawDist", &map.AIRF_ILS_DIST, Changed::Map},
                              {"txtILSAngle", &map.AIRF_ILS_ANGLE, Changed::Map, nullptr, GreatestAngle},
                              {"txtTailAngle", &map.AIRF_ILS_TAIL_ANGLE, Changed::Map, nullptr, GreatestAngle},
                              {"cmdILS1Col_0", &map.AIRF_ILS_COL[0], Changed::Map},
                              {"cmdILS1Col_1", &map.AIRF_ILS_COL[1], Changed::Map},
                              {"cmdILS1Col_2", &map.AIRF_ILS_COL[2], Changed::Map},
                              {"cmdILS1Col_3", &map.AIRF_ILS_COL[3], Changed::Map},
                              {"cmdTCCircleCol", &map.AIRF_TACAN_RANGE_COL, Changed::Map},
                              {"cmdTCIconCol", &map.AIRF_TACAN_COL, Changed::Map},
                              {"cmdColorILS", &ils.Color, Changed::Map},
                              {"cmdFontILS", FontField{&ils, &ils.Color}, Changed::Map},
                              {"cmdColorTACAN", &tacan.Color, Changed::Map},
                              {"cmdFontTACAN", FontField{&tacan, &tacan.Color}, Changed::Map},
                          });
}

void AddExtras(std::vector<OptionRow>& rows, Station& station) {
  map::Extras& extras = station.Extras;
  rows.insert(rows.end(), {
                              {"cmdTieCol", &extras.TIECOLOR, Changed::Plots},
                              {"chkThreatRing", &extras.THREATRING, Changed::Plots},
                              {"txtThreatRange", &extras.THREATRANGE, Changed::Plots},
                              {"cmdThreatCol", &extras.THREATCOLOR, Changed::Plots},
                              // The card lies over the map: no redraw.
                              {"chkPlotCard", &extras.PLOTCARD, Changed::Nothing},
                              {"sldMapBrightness", &extras.MAPBRIGHTNESS, Changed::Map},
                              {"cmbLook", &station.Appearance.LOOK, Changed::Look},
                              {"chkWheelAtPointer", &extras.WHEELATPOINTER, Changed::Nothing},
                              {"chkGridDegrees", &extras.GRIDDEGREES, Changed::Map},
                              {"chkPictureMargin", &extras.PICTUREMARGIN, Changed::Nothing},
                              {"chkLabelsApart", &extras.LABELSAPART, Changed::Plots},
                              {"chkLabelId", &extras.LABELID, Changed::Plots},
                              {"chkLabelCallsign", &extras.LABELCALLSIGN, Changed::Plots},
                              {"chkLabelName", &extras.LABELNAME, Changed::Plots},
                              {"chkLabelAltitude", &extras.LABELALTITUDE, Changed::Plots},
                              {"chkLabelSpeed", &extras.LABELSPEED, Changed::Plots},
                              {"txtLabelSize", &extras.LABELSIZE, Changed::Plots},
                          });
}

void AddHealingOptions(std::vector<OptionRow>& rows, HealingOptions& options) {
  rows.insert(rows.end(), {
                              {"chkReconnect", &options.RECONNECT, Changed::Connection, FollowReconnect},
                              {"chkRecordAgain", &options.RECORDAGAIN, Changed::Nothing},
                          });
}

/// What comes back with players comes back at once.
void RecallLooks(Program& program) { link::RecallLooks(program.State.Plots); }

void AddSessionExtras(std::vector<OptionRow>& rows, Station& station) {
  bool& remember = station.Plots.Given.REMEMBERCALLSIGNS;
  rows.push_back({"chkRememberCallsigns", &remember, Changed::Plots | Changed::Roster, RecallLooks});
  rows.push_back({"chkAskToLeave", &station.SessionExtras.ASKTOLEAVE, Changed::Nothing});
}

void AddWindowExtras(std::vector<OptionRow>& rows, WindowExtras& windows) {
  rows.insert(rows.end(), {
                              {"chkSnapWindows", &windows.SNAPWINDOWS, Changed::Nothing},
                              {"chkKeepFrame", &windows.KEEPFRAME, Changed::Nothing},
                          });
}

constexpr std::int16_t scales[] = {2, 3, 4, 5, 6, 8, 10, 12, 16, 20};
/// There is no shape 23.
constexpr std::int32_t icons[] = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14,
                                  15, 16, 17, 18, 19, 20, 21, 22, 24, 25, 26, 27, 28, 29};

}  // namespace

std::vector<OptionRow> OptionsTable(Station& station) {
  std::vector<OptionRow> rows;
  AddViewPanel(rows, station.MapOptions, station.LinkOptions);
  AddOptionsPanel(rows, station);
  AddNavaids(rows, station.MapOptions);
  AddExtras(rows, station);
  AddHealingOptions(rows, station.HealingOptions);
  AddSessionExtras(rows, station);
  AddWindowExtras(rows, station.WindowOptions);
  return rows;
}

const OptionRow& RowOf(std::span<const OptionRow> rows, std::string_view control) {
  const auto found =
      std::find_if(rows.begin(), rows.end(), [control](const OptionRow& row) { return row.Control == control; });
  if (found == rows.end()) throw std::out_of_range("no option of this name: " + std::string(control));
  return *found;
}

Changed ToggleOption(Program& program, std::string_view control) {
  const std::vector<OptionRow> rows = OptionsTable(program.State);
  const OptionRow& row = RowOf(rows, control);
  return SetOption(program, row, !*std::get<bool*>(row.Bound)) | Changed::Options;
}

Changed SetFont(Program& program, const OptionRow& row, const base::FontRecord& font) {
  const FontField& field = std::get<FontField>(row.Bound);
  const base::Colour own = field.Font->Color;
  *field.Font = font;
  // The colour goes to its setting, which may be another than the font's own.
  field.Font->Color = own;
  if (field.Color != nullptr) *field.Color = font.Color;
  if (row.Also != nullptr) row.Also(program);
  return row.Redraw;
}

base::FontRecord FontOf(const OptionRow& row) {
  const FontField& field = std::get<FontField>(row.Bound);
  base::FontRecord font = *field.Font;
  if (field.Color != nullptr) font.Color = *field.Color;
  return font;
}

TypedNumber ReadTyped(const OptionRow& row, std::string text) {
  const double value = base::ParseInvariantNumber(text);
  const bool outOfRange = row.Greatest > 0 && !(value >= 0 && value <= row.Greatest);
  return {outOfRange ? 0 : value, outOfRange};
}

std::string TypedText(double value) { return base::FormatInvariant(value, "0.00"); }

std::span<const std::int16_t> MiniMapScales() { return scales; }
std::span<const std::int32_t> TacanIcons() { return icons; }

}  // namespace kestrel::core
