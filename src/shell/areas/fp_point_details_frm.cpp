#include "shell/areas/fp_point_details_frm.h"

#include <array>
#include <utility>

#include "shell/areas/number_text.h"
#include "shell/parts/character_filter.h"
#include "shell/parts/remembered_place.h"
#include "ui_fp_point_details_frm.h"

namespace kestrel::shell {
namespace {

using areas::PointType;

std::array<std::pair<QRadioButton*, PointType>, 3> Choices(const Ui::FPPointDetailsFrm& form) {
  return {{{form.OptPointType_0, PointType::Nav},
           {form.OptPointType_1, PointType::IP},
           {form.OptPointType_2, PointType::Target}}};
}

}  // namespace

FPPointDetailsFrm::FPPointDetailsFrm(core::Program& running, std::size_t index, QWidget* owner)
    : QDialog(owner), program(running), form(std::make_unique<Ui::FPPointDetailsFrm>()) {
  form->setupUi(this);
  for (QLineEdit* field : {form->Text1, form->Text2, form->Text3}) new CharacterFilter(DigitsAndPoint(), *field);
  if (index != 0) {
    const areas::FlightPlanPoint& point = running.State.Editor.WorkArea.Points[index];
    form->Text1->setText(NumberText(point.X));
    form->Text2->setText(NumberText(point.Y));
    form->Text3->setText(NumberText(point.Z));
    before = point.Type;
  }
  for (const auto& [button, type] : Choices(*form)) button->setChecked(type == before);
  const core::EditorPositions& places = running.State.Editors;
  TakePlace(*this, places.AREAPOINTFPLEFT, places.AREAPOINTFPTOP);
}

FPPointDetailsFrm::~FPPointDetailsFrm() = default;

areas::FlightPlanPoint FPPointDetailsFrm::Entered() const {
  PointType chosen = before;
  for (const auto& [button, type] : Choices(*form)) {
    if (button->isChecked()) chosen = type;
  }
  return {NumberOf(*form->Text1), NumberOf(*form->Text2), NumberOf(*form->Text3), chosen};
}

void FPPointDetailsFrm::done(int result) {
  KeepPlace(*this, program.State.Editors.AREAPOINTFPLEFT, program.State.Editors.AREAPOINTFPTOP);
  QDialog::done(result);
}

}  // namespace kestrel::shell
