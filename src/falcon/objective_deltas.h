#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "falcon/world.h"

namespace kestrel::falcon {

/// What has changed, from the piece "obd". RuntimeFailure, naming the change, when it is damaged.
std::vector<ObjectiveDelta> ReadObjectiveDeltas(std::string_view piece, int version);

/// What became of deltas.
struct DeltaTally {
  std::size_t Applied = 0;
  std::size_t Unknown = 0;        ///< of no objective
  std::size_t Misfit = 0;         ///< among Applied: the length of the states fits no form, so that these stayed
  std::size_t StrangeOwners = 0;  ///< countries that there are not; those objectives are neutral
};

/// Applies the changes to the objectives of the scenario. The form of the states is decided by their length, for each
/// change by itself: missions pack them also where campaigns do not.
DeltaTally ApplyDeltas(const std::vector<ObjectiveDelta>& deltas, std::vector<Objective>& objectives,
                       const FeatureCounts& features = {});

}  // namespace kestrel::falcon
