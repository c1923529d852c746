#pragma once

#include <span>

#include "falcon/data_file.h"
#include "falcon/model_shape.h"

namespace kestrel::falcon {

/// Reads a shape of Falcon 4.0 (a piece of KoreaObj.LOD): a tree of nodes with points and polygons. `dynamic`: the
/// points of its model in the directory. It is taken as it stands still: parts that turn are at rest, of a switch the
/// first choice is shown, what is mounted in slots is not. RuntimeFailure, naming the file and the node, for what is
/// cut, leads outside, has a tag left over, is more than 256 nodes deep or has more lines and points than its bytes can
/// tell once: no more than one for each four of them.
ModelShape ReadClassicShape(const DataFile& file, std::span<const ModelPoint> dynamic);

}  // namespace kestrel::falcon
