#pragma once

#include <QDialog>
#include <cstdint>
#include <memory>

namespace Ui {
class frmSelectChannel;
}

namespace kestrel::shell {

/// Asks which side the controller watches. Closing it is no way out of the question: the present choice stands then.
class frmSelectChannel final : public QDialog {
  Q_OBJECT
 public:
  /// `present`: the Channel that is preselected, 0 both sides, 1 blue, 2 red.
  frmSelectChannel(std::uint8_t present, QWidget* owner);
  ~frmSelectChannel() override;

  /// The Channel of the picked option.
  std::uint8_t Channel() const;
  void accept() override;
  void reject() override;

 private:
  void Pick(std::uint8_t channel);

  std::uint8_t presentChannel;
  std::unique_ptr<Ui::frmSelectChannel> form;
};

}  // namespace kestrel::shell
