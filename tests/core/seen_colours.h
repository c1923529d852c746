#pragma once

#include <algorithm>
#include <cmath>

#include "base/colour.h"

// Colours as people see them: how far two are apart, to the usual eye and to those that lack a kind of cones.
namespace kestrel::test {

/// A colour in CIELAB.
struct Lab {
  double L, A, B;
};

/// Linear light of one part of a colour of sRGB.
inline double Linear(unsigned part) {
  const double value = part / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

/// CIELAB of linear sRGB, white D65.
inline Lab LabOf(double red, double green, double blue) {
  const auto root = [](double t) { return t > 216.0 / 24389 ? std::cbrt(t) : t * 841 / 108 + 4.0 / 29; };
  const double x = root((0.4124564 * red + 0.3575761 * green + 0.1804375 * blue) / 0.95047);
  const double y = root(0.2126729 * red + 0.7151522 * green + 0.0721750 * blue);
  const double z = root((0.0193339 * red + 0.1191920 * green + 0.9503041 * blue) / 1.08883);
  return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

inline double Distance(const Lab& a, const Lab& b) { return std::hypot(a.L - b.L, a.A - b.A, a.B - b.B); }

/// How linear red, green and blue are seen: by most, and by those without one kind of cones (the matrices of Machado,
/// Oliveira and Fernandes, 2009, for what is wholly missing).
struct Eye {
  const char* Name;
  double Parts[9];
};

inline constexpr Eye Eyes[] = {
    {"usual", {1, 0, 0, 0, 1, 0, 0, 0, 1}},
    {"no red", {0.152286, 1.052583, -0.204868, 0.114503, 0.786281, 0.099216, -0.003882, -0.048116, 1.051998}},
    {"no green", {0.367322, 0.860646, -0.227968, 0.280085, 0.672501, 0.047413, -0.011820, 0.042940, 0.968881}},
    {"no blue", {1.255528, -0.076749, -0.178779, -0.078411, 0.930809, 0.147602, 0.004733, 0.691367, 0.303900}},
};

inline Lab Seen(const Eye& eye, base::Colour colour) {
  const double parts[] = {Linear(base::RedOf(colour)), Linear(base::GreenOf(colour)), Linear(base::BlueOf(colour))};
  double seen[3];
  for (int n = 0; n < 3; ++n) {
    seen[n] = std::clamp(
        eye.Parts[3 * n] * parts[0] + eye.Parts[3 * n + 1] * parts[1] + eye.Parts[3 * n + 2] * parts[2], 0.0, 1.0);
  }
  return LabOf(seen[0], seen[1], seen[2]);
}

}  // namespace kestrel::test
