#include "shell/areas/region_panel.h"

#include "areas/area_drawing.h"
#include "shell/areas/point_details_frm.h"
#include "shell/parts/dialogs.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

NumberedList* ListOf(EditorHand& hand, QWidget* owner) {
  auto* list = new NumberedList(
      {QStringLiteral("X1"), QStringLiteral("Y1"), QStringLiteral("X2"), QStringLiteral("Y2")},
      [&hand] { return hand.Editor().WorkArea.Lines.UpperBound(); },
      [&hand](std::size_t row, int column) {
        return FromBytes(areas::LineRow(hand.Editor(), row)[static_cast<std::size_t>(column)]);
      },
      owner);
  list->SetWords(0);
  list->SetMarks(
      [&hand](std::size_t row) {
        const std::vector<bool>& checked = hand.Editor().Checked;
        return row <= checked.size() && checked[row - 1];
      },
      [&hand](std::size_t row, bool on) {
        hand.Do("ListView1", [&] { return areas::CheckLine(hand.Editor(), row, on); });
      });
  list->ShowMarks(false);
  return list;
}

}  // namespace

RegionPanel::RegionPanel(EditorHand& common, QWidget* owner)
    : AreaPanel(areas::AreaType::Region, "lblClickOn_0", common, owner) {
  QHBoxLayout* row = NewRow();
  ListView1 = new PointsView(
      "ListView1", ListOf(hand, this),
      [this](std::size_t chosen) { hand.Do("ListView1", [&] { return areas::SelectLine(hand.Editor(), chosen); }); },
      this);
  row->addWidget(ListView1);
  connect(ListView1, &QTreeView::doubleClicked, this, [this] { EditSelected("ListView1"); });
  row = NewRow();
  Command3 = NewButton("Command3", "Add Line", "Types in a new line", row, [this] { Details("Command3", 0); });
  Command4 = NewButton("Command4", "Edit Line", "Changes the selected line", row, [this] { EditSelected("Command4"); });
  Command5 = NewButton("Command5", "Del Line", "Deletes the selected line, or with Bulk Delete the checked ones", row,
                       [this] { Rebuild("Command5", areas::DeleteLine); });
  Command1 =
      NewButton("Command1", "Reset All", "Deletes all lines", row, [this] { Rebuild("Command1", areas::ResetLines); });
  row = NewRow();
  chkBulkDelete =
      NewCheck("chkBulkDelete", "Bulk Delete", "Lines are checked to be deleted together", row,
               [this](bool on) { hand.Do("chkBulkDelete", [&] { return areas::SetBulkDelete(hand.Editor(), on); }); });
  chkSelectAll = NewCheck("chkSelectAll", "Select All", "Checks all lines, or none", row, [this](bool on) {
    Rebuild("chkSelectAll",
            [on](areas::AreaEditor& editor, areas::TextMeasure&) { return areas::CheckAllLines(editor, on); });
  });
  QSizePolicy policy = chkSelectAll->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  chkSelectAll->setSizePolicy(policy);
  row->addStretch(1);
  NewColour("cmdRegionColor", row);
  row = NewRow();
  chkSingleClick = NewCheck("chkSingleClick", "Single Click Map Input",
                            "Each click after the first adds a line from the last point", row, [this](bool on) {
                              hand.Do("chkSingleClick", [&] {
                                areas::SetSingleClick(hand.Editor(), on);
                                return base::Changed::Nothing;
                              });
                            });
  row->addStretch(1);
}

void RegionPanel::ShowEditor() {
  AreaPanel::ShowEditor();
  const areas::AreaEditor& editor = hand.Editor();
  const bool bulk = editor.BulkDelete;
  if (chkBulkDelete->isChecked() != bulk || chkSelectAll->isHidden() == bulk) {
    chkBulkDelete->setChecked(bulk);
    chkSelectAll->setChecked(false);
    chkSelectAll->setVisible(bulk);
    Command5->setText(Words(bulk ? "Del Checked" : "Del Line"));
  }
  ListView1->List().ShowMarks(bulk);
  ListView1->Follow(editor.Selected);
  chkSingleClick->setChecked(editor.SingleClick);
  Command3->setEnabled(!bulk);
  Command1->setEnabled(!bulk);
  Command4->setEnabled(!bulk && editor.Selected != 0);
  Command5->setEnabled(bulk || editor.Selected != 0);
}

template <class Act>
void RegionPanel::Rebuild(const char* handler, Act act) {
  hand.Do(handler, [&] {
    const base::Changed changed = act(hand.Editor(), hand.Texts());
    ListView1->Refresh(hand.Editor().Selected);
    return changed;
  });
}

void RegionPanel::EditSelected(const char* handler) {
  if (!hand.Editor().BulkDelete && hand.Editor().Selected != 0) Details(handler, hand.Editor().Selected);
}

void RegionPanel::Details(const char* handler, std::size_t index) {
  hand.Do(handler, [&] {
    PointDetailsFrm details(hand.Program(), index, &hand.Window());
    if (RunDialog(details, hand.Modal()) != QDialog::Accepted) return base::Changed::Nothing;
    const base::Changed changed = areas::PointDetails(hand.Editor(), index, details.Entered(), hand.Texts());
    if (index != 0) ListView1->Refresh(hand.Editor().Selected);
    return changed;
  });
}

}  // namespace kestrel::shell
