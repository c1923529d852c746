#include <array>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "core/settings.h"

namespace kestrel::core {
namespace {

constexpr std::array<std::string_view, ToolWindowCount> toolWindowKeys = {"BULL", "FREQ",  "CLIENTS", "CURSOR",
                                                                          "VIEW", "AREAS", "REC",     "MINIMAP"};

void AddToolWindows(std::vector<SettingsRow>& rows, Station& station) {
  for (std::size_t i = 0; i < ToolWindowCount; ++i) {
    const std::string w(toolWindowKeys[i]);
    ToolWindowState& window = station.ToolWindows[i];
    rows.push_back({"OPTIONS", w + "FORMX", "", &window.X});
    rows.back().Found = &window.Placed;
    rows.push_back({"OPTIONS", w + "FORMY", "", &window.Y});
    rows.back().Found = &window.Placed;
    rows.push_back({"OPTIONS", w + "FORMMIN", "1", &window.Minimized});
    rows.push_back({"OPTIONS", w + "FORMHID", "0", &window.Hidden});
    rows.push_back({"OPTIONS", w + "FORMTR", "255", &window.Transparency});
  }
}

void AddViewOptions(std::vector<SettingsRow>& rows, map::Options& map, link::Options& link) {
  const std::string section = "OPTIONS";
  rows.insert(rows.end(), {
                              {section, "BULLSEYEVISIBLE", "1", &link.BULLSEYEVISIBLE},
                              {section, "REALLABELSVISIBLE", "1", &map.REALLABELSVISIBLE},
                              {section, "AILABELSVISIBLE", "1", &map.AILABELSVISIBLE},
                              {section, "REALVISIBLE", "1", &map.REALVISIBLE},
                              {section, "AIVISIBLE", "1", &map.AIVISIBLE},
                              {section, "SHOWHISTORY", "1", &map.SHOWHISTORY},
                              {section, "STATICCURSOR", "0", &map.STATICCURSOR},
                              {section, "MAP_AUTOFOCUS", "1", &map.MAP_AUTOFOCUS},
                              {section, "REFRESHRATE", "10", &map.REFRESHRATE},
                              {section, "AICOLOR", "255", &link.AICOLOR},
                              {section, "AICOLOR_FRIENDS", "16711680", &map.AICOLOR_FRIENDS},
                              {section, "GRID_PRIM_COLOR", "0", &map.GRID_PRIM_COLOR},
                              {section, "GRID_SEC_COLOR", "14737632", &map.GRID_SEC_COLOR},
                              {section, "CURSOR_COLOR", "16711935", &map.CURSOR_COLOR},
                              {section, "CURSOR_TEXT_COOR", "16711680", &map.CURSOR_TEXT_COOR},
                              {section, "BULLSEYE_COLOR", "16711680", &map.BULLSEYE_COLOR},
                              {section, "SHOWGRID", "1", &map.SHOWGRID},
                              {section, "SHOWGRID_SEC", "1", &map.SHOWGRID_SEC},
                              {section, "AUTOFRIENDS", "1", &link.AUTOFRIENDS},
                              {section, "SHOWAINAMES", "1", &map.SHOWAINAMES},
                              {section, "SHOWAREANAMES", "1", &map.SHOWAREANAMES},
                              {section, "MINIMAPSCALE", "5", &map.MINIMAPSCALE},
                          });
}

void AddNavaidOptions(std::vector<SettingsRow>& rows, map::Options& map) {
  const std::string section = "OPTIONS";
  rows.insert(rows.end(), {
                              {section, "AIRF_ILS_DIST", "10", &map.AIRF_ILS_DIST, "0.00000"},
                              {section, "AIRF_ILS_ANGLE", "5", &map.AIRF_ILS_ANGLE, "0.00"},
                              {section, "AIRF_ILS_TAIL_ANGLE", "60", &map.AIRF_ILS_TAIL_ANGLE, "0.00"},
                              {section, "AIRF_TACAN_COL", "0", &map.AIRF_TACAN_COL},
                              {section, "AIRF_TACAN_ICO", "20", &map.AIRF_TACAN_ICO},
                              {section, "AIRF_TACAN_RANGE_COL", "0", &map.AIRF_TACAN_RANGE_COL},
                              {section, "AIRF_ILS_COL_0", "0", &map.AIRF_ILS_COL[0]},
                              {section, "AIRF_ILS_COL_1", "0", &map.AIRF_ILS_COL[1]},
                              {section, "AIRF_ILS_COL_2", "0", &map.AIRF_ILS_COL[2]},
                              {section, "AIRF_ILS_COL_3", "0", &map.AIRF_ILS_COL[3]},
                              {section, "DRAW_ILS_LABELS", "1", &map.DRAW_ILS_LABELS},
                              {section, "DRAW_ILS_LABELS_BOXED", "1", &map.DRAW_ILS_LABELS_BOXED},
                              {section, "DRAW_TACAN_LABELS", "1", &map.DRAW_TACAN_LABELS},
                              {section, "DRAW_TACAN_ICON_VISIBLE", "1", &map.DRAW_TACAN_ICON_VISIBLE},
                              {section, "DRAW_TACAN_RANGE_VISIBLE", "1", &map.DRAW_TACAN_RANGE_VISIBLE},
                              {section, "DRAW_TACAN_LABELS_BOXED", "1", &map.DRAW_TACAN_LABELS_BOXED},
                              {section, "TACAN_LABEL_POSITION", "0", &map.TACAN_LABEL_POSITION},
                              {section, "AIRF_SHOW_ALL_ILS", "1", &map.AIRF_SHOW_ALL_ILS},
                          });
}

/// The six keys of a font. `bold` is the whole key, `rest` the beginning of the other five.
void AddFont(std::vector<SettingsRow>& rows, const std::string& bold, const std::string& rest, map::FontRecord& font,
             const map::FontRecord& standard, Access use) {
  const std::string section = "OPTIONS";
  if (!bold.empty()) rows.push_back({section, bold, standard.FontBold ? "1" : "0", &font.FontBold});
  rows.push_back({section, rest + "ITALIC", "0", &font.FontItalic, "0", Reading::Leading, use});
  rows.push_back({section, rest + "NAME", standard.FontName, &font.FontName, "0", Reading::Leading, use});
  rows.push_back({section, rest + "SIZE", "10", &font.FontSize, "0.00", Reading::Invariant, use});
  rows.push_back({section, rest + "STRIKE", "0", &font.FontStrike, "0", Reading::Leading, use});
  rows.push_back({section, rest + "UNDER", "0", &font.FontUnder, "0", Reading::Leading, use});
}

void AddFonts(std::vector<SettingsRow>& rows, map::Options& map) {
  const map::Options standard;
  const auto whole = [&](const std::string& prefix, map::FontRecord& font, const map::FontRecord& like) {
    AddFont(rows, prefix + "BOLD", prefix, font, like, Access::ReadWrite);
  };
  whole("ILS_LABEL_FONT_", map.ILS_LABEL_FONT, standard.ILS_LABEL_FONT);
  whole("TACAN_LABEL_FONT_", map.TACAN_LABEL_FONT, standard.TACAN_LABEL_FONT);
  whole("CURSOR_FONT_", map.CURSOR_FONT, standard.CURSOR_FONT);
  rows.push_back({"OPTIONS", "ILS_LABEL_COLOR", "0", &map.ILS_LABEL_FONT.Color, "0", Reading::Invariant});
  rows.push_back({"OPTIONS", "TACAN_LABEL_COLOR", "0", &map.TACAN_LABEL_FONT.Color, "0", Reading::Invariant});
  // The area title font is written under one name and read under another, except for BOLD: this stands.
  map::FontRecord& title = map.AREAS_TITLE_FONT;
  AddFont(rows, "AREAS_TITLE_FONT_BOLD", "AREAS_TITLE_FONT_", title, standard.AREAS_TITLE_FONT, Access::WriteOnly);
  AddFont(rows, "", "AREAS_FONT_", title, standard.AREAS_TITLE_FONT, Access::ReadOnly);
}

void AddEditorPositions(std::vector<SettingsRow>& rows, EditorPositions& last) {
  const std::string section = "FRMLASTPOS";
  rows.insert(rows.end(), {
                              {section, "AREADETAILLISTLEFT", "", &last.AREADETAILLISTLEFT},
                              {section, "AREADETAILLISTTOP", "", &last.AREADETAILLISTTOP},
                              {section, "AREADETAILLEFT", "", &last.AREADETAILLEFT},
                              {section, "AREADETAILTOP", "", &last.AREADETAILTOP},
                              {section, "AREAPOINTLEFT", "", &last.AREAPOINTLEFT},
                              {section, "AREAPOINTTOP", "", &last.AREAPOINTTOP},
                              {section, "AREAPOINTFPLEFT", "", &last.AREAPOINTFPLEFT},
                              {section, "AREAPOINTFPTOP", "", &last.AREAPOINTFPTOP},
                          });
}

}  // namespace

std::vector<SettingsRow> SettingsTable(Station& station) {
  std::vector<SettingsRow> rows;
  rows.push_back({"LOG", "DEBUG", "0", &station.DebugLog});
  rows.push_back({"MAPS", "TOTALMAPS", "0", &station.Catalogue.Theaters});
  rows.push_back({"MAPS", "CURRENTMAP", "", &station.Catalogue.CurrentTheater});
  rows.push_back({"OPTIONS", "CONNPORT", "5556", &station.LinkOptions.CONNPORT});
  AddToolWindows(rows, station);
  AddViewOptions(rows, station.MapOptions, station.LinkOptions);
  AddNavaidOptions(rows, station.MapOptions);
  AddFonts(rows, station.MapOptions);
  AddEditorPositions(rows, station.Editors);
  rows.push_back({"CONNLIST", "NUM", "0", &station.LinkOptions.ConnList});
  for (std::size_t n = 0; n < ShortcutCount; ++n) {
    rows.push_back({"SHORTCUTS", "KEY" + std::to_string(n), base::FormatInvariant(Shortcuts[n].Default, "0"),
                    &station.ShortcutKeys[n]});
    rows.back().ZeroIsMissing = true;
  }
  rows.push_back({"IVC_WINDOW_NAME", "NAME", "IVC Client", &station.VoiceWindowName});
  return rows;
}

}  // namespace kestrel::core
