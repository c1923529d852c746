#pragma once

#include <string>
#include <string_view>

#include "falcon/world.h"

namespace kestrel::falcon {

/// The names of a world's objectives as the simulator shows them.
class ObjectiveNames {
 public:
  /// `which` must outlast it.
  explicit ObjectiveNames(const World& which) : world(which), index(which.Objectives) {}

  /// The objective's own name, else the theater's, else that of its parent with `typeName` behind. Empty when there is
  /// none.
  std::string Of(const Objective& objective, std::string_view typeName) const;

 private:
  const World& world;
  EntityIndex index;
};

}  // namespace kestrel::falcon
