#pragma once

#include <QProxyStyle>

namespace kestrel::shell {

/// Fusion with check boxes and radio buttons of our own: Fusion draws their outlines darker than the window, which on a
/// dark window is next to nothing.
class LookStyle final : public QProxyStyle {
 public:
  LookStyle();
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

}  // namespace kestrel::shell
