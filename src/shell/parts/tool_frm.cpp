#include "shell/parts/tool_frm.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "map/units.h"
#include "shell/parts/guard.h"
#include "shell/parts/line_icon.h"
#include "shell/parts/remembered_place.h"
#include "shell/parts/slider_frm1.h"

namespace kestrel::shell {
namespace {

/// The line around the window, pixels.
constexpr int Border = 1;
/// How much of a strip must be on a screen for the window to count as seen there, pixels.
constexpr int EnoughOfStrip = 48;

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
  MoveInto(*NearestScreen());
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

void ToolFrm::BringIntoView() {
  const QRect strip = Strip();
  for (const QScreen* each : QGuiApplication::screens()) {
    const QRect seen = strip & each->availableGeometry();
    if (seen.height() == StripHeight && seen.width() >= qMin(EnoughOfStrip, width())) return;
  }
  MoveInto(*NearestScreen());
}

QRect ToolFrm::Strip() const { return {pos(), QSize(width(), StripHeight)}; }

const QScreen* ToolFrm::NearestScreen() const {
  const QPoint center = Strip().center();
  const auto distance = [center](const QScreen* each) {
    const QRect area = each->availableGeometry();
    const int x = qBound(area.left(), center.x(), area.right()) - center.x();
    const int y = qBound(area.top(), center.y(), area.bottom()) - center.y();
    return qAbs(static_cast<qint64>(x)) + qAbs(static_cast<qint64>(y));
  };
  const QList<QScreen*> screens = QGuiApplication::screens();
  return *std::min_element(screens.begin(), screens.end(),
                           [&distance](QScreen* a, QScreen* b) { return distance(a) < distance(b); });
}

void ToolFrm::MoveInto(const QScreen& screen) {
  const QRect area = screen.availableGeometry();
  const QPoint inside(qMax(area.left(), qMin(pos().x(), area.right() + 1 - width())),
                      qMax(area.top(), qMin(pos().y(), area.bottom() + 1 - height())));
  // A place that is good already stays as it is kept, to the unit.
  if (inside != pos()) MoveTo(inside);
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
    const bool ours = QGuiApplication::platformName() == u"xcb" || !windowHandle()->startSystemMove();
    if (ours) grip = Grip{mouse->globalPosition().toPoint() - pos(), pos()};
    return true;
  }
  if (event->type() == QEvent::MouseMove && mouse != nullptr && grip) {
    grip->Before = pos();
    grip->MovedAt = mouse->timestamp();
    move(mouse->globalPosition().toPoint() - grip->Offset);
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
