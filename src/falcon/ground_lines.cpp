#include "falcon/ground_lines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

namespace kestrel::falcon {
namespace {

constexpr double PartsOfAFoot = 100;
constexpr double Tolerance = 0.5 / PartsOfAFoot;
constexpr std::size_t MostTroubles = 20;
constexpr std::size_t BytesOfAModel = 64;  ///< about, beside its lines

using Place = std::array<std::int32_t, 2>;

Place PlaceOf(float x, float y) {
  const auto rounded = [](double feet) { return static_cast<std::int32_t>(std::lround(feet * PartsOfAFoot)); };
  return {rounded(x), rounded(y)};
}

/// What a line is known by, whichever way round.
std::pair<Place, Place> KeyOf(const GroundLine& line) {
  const Place from = PlaceOf(line.X1, line.Y1), to = PlaceOf(line.X2, line.Y2);
  return {std::min(from, to), std::max(from, to)};
}

GroundLine LineBetween(double x1, double y1, double x2, double y2) {
  return {static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2), static_cast<float>(y2)};
}

bool IsLong(const GroundLine& line, const GroundRule& rule) {
  return std::hypot(double{line.X2} - line.X1, double{line.Y2} - line.Y1) > rule.Nearest;
}

}  // namespace

std::vector<GroundLine> LinesOnGround(const ModelShape& shape, const GroundRule& rule) {
  struct Keyed {
    std::pair<Place, Place> Key;
    std::size_t Number;
  };
  std::vector<Keyed> keyed;
  for (std::size_t n = 0; n < shape.Edges.size(); ++n) {
    const ModelEdge& edge = shape.Edges[n];
    // Down is positive.
    if (std::max(-edge.From.Z, -edge.To.Z) > rule.MostHeight + Tolerance) continue;
    const GroundLine line = LineBetween(edge.From.X, edge.From.Y, edge.To.X, edge.To.Y);
    const Keyed one{KeyOf(line), n};
    if (one.Key.first != one.Key.second && IsLong(line, rule)) keyed.push_back(one);
  }
  std::sort(keyed.begin(), keyed.end(),
            [](const Keyed& a, const Keyed& b) { return std::pair(a.Key, a.Number) < std::pair(b.Key, b.Number); });
  keyed.erase(std::unique(keyed.begin(), keyed.end(), [](const Keyed& a, const Keyed& b) { return a.Key == b.Key; }),
              keyed.end());
  // In the order in which they came.
  std::sort(keyed.begin(), keyed.end(), [](const Keyed& a, const Keyed& b) { return a.Number < b.Number; });
  std::vector<GroundLine> lines;
  lines.reserve(keyed.size());
  for (const Keyed& one : keyed) {
    const ModelEdge& edge = shape.Edges[one.Number];
    lines.push_back(LineBetween(edge.From.X, edge.From.Y, edge.To.X, edge.To.Y));
  }
  return lines;
}

std::vector<GroundLine> LinesOnGround(const ModelBox& box, const GroundRule& rule) {
  const ModelPoint& a = box.Least;
  const ModelPoint& b = box.Most;
  ModelShape sides;
  const std::array<ModelPoint, 4> corners = {{{a.X, a.Y, 0}, {b.X, a.Y, 0}, {b.X, b.Y, 0}, {a.X, b.Y, 0}}};
  for (std::size_t n = 0; n < corners.size(); ++n) {
    sides.Edges.push_back({corners[n], corners[(n + 1) % corners.size()]});
  }
  return LinesOnGround(sides, {.Nearest = rule.Nearest, .MostHeight = 0});
}

Heading::Heading(double degrees) {
  const double turned = std::fmod(degrees, 360);
  const double quarters = turned / 90;
  if (quarters == std::floor(quarters)) {
    constexpr std::array<double, 4> sines = {0, 1, 0, -1};
    const auto quarter = static_cast<std::size_t>(static_cast<int>(quarters) + 4) % 4;
    sine = sines[quarter];
    cosine = sines[(quarter + 1) % 4];
    return;
  }
  const double angle = turned * std::numbers::pi / 180;
  sine = std::sin(angle);
  cosine = std::cos(angle);
}

std::vector<GroundLine> ModelLines::Read(std::int32_t model) {
  ++reads;
  const ModelReading reading = models.Read(model);
  if (reading.Shape) return LinesOnGround(*reading.Shape, rule);
  if (reading.Trouble.empty()) return {};
  const bool isNew = (reading.Box ? boxes : missing).insert(model).second;
  // A file that is missing as a whole is the trouble of all of them.
  const bool isSame = !troubles.empty() && troubles.back() == reading.Trouble;
  if (isNew && !isSame && troubles.size() < MostTroubles) troubles.push_back(reading.Trouble);
  return reading.Box ? LinesOnGround(*reading.Box, rule) : std::vector<GroundLine>();
}

std::span<const GroundLine> ModelLines::Of(std::int32_t model) {
  const auto known = lines.find(model);
  if (known != lines.end()) return known->second;
  std::vector<GroundLine> read = Read(model);
  const std::size_t bytes = read.capacity() * sizeof(GroundLine) + BytesOfAModel;
  if (held + bytes > limit) {
    lines.clear();
    held = 0;
  }
  held += bytes;
  return lines.emplace(model, std::move(read)).first->second;
}

}  // namespace kestrel::falcon
