#pragma once

#include <QFrame>

#include "shell/options/option_controls.h"

class QBoxLayout;
class QPushButton;
class QScrollArea;

namespace kestrel::shell {

/// Frame5 of the options: what the station does beyond what a controller's display has to do. The groups
/// scroll where they do not fit.
class ExtrasPanel final : public QFrame {
  Q_OBJECT
 public:
  /// `running` and `controls` outlive the panel.
  ExtrasPanel(core::Program& running, OptionControls& controls, QWidget* owner);

  /// What is no control of a setting, as it stands.
  void Fill();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// `scroll` fills the panel, as a part of it.
  void ShowWhole(QScrollArea& scroll);
  /// The wheel turns what has the keyboard and scrolls over all else.
  void KeepWheel(QWidget& groups);
  void AddTies(QBoxLayout& column);
  void AddThreats(QBoxLayout& column);
  void AddColors(QBoxLayout& column);
  void AddCard(QBoxLayout& column);
  void AddHealing(QBoxLayout& column);
  void AddSessions(QBoxLayout& column);
  void AddLabels(QBoxLayout& column);
  void AddMap(QBoxLayout& column);
  void AddLook(QBoxLayout& column);
  void AddWindows(QBoxLayout& column);

  core::Program& program;
  OptionControls& options;
  QPushButton* cmdFormerColors = nullptr;
};

}  // namespace kestrel::shell
