#pragma once

#include <QDialog>
#include <memory>

#include "areas/area.h"
#include "core/program.h"

namespace Ui {
class FPPointDetailsFrm;
}

namespace kestrel::shell {

/// One point of the flight plan that the editor holds, typed in.
class FPPointDetailsFrm final : public QDialog {
  Q_OBJECT
 public:
  /// Shows point `index`, from 1; 0 is for a new one. `running` outlives the window.
  FPPointDetailsFrm(core::Program& running, std::size_t index, QWidget* owner);
  ~FPPointDetailsFrm() override;

  /// What stands in the fields; one that is empty is 0. A type that none of the choices is stays.
  areas::FlightPlanPoint Entered() const;

  void done(int result) override;

 private:
  core::Program& program;
  areas::PointType before = areas::PointType::Nav;
  std::unique_ptr<Ui::FPPointDetailsFrm> form;
};

}  // namespace kestrel::shell
