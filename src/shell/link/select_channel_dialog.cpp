#include "shell/link/select_channel_dialog.h"

#include "ui_select_channel_dialog.h"

namespace kestrel::shell {

frmSelectChannel::frmSelectChannel(std::uint8_t present, QWidget* owner)
    : QDialog(owner), form(std::make_unique<Ui::frmSelectChannel>()) {
  form->setupUi(this);
  QRadioButton* option = present == 1 ? form->OptSide_0 : present == 2 ? form->OptSide_1 : form->OptSide_2;
  option->setChecked(true);
  option->setFocus();
}

frmSelectChannel::~frmSelectChannel() = default;

std::uint8_t frmSelectChannel::Channel() const {
  if (form->OptSide_0->isChecked()) return 1;
  return form->OptSide_1->isChecked() ? 2 : 0;
}

void frmSelectChannel::accept() {
  // An access key shows the option pressed for a moment before it is picked; a quick Enter behind it means that option.
  for (QRadioButton* option : {form->OptSide_0, form->OptSide_1, form->OptSide_2}) {
    if (option->isDown()) option->setChecked(true);
  }
  QDialog::accept();
}

}  // namespace kestrel::shell
