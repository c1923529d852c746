#pragma once

#include <QDialog>
#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "areas/area_tree.h"
#include "core/program.h"
#include "shell/parts/keyed_tree.h"
#include "shell/parts/modal_count.h"
#include "shell/parts/undo_keys.h"

namespace Ui {
class AreasDetailsListFrm;
}

namespace kestrel::shell {

/// The areas of one group in drawing order, with what adds, deletes, orders, copies and colours them. It is no modal
/// dialog, and leads nowhere itself: whoever shows it opens the editor that it asks for.
class AreasDetailsListFrm final : public QDialog {
  Q_OBJECT
 public:
  /// `program` and `dialogs` outlive the window, which is not shown yet.
  AreasDetailsListFrm(core::Program& program, ModalCount& dialogs, QWidget* frame);
  ~AreasDetailsListFrm() override;

  /// Fills the window with another group, its first area selected; does not show it.
  void ShowGroup(std::size_t group);
  /// Fills title, name and list anew; the selected row stays, or the last one is selected where it is gone.
  void RefreshList();
  std::size_t GroupIndex() const { return groupIndex; }

 public Q_SLOTS:
  void reject() override;

 Q_SIGNALS:
  /// The editor of this area is wanted, of a new one for 0.
  void AreaAsked(std::size_t area);
  /// The window has been closed by the person, or because the groups are others now.
  void Exited();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void LoadList();
  void Connect();
  /// Runs `act` within the boundary of events.
  std::function<void()> Handler(const char* control, void (AreasDetailsListFrm::*act)());
  std::vector<KeyedTree::Row> Rows() const;
  /// The index of the selected area, 0 for none.
  std::size_t Selected() const;
  void Select(std::size_t area);
  bool HasGroup() const;
  const areas::AreaGroup& Group() const;
  bool AnyChecked() const;
  void ShowTitle();
  void ShowEnabled();
  /// After a change: the list anew with that row, and the map.
  void ShowChange(std::size_t area);

  void TypeName();
  void EditArea();
  void DeleteArea();
  template <areas::Way way>
  void Move();
  void CheckAll(bool checked);
  void CopySelected();
  void ChangeSelected();
  void Undo(UndoStep<areas::AreaHistory> step);

  core::Program& program;
  ModalCount& modal;
  std::unique_ptr<Ui::AreasDetailsListFrm> form;
  KeyedTree* list;
  std::size_t groupIndex = 0;
};

}  // namespace kestrel::shell
