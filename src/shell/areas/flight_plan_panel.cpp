#include "shell/areas/flight_plan_panel.h"

#include "areas/area_drawing.h"
#include "shell/areas/fp_point_details_frm.h"
#include "shell/parts/dialogs.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

constexpr int TypeColumn = 4;

NumberedList* ListOf(EditorHand& hand, QWidget* owner) {
  auto* list = new NumberedList(
      {QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("ELEVATION"), QStringLiteral("POINT TYPE")},
      [&hand] { return hand.Editor().WorkArea.Points.UpperBound(); },
      [&hand](std::size_t row, int column) {
        return FromBytes(areas::PointRow(hand.Editor(), row)[static_cast<std::size_t>(column)]);
      },
      owner);
  list->SetWords(TypeColumn);
  return list;
}

}  // namespace

FlightPlanPanel::FlightPlanPanel(EditorHand& common, QWidget* owner)
    : AreaPanel(areas::AreaType::FlightPlan, "lblClickOnFP", common, owner) {
  QHBoxLayout* row = NewRow();
  ListView2 = new PointsView(
      "ListView2", ListOf(hand, this),
      [this](std::size_t chosen) { hand.Do("ListView2", [&] { return areas::SelectPoint(hand.Editor(), chosen); }); },
      this);
  row->addWidget(ListView2);
  connect(ListView2, &QTreeView::doubleClicked, this, [this] { EditSelected("ListView2"); });
  row = NewRow();
  NewButton("cmdAddPointFP", "Add Point", "Types in a new point", row, [this] { Details("cmdAddPointFP", 0); });
  cmdEditPointFP = NewButton("cmdEditPointFP", "Edit Point", "Changes place, altitude and type of the selected point",
                             row, [this] { EditSelected("cmdEditPointFP"); });
  cmdDelPointFP = NewButton("cmdDelPointFP", "Del Point", "Deletes the selected point", row,
                            [this] { Rebuild("cmdDelPointFP", areas::DeletePoint); });
  NewButton("cmdResetAllFP", "Reset All", "Deletes all points", row,
            [this] { Rebuild("cmdResetAllFP", areas::ResetPoints); });
  row = NewRow();
  chkShowWaypointElevation = NewCheck("chkShowWaypointElevation", "Show Waypoint Alt",
                                      "The altitude beside each point on the map", row, [this](bool on) {
                                        hand.Do("chkShowWaypointElevation",
                                                [&] { return areas::ShowElevation(hand.Editor(), on, hand.Texts()); });
                                      });
  NewButton("cmdFontFPAlt", "Font", "Font of the altitudes", row,
            [this] { ChooseAreaFont(hand, "cmdFontFPAlt", hand.Editor().WorkArea.AltFont, areas::SetAltFont); });
  row->addStretch(1);
  NewColour("cmdFPColor", row);
}

void FlightPlanPanel::ShowEditor() {
  AreaPanel::ShowEditor();
  const areas::AreaEditor& editor = hand.Editor();
  ListView2->Follow(editor.SelectedPoint);
  chkShowWaypointElevation->setChecked(editor.WorkArea.ShowWaypointElevation == areas::On);
  cmdEditPointFP->setEnabled(editor.SelectedPoint != 0);
  cmdDelPointFP->setEnabled(editor.SelectedPoint != 0);
}

template <class Act>
void FlightPlanPanel::Rebuild(const char* handler, Act act) {
  hand.Do(handler, [&] {
    const base::Changed changed = act(hand.Editor(), hand.Texts());
    ListView2->Refresh(hand.Editor().SelectedPoint);
    return changed;
  });
}

void FlightPlanPanel::EditSelected(const char* handler) {
  if (hand.Editor().SelectedPoint != 0) Details(handler, hand.Editor().SelectedPoint);
}

void FlightPlanPanel::Details(const char* handler, std::size_t index) {
  hand.Do(handler, [&] {
    FPPointDetailsFrm details(hand.Program(), index, &hand.Window());
    if (RunDialog(details, hand.Modal()) != QDialog::Accepted) return base::Changed::Nothing;
    const base::Changed changed = areas::FPPointDetails(hand.Editor(), index, details.Entered(), hand.Texts());
    if (index != 0) ListView2->Refresh(hand.Editor().SelectedPoint);
    return changed;
  });
}

}  // namespace kestrel::shell
