#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "map/geometry.h"

namespace kestrel::map {

/// A part of the map window, surface units.
struct Box {
  double Left = 0;
  double Top = 0;
  double Right = 0;
  double Bottom = 0;
  bool operator==(const Box&) const = default;
};
/// Boxes that only touch do not overlap.
inline bool Overlap(const Box& a, const Box& b) {
  return a.Left < b.Right && b.Left < a.Right && a.Top < b.Bottom && b.Top < a.Bottom;
}

/// What lies where on a surface: boxes in a uniform grid of cells, so that a question looks at its neighbourhood
/// alone. Filled anew for each redraw, in the memory of the last.
class BoxGrid {
 public:
  /// A surface without boxes, surface units. Of boxes the part on it counts.
  void Begin(double width, double height);
  /// Returns a number for Take and PutBack.
  std::size_t Add(const Box& box);
  /// Takes a box out; its number stays.
  void Take(std::size_t number) { boxes[number] = Nowhere; }
  void PutBack(std::size_t number, const Box& box) { boxes[number] = Seen(box); }
  /// False as well within a cell of more than CellBoxes boxes: nothing could be read there, and a crowd costs no more
  /// than that.
  bool IsFree(const Box& box) const;
  /// All of the box is on the surface.
  bool Holds(const Box& box) const {
    return box.Left >= 0 && box.Top >= 0 && box.Right <= width && box.Bottom <= height;
  }

  static constexpr std::uint32_t CellBoxes = 32;

 private:
  static constexpr Box Nowhere = {1, 1, -1, -1};
  struct Cells {
    std::size_t Left, Top, Right, Bottom;  ///< columns and rows, the last ones included
  };
  Box Seen(const Box& box) const;
  Cells CellsOf(const Box& seen) const;

  double width = 0;
  double height = 0;
  std::size_t columns = 0;
  std::vector<std::uint32_t> counts;  ///< of each cell, CellBoxes + 1 for more
  std::vector<std::array<std::uint32_t, CellBoxes>> cells;
  std::vector<Box> boxes;
};

}  // namespace kestrel::map
