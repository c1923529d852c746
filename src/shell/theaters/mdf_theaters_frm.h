#pragma once

#include "core/program.h"
#include "shell/parts/modal_count.h"
#include "shell/theaters/list_frm.h"

namespace kestrel::shell {

/// The list of all theaters, from which they are added, edited and deleted.
class MdfTheatersFrm final : public ListFrm {
  Q_OBJECT
 public:
  /// `running` and `dialogs` outlive the window.
  MdfTheatersFrm(core::Program& running, ModalCount& dialogs, QWidget* frame);

  /// Shows the catalogue anew and selects the current theater.
  void RefreshGrid();

 private:
  void Details(std::size_t index) override;
  void Delete(std::size_t index) override;

  core::Program& program;
  ModalCount& modal;
};

}  // namespace kestrel::shell
