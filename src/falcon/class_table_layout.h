#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace kestrel::falcon {

/// Where the fields of a class stand within its record; offsets in bytes.
struct ClassTableLayout {
  std::size_t Stride = 0;     ///< bytes of a record
  std::size_t Info = 0;       ///< domain, class, type, subtype, specific, owner: a byte each
  std::size_t Data = 0;       ///< kind of data, a byte
  std::size_t DataIndex = 0;  ///< 16 bits; the 16 behind them that some have add nothing, since no table is as long

  /// The numbers of the models are the last fields but one before the kind of data.
  std::size_t Models() const { return Data - 16; }
};

/// The layout of every table on a disk that has been seen.
inline constexpr ClassTableLayout UsualClassTable{.Stride = 81, .Info = 8, .Data = 76, .DataIndex = 77};

/// Finds the layout of records of `stride` bytes, one behind the other, by what they hold: at least 100 objectives, of
/// which 99 % have the kind of data of objectives and indices that are distinct and cover 1 to their number with few
/// gaps. Nothing when there is none.
std::optional<ClassTableLayout> FindClassTableLayout(std::string_view records, std::size_t stride);

}  // namespace kestrel::falcon
