#include "shell/map/curs_frm.h"

#include <QCheckBox>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "map/cursor_tools.h"
#include "shell/map/read_out.h"
#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {

CursFrm::CursFrm(core::Program& running, QWidget* frame)
    : ToolFrm(running, core::ToolWindow::Curs, QStringLiteral("CursFrm"), QStringLiteral("CURSOR"), frame,
              base::Changed::CursorLine | base::Changed::Options) {
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
  connect(Check1, &QCheckBox::toggled, this, [this](bool on) {
    Guarded(program.Log, "Check1", [this, on] {
      program.Shown.Refresh(map::SetStaticCursor(program.State.View, program.State.MapOptions, on));
      Label2->clear();
      Label3->clear();
    });
  });
}

void CursFrm::ShowChanged(base::Changed what) {
  if (Has(what, base::Changed::CursorLine)) {
    const map::BRTexts texts = map::UpdateBRs(program.State.View);
    Label2->setText(FromBytes(texts.Bearings));
    Label3->setText(FromBytes(texts.Range));
  }
  if (Has(what, base::Changed::Options)) ShowStaticCursor();
}

void CursFrm::ShowStaticCursor() {
  const bool on = program.State.MapOptions.STATICCURSOR;
  if (Check1->isChecked() == on) return;
  const QSignalBlocker quiet(Check1);
  Check1->setChecked(on);
  Label2->clear();
  Label3->clear();
}

}  // namespace kestrel::shell
