// Objectives, their changes and teams from a stranger, already unpacked: the first two bytes tell the data version and
// how many there are. They are read and applied, or refused with RuntimeFailure.
#include "falcon/objectives.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/failure.h"
#include "falcon/campaign_bytes.h"
#include "falcon/objective_deltas.h"
#include "falcon/teams.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  namespace falcon = kestrel::falcon;
  namespace test = kestrel::test;
  if (size < 2) return 0;
  const int version = data[0];
  const int count = data[1];
  const std::string bytes(reinterpret_cast<const char*>(data) + 2, size - 2);
  const auto length = static_cast<std::int64_t>(bytes.size());
  const auto features = [](std::uint16_t index) { return std::optional<std::size_t>(index % 300u); };
  falcon::ObjectiveList list;
  try {
    const std::string piece = test::Bytes2(count) + test::Bytes4(length) + test::Bytes4(0) + test::Literals(bytes);
    list = falcon::ReadObjectives(piece, version, {1024, 1024, 0, 0}, features);
    if (list.Objectives.size() != static_cast<std::size_t>(count)) std::abort();
    for (const falcon::Objective& one : list.Objectives) {
      if (one.States.size() != one.ClassIndex % 300u) std::abort();
    }
  } catch (const kestrel::base::RuntimeFailure&) {
    list.Objectives.resize(3);
  }
  try {
    const std::string piece = test::Bytes4(0) + test::Bytes2(count) + test::Bytes4(length) + test::Literals(bytes);
    falcon::ApplyDeltas(falcon::ReadObjectiveDeltas(piece, version), list.Objectives, features);
  } catch (const kestrel::base::RuntimeFailure&) {
  }
  falcon::CampaignInfo info;
  info.DataVersion = version;
  for (const falcon::Country& country : falcon::ReadTeams(bytes, info).Teams) {
    if (country.Side >= falcon::Countries) std::abort();
  }
  return 0;
}
