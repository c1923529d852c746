#include "map/cursor_tools.h"

namespace kestrel::map {
namespace {

constexpr char Degree[] = "\xB0";

std::string BearingText(const BearingAndRange& from) { return SafeFormat(from.Bearing, "000") + Degree; }

std::string RangeText(const ViewState& view, const BearingAndRange& from) {
  return SafeFormat(from.Range / view.Resolution, "##0.00");
}

std::string LineText(const ViewState& view, const BearingAndRange& there) {
  return BearingText(there) + " - " + RangeText(view, there) + "nm";
}

}  // namespace

base::Changed TrackPointer(ViewState& view, const Options& options, double x, double y, bool leftDown) {
  view.CursorLineActive = options.STATICCURSOR || (leftDown && !view.ViewChanging);
  MovePointer(view, x, y);
  return base::Changed::CursorLine;
}

base::Changed SetStaticCursor(ViewState& view, Options& options, bool on) {
  options.STATICCURSOR = on;
  if (on) return base::Changed::Nothing;
  view.CursorLineActive = false;
  return base::Changed::CursorLine;
}

BRTexts UpdateBRs(const ViewState& view) {
  BRTexts texts;
  if (view.CursorLineActive) {
    const BearingAndRange there = BearingRange(view.AnchorX, view.AnchorY, view.MouseX, view.MouseY);
    const BearingAndRange back = BearingRange(view.MouseX, view.MouseY, view.AnchorX, view.AnchorY);
    texts.Bearings = BearingText(there) + " / " + BearingText(back);
    texts.Range = RangeText(view, there) + " NM";
    texts.Line = LineText(view, there);
  }
  if (!view.PointerSeen) return texts;
  const BearingAndRange bulls = BearingRange(view.BullsX, view.BullsY, view.MouseX, view.MouseY);
  texts.BullsBearing = BearingText(bulls);
  texts.BullsRange = RangeText(view, bulls) + " NM";
  return texts;
}

MeasuredLine Measure(const ViewState& view, MapPoint from, MapPoint to) {
  const SurfacePoint start = SurfaceFromMap(view, from);
  const SurfacePoint end = SurfaceFromMap(view, to);
  return {from, to, LineText(view, BearingRange(start.X, start.Y, end.X, end.Y))};
}

base::Changed ReBind(ViewState& view, const link::Tables& plots) {
  const std::int16_t index = view.AnchorPlotIndex;
  if (index <= 0 || static_cast<std::size_t>(index) > plots.Clients.UpperBound()) return base::Changed::Nothing;
  const link::PlotRecord& plot = plots.Clients[static_cast<std::size_t>(index)];
  // Map units taken as surface units; this stands.
  view.AnchorX = plot.X;
  view.AnchorY = plot.Y;
  return base::Changed::CursorLine;
}

std::string ElevationText(const ViewState& view, const theaters::Elevations& elevations) {
  const auto feet = elevations.At(view.CursorMapX, view.CursorMapY);
  return feet ? SafeFormat(*feet, "0") + " ft" : " ";
}

}  // namespace kestrel::map
