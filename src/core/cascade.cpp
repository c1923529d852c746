#include "core/cascade.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "core/window_places.h"

namespace kestrel::core {
namespace {

/// How far each window that finds no room stands from the one before it: the height of a caption.
constexpr std::int32_t CaptionStep = 300;

std::vector<WindowPlace> Columns(WindowPlace first, std::span<const WindowSize> sizes, std::int32_t bottom) {
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

WindowArea AreaOf(WindowPlace place, WindowSize size) {
  return {place.X, place.Y, place.X + size.Width, place.Y + size.Height};
}

bool Overlap(const WindowArea& a, const WindowArea& b) {
  return a.Left < b.Right && b.Left < a.Right && a.Top < b.Bottom && b.Top < a.Bottom;
}

bool Within(const WindowArea& inner, const WindowArea& outer) {
  return inner.Left >= outer.Left && inner.Top >= outer.Top && inner.Right <= outer.Right &&
         inner.Bottom <= outer.Bottom;
}

/// Moves all windows together so that they are within `screen`. False when they are too many for it.
bool MoveInside(std::vector<WindowPlace>& places, std::span<const WindowSize> sizes, const WindowArea& screen) {
  WindowArea block = AreaOf(places.front(), sizes.front());
  for (std::size_t index = 1; index < places.size(); ++index) {
    const WindowArea each = AreaOf(places[index], sizes[index]);
    block.Right = std::max(block.Right, each.Right);
    block.Bottom = std::max(block.Bottom, each.Bottom);
  }
  const WindowSize size{block.Right - block.Left, block.Bottom - block.Top};
  const WindowPlace moved = Inside(places.front(), size, screen);
  for (WindowPlace& place : places) {
    place.X += moved.X - block.Left;
    place.Y += moved.Y - block.Top;
  }
  return Within(AreaOf(moved, size), screen);
}

/// The highest free place, the leftmost of these; it lies at the corner of the screen or beside what is `taken`.
std::optional<WindowPlace> FreePlace(WindowSize size, std::span<const WindowArea> taken, const WindowArea& screen) {
  std::vector<std::int32_t> columns = {screen.Left}, rows = {screen.Top};
  for (const WindowArea& each : taken) {
    columns.push_back(each.Right);
    rows.push_back(each.Bottom);
  }
  std::sort(columns.begin(), columns.end());
  std::sort(rows.begin(), rows.end());
  for (const std::int32_t y : rows) {
    for (const std::int32_t x : columns) {
      const WindowArea area = AreaOf({x, y}, size);
      const auto inTheWay = [&area](const WindowArea& each) { return Overlap(area, each); };
      if (Within(area, screen) && std::none_of(taken.begin(), taken.end(), inTheWay)) return WindowPlace{x, y};
    }
  }
  return std::nullopt;
}

std::vector<WindowPlace> Pack(std::span<const WindowSize> sizes, const WindowArea& screen) {
  std::vector<std::size_t> order(sizes.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  const auto extent = [&sizes](std::size_t index) {
    return static_cast<std::int64_t>(sizes[index].Width) * sizes[index].Height;
  };
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return extent(a) > extent(b); });
  std::vector<WindowPlace> places(sizes.size());
  std::vector<WindowArea> taken;
  WindowPlace over{screen.Left, screen.Top};
  for (const std::size_t index : order) {
    if (const std::optional<WindowPlace> free = FreePlace(sizes[index], taken, screen)) {
      places[index] = *free;
      taken.push_back(AreaOf(*free, sizes[index]));
    } else {
      over = {over.X + CaptionStep, over.Y + CaptionStep};
      places[index] = Inside(over, sizes[index], screen);
    }
  }
  return places;
}

}  // namespace

std::vector<WindowPlace> Cascade(WindowPlace first, std::span<const WindowSize> sizes, std::int32_t bottom,
                                 const WindowArea& screen) {
  if (sizes.empty()) return {};
  for (const std::int32_t end : {std::min(bottom, screen.Bottom), screen.Bottom}) {
    std::vector<WindowPlace> places = Columns(first, sizes, end);
    if (MoveInside(places, sizes, screen)) return places;
  }
  return Pack(sizes, screen);
}

std::vector<WindowPlace> CascadeFromRight(std::int32_t right, std::int32_t top, std::span<const WindowSize> sizes,
                                          std::int32_t bottom) {
  std::vector<WindowPlace> places = Columns({0, top}, sizes, bottom);
  for (std::size_t index = 0; index < places.size(); ++index) {
    places[index].X = right - places[index].X - sizes[index].Width;
  }
  return places;
}

}  // namespace kestrel::core
