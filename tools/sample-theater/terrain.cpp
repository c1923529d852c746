#include "sample-theater/terrain.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

#include "sample-theater/drainage.h"
#include "sample-theater/noise.h"

namespace kestrel::land {
namespace {

/// Pixels of the picture to a cell of the grid on which rivers cut.
constexpr int PixelsPerCell = 4;
/// The grid reaches this part of the map's side beyond each edge, so that rivers do not all turn to the edge.
constexpr double Margin = 1.0 / 16;
constexpr int ErosionSteps = 24;
/// Cells that must drain through a place to make a river there, on a grid of 512 cells across the map.
constexpr double RiverArea = 260;

struct Island {
  double U, V, Radius, Rise;
};
constexpr std::array<Island, 8> Islands = {{{0.49, 0.70, 0.085, 0.10},
                                            {0.555, 0.83, 0.04, 0.06},
                                            {0.40, 0.87, 0.035, 0.06},
                                            {0.52, 0.52, 0.022, 0.045},
                                            {0.46, 0.13, 0.05, 0.07},
                                            {0.545, 0.07, 0.03, 0.05},
                                            {0.62, 0.93, 0.03, 0.05},
                                            {0.44, 0.57, 0.018, 0.04}}};

struct Crest {
  double U, V;
};
constexpr std::array<Crest, 5> WesternRange = {{{0.20, -0.10}, {0.16, 0.18}, {0.20, 0.42}, {0.12, 0.66}, {0.10, 1.10}}};
constexpr std::array<Crest, 5> EasternRange = {{{0.72, -0.10}, {0.80, 0.16}, {0.79, 0.38}, {0.90, 0.60}, {0.94, 1.10}}};
constexpr std::array<Crest, 2> IslandHills = {{{0.47, 0.66}, {0.52, 0.74}}};
constexpr std::array<Crest, 2> SouthernHills = {{{0.70, 0.70}, {0.80, 0.88}}};

double DistanceTo(Place place, Crest a, Crest b) {
  const double du = b.U - a.U;
  const double dv = b.V - a.V;
  const double along = Clamp01(((place.U - a.U) * du + (place.V - a.V) * dv) / (du * du + dv * dv));
  const double x = place.U - a.U - along * du;
  const double y = place.V - a.V - along * dv;
  return std::sqrt(x * x + y * y);
}

template <std::size_t N>
double RangeAt(Place place, const std::array<Crest, N>& crests, double width) {
  double nearest = 10;
  for (std::size_t k = 1; k < N; ++k) nearest = std::min(nearest, DistanceTo(place, crests[k - 1], crests[k]));
  const double falloff = 1 / (1 + nearest * nearest / (width * width));
  return falloff * falloff;
}

struct Bend {
  double V, Middle;
};
constexpr std::array<Bend, 5> StraitBends = {{{-0.1, 0.60}, {0.14, 0.55}, {0.40, 0.425}, {0.68, 0.535}, {1.1, 0.43}}};

/// The middle of the strait, from the west edge.
double Middle(double v) {
  double middle = StraitBends.front().Middle;
  for (std::size_t k = 1; k < StraitBends.size(); ++k) {
    const double part = SmoothStep(StraitBends[k - 1].V, StraitBends[k].V, v);
    middle += part * (StraitBends[k].Middle - StraitBends[k - 1].Middle);
  }
  return middle;
}

double DistanceFrom(double u, double v, double centreU, double centreV) {
  return std::sqrt((u - centreU) * (u - centreU) + (v - centreV) * (v - centreV));
}

/// Half the width of the strait: narrow at a third of the way down, wide in the south.
double HalfWidth(double v) {
  const double narrows = v - 0.36;
  return narrows < 0 ? 0.045 + 0.62 * narrows * narrows : 0.045 + 0.42 * narrows * std::sqrt(narrows);
}

/// How far inland a place lies: above 0 land, below 0 sea; near the coast about in parts of the map's side.
double Inland(Place place) {
  const double u = place.U + 0.15 * Fractal(place.U * 3.2, place.V * 3.2, 4, 0.55, 101);
  const double v = place.V + 0.15 * Fractal(place.U * 3.2, place.V * 3.2, 4, 0.55, 131);
  double inland = std::fabs(u - Middle(v)) - HalfWidth(v);
  // Open ocean in the south-west and a gulf in the north-east.
  inland = std::min(inland, DistanceFrom(u, v, -0.06, 1.05) - 0.38);
  inland = std::min(inland, DistanceFrom(u, v, 1.03, 0.12) - 0.15);
  for (const Island& island : Islands) {
    inland = std::max(inland, (1 - DistanceFrom(u, v, island.U, island.V) / island.Radius) * island.Rise);
  }
  return inland + 0.058 * Fractal(place.U * 13, place.V * 13, 6, 0.64, 191);
}

double Uplift(Place place) {
  const Place bent = {place.U + 0.09 * Fractal(place.U * 4, place.V * 4, 3, 0.5, 401),
                      place.V + 0.09 * Fractal(place.U * 4, place.V * 4, 3, 0.5, 431)};
  const double ranges = 1.00 * RangeAt(bent, WesternRange, 0.085) + 1.15 * RangeAt(bent, EasternRange, 0.095) +
                        0.45 * RangeAt(bent, SouthernHills, 0.06) + 0.20 * RangeAt(bent, IslandHills, 0.04);
  const double massifs = SmoothStep(0.35, 0.9, Ridged(place.U * 4, place.V * 4, 2, 461));
  const double patches = 0.22 + 0.78 * massifs;
  return (0.05 + ranges * patches) * SmoothStep(0, 0.07, Inland(place)) + 0.012;
}

/// The eroded grid, the map in its middle.
struct CoarseLand {
  Raster<double> Heights;
  Drainage Water;
  Raster<std::uint8_t> Sea;
  int MapCells = 0;  ///< cells across the map
  int Beyond = 0;    ///< cells beyond each edge

  Place PlaceOf(int x, int y) const { return {(x - Beyond + 0.5) / MapCells, (y - Beyond + 0.5) / MapCells}; }
};

CoarseLand MakeCoarse(int side) {
  CoarseLand land;
  land.MapCells = side / PixelsPerCell;
  land.Beyond = static_cast<int>(land.MapCells * Margin);
  const int cells = land.MapCells + 2 * land.Beyond;
  land.Heights = Raster<double>(cells, 0.0);
  land.Sea = Raster<std::uint8_t>(cells, 0);
  Raster<double> uplift(cells, 0.0);
  for (int y = 0; y < cells; ++y) {
    for (int x = 0; x < cells; ++x) {
      const Place place = land.PlaceOf(x, y);
      const double inland = Inland(place);
      land.Sea.At(x, y) = inland <= 0;
      if (inland <= 0) continue;
      // Uneven rock keeps rivers from running side by side.
      uplift.At(x, y) = Uplift(place) * (0.5 + HashUnit(x, y, 78));
      land.Heights.At(x, y) = 0.5 + 20 * inland + 0.6 * HashUnit(x, y, 77);
    }
  }
  Erode(land.Heights, land.Sea, uplift, ErosionSteps);
  land.Water = Drain(land.Heights, land.Sea);
  return land;
}

/// Weights of a cubic spline, which passes no bumps on from the grid.
std::array<double, 4> SplineWeights(double t) {
  const double s = 1 - t;
  return {s * s * s / 6, (3 * t * t * t - 6 * t * t + 4) / 6, (3 * s * s * s - 6 * s * s + 4) / 6, t * t * t / 6};
}

/// Height of the grid between its cells, at grid position `gx`, `gy`, at least two cells from the rim.
double Between(const Raster<double>& heights, double gx, double gy) {
  const double fx = std::floor(gx);
  const double fy = std::floor(gy);
  const auto wx = SplineWeights(gx - fx);
  const auto wy = SplineWeights(gy - fy);
  double sum = 0;
  for (int j = 0; j < 4; ++j) {
    double row = 0;
    for (int i = 0; i < 4; ++i) row += wx[i] * heights.At(static_cast<int>(fx) - 1 + i, static_cast<int>(fy) - 1 + j);
    sum += wy[j] * row;
  }
  return sum;
}

double HighestOnMap(const CoarseLand& land) {
  double highest = 0;
  for (int y = 0; y < land.MapCells; ++y) {
    for (int x = 0; x < land.MapCells; ++x) {
      highest = std::max(highest, land.Heights.At(x + land.Beyond, y + land.Beyond));
    }
  }
  return highest;
}

Raster<float> ShoreOf(int side) {
  Raster<float> shore(side, 0.0f);
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) shore.At(x, y) = static_cast<float>(Inland({(x + 0.5) / side, (y + 0.5) / side}));
  }
  return shore;
}

double SeaFeet(Place place, double inland) {
  const double shelf = 1 + 0.5 * Fractal(place.U * 9, place.V * 9, 3, 0.5, 601);
  return std::min(-1.0, 9000 * inland * shelf);
}

Raster<float> FineHeights(const CoarseLand& land, const Raster<float>& shore) {
  const int side = shore.Side();
  Raster<float> fine(side, 0.0f);
  const double scale = SummitFeet / HighestOnMap(land);
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const Place place = {(x + 0.5) / side, (y + 0.5) / side};
      const double inland = shore.At(x, y);
      if (inland <= 0) {
        fine.At(x, y) = static_cast<float>(SeaFeet(place, inland));
        continue;
      }
      const double gx = (x + 0.5) / PixelsPerCell - 0.5 + land.Beyond;
      const double gy = (y + 0.5) / PixelsPerCell - 0.5 + land.Beyond;
      const double height = scale * Between(land.Heights, gx, gy);
      const double rough = Fractal(place.U * 160, place.V * 160, 3, 0.5, 641);
      const double feet = (height + (25 + 0.035 * height) * rough) * SmoothStep(-0.004, 0.010, inland);
      fine.At(x, y) = static_cast<float>(std::clamp(feet, 1.0, SummitFeet));
    }
  }
  return fine;
}

/// Cuts the corners of a line twice, keeping its ends.
River Smooth(River line) {
  for (int pass = 0; pass < 2; ++pass) {
    if (line.size() < 3) return line;
    River next = {line.front()};
    for (std::size_t k = 1; k < line.size(); ++k) {
      const RiverPoint& a = line[k - 1];
      const RiverPoint& b = line[k];
      next.push_back({Mix(a.X, b.X, 0.25), Mix(a.Y, b.Y, 0.25), Mix(a.Width, b.Width, 0.25)});
      next.push_back({Mix(a.X, b.X, 0.75), Mix(a.Y, b.Y, 0.75), Mix(a.Width, b.Width, 0.75)});
    }
    next.push_back(line.back());
    line = std::move(next);
  }
  return line;
}

RiverPoint PointOf(const CoarseLand& land, std::uint32_t cell, double width) {
  const int grid = land.Heights.Side();
  const int x = static_cast<int>(cell) % grid - land.Beyond;
  const int y = static_cast<int>(cell) / grid - land.Beyond;
  // Off the middle of the cell by a little: nature knows no lines of 45 degrees.
  return {(x + 0.5 + 0.5 * (HashUnit(x, y, 81) - 0.5)) * PixelsPerCell,
          (y + 0.5 + 0.5 * (HashUnit(x, y, 82) - 0.5)) * PixelsPerCell, width};
}

/// Each river starts where enough land drains and ends in one that is drawn already, or in the sea.
std::vector<River> TraceRivers(const CoarseLand& land) {
  const Drainage& water = land.Water;
  const double enough = RiverArea * land.MapCells / 512.0;
  Raster<std::uint8_t> fed(land.Heights.Side(), 0);
  for (const std::uint32_t cell : water.Order) {
    if (!land.Sea[cell] && water.Area[cell] >= enough && water.Next[cell] != cell) fed[water.Next[cell]] = 1;
  }
  std::vector<River> rivers;
  Raster<std::uint8_t> drawn(land.Heights.Side(), 0);
  for (auto source = water.Order.rbegin(); source != water.Order.rend(); ++source) {
    if (land.Sea[*source] || fed[*source] || water.Area[*source] < enough) continue;
    River river;
    std::uint32_t cell = *source;
    while (true) {
      const double width = std::min(4.6, 0.55 + 0.16 * std::sqrt(std::sqrt(water.Area[cell] / enough) - 0.9) * 4);
      river.push_back(PointOf(land, cell, width));
      if (drawn[cell] || water.Next[cell] == cell) break;
      drawn[cell] = 1;
      cell = water.Next[cell];
    }
    if (river.size() >= 6) rivers.push_back(Smooth(std::move(river)));
  }
  return rivers;
}

}  // namespace

Terrain MakeTerrain(int side) {
  const CoarseLand land = MakeCoarse(side);
  Raster<float> shore = ShoreOf(side);
  Raster<float> heights = FineHeights(land, shore);
  return {std::move(heights), std::move(shore), TraceRivers(land)};
}

}  // namespace kestrel::land
