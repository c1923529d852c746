#include "shell/areas/areas_details_frm.h"

#include <QButtonGroup>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <cmath>
#include <string>

#include "areas/area_drawing.h"
#include "map/units.h"
#include "shell/areas/flight_plan_panel.h"
#include "shell/areas/place_panels.h"
#include "shell/areas/region_panel.h"
#include "shell/parts/plain_text.h"
#include "shell/parts/typed_text.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

using areas::AreaType;
using base::Changed;

constexpr int Margin = 16;
constexpr int Gap = 8;
constexpr double SnapPixels = 8;  ///< so far from an end point a click snaps to it

constexpr const char* TypeCaptions[] = {"Region", "Circle", "Icon", "Text", "Flight Plan"};

QString Words(const char* text) { return QString::fromLatin1(text); }

double SnapDistance(const map::ViewState& view) {
  const map::MapPoint corner = map::MapFromSurface(view, {0, 0});
  return std::abs(map::MapFromSurface(view, {SnapPixels * map::UnitsPerPixelX, 0}).X - corner.X);
}

}  // namespace

AreasDetailsFrm::AreasDetailsFrm(core::Program& shown, ModalCount& dialogs, QWidget* frame)
    : QDialog(frame), program(shown), hand(shown, dialogs, *this, [this] { ShowEditor(); }) {
  setObjectName(Words("AreasDetailsFrm"));
  setWindowTitle(AsTitle(FromBytes(hand.Editor().Title)));
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(Margin, Margin, Margin, Margin);
  rows->setSpacing(Gap);
  AddName(*rows);
  AddTypes(*rows);
  AddPanels(*rows);
  AddButtons(*rows);
  ShowEditor();
  Text13->setFocus();
}

AreasDetailsFrm::~AreasDetailsFrm() {
  if (!ended) {
    Guarded(program.Log, "AreasDetailsFrm", [this] { End(areas::Cancel(hand.Editor(), program.State.Areas)); });
  }
  // The field that has the keyboard is left now, while there is somebody to hear it.
  hide();
}

void AreasDetailsFrm::AddName(QBoxLayout& rows) {
  auto* row = new QHBoxLayout;
  row->setSpacing(Gap);
  rows.addLayout(row);
  Text13 = hand.NewField("Text13", &areas::EditorFields::Text13, EditorHand::Takes::Words,
                         "Name of the area in the list and on the map", this);
  auto* caption = new QLabel(Words("Area Name:"), this);
  caption->setBuddy(Text13);
  row->addWidget(caption);
  row->addWidget(Text13, 1);
}

void AreasDetailsFrm::AddTypes(QBoxLayout& rows) {
  auto* row = new QHBoxLayout;
  row->setSpacing(2 * Gap);
  rows.addLayout(row);
  Option1 = new QButtonGroup(this);
  int type = 1;
  for (const char* caption : TypeCaptions) {
    auto* button = new QRadioButton(Words(caption), this);
    button->setObjectName(Words("Option1_") + QString::number(type));
    button->setToolTip(Words("What kind of area it is"));
    Option1->addButton(button, type++);
    row->addWidget(button);
  }
  row->addStretch(1);
  connect(Option1, &QButtonGroup::idClicked, this, [this](int chosen) {
    hand.Do("Option1", [&] { return areas::ChooseType(hand.Editor(), static_cast<AreaType>(chosen), hand.Texts()); });
  });
}

void AreasDetailsFrm::AddPanels(QBoxLayout& rows) {
  stack = new QStackedWidget(this);
  rows.addWidget(stack, 1);
  QSizePolicy policy = stack->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  stack->setSizePolicy(policy);
  text = new TextPanel(hand, stack);
  panels = {new RegionPanel(hand, stack), new CirclePanel(hand, stack), new IconPanel(hand, stack), text,
            new FlightPlanPanel(hand, stack)};
  for (AreaPanel* panel : panels) stack->addWidget(panel);
}

void AreasDetailsFrm::AddButtons(QBoxLayout& rows) {
  refused = new QLabel(this);
  refused->setObjectName(Words("lblRefused"));
  refused->setTextFormat(Qt::PlainText);
  refused->setWordWrap(true);
  refused->hide();
  rows.addWidget(refused);
  auto* row = new QHBoxLayout;
  row->setSpacing(Gap);
  rows.addLayout(row);
  row->addStretch(1);
  const auto add = [&](const char* name, const char* caption, const char* meaning) {
    auto* button = new QPushButton(Words(caption), this);
    button->setObjectName(Words(name));
    button->setToolTip(Words(meaning));
    button->setAutoDefault(false);
    row->addWidget(button);
    return button;
  };
  QPushButton* ok = add("Command2_0", "OK", "Keeps the area as it is drawn now");
  ok->setDefault(true);
  QPushButton* cancel = add("Command2_1", "Cancel", "Leaves everything as it was");
  connect(ok, &QPushButton::clicked, this, &AreasDetailsFrm::accept);
  connect(cancel, &QPushButton::clicked, this, &AreasDetailsFrm::reject);
}

void AreasDetailsFrm::ShowEditor() {
  const auto type = static_cast<int>(hand.Editor().WorkArea.Type);
  if (QAbstractButton* button = Option1->button(type)) {
    button->setChecked(true);
    stack->setCurrentIndex(type - 1);
  }
  // An area of a type that is none has no panel.
  stack->setVisible(Option1->button(type) != nullptr);
  for (AreaPanel* panel : panels) panel->ShowEditor();
  hand.ShowFields();
  ShowRubber();
}

void AreasDetailsFrm::ShowRubber() {
  std::optional<map::MeasuredLine> line;
  const auto last = areas::LastPoint(hand.Editor());
  if (last && pointer) {
    const areas::MapPoint next = PlaceOf(*pointer);
    line = map::Measure(program.State.View, {last->X, last->Y}, {next.X, next.Y});
  }
  if (!line && !rubberShown) return;
  rubberShown = line.has_value();
  Q_EMIT RubberMoved(line, hand.Editor().WorkArea.Color);
}

areas::MapPoint AreasDetailsFrm::PlaceOf(const Pointer& at) {
  return areas::NextPoint(hand.Editor(), program.State.Areas, at.Place.X, at.Place.Y,
                          {.Snap = at.Keys.testFlag(Qt::ControlModifier),
                           .Hold = at.Keys.testFlag(Qt::ShiftModifier),
                           .SnapDistance = SnapDistance(program.State.View)});
}

void AreasDetailsFrm::MapClicked(double x, double y, Qt::KeyboardModifiers keys) {
  if (ended) return;
  pointer = Pointer{{x, y}, keys};
  hand.Do("MapClick", [this] {
    const areas::MapPoint place = PlaceOf(*pointer);
    return areas::MapClick(hand.Editor(), place.X, place.Y, hand.Texts());
  });
}

bool AreasDetailsFrm::MapKey(const QKeyEvent& key) {
  const bool back = key.key() == Qt::Key_Backspace && key.modifiers() == Qt::NoModifier;
  const bool undo = key.key() == Qt::Key_Z && key.modifiers() == Qt::ControlModifier;
  if (ended || !hand.Editor().AreaEditMode || (!back && !undo)) return false;
  hand.Do("TakeBack", [this] { return areas::TakeBack(hand.Editor(), hand.Texts()); });
  return true;
}

void AreasDetailsFrm::PointerMoved(double x, double y, Qt::KeyboardModifiers keys) {
  if (ended) return;
  pointer = Pointer{{x, y}, keys};
  Guarded(program.Log, "PointerMoved", [this] { ShowRubber(); });
}

bool AreasDetailsFrm::TextsHeld() {
  if (!TakeText(*Text13, *refused)) return false;
  return hand.Editor().WorkArea.Type != AreaType::Text || TakeText(text->Text(), *refused).has_value();
}

void AreasDetailsFrm::accept() {
  Guarded(program.Log, "AreasDetailsFrm", [this] {
    if (ended || !TextsHeld()) return;
    End(areas::Accept(hand.Editor(), program.State.Areas, program.State.AreaSteps, hand.Texts()));
    QDialog::accept();
  });
}

void AreasDetailsFrm::reject() {
  Guarded(program.Log, "AreasDetailsFrm", [this] {
    if (!ended) End(areas::Cancel(hand.Editor(), program.State.Areas));
    QDialog::reject();
  });
}

void AreasDetailsFrm::End(Changed changed) {
  ended = true;
  ShowRubber();
  program.Shown.Refresh(changed);
}

}  // namespace kestrel::shell
