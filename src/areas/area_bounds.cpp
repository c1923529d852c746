#include "areas/area_bounds.h"

#include <algorithm>
#include <span>

namespace kestrel::areas {
namespace {

constexpr double UnitsPerMile = 1.852;  ///< map units of a nautical mile
constexpr double IconMargin = 20;       ///< map units to each side
constexpr double TextMargin = 5;
constexpr double PlanMargin = 15;

void SetBox(Area& area, double minX, double minY, double maxX, double maxY) {
  area.MinX = minX;
  area.MinY = minY;
  area.MaxX = maxX;
  area.MaxY = maxY;
}

void Extend(Area& area, double x, double y) {
  SetBox(area, std::min(area.MinX, x), std::min(area.MinY, y), std::max(area.MaxX, x), std::max(area.MaxY, y));
}

void RegionBounds(Area& area) {
  const std::span<const AreaLine> lines = area.Lines.Live();
  SetBox(area, 0, 0, 0, 0);
  if (lines.empty()) return;
  SetBox(area, lines[0].X1, lines[0].Y1, lines[0].X1, lines[0].Y1);
  for (const AreaLine& line : lines) {
    Extend(area, line.X1, line.Y1);
    Extend(area, line.X2, line.Y2);
  }
}

void PlanBounds(Area& area) {
  const std::span<const FlightPlanPoint> points = area.Points.Live();
  SetBox(area, 0, 0, 0, 0);
  if (!points.empty()) SetBox(area, points[0].X, points[0].Y, points[0].X, points[0].Y);
  for (const FlightPlanPoint& point : points) Extend(area, point.X, point.Y);
  SetBox(area, area.MinX - PlanMargin, area.MinY - PlanMargin, area.MaxX + PlanMargin, area.MaxY + PlanMargin);
}

void MarginBounds(Area& area, double margin) {
  SetBox(area, area.X - margin, area.Y - margin, area.X + margin, area.Y + margin);
}

}  // namespace

void AreaBounds(Area& area, TextMeasure& texts) {
  switch (area.Type) {
    case AreaType::Region:
      return RegionBounds(area);
    case AreaType::Circle:
      // The radius goes through 32 bits: this stands.
      return MarginBounds(area, static_cast<double>(static_cast<float>(area.Radius)) * UnitsPerMile);
    case AreaType::Icon:
      return MarginBounds(area, IconMargin);
    case AreaType::Text: {
      const TextExtent size = texts.Extent(area.Text, area.TextFont);
      return SetBox(area, area.X - TextMargin, area.Y - size.Height - TextMargin, area.X + size.Width + TextMargin,
                    area.Y + TextMargin);
    }
    case AreaType::FlightPlan:
      return PlanBounds(area);
  }
}

}  // namespace kestrel::areas
