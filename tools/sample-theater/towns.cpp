#include "sample-theater/towns.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <queue>
#include <utility>

#include "sample-theater/noise.h"

namespace kestrel::land {
namespace {

/// Pixels to a cell of the grid on which sites and roads are sought.
constexpr int SiteCell = 8;
constexpr std::size_t MostTowns = 34;
/// Least distance between towns, in parts of the map's side.
constexpr double Apart = 0.065;
constexpr double Root2 = 1.41421356237309505;

struct Sites {
  Raster<double> Height;     ///< feet, the mean of a cell; below 0 sea
  Raster<double> Steepness;  ///< feet from a cell to the next
  Raster<std::uint8_t> Wet;  ///< river or coast close by
};

Sites Survey(const Terrain& terrain) {
  const int cells = terrain.Height.Side() / SiteCell;
  Sites sites{Raster<double>(cells, 0.0), Raster<double>(cells, 0.0), Raster<std::uint8_t>(cells, 0)};
  for (int y = 0; y < cells; ++y) {
    for (int x = 0; x < cells; ++x) {
      double sum = 0;
      for (int k = 0; k < SiteCell; ++k) sum += terrain.Height.At(x * SiteCell + k, y * SiteCell + (k * 3) % SiteCell);
      sites.Height.At(x, y) = sum / SiteCell;
    }
  }
  for (int y = 1; y < cells - 1; ++y) {
    for (int x = 1; x < cells - 1; ++x) {
      const auto& height = sites.Height;
      sites.Steepness.At(x, y) =
          std::fabs(height.At(x + 1, y) - height.At(x - 1, y)) + std::fabs(height.At(x, y + 1) - height.At(x, y - 1));
      const double lowest =
          std::min({height.At(x + 1, y), height.At(x - 1, y), height.At(x, y + 1), height.At(x, y - 1)});
      if (lowest < 0) sites.Wet.At(x, y) = 1;
    }
  }
  for (const River& river : terrain.Rivers) {
    for (const RiverPoint& point : river) {
      const int x = static_cast<int>(std::floor(point.X / SiteCell));
      const int y = static_cast<int>(std::floor(point.Y / SiteCell));
      if (point.Width > 1.4 && sites.Wet.Holds(x, y)) sites.Wet.At(x, y) = 1;
    }
  }
  return sites;
}

double Worth(const Sites& sites, int x, int y) {
  const double height = sites.Height.At(x, y);
  if (height < 4) return 0;
  return (sites.Wet.At(x, y) ? 1.0 : 0.45) * (1 - SmoothStep(0, 2600, height)) *
         (1 - SmoothStep(100, 900, sites.Steepness.At(x, y))) * (0.25 + HashUnit(x, y, 901));
}

struct CellCost {
  double Cost;
  std::uint32_t Cell;
  bool operator>(const CellCost& other) const { return std::pair(Cost, Cell) > std::pair(other.Cost, other.Cell); }
};

/// The cheapest way over land between two cells; empty when there is none.
std::vector<std::uint32_t> CheapestWay(const Sites& sites, std::uint32_t from, std::uint32_t to) {
  const int cells = sites.Height.Side();
  Raster<double> cost(cells, std::numeric_limits<double>::infinity());
  Raster<std::uint32_t> before(cells, from);
  std::priority_queue<CellCost, std::vector<CellCost>, std::greater<>> open;
  cost[from] = 0;
  open.push({0, from});
  while (!open.empty() && open.top().Cell != to) {
    const auto [reached, cell] = open.top();
    open.pop();
    if (reached > cost[cell]) continue;
    const int x = static_cast<int>(cell) % cells;
    const int y = static_cast<int>(cell) / cells;
    for (int j = -1; j <= 1; ++j) {
      for (int i = -1; i <= 1; ++i) {
        if ((i == 0 && j == 0) || !cost.Holds(x + i, y + j) || sites.Height.At(x + i, y + j) < 1) continue;
        const auto next = cost.Index(x + i, y + j);
        const double climb = std::fabs(sites.Height[next] - sites.Height[cell]);
        const double price = reached + (i != 0 && j != 0 ? Root2 : 1) * (1 + 0.4 * HashUnit(x + i, y + j, 911)) +
                             climb * 0.012 + sites.Height[next] * 0.0004;
        if (price >= cost[next]) continue;
        cost[next] = price;
        before[next] = cell;
        open.push({price, static_cast<std::uint32_t>(next)});
      }
    }
  }
  if (open.empty()) return {};
  std::vector<std::uint32_t> way = {to};
  while (way.back() != from) way.push_back(before[way.back()]);
  return way;
}

Road RoadAlong(const std::vector<std::uint32_t>& way, int cells) {
  Road road;
  for (const std::uint32_t cell : way) {
    road.push_back(
        {(static_cast<int>(cell) % cells + 0.5) * SiteCell, (static_cast<int>(cell) / cells + 0.5) * SiteCell});
  }
  for (int pass = 0; pass < 3; ++pass) {
    Road smooth = road;
    for (std::size_t k = 1; k + 1 < road.size(); ++k) {
      smooth[k] = {(road[k - 1].X + 2 * road[k].X + road[k + 1].X) / 4,
                   (road[k - 1].Y + 2 * road[k].Y + road[k + 1].Y) / 4};
    }
    road = std::move(smooth);
  }
  return road;
}

double Squared(const Town& a, const Town& b) { return (a.X - b.X) * (a.X - b.X) + (a.Y - b.Y) * (a.Y - b.Y); }

}  // namespace

std::vector<Town> PlaceTowns(const Terrain& terrain) {
  const Sites sites = Survey(terrain);
  const int cells = sites.Height.Side();
  std::vector<std::pair<double, std::uint32_t>> best;
  for (int y = 3; y < cells - 3; ++y) {
    for (int x = 3; x < cells - 3; ++x) {
      const double worth = Worth(sites, x, y);
      if (worth > 0.3) best.emplace_back(-worth, static_cast<std::uint32_t>(sites.Height.Index(x, y)));
    }
  }
  std::sort(best.begin(), best.end());
  std::vector<Town> towns;
  const double scale = terrain.Height.Side() / 2048.0;
  const double apart = Apart * terrain.Height.Side();
  for (const auto& [worth, cell] : best) {
    const auto rank = static_cast<double>(towns.size());
    const Town town = {(static_cast<int>(cell) % cells + 0.5) * SiteCell,
                       (static_cast<int>(cell) / cells + 0.5) * SiteCell, (5 + 17 / (1 + 0.28 * rank)) * scale};
    const bool crowded = std::any_of(towns.begin(), towns.end(),
                                     [&](const Town& other) { return Squared(town, other) < apart * apart; });
    if (!crowded) towns.push_back(town);
    if (towns.size() == MostTowns) break;
  }
  return towns;
}

std::vector<Road> BuildRoads(const Terrain& terrain, const std::vector<Town>& towns) {
  const Sites sites = Survey(terrain);
  const int cells = sites.Height.Side();
  const auto cellOf = [&](const Town& town) {
    return static_cast<std::uint32_t>(
        sites.Height.Index(static_cast<int>(town.X) / SiteCell, static_cast<int>(town.Y) / SiteCell));
  };
  std::vector<Road> roads;
  const double reach = 0.30 * terrain.Height.Side();
  for (std::size_t k = 1; k < towns.size(); ++k) {
    std::vector<std::pair<double, std::size_t>> nearest;
    for (std::size_t other = 0; other < k; ++other) {
      const double squared = Squared(towns[k], towns[other]);
      if (squared < reach * reach) nearest.emplace_back(squared, other);
    }
    std::sort(nearest.begin(), nearest.end());
    int built = 0;
    for (const auto& [squared, other] : nearest) {
      const auto way = CheapestWay(sites, cellOf(towns[k]), cellOf(towns[other]));
      // A way of far more cells than the distance only goes round a bay: another town will do.
      if (way.empty() || static_cast<double>(way.size()) * SiteCell > 2.2 * std::sqrt(squared)) continue;
      roads.push_back(RoadAlong(way, cells));
      if (++built == 2) break;
    }
  }
  return roads;
}

}  // namespace kestrel::land
