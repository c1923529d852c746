#include "shell/map/mini_map_picture.h"

#include <QMouseEvent>
#include <QPainter>
#include <QTimer>

#include "map/units.h"
#include "shell/parts/guard.h"
#include "shell/parts/look.h"

namespace kestrel::shell {
namespace {

// Two tones, so that the box is seen on land and sea, by day and by night.
constexpr QColor BoxEdge(0, 0, 0, 150);
constexpr QColor BoxLine(255, 255, 255, 230);
/// What the wider of its pens covers beyond the outline, pixels.
constexpr int BoxMargin = 2;

QImage Scaled(const base::Picture& picture, QSize side, double ratio) {
  const QImage whole(picture.Pixels, picture.Width, picture.Height, picture.Stride, QImage::Format_RGB32);
  QImage small = whole.scaled((QSizeF(side) * ratio).toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  small.setDevicePixelRatio(ratio);
  return small;
}

}  // namespace

MiniMapPicture::MiniMapPicture(core::Program& running, QWidget* owner) : QWidget(owner), program(running) {
  setObjectName(QStringLiteral("Picture1"));
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  setCursor(Qt::PointingHandCursor);
  setAccessibleName(QStringLiteral("Mini map"));
}

bool MiniMapPicture::Reload() {
  const map::ViewState& view = program.State.View;
  scale = map::MiniMapScale(view, program.State.MapOptions.MINIMAPSCALE);
  // Only what is a whole pixel of the theater is shown.
  const int side = static_cast<int>(map::MiniMapSide(view, scale) / map::UnitsPerPixel);
  if (size() == QSize(side, side)) return false;
  setFixedSize(side, side);
  return true;
}

void MiniMapPicture::UpdateMiniMap() {
  if (program.State.MapPicture.Pixels != source.Pixels) {
    source = {};
    ground = {};
    update();
  }
  const QRectF box = Box();
  if (box == shownBox) return;
  // Only the edges of the box: what is within stays as it is.
  for (const QRectF& each : {shownBox, box}) {
    const QRect outer = each.toAlignedRect().adjusted(-BoxMargin, -BoxMargin, BoxMargin, BoxMargin);
    const QRect inner = each.toRect().adjusted(BoxMargin, BoxMargin, -BoxMargin, -BoxMargin);
    update(QRegion(outer & rect()) - QRegion(inner & rect()));
  }
  shownBox = box;
}

QRectF MiniMapPicture::Box() const {
  const map::MiniMapBox box = map::BoxOnMiniMap(program.State.View, scale);
  constexpr double unit = map::UnitsPerPixel;
  return {box.Left / unit, box.Top / unit, box.Width / unit, box.Height / unit};
}

bool MiniMapPicture::IsStale() const {
  return source.Pixels != program.State.MapPicture.Pixels || groundSide != size() || groundRatio != devicePixelRatioF();
}

void MiniMapPicture::ScalePicture() {
  if (!begun) {
    // Its turn comes when all windows that are being shown have been painted.
    begun = true;
    QTimer::singleShot(0, this, [this] {
      mapSeen = true;
      update();
    });
  }
  if (!mapSeen) return;
  source = program.State.MapPicture;
  groundSide = size();
  groundRatio = devicePixelRatioF();
  ground = QPixmap::fromImage(Scaled(source, groundSide, groundRatio));
  ++scalings;
}

void MiniMapPicture::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const base::Picture& picture = program.State.MapPicture;
  if (!picture.Empty() && IsStale()) ScalePicture();
  if (picture.Empty() || IsStale() || ground.isNull()) {
    painter.fillRect(rect(), MapSurround(palette()));
  } else {
    painter.drawPixmap(0, 0, ground);
  }
  shownBox = Box();
  // Upon whole pixels; it is not clipped to the theater, so it may run past the edge.
  const QRectF outline = QRectF(shownBox.toRect()).adjusted(0.5, 0.5, -0.5, -0.5);
  painter.setPen(QPen(BoxEdge, 3, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.drawRect(outline);
  painter.setPen(QPen(BoxLine, 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.drawRect(outline);
}

void MiniMapPicture::TakePointer(QPointF position) {
  MiniMouseX = position.x() * map::UnitsPerPixelX;
  MiniMouseY = position.y() * map::UnitsPerPixelY;
}

void MiniMapPicture::mouseMoveEvent(QMouseEvent* event) { TakePointer(event->position()); }

void MiniMapPicture::mousePressEvent(QMouseEvent* event) { TakePointer(event->position()); }

void MiniMapPicture::mouseReleaseEvent(QMouseEvent* event) {
  // A press that is taken off the picture is no click.
  if (event->button() != Qt::LeftButton || !rect().contains(event->position().toPoint())) return;
  TakePointer(event->position());
  Guarded(program.Log, "Click",
          [this] { program.Shown.Refresh(map::CentreByMiniMap(program.State.View, scale, MiniMouseX, MiniMouseY)); });
}

}  // namespace kestrel::shell
