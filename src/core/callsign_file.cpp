#include "core/callsign_file.h"

#include <algorithm>
#include <limits>
#include <string>

#include "base/files.h"
#include "base/numbers.h"
#include "base/profile_file.h"
#include "base/program_title.h"

namespace kestrel::core {
namespace {

constexpr std::string_view Section = "CALLSIGNS";

std::filesystem::path CallsignFile(const Station& station) { return base::FindFile(station.AppPath, "Callsigns.ini"); }

std::string PlayerSection(std::size_t n) { return "PLAYER" + std::to_string(n); }

/// In quotes, so that blanks and quotes at its ends come back.
std::string InQuotes(const std::string& text) { return '"' + text + '"'; }

}  // namespace

void LoadCallsigns(Station& station) {
  const base::ProfileFile file = base::ProfileFile::Load(CallsignFile(station));
  const double promised = base::LeadingNumber(file.ReadIniValue(Section, "NUM", "0"));
  const auto most = static_cast<double>(link::Callsigns::MaxNames);
  const auto count = static_cast<std::size_t>(std::clamp(base::RoundHalfEven(promised), 0.0, most));
  for (std::size_t n = 1; n <= count; ++n) {
    base::ProfileFile::SectionView player = file.Open(PlayerSection(n));
    const std::string_view name = player.Value("NAME");
    station.Plots.Given.GiveLabel(name, player.Value("LABEL"));
    const double color = base::LeadingNumber(player.Value("COLOR", "0"));
    // White is the greatest.
    if (color >= 0 && color <= 0xFFFFFF) station.Plots.Given.GiveColor(name, static_cast<base::Colour>(color));
  }
}

void SaveCallsigns(const Station& station) {
  const link::Callsigns& given = station.Plots.Given;
  if (!given.REMEMBERCALLSIGNS) return;
  base::ProfileFile file;
  file.AppendLine(base::Banner("Callsigns"));
  file.WriteIniValue(Section, "NUM", std::to_string(given.All().size()));
  std::size_t n = 0;
  for (const auto& [name, look] : given.All()) {
    const std::string section = PlayerSection(++n);
    file.WriteIniValue(section, "NAME", InQuotes(name));
    file.WriteIniValue(section, "LABEL", InQuotes(look.Label));
    file.WriteIniValue(section, "COLOR", std::to_string(look.Color));
  }
  const std::filesystem::path path = CallsignFile(station);
  const bool isThere = base::FileExists(path);
  if (!isThere && given.All().empty()) return;
  if (isThere && base::ProfileFile::Load(path).Text() == file.Text()) return;
  file.Save(path);
}

}  // namespace kestrel::core
