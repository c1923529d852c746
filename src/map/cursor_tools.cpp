#include "map/cursor_tools.h"

#include "map/geometry.h"

namespace kestrel::map {
namespace {

constexpr char Degree[] = "\xB0";

std::string BearingText(const BearingAndRange& from) { return SafeFormat(from.Bearing, "000") + Degree; }

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
  const auto range = [&view](const BearingAndRange& from) {
    return SafeFormat(from.Range / view.Resolution, "##0.00");
  };
  BRTexts texts;
  if (view.CursorLineActive) {
    const BearingAndRange there = BearingRange(view.AnchorX, view.AnchorY, view.MouseX, view.MouseY);
    const BearingAndRange back = BearingRange(view.MouseX, view.MouseY, view.AnchorX, view.AnchorY);
    texts.Bearings = BearingText(there) + " / " + BearingText(back);
    texts.Range = range(there) + " NM";
    texts.Line = BearingText(there) + " - " + range(there) + "nm";
  }
  if (!view.PointerSeen) return texts;
  const BearingAndRange bulls = BearingRange(view.BullsX, view.BullsY, view.MouseX, view.MouseY);
  texts.BullsBearing = BearingText(bulls);
  texts.BullsRange = range(bulls) + " NM";
  return texts;
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
