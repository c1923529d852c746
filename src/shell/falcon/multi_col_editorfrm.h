#pragma once

#include <QDialog>
#include <memory>

#include "core/program.h"
#include "falcon/colour_criteria.h"

namespace Ui {
class MultiColEditorfrm;
}

namespace kestrel::shell {

class ColourButton;

/// One band of heights and its colour.
class MultiColEditorfrm final : public QDialog {
  Q_OBJECT
 public:
  /// Shows `criterion`. `running` outlives the window.
  MultiColEditorfrm(core::Program& running, const falcon::ColourCriterion& criterion, QWidget* owner);
  ~MultiColEditorfrm() override;

  /// What stands in the window; a height beyond 16 bits is limited.
  falcon::ColourCriterion Entered() const;

 private:
  void ShowColour(base::Colour colour);

  core::Program& program;
  std::unique_ptr<Ui::MultiColEditorfrm> form;
  ColourButton* cmdColor;
};

}  // namespace kestrel::shell
