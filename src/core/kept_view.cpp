#include "core/kept_view.h"

#include "map/geometry.h"

namespace kestrel::core {
namespace {

bool OnTheMap(double place, double size) { return place >= 0 && place <= size * map::UnitsPerPixel; }

}  // namespace

void KeepView(Station& station) {
  WindowExtras& kept = station.WindowOptions;
  if (!kept.KEEPFRAME || station.Catalogue.CurrentTheater == 0) return;
  kept.LASTZOOM = station.View.Resolution;
  kept.LASTVIEWX = station.View.ViewCenterX;
  kept.LASTVIEWY = station.View.ViewCenterY;
  kept.LASTTHEATER = station.Catalogue.Current().TheaterFile;
}

base::Changed TakeKeptView(Station& station) {
  const WindowExtras& kept = station.WindowOptions;
  map::ViewState& view = station.View;
  if (!kept.KEEPFRAME || kept.LASTTHEATER != station.Catalogue.Current().TheaterFile) return base::Changed::Nothing;
  if (!OnTheMap(kept.LASTVIEWX, view.Size) || !OnTheMap(kept.LASTVIEWY, view.Size)) return base::Changed::Nothing;
  view.ViewCenterX = kept.LASTVIEWX;
  view.ViewCenterY = kept.LASTVIEWY;
  return map::ChangeRes(view, kept.LASTZOOM);
}

}  // namespace kestrel::core
