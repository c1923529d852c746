#pragma once

#include <QDialog>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "core/program.h"
#include "falcon/installations.h"

namespace Ui {
class ListTheatersfrm;
}

namespace kestrel::shell {

/// What a theater of the simulator is chosen for.
enum class TheaterUse { ImportTheater, ImportObjectives, LoadAirports };

/// Chooses a theater of an installed simulator. Objectives and airfields are those of BMS alone; the map of a theater
/// is taken from an older Falcon too. The choice of the installation is shown where a family has more than one.
class ListTheatersfrm final : public QDialog {
  Q_OBJECT
 public:
  /// Does what the theater was chosen for while the window stays open behind; true closes it. `theater` is the number
  /// of one of the installation's.
  using Next = std::function<bool(const falcon::FalconInstall& install, std::int32_t theater)>;

  /// Looks for the installations. `running` outlives the window.
  ListTheatersfrm(core::Program& running, TheaterUse use, Next next, QWidget* owner);
  ~ListTheatersfrm() override;

 public Q_SLOTS:
  /// cmdNext.
  void accept() override;

 private:
  bool IsBMS() const;
  const std::vector<falcon::FalconInstall>& Family() const;
  /// Null while the family has none.
  const falcon::FalconInstall* Install() const;
  /// Fills the list of the installations of the family that is chosen, then that of the theaters.
  void PopulateInstalls();
  void PopulateTheaterList();

  core::Program& program;
  Next goOn;
  falcon::FalconInstalls found;
  std::unique_ptr<Ui::ListTheatersfrm> form;
};

}  // namespace kestrel::shell
