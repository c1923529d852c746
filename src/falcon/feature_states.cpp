#include "falcon/feature_states.h"

#include <algorithm>

namespace kestrel::falcon {
namespace {

constexpr std::size_t InAByte = 4;
constexpr std::uint8_t StateBits = 3;

constexpr std::size_t PackedBytes(std::size_t features) { return (features + InAByte - 1) / InAByte; }

StatusForm FormOfVersion(const std::vector<Objective>& objectives, int version) {
  constexpr int lastPacked = 76;
  constexpr int firstBytes = 100;
  if (version <= lastPacked) return StatusForm::Packed;
  if (version >= firstBytes) return StatusForm::Bytes;
  // No class has more features than 64 bytes hold packed.
  constexpr std::size_t mostPacked = 64;
  bool isLong = false;
  for (const Objective& one : objectives) {
    const auto isState = [](std::uint8_t byte) { return byte <= StateBits; };
    if (!std::all_of(one.States.begin(), one.States.end(), isState)) return StatusForm::Packed;
    isLong = isLong || one.States.size() > mostPacked;
  }
  return isLong ? StatusForm::Bytes : StatusForm::Packed;
}

}  // namespace

std::optional<std::size_t> FeaturesOf(const Objective& one, const FeatureCounts& features) {
  return features ? features(one.ClassIndex) : std::nullopt;
}

StatusForm FormOf(const std::vector<Objective>& objectives, int version, const FeatureCounts& features) {
  std::size_t bytes = 0;
  std::size_t packed = 0;
  for (const Objective& one : objectives) {
    const std::optional<std::size_t> count = FeaturesOf(one, features);
    if (!count) continue;
    if (one.States.size() == *count) ++bytes;
    if (one.States.size() == PackedBytes(*count)) ++packed;
  }
  if (bytes == packed) return FormOfVersion(objectives, version);
  return bytes > packed ? StatusForm::Bytes : StatusForm::Packed;
}

std::vector<FeatureState> Unpacked(const std::vector<std::uint8_t>& status, StatusForm form,
                                   std::optional<std::size_t> features) {
  const std::size_t each = form == StatusForm::Packed ? InAByte : 1;
  const std::size_t held = status.size() * each;
  std::vector<FeatureState> states(features.value_or(held));
  for (std::size_t at = 0; at < std::min(states.size(), held); ++at) {
    const auto shift = static_cast<unsigned>(2 * (at % each));
    states[at] = static_cast<FeatureState>(status[at / each] >> shift & StateBits);
  }
  return states;
}

bool ApplyStates(const ObjectiveDelta& delta, std::optional<std::size_t> features, std::vector<FeatureState>& states) {
  const std::size_t count = features.value_or(states.size());
  const bool packed = delta.StatusBytes == PackedBytes(count);
  if (!packed && delta.StatusBytes != count) return false;
  const std::vector<FeatureState> told =
      Unpacked(delta.Status, packed ? StatusForm::Packed : StatusForm::Bytes, std::nullopt);
  states.resize(count);
  std::copy_n(told.begin(), std::min(told.size(), count), states.begin());
  return true;
}

}  // namespace kestrel::falcon
