#include "shell/parts/look.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include "shell/parts/look_style.h"

namespace kestrel::shell {
namespace {

struct Tones {
  QRgb Window, WindowText, Base, AlternateBase, Button, Muted, Light, Mid, Dark, Accent, AccentText, ToolTip;
};
// Graphite with soft white text; one cool accent for selection, focus and links. Never pure white on black.
constexpr Tones DarkTones{0xff2a2f35, 0xffd6dade, 0xff15181b, 0xff1d2125, 0xff383f47, 0xff87919a,
                          0xff4a525b, 0xff23282d, 0xff131518, 0xff3d8fb5, 0xfff2f6f8, 0xff333940};
constexpr Tones LightTones{0xffeceff1, 0xff20262b, 0xfffafbfc, 0xfff1f3f5, 0xffe4e8eb, 0xff7a848d,
                           0xffffffff, 0xffc3cad0, 0xff9aa4ac, 0xff1f7aa3, 0xffffffff, 0xfffafbfc};

bool IsDark(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < 128; }

QPalette PaletteOf(const Tones& tones) {
  QPalette palette;
  const auto set = [&palette](QPalette::ColorRole role, QRgb tone) { palette.setColor(role, QColor::fromRgb(tone)); };
  set(QPalette::Window, tones.Window);
  set(QPalette::WindowText, tones.WindowText);
  set(QPalette::Base, tones.Base);
  set(QPalette::AlternateBase, tones.AlternateBase);
  set(QPalette::Text, tones.WindowText);
  set(QPalette::Button, tones.Button);
  set(QPalette::ButtonText, tones.WindowText);
  set(QPalette::BrightText, tones.AccentText);
  set(QPalette::PlaceholderText, tones.Muted);
  set(QPalette::Light, tones.Light);
  set(QPalette::Midlight, tones.Light);
  set(QPalette::Mid, tones.Mid);
  set(QPalette::Dark, tones.Dark);
  set(QPalette::Shadow, tones.Dark);
  set(QPalette::Highlight, tones.Accent);
  set(QPalette::HighlightedText, tones.AccentText);
  set(QPalette::Link, tones.Accent);
  set(QPalette::LinkVisited, tones.Accent);
  set(QPalette::ToolTipBase, tones.ToolTip);
  set(QPalette::ToolTipText, tones.WindowText);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText}) {
    palette.setColor(QPalette::Disabled, role, QColor::fromRgb(tones.Muted));
  }
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor::fromRgb(tones.Mid));
  return palette;
}

/// On a field of 64 by 64.
void PaintIcon(QPainter& painter) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromRgb(0xff16242e));
  painter.drawRoundedRect(QRectF(2, 2, 60, 60), 13, 13);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor::fromRgb(0xff2f6f8e), 2.5));
  painter.drawEllipse(QPointF(32, 34), 23, 23);
  painter.drawEllipse(QPointF(32, 34), 12, 12);
  // Wings held up, the fanned tail below, the head looking down.
  QPainterPath bird(QPointF(32, 25));
  bird.cubicTo(27, 16, 16, 12, 6, 14);
  bird.cubicTo(15, 18, 21, 25, 25, 34);
  bird.lineTo(28, 38);
  bird.lineTo(24, 54);
  bird.quadTo(32, 58, 40, 54);
  bird.lineTo(36, 38);
  bird.lineTo(39, 34);
  bird.cubicTo(43, 25, 49, 18, 58, 14);
  bird.cubicTo(48, 12, 37, 16, 32, 25);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromRgb(0xffe2ecf1));
  painter.drawPath(bird);
}

}  // namespace

bool SystemIsDark() {
  constexpr const char* answer = "SystemIsDark";
  if (!qApp->property(answer).isValid()) qApp->setProperty(answer, IsDark(QGuiApplication::palette()));
  return qApp->property(answer).toBool();
}

void ApplyLook(QApplication& application, bool dark) {
  QApplication::setStyle(new LookStyle);
  QApplication::setPalette(PaletteOf(dark ? DarkTones : LightTones));
  application.setWindowIcon(ProgramIcon());
}

void ChooseLook(int look) {
  constexpr int light = 1, dark = 2;
  const bool wanted = look == dark || (look != light && SystemIsDark());
  if (IsDark(QGuiApplication::palette()) == wanted) return;
  QApplication::setPalette(PaletteOf(wanted ? DarkTones : LightTones));
}

LampColours LampColoursOf(const QPalette& palette) {
  if (IsDark(palette))
    return {QColor(0x5f, 0xc7, 0x8a), QColor(0x4f, 0xb3, 0xdc), QColor(0xe0, 0x6a, 0x5f), QColor(0xe0, 0xae, 0x4c)};
  return {QColor(0x22, 0x8b, 0x4f), QColor(0x1f, 0x7a, 0xa3), QColor(0xc0, 0x39, 0x2b), QColor(0xb8, 0x7a, 0x0b)};
}

QColor MapSurround(const QPalette& palette) {
  return IsDark(palette) ? QColor(0x0e, 0x10, 0x12) : QColor(0xb9, 0xc1, 0xc7);
}

QPixmap ProgramPicture(int side) {
  QPixmap picture(side, side);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(side / 64.0, side / 64.0);
  PaintIcon(painter);
  return picture;
}

QIcon ProgramIcon() {
  QIcon icon;
  for (const int side : {16, 24, 32, 48, 64, 128}) icon.addPixmap(ProgramPicture(side));
  return icon;
}

}  // namespace kestrel::shell
