#pragma once

#include <QWidget>
#include <optional>

namespace kestrel::shell {

/// The lower edge of a window by which it is made taller. It is not seen but for the pointer over it.
class HeightGrip final : public QWidget {
  Q_OBJECT
 public:
  /// `owner` is what it lies in, at the lower edge, across the whole width.
  explicit HeightGrip(QWidget* owner);

 Q_SIGNALS:
  void Held();
  /// The pointer is so many pixels below the place where the edge was taken hold of.
  void Dragged(int by);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void Fit();

  std::optional<int> from;  ///< Y of the pointer on the screen when the edge was taken hold of
};

}  // namespace kestrel::shell
