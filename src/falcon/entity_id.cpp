#include "falcon/entity_id.h"

#include <algorithm>

namespace kestrel::falcon {

EntityId TakeEntityId(base::BinaryReader& reader) {
  EntityId id;
  id.Number = reader.U32();
  id.Creator = reader.U32();
  return id;
}

void EntityIndex::Sort() { std::sort(places.begin(), places.end()); }

std::optional<std::size_t> EntityIndex::Find(const EntityId& id) const {
  const auto found = std::lower_bound(places.begin(), places.end(), std::pair(id, std::size_t{0}));
  if (found == places.end() || found->first != id) return std::nullopt;
  return found->second;
}

}  // namespace kestrel::falcon
