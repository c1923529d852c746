#pragma once

#include <cstddef>
#include <vector>

namespace kestrel::land {

/// A square of values, rows from the north (the top) to the south.
template <typename T>
class Raster {
 public:
  Raster() = default;
  explicit Raster(int cellsAcross, T value = T())
      : side(cellsAcross), cells(static_cast<std::size_t>(cellsAcross) * cellsAcross, value) {}
  int Side() const { return side; }
  std::size_t Count() const { return cells.size(); }
  T& At(int x, int y) { return cells[Index(x, y)]; }
  const T& At(int x, int y) const { return cells[Index(x, y)]; }
  T& operator[](std::size_t index) { return cells[index]; }
  const T& operator[](std::size_t index) const { return cells[index]; }
  std::size_t Index(int x, int y) const { return static_cast<std::size_t>(y) * side + x; }
  bool Holds(int x, int y) const { return x >= 0 && y >= 0 && x < side && y < side; }

 private:
  int side = 0;
  std::vector<T> cells;
};

/// A place on the map in parts of its side: U east of the left edge, V south of the upper edge.
struct Place {
  double U = 0;
  double V = 0;
};

}  // namespace kestrel::land
