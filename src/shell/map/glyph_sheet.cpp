#include "shell/map/glyph_sheet.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "base/code_page.h"

namespace kestrel::shell {
namespace {

constexpr double DotsPerMeter = 96 / 0.0254;

QString Unicode(std::string_view bytes) { return QString::fromStdU16String(base::ToUnicode(bytes)); }

double PointSize(float size) { return std::isfinite(size) ? std::clamp<double>(size, 1, 200) : 8; }

}  // namespace

QFont MapFont(const map::TextFont& font) {
  QStringList families{Unicode(font.Name)};
  if (font.Name == "MS Sans Serif") families << QStringLiteral("Microsoft Sans Serif");
  families << QStringLiteral("DejaVu Sans");
  QFont made;
  made.setFamilies(families);
  made.setPointSizeF(PointSize(font.Size));
  made.setBold(font.Bold);
  made.setItalic(font.Italic);
  made.setStrikeOut(font.Strike);
  made.setUnderline(font.Under);
  made.setStyleStrategy(static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
  return made;
}

GlyphSheet::GlyphSheet(const map::TextFont& textFont, double devicePixelRatio)
    : name(textFont.Name), wanted(textFont), font(MapFont(textFont)), device(1, 1, QImage::Format_RGB32) {
  wanted.Name = {};
  device.setDotsPerMeterX(static_cast<int>(std::lround(DotsPerMeter * devicePixelRatio)));
  device.setDotsPerMeterY(device.dotsPerMeterX());
  const QFontMetricsF metrics(font, &device);
  ascent = static_cast<int>(std::ceil(metrics.ascent()));
  descent = static_cast<int>(std::ceil(metrics.descent()));
}

bool GlyphSheet::Holds(const map::TextFont& other) const {
  return wanted.Size == other.Size && wanted.Bold == other.Bold && wanted.Italic == other.Italic &&
         wanted.Strike == other.Strike && wanted.Under == other.Under && name == other.Name;
}

void GlyphSheet::Make(char byte, Glyph& glyph) const {
  glyph.Made = true;
  if (static_cast<unsigned char>(byte) < ' ') return;  // control characters have no shape
  const QString text = Unicode({&byte, 1});
  glyph.Advance = static_cast<int>(std::lround(QFontMetricsF(font, &device).horizontalAdvance(text)));
  const int margin = LineHeight();  // room for slanted and accented shapes
  QImage drawn(glyph.Advance + 2 * margin, 3 * margin, QImage::Format_ARGB32_Premultiplied);
  drawn.setDotsPerMeterX(device.dotsPerMeterX());
  drawn.setDotsPerMeterY(device.dotsPerMeterY());
  drawn.fill(Qt::transparent);
  QPainter painter(&drawn);
  painter.setFont(font);
  painter.setPen(Qt::white);
  painter.drawText(margin, margin + ascent, text);
  painter.end();
  glyph.Shape = SpriteFromAlpha(drawn, QPoint(margin, margin));
}

}  // namespace kestrel::shell
