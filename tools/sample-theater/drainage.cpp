#include "sample-theater/drainage.h"

#include <array>
#include <cmath>
#include <functional>
#include <queue>
#include <utility>

namespace kestrel::land {
namespace {

struct Step {
  int X, Y;
  double Length;
};
constexpr double Root2 = 1.41421356237309505;
constexpr std::array<Step, 8> Steps = {
    {{-1, -1, Root2}, {0, -1, 1}, {1, -1, Root2}, {-1, 0, 1}, {1, 0, 1}, {-1, 1, Root2}, {0, 1, 1}, {1, 1, Root2}}};
/// Least fall from a filled cell to the next one, in cells.
constexpr double LeastFall = 1e-4;
/// How fast rivers cut: larger gives lower and smoother land.
constexpr double Cutting = 0.12;
/// Share of the difference to its neighbours that a slope loses in a step.
constexpr double Creep = 0.04;

bool IsRim(const Raster<double>& heights, int x, int y) {
  return x == 0 || y == 0 || x == heights.Side() - 1 || y == heights.Side() - 1;
}

/// Raises hollows and returns the cells from the lowest to the highest.
std::vector<std::uint32_t> Flood(Raster<double>& heights, const Raster<std::uint8_t>& sea) {
  using Entry = std::pair<double, std::uint32_t>;
  std::priority_queue<Entry, std::vector<Entry>, std::greater<>> open;
  Raster<std::uint8_t> seen(heights.Side(), 0);
  const int side = heights.Side();
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const auto index = heights.Index(x, y);
      if (sea[index] || IsRim(heights, x, y)) {
        seen[index] = 1;
        open.emplace(heights[index], static_cast<std::uint32_t>(index));
      }
    }
  }
  std::vector<std::uint32_t> order;
  order.reserve(heights.Count());
  while (!open.empty()) {
    const auto [height, index] = open.top();
    open.pop();
    order.push_back(index);
    const int x = static_cast<int>(index) % side;
    const int y = static_cast<int>(index) / side;
    for (const Step& step : Steps) {
      if (!heights.Holds(x + step.X, y + step.Y)) continue;
      const auto other = heights.Index(x + step.X, y + step.Y);
      if (seen[other]) continue;
      seen[other] = 1;
      if (heights[other] < height + LeastFall) heights[other] = height + LeastFall;
      open.emplace(heights[other], static_cast<std::uint32_t>(other));
    }
  }
  return order;
}

std::uint32_t SteepestFrom(const Raster<double>& heights, std::uint32_t index) {
  const int x = static_cast<int>(index) % heights.Side();
  const int y = static_cast<int>(index) / heights.Side();
  std::uint32_t best = index;
  double steepest = 0;
  for (const Step& step : Steps) {
    if (!heights.Holds(x + step.X, y + step.Y)) continue;
    const auto other = heights.Index(x + step.X, y + step.Y);
    const double fall = (heights[index] - heights[other]) / step.Length;
    if (fall > steepest) {
      steepest = fall;
      best = static_cast<std::uint32_t>(other);
    }
  }
  return best;
}

double LengthOf(int side, std::uint32_t a, std::uint32_t b) {
  const auto width = static_cast<std::uint32_t>(side);
  return a % width != b % width && a / width != b / width ? Root2 : 1;
}

void SoftenSlopes(Raster<double>& heights, const Raster<std::uint8_t>& sea) {
  const Raster<double> before = heights;
  for (int y = 1; y < heights.Side() - 1; ++y) {
    for (int x = 1; x < heights.Side() - 1; ++x) {
      if (sea.At(x, y)) continue;
      const double around = before.At(x - 1, y) + before.At(x + 1, y) + before.At(x, y - 1) + before.At(x, y + 1);
      heights.At(x, y) += Creep * (around - 4 * before.At(x, y));
    }
  }
}

}  // namespace

Drainage Drain(Raster<double>& heights, const Raster<std::uint8_t>& sea) {
  Drainage drainage{Flood(heights, sea), Raster<std::uint32_t>(heights.Side()), Raster<double>(heights.Side(), 1.0)};
  for (const std::uint32_t index : drainage.Order) {
    const int x = static_cast<int>(index) % heights.Side();
    const int y = static_cast<int>(index) / heights.Side();
    drainage.Next[index] = sea[index] || IsRim(heights, x, y) ? index : SteepestFrom(heights, index);
  }
  for (auto cell = drainage.Order.rbegin(); cell != drainage.Order.rend(); ++cell) {
    const std::uint32_t next = drainage.Next[*cell];
    if (next != *cell) drainage.Area[next] += drainage.Area[*cell];
  }
  return drainage;
}

void Erode(Raster<double>& heights, const Raster<std::uint8_t>& sea, const Raster<double>& uplift, int steps) {
  for (int step = 0; step < steps; ++step) {
    const Drainage drainage = Drain(heights, sea);
    for (const std::uint32_t index : drainage.Order) {
      const std::uint32_t next = drainage.Next[index];
      if (next == index) continue;
      // The cell below has its new height already, so the step is stable however long it is.
      const double cut = Cutting * std::sqrt(drainage.Area[index]) / LengthOf(heights.Side(), index, next);
      heights[index] = (heights[index] + uplift[index] + cut * heights[next]) / (1 + cut);
    }
    SoftenSlopes(heights, sea);
  }
}

}  // namespace kestrel::land
