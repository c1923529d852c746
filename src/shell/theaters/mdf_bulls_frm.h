#pragma once

#include <QDialog>
#include <memory>
#include <optional>

#include "core/program.h"
#include "shell/theaters/numbered_list.h"

namespace Ui {
class MdfBullsFrm;
}

namespace kestrel::shell {

/// The list of the current theater's bullseyes. A double click makes one current. Adding and editing close it, because
/// the map is to be clicked meanwhile; whoever shows it opens the details then and the list again after them.
class MdfBullsFrm final : public QDialog {
  Q_OBJECT
 public:
  /// `program` outlives the window.
  MdfBullsFrm(core::Program& program, QWidget* frame);
  ~MdfBullsFrm() override;

  /// Shows the bullseyes anew and selects the current one.
  void RefreshGrid();

  /// Once it is closed: the bullseye whose details are wanted, 0 for a new one; nothing when none are.
  std::optional<std::size_t> Wanted() const { return wanted; }

 private:
  void Ask(std::size_t index);
  void Delete();
  void MakeCurrent(std::size_t index);

  core::Program& station;
  std::unique_ptr<Ui::MdfBullsFrm> form;
  NumberedList* list;
  std::optional<std::size_t> wanted;
};

}  // namespace kestrel::shell
