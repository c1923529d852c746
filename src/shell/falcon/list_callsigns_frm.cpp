#include "shell/falcon/list_callsigns_frm.h"

#include "base/files.h"
#include "base/text.h"
#include "falcon/config_file.h"
#include "shell/falcon/install_choice.h"
#include "shell/parts/unicode_text.h"
#include "ui_list_callsigns_frm.h"

namespace kestrel::shell {

ListCallsignsFrm::ListCallsignsFrm(core::ChannelUse use, const std::vector<falcon::FalconInstall>& installs,
                                   QWidget* owner)
    : QDialog(owner), choice(installs), form(std::make_unique<Ui::ListCallsignsFrm>()) {
  form->setupUi(this);
  form->cmdOK->setToolTip(use == core::ChannelUse::Load ? QStringLiteral("Loads the channels of this pilot")
                                                        : QStringLiteral("Replaces the channels of this pilot"));
  PopulateInstallChoice(*form->cboInstall, *form->lblInstall, installs);
  connect(form->cboInstall, &QComboBox::currentIndexChanged, this, [this] { PopulateSelected(); });
  PopulateSelected();
  form->Combo1->setFocus();
}

ListCallsignsFrm::~ListCallsignsFrm() = default;

const falcon::FalconInstall& ListCallsignsFrm::Install() const {
  return choice[static_cast<std::size_t>(form->cboInstall->currentIndex())];
}

std::optional<std::filesystem::path> ListCallsignsFrm::PilotFile() const {
  const int at = form->Combo1->currentIndex();
  return at < 0 ? std::nullopt : std::optional(pilots[static_cast<std::size_t>(at)].File);
}

void ListCallsignsFrm::PopulateSelected() {
  Populate(base::FindFile(Install().Folder, falcon::ConfigFolderName), Install().PilotCallsign);
}

void ListCallsignsFrm::Populate(const std::filesystem::path& configDir, const std::string& last) {
  pilots = falcon::ListCallsigns(configDir);
  form->Combo1->clear();
  int selected = -1;
  for (const falcon::Callsign& pilot : pilots) {
    form->Combo1->addItem(FromBytes(pilot.Name));
    if (base::SameNoCase(pilot.Name, last)) selected = form->Combo1->count() - 1;
  }
  form->Combo1->setCurrentIndex(selected);
  form->Combo1->setEnabled(!pilots.empty());
  form->lblHint->setText(pilots.empty() ? QStringLiteral("No pilot has a log book and channels in ") +
                                              FromBytes(base::PathForMessage(configDir)) + u'.'
                                        : QString());
  form->lblHint->setVisible(pilots.empty());
  adjustSize();
}

}  // namespace kestrel::shell
