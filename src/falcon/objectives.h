#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "falcon/campaign_info.h"
#include "falcon/world.h"

namespace kestrel::falcon {

/// How the states of features stand in a file.
enum class StatusForm : std::uint8_t {
  Packed,  ///< four in a byte, the first in the lowest bits
  Bytes,   ///< one a byte, of which the lowest two bits count
};

/// The objectives of a file.
struct ObjectiveList {
  std::vector<Objective> Objectives;
  StatusForm States = StatusForm::Packed;  ///< of all of them
  std::size_t TailBytes = 0;               ///< that each ends with: exact place and name
  std::size_t StrangeOwners = 0;           ///< countries that there are not; those objectives are neutral
};

/// Reads the piece "obj" of a file whose data version is `version`, in a theater of `place`. `features`, when the class
/// table is known, tells how the states stand and how many there are. Where the versions' layout does not fit, the
/// others are tried; one that ends exactly behind the last objective, with all of them in the theater, is taken.
/// RuntimeFailure, naming the objective at which the version's own layout fails, when none does.
ObjectiveList ReadObjectives(std::string_view piece, int version, const CampaignPlace& place,
                             const FeatureCounts& features = {});

/// The country that a file tells; one that there is not is neutral, and counted.
std::uint8_t OwnerOf(std::uint8_t told, std::size_t& strange);

/// Largest list of objectives or changes that is unpacked; the largest known has 2 MB.
inline constexpr std::size_t MaxObjectiveBytes = std::size_t{64} << 20;

}  // namespace kestrel::falcon
