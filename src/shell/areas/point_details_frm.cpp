#include "shell/areas/point_details_frm.h"

#include "shell/areas/number_text.h"
#include "shell/parts/character_filter.h"
#include "shell/parts/remembered_place.h"
#include "ui_point_details_frm.h"

namespace kestrel::shell {

PointDetailsFrm::PointDetailsFrm(core::Program& running, std::size_t index, QWidget* owner)
    : QDialog(owner), program(running), form(std::make_unique<Ui::PointDetailsFrm>()) {
  form->setupUi(this);
  for (QLineEdit* field : {form->Text1, form->Text2, form->Text3, form->Text4}) {
    new CharacterFilter(DigitsAndPoint(), *field);
  }
  if (index != 0) {
    const areas::AreaLine& line = running.State.Editor.WorkArea.Lines[index];
    form->Text1->setText(NumberText(line.X1));
    form->Text2->setText(NumberText(line.Y1));
    form->Text4->setText(NumberText(line.X2));
    form->Text3->setText(NumberText(line.Y2));
  }
  const core::EditorPositions& places = running.State.Editors;
  TakePlace(*this, places.AREAPOINTLEFT, places.AREAPOINTTOP);
}

PointDetailsFrm::~PointDetailsFrm() = default;

areas::AreaLine PointDetailsFrm::Entered() const {
  return {NumberOf(*form->Text1), NumberOf(*form->Text2), NumberOf(*form->Text4), NumberOf(*form->Text3)};
}

void PointDetailsFrm::done(int result) {
  KeepPlace(*this, program.State.Editors.AREAPOINTLEFT, program.State.Editors.AREAPOINTTOP);
  QDialog::done(result);
}

}  // namespace kestrel::shell
