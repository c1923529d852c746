#pragma once

#include <QFont>
#include <array>
#include <string>
#include <utility>

#include "map/surface.h"
#include "shell/map/sprite.h"

namespace kestrel::shell {

/// The font as Qt knows it, with its stand-ins where the system has no font of that name. Sized in points.
QFont MapFont(const map::TextFont& font);

/// The characters of one font as sprites, each shaped when it first occurs; text of the single-byte code page needs no
/// more than 256. Every character stands on a whole pixel, so texts need no measuring beyond a sum, and digits do not
/// jump.
class GlyphSheet {
 public:
  struct Glyph {
    Sprite Shape;     ///< relative to the upper left corner of its place
    int Advance = 0;  ///< device pixels to the next character
    bool Made = false;
  };

  /// `devicePixelRatio`: device pixels to 1/96 inch.
  GlyphSheet(const map::TextFont& font, double devicePixelRatio);

  /// Whether this is the sheet of `font`.
  bool Holds(const map::TextFont& font) const;
  /// Device pixels from one line of print to the next.
  int LineHeight() const { return ascent + descent; }
  const Glyph& At(char byte) {
    Glyph& glyph = glyphs[static_cast<unsigned char>(byte)];
    if (!glyph.Made) {
      Make(byte, glyph);
      grown += glyph.Shape.Ink.size() * sizeof(InkBlock);
    }
    return glyph;
  }

  /// How much memory its shapes have taken since the last call, bytes.
  std::size_t TakeGrowth() { return std::exchange(grown, 0); }

 private:
  void Make(char byte, Glyph& glyph) const;

  std::string name;
  map::TextFont wanted;  ///< its Name is not used: `name` owns the text
  QFont font;
  QImage device;  ///< one pixel, with the resolution that sizes the font
  std::size_t grown = 0;
  int ascent = 0;
  int descent = 0;
  std::array<Glyph, 256> glyphs;
};

}  // namespace kestrel::shell
