#pragma once

#include <QDialog>
#include <memory>
#include <optional>
#include <string>

#include "base/picture.h"
#include "core/program.h"
#include "theaters/catalogue.h"

namespace Ui {
class TheateDetailsFrm;
}

namespace kestrel::shell {

/// The details of one theater. A picture that is chosen is held here until OK stores it.
class TheateDetailsFrm final : public QDialog {
  Q_OBJECT
 public:
  /// Edits theater `index`; 0 makes a new one. `running` outlives the window.
  TheateDetailsFrm(core::Program& running, std::size_t index, QWidget* owner);
  ~TheateDetailsFrm() override;

 public Q_SLOTS:
  /// Stores what is entered; the window stays open when it cannot be taken.
  void accept() override;

 private:
  /// What stands in the fields, under `name`.
  theaters::TheaterDetails Entered(std::string name) const;
  void PopulateNew();
  void PopulateEdit();
  /// Shows the picture that the theater has, where there is one.
  void ShowStoredPicture(const std::string& name);
  void ShowPicture(const base::Picture& picture);
  void ChangePicture();
  void GetCoords();

  core::Program& program;
  std::size_t edited;
  std::unique_ptr<Ui::TheateDetailsFrm> form;
  /// A stored one as its fields showed it before the person touched them.
  std::optional<theaters::TheaterDetails> before;
  base::Picture held;  ///< empty while the stored picture stays
};

}  // namespace kestrel::shell
