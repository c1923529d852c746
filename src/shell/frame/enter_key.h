#pragma once

#include <QObject>

namespace kestrel::shell {

/// While it stands, Enter is OK in every dialog. Some desktops have buttons take Enter as they take the space bar: a
/// radio button or a check box that has the keyboard would keep it from the dialog. A dialog within another is passed
/// over too.
class EnterKey final : public QObject {
  Q_OBJECT
 public:
  EnterKey();
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace kestrel::shell
