#include "shell/options/extras_panel.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QWheelEvent>

#include "core/eye_colours.h"
#include "shell/options/panel_parts.h"
#include "shell/parts/colour_button.h"
#include "shell/parts/guard.h"

namespace kestrel::shell {
namespace {

/// Room for a number and what it is measured in, characters.
constexpr int RangeWidth = 9;

}  // namespace

ExtrasPanel::ExtrasPanel(core::Program& running, OptionControls& controls, QWidget* owner)
    : QFrame(owner), program(running), options(controls) {
  setObjectName(QStringLiteral("Frame5"));
  auto* scroll = new QScrollArea(this);
  scroll->setObjectName(QStringLiteral("ExtrasScroll"));
  auto* groups = new QWidget;
  auto* columns = new QHBoxLayout(groups);
  columns->setContentsMargins(PanelMargin, PanelMargin, PanelMargin, PanelMargin);
  columns->setSpacing(PanelGap);
  scroll->setWidget(groups);
  ShowWhole(*scroll);
  auto* left = new QVBoxLayout;
  auto* right = new QVBoxLayout;
  for (QVBoxLayout* column : {left, right}) {
    column->setSpacing(PanelGap);
    columns->addLayout(column, 1);
  }
  AddTies(*left);
  AddThreats(*left);
  AddMap(*left);
  AddLabels(*left);
  AddColors(*right);
  AddLook(*right);
  AddCard(*right);
  AddHealing(*right);
  AddSessions(*right);
  AddWindows(*right);
  for (QVBoxLayout* column : {left, right}) column->addStretch(1);
  KeepWheel(*groups);
  // Only its height may be cut off.
  scroll->setMinimumWidth(groups->minimumSizeHint().width() + scroll->verticalScrollBar()->sizeHint().width());
  Fill();
}

void ExtrasPanel::ShowWhole(QScrollArea& scroll) {
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->addWidget(&scroll);
  scroll.setFrameShape(QFrame::NoFrame);
  scroll.setWidgetResizable(true);
  scroll.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // The keyboard goes from control to control, which come into view with it.
  scroll.setFocusPolicy(Qt::NoFocus);
  connect(qApp, &QApplication::focusChanged, scroll.widget(),
          [&scroll, groups = scroll.widget()](QWidget*, QWidget* now) {
            if (now != nullptr && groups->isAncestorOf(now)) scroll.ensureWidgetVisible(now, PanelGap, PanelGap);
          });
  for (QWidget* part : {scroll.viewport(), scroll.widget()}) part->setAutoFillBackground(false);
}

void ExtrasPanel::Fill() { cmdFormerColors->setEnabled(program.State.Extras.EYECOLORS); }

void ExtrasPanel::KeepWheel(QWidget& groups) {
  for (QWidget* part : groups.findChildren<QWidget*>()) {
    const bool turns = qobject_cast<QAbstractSlider*>(part) != nullptr || qobject_cast<QComboBox*>(part) != nullptr ||
                       qobject_cast<QAbstractSpinBox*>(part) != nullptr;
    if (!turns) continue;
    part->setFocusPolicy(Qt::StrongFocus);
    part->installEventFilter(this);
  }
}

bool ExtrasPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
  event->ignore();
  return true;
}

void ExtrasPanel::AddTies(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("Ties", column, this);
  auto* how = new QLabel(
      Words("Ctrl and the left button on one aircraft, then on another, ties both on the map. The same on the text "
            "takes the line away, Esc in the map all of them."),
      this);
  how->setTextFormat(Qt::PlainText);
  how->setWordWrap(true);
  how->setToolTip(Words("BRAA on the line: bearing, range, altitude and aspect of the second aircraft from the first"));
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

void ExtrasPanel::AddColors(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("Colors for Every Eye", column, this);
  const auto add = [this, rows](const char* name, const char* caption, const char* meaning,
                                base::Changed (*run)(core::Station&)) {
    auto* button = new QPushButton(Words(caption), this);
    button->setObjectName(Words(name));
    button->setToolTip(Words(meaning));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, name, run] {
      Guarded(program.Log, name, [this, run] { program.Shown.Refresh(run(program.State)); });
    });
    rows->addWidget(button);
    return button;
  };
  add("cmdEyeColors", "Use Them",
      "Friends, foes, players, cursor and bullseye in colors that are told apart with every kind of color blindness",
      core::UseEyeColours);
  cmdFormerColors = add("cmdFormerColors", "Put Back", "The colors that were there before", core::PutColoursBack);
}

void ExtrasPanel::AddCard(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("Pointer", column, this);
  rows->addWidget(options.Check("chkPlotCard", Words("Card at the Pointer"),
                                Words("What is known of the aircraft that the pointer rests on"), this));
}

void ExtrasPanel::AddHealing(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("Lost Connection", column, this);
  rows->addWidget(options.Check("chkReconnect", Words("Reconnect by Itself"),
                                Words("Call a lost server again and again until there is data"), this));
  rows->addWidget(options.Check("chkRecordAgain", Words("Go on Recording"),
                                Words("Begin a new tape when a lost connection has ended one and is back"), this));
}

void ExtrasPanel::AddSessions(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("Sessions", column, this);
  rows->addWidget(options.Check("chkRememberCallsigns", Words("Remember My Callsigns"),
                                Words("A callsign and a color that a player has been given come back with his name"),
                                this));
  rows->addWidget(options.Check("chkAskToLeave", Words("Ask Before a Session Ends"),
                                Words("For a tape, for another entry of the phonebook or another address"), this));
}

void ExtrasPanel::AddLabels(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("Labels", column, this);
  rows->addWidget(options.Check("chkLabelsApart", Words("Keep Labels Apart"),
                                Words("Labels make room for each other and for symbols"), this));
  QLineEdit* size = options.Number("txtLabelSize", Words("Percent of the font of labels, 50 to 300"), this);
  size->setFixedWidth(RangeWidth * fontMetrics().horizontalAdvance(u'0'));
  QHBoxLayout* row = NewRow(*rows);
  row->addWidget(NewLabel("lblLabelSize", Words("Label Size"), size, this), 1);
  row->addWidget(size);
  row->addWidget(NewLabel("lblLabelPercent", Words("%"), nullptr, this));
  rows->addWidget(NewLabel("lblLabelLines", Words("A player's label shows"), nullptr, this));
  struct Shown {
    const char* Name;
    const char* Caption;
    const char* Meaning;
  };
  constexpr Shown lines[] = {{"chkLabelId", "Number", "The player's number in the session"},
                             {"chkLabelCallsign", "Callsign", "The player's callsign"},
                             {"chkLabelName", "Name", "The player's name"},
                             {"chkLabelAltitude", "Altitude", "Hundreds of feet"},
                             {"chkLabelSpeed", "Speed", "Knots"}};
  QHBoxLayout* pair = nullptr;
  for (const Shown& line : lines) {
    if (pair == nullptr || pair->count() == 2) pair = NewRow(*rows);
    pair->addWidget(options.Check(line.Name, Words(line.Caption), Words(line.Meaning), this), 1);
  }
  pair->addStretch(1);
}

void ExtrasPanel::AddMap(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("Map", column, this);
  QSlider* slider = options.Slider("sldMapBrightness", Words("How bright the map picture is, percent"),
                                   map::LeastMapBrightness, 100, this);
  slider->setSingleStep(5);
  slider->setPageStep(10);
  auto* number = NewLabel("lblMapBrightnessNumber", {}, nullptr, this);
  number->setFixedWidth(number->fontMetrics().horizontalAdvance(Words("100 %")));
  number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  const auto show = [number](int percent) { number->setText(QStringLiteral("%1 %").arg(percent)); };
  connect(slider, &QSlider::valueChanged, number, show);
  show(slider->value());
  QHBoxLayout* row = NewRow(*rows);
  row->addWidget(NewLabel("lblMapBrightness", Words("Brightness"), slider, this));
  row->addWidget(slider, 1);
  row->addWidget(number);
  rows->addWidget(options.Check("chkGridDegrees", Words("Degrees at the Grid's Edge"),
                                Words("Latitude and longitude where lines of the grid meet the edge of the map"),
                                this));
  rows->addWidget(options.Check("chkPictureMargin", Words("Margin for Map Images"),
                                Words("A map image that is not square is filled up with black instead of being "
                                      "stretched; its lower left corner stays the theater's"),
                                this));
  rows->addWidget(options.Check("chkWheelAtPointer", Words("Wheel Zooms at the Pointer"),
                                Words("The place under the pointer stays where it is"), this));
}

void ExtrasPanel::AddLook(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("Look", column, this);
  static constexpr const char* looks[] = {"As the System", "Light", "Dark"};
  QComboBox* list = options.Choice(
      "cmbLook", Words("Light or dark windows; the system's count as they were when the station started"), looks, this);
  list->setAccessibleName(Words("Look"));
  rows->addWidget(list);
}

void ExtrasPanel::AddWindows(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("Windows", column, this);
  rows->addWidget(options.Check("chkSnapWindows", Words("Snap to Edges"),
                                Words("A floating window that is dragged snaps to the edges of the others, the frame "
                                      "and the map; Alt holds that off"),
                                this));
  rows->addWidget(options.Check("chkKeepFrame", Words("Start as Last Left"),
                                Words("The main window and the view are at the next start as they were at the end"),
                                this));
}

}  // namespace kestrel::shell
