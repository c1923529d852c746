#pragma once

#include <QDialog>
#include <memory>

#include "core/program.h"

namespace Ui {
class VldFrom2;
}

namespace kestrel::shell {

/// Connect to a typed address; it goes into the phonebook.
class VldFrom2 final : public QDialog {
  Q_OBJECT
 public:
  /// `running` outlives the dialog.
  VldFrom2(core::Program& running, QWidget* frame);
  ~VldFrom2() override;

 private:
  void Connect();
  /// Says that the address brings a port along.
  void ShowPort();

  core::Program& program;
  std::unique_ptr<Ui::VldFrom2> form;
  bool connecting = false;
};

}  // namespace kestrel::shell
