#include "shell/map/picture_levels.h"

#include <QElapsedTimer>
#include <QTimer>
#ifdef __linux__
#include <sys/mman.h>
#endif
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <utility>
#include <vector>

namespace kestrel::shell {
namespace {

/// The half is made in squares of this side, pixels.
constexpr int PartSide = 256;
/// What smoothing may look at around a part that is drawn, pixels of the level.
constexpr int Around = 2;

/// The mean of four pixels, channel by channel.
std::uint32_t Mean(std::array<std::uint32_t, 4> pixels) {
  constexpr std::uint32_t redBlue = 0x00FF00FF;
  std::uint32_t even = 0x00020002;  // rounds to nearest
  std::uint32_t odd = 0x00020002;
  for (const std::uint32_t pixel : pixels) {
    even += pixel & redBlue;
    odd += (pixel >> 8) & redBlue;
  }
  return ((even >> 2) & redBlue) | (((odd >> 2) & redBlue) << 8);
}

const std::uint32_t* Row(const QImage& image, int y) {
  return reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
}

std::uint32_t* Row(QImage& image, int y) { return reinterpret_cast<std::uint32_t*>(image.scanLine(y)); }

/// An image of any pixels; null where there is no memory for it. A large one is in large pages, where the system has
/// them: it costs more to get small ones than to fill them.
QImage NewImage(QSize size) {
#ifdef __linux__
  constexpr std::size_t largePage = std::size_t{2} << 20;
  const std::size_t bytes = static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height()) * 4;
  if (bytes >= 2 * largePage) {
    const std::size_t whole = (bytes + largePage - 1) / largePage * largePage;
    void* const memory = std::aligned_alloc(largePage, whole);
    if (memory == nullptr) return {};
    madvise(memory, whole, MADV_HUGEPAGE);
    return {static_cast<uchar*>(memory), size.width(), size.height(), qsizetype{size.width()} * 4,
            QImage::Format_RGB32,        std::free,    memory};
  }
#endif
  return {size, QImage::Format_RGB32};
}

/// `count` pixels of a level from two rows of the one before.
void HalveRows(const std::uint32_t* upper, const std::uint32_t* lower, int count, std::uint32_t* out) {
  for (int x = 0; x < count; ++x) out[x] = Mean({upper[2 * x], upper[2 * x + 1], lower[2 * x], lower[2 * x + 1]});
}

}  // namespace

class PictureLevels::Made {
 public:
  explicit Made(const base::Picture& picture)
      : source(picture), whole(source.Pixels, source.Width, source.Height, source.Stride, QImage::Format_RGB32) {
    // What is handed out stays where it is.
    smaller.reserve(16);
    rowsOfHalf.resize(2 * static_cast<std::size_t>(SizeOf(1).width()));
    if (qsizetype{source.Width} * source.Height <= MostAtOnce) return;
    QObject::connect(&idle, &QTimer::timeout, &idle, [this] { MakePiece(); });
    idle.start(0);
  }

  bool IsOf(const base::Picture& picture) const {
    return source.Pixels == picture.Pixels && source.Width == picture.Width;
  }
  /// Empty when there is no such level.
  QSize SizeOf(std::size_t level) const { return {source.Width >> level, source.Height >> level}; }
  const QImage& Whole() const { return whole; }
  bool Busy() const { return idle.isActive(); }
  int HalfParts() const { return static_cast<int>(std::count(parts.begin(), parts.end(), true)); }
  int AllHalfParts() const { return static_cast<int>(parts.size()); }

  /// The first level, good at `part` of the picture.
  const QImage& Half(const QRectF& part) {
    const QSize size = SizeOf(1);
    const int columns = (size.width() + PartSide - 1) / PartSide;
    if (half.isNull()) {
      half = NewImage(size);
      if (half.isNull()) return whole;
      parts.assign(
          static_cast<std::size_t>(columns) * static_cast<std::size_t>((size.height() + PartSide - 1) / PartSide),
          false);
    }
    const QRect seen = QRectF(part.left() / 2, part.top() / 2, part.width() / 2, part.height() / 2)
                           .toAlignedRect()
                           .adjusted(-Around, -Around, Around, Around) &
                       half.rect();
    for (int y = seen.top() / PartSide; y <= seen.bottom() / PartSide; ++y) {
      for (int x = seen.left() / PartSide; x <= seen.right() / PartSide; ++x) {
        const auto at = static_cast<std::size_t>(y * columns + x);
        if (parts[at]) continue;
        MakePart(x * PartSide, y * PartSide);
        parts[at] = true;
      }
    }
    return half;
  }

  /// Level 2 or a smaller one.
  const QImage& Smaller(std::size_t level) {
    while (!IsMade(level) && MakeRow()) {
    }
    return IsMade(level) ? smaller[level - 2] : whole;
  }

 private:
  void MakePart(int left, int top) {
    const int width = std::min(PartSide, half.width() - left);
    const int bottom = std::min(top + PartSide, half.height());
    for (int y = top; y < bottom; ++y) {
      HalveRows(Row(std::as_const(whole), 2 * y) + 2 * left, Row(std::as_const(whole), 2 * y + 1) + 2 * left, width,
                Row(half, y) + left);
    }
  }

  bool IsMade(std::size_t level) const {
    return smaller.size() > level - 1 || (smaller.size() == level - 1 && rows == smaller.back().height());
  }

  /// The next row of the levels from 2 on; false when there is none.
  bool MakeRow() {
    if (smaller.empty() || rows == smaller.back().height()) {
      const QSize next = SizeOf(smaller.size() + 2);
      if (next.isEmpty()) return false;
      QImage image = NewImage(next);
      if (image.isNull()) return false;
      smaller.push_back(std::move(image));
      rows = 0;
    }
    QImage& to = smaller.back();
    if (smaller.size() == 1) {
      // By way of two rows of the half, which is not kept for it.
      const int width = SizeOf(1).width();
      std::uint32_t* const upper = rowsOfHalf.data();
      std::uint32_t* const lower = upper + width;
      const auto from = [this](int y) { return Row(std::as_const(whole), y); };
      HalveRows(from(4 * rows), from(4 * rows + 1), width, upper);
      HalveRows(from(4 * rows + 2), from(4 * rows + 3), width, lower);
      HalveRows(upper, lower, to.width(), Row(to, rows));
    } else {
      const QImage& from = smaller[smaller.size() - 2];
      HalveRows(Row(from, 2 * rows), Row(from, 2 * rows + 1), to.width(), Row(to, rows));
    }
    ++rows;
    return true;
  }

  void MakePiece() {
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < PieceMs) {
      if (MakeRow()) continue;
      idle.stop();
      return;
    }
  }

  base::Picture source;  ///< kept, so that its pixels stay
  QImage whole;
  QImage half;
  std::vector<bool> parts;                ///< of the half: which are made, row by row
  std::vector<QImage> smaller;            ///< from level 2 on; all but the last are made
  int rows = 0;                           ///< made of the last of them
  std::vector<std::uint32_t> rowsOfHalf;  ///< two
  QTimer idle;
};

PictureLevels::PictureLevels() = default;
PictureLevels::~PictureLevels() = default;
PictureLevels::PictureLevels(PictureLevels&&) noexcept = default;
PictureLevels& PictureLevels::operator=(PictureLevels&&) noexcept = default;

const QImage& PictureLevels::Level(const base::Picture& picture, double scale, const QRectF& part) {
  if (!made || !made->IsOf(picture)) {
    made.reset();  // its memory before that of the next
    made = std::make_unique<Made>(picture);
  }
  std::size_t level = 0;
  for (; scale < 0.499; scale *= 2, ++level) {
    if (made->SizeOf(level + 1).isEmpty()) break;
  }
  if (level == 0) return made->Whole();
  return level == 1 ? made->Half(part) : made->Smaller(level);
}

const QImage& PictureLevels::Level(const base::Picture& picture, double scale) {
  return Level(picture, scale, QRectF(0, 0, picture.Width, picture.Height));
}

bool PictureLevels::Busy() const { return made && made->Busy(); }
int PictureLevels::HalfParts() const { return made ? made->HalfParts() : 0; }
int PictureLevels::AllHalfParts() const { return made ? made->AllHalfParts() : 0; }

}  // namespace kestrel::shell
