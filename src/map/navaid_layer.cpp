#include "map/navaid_layer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "link/tables.h"
#include "map/fault_guard.h"
#include "map/icon_strokes.h"
#include "radio/frequencies.h"

namespace kestrel::map {
namespace {

/// Of the length of an ILS; not quite link::MapUnitsPerMile, and it stands so.
constexpr double MapUnitsPerIlsMile = 6076.11549 / link::FeetPerMapUnit;
constexpr double FarthestCorner = 1 << 28;  ///< further out no corner is set, pixels
constexpr double LeastDivisor = 1e-9;       ///< a fan whose wings would be longer than this allows has none
constexpr double Vertical = 1e-06;          ///< the cosine below which a fan goes straight up or down
constexpr double PenRoom = 2 * UnitsPerPixel;
/// No character is wider, and no line of text higher, than this for each point of its font; and a font counts as at
/// least so many points.
constexpr double MostUnitsPerPoint = 3 * UnitsPerPixel;
constexpr float LeastPoints = 8;

/// Whether anything may be seen of what reaches so far around a place. Nothing is where something is no number.
bool MaySee(const ViewState& view, SurfacePoint at, double reach) {
  return at.X + reach >= 0 && at.X - reach <= view.SurfaceWidth && at.Y + reach >= 0 &&
         at.Y - reach <= view.SurfaceHeight;
}

TextFont FontOf(const FontRecord& font) {
  return {.Name = font.FontName,
          .Size = font.FontSize,
          .Bold = font.FontBold,
          .Italic = font.FontItalic,
          .Strike = font.FontStrike,
          .Under = font.FontUnder};
}

/// Lines of text diagonally beside a place, with a leader to their near corner.
struct StationLabel {
  std::vector<std::string> Lines;
  const FontRecord& Font;
  bool Boxed = false;
  double Inset = 0;    ///< from the place to the near corner on both axes, surface units
  double BoxRoom = 0;  ///< by how much the box is wider than the text, on its far side
};

/// Where a label stands: 1 to the right and below, -1 to the left and above.
struct Side {
  double Right = 1;
  double Down = 1;
};

/// How far the label can reach from its place, without measuring it.
double MostReach(const StationLabel& label) {
  std::size_t longest = label.Lines.size();
  for (const std::string& line : label.Lines) longest = std::max(longest, line.size());
  return label.Inset + label.BoxRoom + PenRoom +
         MostUnitsPerPoint * static_cast<double>(longest) * std::max(LeastPoints, label.Font.FontSize);
}

void DrawLabel(Surface& surface, const StationLabel& label, SurfacePoint at, Side side) {
  const TextFont font = FontOf(label.Font);
  const base::Colour color = label.Font.Color;
  std::vector<TextSize> sizes;
  double width = 0;
  double height = 0;
  for (const std::string& line : label.Lines) {
    sizes.push_back(surface.Measure(line, font));
    width = std::max(width, sizes.back().Width);
    height += sizes.back().Height;
  }
  const double nearX = at.X + side.Right * label.Inset;
  const double nearY = at.Y + side.Down * label.Inset;
  const double middle = nearX + side.Right * width / 2;
  double top = side.Down > 0 ? nearY : nearY - height;
  for (std::size_t line = 0; line < sizes.size(); ++line) {
    surface.Print(label.Lines[line], middle - sizes[line].Width / 2, top, font, color);
    top += sizes[line].Height;
  }
  const Pen pen{.Color = color, .Style = PenStyle::Solid};
  surface.Line(at.X, at.Y, nearX, nearY, pen);
  if (!label.Boxed) return;
  surface.Box(nearX, nearY, nearX + side.Right * (width + label.BoxRoom), nearY + side.Down * height, pen);
}

/// By TACAN_LABEL_POSITION; any other value shows no label.
constexpr std::array<Side, 4> TacanSides = {{{-1, -1}, {1, -1}, {-1, 1}, {1, 1}}};

void DrawTacanLabel(const Scene& scene, Surface& surface, const radio::Airfield& airfield, SurfacePoint at) {
  constexpr double inset = 15 * UnitsPerPixel;
  const auto position = static_cast<std::size_t>(scene.Display.TACAN_LABEL_POSITION);
  if (position >= TacanSides.size()) return;
  const StationLabel label{.Lines = {" " + airfield.Name + " ", " " + airfield.TACAN + airfield.TACAN_BAND + " ",
                                     "  U: " + airfield.UHF + " - V: " + airfield.VHF + " "},
                           .Font = scene.Display.TACAN_LABEL_FONT,
                           .Boxed = scene.Display.DRAW_TACAN_LABELS_BOXED,
                           .Inset = inset,
                           .BoxRoom = 2 * inset};
  if (MaySee(scene.View, at, MostReach(label))) DrawLabel(surface, label, at, TacanSides[position]);
}

void DrawTacan(const Scene& scene, Surface& surface, const radio::Airfield& airfield) {
  const Options& display = scene.Display;
  const auto at = SurfaceFromMap(scene.View, {airfield.TACANX, airfield.TACANY});
  const double range = airfield.TACANR * scene.View.Resolution * UnitsPerPixelX * link::MapUnitsPerMile;
  if (display.DRAW_TACAN_RANGE_VISIBLE && MaySee(scene.View, at, range + PenRoom)) {
    DrawGuarded(
        [&] { surface.Circle(at.X, at.Y, range, {.Color = display.AIRF_TACAN_RANGE_COL, .Style = PenStyle::Solid}); });
  }
  if (display.DRAW_TACAN_ICON_VISIBLE && MaySee(scene.View, at, IconReach * UnitsPerPixel + PenRoom)) {
    DrawGuarded([&] { DrawIcon(surface, display.AIRF_TACAN_ICO, at.X, at.Y, display.AIRF_TACAN_COL); });
  }
  if (display.DRAW_TACAN_LABELS) DrawGuarded([&] { DrawTacanLabel(scene, surface, airfield, at); });
}

double Radians(double degrees) { return degrees * std::numbers::pi / 180; }

/// What all fans of one draw have in common.
struct FanShape {
  double Length = 0;           ///< of the centre line, surface units; below 0 it points backwards
  double HalfAngle = 0;        ///< radians
  std::optional<double> Wing;  ///< length of a wing; none: a fan has neither outline nor label
};

FanShape ShapeOf(const Scene& scene) {
  const Options& display = scene.Display;
  FanShape shape;
  shape.Length = UnitsPerPixel * display.AIRF_ILS_DIST * scene.View.Resolution * MapUnitsPerIlsMile;
  shape.HalfAngle = Radians(display.AIRF_ILS_ANGLE) / 2;
  const double divisor =
      std::cos(shape.HalfAngle) - std::sin(shape.HalfAngle) / std::tan(Radians(display.AIRF_ILS_TAIL_ANGLE));
  // Without a length there is no direction either.
  if (std::abs(divisor) > LeastDivisor && shape.Length != 0) shape.Wing = std::abs(shape.Length) / divisor;
  return shape;
}

struct Fan {
  SurfacePoint Threshold;
  SurfacePoint End;
  SurfacePoint W1;
  SurfacePoint W2;
};

/// `bearing`: degrees clockwise from north.
Fan FanAt(SurfacePoint at, double bearing, const FanShape& shape) {
  const double dX = shape.Length * std::sin(Radians(bearing));
  const double dY = -shape.Length * std::cos(Radians(bearing));
  Fan fan{.Threshold = at, .End = {at.X + dX, at.Y + dY}, .W1 = at, .W2 = at};
  if (!shape.Wing) return fan;
  double slope = std::asin(std::clamp(dY / std::abs(shape.Length), -1.0, 1.0));
  double signX = dX < 0 ? -1 : 1;
  double signY = 1;
  if (std::abs(std::cos(slope)) < Vertical) {
    // The fan lies around its centre line, its W1 on the right of the picture, whatever is left over of dX.
    slope = std::numbers::pi / 2;
    signX = 1;
    signY = dY < 0 ? -1 : 1;
  }
  const auto wing = [&](double angle) -> SurfacePoint {
    return {at.X + std::cos(angle) * signX * *shape.Wing, at.Y + std::sin(angle) * signY * *shape.Wing};
  };
  fan.W1 = wing(slope - shape.HalfAngle);
  fan.W2 = wing(slope + shape.HalfAngle);
  return fan;
}

/// To whole pixels that 32 bits can name.
double CornerPixel(double units) {
  return std::clamp(base::RoundHalfEven(units / UnitsPerPixel), -FarthestCorner, FarthestCorner) * UnitsPerPixel;
}

/// The outline, which ends where it begins.
std::array<SurfacePoint, 5> OutlineOf(const Fan& fan) {
  const auto pixel = [](SurfacePoint at) -> SurfacePoint { return {CornerPixel(at.X), CornerPixel(at.Y)}; };
  return {pixel(fan.Threshold), pixel(fan.W1), pixel(fan.End), pixel(fan.W2), pixel(fan.Threshold)};
}

struct Corner {
  SurfacePoint At;
  Side Stands;
};

/// Where the label of a fan stands; nowhere when the bearing is still none after one turn. That the quadrants differ in
/// kind, and that each of the two bearings 0 and 180 differs from its neighbours, stands so.
std::optional<Corner> LabelCorner(const Fan& fan, double bearing) {
  if (bearing < 0) {
    bearing += 360;
  } else if (bearing > 360) {
    bearing -= 360;
  }
  if (bearing == 360) bearing = 0;
  if (!(bearing >= 0 && bearing < 360)) return std::nullopt;
  if (bearing == 0) return Corner{fan.W1, {1, 1}};
  if (bearing < 90) return Corner{fan.W2, {1, 1}};
  if (bearing < 180) return Corner{fan.W1, {1, -1}};
  if (bearing == 180) return Corner{fan.W2, {-1, -1}};
  if (bearing < 270) return Corner{fan.W1, {-1, -1}};
  return Corner{fan.W2, {1, 1}};
}

void DrawFan(const Scene& scene, Surface& surface, const radio::Airfield& airfield, std::size_t slot,
             const FanShape& shape) {
  const auto at = SurfaceFromMap(scene.View, {airfield.ILS_R[slot].RX, airfield.ILS_R[slot].RY});
  const StationLabel label{.Lines = {"Rnw: " + airfield.ILS_DES[slot], "(" + airfield.ILS[slot] + ")"},
                           .Font = scene.Display.ILS_LABEL_FONT,
                           .Boxed = scene.Display.DRAW_ILS_LABELS_BOXED,
                           .Inset = 10 * UnitsPerPixel};
  const double labelReach = MostReach(label);
  const double reach = std::max(std::abs(shape.Length), std::abs(shape.Wing.value_or(0)));
  if (!MaySee(scene.View, at, reach + labelReach)) return;
  const double bearing = 90 - airfield.ILS_DRAW_HEADING[slot];
  const Fan fan = FanAt(at, bearing, shape);
  const base::Colour color = scene.Display.AIRF_ILS_COL[slot];
  DrawGuarded([&] { surface.Line(at.X, at.Y, fan.End.X, fan.End.Y, {.Color = color, .Style = PenStyle::Dotted}); });
  if (!shape.Wing) return;
  DrawGuarded([&] { surface.Polygon(OutlineOf(fan), {.Color = color, .Style = PenStyle::Solid}); });
  if (!scene.Display.DRAW_ILS_LABELS) return;
  const std::optional<Corner> corner = LabelCorner(fan, bearing);
  if (!corner || !MaySee(scene.View, corner->At, labelReach)) return;
  DrawGuarded([&] { DrawLabel(surface, label, corner->At, corner->Stands); });
}

/// What a runway end without a name, or without a frequency, has in its place.
constexpr std::string_view None = "-";

bool ShowsIls(const radio::Airfield& airfield, std::size_t slot, bool all) {
  return airfield.ILS_VIS[slot] && airfield.ILS_DES[slot] != None && (all || airfield.ILS[slot] != None);
}

}  // namespace

void DrawTacans(const Scene& scene, Surface& surface) {
  if (scene.Navaids == nullptr) return;
  for (const radio::Airfield& airfield : scene.Navaids->Airfields.Live()) {
    if (airfield.VIS && airfield.TACAN_VIS) DrawGuarded([&] { DrawTacan(scene, surface, airfield); });
  }
}

void DrawIlsFans(const Scene& scene, Surface& surface) {
  if (scene.Navaids == nullptr) return;
  const FanShape shape = ShapeOf(scene);
  for (const radio::Airfield& airfield : scene.Navaids->Airfields.Live()) {
    for (std::size_t slot = 0; slot < radio::RunwayEndCount; ++slot) {
      if (!ShowsIls(airfield, slot, scene.Display.AIRF_SHOW_ALL_ILS)) continue;
      DrawGuarded([&] { DrawFan(scene, surface, airfield, slot, shape); });
    }
  }
}

}  // namespace kestrel::map
