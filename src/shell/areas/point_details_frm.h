#pragma once

#include <QDialog>
#include <memory>

#include "areas/area.h"
#include "core/program.h"

namespace Ui {
class PointDetailsFrm;
}

namespace kestrel::shell {

/// One segment of the region that the editor holds, typed in.
class PointDetailsFrm final : public QDialog {
  Q_OBJECT
 public:
  /// Shows segment `index`, from 1; 0 is for a new one. `running` outlives the window.
  PointDetailsFrm(core::Program& running, std::size_t index, QWidget* owner);
  ~PointDetailsFrm() override;

  /// What stands in the fields; one that is empty is 0.
  areas::AreaLine Entered() const;

  void done(int result) override;

 private:
  core::Program& program;
  std::unique_ptr<Ui::PointDetailsFrm> form;
};

}  // namespace kestrel::shell
