#pragma once

#include <QPushButton>

#include "base/colour.h"

namespace kestrel::shell {

QColor ToQColor(base::Colour colour);
base::Colour FromQColor(const QColor& colour);
/// Dark or light, whichever can be read on `back`, or can be what `back` is read on.
QColor ReadableOn(const QColor& back);

/// A button whose face is a colour, its caption dark or light upon it, whichever can be read. The colour is told in
/// words too: "Enemy: #ff0000" in its tool tip and to those who listen.
class ColourButton final : public QPushButton {
  Q_OBJECT
 public:
  /// `meaning`: what the colour is of.
  ColourButton(const QString& caption, QString meaning, QWidget* owner);

  void ShowColour(base::Colour colour);
  base::Colour Colour() const { return shown; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString what;
  base::Colour shown = 0;
};

}  // namespace kestrel::shell
