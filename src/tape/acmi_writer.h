#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "link/tables.h"
#include "tape/format.h"

namespace kestrel::tape {

/// A place on the earth.
struct EarthPlace {
  double Lat = 0;   ///< degrees north
  double Long = 0;  ///< degrees east
};

/// A tape as text of the form ACMI 2.2, which programs that look at recorded flights read: a record after another. Each
/// position is that of the record, nothing is put between them. A player is shown as on the map, from his second
/// position on; what has no place on the earth is left out, as is a record whose time is none of 1899-12-30 to
/// 9999-12-31. An aircraft that is not in a record is removed, and when it comes back it is another object; of those
/// that share a name the first in a record is the first in the next.
class AcmiWriter {
 public:
  /// Where a place of the map lies, map units, Y growing north.
  using Earth = std::function<EarthPlace(double X, double Y)>;

  /// `mapSize`: extent of the theater, map units. `bullX`, `bullY`: the tape's bullseye, map units, Y growing north.
  AcmiWriter(Earth placeOf, double mapSize, double bullX, double bullY)
      : earth(std::move(placeOf)), size(mapSize), bullseyeX(bullX), bullseyeY(bullY) {}

  /// Appends the text of the next record to `out`, bytes of UTF-8; what comes before the first one with that.
  void Append(const TapeRecord& record, std::string& out);
  /// How many records were not left out.
  std::uint64_t Records() const { return records; }

 private:
  enum class Side : std::uint8_t { Friend, Foe };
  /// An aircraft as the text has told of it.
  struct Object {
    std::uint64_t Id = 0;
    Side Shown = Side::Friend;
  };
  /// Those of one name, in the order of the records.
  struct Namesakes {
    std::vector<Object> Objects;
    std::size_t Seen = 0;      ///< how many of them are in the present record
    std::uint64_t Record = 0;  ///< the record that Seen is of
  };
  struct TextHash : std::hash<std::string_view> {
    using is_transparent = void;
  };
  using Kind = std::unordered_map<std::string, Namesakes, TextHash, std::equal_to<>>;

  void Head(double time, std::string& out);
  /// "id,T=longitude|latitude|metres"; false, with nothing appended, when that is no place.
  bool Position(std::uint64_t id, EarthPlace place, std::int16_t hundredsOfFeet, std::string& out) const;
  void Put(Kind& kind, std::string_view objectKey, std::string_view name, Side side, EarthPlace place,
           std::int16_t hundredsOfFeet, std::string& out);
  void TakeOut(Kind& kind);

  Earth earth;
  double size;
  double bullseyeX, bullseyeY;
  std::optional<double> reference;  ///< seconds since 1899-12-30: what times are relative to
  std::uint64_t records = 0;
  std::uint64_t lastId = 0;
  Kind players, flights;
  std::vector<std::uint64_t> gone;  ///< of the present record
  std::string key;
};

}  // namespace kestrel::tape
