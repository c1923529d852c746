#pragma once

#include <optional>

#include "core/program.h"
#include "shell/theaters/list_frm.h"

namespace kestrel::shell {

/// The list of the current theater's bullseyes. A double click makes one current. Adding and editing close it, because
/// the map is to be clicked meanwhile; whoever shows it opens the details then and the list again after them.
class MdfBullsFrm final : public ListFrm {
  Q_OBJECT
 public:
  /// `running` outlives the window.
  MdfBullsFrm(core::Program& running, QWidget* frame);

  /// Shows the bullseyes anew and selects the current one.
  void RefreshGrid();

  /// Once it is closed: the bullseye whose details are wanted, 0 for a new one; nothing when none are.
  std::optional<std::size_t> Wanted() const { return wanted; }

 private:
  void Details(std::size_t index) override;
  void Delete(std::size_t index) override;
  void Choose(std::size_t index) override;

  core::Program& program;
  std::optional<std::size_t> wanted;
};

}  // namespace kestrel::shell
