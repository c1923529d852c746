#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "base/bytes.h"

namespace kestrel::falcon {

/// How the simulator names a thing; both numbers count. 0, 0 is nothing.
struct EntityId {
  std::uint32_t Number = 0;
  std::uint32_t Creator = 0;  ///< 0 in campaign files
  friend bool operator==(const EntityId&, const EntityId&) = default;
  friend bool operator<(const EntityId& a, const EntityId& b) {
    return a.Creator != b.Creator ? a.Creator < b.Creator : a.Number < b.Number;
  }
};

EntityId TakeEntityId(base::BinaryReader& reader);

/// Finds things of a list by their ids.
class EntityIndex {
 public:
  /// `things` have an Id each; of several with one id the first is found.
  template <class Things>
  explicit EntityIndex(const Things& things) {
    places.reserve(things.size());
    for (std::size_t at = 0; at < things.size(); ++at) places.emplace_back(things[at].Id, at);
    Sort();
  }
  /// Where it stands in the list.
  std::optional<std::size_t> Find(const EntityId& id) const;

 private:
  void Sort();
  std::vector<std::pair<EntityId, std::size_t>> places;
};

}  // namespace kestrel::falcon
