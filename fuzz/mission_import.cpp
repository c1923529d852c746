// A mission's ini file from a stranger: what it adds to the areas is bounded and finite, and undo takes it back.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "areas/mission_import.h"

namespace {

namespace areas = kestrel::areas;

void Check(bool holds) {
  if (!holds) std::abort();
}

void CheckArea(const areas::Area& area) {
  for (const double number : {area.X, area.Y, area.Radius}) Check(std::isfinite(number));
  for (const areas::FlightPlanPoint& point : area.Points.Live()) {
    for (const double number : {point.X, point.Y, point.Z}) Check(std::isfinite(number));
    Check(point.Type == areas::PointType::Nav || point.Type == areas::PointType::Target);
  }
  const bool plan = area.Type == areas::AreaType::FlightPlan;
  Check(plan ? area.Points.UpperBound() >= 1 && area.Points.UpperBound() <= 24 : area.Points.Empty());
  Check(area.Lines.Empty() && !area.Editing);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const kestrel::base::ProfileFile mission(std::string_view(reinterpret_cast<const char*>(data), size));
  areas::AreaCatalogue catalogue;
  areas::AreaHistory history;
  catalogue.AreaFolders.Append({"General", areas::On});
  areas::ImportMission(catalogue, history, mission);

  Check(catalogue.Revision == 1 && catalogue.AreaFolders.UpperBound() == 2);
  Check(catalogue.AreaFolders[2].Name == areas::MissionTitle(mission));
  // Steerpoints, 15 threats and the lines.
  Check(catalogue.AreaGroups.UpperBound() <= 17);
  for (const areas::AreaGroup& group : catalogue.AreaGroups.Live()) {
    Check(group.FolderIndex == 2 && group.Areas.UpperBound() >= 1 && group.Areas.UpperBound() <= 4);
    for (const areas::Area& area : group.Areas.Live()) CheckArea(area);
  }
  const std::size_t groups = catalogue.AreaGroups.UpperBound();
  Check(history.Undo(catalogue).Done);
  Check(catalogue.AreaFolders.UpperBound() == 1 && catalogue.AreaGroups.Empty());
  Check(history.Redo(catalogue).Done && catalogue.AreaGroups.UpperBound() == groups);
  return 0;
}
