#include "core/window_places.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace kestrel::core {
namespace {

/// The caption strip, and how much of it must be seen.
constexpr std::int32_t CaptionHeight = 20 * 15, EnoughOfCaption = 48 * 15;

/// One direction of a window, or of what it may snap to.
struct Extent {
  std::int32_t Begin = 0, End = 0;
};

bool Beside(const Extent& a, const Extent& b) {
  return a.Begin <= b.End + SnapDistance && b.Begin <= a.End + SnapDistance;
}

/// The shortest way to an edge.
class Nearest {
 public:
  void Try(std::int64_t way) {
    if (std::abs(way) <= SnapDistance && (!found || std::abs(way) < std::abs(*found))) found = way;
  }
  std::int32_t Way() const { return static_cast<std::int32_t>(found.value_or(0)); }

 private:
  std::optional<std::int64_t> found;
};

/// Sides that face each other meet, and those that look the same way stand in line.
void TrySides(Nearest& nearest, const Extent& moved, const Extent& other) {
  nearest.Try(std::int64_t{other.Begin} - moved.Begin);
  nearest.Try(std::int64_t{other.End} - moved.End);
  nearest.Try(std::int64_t{other.End} - moved.Begin);
  nearest.Try(std::int64_t{other.Begin} - moved.End);
}

}  // namespace

WindowPlace Inside(WindowPlace place, WindowSize size, const WindowArea& screen) {
  return {std::max(screen.Left, std::min(place.X, screen.Right - size.Width)),
          std::max(screen.Top, std::min(place.Y, screen.Bottom - size.Height))};
}

std::size_t NearestScreen(WindowPlace place, WindowSize size, std::span<const WindowArea> screens) {
  const std::int64_t x = std::int64_t{place.X} + size.Width / 2, y = std::int64_t{place.Y} + CaptionHeight / 2;
  const auto distance = [x, y](const WindowArea& each) {
    return std::abs(std::clamp<std::int64_t>(x, each.Left, each.Right - 1) - x) +
           std::abs(std::clamp<std::int64_t>(y, each.Top, each.Bottom - 1) - y);
  };
  const auto nearest = std::min_element(
      screens.begin(), screens.end(), [&distance](const auto& a, const auto& b) { return distance(a) < distance(b); });
  return static_cast<std::size_t>(nearest - screens.begin());
}

WindowPlace OnAScreen(WindowPlace place, WindowSize size, std::span<const WindowArea> screens) {
  const std::int64_t right = std::int64_t{place.X} + size.Width, bottom = std::int64_t{place.Y} + CaptionHeight;
  for (const WindowArea& each : screens) {
    const std::int64_t seen = std::min<std::int64_t>(right, each.Right) - std::max(place.X, each.Left);
    if (place.Y >= each.Top && bottom <= each.Bottom && seen >= std::min(EnoughOfCaption, size.Width)) return place;
  }
  return screens.empty() ? place : Inside(place, size, screens[NearestScreen(place, size, screens)]);
}

WindowPlace Snapped(WindowPlace place, WindowSize size, const WindowArea& frame, std::span<const WindowArea> others) {
  const Extent across{place.X, place.X + size.Width}, down{place.Y, place.Y + size.Height};
  Nearest x, y;
  const auto tryArea = [&](const WindowArea& area) {
    if (Beside(down, {area.Top, area.Bottom})) TrySides(x, across, {area.Left, area.Right});
    if (Beside(across, {area.Left, area.Right})) TrySides(y, down, {area.Top, area.Bottom});
  };
  tryArea(frame);
  for (const WindowArea& each : others) tryArea(each);
  return {place.X + x.Way(), place.Y + y.Way()};
}

}  // namespace kestrel::core
