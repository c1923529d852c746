#pragma once

#include <array>
#include <string>
#include <string_view>

#include "map/view_state.h"

namespace kestrel::map {

/// The saved views of a theater, `Theaters\<Name>_ViewShort.dat`: 100 characters "ViewShort File v3" blank-padded, then
/// three slots of three 64-bit floats, 172 bytes.
using ViewShorts = std::array<ViewShort, 3>;

/// Each slot the whole theater at Resolution 1.
ViewShorts DefaultViewShorts(double size);
/// The table in the bytes of a file. Another first text gives `otherwise`. RuntimeFailure for a file that ends early or
/// holds a number that no view can have (not finite, Resolution outside its limits): it is dropped whole.
ViewShorts ReadViewShorts(std::string_view bytes, const ViewShorts& otherwise);
std::string WriteViewShorts(const ViewShorts& shorts);

}  // namespace kestrel::map
