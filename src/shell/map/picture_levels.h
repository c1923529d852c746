#pragma once

#include <QImage>
#include <vector>

#include "base/picture.h"

namespace kestrel::shell {

/// A picture with the smaller copies of it that a view from far needs: each level has half the sides of the one before,
/// made when it is first asked for. Without them a picture drawn much smaller than it is would sparkle.
class PictureLevels {
 public:
  /// The level of `picture` to draw from when one of its pixels becomes `scale` pixels (above 0): the smallest that
  /// need not be shrunk to less than a half. Valid until the next call with another picture.
  const QImage& Level(const base::Picture& picture, double scale);

 private:
  base::Picture source;  ///< kept, so that its pixels stay
  std::vector<QImage> levels;
};

}  // namespace kestrel::shell
