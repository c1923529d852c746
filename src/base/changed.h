#pragma once

#include <cstdint>

namespace kestrel::base {

/// What a procedure has changed, so that the frame refreshes each marked view once. Procedures return it; whoever calls
/// several of them joins the answers with `|`.
enum class Changed : std::uint32_t {
  Nothing = 0,
  Plots = 1 << 0,            ///< what moves on the map: RedrawPlots
  Map = 1 << 1,              ///< what stands on the map: DrawMap (which draws the plots too)
  MiniMap = 1 << 2,          ///< the mini map's picture or box
  Zoom = 1 << 3,             ///< the text of lblZoom and the zoom slider
  Roster = 1 << 4,           ///< the list of real players
  AIList = 1 << 5,           ///< the list of AI aircraft and their friendly checks
  Connection = 1 << 6,       ///< connected or not: caption, lamp, mnuDisconnect, mnuStartRec
  Activity = 1 << 7,         ///< a command came or went: one pulse of the activity lamp
  NameMenus = 1 << 8,        ///< theater and bullseye menus
  ConnectionMenus = 1 << 9,  ///< phonebook menu
  CursorLine = 1 << 10,      ///< the bearing line, its text and the pointer read-outs
  Tape = 1 << 11,            ///< recording or replay: RecFrm, the recording lamp, what a tape disables
  Transmit = 1 << 12,        ///< the lamps of the three transmit keys
  Options = 1 << 13,         ///< settings that the options window and the clients window show
  Areas = 1 << 14,           ///< folders and groups of areas: AreasFrm; a list of a group's areas that is open
  Frequencies = 1 << 15,     ///< channels, airfields, folders of frequencies: FreqFrm
  Look = 1 << 16,            ///< light or dark: the colours of all windows
};

constexpr Changed operator|(Changed a, Changed b) {
  return static_cast<Changed>(static_cast<std::uint32_t>(a) | static_cast<std::uint32_t>(b));
}
/// What is in both.
constexpr Changed operator&(Changed a, Changed b) {
  return static_cast<Changed>(static_cast<std::uint32_t>(a) & static_cast<std::uint32_t>(b));
}
constexpr Changed& operator|=(Changed& a, Changed b) { return a = a | b; }

/// True when `set` holds any of `asked`.
constexpr bool Has(Changed set, Changed asked) { return (set & asked) != Changed::Nothing; }

}  // namespace kestrel::base
