#pragma once

#include <string>

#include "base/colour.h"

namespace kestrel::base {

/// A font with its colour.
struct FontRecord {
  std::string FontName = "Verdana";
  float FontSize = 10;  ///< points
  bool FontBold = false;
  bool FontItalic = false;
  bool FontStrike = false;
  bool FontUnder = false;
  Colour Color = 0;
};

}  // namespace kestrel::base
