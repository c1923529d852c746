#include "shell/falcon/multi_col_editorfrm.h"

#include "base/numbers.h"
#include "shell/parts/character_filter.h"
#include "shell/parts/colour_button.h"
#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"
#include "ui_multi_col_editorfrm.h"

namespace kestrel::shell {

MultiColEditorfrm::MultiColEditorfrm(core::Program& running, const falcon::ColourCriterion& criterion, QWidget* owner)
    : QDialog(owner),
      program(running),
      form(std::make_unique<Ui::MultiColEditorfrm>()),
      cmdColor(new ColourButton({}, QStringLiteral("Color"), this)) {
  form->setupUi(this);
  cmdColor->setObjectName(QStringLiteral("cmdColor"));
  form->colour->insertWidget(0, cmdColor);
  setTabOrder(form->txtElevation, cmdColor);
  setTabOrder(cmdColor, form->cmdOK);
  new CharacterFilter(SignedNumber(), *form->txtElevation);
  form->txtElevation->setText(FromBytes(base::FormatInvariant(criterion.Height, "0")));
  form->txtElevation->selectAll();
  form->txtElevation->setFocus();
  ShowColour(criterion.Colour);
  connect(cmdColor, &QPushButton::clicked, this, [this] {
    Guarded(program.Log, "cmdColor", [this] {
      if (const auto colour = program.Desk.PickColour(cmdColor->Colour())) ShowColour(*colour);
    });
  });
}

MultiColEditorfrm::~MultiColEditorfrm() = default;

falcon::ColourCriterion MultiColEditorfrm::Entered() const {
  return {cmdColor->Colour(), falcon::TypedHeight(ToBytes(form->txtElevation->text()))};
}

void MultiColEditorfrm::ShowColour(base::Colour colour) {
  cmdColor->ShowColour(colour);
  form->lblColor->setText(ToQColor(colour).name());
}

}  // namespace kestrel::shell
