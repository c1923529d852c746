#include "link/friendly_index.h"

#include <cstddef>

#include "base/text.h"

namespace kestrel::link {

std::string_view FlightText(std::string_view name) {
  std::string_view text = base::Trim(name);
  if (!text.empty()) text.remove_suffix(1);
  return text;
}

FriendlyIndex::FriendlyIndex(const base::Table<std::string>& FriendlyList) {
  for (const std::string& entry : FriendlyList.Live()) {
    entries += entry;
    entries += '\0';
  }
  if (entries.empty()) return;
  // Count each bucket, turn the counts into ends, then fill each bucket from its end downward.
  const std::size_t pairs = entries.size() - 1;
  for (std::size_t i = 0; i < pairs; ++i) ++start[BucketOf(&entries[i])];
  for (std::size_t bucket = 1; bucket <= BucketCount; ++bucket) start[bucket] += start[bucket - 1];
  places.resize(pairs);
  for (std::size_t i = 0; i < pairs; ++i) places[--start[BucketOf(&entries[i])]] = static_cast<std::uint32_t>(i);
}

bool FriendlyIndex::Holds(std::string_view text) const {
  if (text.empty()) return !entries.empty();
  if (text.size() == 1) return entries.find(text.front()) != std::string::npos;
  const std::size_t bucket = BucketOf(text.data());
  for (std::uint32_t i = start[bucket]; i < start[bucket + 1]; ++i) {
    // Numbered flights of one name share all but their end, so that is looked at first.
    const std::size_t last = places[i] + text.size() - 1;
    if (last >= entries.size() || entries[last] != text.back()) continue;
    if (entries.compare(places[i], text.size(), text) == 0) return true;
  }
  return false;
}

std::size_t FriendlyIndex::BucketOf(const char* two) {
  const auto first = static_cast<unsigned char>(two[0]);
  const auto second = static_cast<unsigned char>(two[1]);
  return (first * 31U + second) % BucketCount;
}

HostileTest::HostileTest(const base::Table<std::string>& FriendlyList)
    : friends(FriendlyList), hostile(friends.Holds(flight) ? 0 : 1) {}

std::uint8_t HostileTest::operator()(std::string_view name) {
  if (const std::string_view text = FlightText(name); text != flight) {
    flight = text;
    hostile = friends.Holds(flight) ? 0 : 1;
  }
  return hostile;
}

}  // namespace kestrel::link
