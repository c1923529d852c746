#include "map/area_layer.h"

#include <algorithm>
#include <array>
#include <span>

#include "areas/area_editor.h"
#include "base/numbers.h"
#include "link/tables.h"
#include "map/fault_guard.h"
#include "map/icon_strokes.h"
#include "map/text_measure.h"

namespace kestrel::map {
namespace {

constexpr double FarPixels = 1 << 28;                       ///< further out no end of a segment is set, pixels
constexpr double IconNameDrop = 15 * UnitsPerPixel;         ///< from an icon's centre to the top of its name
constexpr double MarkerReach = 8 * UnitsPerPixel;           ///< of a circle and a square
constexpr double TriangleSide = 12 * UnitsPerPixel;         ///< its corners lie 2/3 and 1/3 of it from the centre
constexpr int HighLightWidth = 5;                           ///< pixels
constexpr std::size_t EndsTogether = 2 * std::size_t{128};  ///< of segments that are handed over at once

Pen PenOf(const areas::Area& area) { return {.Color = area.Color, .DrawWidth = 1, .Style = PenStyle::Solid}; }

/// To whole units, and these to whole pixels that 32 bits can name.
double WholePixel(double units) {
  const double pixels = base::RoundHalfEven(base::RoundHalfEven(units) / UnitsPerPixel);
  return std::clamp(pixels, -FarPixels, FarPixels) * UnitsPerPixel;
}

SurfacePoint PixelFromMap(const ViewState& view, MapPoint place) {
  const SurfacePoint at = SurfaceFromMap(view, place);
  return {WholePixel(at.X), WholePixel(at.Y)};
}

/// `top`: of the text; `x`: its middle.
void PrintName(const Scene& scene, Surface& surface, const areas::Area& area, double x, double top) {
  if (!scene.Display.SHOWAREANAMES) return;
  DrawGuarded([&] {
    const FontRecord& title = scene.Display.AREAS_TITLE_FONT;
    const TextFont font{.Name = title.FontName,
                        .Size = title.FontSize,
                        .Bold = title.FontBold,
                        .Italic = title.FontItalic,
                        .Strike = title.FontStrike,
                        .Under = title.FontUnder};
    surface.Print(area.Name, x - surface.Measure(area.Name, font).Width / 2, top, font, area.Color);
  });
}

/// In the middle of the box.
void PrintBoxName(const Scene& scene, Surface& surface, const areas::Area& area) {
  const SurfacePoint upperLeft = SurfaceFromMap(scene.View, {area.MinX, area.MaxY});
  const SurfacePoint lowerRight = SurfaceFromMap(scene.View, {area.MaxX, area.MinY});
  PrintName(scene, surface, area, (upperLeft.X + lowerRight.X) / 2, (upperLeft.Y + lowerRight.Y) / 2);
}

void DrawRegion(const Scene& scene, Surface& surface, const areas::Area& area) {
  if (area.Lines.Empty()) return;
  DrawGuarded([&] {
    std::array<SurfacePoint, EndsTogether> ends;
    std::size_t filled = 0;
    for (const areas::AreaLine& line : area.Lines.Live()) {
      ends[filled++] = PixelFromMap(scene.View, {line.X1, line.Y1});
      ends[filled++] = PixelFromMap(scene.View, {line.X2, line.Y2});
      if (filled < ends.size()) continue;
      surface.Segments(ends, PenOf(area));
      filled = 0;
    }
    surface.Segments(std::span(ends).first(filled), PenOf(area));
  });
  PrintBoxName(scene, surface, area);
}

void DrawCircle(const Scene& scene, Surface& surface, const areas::Area& area) {
  const SurfacePoint centre = SurfaceFromMap(scene.View, {area.X, area.Y});
  const double radius =
      base::RoundHalfEven(scene.View.Resolution * area.Radius * UnitsPerPixelX * link::MapUnitsPerMile);
  DrawGuarded([&] { surface.Circle(centre.X, centre.Y, radius, PenOf(area)); });
  PrintName(scene, surface, area, centre.X, centre.Y);
}

/// The sign of a point and how far its altitude stands off to the right and down, surface units; 0 for a point of no
/// known type, which has no sign.
double DrawMarker(Surface& surface, areas::PointType type, SurfacePoint at, Pen pen) {
  const auto closed = [&](std::span<const SurfacePoint> corners) {
    for (std::size_t corner = 0; corner < corners.size(); ++corner) {
      const SurfacePoint& from = corners[corner];
      const SurfacePoint& to = corners[(corner + 1) % corners.size()];
      surface.Line(at.X + from.X, at.Y + from.Y, at.X + to.X, at.Y + to.Y, pen);
    }
  };
  switch (type) {
    case areas::PointType::Nav:
      surface.Circle(at.X, at.Y, MarkerReach, pen);
      return MarkerReach;
    case areas::PointType::IP: {
      constexpr SurfacePoint corners[] = {{-MarkerReach, -MarkerReach},
                                          {MarkerReach, -MarkerReach},
                                          {MarkerReach, MarkerReach},
                                          {-MarkerReach, MarkerReach}};
      closed(corners);
      return MarkerReach;
    }
    case areas::PointType::Target: {
      constexpr SurfacePoint corners[] = {{0, -2 * TriangleSide / 3},
                                          {2 * TriangleSide / 3, TriangleSide / 3},
                                          {-2 * TriangleSide / 3, TriangleSide / 3}};
      closed(corners);
      return TriangleSide;
    }
  }
  return 0;
}

void DrawFlightPlan(const Scene& scene, Surface& surface, const areas::Area& area) {
  const std::span<const areas::FlightPlanPoint> points = area.Points.Live();
  if (points.empty()) return;
  const auto place = [&](std::size_t index) { return SurfaceFromMap(scene.View, {points[index].X, points[index].Y}); };
  const Pen pen = PenOf(area);
  for (std::size_t index = 0; index + 1 < points.size(); ++index) {
    const SurfacePoint from = place(index);
    const SurfacePoint to = place(index + 1);
    DrawGuarded([&] { surface.Line(from.X, from.Y, to.X, to.Y, pen); });
  }
  for (std::size_t index = 0; index < points.size(); ++index) {
    DrawGuarded([&] {
      const SurfacePoint at = place(index);
      const double off = DrawMarker(surface, points[index].Type, at, pen);
      if (area.ShowWaypointElevation != areas::On) return;
      surface.Print(SafeFormat(points[index].Z, "0"), at.X + off, at.Y + off, FontOf(area.AltFont), area.Color);
    });
  }
  PrintBoxName(scene, surface, area);
}

}  // namespace

bool MeetsView(const areas::Area& area, const ClipRect& clip) {
  return !(area.MaxX < clip.ClipLeft || area.MinX > clip.ClipRight || area.MaxY < clip.ClipBottom ||
           area.MinY > clip.ClipTop);
}

void DrawArea(const Scene& scene, Surface& surface, const areas::Area& area) {
  switch (area.Type) {
    case areas::AreaType::Region:
      return DrawRegion(scene, surface, area);
    case areas::AreaType::Circle:
      return DrawCircle(scene, surface, area);
    case areas::AreaType::Icon: {
      const SurfacePoint centre = SurfaceFromMap(scene.View, {area.X, area.Y});
      DrawGuarded([&] { DrawIcon(surface, area.Icon, centre.X, centre.Y, area.Color); });
      return PrintName(scene, surface, area, centre.X, centre.Y + IconNameDrop);
    }
    case areas::AreaType::Text: {
      const SurfacePoint at = SurfaceFromMap(scene.View, {area.X, area.Y});
      return surface.Print(area.Text, at.X, at.Y, FontOf(area.TextFont), area.Color);
    }
    case areas::AreaType::FlightPlan:
      return DrawFlightPlan(scene, surface, area);
  }
}

void DrawAreas(const Scene& scene, Surface& surface) {
  if (scene.Areas == nullptr) return;
  const ClipRect clip = VisibleRect(scene.View);
  for (const areas::AreaGroup& group : scene.Areas->AreaGroups.Live()) {
    if (!areas::Shows(*scene.Areas, group)) continue;
    for (const areas::Area& area : group.Areas.Live()) {
      if (areas::Shows(area) && MeetsView(area, clip)) DrawGuarded([&] { DrawArea(scene, surface, area); });
    }
  }
}

void DrawWorkArea(const Scene& scene, Surface& surface) {
  if (scene.Editor == nullptr || !scene.Editor->Open) return;
  const areas::Area& area = scene.Editor->WorkArea;
  if (MeetsView(area, VisibleRect(scene.View))) DrawGuarded([&] { DrawArea(scene, surface, area); });
  Pen pen = PenOf(area);
  pen.DrawWidth = HighLightWidth;
  for (const std::size_t index : areas::HighLights(*scene.Editor)) {
    const areas::AreaLine& line = area.Lines[index];
    const SurfacePoint ends[] = {PixelFromMap(scene.View, {line.X1, line.Y1}),
                                 PixelFromMap(scene.View, {line.X2, line.Y2})};
    DrawGuarded([&] { surface.Segments(ends, pen); });
  }
}

}  // namespace kestrel::map
