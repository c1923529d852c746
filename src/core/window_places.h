#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "core/cascade.h"

// Where windows come to stand on the screens. All in logical units of the desktop, Y growing downward.
namespace kestrel::core {

/// Settings of windows in section [KESTREL] of the main file; fields named as their keys. Off as the station ships.
struct WindowExtras {
  bool SNAPWINDOWS = false;  ///< a floating window that is dragged snaps to edges
  bool KEEPFRAME = false;    ///< a start takes up the frame and the view as the last closing left them
  // The frame's inside while it is not maximised; a width of 0: none is kept.
  std::int32_t FRAMELEFT = 0, FRAMETOP = 0, FRAMEWIDTH = 0, FRAMEHEIGHT = 0;
  bool FRAMEMAX = false;           ///< maximised
  std::int32_t CLIENTSHEIGHT = 0;  ///< how much taller than it comes the window Clients is, pixels
  // The view, and the file of the theater that it shows.
  double LASTZOOM = 0;
  double LASTVIEWX = 0, LASTVIEWY = 0;
  std::string LASTTHEATER;
};

/// How near an edge must be for a window to snap to it: 8 pixels.
inline constexpr std::int32_t SnapDistance = 8 * 15;

/// Where the window stands when it is whole on the screen, or shows its upper left corner where it is too large.
WindowPlace Inside(WindowPlace place, WindowSize size, const WindowArea& screen);

/// The number of the screen whose area is nearest to the middle of the window's caption, counted from 0. There is one.
std::size_t NearestScreen(WindowPlace place, WindowSize size, std::span<const WindowArea> screens);

/// The place itself where a screen shows enough of the window's caption to drag it by, all of its height and 48 pixels
/// of its width; otherwise the nearest place on the nearest screen. Without a screen it stays.
WindowPlace OnAScreen(WindowPlace place, WindowSize size, std::span<const WindowArea> screens);

/// Where a window that is dragged to `place` stands: a side that comes within SnapDistance of a side of the frame, or
/// of another window, lies at that, if the two are beside each other at all. The nearest counts, each direction for
/// itself.
WindowPlace Snapped(WindowPlace place, WindowSize size, const WindowArea& frame, std::span<const WindowArea> others);

}  // namespace kestrel::core
