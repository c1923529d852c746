#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "falcon/objectives.h"
#include "falcon/world.h"

// The two forms in which the states of features stand in files.
namespace kestrel::falcon {

/// The features of an objective's class; nothing when they are not known.
std::optional<std::size_t> FeaturesOf(const Objective& one, const FeatureCounts& features);

/// The form of a whole file, its objectives holding the states as they stand there: by comparing their lengths with the
/// features of the classes, else by the version.
StatusForm FormOf(const std::vector<Objective>& objectives, int version, const FeatureCounts& features);

/// One state for each feature: as many as `features` tells, else as many as the bytes can hold.
std::vector<FeatureState> Unpacked(const std::vector<std::uint8_t>& status, StatusForm form,
                                   std::optional<std::size_t> features);

/// Replaces `states`, which are as Unpacked gave them for the scenario. False, with the states unchanged, when the
/// length that the delta tells is right for neither form.
bool ApplyStates(const ObjectiveDelta& delta, std::optional<std::size_t> features, std::vector<FeatureState>& states);

}  // namespace kestrel::falcon
