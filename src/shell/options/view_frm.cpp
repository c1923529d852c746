#include "shell/options/view_frm.h"

#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

#include "shell/options/extras_panel.h"
#include "shell/options/keys_panel.h"
#include "shell/options/option_controls.h"
#include "shell/options/options_panel.h"
#include "shell/options/view_panel.h"

namespace kestrel::shell {
namespace {

constexpr const char* captions[] = {"&View", "&Options", "&Map Keys", "More &Keys", "&Extras"};

}  // namespace

ViewFrm::ViewFrm(core::Program& running, QWidget* frame)
    : ToolFrm(running, core::ToolWindow::View, QStringLiteral("ViewFrm"), QStringLiteral("OPTIONS"), frame,
              base::Changed::Zoom | base::Changed::Options),
      capture(running),
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
  options = new OptionControls(program, this);
  view = new ViewPanel(program, *options, panels);
  panels->addWidget(view);
  panels->addWidget(new OptionsPanel(*options, panels));
  auto* mapKeys = new KeysPanel(program, capture, "Frame3", 0, core::SecondHalf, "cmdLoadDefaults", panels);
  auto* moreKeys =
      new KeysPanel(program, capture, "Frame4", core::SecondHalf, core::ShortcutCount, "cmdLoadDefaults2", panels);
  connect(mapKeys, &KeysPanel::KeysChanged, moreKeys, &KeysPanel::ShowKeys);
  connect(moreKeys, &KeysPanel::KeysChanged, mapKeys, &KeysPanel::ShowKeys);
  panels->addWidget(mapKeys);
  panels->addWidget(moreKeys);
  extras = new ExtrasPanel(program, *options, panels);
  panels->addWidget(extras);
  panels->setCurrentIndex(TabStrip1->currentIndex());
  FitBody();
}

void ViewFrm::ShowChanged(base::Changed what) {
  MakePanels();
  if (Has(what, base::Changed::Zoom)) view->ShowZoom();
  if (Has(what, base::Changed::Options)) {
    options->Fill();
    extras->Fill();
  }
}

}  // namespace kestrel::shell
