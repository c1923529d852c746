#pragma once

namespace kestrel::shell {

/// Device pixels to the pixel of the screens that the surface is tested on.
inline constexpr double Ratios[] = {1, 1.5, 2};

}  // namespace kestrel::shell
