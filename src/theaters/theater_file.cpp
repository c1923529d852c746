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

/// The bullseyes that are really there: `count` may lie. A gap ends the list, and so does what 16 bits can point at.
base::Table<Bullseye> ReadBullseyes(const base::ProfileFile& file, double count) {
  base::Table<Bullseye> bulls;
  for (std::size_t k = 1; k <= static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max()); ++k) {
    const std::string section = BullseyeSection(k);
    if (static_cast<double>(k) > count || !file.HasSection(section)) break;
    Bullseye bull;
    bull.Name = file.ReadIniValue(section, "NAME", "");
    bull.X = base::InvariantNumber(file.ReadIniValue(section, "X", ""));
    bull.Y = base::InvariantNumber(file.ReadIniValue(section, "Y", ""));
    bulls.Append(std::move(bull));
  }
  return bulls;
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
  theater.Bulls = ReadBullseyes(file, base::RoundHalfEven(base::InvariantNumber(text("BULLSEYES"))));
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
