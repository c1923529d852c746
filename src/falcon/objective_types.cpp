#include "falcon/objective_types.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace kestrel::falcon {
namespace {

/// From 1 on.
constexpr std::array<std::string_view, 31> Names = {
    "Airbase",     "Airstrip",      "Armybase",      "Beach",     "Border",  "Bridge",        "Chemical Plant",
    "City",        "Headquarters",  "Depot",         "Factory",   "Ford",    "Fortification", "Hill Top",
    "Junction",    "Nav Beacon",    "Nuclear Plant", "TYPE_PASS", "Port",    "Power Plant",   "Radar Site",
    "Radio Tower", "Rail Terminal", "Railroad",      "Refinery",  "Highway", "Sea",           "Town",
    "Village",     "HART Site",     "SAM Site"};

}  // namespace

std::string ObjectiveTypeName(std::uint8_t type) {
  const std::size_t place = type - std::size_t{1};
  return place < Names.size() ? std::string(Names[place]) : "Unknown " + std::to_string(type);
}

}  // namespace kestrel::falcon
