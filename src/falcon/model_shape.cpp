#include "falcon/model_shape.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace kestrel::falcon {
namespace {

constexpr double FarthestPoint = 100'000;
constexpr double PartsOfAFoot = 100;

bool IsPossible(const ModelPoint& point) {
  return std::abs(point.X) <= FarthestPoint && std::abs(point.Y) <= FarthestPoint && std::abs(point.Z) <= FarthestPoint;
}

using Place = std::array<std::int32_t, 3>;

Place PlaceOf(const ModelPoint& point) {
  const auto rounded = [](double feet) { return static_cast<std::int32_t>(std::lround(feet * PartsOfAFoot)); };
  return {rounded(point.X), rounded(point.Y), rounded(point.Z)};
}

/// What an edge is known by, whichever way round.
std::pair<Place, Place> KeyOf(const ModelEdge& edge) {
  const Place from = PlaceOf(edge.From), to = PlaceOf(edge.To);
  return {std::min(from, to), std::max(from, to)};
}

}  // namespace

void ShapeGatherer::AddEdge(const ModelPoint& from, const ModelPoint& to) {
  if (IsPossible(from) && IsPossible(to) && PlaceOf(from) != PlaceOf(to)) edges.push_back({from, to});
}

void ShapeGatherer::AddLine(const std::vector<ModelPoint>& points) {
  for (std::size_t n = 1; n < points.size(); ++n) AddEdge(points[n - 1], points[n]);
}

void ShapeGatherer::AddPolygon(const std::vector<ModelPoint>& points) {
  if (points.size() < 3) {
    AddLine(points);
    return;
  }
  AddLine(points);
  AddEdge(points.back(), points.front());
  triangles += points.size() - 2;
}

ModelShape ShapeGatherer::Take() {
  struct Keyed {
    std::pair<Place, Place> Key;
    std::size_t Number;
  };
  std::vector<Keyed> keyed;
  keyed.reserve(edges.size());
  for (const ModelEdge& edge : edges) keyed.push_back({KeyOf(edge), keyed.size()});
  std::sort(keyed.begin(), keyed.end(),
            [](const Keyed& a, const Keyed& b) { return std::pair(a.Key, a.Number) < std::pair(b.Key, b.Number); });
  keyed.erase(std::unique(keyed.begin(), keyed.end(), [](const Keyed& a, const Keyed& b) { return a.Key == b.Key; }),
              keyed.end());
  ModelShape shape;
  shape.Triangles = std::exchange(triangles, 0);
  shape.Edges.reserve(keyed.size());
  // In the order in which they came.
  std::sort(keyed.begin(), keyed.end(), [](const Keyed& a, const Keyed& b) { return a.Number < b.Number; });
  for (const Keyed& one : keyed) shape.Edges.push_back(edges[one.Number]);
  edges.clear();
  return shape;
}

}  // namespace kestrel::falcon
