#include "shell/parts/colour_button.h"

#include <QPainter>

namespace kestrel::shell {
namespace {

constexpr double Corner = 3;
/// Width of a button without a caption, pixels.
constexpr int BareWidth = 40;

}  // namespace

QColor ToQColor(base::Colour colour) { return {base::RedOf(colour), base::GreenOf(colour), base::BlueOf(colour)}; }

base::Colour FromQColor(const QColor& colour) {
  return static_cast<base::Colour>(colour.red() | colour.green() << 8 | colour.blue() << 16);
}

QColor ReadableOn(const QColor& back) {
  return qGray(back.rgb()) < 128 ? QColor(0xf2, 0xf6, 0xf8) : QColor(0x15, 0x18, 0x1b);
}

ColourButton::ColourButton(const QString& caption, QString meaning, QWidget* owner)
    : QPushButton(caption, owner), what(std::move(meaning)) {
  setAutoDefault(false);
  if (caption.isEmpty()) setFixedWidth(BareWidth);
  ShowColour(shown);
}

void ColourButton::ShowColour(base::Colour colour) {
  shown = colour;
  const QString words = what + QStringLiteral(": ") + ToQColor(colour).name();
  setToolTip(words);
  setAccessibleName(words);
  update();
}

void ColourButton::paintEvent(QPaintEvent*) {
  const QColor face = ToQColor(shown);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF edge = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
  painter.setPen(QPen(palette().color(isDown() ? QPalette::Highlight : QPalette::PlaceholderText), 1));
  painter.setBrush(face);
  painter.drawRoundedRect(edge, Corner, Corner);
  if (hasFocus()) {
    // Two tones: one of them is seen on any face.
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), Corner, Corner);
    painter.setPen(QPen(ReadableOn(face), 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(2.5, 2.5, -2.5, -2.5), Corner - 1, Corner - 1);
  }
  painter.setPen(ReadableOn(face));
  painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

}  // namespace kestrel::shell
