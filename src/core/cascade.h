#pragma once

#include <cstdint>
#include <span>
#include <vector>

// Where floating windows stand when they are put in order. All in logical units of the desktop, Y growing downward.
namespace kestrel::core {

struct WindowPlace {
  std::int32_t X = 0, Y = 0;
};
struct WindowSize {
  std::int32_t Width = 0, Height = 0;
};
struct WindowArea {
  std::int32_t Left = 0, Top = 0, Right = 0, Bottom = 0;  ///< Right and Bottom are the first units outside
};

/// Room between two windows.
inline constexpr std::int32_t CascadeGap = 120;

/// Places for windows of these sizes, whole within `screen`: the first at `first`, each further one below the one
/// before it or, where that would go below `bottom`, at the top of a new column beside. Columns that leave the screen
/// are moved into it together; where they are too many they reach down to the foot of the screen, and where that is not
/// enough the windows are packed into all of it, the largest first. None overlaps another unless the screen has no room
/// for it even so; such a window still shows its upper left corner.
std::vector<WindowPlace> Cascade(WindowPlace first, std::span<const WindowSize> sizes, std::int32_t bottom,
                                 const WindowArea& screen);

/// Columns that follow one another to the left of `right`, each aligned at its right side, none below `bottom` unless a
/// window is itself too high.
std::vector<WindowPlace> CascadeFromRight(std::int32_t right, std::int32_t top, std::span<const WindowSize> sizes,
                                          std::int32_t bottom);

}  // namespace kestrel::core
