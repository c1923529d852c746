// A campaign file from a stranger: its bullseye, description, teams, objectives and their changes are read, or it is
// refused with RuntimeFailure.
#include "falcon/campaign_file.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/failure.h"
#include "falcon/campaign_bullseye.h"
#include "falcon/lzss.h"
#include "falcon/objective_deltas.h"
#include "falcon/objectives.h"
#include "falcon/teams.h"

namespace {

namespace falcon = kestrel::falcon;

template <class Read>
void Try(const Read& read) {
  try {
    read();
  } catch (const kestrel::base::RuntimeFailure&) {
  }
}

void Check(bool holds) {
  if (!holds) std::abort();
}

void ReadPieces(const falcon::CampaignFile& file) {
  const falcon::CampaignInfo info = falcon::ReadCampaignInfo(file);
  for (const falcon::Country& country : falcon::ReadTeams(file.Piece("tea"), info).Teams) {
    Check(country.Side < falcon::Countries);
  }
  falcon::ObjectiveList list;
  if (const auto piece = file.Piece("obj")) {
    list = falcon::ReadObjectives(*piece, info.DataVersion, info.Place);
    for (const falcon::Objective& one : list.Objectives) {
      Check(one.Owner < falcon::Countries && one.CellX < info.Place.Width && one.CellY < info.Place.Height);
    }
  }
  if (const auto piece = file.Piece("obd")) {
    const auto deltas = falcon::ReadObjectiveDeltas(*piece, info.DataVersion);
    const falcon::DeltaTally tally = falcon::ApplyDeltas(deltas, list.Objectives);
    Check(tally.Applied + tally.Unknown == deltas.size());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  Try([&bytes] {
    const falcon::CampaignFile file(bytes);
    Try([&file] {
      const falcon::CampaignBullseye place = falcon::ReadCampaignBullseye(file);
      Check(place.X >= 0 && place.X < 8192 && place.Y >= 0 && place.Y < 8192);
    });
    ReadPieces(file);
  });
  // The same bytes as a packed piece; the first two tell how much is wanted of it.
  if (size < 2) return 0;
  const std::size_t wanted = data[0] | static_cast<std::size_t>(data[1]) << 8;
  Try([&] { Check(falcon::ExpandLzss(std::string_view(bytes).substr(2), wanted).size() == wanted); });
  return 0;
}
