#pragma once

#include "falcon/bml_shape.h"

namespace kestrel::falcon {

/// Expands shapes by the system's libraries for LZ4 and LZMA. What it gives has exactly as many bytes as are asked for,
/// and all that is packed has been used. RuntimeFailure when what is packed is damaged, cut or tells of another size,
/// or more than MaxBmlBytes are asked for, which is told before memory is taken.
BmlExpander SystemBmlExpander();

}  // namespace kestrel::falcon
