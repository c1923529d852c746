#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// Models of things as the simulator's files tell them. Axes of a model: x forward, y right, z down; feet.
namespace kestrel::falcon {

struct ModelPoint {
  double X = 0;
  double Y = 0;
  double Z = 0;
};

/// What a model fits in.
struct ModelBox {
  ModelPoint Least;
  ModelPoint Most;
};

/// The box of these corners; nothing when one is no number or beyond reason (100,000 feet), when a side is negative, or
/// all are 0, as files without a box write it.
std::optional<ModelBox> PossibleBox(const ModelPoint& least, const ModelPoint& most);

}  // namespace kestrel::falcon
