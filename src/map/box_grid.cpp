#include "map/box_grid.h"

#include <algorithm>

namespace kestrel::map {
namespace {

/// About a label of two lines, surface units.
constexpr double CellWidth = 960;
constexpr double CellHeight = 480;
/// No surface is larger, units: what is told beyond it is not a size.
constexpr double LargestSurface = 1e6;

std::size_t CellOf(double place, double cell) { return static_cast<std::size_t>(place / cell); }

}  // namespace

void BoxGrid::Begin(double surfaceWidth, double surfaceHeight) {
  width = std::clamp(surfaceWidth, 0.0, LargestSurface);
  height = std::clamp(surfaceHeight, 0.0, LargestSurface);
  columns = CellOf(width, CellWidth) + 1;
  const std::size_t count = columns * (CellOf(height, CellHeight) + 1);
  counts.assign(count, 0);
  cells.resize(count);
  boxes.clear();
}

Box BoxGrid::Seen(const Box& box) const {
  const Box seen = {std::max(box.Left, 0.0), std::max(box.Top, 0.0), std::min(box.Right, width),
                    std::min(box.Bottom, height)};
  return seen.Left < seen.Right && seen.Top < seen.Bottom ? seen : Nowhere;
}

BoxGrid::Cells BoxGrid::CellsOf(const Box& seen) const {
  return {CellOf(seen.Left, CellWidth), CellOf(seen.Top, CellHeight), CellOf(seen.Right, CellWidth),
          CellOf(seen.Bottom, CellHeight)};
}

std::size_t BoxGrid::Add(const Box& box) {
  const Box seen = Seen(box);
  const std::size_t number = boxes.size();
  boxes.push_back(seen);
  if (seen == Nowhere) return number;
  const Cells in = CellsOf(seen);
  for (std::size_t row = in.Top; row <= in.Bottom; ++row) {
    for (std::size_t column = in.Left; column <= in.Right; ++column) {
      const std::size_t cell = row * columns + column;
      if (counts[cell] < CellBoxes) cells[cell][counts[cell]] = static_cast<std::uint32_t>(number);
      if (counts[cell] <= CellBoxes) ++counts[cell];
    }
  }
  return number;
}

bool BoxGrid::IsFree(const Box& box) const {
  const Box seen = Seen(box);
  if (seen == Nowhere) return true;
  const Cells in = CellsOf(seen);
  for (std::size_t row = in.Top; row <= in.Bottom; ++row) {
    for (std::size_t column = in.Left; column <= in.Right; ++column) {
      const std::size_t cell = row * columns + column;
      if (counts[cell] > CellBoxes) return false;
      for (std::uint32_t entry = 0; entry < counts[cell]; ++entry) {
        if (Overlap(boxes[cells[cell][entry]], seen)) return false;
      }
    }
  }
  return true;
}

}  // namespace kestrel::map
