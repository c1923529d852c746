// The tables of what stands on the ground from a stranger: each is read or refused; what has been read together is
// looked through from the classes of objectives down, whatever the records name.
#include <cmath>
#include <cstdlib>
#include <string>

#include "falcon/class_table.h"
#include "falcon/object_table_files.h"
#include "falcon/runways.h"
#include "foreign_bytes.h"

namespace {

using namespace kestrel;

void LookThrough(const falcon::ObjectTables& tables) {
  for (std::size_t index = 0; index < tables.Classes.size(); ++index) {
    const falcon::ObjectiveClass* const objective = falcon::ObjectiveClassAt(tables, static_cast<std::int32_t>(index));
    if (!objective) continue;
    for (const falcon::PlacedFeature& feature : falcon::FeaturesOf(tables, *objective)) {
      if (!std::isfinite(feature.Entry->East + feature.Entry->North) || feature.Number < 0) std::abort();
      for (int status = -1; status < 9; ++status) {
        if (falcon::ModelOf(*feature.Class, status).value_or(1) < 1) std::abort();
      }
    }
    if (falcon::PointHeadersOf(tables, *objective).size() > tables.Headers.size()) std::abort();
    for (const auto& runway : falcon::CollectRunways(tables, *objective)) {
      for (const auto& end : runway) {
        if (end && (!(end->Heading >= 0 && end->Heading <= 360) || end->Name.size() < 2)) std::abort();
      }
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::ForeignBytes input(data, size);
  const auto file = [&](std::string_view bytes) { return falcon::DataFile{"table", std::string(bytes)}; };
  falcon::ObjectTables tables;
  fuzz::Try([&] { tables.Objectives = falcon::ReadObjectiveClasses(file(input.File())); });
  fuzz::Try([&] { tables.Features = falcon::ReadFeatureEntries(file(input.File())); });
  fuzz::Try([&] { tables.FeatureClasses = falcon::ReadFeatureClasses(file(input.File())); });
  fuzz::Try([&] { tables.Headers = falcon::ReadPointHeaders(file(input.File())); });
  const falcon::DataFile points = file(input.File());
  fuzz::Try([&] { tables.Points = falcon::ReadPoints(points); });
  fuzz::Try([&] { tables.Points = falcon::ReadLargePoints(points); });
  fuzz::Try([&] { tables.Classes = falcon::ReadClassTable(file(input.Rest())); });
  LookThrough(tables);
  return 0;
}
