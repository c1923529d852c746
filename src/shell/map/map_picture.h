#pragma once

#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <optional>

#include "core/program.h"
#include "map/label_layer.h"
#include "map/renderer.h"
#include "shell/map/cursor_line.h"
#include "shell/map/find_field.h"
#include "shell/map/hover_card.h"
#include "shell/map/qt_surface.h"

class QMenu;

namespace kestrel::shell {

/// Picture1 of the map window: shows the drawing surface and turns mouse, wheel and keys into the procedures of the
/// map. It has no rule of its own. Sizes and positions go to the view in units, 15 to a device-independent pixel.
class MapPicture final : public QWidget {
  Q_OBJECT
 public:
  /// The map is drawn anew when the size has not changed for this long, milliseconds.
  static constexpr int SettleMs = 150;
  /// While the map is dragged it is drawn once in so long, milliseconds.
  static constexpr int DragFrameMs = 16;

  /// `running` and `popUp2` outlive the widget.
  MapPicture(core::Program& running, QMenu& popUp2, QWidget* owner);

  /// Whole repaint; returns at once while the start is placing windows.
  void DrawMap();
  /// Repaint of what moves. While a new size waits to settle it is left to the DrawMap that is due then: the kept
  /// picture does not fit the view any more. While the last picture has not been painted yet it is drawn just before
  /// the next paint, once for all that ask: what nobody would have seen is not drawn.
  void RedrawPlots();
  /// Line1 and Label1 as the view has them, over the map as it is: only where they were and are is painted anew.
  void ShowLine(const QString& text);
  /// A line of the area editor's beside it, in a colour; none takes it away.
  void ShowRubber(const std::optional<map::MeasuredLine>& measured, base::Colour colour);
  /// Centres the map on the last pointer position and takes the pointer along.
  void SetCenterOfScreen();
  /// Puts the pointer to the middle of the map by fixed distances from the frame's corner.
  void CenterMousePointer();
  /// Takes part of a wheel's turn, eighths of a degree; each whole notch is one zoom step.
  void TurnWheel(int angle);
  /// Opens the field in which an aircraft is looked for.
  void OpenFind();
  /// Centres the map on an aircraft and rings it for map::RingTime; nothing for one that is gone.
  void ShowAircraft(const map::Aircraft& who);

  /// The picture as the next paint shows it, without the lines that follow the pointer.
  const QImage& ShownImage();
  /// Those lines, over whatever lies over the map.
  void PaintLines(QPainter& painter) const;

  /// Whole repaints since the start.
  std::uint64_t MapDraws() const { return mapDraws; }
  /// Repaints of what moves that have been asked for, and those that were drawn.
  std::uint64_t PlotDraws() const { return plotDraws; }
  std::uint64_t PlotsDrawn() const { return plotsDrawn; }

 Q_SIGNALS:
  /// The left button has been pressed at this place, map units with Y north; the anchor of the bearing line goes there
  /// after it.
  void Pressed(double mapX, double mapY, Qt::KeyboardModifiers keys);
  /// The place under the pointer, or what is held with it: the pointer has moved, the map below it or a key.
  void PointerMoved(double mapX, double mapY, Qt::KeyboardModifiers keys);
  /// A key has been pressed that runs no command here.
  void UnboundKey(const QKeyEvent& key);
  /// The whole map has been drawn anew.
  void Drawn();
  /// A part of the map has been painted.
  void Painted();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  /// Shift and the left button: from the press to the release.
  struct Drag {
    map::ViewPoint Ground;  ///< what has been taken hold of
    map::ViewPoint Anchor;  ///< where the bearing line began before
    map::SurfacePoint Pressed;
    bool Moving = false;  ///< the pointer has gone far enough
    bool Over = false;    ///< Esc has ended it
  };

  map::Scene Scene();
  void BeginDrag(map::ViewPoint formerAnchor);
  /// The pointer has moved: the map follows it, once in a frame.
  void FollowDrag();
  void MoveDragged();
  void EndDrag();
  /// The lines between aircraft as the tables are now, before each draw.
  void FollowTies();
  /// A press with Ctrl. True when it was meant for an aircraft, or the text of a line between two.
  bool PressTies();
  /// What lies over the map takes what has changed.
  void FollowOver();
  /// Takes the ring away when its time is over.
  void WatchRing();
  void TakePointer(QPointF position);
  /// True for the move that comes of CenterMousePointer, once. It comes when that has long returned.
  bool IsOwnMove(QPointF global);
  /// MAP_AUTOFOCUS: the pointer is over the map.
  void TakeKeyboard();
  void ShowDirty();
  /// Draws what RedrawPlots has put off.
  void DrawDuePlots();
  void TellPointer(Qt::KeyboardModifiers keys);
  /// The same when the key of a modifier goes down or up.
  void TellHeld(const QKeyEvent& event);
  /// True when the key runs a command here.
  bool IsBound(const QKeyEvent& event) const;

  core::Program& program;
  QMenu& popUp;
  QtSurface surface;
  map::TrailLayer trails;  ///< on `surface`
  map::LabelLayer labels;  ///< on `surface`
  CursorLine line;
  CursorLine rubber;
  HoverCard* card;
  FindField* find;
  QTimer settle;
  QTimer ring;                 ///< looks whether the ring's time is over
  std::uint32_t ringedAt = 0;  ///< tick count
  std::optional<Drag> drag;
  QTimer dragFrame;      ///< runs for a frame after each step of a drag
  bool dragDue = false;  ///< the pointer has moved in this frame
  std::uint64_t mapDraws = 0;
  std::uint64_t plotDraws = 0;
  std::uint64_t plotsDrawn = 0;
  bool unpainted = false;        ///< the picture has changed since it was last painted
  bool plotsDue = false;         ///< what moves is to be drawn before the next paint
  std::optional<QPoint> sentTo;  ///< where CenterMousePointer has put the pointer while its move is awaited, screen
  int wheelAngle = 0;            ///< turned and not yet used
};

}  // namespace kestrel::shell
