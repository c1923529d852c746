#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>
#include <optional>

#include "core/program.h"
#include "map/plot_card.h"

namespace kestrel::shell {

/// The card of the aircraft that the pointer rests on, over the map: drawn by itself, so that the map is not. It comes
/// when the pointer has been on one aircraft for RestMs, follows the pointer and goes with it.
class HoverCard final : public QWidget {
  Q_OBJECT
 public:
  static constexpr int RestMs = 300;

  /// `owner` is the map's picture, `scene` what it draws; `running` outlives the card.
  HoverCard(core::Program& running, std::function<map::Scene()> scene, QWidget* owner);

  /// The pointer is here, pixels of the owner.
  void PointTo(QPointF place);
  /// The pointer has gone, or does something else than rest.
  void Leave();
  /// Tables or view have changed.
  void Follow();

  /// What it tells; of use while it is shown.
  const map::PlotCard& Card() const { return card; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::optional<map::Aircraft> Under() const;
  /// Begins to wait at the aircraft under the pointer, if there is one.
  void Await();
  void Show();
  /// Takes the card as the tables have it now; hides it where there is none.
  void Update();
  void Fit();
  int LineHeight() const;

  core::Program& program;
  std::function<map::Scene()> makeScene;
  QTimer rest;
  std::optional<QPointF> pointer;         ///< while it is over the map
  std::optional<map::Aircraft> aircraft;  ///< under it: awaited, or shown
  map::PlotCard card;
  int labels = 0;  ///< width of the labels, pixels
};

}  // namespace kestrel::shell
