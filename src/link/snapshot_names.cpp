#include "link/snapshot_names.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>

#include "link/friendly_index.h"
#include "link/name_order.h"

namespace kestrel::link {
namespace {

/// So many that have come or gone between two that stay are seen as such.
constexpr std::size_t LongestGap = 16;
/// When more than this part of the aircraft is new, sorting all costs less.
constexpr std::size_t FewestPerNew = 16;
constexpr std::uint32_t Gone = 0xFFFFFFFF;

std::size_t RecordsIn(std::string_view Data) { return (Data.size() + AIRecordLength / 2) / AIRecordLength; }

/// Shorter only where the snapshot ends within it.
std::string_view NameAt(std::string_view Data, std::size_t record) {
  return {Data.data() + record * AIRecordLength, std::min(AINameLength, Data.size() - record * AIRecordLength)};
}

/// What has become of the records of a snapshot in the next.
struct Move {
  std::vector<std::uint32_t> To;    ///< by record before: the record now, or Gone
  std::vector<std::uint32_t> Come;  ///< records now that were not there before
};

/// Nothing when more than `most` have come. Aircraft that have changed their order may count as gone and come.
std::optional<Move> MoveOf(std::string_view before, std::string_view now, std::size_t most) {
  const std::size_t countBefore = RecordsIn(before), count = RecordsIn(now);
  Move move{std::vector<std::uint32_t>(countBefore, Gone), {}};
  std::size_t old = 0, fresh = 0;
  while (fresh < count && move.Come.size() <= most) {
    const auto same = [&](std::size_t skippedOld, std::size_t skippedNew) {
      return old + skippedOld < countBefore && fresh + skippedNew < count &&
             NameAt(before, old + skippedOld) == NameAt(now, fresh + skippedNew);
    };
    if (same(0, 0)) {
      move.To[old++] = static_cast<std::uint32_t>(fresh++);
      continue;
    }
    std::size_t gone = 1, come = 1;  // one in the place of another, unless there is more to be seen
    for (std::size_t gap = 1; gap <= LongestGap; ++gap) {
      const bool went = same(gap, 0);
      if (!went && !same(0, gap)) continue;
      gone = went ? gap : 0;
      come = went ? 0 : gap;
      break;
    }
    old += gone;
    for (; come > 0; --come) move.Come.push_back(static_cast<std::uint32_t>(fresh++));
  }
  if (move.Come.size() > most) return std::nullopt;
  return move;
}

/// Puts records into those that stand in order. False when two have one name.
bool PutIn(std::string_view Data, std::span<const std::uint32_t> come, HostileTest isHostile,
           std::vector<SnapshotNames::Aircraft>& aircraft) {
  for (const std::uint32_t record : come) {
    const std::string_view name = NameAt(Data, record);
    const auto at = std::lower_bound(aircraft.begin(), aircraft.end(), name,
                                     [Data](const SnapshotNames::Aircraft& each, std::string_view text) {
                                       return NameAt(Data, each.Record) < text;
                                     });
    if (at != aircraft.end() && NameAt(Data, at->Record) == name) return false;
    aircraft.insert(at, {record, isHostile(name)});
  }
  return true;
}

}  // namespace

std::span<const SnapshotNames::Aircraft> SnapshotNames::Read(std::string_view Data,
                                                             const base::Table<std::string>& FriendlyList) {
  const bool friendsStand = std::ranges::equal(FriendlyList.Live(), friends.Live());
  const bool known = NamesStand(Data) || Follow(Data, FriendlyList);
  if (!known) Sort(Data);
  if (!known || !friendsStand) TellAll(FriendlyList);
  return aircraft;
}

bool SnapshotNames::NamesStand(std::string_view Data) const {
  const std::size_t count = RecordsIn(Data);
  if (count != aircraft.size()) return false;
  if (count == 0) return true;
  if (NameAt(Data, count - 1) != NameAt(data, count - 1)) return false;
  // All others are whole.
  const char* now = Data.data();
  const char* before = data.data();
  for (std::size_t record = 0; record + 1 < count; ++record) {
    if (std::memcmp(now, before, AINameLength) != 0) return false;
    now += AIRecordLength;
    before += AIRecordLength;
  }
  return true;
}

/// Takes those out that have gone and puts those in that have come. False, with nothing changed, when that cannot be
/// told, or when two have one name: how such stand is a matter of the whole order.
bool SnapshotNames::Follow(std::string_view Data, const base::Table<std::string>& FriendlyList) {
  if (!different) return false;
  const std::optional<Move> move = MoveOf(data, Data, RecordsIn(Data) / FewestPerNew);
  if (!move) return false;
  std::vector<Aircraft> those;
  those.reserve(RecordsIn(Data));
  for (const Aircraft& each : aircraft) {
    const std::uint32_t record = move->To[each.Record];
    if (record != Gone) those.push_back({record, each.Hostile});
  }
  if (!move->Come.empty() && !PutIn(Data, move->Come, HostileTest(FriendlyList), those)) return false;
  Take(Data, std::move(those));
  return true;
}

void SnapshotNames::Sort(std::string_view Data) {
  std::vector<std::string_view> names;
  names.reserve(RecordsIn(Data));
  for (std::size_t record = 0; record < RecordsIn(Data); ++record) names.push_back(NameAt(Data, record));
  std::vector<Aircraft> those;
  those.reserve(names.size());
  for (const std::uint32_t record : NameOrder(names, 1)) those.push_back({record, 1});
  Take(Data, std::move(those));
  const auto sameName = [&names](const Aircraft& a, const Aircraft& b) { return names[a.Record] == names[b.Record]; };
  different = std::ranges::adjacent_find(aircraft, sameName) == aircraft.end();
  ++sorted;
}

void SnapshotNames::TellAll(const base::Table<std::string>& FriendlyList) {
  HostileTest isHostile(FriendlyList);
  for (Aircraft& each : aircraft) each.Hostile = isHostile(NameAt(data, each.Record));
  friends = FriendlyList;
  ++told;
}

void SnapshotNames::Take(std::string_view Data, std::vector<Aircraft> those) {
  data = Data;
  aircraft = std::move(those);
}

}  // namespace kestrel::link
