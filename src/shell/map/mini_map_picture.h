#pragma once

#include <QPixmap>
#include <QWidget>

#include "core/program.h"
#include "map/mini_map.h"

namespace kestrel::shell {

/// Picture1 of the mini map. The theater's picture is scaled once, when it is first painted, and not again until
/// another picture or another size comes; the box is painted over it. At the start that waits until the map has been
/// painted: the box stands alone for so long.
class MiniMapPicture final : public QWidget {
  Q_OBJECT
 public:
  /// `running` outlives the widget.
  MiniMapPicture(core::Program& running, QWidget* owner);

  /// ReloadMiniMap: size by MINIMAPSCALE. True when it has changed.
  bool Reload();
  /// UpdateMiniMap: shows the present picture and box. Costs nothing while neither has changed or nobody can see it.
  void UpdateMiniMap();

  /// How often the picture has been scaled since the start.
  int Scalings() const { return scalings; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void TakePointer(QPointF position);
  /// The outline of the box, pixels.
  QRectF Box() const;
  bool IsStale() const;
  /// Scales the picture; the first time it only sees to it that it is painted again when the map has been.
  void ScalePicture();

  core::Program& program;
  double scale = 1;       ///< view-unit pixels to the mini map's pixel
  double MiniMouseX = 0;  ///< last pointer position on it, logical units
  double MiniMouseY = 0;
  base::Picture source;  ///< what `ground` was made from; kept, so that its pixels are not another's
  QPixmap ground;
  QSize groundSide;  ///< of the widget for which it was made, and its devicePixelRatio
  double groundRatio = 0;
  QRectF shownBox;
  int scalings = 0;
  bool begun = false;    ///< painted once
  bool mapSeen = false;  ///< so that the map has been, too
};

}  // namespace kestrel::shell
