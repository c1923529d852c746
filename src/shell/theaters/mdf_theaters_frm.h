#pragma once

#include <QDialog>
#include <memory>

#include "core/program.h"
#include "shell/core/modal_count.h"
#include "shell/theaters/numbered_list.h"

namespace Ui {
class MdfTheatersFrm;
}

namespace kestrel::shell {

/// The list of all theaters, from which they are added, edited and deleted.
class MdfTheatersFrm final : public QDialog {
  Q_OBJECT
 public:
  /// `program` and `dialogs` outlive the window.
  MdfTheatersFrm(core::Program& program, ModalCount& dialogs, QWidget* frame);
  ~MdfTheatersFrm() override;

  /// Shows the catalogue anew and selects the current theater.
  void RefreshGrid();

 private:
  /// Opens the details of theater `index`, 0 for a new one.
  void ShowDetails(std::size_t index);
  void Delete();

  core::Program& station;
  ModalCount& modal;
  std::unique_ptr<Ui::MdfTheatersFrm> form;
  NumberedList* list;
};

}  // namespace kestrel::shell
