#include "link/tables.h"

#include <algorithm>

namespace kestrel::link {
namespace {

constexpr std::size_t IdCount = 65536;

std::size_t PlaceOf(std::int16_t id) { return static_cast<std::size_t>(id + 32768); }

}  // namespace

std::size_t Tables::FindClient(std::int16_t id) const { return slotOfId.empty() ? 0 : slotOfId[PlaceOf(id)]; }

void Tables::RebuildIndex() {
  slotOfId.assign(IdCount, 0);
  for (std::size_t slot = Clients.UpperBound(); slot >= 1; --slot) {
    slotOfId[PlaceOf(Clients[slot].Id)] = static_cast<std::uint32_t>(slot);
  }
}

void Tables::IndexLast() {
  if (slotOfId.empty()) slotOfId.assign(IdCount, 0);
  const std::size_t last = Clients.UpperBound();
  std::uint32_t& slot = slotOfId[PlaceOf(Clients[last].Id)];
  if (slot == 0) slot = static_cast<std::uint32_t>(last);
}

void Tables::Empty() {
  Clients.Clear();
  AIPlots.Clear();
  AIHistory.Clear();
  std::fill(slotOfId.begin(), slotOfId.end(), 0U);
}

}  // namespace kestrel::link
