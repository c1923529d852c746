#include "radio/frequencies.h"

#include <algorithm>

#include "base/numbers.h"

namespace kestrel::radio {
namespace {

struct Band {
  double From, To;
  std::size_t EndingAt;  ///< place of the ending in the text, from 0
  std::array<std::string_view, 6> Endings;
};

// "20" and "70" beside the steps of 25 kHz: this stands.
constexpr Band UhfBand = {225000, 399975, 4, {"00", "20", "25", "50", "70", "75"}};
constexpr Band VhfBand = {116000, 151975, 4, UhfBand.Endings};
constexpr Band IlsBand = {10810, 11995, 4, {"0", "5"}};

bool IsIn(const Band& band, std::string_view value) {
  const double number = base::RoundHalfEven(base::LeadingNumber(value));
  if (!(number >= band.From && number <= band.To)) return value == "0";
  // Of the text, not of the number: "3e5" has none.
  if (value.size() <= band.EndingAt) return false;
  const std::string_view ending = value.substr(band.EndingAt, band.Endings[0].size());
  return !ending.empty() && std::find(band.Endings.begin(), band.Endings.end(), ending) != band.Endings.end();
}

}  // namespace

std::string DefaultTeam(std::size_t index) { return "Team #" + std::to_string(index); }

Frequencies::Frequencies() : CustomF1(UnsetChannel), CustomF2(UnsetChannel) {
  for (std::size_t i = 1; i <= ChannelCount; ++i) CustomUHF[i] = CustomVHF[i] = UnsetChannel;
  for (std::size_t i = 0; i < TeamCount; ++i) Teams[i] = DefaultTeam(i);
}

bool IsUHF(std::string_view value) { return IsIn(UhfBand, value); }
bool IsVHF(std::string_view value) { return IsIn(VhfBand, value); }
bool IsILS(std::string_view value) { return IsIn(IlsBand, value); }

FreqImage FreqValToIcon(std::string_view value) {
  if (IsILS(value)) return FreqImage::ILS;
  if (IsVHF(value)) return FreqImage::VHF;
  return IsUHF(value) ? FreqImage::UHF : FreqImage::Unknown;
}

}  // namespace kestrel::radio
