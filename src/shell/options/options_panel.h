#pragma once

#include <QFrame>

#include "shell/options/option_controls.h"

class QBoxLayout;
class QFormLayout;

namespace kestrel::shell {

/// Frame2 of the options: how the station behaves, and how airfields are drawn.
class OptionsPanel final : public QFrame {
  Q_OBJECT
 public:
  /// `controls` outlives the panel.
  OptionsPanel(OptionControls& controls, QWidget* owner);

 private:
  void AddGeneral(QBoxLayout& column);
  void AddTacan(QBoxLayout& column);
  void AddPositions(QBoxLayout& rows);
  void AddIls(QBoxLayout& column);
  void AddDrawing(QBoxLayout& rows);

  OptionControls& options;
};

}  // namespace kestrel::shell
