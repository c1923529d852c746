#include "radio/navaid_place.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "radio/frequency_tree.h"

namespace kestrel::radio {
namespace {

/// What stands for an ILS, or for its runway, that there is not.
constexpr std::string_view NoRunway = "-";

const Airfield* AirfieldOf(const Frequencies& tables, const FreqKey& key) {
  const bool names =
      key.Record == FreqRecord::Airfield || key.Record == FreqRecord::TACAN || key.Record == FreqRecord::ILS;
  return names && key.Index >= 1 && key.Index <= tables.Airfields.UpperBound() ? &tables.Airfields[key.Index] : nullptr;
}

void Join(std::optional<NavaidPlace>& place, double x, double y) {
  if (!std::isfinite(x) || !std::isfinite(y)) return;
  if (!place) place = {x, y, x, y};
  place->MinX = std::min(place->MinX, x);
  place->MinY = std::min(place->MinY, y);
  place->MaxX = std::max(place->MaxX, x);
  place->MaxY = std::max(place->MaxY, y);
}

}  // namespace

std::optional<NavaidPlace> PlaceOf(const Frequencies& tables, std::string_view key) {
  const FreqKey read = ReadFreqKey(key);
  const Airfield* airfield = AirfieldOf(tables, read);
  std::optional<NavaidPlace> place;
  if (airfield == nullptr) return place;
  const bool all = read.Record == FreqRecord::Airfield;
  if (all || read.Record == FreqRecord::TACAN) Join(place, airfield->TACANX, airfield->TACANY);
  for (std::size_t k = 0; k < RunwayEndCount; ++k) {
    const bool wanted = all || (read.Record == FreqRecord::ILS && read.Part == k);
    const bool named = !base::Trim(airfield->ILS_DES[k]).empty() && airfield->ILS_DES[k] != NoRunway;
    if (wanted && named) Join(place, airfield->ILS_R[k].RX, airfield->ILS_R[k].RY);
  }
  return place;
}

std::string CopiedValue(const Frequencies& tables, std::string_view key) {
  const FreqKey read = ReadFreqKey(key);
  const Airfield* airfield = AirfieldOf(tables, read);
  std::string value;
  if (airfield == nullptr) {
    value = OfferedValue(tables, key);
  } else if (read.Record == FreqRecord::TACAN) {
    value = airfield->TACAN + airfield->TACAN_BAND;
  } else if (read.Record == FreqRecord::ILS && airfield->ILS[read.Part] != NoRunway) {
    value = airfield->ILS[read.Part];
  }
  return std::string(base::Trim(value));
}

}  // namespace kestrel::radio
