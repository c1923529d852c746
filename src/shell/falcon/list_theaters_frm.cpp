#include "shell/falcon/list_theaters_frm.h"

#include <QSignalBlocker>
#include <utility>

#include "core/falcon_installs.h"
#include "shell/falcon/install_choice.h"
#include "shell/parts/dialogs.h"
#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"
#include "ui_list_theaters_frm.h"

namespace kestrel::shell {
namespace {

falcon::FalconInstalls Find(core::Program& program) {
  const WaitCursor wait;
  return core::FindInstalls(program);
}

/// Why no theater can be chosen.
QString HintOf(bool isBMS, bool isInstalled) {
  if (isInstalled) return QStringLiteral("The list of theaters of this installation names none that is there.");
  return (isBMS ? QStringLiteral("No Falcon BMS has been found on this system.")
                : QStringLiteral("No Falcon older than BMS has been found on this system.")) +
         QStringLiteral(" One that has not registered itself can be named in KESTREL.ini, section INSTALLATIONS.");
}

}  // namespace

ListTheatersfrm::ListTheatersfrm(core::Program& running, TheaterUse use, Next next, QWidget* owner)
    : QDialog(owner),
      program(running),
      goOn(std::move(next)),
      found(Find(running)),
      form(std::make_unique<Ui::ListTheatersfrm>()) {
  form->setupUi(this);
  const bool mayChoose = use == TheaterUse::ImportTheater;
  const bool onlyFalcon = found.Bms.empty() && !found.Falcon.empty();
  QRadioButton& first = mayChoose && onlyFalcon ? *form->OptFalconType_0 : *form->OptFalconType_1;
  first.setChecked(true);
  for (QRadioButton* const option : {form->OptFalconType_0, form->OptFalconType_1}) option->setEnabled(mayChoose);
  connect(form->OptFalconType_1, &QRadioButton::toggled, this,
          [this] { Guarded(program.Log, "OptFalconType", [this] { PopulateInstalls(); }); });
  connect(form->cboInstall, &QComboBox::currentIndexChanged, this,
          [this] { Guarded(program.Log, "cboInstall", [this] { PopulateTheaterList(); }); });
  PopulateInstalls();
  form->Combo1->setFocus();
}

ListTheatersfrm::~ListTheatersfrm() = default;

bool ListTheatersfrm::IsBMS() const { return form->OptFalconType_1->isChecked(); }

const std::vector<falcon::FalconInstall>& ListTheatersfrm::Family() const { return IsBMS() ? found.Bms : found.Falcon; }

const falcon::FalconInstall* ListTheatersfrm::Install() const {
  const int at = form->cboInstall->currentIndex();
  return at < 0 ? nullptr : &Family()[static_cast<std::size_t>(at)];
}

void ListTheatersfrm::PopulateInstalls() {
  {
    const QSignalBlocker quiet(form->cboInstall);
    PopulateInstallChoice(*form->cboInstall, *form->lblInstall, Family());
  }
  PopulateTheaterList();
}

void ListTheatersfrm::PopulateTheaterList() {
  const falcon::FalconInstall* const install = Install();
  form->Combo1->clear();
  int selected = 0;
  for (std::size_t at = 1; install != nullptr && at <= install->Theaters.UpperBound(); ++at) {
    const std::string& name = install->Theaters[at].Definition.Name;
    form->Combo1->addItem(FromBytes(name));
    // The theater that was flown last.
    if (!name.empty() && name == install->CurTheater) selected = form->Combo1->count() - 1;
  }
  const bool any = form->Combo1->count() > 0;
  // A list that has a text for "none" selects nothing by itself.
  form->Combo1->setCurrentIndex(any ? selected : -1);
  form->lblHint->setText(any ? QString() : HintOf(IsBMS(), install != nullptr));
  form->lblHint->setVisible(!any);
  form->Combo1->setEnabled(any);
  form->cmdNext->setEnabled(any);
  adjustSize();
}

void ListTheatersfrm::accept() {
  const falcon::FalconInstall* const install = Install();
  const std::int32_t theater = form->Combo1->currentIndex() + 1;
  if (install == nullptr || theater == 0) return;
  Guarded(program.Log, "cmdNext", [&] {
    if (goOn(*install, theater)) QDialog::accept();
  });
}

}  // namespace kestrel::shell
