#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "core/program.h"

namespace Ui {
class EditFreqFrm;
}

namespace kestrel::shell {

/// A frequency typed in, of a channel or of an entry with its description. Nothing is checked: it says beside the value
/// what that is and takes it as it was typed.
class EditFreqFrm final : public QDialog {
  Q_OBJECT
 public:
  /// Kinds for Populate.
  static constexpr int Channel = 1, Entry = 2;

  EditFreqFrm(core::Program& running, QWidget* owner);
  ~EditFreqFrm() override;

  /// Before it is shown. A channel has no description; a new frequency begins with texts of its own.
  void Populate(int kind, bool isNew, const QString& value, const QString& description);
  /// What was typed, after OK; bytes of the code page. Of a channel the description is empty.
  const std::string& Value() const { return value; }
  const std::string& Description() const { return description; }

  void accept() override;

 private:
  void ShowWhatItIs();

  core::Program& program;
  std::unique_ptr<Ui::EditFreqFrm> form;
  bool described = true;
  std::string value, description;
};

}  // namespace kestrel::shell
