#include "shell/options/options_panel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>

#include "shell/options/panel_parts.h"
#include "shell/parts/colour_button.h"

namespace kestrel::shell {
namespace {

/// Where the label stands from the TACAN, by the setting.
constexpr const char* positions[] = {"Upper left", "Upper right", "Lower left", "Lower right"};
/// Room for a number and what it is measured in, characters.
constexpr int NumberWidth = 9;

struct Tick {
  const char* Name;
  const char* Caption;
  const char* Meaning;
};
constexpr Tick general[] = {
    {"chkDebug", "Debug", "Writes KESTRELLog.txt and debug_out.dat beside the program"},
    {"chkMapAutofocus", "Map Autofocus", "The map takes the keyboard when the pointer is over it"},
    {"Check7", "Auto Friends", "Friendly AI aircraft are those of FriendlyNames.ini"},
    {"Check8", "AI Names", "Names of AI aircraft in their labels"},
};
constexpr Tick ilsTicks[] = {
    {"chkShowAll", "Show All ILS", "Runways without an ILS frequency too"},
    {"chkILSLabels", "ILS Labels", "Runway and frequency beside its ILS"},
    {"chkILSLabelsBoxed", "ILS Labels Boxed", "A box around them"},
};

}  // namespace

OptionsPanel::OptionsPanel(OptionControls& controls, QWidget* owner) : QFrame(owner), options(controls) {
  setObjectName(QStringLiteral("Frame2"));
  auto* columns = new QHBoxLayout(this);
  columns->setContentsMargins(PanelMargin, PanelMargin, PanelMargin, PanelMargin);
  columns->setSpacing(PanelGap);
  auto* left = new QVBoxLayout;
  auto* right = new QVBoxLayout;
  for (QVBoxLayout* column : {left, right}) {
    column->setSpacing(PanelGap);
    columns->addLayout(column, 1);
  }
  AddGeneral(*left);
  AddTacan(*left);
  AddIls(*right);
  for (QVBoxLayout* column : {left, right}) column->addStretch(1);
}

void OptionsPanel::AddGeneral(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("General", column, this);
  for (const Tick& tick : general) {
    rows->addWidget(options.Check(tick.Name, Words(tick.Caption), Words(tick.Meaning), this));
  }
  QHBoxLayout* row = NewRow(*rows);
  QComboBox* scale = options.MiniMapScale("Combo1", Words("Pixels of the map to one of the mini map"), this);
  row->addWidget(NewLabel("lblMiniMapScale", Words("MiniMap Scale 1\\"), scale, this), 1);
  row->addWidget(scale);
}

void OptionsPanel::AddTacan(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("TACAN", column, this);
  const auto withColor = [this, rows](QCheckBox* box, const char* color, const char* meaning) {
    QHBoxLayout* row = NewRow(*rows);
    row->addWidget(box, 1);
    row->addWidget(options.Color(color, {}, Words(meaning), this));
  };
  withColor(options.Check("chkShowTACANRange", Words("Show TCN Range"), Words("A circle at the TACAN's range"), this),
            "cmdTCCircleCol", "Color of the circle");
  withColor(options.Check("chkShowTACANIcon", Words("Show TCN Icon"), Words("An icon on the TACAN"), this),
            "cmdTCIconCol", "Color of the icon");
  QHBoxLayout* icon = NewRow(*rows);
  QComboBox* select = options.Icon("cmbSelectIcon", Words("Number of the icon"), this);
  icon->addWidget(NewLabel("lblSelectIcon", Words("TACAN Icon"), select, this), 1);
  icon->addWidget(select);
  rows->addWidget(
      options.Check("chkTACANLabels", Words("TACAN Labels"), Words("Airfield, channel and frequencies"), this));
  rows->addWidget(options.Check("chkTACANLabelsBoxed", Words("TACAN Labels Boxed"), Words("A box around them"), this));
  AddPositions(*rows);
  QHBoxLayout* look = NewRow(*rows);
  look->addWidget(options.Color("cmdColorTACAN", Words("Label Color"), Words("Color of TACAN labels"), this), 1);
  look->addWidget(options.Font("cmdFontTACAN", Words("Label Font"), Words("Font of TACAN labels"), this), 1);
}

void OptionsPanel::AddPositions(QBoxLayout& rows) {
  auto* heading = new QLabel(Words("TACAN Label Position"), this);
  rows.addWidget(heading);
  auto* square = new QGridLayout;
  square->setSpacing(RowGap);
  square->setContentsMargins(2 * PanelGap, 0, 0, 0);
  int index = 0;
  for (QWidget* button : options.Positions("OptTACANLabelPos", positions, this)) {
    button->setToolTip(Words("Where the label stands from the TACAN"));
    square->addWidget(button, index / 2, index % 2);
    ++index;
  }
  rows.addLayout(square);
}

void OptionsPanel::AddIls(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("ILS", column, this);
  for (const Tick& tick : ilsTicks) {
    rows->addWidget(options.Check(tick.Name, Words(tick.Caption), Words(tick.Meaning), this));
  }
  QHBoxLayout* look = NewRow(*rows);
  look->addWidget(options.Color("cmdColorILS", Words("Label Color"), Words("Color of ILS labels"), this), 1);
  look->addWidget(options.Font("cmdFontILS", Words("Label Font"), Words("Font of ILS labels"), this), 1);
  AddDrawing(*rows);
  auto* colors = new QGridLayout;
  colors->setHorizontalSpacing(PanelGap);
  colors->setVerticalSpacing(RowGap);
  for (int slot = 0; slot < 4; ++slot) {
    const QString number = QString::number(slot + 1);
    const std::string name = "cmdILS1Col_" + std::to_string(slot);
    colors->addWidget(options.Color(name.c_str(), Words("ILS%1 Color").arg(number),
                                    Words("Color of the ILS of runway %1 of an airfield").arg(number), this),
                      slot / 2, slot % 2);
  }
  rows->addLayout(colors);
}

void OptionsPanel::AddDrawing(QBoxLayout& rows) {
  struct Measure {
    const char* Name;
    const char* Label;
    const char* Caption;
    const char* UnitName;
    QString Unit;
    const char* Meaning;
  };
  const Measure measures[] = {
      {"txtILSDrawDist", "lblILSDrawDist", "ILS Drawing Distance", "lblNm", Words("NM"), "Length of the fan"},
      {"txtILSAngle", "lblILSAngle", "ILS Drawing Angle", "lblDegrees", QString(u'\u00b0'),
       "Opening of the fan, 0 to 180 degrees"},
      {"txtTailAngle", "lblTailAngle", "ILS Tail Angle", "lblDeg2", QString(u'\u00b0'),
       "Slant of its far end, 0 to 180 degrees"},
  };
  auto* fields = new QGridLayout;
  fields->setHorizontalSpacing(PanelGap);
  fields->setVerticalSpacing(RowGap);
  fields->setColumnStretch(0, 1);
  int line = 0;
  for (const Measure& each : measures) {
    QLineEdit* field = options.Number(each.Name, Words(each.Meaning), this);
    field->setFixedWidth(NumberWidth * fontMetrics().horizontalAdvance(u'0'));
    fields->addWidget(NewLabel(each.Label, Words(each.Caption), field, this), line, 0);
    fields->addWidget(field, line, 1);
    fields->addWidget(NewLabel(each.UnitName, each.Unit, nullptr, this), line, 2);
    ++line;
  }
  rows.addLayout(fields);
}

}  // namespace kestrel::shell
