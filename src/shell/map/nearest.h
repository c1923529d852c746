#pragma once

namespace kestrel::shell {

/// Farther out than any pixel, near enough for whole numbers.
inline constexpr int FarPixel = 1 << 20;

/// The nearest whole number of a value within FarPixel.
inline int Nearest(double value) { return static_cast<int>(value + (FarPixel + 0.5)) - FarPixel; }

}  // namespace kestrel::shell
