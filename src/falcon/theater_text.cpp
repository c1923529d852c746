#include "falcon/theater_text.h"

#include <cmath>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "falcon/key_lines.h"
#include "falcon/terrain.h"

namespace kestrel::falcon {
namespace {

std::optional<double> DegreesOf(const std::vector<KeyLine>& lines, std::string_view key, double most) {
  const std::optional<std::string_view> text = ValueOf(lines, key);
  if (!text) return std::nullopt;
  const double degrees = base::LeadingNumber(*text);
  return std::abs(degrees) <= most ? std::optional(degrees) : std::nullopt;
}

}  // namespace

TheaterText ReadTheaterText(const DataFile& file) {
  const std::vector<KeyLine> lines = KeyLines(file.Bytes, '=');
  TheaterText theater;
  theater.Name = ValueOf(lines, "Theater name").value_or("");
  const std::optional<std::string_view> size = ValueOf(lines, "Theater size in KM");
  if (!size) RefuseFile(file.Name, "it has no \"Theater size in KM\"");
  const double units = base::RoundHalfEven(base::LeadingNumber(*size));
  if (!(units >= 1 && units <= LargestTerrain)) {
    RefuseFile(file.Name, "its \"Theater size in KM\" is " + std::string(size->substr(0, 20)));
  }
  theater.Size = static_cast<std::int32_t>(units);
  theater.CenterLatitude = DegreesOf(lines, "Center latitude", 90);
  theater.CenterLongitude = DegreesOf(lines, "Center longitude", 360);
  theater.Projection = ValueOf(lines, "Projection string").value_or("");
  return theater;
}

}  // namespace kestrel::falcon
