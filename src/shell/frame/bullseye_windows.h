#pragma once

#include <QObject>
#include <optional>

#include "core/program.h"
#include "shell/parts/modal_count.h"
#include "shell/theaters/bulls_details_frm.h"

class QMenu;

namespace kestrel::shell {

class MDIForm1;

/// Shows the windows of the bullseyes in turn. The details stand beside the map, which can be clicked; the frame's
/// menus wait until they are closed, and the list gives way to them.
class BullseyeWindows final : public QObject {
  Q_OBJECT
 public:
  /// `running` and `dialogs` outlive the frame, which owns this.
  BullseyeWindows(core::Program& running, ModalCount& dialogs, MDIForm1& owner);

  /// mnuModifyBullseyes: the list, with the details that are asked for in it.
  void ShowList();
  /// CreateBullsAndMakeCurrent: the details of a new bullseye at the pointer; the map stays in front after them.
  void CreateAtPointer();
  /// mnuGetBullseyFromTac.
  void GetFromCampaignFile();
  /// Back to the bullseye before.
  void Undo();
  /// While a session is on, `menu` of the bullseyes and the map's say what another one does, and offer the undo at
  /// their ends: mnuUndoBullseye and mnuUndoNewBulls.
  void SayInMenus(QMenu& menu);

 private:
  void ShowDetails(std::size_t index, BullsDetailsFrm::Start start);
  void DetailsClosed(bool fromMap);
  void HoldMenus(bool held);
  void AddUndo(QMenu& menu, const char* name, const QString& caption);

  core::Program& program;
  ModalCount& modal;
  MDIForm1& frame;
  std::optional<ModalCount::Scope> detailsOpen;
};

}  // namespace kestrel::shell
