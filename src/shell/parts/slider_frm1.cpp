#include "shell/parts/slider_frm1.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QScreen>
#include <QSlider>

#include "map/geometry.h"
#include "shell/parts/tool_frm.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

constexpr int Length = 160;

QString PercentText(int alpha) { return FromBytes(map::SafeFormat(alpha / 255.0 * 100, "0")) + u'%'; }

}  // namespace

// A pop-up stands above windows that are always on top, and a press outside it closes it.
SliderFrm1::SliderFrm1(ToolFrm& target) : QWidget(&target, Qt::Popup | Qt::FramelessWindowHint), window(target) {
  setObjectName(QStringLiteral("SliderFrm1"));
  setAttribute(Qt::WA_DeleteOnClose);
  Slider1 = new QSlider(Qt::Horizontal, this);
  Slider1->setObjectName(QStringLiteral("Slider1"));
  Slider1->setAccessibleName(QStringLiteral("Opacity"));
  Slider1->setRange(0, 255);
  Slider1->setPageStep(13);
  Slider1->setFixedWidth(Length);
  Slider1->setValue(target.State().Transparency);
  Slider1->setToolTip(PercentText(Slider1->value()));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 8, 4);
  row->addWidget(Slider1);
  connect(Slider1, &QSlider::valueChanged, this, [this](int alpha) { Apply(alpha); });
}

void SliderFrm1::Apply(int alpha) {
  window.SetTransparency(alpha);
  window.State().Transparency = static_cast<std::int16_t>(alpha);
  Slider1->setToolTip(PercentText(alpha));
}

void SliderFrm1::ShowBeside(const QWidget& button) {
  adjustSize();
  const QRect area = button.screen()->availableGeometry();
  const QPoint corner = button.mapToGlobal(QPoint(0, button.height()));
  move(qBound(area.left(), corner.x(), qMax(area.left(), area.right() + 1 - width())),
       qBound(area.top(), corner.y(), qMax(area.top(), area.bottom() + 1 - height())));
  show();
  Slider1->setFocus();
}

bool SliderFrm1::event(QEvent* event) {
  if (event->type() == QEvent::WindowDeactivate) close();
  return QWidget::event(event);
}

void SliderFrm1::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Mid));
  painter.setBrush(palette().color(QPalette::Window));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace kestrel::shell
