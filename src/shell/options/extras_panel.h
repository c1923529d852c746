#pragma once

#include <QFrame>

#include "shell/options/option_controls.h"

class QBoxLayout;

namespace kestrel::shell {

/// Frame5 of the options: what the station does beyond what a controller's display has to do.
class ExtrasPanel final : public QFrame {
  Q_OBJECT
 public:
  /// `controls` outlives the panel.
  ExtrasPanel(OptionControls& controls, QWidget* owner);

 private:
  void AddTies(QBoxLayout& column);
  void AddThreats(QBoxLayout& column);

  OptionControls& options;
};

}  // namespace kestrel::shell
