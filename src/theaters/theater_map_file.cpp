#include "theaters/theater_map_file.h"

#include "base/bytes.h"
#include "base/failure.h"
#include "theaters/catalogue.h"

namespace kestrel::theaters {

Corner ReadTheaterMapCorner(std::string_view bytes) {
  constexpr std::size_t longitudeAt = 1104;
  base::BinaryReader record(bytes);
  record.Skip(longitudeAt);
  Corner corner;
  corner.Long = static_cast<double>(record.F32());
  corner.Lat = static_cast<double>(record.F32());
  if (!IsCorner(corner.Lat, corner.Long)) throw base::RuntimeFailure("the corner in it is no place on the earth");
  return corner;
}

}  // namespace kestrel::theaters
