#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "falcon/data_file.h"
#include "falcon/model_shape.h"

namespace kestrel::falcon {

/// Largest file of a shape that is read, and largest content that one is expanded to.
inline constexpr std::size_t MaxBmlBytes = std::size_t{64} << 20;

/// How a shape of a folder of its own (Model_<k>.bml) is packed.
enum class BmlPacking : std::uint32_t { None = 0, Lz4 = 1, Lzma = 2 };

/// Expands what is packed to exactly `size` bytes, or throws RuntimeFailure. LZMA: five bytes of properties, then the
/// stream without size or end mark.
using BmlExpander = std::function<std::string(BmlPacking packing, std::string_view packed, std::size_t size)>;

/// Reads a shape: its triangles, without lights. It is taken as it stands still: joints at rest, of switches what is on
/// at the start, without what is mounted in slots. Without an expander only what is not packed can be read.
/// RuntimeFailure, naming the file and the node, when a size lies, a node is of no known kind, leads outside or is left
/// open, or the content does not end exactly where its version says.
ModelShape ReadBmlShape(const DataFile& file, const BmlExpander& expand);

}  // namespace kestrel::falcon
