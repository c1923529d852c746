#pragma once

#include <QFrame>

#include "shell/options/option_controls.h"

class QBoxLayout;
class QLabel;
class QSlider;

namespace kestrel::shell {

/// Frame1 of the options: what is shown, in which colours, and the steps of zoom, pan and saved views.
class ViewPanel final : public QFrame {
  Q_OBJECT
 public:
  /// `running` and `controls` outlive the panel.
  ViewPanel(core::Program& running, OptionControls& controls, QWidget* owner);

  /// Slider and text as the zoom stands. While the slider itself is being moved it stays where it is.
  void ShowZoom();

 private:
  void AddPlots(QBoxLayout& column);
  void AddLayers(QBoxLayout& column);
  void AddColors(QBoxLayout& column);
  void AddZoom(QBoxLayout& column);
  void AddMoves(QBoxLayout& rows);
  void AddShortcuts(QBoxLayout& rows);
  void TakeZoom(int value);
  /// Refreshes what a step of the view has changed.
  template <class Step>
  void Run(const char* control, Step step);

  core::Program& program;
  OptionControls& options;
  QSlider* ZoomScroll = nullptr;
  QLabel* lblZoom = nullptr;
  bool sliding = false;  ///< the slider is being moved by the person
};

}  // namespace kestrel::shell
