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
  /// Takes the marks of what is marked in `other`, of the same size.
  void Remove(const PaintedCells& other);
  /// Whether all that Mark would mark is marked.
  bool Holds(int x, int y, int width, int height) const;
  /// How many cells are marked.
  std::size_t Count() const;

  /// Marks as Mark does and calls run(x, y, width) for each run of cells of a row that were not marked before, pixels.
  template <class Run>
  void MarkNew(int x, int y, int width, int height, Run&& run) {
    ForEachWord(bits, x, y, width, height, [&](std::uint64_t& word, std::uint64_t mask, int wordX, int row) {
      if (const std::uint64_t missing = mask & ~word; missing != 0) {
        word |= mask;
        WalkWord(missing, wordX, [&](int runX, int runWidth) { run(runX, row, runWidth); });
      }
    });
  }

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
    for (int word = 0; word < static_cast<int>(words); ++word) WalkWord(row[word], word * 64 * CellPixels, run);
  }

  /// The runs of one word, whose first cell begins at the column `wordX`.
  template <class Run>
  void WalkWord(std::uint64_t left, int wordX, Run&& run) const {
    while (left != 0) {
      const int first = std::countr_zero(left);
      const int count = std::countr_one(left >> first);
      const int x = wordX + first * CellPixels;
      run(x, std::min(count * CellPixels, size.width() - x));
      if (first + count >= 64) break;
      left &= ~std::uint64_t{0} << (first + count);
    }
  }

  /// Calls visit(word, mask, wordX, y) for each word of each row that the box meets; the box's cells are the mask.
  template <class Words, class Visit>
  void ForEachWord(Words& in, int x, int y, int width, int height, Visit&& visit) const {
    const unsigned first = static_cast<unsigned>(x / CellPixels);
    const unsigned last = static_cast<unsigned>((x + width - 1) / CellPixels);
    for (unsigned word = first / 64; word <= last / 64; ++word) {
      std::uint64_t mask = ~std::uint64_t{0};
      if (word == first / 64) mask &= ~std::uint64_t{0} << first % 64;
      if (word == last / 64) mask &= ~std::uint64_t{0} >> (63 - last % 64);
      auto* at = in.data() + static_cast<std::size_t>(y) * words + word;
      const int wordX = static_cast<int>(word) * 64 * CellPixels;
      for (int row = y; row < y + height; ++row, at += words) visit(*at, mask, wordX, row);
    }
  }

  QSize size;
  std::size_t words = 0;  ///< words of one row
  std::vector<std::uint64_t> bits;
  bool all = false;
};

}  // namespace kestrel::shell
