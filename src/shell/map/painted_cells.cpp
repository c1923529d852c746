#include "shell/map/painted_cells.h"

#include <QList>
#include <algorithm>

namespace kestrel::shell {
namespace {

constexpr int BandRows = 32;   ///< rows of one rectangle of Region()
constexpr int JoinedGap = 64;  ///< pixels; rectangles closer than this become one

/// Whether the rectangles from `thisBand` on have the same columns as those of the band above and touch them.
bool GrowsOn(const QList<QRect>& rects, qsizetype lastBand, qsizetype thisBand) {
  if (thisBand == rects.size() || rects.size() - thisBand != thisBand - lastBand) return false;
  for (qsizetype rect = lastBand; rect < thisBand; ++rect) {
    const QRect& above = rects[rect];
    const QRect& below = rects[rect + thisBand - lastBand];
    if (above.left() != below.left() || above.right() != below.right() || above.bottom() + 1 != below.top())
      return false;
  }
  return true;
}

}  // namespace

void PaintedCells::Reset(QSize pixels) {
  size = pixels.expandedTo(QSize(0, 0));
  words = static_cast<std::size_t>((size.width() + 64 * CellPixels - 1) / (64 * CellPixels));
  all = false;
  bits.assign(words * static_cast<std::size_t>(size.height()), 0);
}

void PaintedCells::Mark(int x, int y, int width, int height) {
  ForEachWord(bits, x, y, width, height, [](std::uint64_t& word, std::uint64_t mask, int, int) { word |= mask; });
}

void PaintedCells::MarkAll() {
  if (size.isEmpty()) return;
  Mark(0, 0, size.width(), size.height());
  all = true;
}

void PaintedCells::Clear() {
  all = false;
  std::fill(bits.begin(), bits.end(), 0);
}

void PaintedCells::Join(const PaintedCells& other) {
  for (std::size_t word = 0; word < bits.size(); ++word) bits[word] |= other.bits[word];
}

void PaintedCells::Remove(const PaintedCells& other) {
  all = false;
  for (std::size_t word = 0; word < bits.size(); ++word) bits[word] &= ~other.bits[word];
}

bool PaintedCells::Holds(int x, int y, int width, int height) const {
  std::uint64_t missing = 0;
  ForEachWord(bits, x, y, width, height,
              [&](std::uint64_t word, std::uint64_t mask, int, int) { missing |= mask & ~word; });
  return missing == 0;
}

std::size_t PaintedCells::Count() const {
  std::size_t count = 0;
  for (const std::uint64_t word : bits) count += static_cast<std::size_t>(std::popcount(word));
  return count;
}

QRegion PaintedCells::Region() const {
  QList<QRect> rects;
  qsizetype lastBand = 0;  // where its rectangles begin
  std::vector<std::uint64_t> band(words);
  for (int top = 0; top < size.height(); top += BandRows) {
    const int rows = std::min(BandRows, size.height() - top);
    std::fill(band.begin(), band.end(), 0);
    for (int row = top; row < top + rows; ++row) {
      for (std::size_t word = 0; word < words; ++word) band[word] |= bits[static_cast<std::size_t>(row) * words + word];
    }
    const qsizetype thisBand = rects.size();
    WalkRow(band.data(), [&](int x, int width) {
      if (rects.size() > thisBand && x - rects.last().right() <= JoinedGap) {
        rects.last().setRight(x + width - 1);
      } else {
        rects.append(QRect(x, top, width, rows));
      }
    });
    if (GrowsOn(rects, lastBand, thisBand)) {
      for (qsizetype rect = lastBand; rect < thisBand; ++rect) rects[rect].setBottom(top + rows - 1);
      rects.resize(thisBand);
    } else {
      lastBand = thisBand;
    }
  }
  QRegion region;
  region.setRects(rects.constData(), static_cast<int>(rects.size()));
  return region;
}

}  // namespace kestrel::shell
