// Makes data/gradient.act, the colours that "Auto Calculate" gives to heights: 256 colours of red, green and blue from
// the sea's level up to snow.
//
//   gradient FILE
//
// The way from dark green over yellow and brown to white is straight between a few points in CIELAB. The lightness
// grows by the same step from each colour to the next, so that higher ground is lighter for every eye, however it sees
// colours. Each colour is the one of those around the exact one, in whole steps of red, green and blue, whose lightness
// is nearest; the steps would not grow evenly if each part were rounded by itself.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

namespace {

constexpr int Count = 256;
constexpr double Lowest = 32, Highest = 98;  ///< lightness, 0 to 100

using Triple = std::array<double, 3>;

/// A point of the way: how far along it, and CIELAB's a (green to red) and b (blue to yellow).
struct Point {
  double At, A, B;
};
constexpr Point Way[] = {{0, -26, 20}, {0.25, -26, 34}, {0.45, -6, 44}, {0.65, 10, 34}, {0.85, 5, 13}, {1, 0, 0}};

/// The white of D65.
constexpr Triple White = {0.95047, 1, 1.08883};

double Cube(double f) { return f > 6.0 / 29 ? f * f * f : 3 * 36.0 / 841 * (f - 4.0 / 29); }
double Root(double t) { return t > 216.0 / 24389 ? std::cbrt(t) : t * 841 / 108 + 4.0 / 29; }
double Encoded(double linear) {
  return linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
}
double Linear(double encoded) {
  return encoded <= 0.04045 ? encoded / 12.92 : std::pow((encoded + 0.055) / 1.055, 2.4);
}

/// The colour of CIELAB in parts of red, green and blue from 0 to 255, limited to what a screen shows.
Triple Shown(double lightness, double a, double b) {
  const double f = (lightness + 16) / 116;
  const double x = White[0] * Cube(f + a / 500), y = White[1] * Cube(f), z = White[2] * Cube(f - b / 200);
  const Triple linear = {3.2404542 * x - 1.5371385 * y - 0.4985314 * z, -0.9692660 * x + 1.8760108 * y + 0.0415560 * z,
                         0.0556434 * x - 0.2040259 * y + 1.0572252 * z};
  Triple parts{};
  for (int n = 0; n < 3; ++n) parts[n] = 255 * Encoded(std::clamp(linear[n], 0.0, 1.0));
  return parts;
}

double Lightness(const Triple& parts) {
  const double y =
      0.2126729 * Linear(parts[0] / 255) + 0.7151522 * Linear(parts[1] / 255) + 0.0721750 * Linear(parts[2] / 255);
  return 116 * Root(y) - 16;
}

Triple ColourAt(int index) {
  const double at = static_cast<double>(index) / (Count - 1);
  const Point* const end =
      std::find_if(std::next(std::begin(Way)), std::prev(std::end(Way)), [at](const Point& p) { return at <= p.At; });
  const Point& from = *std::prev(end);
  const double share = (at - from.At) / (end->At - from.At);
  const double lightness = Lowest + (Highest - Lowest) * at;
  const Triple exact = Shown(lightness, from.A + (end->A - from.A) * share, from.B + (end->B - from.B) * share);
  Triple best{};
  double least = 1000;
  for (int choice = 0; choice < 8; ++choice) {
    Triple parts{};
    for (int n = 0; n < 3; ++n) parts[n] = (choice >> n & 1) != 0 ? std::ceil(exact[n]) : std::floor(exact[n]);
    const double off = std::abs(Lightness(parts) - lightness);
    if (off < least) {
      least = off;
      best = parts;
    }
  }
  return best;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: gradient FILE\n");
    return 1;
  }
  std::string bytes;
  for (int index = 0; index < Count; ++index) {
    for (const double part : ColourAt(index)) bytes += static_cast<char>(static_cast<unsigned char>(part));
  }
  std::ofstream file(argv[1], std::ios::binary);
  file << bytes;
  file.close();
  if (!file) {
    std::fprintf(stderr, "%s cannot be written\n", argv[1]);
    return 1;
  }
  return 0;
}
