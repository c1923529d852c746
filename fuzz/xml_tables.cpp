// The simulator's tables as XML from a stranger: each document is read by every reader of such tables, or refused.
#include <cmath>
#include <cstdlib>
#include <string>

#include "falcon/camp_objects.h"
#include "falcon/xml_object_tables.h"
#include "falcon/xml_records.h"
#include "foreign_bytes.h"

namespace {

using namespace kestrel;

template <class Table>
void Check(const Table& table) {
  if (table.size() > static_cast<std::size_t>(falcon::MaxXmlNumber) + 1) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const falcon::DataFile file{"table", std::string(reinterpret_cast<const char*>(data), size)};
  fuzz::Try([&] { Check(falcon::ReadXmlClasses(file)); });
  fuzz::Try([&] { Check(falcon::ReadXmlObjectiveClasses(file)); });
  fuzz::Try([&] { Check(falcon::ReadXmlFeatureEntries(file)); });
  fuzz::Try([&] { Check(falcon::ReadXmlFeatureClasses(file)); });
  fuzz::Try([&] {
    for (const falcon::PointHeader& header : falcon::ReadXmlPointHeaders(file)) {
      if (header.RunwayNumber < -128 || header.RunwayNumber > 127) std::abort();
    }
  });
  fuzz::Try([&] { Check(falcon::ReadXmlPoints(file)); });
  fuzz::Try([&] {
    if (falcon::ReadXmlObjectiveClass(file).FeatureCount != 0) std::abort();
  });
  fuzz::Try([&] { Check(falcon::ReadCampObjects(file)); });
  return 0;
}
