#pragma once

#include <exception>

namespace kestrel::map {

/// Draws one record, or one stroke of it. What fails costs this one and no other, and nobody is told: a damaged record
/// leaves a map that is drawn in part.
template <class Draw>
void DrawGuarded(Draw&& draw) noexcept {
  try {
    draw();
  } catch (const std::exception&) {
    return;
  }
}

}  // namespace kestrel::map
