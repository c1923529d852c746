#include "shell/frame/bullseye_windows.h"

#include <QMenu>
#include <QMenuBar>

#include "core/bullseye_steps.h"
#include "core/catalogue_edits.h"
#include "core/tell.h"
#include "shell/frame/frame.h"
#include "shell/parts/dialogs.h"
#include "shell/parts/guard.h"
#include "shell/parts/plain_text.h"
#include "shell/parts/unicode_text.h"
#include "shell/theaters/mdf_bulls_frm.h"

namespace kestrel::shell {

BullseyeWindows::BullseyeWindows(core::Program& running, ModalCount& dialogs, MDIForm1& owner)
    : QObject(&owner), program(running), modal(dialogs), frame(owner) {}

void BullseyeWindows::ShowList() {
  MdfBullsFrm list(program, &frame);
  RunDialog(list, modal);
  if (list.Wanted()) ShowDetails(*list.Wanted(), BullsDetailsFrm::Start::Zero);
}

void BullseyeWindows::CreateAtPointer() { ShowDetails(0, BullsDetailsFrm::Start::Pointer); }

void BullseyeWindows::GetFromCampaignFile() {
  const auto file = core::ChooseFile(program, "Open Campaign File", "Falcon tac/cam/trn files|*.tac;*.cam;*.trn");
  if (file) core::AddCampaignBullseye(program, *file);
}

void BullseyeWindows::Undo() { program.Shown.Refresh(core::UndoBullseye(program)); }

void BullseyeWindows::AddUndo(QMenu& menu, const char* name, const QString& caption) {
  QAction* undo = menu.addAction(caption);
  undo->setObjectName(QString::fromLatin1(name));
  connect(undo, &QAction::triggered, this, [this, name] { Guarded(program.Log, name, [this] { Undo(); }); });
}

void BullseyeWindows::SayInMenus(QMenu& menu) {
  QMenu& mapMenu = frame.PopUp("PopUp2");
  const QString note = program.State.Session.Connected ? FromBytes(core::BullseyeNote) : QString();
  const QList<QAction*> said = menu.actions() << frame.findChild<QAction*>(QStringLiteral("mnuSetNewBulls"));
  for (QAction* action : said) action->setToolTip(note);
  for (QMenu* each : {&menu, &mapMenu}) each->setToolTipsVisible(!note.isEmpty());
  if (auto* former = mapMenu.findChild<QAction*>(QStringLiteral("mnuUndoNewBulls"))) {
    // Not deleted at once: it may be what is running this.
    mapMenu.removeAction(former);
    former->setObjectName(QString());
    former->deleteLater();
  }
  const std::optional<std::string> before = core::BullseyeBefore(program.State);
  if (!before) return;
  const QString caption = AsCaption(QStringLiteral("Undo: Back to ") + FromBytes(*before));
  AddUndo(mapMenu, "mnuUndoNewBulls", caption);
  menu.addSeparator();
  AddUndo(menu, "mnuUndoBullseye", caption);
}

void BullseyeWindows::ShowDetails(std::size_t index, BullsDetailsFrm::Start start) {
  const bool fromMap = start == BullsDetailsFrm::Start::Pointer;
  auto* details = new BullsDetailsFrm(program, index, start, &frame);
  details->setAttribute(Qt::WA_DeleteOnClose);
  connect(&frame.Map().Picture(), &MapPicture::Pressed, details, &BullsDetailsFrm::FillPosition);
  connect(details, &QDialog::finished, this,
          [this, fromMap] { Guarded(program.Log, "BullsDetailsFrm", [this, fromMap] { DetailsClosed(fromMap); }); });
  detailsOpen.emplace(modal);
  HoldMenus(true);
  details->move(frame.pos());
  details->show();
}

void BullseyeWindows::DetailsClosed(bool fromMap) {
  // Nothing is to come back while the frame goes.
  if (frame.Closing()) return;
  detailsOpen.reset();
  HoldMenus(false);
  program.Shown.Refresh(base::Changed::NameMenus);
  if (fromMap) {
    frame.activateWindow();
  } else {
    ShowList();
  }
}

void BullseyeWindows::HoldMenus(bool held) {
  frame.menuBar()->setEnabled(!held);
  for (const char* entry : {"mnuSetNewBulls", "mnuAddnewIconArea"}) frame.Hold(entry, *this, held);
}

}  // namespace kestrel::shell
