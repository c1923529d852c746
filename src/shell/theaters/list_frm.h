#pragma once

#include <QDialog>
#include <memory>

#include "base/debug_log.h"
#include "shell/parts/numbered_list.h"

namespace Ui {
class ListFrm;
}

namespace kestrel::shell {

/// A numbered list of the station with the buttons "Add...", "Edit...", "Delete" and "Close" (Command1_0 to
/// Command1_3), of which those that need a row are enabled with one.
class ListFrm : public QDialog {
  Q_OBJECT
 public:
  ~ListFrm() override;

 protected:
  struct Words {
    const char* Name;     ///< objectName of the window
    const char* Title;    ///< the window's caption
    const char* Adds;     ///< what "Add..." does
    const char* Edits;    ///< what "Edit..." does
    const char* Deletes;  ///< what "Delete" does
  };

  /// `rows` becomes the window's own; `log` outlives it.
  ListFrm(const Words& words, std::unique_ptr<NumberedList> rows, base::DebugLog& log, QWidget* frame);

  /// The rows have changed; `current` (1 or more; 0 is none) becomes the selected one.
  void ShowRows(std::size_t current);

 private:
  /// "Edit...", or "Add..." with 0.
  virtual void Details(std::size_t index) = 0;
  /// "Delete".
  virtual void Delete(std::size_t index) = 0;
  /// A double click.
  virtual void Choose(std::size_t) {}

  std::unique_ptr<Ui::ListFrm> form;
  NumberedList* list;
};

}  // namespace kestrel::shell
