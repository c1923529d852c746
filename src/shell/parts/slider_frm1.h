#pragma once

#include <QWidget>

class QSlider;

namespace kestrel::shell {

class ToolFrm;

/// The opacity of one floating window: what its slider says is seen at once and kept (TR). It goes when it loses the
/// focus, and deletes itself then.
class SliderFrm1 final : public QWidget {
  Q_OBJECT
 public:
  explicit SliderFrm1(ToolFrm& target);
  void ShowBeside(const QWidget& button);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void Apply(int alpha);

  ToolFrm& window;
  QSlider* Slider1;
};

}  // namespace kestrel::shell
