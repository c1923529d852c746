#include "shell/parts/look_style.h"

#include <QGroupBox>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>
#include <QWidget>
#include <QWindow>

#include "shell/parts/plain_text.h"

namespace kestrel::shell {
namespace {

/// The field of an indicator and what its mark is drawn with.
struct StyleTones {
  QColor Outline, Field, Mark;
};

/// `a` with a share of `b`, 0..1.
QColor Mixed(const QColor& a, const QColor& b, float share) {
  const auto mix = [share](float x, float y) { return x + share * (y - x); };
  return QColor::fromRgbF(mix(a.redF(), b.redF()), mix(a.greenF(), b.greenF()), mix(a.blueF(), b.blueF()));
}

StyleTones TonesOf(const QStyleOption& option) {
  const QPalette& palette = option.palette;
  const bool enabled = option.state & QStyle::State_Enabled;
  const bool focused = enabled && (option.state & QStyle::State_HasFocus);
  const QColor muted = palette.color(QPalette::PlaceholderText);
  // Between muted and plain text, for a contrast of 3 to 1 with the window in either palette.
  const QColor outline = Mixed(muted, palette.color(QPalette::Text), 0.2F);
  StyleTones tones{outline, palette.color(QPalette::Base), enabled ? palette.color(QPalette::Link) : muted};
  if (focused || (enabled && (option.state & QStyle::State_MouseOver))) tones.Outline = palette.color(QPalette::Link);
  if (!enabled) tones.Field = palette.color(QPalette::Window);
  return tones;
}

/// The largest square in the middle of `rect`, its edges on pixels.
QRectF Square(const QRect& rect) {
  const int side = qMin(rect.width(), rect.height());
  const QRect square(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2, side, side);
  return QRectF(square).adjusted(0.5, 0.5, -0.5, -0.5);
}

void DrawCheckBox(QPainter& painter, const QStyleOption& option) {
  const StyleTones tones = TonesOf(option);
  const QRectF box = Square(option.rect);
  painter.setPen(QPen(tones.Outline, 1));
  painter.setBrush(tones.Field);
  painter.drawRoundedRect(box, 2, 2);
  const qreal side = box.width();
  QPen pen(tones.Mark, qMax(1.6, side / 7), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  painter.setPen(pen);
  painter.setBrush(Qt::NoBrush);
  if (option.state & QStyle::State_NoChange) {
    painter.drawLine(box.center() - QPointF(side / 4, 0), box.center() + QPointF(side / 4, 0));
  } else if (option.state & QStyle::State_On) {
    QPainterPath tick(box.topLeft() + QPointF(0.22, 0.54) * side);
    tick.lineTo(box.topLeft() + QPointF(0.42, 0.74) * side);
    tick.lineTo(box.topLeft() + QPointF(0.79, 0.28) * side);
    painter.drawPath(tick);
  }
}

void DrawRadioButton(QPainter& painter, const QStyleOption& option) {
  const StyleTones tones = TonesOf(option);
  const QRectF box = Square(option.rect);
  painter.setPen(QPen(tones.Outline, 1));
  painter.setBrush(tones.Field);
  painter.drawEllipse(box);
  if (!(option.state & QStyle::State_On)) return;
  painter.setPen(Qt::NoPen);
  painter.setBrush(tones.Mark);
  painter.drawEllipse(box.center(), box.width() / 4, box.width() / 4);
}

void DrawGroupFrame(QPainter& painter, const QStyleOption& option) {
  const QColor window = option.palette.color(QPalette::Window);
  painter.setPen(QPen(Mixed(window, option.palette.color(QPalette::WindowText), 0.25F), 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
}

/// How far below the upper edge of a group its frame begins: Fusion puts the heading above it.
int HeadingHeight(const QStyle& style, const QStyleOption& option, const QWidget* widget) {
  constexpr int gap = 3;
  const auto* group = qobject_cast<const QGroupBox*>(widget);
  if (group != nullptr && !group->isCheckable() && group->title().isEmpty()) return gap;
  const int mark = style.pixelMetric(QStyle::PM_ExclusiveIndicatorHeight, &option, widget);
  return qMax(mark, option.fontMetrics.height()) + gap;
}

/// A row whose check cannot be changed now, though the row itself can be chosen.
bool HasLockedCheck(const QStyleOptionViewItem& row) {
  return row.index.isValid() && !row.index.flags().testFlag(Qt::ItemIsUserCheckable);
}

}  // namespace

LookStyle::LookStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  const auto own = element == PE_IndicatorCheckBox      ? DrawCheckBox
                   : element == PE_IndicatorRadioButton ? DrawRadioButton
                   : element == PE_FrameGroupBox        ? DrawGroupFrame
                                                        : nullptr;
  const auto* row =
      element == PE_IndicatorItemViewItemCheck ? qstyleoption_cast<const QStyleOptionViewItem*>(option) : nullptr;
  if (row != nullptr && HasLockedCheck(*row)) {
    QStyleOptionViewItem locked = *row;
    locked.state &= ~State_Enabled;
    // Of a disabled box this is the field.
    locked.palette.setColor(QPalette::Window, QGuiApplication::palette().color(QPalette::Window));
    QProxyStyle::drawPrimitive(element, &locked, painter, widget);
    return;
  }
  if (own == nullptr) {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    return;
  }
  QStyleOption place = *option;
  if (element == PE_FrameGroupBox) place.rect.adjust(0, HeadingHeight(*proxy(), *option, widget), 0, 0);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  own(*painter, place);
  painter->restore();
}

int LookStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returned) const {
  // Etched, a disabled word is drawn twice, which on a dark window reads as two words.
  if (hint == SH_EtchDisabledText) return 0;
  return QProxyStyle::styleHint(hint, option, widget, returned);
}

void LookStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  ShowAsWritten(*widget);
  if (!widget->inherits("QTipLabel")) return;
  // The tip of one control may cover the next one. It is polished before its window is made, so nothing but the flag is
  // to be set.
  widget->overrideWindowFlags(widget->windowFlags() | Qt::WindowTransparentForInput);
  widget->installEventFilter(this);
}

bool LookStyle::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Paint) return false;
  watched->removeEventFilter(this);
  // Under X the window of a tip is made a second time when it is shown, without what the flag says, and only a flag
  // that changes is looked at again.
  QWindow* window = static_cast<QWidget*>(watched)->windowHandle();
  if (window == nullptr || QGuiApplication::platformName() != QStringLiteral("xcb")) return false;
  window->setFlag(Qt::WindowTransparentForInput, false);
  window->setFlag(Qt::WindowTransparentForInput, true);
  return false;
}

}  // namespace kestrel::shell
