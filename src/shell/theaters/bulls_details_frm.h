#pragma once

#include <QDialog>
#include <memory>
#include <optional>
#include <string>

#include "core/program.h"
#include "shell/parts/modal_count.h"

namespace Ui {
class BullsDetailsFrm;
}

namespace kestrel::shell {

/// The details of one bullseye of the current theater. It is no modal dialog: a click on the map fills in X and Y.
class BullsDetailsFrm final : public QDialog {
  Q_OBJECT
 public:
  /// Where a new bullseye begins.
  enum class Start { Zero, Pointer };

  /// Edits bullseye `index`; 0 makes a new one, which begins at `start`. `running` outlives the window.
  BullsDetailsFrm(core::Program& running, std::size_t index, Start start, QWidget* frame);
  ~BullsDetailsFrm() override;

  /// Fills in X and Y, map units.
  void FillPosition(double x, double y);

 public Q_SLOTS:
  /// Stores what is entered; the window stays open when it cannot be taken.
  void accept() override;

 private:
  /// What stands in the fields, under `name`.
  theaters::Bullseye Entered(std::string name) const;

  core::Program& program;
  std::size_t edited;
  std::optional<theaters::Bullseye> before;  ///< a stored one as its fields showed it before the person touched them
  std::unique_ptr<Ui::BullsDetailsFrm> form;
};

}  // namespace kestrel::shell
