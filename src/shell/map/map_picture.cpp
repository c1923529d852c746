#include "shell/map/map_picture.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QCursor>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "core/execute_shortcut.h"
#include "core/theater_data.h"
#include "map/cursor_tools.h"
#include "map/geometry.h"
#include "map/ties.h"
#include "shell/parts/guard.h"
#include "shell/parts/key_events.h"
#include "shell/parts/look.h"
#include "shell/parts/tool_frm.h"

namespace kestrel::shell {
namespace {

/// One notch of a usual wheel, eighths of a degree.
constexpr int WheelNotch = 120;
/// A system that counts finer or coarser pixels than the toolkit may put the pointer this far off, both axes together.
constexpr double NearPlace = 2;
/// How often is looked whether a ring's time is over, milliseconds.
constexpr int RingCheckMs = 100;

}  // namespace

MapPicture::MapPicture(core::Program& running, QMenu& popUp2, QWidget* owner)
    : QWidget(owner),
      program(running),
      popUp(popUp2),
      card(new HoverCard(
          running, [this] { return Scene(); }, this)),
      find(new FindField(
          running, [this] { return Scene(); }, this)) {
  setObjectName(QStringLiteral("Picture1"));
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(160, 120);
  surface.SetBackground(MapSurround(palette()));
  settle.setSingleShot(true);
  settle.setInterval(SettleMs);
  connect(&settle, &QTimer::timeout, this, [this] { DrawMap(); });
  ring.setInterval(RingCheckMs);
  connect(&ring, &QTimer::timeout, this, &MapPicture::WatchRing);
  connect(find, &FindField::Asked, this, &MapPicture::ShowAircraft);
  dragFrame.setSingleShot(true);
  dragFrame.setInterval(DragFrameMs);
  connect(&dragFrame, &QTimer::timeout, this, [this] {
    if (dragDue) MoveDragged();
  });
}

map::Scene MapPicture::Scene() {
  const core::Station& station = program.State;
  const theaters::Theater& theater = station.Catalogue.Current();
  return map::Scene{.MapPicture = station.MapPicture,
                    .View = station.View,
                    .TheaterCorner = {theater.CoordLat, theater.CoordLong},
                    .Display = station.MapOptions,
                    .LinkOptions = station.LinkOptions,
                    .Plots = station.Plots,
                    .Labels = map::SizedLabelFont(station.Extras.LABELSIZE),
                    .Areas = &station.Areas,
                    .Editor = &station.Editor,
                    .Navaids = &station.Frequencies,
                    .Trails = &trails,
                    .Tied = &station.Ties,
                    .Apart = station.Extras.LABELSAPART ? &labels : nullptr,
                    .SelectedPlot = station.Session.SelectedPlot,
                    .Shown = {station.Extras.LABELID, station.Extras.LABELCALLSIGN, station.Extras.LABELNAME,
                              station.Extras.LABELALTITUDE, station.Extras.LABELSPEED},
                    .GridDegrees = station.Extras.GRIDDEGREES};
}

void MapPicture::FollowTies() {
  core::Station& station = program.State;
  const tape::PlayerState& tape = station.Tapes.Player.State();
  const map::SnapshotTimes times{.SyncInterval = static_cast<double>(station.Session.Sync.SyncInterval),
                                 .RecordTime = tape.CurTime};
  for (const std::string& line : map::FollowTies(Scene(), station.Extras, tape.CurPoint, station.Ties, times)) {
    program.Log.LogTimed(line);
  }
}

bool MapPicture::PressTies() {
  core::Station& station = program.State;
  if (station.Editor.AreaEditMode) return false;
  FollowTies();
  const map::TiePress done = map::PressTies(Scene(), surface, {station.View.MouseX, station.View.MouseY}, station.Ties);
  if (!done.Note.empty()) program.Log.LogTimed(done.Note);
  if (done.Taken) program.Shown.Refresh(base::Changed::Plots);
  return done.Taken;
}

void MapPicture::DrawMap() {
  if (program.State.Loading) return;
  settle.stop();
  plotsDue = false;
  Guarded(program.Log, "DrawMap", [this] {
    const std::uint32_t start = program.Log.Time().TickCount();
    const double ratio = devicePixelRatioF();
    const QSize pixels(static_cast<int>(std::ceil(width() * ratio)), static_cast<int>(std::ceil(height() * ratio)));
    if (surface.Image().size() != pixels || surface.Image().devicePixelRatio() != ratio) {
      surface.Resize(pixels, ratio);
    }
    FollowTies();
    surface.SetBrightness(std::max(program.State.Extras.MAPBRIGHTNESS, map::LeastMapBrightness));
    map::DrawMap(Scene(), surface);
    program.Log.LogDuration("Drew the map", start);
  });
  ++mapDraws;
  ShowDirty();
  FollowOver();
  TellPointer(QGuiApplication::keyboardModifiers());
  Q_EMIT Drawn();
}

const QImage& MapPicture::ShownImage() {
  DrawDuePlots();
  return surface.Image();
}

void MapPicture::PaintLines(QPainter& painter) const {
  line.Paint(painter);
  rubber.Paint(painter);
}

void MapPicture::RedrawPlots() {
  if (program.State.Loading || settle.isActive()) return;
  // With each arrival, also where its picture waits: what is tied is followed from one to the next.
  Guarded(program.Log, "FollowTies", [this] { FollowTies(); });
  ++plotDraws;
  plotsDue = true;
  if (!unpainted) DrawDuePlots();
  FollowOver();
}

void MapPicture::FollowOver() {
  Guarded(program.Log, "FollowOver", [this] {
    card->Follow();
    find->Follow();
  });
}

void MapPicture::OpenFind() { find->Open(); }

void MapPicture::ShowAircraft(const map::Aircraft& who) {
  Guarded(program.Log, "ShowAircraft", [this, &who] {
    core::Station& station = program.State;
    const base::Changed changed = map::ShowAircraft(Scene(), who, station.View, station.Ties);
    if (changed == base::Changed::Nothing) return;
    ringedAt = program.Log.Time().TickCount();
    ring.start();
    program.Shown.Refresh(changed);
  });
}

void MapPicture::WatchRing() {
  if (program.Log.Time().TickCount() - ringedAt < map::RingTime) return;
  ring.stop();
  if (map::EndRing(program.State.Ties)) program.Shown.Refresh(base::Changed::Plots);
}

void MapPicture::DrawDuePlots() {
  if (!plotsDue || program.State.Loading || settle.isActive()) return;
  plotsDue = false;
  Guarded(program.Log, "RedrawPlots", [this] { map::RedrawPlots(Scene(), surface); });
  ++plotsDrawn;
  ShowDirty();
}

void MapPicture::ShowDirty() {
  const double ratio = surface.Image().devicePixelRatio();
  const QRegion dirty = surface.TakeDirty();
  unpainted |= !dirty.isEmpty();
  if (ratio == 1) {
    update(dirty);
    return;
  }
  QRegion points;
  for (const QRect& part : dirty) {
    points += QRectF(part.x() / ratio, part.y() / ratio, part.width() / ratio, part.height() / ratio).toAlignedRect();
  }
  update(points);
}

void MapPicture::ShowLine(const QString& text) {
  update(line.Take(program.State.View, program.State.MapOptions, text, size()));
}

void MapPicture::ShowRubber(const std::optional<map::MeasuredLine>& measured, base::Colour colour) {
  update(rubber.Take(program.State.View, program.State.MapOptions.CURSOR_FONT, measured, colour, size()));
}

void MapPicture::TellPointer(Qt::KeyboardModifiers keys) {
  const map::ViewState& view = program.State.View;
  if (view.PointerSeen) Q_EMIT PointerMoved(view.CursorMapX, view.CursorMapY, keys);
}

bool MapPicture::eventFilter(QObject* watched, QEvent* event) {
  // The window is about to paint what has changed: what is drawn now goes with it.
  if (event->type() == QEvent::UpdateRequest && watched == window()) DrawDuePlots();
  return QWidget::eventFilter(watched, event);
}

void MapPicture::paintEvent(QPaintEvent* event) {
  // Where the window is painted for another reason what lies beyond the event follows with the next paint.
  DrawDuePlots();
  unpainted = false;
  // A screen of another scale: the old picture serves until the map is drawn for it, which paints must not put off.
  if (surface.Image().devicePixelRatio() != devicePixelRatioF() && !settle.isActive()) settle.start();
  QPainter painter(this);
  const QSizeF shown = surface.Image().deviceIndependentSize();
  const QRegion beyond = event->region() - QRect(QPoint(), QSize(int(shown.width()), int(shown.height())));
  for (const QRect& part : beyond) painter.fillRect(part, MapSurround(palette()));
  painter.drawImage(QPointF(), surface.Image());
  PaintLines(painter);
  Q_EMIT Painted();
}

void MapPicture::resizeEvent(QResizeEvent*) {
  Guarded(program.Log, "Resize", [this] {
    program.Shown.Refresh(
        map::ResizeSurface(program.State.View, width() * map::UnitsPerPixelX, height() * map::UnitsPerPixelY));
  });
  settle.start();
}

void MapPicture::TakePointer(QPointF position) {
  map::MovePointer(program.State.View, position.x() * map::UnitsPerPixelX, position.y() * map::UnitsPerPixelY);
}

void MapPicture::mousePressEvent(QMouseEvent* event) {
  Guarded(program.Log, "MouseDown", [this, event] {
    card->Leave();
    TakePointer(event->position());
    sentTo.reset();
    switch (event->button()) {
      case Qt::LeftButton: {
        map::ViewState& view = program.State.View;
        const map::ViewPoint formerAnchor{view.AnchorViewX, view.AnchorViewY};
        Q_EMIT Pressed(view.CursorMapX, view.CursorMapY, event->modifiers());
        // Who ties aircraft keeps the anchor.
        if (event->modifiers() == Qt::ControlModifier && PressTies()) break;
        program.Shown.Refresh(map::SetCursorStart(view));
        // In the area editor Shift is for what is being drawn.
        if (event->modifiers() == Qt::ShiftModifier && !program.State.Editor.AreaEditMode) BeginDrag(formerAnchor);
        break;
      }
      case Qt::RightButton:
        popUp.popup(event->globalPosition().toPoint());
        break;
      case Qt::MiddleButton:
        SetCenterOfScreen();
        break;
      default:
        break;
    }
  });
}

void MapPicture::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::RightButton) {
    mousePressEvent(event);
    return;
  }
  Guarded(program.Log, "DblClick", [this, event] {
    TakePointer(event->position());
    // Two aircraft on one spot are tied by two presses in one place.
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::ControlModifier && PressTies()) return;
    SetCenterOfScreen();
  });
}

void MapPicture::BeginDrag(map::ViewPoint formerAnchor) {
  const map::ViewState& view = program.State.View;
  const map::SurfacePoint at{view.MouseX, view.MouseY};
  drag = Drag{.Ground = map::ViewFromSurface(view, at), .Anchor = formerAnchor, .Pressed = at};
  dragDue = false;
}

void MapPicture::FollowDrag() {
  if (drag->Over) return;
  map::ViewState& view = program.State.View;
  if (!drag->Moving) {
    const double gone = std::abs(view.MouseX - drag->Pressed.X) + std::abs(view.MouseY - drag->Pressed.Y);
    if (gone < QApplication::startDragDistance() * map::UnitsPerPixel) return;
    drag->Moving = true;
    setCursor(Qt::ClosedHandCursor);
    // It was no press of one place: the bearing line begins where it did.
    view.AnchorViewX = drag->Anchor.X;
    view.AnchorViewY = drag->Anchor.Y;
  }
  dragDue = true;
  if (!dragFrame.isActive()) MoveDragged();
}

void MapPicture::MoveDragged() {
  dragDue = false;
  Guarded(program.Log, "Drag", [this] {
    map::ViewState& view = program.State.View;
    program.Shown.Refresh(map::HoldGround(view, drag->Ground, {view.MouseX, view.MouseY}));
  });
  dragFrame.start();
}

void MapPicture::EndDrag() {
  dragFrame.stop();
  if (dragDue) MoveDragged();
  dragFrame.stop();
  unsetCursor();
  drag->Over = true;
}

void MapPicture::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !drag) return;
  EndDrag();
  drag.reset();
}

void MapPicture::TakeKeyboard() {
  // Who types into the field over the map goes on typing.
  if (find->HasKeyboard()) return;
  // Of a window that is not active the toolkit only notes who is to have the keyboard. It is taken from a floating
  // window alone: neither from a dialog nor from another program.
  const bool inUse = QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr;
  if (!inUse && qobject_cast<ToolFrm*>(QApplication::activeWindow()) != nullptr) window()->activateWindow();
  if (!hasFocus()) setFocus(Qt::MouseFocusReason);
}

void MapPicture::mouseMoveEvent(QMouseEvent* event) {
  Guarded(program.Log, "MouseMove", [this, event] {
    if (program.State.MapOptions.MAP_AUTOFOCUS) TakeKeyboard();
    core::ReadElevations(program);
    map::ViewState& view = program.State.View;
    const bool leftDown = event->buttons().testFlag(Qt::LeftButton);
    if (drag && !leftDown) {
      // Its release went elsewhere.
      EndDrag();
      drag.reset();
    }
    const QScopedValueRollback changing(view.ViewChanging, view.ViewChanging || IsOwnMove(event->globalPosition()));
    program.Shown.Refresh(map::TrackPointer(view, program.State.MapOptions, event->position().x() * map::UnitsPerPixelX,
                                            event->position().y() * map::UnitsPerPixelY, leftDown && !drag));
    if (drag) FollowDrag();
    TellPointer(event->modifiers());
    if (event->buttons() == Qt::NoButton) {
      card->PointTo(event->position());
    } else {
      card->Leave();
    }
  });
}

void MapPicture::leaveEvent(QEvent*) { card->Leave(); }

bool MapPicture::IsOwnMove(QPointF global) {
  // Others may be on their way before it.
  if (!sentTo || (global - *sentTo).manhattanLength() > NearPlace) return false;
  sentTo.reset();
  return true;
}

void MapPicture::contextMenuEvent(QContextMenuEvent* event) {
  // The right button has shown it on the press already.
  if (event->reason() == QContextMenuEvent::Keyboard) popUp.popup(event->globalPos());
}

bool MapPicture::IsBound(const QKeyEvent& event) const {
  const core::Station& station = program.State;
  return core::MapShortcut(station.ShortcutKeys, station.OwnKeys, VirtualKey(event), ShiftState(event)) >= 0;
}

bool MapPicture::event(QEvent* event) {
  // It may have got into its window after it was made.
  if (event->type() == QEvent::Show) window()->installEventFilter(this);
  // A bound key is the command's, also where a menu or the walk by Tab would take it.
  if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (IsBound(*key)) {
      if (event->type() == QEvent::KeyPress) keyPressEvent(key);
      event->accept();
      return true;
    }
  }
  return QWidget::event(event);
}

void MapPicture::keyPressEvent(QKeyEvent* event) {
  if (drag && !drag->Over && event->key() == Qt::Key_Escape) {
    EndDrag();
    event->accept();
    return;
  }
  Guarded(program.Log, "KeyDown", [this, event] {
    core::MapKey(program, VirtualKey(*event), ShiftState(*event));
    if (IsBound(*event)) return;
    Q_EMIT UnboundKey(*event);
    if (event->key() == Qt::Key_Escape && map::ClearTies(program.State.Ties)) {
      program.Shown.Refresh(base::Changed::Plots);
    }
  });
  TellHeld(*event);
  // Swallowed whether or not it did anything: the map window passes no key on.
  event->accept();
}

void MapPicture::keyReleaseEvent(QKeyEvent* event) {
  TellHeld(*event);
  event->accept();
}

void MapPicture::TellHeld(const QKeyEvent& event) {
  // What the event says of the modifiers leaves out the one whose key it is about.
  Qt::KeyboardModifier about = Qt::NoModifier;
  if (event.key() == Qt::Key_Control) about = Qt::ControlModifier;
  if (event.key() == Qt::Key_Shift) about = Qt::ShiftModifier;
  if (about == Qt::NoModifier) return;
  Guarded(program.Log, "KeyHeld", [&] {
    Qt::KeyboardModifiers held = event.modifiers();
    held.setFlag(about, event.type() == QEvent::KeyPress);
    TellPointer(held);
  });
}

void MapPicture::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  surface.SetBackground(MapSurround(palette()));
  if (mapDraws > 0) DrawMap();
}

void MapPicture::wheelEvent(QWheelEvent* event) {
  if (program.State.Extras.WHEELATPOINTER) TakePointer(event->position());
  TurnWheel(event->angleDelta().y());
  event->accept();
}

void MapPicture::TurnWheel(int angle) {
  if ((angle > 0) != (wheelAngle > 0)) wheelAngle = 0;
  wheelAngle += angle;
  Guarded(program.Log, "MouseWheel", [this] {
    base::Changed changed = base::Changed::Nothing;
    for (; std::abs(wheelAngle) >= WheelNotch; wheelAngle -= wheelAngle > 0 ? WheelNotch : -WheelNotch) {
      map::ViewState& view = program.State.View;
      const bool closer = wheelAngle > 0;
      if (program.State.Extras.WHEELATPOINTER) {
        changed |= map::ZoomAtPointer(view, closer);
      } else {
        changed |= closer ? map::IncreaseResolution(view) : map::DecreaseResolution(view);
      }
    }
    program.Shown.Refresh(changed);
  });
}

void MapPicture::SetCenterOfScreen() {
  map::ViewState& view = program.State.View;
  const base::Changed changed = map::SetCenterOfScreen(view);
  // A move that comes meanwhile begins no line.
  const QScopedValueRollback changing(view.ViewChanging, true);
  program.Shown.Refresh(changed);
  CenterMousePointer();
}

void MapPicture::CenterMousePointer() {
  // The map window lies at the frame's inner corner; what stands above it is in the fixed distances.
  const QPoint frame = window()->frameGeometry().topLeft();
  const double x = map::CenteredPointerX((frame.x() + pos().x()) * map::UnitsPerPixelX, width() * map::UnitsPerPixelX);
  const double y = map::CenteredPointerY((frame.y() + pos().y()) * map::UnitsPerPixelY, height() * map::UnitsPerPixelY);
  QCursor::setPos(static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y)));
  sentTo = QCursor::pos();  // another place where the screen ends before the wanted one
}

}  // namespace kestrel::shell
