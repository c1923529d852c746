#include "sample-theater/noise.h"

#include <array>
#include <cmath>

namespace kestrel::land {
namespace {

constexpr double Diagonal = 0.70710678118654752;
// Directions as constants: a library's sine may differ in its last bit from one machine to the next.
constexpr std::array<std::array<double, 2>, 8> Directions = {{{1, 0},
                                                              {Diagonal, Diagonal},
                                                              {0, 1},
                                                              {-Diagonal, Diagonal},
                                                              {-1, 0},
                                                              {-Diagonal, -Diagonal},
                                                              {0, -1},
                                                              {Diagonal, -Diagonal}}};

double Slope(std::int32_t ix, std::int32_t iy, double dx, double dy, std::uint32_t seed) {
  const auto& direction = Directions[Hash(ix, iy, seed) >> 29];
  return direction[0] * dx + direction[1] * dy;
}

double Fade(double t) { return t * t * t * (t * (t * 6 - 15) + 10); }

}  // namespace

std::uint32_t Hash(std::int32_t x, std::int32_t y, std::uint32_t seed) {
  std::uint32_t h = seed * 0x9e3779b9u + static_cast<std::uint32_t>(x) * 0x85ebca6bu;
  h = (h ^ (h >> 15)) * 0x2c1b3c6du + static_cast<std::uint32_t>(y) * 0xc2b2ae35u;
  h = (h ^ (h >> 12)) * 0x297a2d39u;
  h = (h ^ (h >> 15)) * 0x2c1b3c6du;
  return h ^ (h >> 16);
}

double HashUnit(std::int32_t x, std::int32_t y, std::uint32_t seed) { return Hash(x, y, seed) / 4294967296.0; }

double Noise(double x, double y, std::uint32_t seed) {
  const double fx = std::floor(x);
  const double fy = std::floor(y);
  const auto ix = static_cast<std::int32_t>(fx);
  const auto iy = static_cast<std::int32_t>(fy);
  const double dx = x - fx;
  const double dy = y - fy;
  const double sx = Fade(dx);
  const double top = Mix(Slope(ix, iy, dx, dy, seed), Slope(ix + 1, iy, dx - 1, dy, seed), sx);
  const double low = Mix(Slope(ix, iy + 1, dx, dy - 1, seed), Slope(ix + 1, iy + 1, dx - 1, dy - 1, seed), sx);
  return 1.5 * Mix(top, low, Fade(dy));
}

double Fractal(double x, double y, int octaves, double gain, std::uint32_t seed) {
  double sum = 0;
  double height = 1;
  double whole = 0;
  for (int octave = 0; octave < octaves; ++octave) {
    sum += height * Noise(x, y, seed + static_cast<std::uint32_t>(octave));
    whole += height;
    height *= gain;
    // The shift keeps the lattices of the layers from meeting in a point.
    x = x * 2 + 17.31;
    y = y * 2 + 5.77;
  }
  return sum / whole;
}

double Ridged(double x, double y, int octaves, std::uint32_t seed) {
  double sum = 0;
  double height = 1;
  double whole = 0;
  for (int octave = 0; octave < octaves; ++octave) {
    const double crest = 1 - std::fabs(Noise(x, y, seed + static_cast<std::uint32_t>(octave)));
    sum += height * crest * crest;
    whole += height;
    height *= 0.5;
    x = x * 2 + 9.13;
    y = y * 2 + 21.7;
  }
  return Clamp01(sum / whole);
}

double Clamp01(double value) { return value < 0 ? 0 : value > 1 ? 1 : value; }

double SmoothStep(double from, double to, double value) {
  const double t = Clamp01((value - from) / (to - from));
  return t * t * (3 - 2 * t);
}

double Mix(double a, double b, double part) { return a + (b - a) * part; }

}  // namespace kestrel::land
