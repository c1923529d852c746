#pragma once

#include <QProxyStyle>

namespace kestrel::shell {

/// Fusion with check boxes and radio buttons of our own: Fusion draws their outlines darker than the
/// window, which on a dark window is next to nothing. What holds for every widget is done here too: text is shown as it
/// is written, and a tool tip lets the pointer through to the control that it covers.
class LookStyle final : public QProxyStyle {
 public:
  LookStyle();
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  using QProxyStyle::polish;
  void polish(QWidget* widget) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace kestrel::shell
