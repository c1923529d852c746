#pragma once

#include <QWidget>

namespace kestrel::shell {

/// A status lamp: a small disc with its word beside it. Lit it is filled, dark it is a ring, and what went wrong is a
/// cross, so that colour is never all that tells.
class Lamp final : public QWidget {
  Q_OBJECT
 public:
  Lamp(const QString& name, const QString& word, QColor lit, QWidget* owner);
  /// `toolTip` says the state in words.
  void Set(bool lit, const QString& toolTip);
  /// What the lamp stands for went wrong.
  void SetFailed(QColor failed, const QString& toolTip);
  bool Lit() const { return state == State::Lit; }
  bool Failed() const { return state == State::Failed; }
  /// Other colours, for lit and failed.
  void Recolor(QColor lit, QColor failed);
  /// Whether its word stands beside the disc; the tool tip tells it either way.
  void ShowWord(bool shown);
  /// How much wider the lamp is with its word, pixels.
  int WordWidth() const;
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  enum class State { Dark, Lit, Failed };

  void Take(State shown, const QString& toolTip);
  void PaintDisc(QPainter& painter, const QRectF& disc) const;

  QString label;
  QColor colour;
  QColor failedColour;
  bool wordShown = true;
  State state = State::Dark;
};

}  // namespace kestrel::shell
