#pragma once

#include <QDialog>
#include <cstdint>
#include <memory>

namespace Ui {
class frmSelectChannel;
}

namespace kestrel::shell {

/// Asks which side the controller watches. Cancel, Esc and closing it mean none: the server is not joined then.
class frmSelectChannel final : public QDialog {
  Q_OBJECT
 public:
  /// `present`: the Channel that is preselected, 0 both sides, 1 blue, 2 red.
  frmSelectChannel(std::uint8_t present, QWidget* owner);
  ~frmSelectChannel() override;

  /// The Channel of the picked option.
  std::uint8_t Channel() const;
  void accept() override;

 private:
  std::unique_ptr<Ui::frmSelectChannel> form;
};

}  // namespace kestrel::shell
