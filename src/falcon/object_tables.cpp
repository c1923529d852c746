#include "falcon/object_tables.h"

#include <algorithm>
#include <cmath>

namespace kestrel::falcon {
namespace {

/// A little more than the side of the largest theater, 4096 map units.
constexpr double LargestOffset = 1.5e7;

template <class Record>
const Record* RecordAt(const std::vector<Record>& table, std::int64_t index) {
  return index >= 0 && index < static_cast<std::int64_t>(table.size()) ? &table[static_cast<std::size_t>(index)]
                                                                       : nullptr;
}

/// The part of `count` records from `first` on that the table holds.
template <class Record>
std::span<const Record> RecordsFrom(const std::vector<Record>& table, std::int64_t first, std::int64_t count) {
  const auto held = static_cast<std::int64_t>(table.size());
  if (first < 0 || first >= held || count <= 0) return {};
  return std::span(table).subspan(static_cast<std::size_t>(first),
                                  static_cast<std::size_t>(std::min(count, held - first)));
}

}  // namespace

bool IsPossibleOffset(double feet) { return std::abs(feet) <= LargestOffset; }

const EntityClass* ClassAt(const ObjectTables& tables, std::int32_t index) { return RecordAt(tables.Classes, index); }

const ObjectiveClass* ObjectiveClassAt(const ObjectTables& tables, std::int32_t index) {
  const EntityClass* const thing = ClassAt(tables, index);
  if (!thing || thing->Class != ObjectiveClassCode || thing->Data != DataKind::Objective) return nullptr;
  return RecordAt(tables.Objectives, thing->DataIndex);
}

std::vector<PlacedFeature> FeaturesOf(const ObjectTables& tables, const ObjectiveClass& objective) {
  std::vector<PlacedFeature> features;
  std::int32_t number = 0;
  for (const FeatureEntry& entry : RecordsFrom(tables.Features, objective.FirstFeature, objective.FeatureCount)) {
    PlacedFeature feature{.Number = number++, .Entry = &entry};
    if (entry.ClassIndex <= 0) continue;
    feature.Class = ClassAt(tables, entry.ClassIndex);
    if (!feature.Class) continue;
    if (feature.Class->Data == DataKind::Feature) {
      feature.Data = RecordAt(tables.FeatureClasses, feature.Class->DataIndex);
    }
    if (feature.Data && feature.Data->Flags & FeatureClass::Virtual) continue;
    if (!IsPossibleOffset(entry.East) || !IsPossibleOffset(entry.North) || !std::isfinite(entry.Heading)) continue;
    features.push_back(feature);
  }
  return features;
}

std::optional<std::int32_t> ModelOf(const EntityClass& thing, int status) {
  const bool known = status >= 0 && status < static_cast<int>(thing.Models.size());
  const std::int16_t own = known ? thing.Models[static_cast<std::size_t>(status)] : std::int16_t{0};
  const std::int16_t model = own > 0 ? own : thing.Models[0];
  return model > 0 ? std::optional<std::int32_t>(model) : std::nullopt;
}

std::vector<const PointHeader*> PointHeadersOf(const ObjectTables& tables, const ObjectiveClass& objective) {
  std::vector<const PointHeader*> headers;
  std::vector<bool> seen(tables.Headers.size());
  for (std::int32_t index = objective.FirstHeader; index > 0; index = headers.back()->Next) {
    const PointHeader* const header = RecordAt(tables.Headers, index);
    if (!header || seen[static_cast<std::size_t>(index)]) break;
    seen[static_cast<std::size_t>(index)] = true;
    headers.push_back(header);
  }
  return headers;
}

std::span<const ObjectPoint> PointsOf(const ObjectTables& tables, const PointHeader& header) {
  return RecordsFrom(tables.Points, header.FirstPoint, header.PointCount);
}

}  // namespace kestrel::falcon
