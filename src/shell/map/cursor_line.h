#pragma once

#include <QColor>
#include <QFont>
#include <QLineF>
#include <QRegion>
#include <QRgb>
#include <QString>
#include <optional>

#include "map/cursor_tools.h"
#include "map/map_options.h"
#include "map/view_state.h"

class QPainter;

namespace kestrel::shell {

/// A line from a place to the pointer and a text beside it, as Line1 and Label1 are, painted over the finished map.
/// Where they stand is kept as a narrow region, so that a move of the mouse repaints that and no more.
class CursorLine {
 public:
  /// Takes line and text from the view on a surface of `size` pixels. Returns what is to be repainted: the old place
  /// and the new one; empty when nothing has changed.
  QRegion Take(const map::ViewState& view, const map::Options& options, const QString& text, QSize size);
  /// The same of a line of its own, in one colour; none takes it away. Its text stands a line below that of Label1,
  /// which may be at the same place.
  QRegion Take(const map::ViewState& view, const map::FontRecord& textFont,
               const std::optional<map::MeasuredLine>& measured, base::Colour colour, QSize size);
  void Paint(QPainter& painter) const;

 private:
  struct Look {
    const map::FontRecord& Font;
    base::Colour Line, Text;
    int Drop;  ///< of the text, lines
  };
  /// `whole`: pixels, ends at the pointer.
  QRegion Show(const QLineF& whole, const QString& newText, const Look& look, QSize size);
  QRegion Hide();

  bool visible = false;
  QLineF line;  ///< pixels; only the part on the surface
  QString text;
  QRectF plate;  ///< pixels: behind the text
  QRgb lineColour = 0;
  QRgb textColour = 0;
  map::FontRecord wanted;  ///< what `font` was made for
  QFont font;
  bool fontMade = false;
  QRegion covered;
};

}  // namespace kestrel::shell
