#include "shell/map/bulls_frm.h"

#include <QVBoxLayout>

#include "shell/core/guard.h"
#include "shell/core/text.h"
#include "shell/map/read_out.h"

namespace kestrel::shell {

BullsFrm::BullsFrm(core::Program& program, QWidget* frame)
    : ToolFrm(program, core::ToolWindow::Bulls, QStringLiteral("BullsFrm"), QStringLiteral("BULLSEYE"), frame) {
  Label2 = NewReadOut("Label2", QStringLiteral("000\u00b0"), QStringLiteral("Bearing from the bullseye to the pointer"),
                      &Body());
  Label3 = NewReadOut("Label3", QStringLiteral("00000.00 NM"), QStringLiteral("Range from the bullseye to the pointer"),
                      &Body());
  auto* rows = new QVBoxLayout(&Body());
  rows->setContentsMargins(8, 8, 8, 8);
  rows->setSpacing(4);
  rows->addWidget(Label2);
  rows->addWidget(Label3);
  Body().setMinimumWidth(BodyWidth);
  FitBody();
}

void BullsFrm::ShowBRs(const map::BRTexts& texts) {
  if (!isVisible()) return;
  Label2->setText(FromBytes(texts.BullsBearing));
  Label3->setText(FromBytes(texts.BullsRange));
}

void BullsFrm::showEvent(QShowEvent* event) {
  ToolFrm::showEvent(event);
  Guarded(station.Log, "Show", [this] { ShowBRs(map::UpdateBRs(station.State.View)); });
}

}  // namespace kestrel::shell
