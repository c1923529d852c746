#pragma once

#include <QSlider>

namespace kestrel::shell {

/// A slider that goes where it is pressed: a press beside the handle brings it there at once, and it can be dragged on.
class PositionBar final : public QSlider {
  Q_OBJECT
 public:
  explicit PositionBar(QWidget* owner);
  /// Puts the handle to `value` without telling anybody, out of the person's hand if need be.
  void PutTo(int value);

 protected:
  /// With marks where there are ticks.
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void LetGo();
};

}  // namespace kestrel::shell
