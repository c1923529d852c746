#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/table.h"

namespace kestrel::link {

/// Characters of one AI record.
inline constexpr std::size_t AIRecordLength = 18;
/// Characters of the name at its head.
inline constexpr std::size_t AINameLength = 10;

/// The AI aircraft of a snapshot in the order of their names, and who of them is hostile. Kept from one snapshot to the
/// next: servers tell of the same aircraft in the same order for minutes, and then only the places are new.
class SnapshotNames {
 public:
  struct Aircraft {
    std::uint32_t Record = 0;  ///< of the snapshot, the first is 0
    std::uint8_t Hostile = 1;  ///< 1 when the name is not on FriendlyList
  };

  /// Those of the AI records in `Data`, in the order of NameOrder; good until the next call. A last record of 9 to 17
  /// characters counts.
  std::span<const Aircraft> Read(std::string_view Data, const base::Table<std::string>& FriendlyList);

  /// How often all aircraft have been sorted, and all told friend from foe, since the start.
  std::uint64_t Sorted() const { return sorted; }
  std::uint64_t Told() const { return told; }

 private:
  bool NamesStand(std::string_view Data) const;
  bool Follow(std::string_view Data, const base::Table<std::string>& FriendlyList);
  void Sort(std::string_view Data);
  void TellAll(const base::Table<std::string>& FriendlyList);
  void Take(std::string_view Data, std::vector<Aircraft> those);

  std::string data;  ///< the snapshot that the aircraft are of
  std::vector<Aircraft> aircraft;
  bool different = true;             ///< no two of them have one name
  base::Table<std::string> friends;  ///< FriendlyList as they were told by
  std::uint64_t sorted = 0;
  std::uint64_t told = 0;
};

}  // namespace kestrel::link
