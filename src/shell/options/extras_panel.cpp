#include "shell/options/extras_panel.h"

#include <QCheckBox>
#include <QLineEdit>

#include "shell/options/panel_parts.h"
#include "shell/parts/colour_button.h"

namespace kestrel::shell {
namespace {

/// Room for a number and what it is measured in, characters.
constexpr int RangeWidth = 9;

}  // namespace

ExtrasPanel::ExtrasPanel(OptionControls& controls, QWidget* owner) : QFrame(owner), options(controls) {
  setObjectName(QStringLiteral("Frame5"));
  auto* columns = new QHBoxLayout(this);
  columns->setContentsMargins(PanelMargin, PanelMargin, PanelMargin, PanelMargin);
  columns->setSpacing(PanelGap);
  auto* left = new QVBoxLayout;
  auto* right = new QVBoxLayout;
  for (QVBoxLayout* column : {left, right}) {
    column->setSpacing(PanelGap);
    columns->addLayout(column, 1);
  }
  AddTies(*left);
  AddThreats(*right);
  for (QVBoxLayout* column : {left, right}) column->addStretch(1);
}

void ExtrasPanel::AddTies(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("Ties", column, this);
  auto* how = new QLabel(
      Words("Ctrl and the left button on one aircraft, then on another, ties both on the map. The same on the text "
            "takes the line away, Esc in the map all of them."),
      this);
  how->setTextFormat(Qt::PlainText);
  how->setWordWrap(true);
  rows->addWidget(how);
  rows->addWidget(options.Color("cmdTieCol", Words("Tie Color"), Words("Color of lines between two aircraft"), this));
}

void ExtrasPanel::AddThreats(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("Threat Ring", column, this);
  rows->addWidget(options.Check("chkThreatRing", Words("Nearest Threat"),
                                Words("A line from each player to the nearest hostile AI aircraft"), this));
  QLineEdit* range = options.Number("txtThreatRange", Words("How near it must be"), this);
  range->setFixedWidth(RangeWidth * fontMetrics().horizontalAdvance(u'0'));
  QHBoxLayout* row = NewRow(*rows);
  row->addWidget(NewLabel("lblThreatRange", Words("Within"), range, this), 1);
  row->addWidget(range);
  row->addWidget(NewLabel("lblThreatNm", Words("NM"), nullptr, this));
  rows->addWidget(options.Color("cmdThreatCol", Words("Threat Color"), Words("Color of these lines"), this));
}

}  // namespace kestrel::shell
