#include "areas/area.h"

#include <array>

namespace kestrel::areas {

bool Shows(const AreaCatalogue& catalogue, const AreaGroup& group) {
  if (group.Visible != On || group.FolderIndex < 1) return false;
  const auto folder = static_cast<std::size_t>(group.FolderIndex);
  return folder <= catalogue.AreaFolders.UpperBound() && catalogue.AreaFolders[folder].Visible != Off;
}

std::string ShapeToText(AreaType type) {
  constexpr std::array<const char*, 6> Words = {"", "Region", "Circle", "Icon", "Text", "FlightPlan"};
  const auto number = static_cast<std::int16_t>(type);
  return number >= 1 && number < static_cast<std::int16_t>(Words.size()) ? Words[static_cast<std::size_t>(number)] : "";
}

}  // namespace kestrel::areas
