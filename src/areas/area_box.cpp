#include "areas/area_box.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "areas/area_tree.h"

namespace kestrel::areas {
namespace {

/// Whether the area's box is a place on the map. Without segments or points it tells of nothing.
bool HasPlace(const Area& area) {
  if (area.Type == AreaType::Region && area.Lines.Empty()) return false;
  if (area.Type == AreaType::FlightPlan && area.Points.Empty()) return false;
  return std::isfinite(area.MinX) && std::isfinite(area.MinY) && std::isfinite(area.MaxX) && std::isfinite(area.MaxY);
}

void Join(std::optional<AreaBox>& box, const Area& area) {
  if (!box) box = AreaBox{area.MinX, area.MinY, area.MaxX, area.MaxY};
  box = AreaBox{std::min(box->MinX, area.MinX), std::min(box->MinY, area.MinY), std::max(box->MaxX, area.MaxX),
                std::max(box->MaxY, area.MaxY)};
}

}  // namespace

std::optional<AreaBox> BoxOf(const AreaCatalogue& catalogue, std::string_view key) {
  const std::optional<Node> node = NodeOf(catalogue, key);
  if (!node) return std::nullopt;
  std::optional<AreaBox> marked, all;
  for (std::size_t index = 1; index <= catalogue.AreaGroups.UpperBound(); ++index) {
    const AreaGroup& group = catalogue.AreaGroups[index];
    const bool within = node->IsFolder ? std::cmp_equal(group.FolderIndex, node->Index) : index == node->Index;
    if (!within) continue;
    for (const Area& area : group.Areas.Live()) {
      if (!HasPlace(area)) continue;
      Join(all, area);
      if (group.Visible == On && area.Visible == On) Join(marked, area);
    }
  }
  return marked ? marked : all;
}

}  // namespace kestrel::areas
