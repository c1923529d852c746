#include "falcon/motion.h"

#include <cstddef>

namespace kestrel::falcon {

ModelPoint ReadModelPoint(base::BinaryReader& reader) {
  ModelPoint point;
  point.X = reader.F32();
  point.Y = reader.F32();
  point.Z = reader.F32();
  return point;
}

ModelPoint Motion::Of(const ModelPoint& point) const {
  const auto row = [&](std::size_t first) {
    return Turn[first] * point.X + Turn[first + 1] * point.Y + Turn[first + 2] * point.Z;
  };
  return {row(0) + Shift.X, row(3) + Shift.Y, row(6) + Shift.Z};
}

Motion Motion::After(const Motion& inner) const {
  Motion both;
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 3; ++column) {
      double sum = 0;
      for (std::size_t n = 0; n < 3; ++n) sum += Turn[3 * row + n] * inner.Turn[3 * n + column];
      both.Turn[3 * row + column] = sum;
    }
  }
  both.Shift = Of(inner.Shift);
  return both;
}

}  // namespace kestrel::falcon
