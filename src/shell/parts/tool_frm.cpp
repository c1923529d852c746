#include "shell/parts/tool_frm.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMainWindow>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>
#include <utility>
#include <vector>

#include "map/units.h"
#include "shell/parts/guard.h"
#include "shell/parts/line_icon.h"
#include "shell/parts/remembered_place.h"
#include "shell/parts/slider_frm1.h"

namespace kestrel::shell {
namespace {

/// The line around the window, pixels.
constexpr int Border = 1;

int Pixels(std::int32_t units) { return qRound(units / map::UnitsPerPixel); }

}  // namespace

/// What is below the strip; it brings the window up to date before it is seen.
class ToolFrm::Content final : public QWidget {
 public:
  explicit Content(ToolFrm& owner) : QWidget(&owner), window(owner) {}

 protected:
  void showEvent(QShowEvent* event) override {
    QWidget::showEvent(event);
    Guarded(window.program.Log, "Show", [this] { window.CatchUp(); });
  }

 private:
  ToolFrm& window;
};

ToolFrm::ToolFrm(core::Program& running, core::ToolWindow which, const QString& name, const QString& caption,
                 QWidget* frame, base::Changed shows)
    : QWidget(frame, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      program(running),
      kind(which),
      views(shows),
      behind(shows) {
  setObjectName(name);
  setWindowTitle(caption);
  // The keyboard stays with whoever has it, which may be the simulator.
  setAttribute(Qt::WA_ShowWithoutActivating);
  body = new Content(*this);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(Border, Border, Border, Border);
  column->setSpacing(0);
  // The size is ours to set: rolled up, the body must not hold the window open.
  column->setSizeConstraint(QLayout::SetNoConstraint);
  column->addWidget(BuildStrip(caption));
  column->addWidget(body, 1);
  ShowRoll();
}

QWidget* ToolFrm::BuildStrip(const QString& caption) {
  auto* strip = new QWidget(this);
  strip->setFixedHeight(StripHeight);
  strip->setAutoFillBackground(true);
  strip->setBackgroundRole(QPalette::Button);
  Label1 = new QLabel(caption, strip);
  Label1->setObjectName(QStringLiteral("Label1"));
  Label1->setTextFormat(Qt::PlainText);
  Label1->setIndent(7);
  Label1->installEventFilter(this);
  CMD1 = StripButton("CMD1", {});
  QToolButton* opacity = StripButton("Command_TR", QStringLiteral("Opacity"));
  opacity->setIcon(LineIcon(IconKind::Opacity));
  QToolButton* shut = StripButton("Command4", QStringLiteral("Close"));
  shut->setIcon(LineIcon(IconKind::Close));

  auto* row = new QHBoxLayout(strip);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  row->addWidget(Label1, 1);
  for (QToolButton* button : {CMD1, opacity, shut}) row->addWidget(button);

  connect(CMD1, &QToolButton::clicked, this, [this] {
    if (expanded) {
      MinFrm();
    } else {
      MaxFrm();
    }
    State().Minimized = !expanded;
  });
  connect(opacity, &QToolButton::clicked, this, [this, opacity] { (new SliderFrm1(*this))->ShowBeside(*opacity); });
  connect(shut, &QToolButton::clicked, this, &ToolFrm::CloseAsked);
  return strip;
}

QToolButton* ToolFrm::StripButton(const char* name, const QString& toolTip) {
  auto* button = new QToolButton(this);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoRaise(true);
  // Reached by Tab, but a press leaves the keyboard where it is.
  button->setFocusPolicy(Qt::TabFocus);
  button->setFixedSize(StripHeight, StripHeight);
  button->setIconSize(QSize(12, 12));
  button->setToolTip(toolTip);
  button->setAccessibleName(toolTip);
  return button;
}

void ToolFrm::ShowRoll() {
  const QString toolTip = expanded ? QStringLiteral("Roll up") : QStringLiteral("Roll down");
  CMD1->setIcon(LineIcon(expanded ? IconKind::RollUp : IconKind::RollDown));
  CMD1->setToolTip(toolTip);
  CMD1->setAccessibleName(toolTip);
}

void ToolFrm::MinFrm() {
  expanded = false;
  body->hide();
  ApplyHeight();
  ShowRoll();
}

void ToolFrm::MaxFrm() {
  expanded = true;
  body->show();
  ApplyHeight();
  ShowRoll();
}

void ToolFrm::ApplyHeight() {
  const QSize former = size();
  setFixedSize(full.width(), expanded ? full.height() : StripHeight + 2 * Border);
  // At the start each stands where it is kept, its size being no news.
  if (program.State.Loading || (width() <= former.width() && height() <= former.height())) return;
  BringInside();
  raise();
}

void ToolFrm::FitBody() {
  ensurePolished();
  if (QLayout* inner = body->layout()) inner->activate();
  const QSize wanted = body->sizeHint().expandedTo(body->minimumSize());
  const int strip = Label1->sizeHint().width() + 3 * StripHeight;
  full = QSize(qMax(wanted.width(), strip) + 2 * Border, wanted.height() + StripHeight + 2 * Border);
  ApplyHeight();
}

void ToolFrm::SetTransparency(int alpha) { setWindowOpacity(qBound(0, alpha, 255) / 255.0); }

void ToolFrm::Place() {
  const core::ToolWindowState& kept = State();
  move(Pixels(kept.X), Pixels(kept.Y));
  SetTransparency(kept.Transparency);
  if (kept.Minimized) {
    MinFrm();
  } else {
    MaxFrm();
  }
  BringIntoView();
}

void ToolFrm::MoveTo(QPoint place) {
  State().X = Units(place.x());
  State().Y = Units(place.y());
  move(place);
}

void ToolFrm::BringIntoView() { Settle(core::OnAScreen(PlaceOf(pos()), SizeOf(size()), ScreenAreas())); }

void ToolFrm::BringInside() {
  const std::vector<core::WindowArea> screens = ScreenAreas();
  const core::WindowPlace place = PlaceOf(pos());
  const core::WindowSize extent = SizeOf(size());
  Settle(core::Inside(place, extent, screens[core::NearestScreen(place, extent, screens)]));
}

void ToolFrm::Settle(const core::WindowPlace& place) {
  // A place that is good already stays as it is kept, to the unit.
  if (PixelsOf(place) != pos()) MoveTo(PixelsOf(place));
}

QPoint ToolFrm::DraggedTo(const QPoint& place, Qt::KeyboardModifiers modifiers) const {
  if (!program.State.WindowOptions.SNAPWINDOWS || modifiers.testFlag(Qt::AltModifier)) return place;
  const QWidget& frame = *parentWidget();
  std::vector<core::WindowArea> others;
  const auto siblings = frame.findChildren<ToolFrm*>(QString(), Qt::FindDirectChildrenOnly);
  for (const ToolFrm* each : siblings) {
    if (each != this && each->isVisible()) others.push_back(AreaOf(each->geometry()));
  }
  if (const auto* holder = qobject_cast<const QMainWindow*>(&frame)) {
    const QWidget& map = *holder->centralWidget();
    others.push_back(AreaOf({map.mapToGlobal(QPoint()), map.size()}));
  }
  return PixelsOf(core::Snapped(PlaceOf(place), SizeOf(size()), AreaOf(frame.frameGeometry()), others));
}

void ToolFrm::Refresh(base::Changed what) {
  behind |= what & views;
  if (body->isVisible() || RefreshesUnseen()) CatchUp();
}

void ToolFrm::CatchUp() {
  const base::Changed what = std::exchange(behind, base::Changed::Nothing);
  if (what != base::Changed::Nothing) ShowChanged(what);
}

void ToolFrm::setVisible(bool visible) {
  if (visible && !isVisible()) move(Pixels(State().X), Pixels(State().Y));
  QWidget::setVisible(visible);
}

void ToolFrm::Unload() {
  unloading = true;
  close();
}

void ToolFrm::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  core::ToolWindowState& kept = State();
  const QPoint place(Pixels(kept.X), Pixels(kept.Y));
  // A place that is already kept stays as it is written, to the unit.
  if (pos() == place || !isVisible()) return;
  // While a window manager takes a window up, it reports places that nobody chose (its own frame's 0,0) and may not
  // take them back: the next thing asked of the window would move it there.
  if (!windowHandle()->isExposed()) {
    move(place);
    return;
  }
  if (program.State.Loading) return;
  kept.X = Units(pos().x());
  kept.Y = Units(pos().y());
}

void ToolFrm::closeEvent(QCloseEvent* event) {
  if (unloading) return;
  event->ignore();
  Q_EMIT CloseAsked();
}

void ToolFrm::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Mid));
  painter.fillRect(rect().adjusted(Border, Border, -Border, -Border), palette().color(QPalette::Window));
}

bool ToolFrm::eventFilter(QObject* watched, QEvent* event) {
  if (watched != Label1) return QWidget::eventFilter(watched, event);
  const auto* mouse = dynamic_cast<QMouseEvent*>(event);
  if (event->type() == QEvent::MouseButtonPress && mouse != nullptr && mouse->button() == Qt::LeftButton) {
    Q_EMIT CaptionPressed();
    // The system drags the window where it can; where it cannot, we do. An X11 window manager that hears of it after
    // the button is up again would hold the window at the pointer until the next press; our own events keep their
    // order.
    const QString platform = QGuiApplication::platformName();
    // The system does not snap; Wayland leaves nothing to us.
    const bool snaps = program.State.WindowOptions.SNAPWINDOWS && !platform.startsWith(u"wayland");
    const bool ours = platform == u"xcb" || snaps || !windowHandle()->startSystemMove();
    if (ours) grip = Grip{mouse->globalPosition().toPoint() - pos(), pos()};
    return true;
  }
  if (event->type() == QEvent::MouseMove && mouse != nullptr && grip) {
    grip->Before = pos();
    grip->MovedAt = mouse->timestamp();
    move(DraggedTo(mouse->globalPosition().toPoint() - grip->Offset, mouse->modifiers()));
    return true;
  }
  if (event->type() == QEvent::MouseButtonRelease && mouse != nullptr && grip) {
    // A window manager may hold a click back while the pointer goes on: X11 then tells of the release where the pointer
    // is by now, and the toolkit makes a move of that. One that comes with the release is not of the hand.
    if (grip->MovedAt == mouse->timestamp()) move(grip->Before);
    grip.reset();
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace kestrel::shell
