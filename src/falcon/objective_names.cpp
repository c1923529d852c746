#include "falcon/objective_names.h"

#include <cstddef>
#include <optional>

namespace kestrel::falcon {
namespace {

/// The name that an objective has without its parent.
std::string_view ProperName(const World& world, const Objective& one) {
  if (!one.OwnName.empty()) return one.OwnName;
  return one.NameId > 0 ? world.Names[static_cast<std::size_t>(one.NameId)] : std::string_view();
}

}  // namespace

std::string ObjectiveNames::Of(const Objective& objective, std::string_view typeName) const {
  const std::string_view own = ProperName(world, objective);
  if (!own.empty()) return std::string(own);
  const std::optional<std::size_t> parent = index.Find(objective.Parent);
  if (!parent) return {};
  const std::string_view parents = ProperName(world, world.Objectives[*parent]);
  return parents.empty() ? std::string() : std::string(parents) + " " + std::string(typeName);
}

}  // namespace kestrel::falcon
