#pragma once

#include <QDialog>
#include <cstddef>
#include <memory>

#include "areas/area.h"

namespace Ui {
class SelectAreaGroupfrm;
}

namespace kestrel::shell {

/// Asks for the group that areas are copied to; none is selected at first.
class SelectAreaGroupfrm final : public QDialog {
  Q_OBJECT
 public:
  SelectAreaGroupfrm(const areas::AreaCatalogue& catalogue, QWidget* owner);
  ~SelectAreaGroupfrm() override;

  /// The group that OK was pressed with, 0 for none.
  std::size_t CopyTarget() const { return target; }

 public Q_SLOTS:
  void accept() override;

 private:
  std::unique_ptr<Ui::SelectAreaGroupfrm> form;
  std::size_t target = 0;
};

}  // namespace kestrel::shell
