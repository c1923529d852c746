#pragma once

#include <cstdint>

namespace kestrel::sim {

/// A small generator of random numbers that gives the same row for the same seed everywhere.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state(seed) {}

  std::uint64_t Next() {
    state += 0x9e3779b97f4a7c15u;
    std::uint64_t z = state;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
    return z ^ (z >> 31);
  }
  /// From 0 to below 1.
  double Unit() { return static_cast<double>(Next() >> 11) / 9007199254740992.0; }
  double Between(double low, double high) { return low + (high - low) * Unit(); }
  /// From `low` to `high`, both included.
  int Whole(int low, int high) { return low + static_cast<int>(Next() % (static_cast<std::uint64_t>(high - low) + 1)); }
  bool Chance(double part) { return Unit() < part; }

 private:
  std::uint64_t state;
};

}  // namespace kestrel::sim
