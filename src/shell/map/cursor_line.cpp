#include "shell/map/cursor_line.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "map/geometry.h"
#include "map/units.h"
#include "shell/map/glyph_sheet.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

constexpr double LineWidth = 1.5;
/// Around the text, pixels.
constexpr double PlateMargin = 4;
/// Length of the parts that the line's region is made of, pixels.
constexpr double PartLength = 48;

QRgb Rgb(base::Colour colour) { return qRgb(base::RedOf(colour), base::GreenOf(colour), base::BlueOf(colour)); }

bool SameFont(const map::FontRecord& one, const map::FontRecord& other) {
  return one.FontName == other.FontName && one.FontSize == other.FontSize && one.FontBold == other.FontBold &&
         one.FontItalic == other.FontItalic && one.FontStrike == other.FontStrike && one.FontUnder == other.FontUnder;
}

/// The font, or one with digits of one width where the system has none of that name.
QFont LabelFontOf(const map::FontRecord& record) {
  QFont font = MapFont({.Name = record.FontName,
                        .Size = record.FontSize,
                        .Bold = record.FontBold,
                        .Italic = record.FontItalic,
                        .Strike = record.FontStrike,
                        .Under = record.FontUnder});
  font.setFamilies({font.families().value(0), QStringLiteral("DejaVu Sans Mono"),
                    QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
  font.setStyleHint(QFont::Monospace);
  return font;
}

/// The part of `whole` within `field`; a null line when there is none. With a deep zoom an end lies millions of pixels
/// away, where the painter's own numbers end.
QLineF PartWithin(const QLineF& whole, const QRectF& field) {
  double from = 0;
  double to = 1;
  const auto cut = [&from, &to](double start, double step, double low, double high) {
    if (step == 0) {
      if (start < low || start > high) to = -1;
      return;
    }
    const double first = ((step > 0 ? low : high) - start) / step;
    const double last = ((step > 0 ? high : low) - start) / step;
    from = std::max(from, first);
    to = std::min(to, last);
  };
  cut(whole.x1(), whole.dx(), field.left(), field.right());
  cut(whole.y1(), whole.dy(), field.top(), field.bottom());
  if (!(from < to)) return {};
  return {whole.pointAt(from), whole.pointAt(to)};
}

/// Boxes along the line: together much less than the box around it.
QRegion RegionAlong(const QLineF& line) {
  QRegion region;
  if (line.isNull()) return region;
  const int parts = static_cast<int>(line.length() / PartLength) + 1;
  constexpr double margin = LineWidth + 1;
  QPointF from = line.p1();
  for (int part = 1; part <= parts; ++part) {
    const QPointF to = line.pointAt(static_cast<double>(part) / parts);
    region += QRectF(from, to).normalized().adjusted(-margin, -margin, margin, margin).toAlignedRect();
    from = to;
  }
  return region;
}

}  // namespace

QRegion CursorLine::Take(const map::ViewState& view, const map::Options& options, const QString& newText, QSize size) {
  if (!view.CursorLineActive) return Hide();
  constexpr double unit = map::UnitsPerPixel;
  return Show({view.AnchorX / unit, view.AnchorY / unit, view.MouseX / unit, view.MouseY / unit}, newText,
              {options.CURSOR_FONT, options.CURSOR_COLOR, options.CURSOR_TEXT_COOR, 0}, size);
}

QRegion CursorLine::Take(const map::ViewState& view, const map::FontRecord& textFont,
                         const std::optional<map::MeasuredLine>& measured, base::Colour colour, QSize size) {
  if (!measured) return Hide();
  constexpr double unit = map::UnitsPerPixel;
  const map::SurfacePoint from = map::SurfaceFromMap(view, measured->From);
  const map::SurfacePoint to = map::SurfaceFromMap(view, measured->To);
  return Show({from.X / unit, from.Y / unit, to.X / unit, to.Y / unit}, FromBytes(measured->Text),
              {textFont, colour, colour, 1}, size);
}

QRegion CursorLine::Hide() {
  visible = false;
  return std::exchange(covered, {});
}

QRegion CursorLine::Show(const QLineF& whole, const QString& newText, const Look& look, QSize size) {
  const QRegion old = Hide();
  visible = true;
  if (!fontMade || !SameFont(wanted, look.Font)) {
    wanted = look.Font;
    font = LabelFontOf(wanted);
    fontMade = true;
  }
  const QFontMetricsF metrics(font);
  const QPointF pointer = whole.p2();
  const QRectF label(pointer.x() + map::LineTextOffset / map::UnitsPerPixel,
                     pointer.y() + (look.Drop - 0.5) * metrics.height(), metrics.horizontalAdvance(newText),
                     metrics.height());
  line = PartWithin(whole, QRectF(QPointF(), QSizeF(size)).adjusted(-8, -8, 8, 8));
  text = newText;
  plate = label.adjusted(-PlateMargin, 0, PlateMargin, 0);
  lineColour = Rgb(look.Line);
  textColour = Rgb(look.Text);
  covered = RegionAlong(line) + plate.toAlignedRect().adjusted(-1, -1, 1, 1);
  return old + covered;
}

void CursorLine::Paint(QPainter& painter) const {
  if (!visible) return;
  painter.setRenderHint(QPainter::Antialiasing);
  if (!line.isNull()) {
    painter.setPen(QPen(QColor::fromRgb(lineColour), LineWidth));
    painter.drawLine(line);
  }
  // A plate of the other lightness behind the text, so that it can be read on every ground.
  const QColor back = qGray(textColour) < 128 ? QColor(255, 255, 255, 190) : QColor(16, 20, 24, 190);
  painter.setPen(Qt::NoPen);
  painter.setBrush(back);
  painter.drawRoundedRect(plate, 3, 3);
  painter.setPen(QColor::fromRgb(textColour));
  painter.setFont(font);
  painter.drawText(QPointF(plate.left() + PlateMargin, plate.top() + QFontMetricsF(font).ascent()), text);
}

}  // namespace kestrel::shell
