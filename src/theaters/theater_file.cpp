#include "theaters/theater_file.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "base/numbers.h"

namespace kestrel::theaters {
namespace {

constexpr std::string_view MapSection = "MAP";

std::string BullseyeSection(std::size_t index) {
  return "BULLS" + base::FormatInvariant(static_cast<double>(index), "0");
}

/// A whole number of the file that has to fit 16 bits; 0 when it does not, which MendTheater then puts right.
std::int16_t IndexOrNone(double value) {
  if (!(std::abs(value) <= std::numeric_limits<std::int16_t>::max())) return 0;
  return base::ToInt16(value);
}

/// The bullseyes that are really there: `count` may lie, and what 16 bits can point at ends the list. CurrentBull, the
/// file's number of the current one, becomes its place in what was read; 0 when it names a gap.
void ReadBullseyes(const base::ProfileFile& file, double count, Theater& theater) {
  const int named = theater.CurrentBull;
  for (int k = 1; k <= std::numeric_limits<std::int16_t>::max() && k <= count; ++k) {
    const std::string section = BullseyeSection(static_cast<std::size_t>(k));
    if (!file.HasSection(section)) {
      if (k == named) theater.CurrentBull = 0;
      continue;
    }
    Bullseye bull;
    bull.Name = file.ReadIniValue(section, "NAME", "");
    bull.X = base::InvariantNumber(file.ReadIniValue(section, "X", ""));
    bull.Y = base::InvariantNumber(file.ReadIniValue(section, "Y", ""));
    theater.Bulls.Append(std::move(bull));
    if (k == named) theater.CurrentBull = static_cast<std::int16_t>(theater.Bulls.UpperBound());
  }
}

}  // namespace

Theater ReadTheaterFile(const base::ProfileFile& file, std::string_view theaterFile) {
  const auto text = [&file](std::string_view key) { return file.ReadIniValue(MapSection, key, ""); };
  Theater theater;
  theater.TheaterFile = theaterFile;
  theater.Name = text("NAME");
  theater.DisplayName = text("DISPLNAME");
  theater.Pic = text("PIC");
  theater.Size = base::InvariantNumber(text("SIZE"));
  theater.CurrentBull = IndexOrNone(base::InvariantNumber(text("CURRENTBULL")));
  theater.PicSize = base::LeadingNumber(text("PICSIZE"));  // stops at a comma, unlike the others: this stands
  theater.CoordLat = base::InvariantNumber(text("COORDLAT"));
  theater.CoordLong = base::InvariantNumber(text("COORDLONG"));
  ReadBullseyes(file, base::RoundHalfEven(base::InvariantNumber(text("BULLSEYES"))), theater);
  return theater;
}

base::ProfileFile WriteTheaterFile(const Theater& theater, std::string_view banner) {
  base::ProfileFile file;
  file.AppendLine(banner);
  const auto write = [&file](std::string_view key, std::string_view value) {
    file.WriteIniValue(MapSection, key, value);
  };
  write("NAME", theater.Name);
  write("DISPLNAME", theater.DisplayName);
  write("PIC", theater.Pic);
  write("SIZE", base::FormatInvariant(theater.Size, "0"));
  write("BULLSEYES", base::FormatInvariant(static_cast<double>(theater.Bulls.UpperBound()), "0"));
  write("CURRENTBULL", base::FormatInvariant(theater.CurrentBull, "0"));
  write("PICSIZE", base::FormatInvariant(theater.PicSize, "0"));
  write("COORDLAT", base::FormatInvariant(theater.CoordLat, "0.00000000"));
  write("COORDLONG", base::FormatInvariant(theater.CoordLong, "0.00000000"));
  for (std::size_t k = 1; k <= theater.Bulls.UpperBound(); ++k) {
    const Bullseye& bull = theater.Bulls[k];
    const std::string section = BullseyeSection(k);
    file.WriteIniValue(section, "NAME", bull.Name);
    file.WriteIniValue(section, "X", base::FormatInvariant(bull.X, "0"));
    file.WriteIniValue(section, "Y", base::FormatInvariant(bull.Y, "0"));
  }
  return file;
}

}  // namespace kestrel::theaters
