#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/table.h"

namespace kestrel::link {

/// The part of an AI aircraft's name that is looked up in FriendlyList: trimmed, less its last character, which is the
/// number in the flight.
std::string_view FlightText(std::string_view name);

/// FriendlyList made ready for thousands of questions "does an entry hold this text": all places in the entries,
/// gathered by the two bytes that stand there.
class FriendlyIndex {
 public:
  explicit FriendlyIndex(const base::Table<std::string>& FriendlyList);
  /// True when an entry holds `text`, by exact case. An empty text is held by any entry. `text` holds no NUL, as no
  /// message does.
  bool Holds(std::string_view text) const;

 private:
  static constexpr std::size_t BucketCount = 1024;
  static std::size_t BucketOf(const char* two);

  std::string entries;                                    ///< all entries, a NUL behind each
  std::array<std::uint32_t, BucketCount + 1> start = {};  ///< where each bucket begins in `places`
  std::vector<std::uint32_t> places;                      ///< offsets in `entries`, bucket by bucket
};

/// Answers whether names are hostile, one after another. The names outlive it.
class HostileTest {
 public:
  explicit HostileTest(const base::Table<std::string>& FriendlyList);
  /// 1 when no entry of FriendlyList holds the name's FlightText, 0 when one does.
  std::uint8_t operator()(std::string_view name);

 private:
  FriendlyIndex friends;
  std::string_view flight;  ///< that of the name before: those of one flight stand together
  std::uint8_t hostile;
};

}  // namespace kestrel::link
