#include "shell/map/bulls_frm.h"

#include <QVBoxLayout>

#include "core/bullseye_steps.h"
#include "map/cursor_tools.h"
#include "shell/map/read_out.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {

BullsFrm::BullsFrm(core::Program& running, QWidget* frame)
    : ToolFrm(running, core::ToolWindow::Bulls, QStringLiteral("BullsFrm"), QStringLiteral("BULLSEYE"), frame,
              base::Changed::CursorLine | base::Changed::NameMenus | base::Changed::Tape | base::Changed::Connection) {
  Label2 = NewReadOut("Label2", QStringLiteral("000\u00b0"), QStringLiteral("Bearing from the bullseye to the pointer"),
                      &Body());
  Label3 = NewReadOut("Label3", QStringLiteral("00000.00 NM"), QStringLiteral("Range from the bullseye to the pointer"),
                      &Body());
  lblBulls = new QLabel(&Body());
  lblBulls->setObjectName(QStringLiteral("lblBulls"));
  lblBulls->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  // The longest name does not widen the window.
  lblBulls->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  lblBulls->setText(QStringLiteral(" "));
  auto* rows = new QVBoxLayout(&Body());
  rows->setContentsMargins(8, 8, 8, 8);
  rows->setSpacing(4);
  rows->addWidget(Label2);
  rows->addWidget(Label3);
  rows->addWidget(lblBulls);
  Body().setMinimumWidth(BodyWidth);
  FitBody();
}

void BullsFrm::ShowChanged(base::Changed) {
  const core::Station& station = program.State;
  const QString name = FromBytes(core::BullseyeInUse(station));
  lblBulls->setText(lblBulls->fontMetrics().elidedText(name, Qt::ElideRight, lblBulls->width() - 2));
  lblBulls->setToolTip(station.Session.Connected ? name + u'\n' + FromBytes(core::BullseyeNote) : name);
  const map::BRTexts texts = map::UpdateBRs(program.State.View);
  Label2->setText(FromBytes(texts.BullsBearing));
  Label3->setText(FromBytes(texts.BullsRange));
}

}  // namespace kestrel::shell
