#pragma once

#include <string_view>

#include "falcon/data_file.h"
#include "falcon/model_shape.h"

namespace kestrel::falcon {

/// Whether the bytes of a shape begin as one of FreeFalcon and what is built on it: a version whose upper half is the
/// lower one turned over.
bool IsDxShape(std::string_view bytes);

/// Reads such a shape: a pool of points, and nodes with the triangles and lines between them. It is taken as it stands
/// still: parts that turn are at rest, of switches the first branch is shown. RuntimeFailure, naming the file and the
/// node, for what is cut, leads outside, is left open or names points that are not there.
ModelShape ReadDxShape(const DataFile& file);

}  // namespace kestrel::falcon
