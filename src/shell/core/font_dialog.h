#pragma once

#include <QDialog>

#include "base/font.h"

class QFontDialog;

namespace kestrel::shell {

class ColourButton;

/// The toolkit's font dialog with, where asked, the colour of the text beside it. Named "PickFont".
class FontDialog final : public QDialog {
  Q_OBJECT
 public:
  FontDialog(const base::FontRecord& present, bool withColour, QWidget* owner);

  /// What has been chosen. Family and size stay as they were when they have not been touched, also where the system has
  /// no such family.
  base::FontRecord Chosen() const;

 private:
  base::FontRecord before;
  QFontDialog* fonts;
  ColourButton* cmdColor;  ///< null when no colour is asked for
  QString familyBefore;    ///< what the dialog made of the name
  int sizeBefore = 0;
};

}  // namespace kestrel::shell
