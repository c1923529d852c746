#include "falcon/objective_deltas.h"

#include <cstdint>
#include <optional>
#include <string>

#include "base/bytes.h"
#include "base/failure.h"
#include "falcon/feature_states.h"
#include "falcon/lzss.h"
#include "falcon/objectives.h"

namespace kestrel::falcon {
namespace {

/// How much of the states a delta holds: before version 64 one byte, whatever their length.
enum class DeltaStatus : std::uint8_t { FirstByte, Whole };

ObjectiveDelta TakeDelta(base::BinaryReader& reader, DeltaStatus form) {
  ObjectiveDelta delta;
  delta.Id = TakeEntityId(reader);
  reader.Skip(4);  // last repair
  delta.Owner = reader.U8();
  delta.Supply = reader.U8();
  delta.Fuel = reader.U8();
  delta.Losses = reader.U8();
  delta.StatusBytes = reader.U8();
  const std::size_t stored = form == DeltaStatus::FirstByte ? 1 : delta.StatusBytes;
  for (std::size_t at = 0; at < stored; ++at) delta.Status.push_back(reader.U8());
  return delta;
}

std::vector<ObjectiveDelta> WalkDeltas(std::string_view bytes, std::size_t count, DeltaStatus form) {
  base::BinaryReader reader(bytes);
  std::vector<ObjectiveDelta> deltas;
  for (std::size_t n = 1; n <= count; ++n) {
    try {
      deltas.push_back(TakeDelta(reader, form));
    } catch (const base::RuntimeFailure& failure) {
      throw base::RuntimeFailure("change " + std::to_string(n) + " of " + std::to_string(count) + ": " +
                                 failure.what());
    }
  }
  if (reader.Left() != 0) throw base::RuntimeFailure("bytes follow the last change");
  return deltas;
}

}  // namespace

std::vector<ObjectiveDelta> ReadObjectiveDeltas(std::string_view piece, int version) {
  base::BinaryReader head(piece);
  head.Skip(4);  // the packed size
  const std::int16_t count = head.I16();
  const std::int32_t size = head.I32();
  if (count < 0) throw base::RuntimeFailure("its count of changes is below 0");
  const std::string bytes = ExpandLzss(piece.substr(piece.size() - head.Left()), size, MaxObjectiveBytes);
  const DeltaStatus usual = version < 64 ? DeltaStatus::FirstByte : DeltaStatus::Whole;
  const DeltaStatus other = version < 64 ? DeltaStatus::Whole : DeltaStatus::FirstByte;
  try {
    return WalkDeltas(bytes, static_cast<std::size_t>(count), usual);
  } catch (const base::RuntimeFailure& failure) {
    try {
      return WalkDeltas(bytes, static_cast<std::size_t>(count), other);
    } catch (const base::RuntimeFailure&) {
      throw base::RuntimeFailure(failure.what());
    }
  }
}

DeltaTally ApplyDeltas(const std::vector<ObjectiveDelta>& deltas, std::vector<Objective>& objectives,
                       const FeatureCounts& features) {
  const EntityIndex index(objectives);
  DeltaTally tally;
  for (const ObjectiveDelta& delta : deltas) {
    const std::optional<std::size_t> place = index.Find(delta.Id);
    if (!place) {
      ++tally.Unknown;
      continue;
    }
    Objective& one = objectives[*place];
    ++tally.Applied;
    one.Owner = OwnerOf(delta.Owner, tally.StrangeOwners);
    one.Supply = delta.Supply;
    one.Fuel = delta.Fuel;
    one.Losses = delta.Losses;
    if (!ApplyStates(delta, FeaturesOf(one, features), one.States)) ++tally.Misfit;
  }
  return tally;
}

}  // namespace kestrel::falcon
