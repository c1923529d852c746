#pragma once

#include <QRegion>
#include <QSize>
#include <algorithm>
#include <bit>
#include <cstdint>
#include <vector>

// Which parts of an image have been painted: a bit for each cell of some pixels in one row. Marking is a few ORs and
// needs no memory that grows; walking meets each cell once and in the order of memory, however often it was painted.
namespace kestrel::shell {

class PaintedCells {
 public:
  /// Pixels of one cell, in one row of the image: half a line of the processor's cache.
  static constexpr int CellPixels = 8;

  /// For an image of this size, nothing marked.
  void Reset(QSize pixels);
  /// Marks the columns x..x+width-1 of the rows y..y+height-1, which lie inside the image.
  void Mark(int x, int y, int width, int height);
  void MarkAll();
  /// True since MarkAll: marking more changes nothing.
  bool All() const { return all; }
  void Clear();
  /// Marks what is marked in `other`, of the same size.
  void Join(const PaintedCells& other);

  /// Calls run(x, y, width) for each run of marked cells of a row, pixels.
  template <class Run>
  void ForEachRun(Run&& run) const {
    for (int y = 0; y < size.height(); ++y) {
      WalkRow(&bits[static_cast<std::size_t>(y) * words], [&](int x, int width) { run(x, y, width); });
    }
  }

  /// The marked cells, rounded outward to bands of rows.
  QRegion Region() const;

 private:
  template <class Run>
  void WalkRow(const std::uint64_t* row, Run&& run) const {
    for (int word = 0; word < static_cast<int>(words); ++word) {
      std::uint64_t left = row[word];
      while (left != 0) {
        const int first = std::countr_zero(left);
        const int count = std::countr_one(left >> first);
        const int x = (word * 64 + first) * CellPixels;
        run(x, std::min(count * CellPixels, size.width() - x));
        if (first + count >= 64) break;
        left &= ~std::uint64_t{0} << (first + count);
      }
    }
  }

  QSize size;
  std::size_t words = 0;  ///< words of one row
  std::vector<std::uint64_t> bits;
  bool all = false;
};

}  // namespace kestrel::shell
