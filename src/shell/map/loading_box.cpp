#include "shell/map/loading_box.h"

#include <QEvent>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace kestrel::shell {
namespace {

/// The progress bar, pixels.
constexpr int BarWidth = 280;

}  // namespace

LoadingBox::LoadingBox(QWidget* owner) : QFrame(owner), ProgressBar1(new QProgressBar(this)) {
  setObjectName(QStringLiteral("LoadingBox"));
  setFrameStyle(QFrame::Box | QFrame::Plain);
  setAutoFillBackground(true);
  auto* label = new QLabel(QStringLiteral("Loading the requested file..."), this);
  label->setObjectName(QStringLiteral("lblLoading"));
  ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
  ProgressBar1->setRange(0, 100);
  ProgressBar1->setMinimumWidth(BarWidth);
  ProgressBar1->setAccessibleName(label->text());
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(16, 16, 16, 16);
  rows->setSpacing(8);
  rows->addWidget(label);
  rows->addWidget(ProgressBar1);
  hide();
  owner->installEventFilter(this);
}

void LoadingBox::ShowAt(int percent) {
  ProgressBar1->setValue(percent);
  if (isVisible()) return;
  adjustSize();
  Centre();
  raise();
  show();
}

void LoadingBox::Centre() {
  const QRect room = parentWidget()->rect();
  move((room.width() - width()) / 2, (room.height() - height()) / 2);
}

bool LoadingBox::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Resize && isVisible()) Centre();
  return false;
}

}  // namespace kestrel::shell
