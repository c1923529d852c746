#pragma once

#include <QDialog>

#include "core/program.h"

namespace kestrel::shell {

/// Name, version and where to write to. A click anywhere on it closes it; one on the mail address opens that too.
class AboutFrm final : public QDialog {
  Q_OBJECT
 public:
  /// `running` outlives the dialog.
  AboutFrm(core::Program& running, QWidget* frame);

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void OpenMail();

  core::Program& program;
};

}  // namespace kestrel::shell
