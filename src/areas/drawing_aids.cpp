#include "areas/drawing_aids.h"

#include <cmath>
#include <numbers>

namespace kestrel::areas {
namespace {

constexpr double HoldStep = std::numbers::pi / 12;  ///< 15 degrees

/// Looks for the end point nearest to a position.
class NearestEnd {
 public:
  NearestEnd(MapPoint pointer, double reach, std::optional<MapPoint> start)
      : around(pointer), nearest(reach), except(start) {}

  void LookAt(const Area& area) {
    const bool near = around.X >= area.MinX - nearest && around.X <= area.MaxX + nearest &&
                      around.Y >= area.MinY - nearest && around.Y <= area.MaxY + nearest;
    if (!near) return;
    if (area.Type == AreaType::Region) {
      for (const AreaLine& line : area.Lines.Live()) {
        LookAt(MapPoint{line.X1, line.Y1});
        LookAt(MapPoint{line.X2, line.Y2});
      }
    } else if (area.Type == AreaType::FlightPlan) {
      for (const FlightPlanPoint& point : area.Points.Live()) LookAt(MapPoint{point.X, point.Y});
    }
  }

  const std::optional<MapPoint>& Found() const { return found; }

 private:
  void LookAt(MapPoint point) {
    if (except && point.X == except->X && point.Y == except->Y) return;
    const double distance = std::hypot(point.X - around.X, point.Y - around.Y);
    // Of two at the same distance the later one, which lies on top.
    if (!(distance <= nearest)) return;
    nearest = distance;
    found = point;
  }

  MapPoint around;
  double nearest;
  std::optional<MapPoint> except;
  std::optional<MapPoint> found;
};

MapPoint Held(MapPoint from, MapPoint to) {
  const double east = to.X - from.X;
  const double north = to.Y - from.Y;
  const double distance = std::hypot(east, north);
  const double bearing = std::round(std::atan2(east, north) / HoldStep) * HoldStep;
  return {from.X + distance * std::sin(bearing), from.Y + distance * std::cos(bearing)};
}

}  // namespace

std::optional<MapPoint> LastPoint(const AreaEditor& editor) {
  if (!editor.Open || !editor.AreaEditMode) return std::nullopt;
  const base::Table<FlightPlanPoint>& points = editor.WorkArea.Points;
  if (editor.WorkArea.Type == AreaType::Region && !editor.FirstPointPending) return MapPoint{editor.X1, editor.Y1};
  if (editor.WorkArea.Type != AreaType::FlightPlan || points.Empty()) return std::nullopt;
  return MapPoint{points[points.UpperBound()].X, points[points.UpperBound()].Y};
}

MapPoint NextPoint(const AreaEditor& editor, const AreaCatalogue& catalogue, double x, double y,
                   const DrawingAids& aids) {
  const MapPoint pointer{x, y};
  const AreaType type = editor.WorkArea.Type;
  if (!editor.Open || !editor.AreaEditMode || (type != AreaType::Region && type != AreaType::FlightPlan)) {
    return pointer;
  }
  const std::optional<MapPoint> last = LastPoint(editor);
  if (aids.Snap) {
    NearestEnd ends(pointer, aids.SnapDistance, last);
    for (const AreaGroup& group : catalogue.AreaGroups.Live()) {
      if (!Shows(catalogue, group)) continue;
      for (const Area& area : group.Areas.Live()) {
        if (Shows(area)) ends.LookAt(area);
      }
    }
    ends.LookAt(editor.WorkArea);
    if (ends.Found()) return *ends.Found();
  }
  return aids.Hold && last ? Held(*last, pointer) : pointer;
}

}  // namespace kestrel::areas
