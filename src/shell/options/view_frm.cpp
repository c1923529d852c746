#include "shell/options/view_frm.h"

#include <QEvent>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

#include "shell/core/guard.h"
#include "shell/options/keys_panel.h"
#include "shell/options/option_controls.h"
#include "shell/options/options_panel.h"
#include "shell/options/view_panel.h"

namespace kestrel::shell {
namespace {

constexpr const char* captions[] = {"&View", "&Options", "&Map Keys", "More &Keys"};

}  // namespace

ViewFrm::ViewFrm(core::Program& program, QWidget* frame)
    : ToolFrm(program, core::ToolWindow::View, QStringLiteral("ViewFrm"), QStringLiteral("OPTIONS"), frame),
      capture(program),
      TabStrip1(new QTabBar(&Body())),
      panels(new QStackedWidget(&Body())) {
  TabStrip1->setObjectName(QStringLiteral("TabStrip1"));
  TabStrip1->setAccessibleName(QStringLiteral("Options"));
  TabStrip1->setExpanding(true);
  TabStrip1->setUsesScrollButtons(false);
  for (const char* caption : captions) TabStrip1->addTab(QString::fromLatin1(caption));
  connect(TabStrip1, &QTabBar::currentChanged, panels, &QStackedWidget::setCurrentIndex);
  auto* rows = new QVBoxLayout(&Body());
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(TabStrip1);
  rows->addWidget(panels, 1);
  panels->setMinimumSize(PanelSize());
  Body().installEventFilter(this);
  FitBody();
}

// The key fields speak to the capture until they go.
ViewFrm::~ViewFrm() { delete panels; }

// What they need with the fonts that the station comes across and with a note of three lines, and a little more; where
// it is not enough, FitBody makes the window grow once they are there.
QSize ViewFrm::PanelSize() const {
  constexpr int digits = 64, lines = 36;
  return {digits * fontMetrics().horizontalAdvance(u'0'), lines * fontMetrics().height()};
}

void ViewFrm::MakePanels() {
  if (options != nullptr) return;
  options = new OptionControls(station, this);
  view = new ViewPanel(station, *options, panels);
  panels->addWidget(view);
  panels->addWidget(new OptionsPanel(*options, panels));
  panels->addWidget(new KeysPanel(station, capture, "Frame3", 0, core::SecondHalf, "cmdLoadDefaults", panels));
  panels->addWidget(
      new KeysPanel(station, capture, "Frame4", core::SecondHalf, core::ShortcutCount, "cmdLoadDefaults2", panels));
  panels->setCurrentIndex(TabStrip1->currentIndex());
  FitBody();
}

void ViewFrm::ShowZoom() {
  if (view != nullptr) view->ShowZoom();
}

void ViewFrm::ShowOptions() {
  if (options != nullptr) options->Fill();
}

void ViewFrm::ToggleBox(std::string_view box) {
  MakePanels();
  ToolFrm::ToggleBox(box);
}

bool ViewFrm::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &Body() && event->type() == QEvent::Show) Guarded(station.Log, "ViewFrm", [this] { MakePanels(); });
  return ToolFrm::eventFilter(watched, event);
}

}  // namespace kestrel::shell
