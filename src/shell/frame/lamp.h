#pragma once

#include <QWidget>

namespace kestrel::shell {

/// A status lamp: a small disc with its word beside it. Lit it is filled, dark it is a ring, so that colour is never
/// all that tells.
class Lamp final : public QWidget {
  Q_OBJECT
 public:
  Lamp(const QString& name, const QString& word, QColor lit, QWidget* owner);
  /// `toolTip` says the state in words.
  void Set(bool lit, const QString& toolTip);
  bool Lit() const { return isLit; }
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString label;
  QColor colour;
  bool isLit = false;
};

}  // namespace kestrel::shell
