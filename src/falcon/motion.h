#pragma once

#include <array>

#include "base/bytes.h"
#include "falcon/model.h"

namespace kestrel::falcon {

/// Three numbers of 32 bits.
ModelPoint ReadModelPoint(base::BinaryReader& reader);

/// A turn, row by row, and a shift behind it.
struct Motion {
  std::array<double, 9> Turn = {1, 0, 0, 0, 1, 0, 0, 0, 1};
  ModelPoint Shift;

  ModelPoint Of(const ModelPoint& point) const;
  /// This behind `inner`.
  Motion After(const Motion& inner) const;
};

}  // namespace kestrel::falcon
