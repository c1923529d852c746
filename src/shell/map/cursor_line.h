#pragma once

#include <QColor>
#include <QFont>
#include <QLineF>
#include <QRegion>
#include <QRgb>
#include <QString>

#include "map/map_options.h"
#include "map/view_state.h"

class QPainter;

namespace kestrel::shell {

/// Line1 and Label1: the bearing line and the text beside the pointer, painted over the finished map. Where they stand
/// is kept as a narrow region, so that a move of the mouse repaints that and no more.
class CursorLine {
 public:
  /// Takes line and text from the view on a surface of `size` pixels. Returns what is to be repainted: the old place
  /// and the new one; empty when nothing has changed.
  QRegion Take(const map::ViewState& view, const map::Options& options, const QString& text, QSize size);
  void Paint(QPainter& painter) const;

 private:
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
