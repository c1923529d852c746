#include <array>
#include <string>
#include <utility>
#include <vector>

#include "core/settings.h"

namespace kestrel::core {
namespace {

constexpr std::array<std::string_view, ToolWindowCount> toolWindowKeys = {"BULL", "FREQ",  "CLIENTS", "CURSOR",
                                                                          "VIEW", "AREAS", "REC",     "MINIMAP"};

void AddToolWindows(std::vector<SettingsRow>& rows, Station& station) {
  for (std::size_t i = 0; i < ToolWindowCount; ++i) {
    const std::string w(toolWindowKeys[i]);
    ToolWindowState& window = station.ToolWindows[i];
    rows.push_back({"OPTIONS", w + "FORMX", &window.X});
    rows.back().Found = &window.Placed;
    rows.push_back({"OPTIONS", w + "FORMY", &window.Y});
    rows.back().Found = &window.Placed;
    rows.push_back({"OPTIONS", w + "FORMMIN", &window.Minimized});
    rows.push_back({"OPTIONS", w + "FORMHID", &window.Hidden});
    rows.push_back({"OPTIONS", w + "FORMTR", &window.Transparency});
  }
}

void AddViewOptions(std::vector<SettingsRow>& rows, map::Options& map, link::Options& link) {
  const std::string section = "OPTIONS";
  rows.insert(rows.end(), {
                              {section, "BULLSEYEVISIBLE", &link.BULLSEYEVISIBLE},
                              {section, "REALLABELSVISIBLE", &map.REALLABELSVISIBLE},
                              {section, "AILABELSVISIBLE", &map.AILABELSVISIBLE},
                              {section, "REALVISIBLE", &map.REALVISIBLE},
                              {section, "AIVISIBLE", &map.AIVISIBLE},
                              {section, "SHOWHISTORY", &map.SHOWHISTORY},
                              {section, "STATICCURSOR", &map.STATICCURSOR},
                              {section, "MAP_AUTOFOCUS", &map.MAP_AUTOFOCUS},
                              {section, "REFRESHRATE", &map.REFRESHRATE},
                              {section, "AICOLOR", &link.AICOLOR},
                              {section, "AICOLOR_FRIENDS", &map.AICOLOR_FRIENDS},
                              {section, "GRID_PRIM_COLOR", &map.GRID_PRIM_COLOR},
                              {section, "GRID_SEC_COLOR", &map.GRID_SEC_COLOR},
                              {section, "CURSOR_COLOR", &map.CURSOR_COLOR},
                              {section, "CURSOR_TEXT_COOR", &map.CURSOR_TEXT_COOR},
                              {section, "BULLSEYE_COLOR", &map.BULLSEYE_COLOR},
                              {section, "SHOWGRID", &map.SHOWGRID},
                              {section, "SHOWGRID_SEC", &map.SHOWGRID_SEC},
                              {section, "AUTOFRIENDS", &link.AUTOFRIENDS},
                              {section, "SHOWAINAMES", &map.SHOWAINAMES},
                              {section, "SHOWAREANAMES", &map.SHOWAREANAMES},
                              {section, "MINIMAPSCALE", &map.MINIMAPSCALE},
                          });
}

void AddNavaidOptions(std::vector<SettingsRow>& rows, map::Options& map) {
  const std::string section = "OPTIONS";
  rows.insert(rows.end(), {
                              {section, "AIRF_ILS_DIST", &map.AIRF_ILS_DIST, "0.00000"},
                              {section, "AIRF_ILS_ANGLE", &map.AIRF_ILS_ANGLE, "0.00"},
                              {section, "AIRF_ILS_TAIL_ANGLE", &map.AIRF_ILS_TAIL_ANGLE, "0.00"},
                              {section, "AIRF_TACAN_COL", &map.AIRF_TACAN_COL},
                              {section, "AIRF_TACAN_ICO", &map.AIRF_TACAN_ICO},
                              {section, "AIRF_TACAN_RANGE_COL", &map.AIRF_TACAN_RANGE_COL},
                              {section, "AIRF_ILS_COL_0", &map.AIRF_ILS_COL[0]},
                              {section, "AIRF_ILS_COL_1", &map.AIRF_ILS_COL[1]},
                              {section, "AIRF_ILS_COL_2", &map.AIRF_ILS_COL[2]},
                              {section, "AIRF_ILS_COL_3", &map.AIRF_ILS_COL[3]},
                              {section, "DRAW_ILS_LABELS", &map.DRAW_ILS_LABELS},
                              {section, "DRAW_ILS_LABELS_BOXED", &map.DRAW_ILS_LABELS_BOXED},
                              {section, "DRAW_TACAN_LABELS", &map.DRAW_TACAN_LABELS},
                              {section, "DRAW_TACAN_ICON_VISIBLE", &map.DRAW_TACAN_ICON_VISIBLE},
                              {section, "DRAW_TACAN_RANGE_VISIBLE", &map.DRAW_TACAN_RANGE_VISIBLE},
                              {section, "DRAW_TACAN_LABELS_BOXED", &map.DRAW_TACAN_LABELS_BOXED},
                              {section, "TACAN_LABEL_POSITION", &map.TACAN_LABEL_POSITION},
                              {section, "AIRF_SHOW_ALL_ILS", &map.AIRF_SHOW_ALL_ILS},
                          });
}

/// The six keys of a font. `bold` is the whole key, `rest` the beginning of the other five.
void AddFont(std::vector<SettingsRow>& rows, const std::string& bold, const std::string& rest, map::FontRecord& font,
             Access use = Access::ReadWrite) {
  const std::string section = "OPTIONS";
  if (!bold.empty()) rows.push_back({section, bold, &font.FontBold});
  rows.push_back({section, rest + "ITALIC", &font.FontItalic, "0", Reading::Leading, use});
  rows.push_back({section, rest + "NAME", &font.FontName, "0", Reading::Leading, use});
  rows.push_back({section, rest + "SIZE", &font.FontSize, "0.00", Reading::Invariant, use});
  rows.push_back({section, rest + "STRIKE", &font.FontStrike, "0", Reading::Leading, use});
  rows.push_back({section, rest + "UNDER", &font.FontUnder, "0", Reading::Leading, use});
}

void AddFonts(std::vector<SettingsRow>& rows, map::Options& map) {
  AddFont(rows, "ILS_LABEL_FONT_BOLD", "ILS_LABEL_FONT_", map.ILS_LABEL_FONT);
  AddFont(rows, "TACAN_LABEL_FONT_BOLD", "TACAN_LABEL_FONT_", map.TACAN_LABEL_FONT);
  AddFont(rows, "CURSOR_FONT_BOLD", "CURSOR_FONT_", map.CURSOR_FONT);
  rows.push_back({"OPTIONS", "ILS_LABEL_COLOR", &map.ILS_LABEL_FONT.Color, "0", Reading::Invariant});
  rows.push_back({"OPTIONS", "TACAN_LABEL_COLOR", &map.TACAN_LABEL_FONT.Color, "0", Reading::Invariant});
  // The area title font is written under one name and read under another, except for BOLD: this stands.
  map::FontRecord& title = map.AREAS_TITLE_FONT;
  AddFont(rows, "AREAS_TITLE_FONT_BOLD", "AREAS_TITLE_FONT_", title, Access::WriteOnly);
  AddFont(rows, "", "AREAS_FONT_", title, Access::ReadOnly);
}

void AddEditorPositions(std::vector<SettingsRow>& rows, EditorPositions& last) {
  const std::string section = "FRMLASTPOS";
  rows.insert(rows.end(), {
                              {section, "AREADETAILLISTLEFT", &last.AREADETAILLISTLEFT},
                              {section, "AREADETAILLISTTOP", &last.AREADETAILLISTTOP},
                              {section, "AREADETAILLEFT", &last.AREADETAILLEFT},
                              {section, "AREADETAILTOP", &last.AREADETAILTOP},
                              {section, "AREAPOINTLEFT", &last.AREAPOINTLEFT},
                              {section, "AREAPOINTTOP", &last.AREAPOINTTOP},
                              {section, "AREAPOINTFPLEFT", &last.AREAPOINTFPLEFT},
                              {section, "AREAPOINTFPTOP", &last.AREAPOINTFPTOP},
                          });
}

/// The keys of the commands that other stations do not know.
void AddOwnKeys(std::vector<SettingsRow>& rows, OwnBindings& keys) {
  for (std::size_t at = 0; at < keys.size(); ++at) {
    rows.push_back({"KESTREL", std::string(OwnShortcutKeys[at]), &keys[at]});
    rows.back().Spared = true;
  }
}

/// What other stations do not know.
void AddExtras(std::vector<SettingsRow>& rows, Station& station) {
  map::Extras& extras = station.Extras;
  const std::string section = "KESTREL";
  const auto add = [&](SettingsRow row) {
    row.Spared = true;
    rows.push_back(std::move(row));
  };
  add({section, "TIECOLOR", &extras.TIECOLOR});
  add({section, "THREATRING", &extras.THREATRING});
  add({section, "THREATRANGE", &extras.THREATRANGE, "0.00", Reading::Invariant});
  add({section, "THREATCOLOR", &extras.THREATCOLOR});
  add({section, "EYECOLORS", &extras.EYECOLORS});
  add({section, "FORMER_AICOLOR", &extras.FORMER_AICOLOR});
  add({section, "FORMER_AICOLOR_FRIENDS", &extras.FORMER_AICOLOR_FRIENDS});
  add({section, "FORMER_CURSOR_COLOR", &extras.FORMER_CURSOR_COLOR});
  add({section, "FORMER_CURSOR_TEXT_COOR", &extras.FORMER_CURSOR_TEXT_COOR});
  add({section, "FORMER_BULLSEYE_COLOR", &extras.FORMER_BULLSEYE_COLOR});
  add({section, "PLOTCARD", &extras.PLOTCARD});
  add({section, "LABELSAPART", &extras.LABELSAPART});
  add({section, "LABELID", &extras.LABELID});
  add({section, "LABELCALLSIGN", &extras.LABELCALLSIGN});
  add({section, "LABELNAME", &extras.LABELNAME});
  add({section, "LABELALTITUDE", &extras.LABELALTITUDE});
  add({section, "LABELSPEED", &extras.LABELSPEED});
  add({section, "LABELSIZE", &extras.LABELSIZE, "0.00", Reading::Invariant});
  add({section, "MAPBRIGHTNESS", &extras.MAPBRIGHTNESS});
  add({section, "WHEELATPOINTER", &extras.WHEELATPOINTER});
  add({section, "GRIDDEGREES", &extras.GRIDDEGREES});
  add({section, "PICTUREMARGIN", &extras.PICTUREMARGIN});
  add({section, "LOOK", &station.Appearance.LOOK});
}

void AddHealingKeys(std::vector<SettingsRow>& rows, HealingOptions& options) {
  for (const auto& [key, field] : {std::pair{"RECONNECT", &options.RECONNECT}, {"RECORDAGAIN", &options.RECORDAGAIN}}) {
    rows.push_back({"KESTREL", key, field});
    rows.back().Spared = true;
  }
}

/// Of them, what is about sessions.
void AddSessionExtras(std::vector<SettingsRow>& rows, Station& station) {
  rows.push_back({"KESTREL", "REMEMBERCALLSIGNS", &station.Plots.Given.REMEMBERCALLSIGNS});
  rows.back().Spared = true;
  rows.push_back({"KESTREL", "ASKTOLEAVE", &station.SessionExtras.ASKTOLEAVE});
  rows.back().Spared = true;
}

/// The same of windows.
void AddWindowExtras(std::vector<SettingsRow>& rows, WindowExtras& windows) {
  const auto add = [&rows](std::string key, Field field, std::string_view picture = "0") {
    rows.push_back({"KESTREL", std::move(key), field, picture, Reading::Invariant});
    rows.back().Spared = true;
  };
  add("SNAPWINDOWS", &windows.SNAPWINDOWS);
  add("CLIENTSHEIGHT", &windows.CLIENTSHEIGHT);
  add("KEEPFRAME", &windows.KEEPFRAME);
  add("FRAMELEFT", &windows.FRAMELEFT);
  add("FRAMETOP", &windows.FRAMETOP);
  add("FRAMEWIDTH", &windows.FRAMEWIDTH);
  add("FRAMEHEIGHT", &windows.FRAMEHEIGHT);
  add("FRAMEMAX", &windows.FRAMEMAX);
  add("LASTZOOM", &windows.LASTZOOM, "0.000000");
  add("LASTVIEWX", &windows.LASTVIEWX, "0.00");
  add("LASTVIEWY", &windows.LASTVIEWY, "0.00");
  add("LASTTHEATER", &windows.LASTTHEATER);
}

}  // namespace

std::vector<SettingsRow> SettingsTable(Station& station) {
  std::vector<SettingsRow> rows;
  rows.push_back({"LOG", "DEBUG", &station.DebugLog});
  rows.push_back({"MAPS", "TOTALMAPS", &station.Catalogue.Theaters});
  rows.push_back({"MAPS", "CURRENTMAP", &station.Catalogue.CurrentTheater});
  rows.push_back({"OPTIONS", "CONNPORT", &station.LinkOptions.CONNPORT});
  AddToolWindows(rows, station);
  AddViewOptions(rows, station.MapOptions, station.LinkOptions);
  AddNavaidOptions(rows, station.MapOptions);
  AddFonts(rows, station.MapOptions);
  AddEditorPositions(rows, station.Editors);
  rows.push_back({"CONNLIST", "NUM", &station.LinkOptions.ConnList});
  for (std::size_t n = 0; n < ShortcutCount; ++n) {
    rows.push_back({"SHORTCUTS", "KEY" + std::to_string(n), &station.ShortcutKeys[n]});
    rows.back().ZeroIsMissing = true;
  }
  rows.push_back({"IVC_WINDOW_NAME", "NAME", &station.VoiceWindowName});
  AddExtras(rows, station);
  AddHealingKeys(rows, station.HealingOptions);
  AddSessionExtras(rows, station);
  AddOwnKeys(rows, station.OwnKeys);
  AddWindowExtras(rows, station.WindowOptions);
  return rows;
}

}  // namespace kestrel::core
