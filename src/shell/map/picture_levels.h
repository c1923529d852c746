#pragma once

#include <QImage>
#include <QRectF>
#include <memory>

#include "base/picture.h"

namespace kestrel::shell {

/// A picture with the smaller copies of it that a view from far needs: each level has half the sides of the one before.
/// Without them a picture drawn much smaller than it is would sparkle. The half of a large picture is large itself: it
/// is made where it is looked at. All smaller ones are made whole when they are first asked for; of a picture for which
/// that would take long, piece by piece before, whenever there is nothing else to do.
class PictureLevels {
 public:
  /// A picture of more pixels has its smaller levels made before they are asked for.
  static constexpr qsizetype MostAtOnce = qsizetype{5} << 20;
  /// A piece of that work takes so long, milliseconds.
  static constexpr int PieceMs = 8;

  PictureLevels();
  ~PictureLevels();
  PictureLevels(PictureLevels&&) noexcept;
  PictureLevels& operator=(PictureLevels&&) noexcept;

  /// The level of `picture` to draw from when one of its pixels becomes `scale` pixels (above 0): the smallest that
  /// need not be shrunk to less than a half. It is good where `part` is, in pixels of the picture, and a little around
  /// it. Valid until the next call or event.
  const QImage& Level(const base::Picture& picture, double scale, const QRectF& part);
  const QImage& Level(const base::Picture& picture, double scale);

  /// Whether something is left to be made of the smaller levels before they are asked for.
  bool Busy() const;
  /// Parts of the half that have been made, and how many it has.
  int HalfParts() const;
  int AllHalfParts() const;

 private:
  class Made;
  std::unique_ptr<Made> made;  ///< of one picture
};

}  // namespace kestrel::shell
