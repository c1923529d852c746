#include "falcon/model.h"

#include <cmath>

namespace kestrel::falcon {
namespace {

constexpr double FarthestCorner = 100'000;

bool IsPossible(double least, double most) {
  return std::abs(least) <= FarthestCorner && std::abs(most) <= FarthestCorner && least <= most;
}

}  // namespace

std::optional<ModelBox> PossibleBox(const ModelPoint& least, const ModelPoint& most) {
  const bool possible = IsPossible(least.X, most.X) && IsPossible(least.Y, most.Y) && IsPossible(least.Z, most.Z);
  const bool anything = least.X < most.X || least.Y < most.Y || least.Z < most.Z;
  return possible && anything ? std::optional(ModelBox{least, most}) : std::nullopt;
}

}  // namespace kestrel::falcon
