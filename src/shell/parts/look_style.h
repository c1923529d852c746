#pragma once

#include <QProxyStyle>

namespace kestrel::shell {

/// Fusion with check boxes, radio buttons and frames of groups of our own: Fusion draws their outlines darker than the
/// window, which on a dark window is next to nothing. What holds for every widget is done here too: text is shown as it
/// is written, and a tool tip lets the pointer through to the control that it covers.
class LookStyle final : public QProxyStyle {
 public:
  LookStyle();
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;
  using QProxyStyle::polish;
  void polish(QWidget* widget) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace kestrel::shell
