#pragma once

#include <cstdint>

// Noise from integer hashes and plain arithmetic alone: the same values on every machine.
namespace kestrel::land {

/// 32 well mixed bits for a lattice point.
std::uint32_t Hash(std::int32_t x, std::int32_t y, std::uint32_t seed);
/// Hash as a number from 0 to below 1.
double HashUnit(std::int32_t x, std::int32_t y, std::uint32_t seed);

/// Smooth gradient noise, about -1 to 1, with features of size 1.
double Noise(double x, double y, std::uint32_t seed);
/// `octaves` layers of Noise, each of half the size and `gain` times the height of the one before; about -1 to 1.
double Fractal(double x, double y, int octaves, double gain, std::uint32_t seed);
/// Layers with sharp crests, 0 to 1.
double Ridged(double x, double y, int octaves, std::uint32_t seed);

double Clamp01(double value);
/// 0 below `from`, 1 above `to`, a smooth step between.
double SmoothStep(double from, double to, double value);
double Mix(double a, double b, double part);

}  // namespace kestrel::land
