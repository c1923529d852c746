#pragma once

#include <QDialog>
#include <memory>

#include "core/program.h"

namespace Ui {
class PreferForm;
}

namespace kestrel::shell {

/// The phonebook: its entries, and one of them in the fields below.
class PreferForm final : public QDialog {
  Q_OBJECT
 public:
  /// `running` outlives the window.
  PreferForm(core::Program& running, QWidget* frame);
  ~PreferForm() override;

 private:
  /// Fills the list anew and shows the first entry, or empty fields when there is none.
  void Refill();
  /// Index of the picked entry, 0 for none.
  std::size_t Picked() const;
  void ShowPicked();
  void Add();
  void Remove();
  void Replace();

  core::Program& program;
  std::unique_ptr<Ui::PreferForm> form;
};

}  // namespace kestrel::shell
