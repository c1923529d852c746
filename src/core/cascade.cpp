#include "core/cascade.h"

#include <algorithm>

namespace kestrel::core {

std::vector<WindowPlace> Cascade(WindowPlace first, std::span<const WindowSize> sizes, std::int32_t bottom) {
  std::vector<WindowPlace> places;
  places.reserve(sizes.size());
  WindowPlace next = first;
  std::int32_t widest = 0;
  for (const WindowSize& size : sizes) {
    if (next.Y != first.Y && next.Y + size.Height > bottom) {
      next = {next.X + widest + CascadeGap, first.Y};
      widest = 0;
    }
    places.push_back(next);
    widest = std::max(widest, size.Width);
    next.Y += size.Height + CascadeGap;
  }
  return places;
}

std::vector<WindowPlace> CascadeFromRight(std::int32_t right, std::int32_t top, std::span<const WindowSize> sizes,
                                          std::int32_t bottom) {
  std::vector<WindowPlace> places = Cascade({0, top}, sizes, bottom);
  for (std::size_t index = 0; index < places.size(); ++index) {
    places[index].X = right - places[index].X - sizes[index].Width;
  }
  return places;
}

}  // namespace kestrel::core
