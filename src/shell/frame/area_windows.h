#pragma once

#include <QObject>
#include <QPointer>
#include <cstddef>

#include "core/program.h"
#include "shell/parts/modal_count.h"

class QDialog;

namespace kestrel::shell {

class AreasDetailsFrm;
class AreasDetailsListFrm;
class MDIForm1;

/// Leads from the tree of the areas to the list of a group and to the editor. One of the three works at a time: while
/// the list or the editor is open the tree is withheld and the theater stays, so that what they show by its index stays
/// too; while the editor is open the list is hidden and no bullseye can be made.
class AreaWindows final : public QObject {
  Q_OBJECT
 public:
  /// `shown` and `dialogs` outlive the frame, which owns this.
  AreaWindows(core::Program& shown, ModalCount& dialogs, MDIForm1& owner);

  /// The list of a group's areas, at the place where it last stood.
  void OpenList(std::size_t group);
  /// mnuAddnewIconArea: the editor with an icon at the pointer, in a group of its own.
  void AddNewIconArea();

 private:
  void OpenEditor(std::size_t area);
  void ShowEditor();
  void ListExited();
  void EditorClosed();
  /// Holds or gives back what would change the areas or the theater under an open window.
  void Hold();

  core::Program& program;
  ModalCount& modal;
  MDIForm1& frame;
  AreasDetailsListFrm* list = nullptr;  ///< made when first asked for; the frame owns it
  bool listOpen = false;                ///< AreasListOpen: also while the editor hides it
  QPointer<AreasDetailsFrm> editor;     ///< while it is open
};

}  // namespace kestrel::shell
