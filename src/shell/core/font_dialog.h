#pragma once

#include <QDialog>
#include <QFont>

#include "base/font.h"

class QFontDialog;

namespace kestrel::shell {

class ColourButton;

/// `before` with what a person has changed in a font dialog. `shown` is the font that the dialog made of `before`,
/// which may be another where the system has no such family or style; `chosen` is the one that it shows at the end.
/// What is the same in both has not been touched and stays as it was.
base::FontRecord WithChanges(const base::FontRecord& before, const QFont& shown, const QFont& chosen);

/// The toolkit's font dialog with, where asked, the colour of the text beside it. Named "PickFont".
class FontDialog final : public QDialog {
  Q_OBJECT
 public:
  FontDialog(const base::FontRecord& present, bool withColour, QWidget* owner);

  /// What has been chosen; what has not been touched stays as it was, also where the system has no such family.
  base::FontRecord Chosen() const;

 private:
  base::FontRecord before;
  QFontDialog* fonts;
  ColourButton* cmdColor;  ///< null when no colour is asked for
  QFont shownAtFirst;      ///< what the dialog made of it
};

}  // namespace kestrel::shell
