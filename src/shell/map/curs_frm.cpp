#include "shell/map/curs_frm.h"

#include <QCheckBox>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "shell/core/guard.h"
#include "shell/core/text.h"
#include "shell/map/read_out.h"

namespace kestrel::shell {

CursFrm::CursFrm(core::Program& program, QWidget* frame)
    : ToolFrm(program, core::ToolWindow::Curs, QStringLiteral("CursFrm"), QStringLiteral("CURSOR"), frame) {
  Check1 = new QCheckBox(QStringLiteral("Static Cursor"), &Body());
  Check1->setObjectName(QStringLiteral("Check1"));
  Check1->setToolTip(QStringLiteral("Hotkey: C"));
  Label2 = NewReadOut("Label2", QStringLiteral("000\u00b0 / 000\u00b0"),
                      QStringLiteral("Bearing from the cursor to the pointer / and back"), &Body());
  Label3 = NewReadOut("Label3", QStringLiteral("00000.00 NM"), QStringLiteral("Range from the cursor to the pointer"),
                      &Body());
  auto* rows = new QVBoxLayout(&Body());
  rows->setContentsMargins(8, 8, 8, 8);
  rows->setSpacing(4);
  rows->addWidget(Check1);
  rows->addWidget(Label2);
  rows->addWidget(Label3);
  Body().setMinimumWidth(BodyWidth);
  FitBody();
  ShowStaticCursor();
  connect(Check1, &QCheckBox::toggled, this,
          [this](bool on) { Guarded(station.Log, "Check1", [this, on] { SetStaticCursor(on); }); });
}

void CursFrm::ShowBRs(const map::BRTexts& texts) {
  if (!isVisible()) return;
  Label2->setText(FromBytes(texts.Bearings));
  Label3->setText(FromBytes(texts.Range));
}

void CursFrm::ShowStaticCursor() {
  const QSignalBlocker quiet(Check1);
  Check1->setChecked(station.State.MapOptions.STATICCURSOR);
}

void CursFrm::SetStaticCursor(bool on) {
  station.Shown.Refresh(map::SetStaticCursor(station.State.View, station.State.MapOptions, on));
  Label2->clear();
  Label3->clear();
}

void CursFrm::showEvent(QShowEvent* event) {
  ToolFrm::showEvent(event);
  Guarded(station.Log, "Show", [this] {
    ShowStaticCursor();
    ShowBRs(map::UpdateBRs(station.State.View));
  });
}

}  // namespace kestrel::shell
