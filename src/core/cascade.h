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

/// Room between two windows.
inline constexpr std::int32_t CascadeGap = 120;

/// Places for windows of these sizes: the first at `first`, each further one below the one before it or, where that
/// would go below `bottom`, at the top of a new column beside. None overlaps another, and none reaches below `bottom`
/// unless it is itself too high.
std::vector<WindowPlace> Cascade(WindowPlace first, std::span<const WindowSize> sizes, std::int32_t bottom);

/// The same from the right: the columns follow one another to the left of `right`, each aligned at its right side.
std::vector<WindowPlace> CascadeFromRight(std::int32_t right, std::int32_t top, std::span<const WindowSize> sizes,
                                          std::int32_t bottom);

}  // namespace kestrel::core
