#pragma once

#include <QButtonGroup>
#include <cstdint>

#include "shell/areas/area_panel.h"

class QScrollArea;

// The panels of the types that have one position.
namespace kestrel::shell {

/// Frame1_1.
class CirclePanel final : public AreaPanel {
  Q_OBJECT
 public:
  CirclePanel(EditorHand& common, QWidget* owner);
};

/// Frame1_2: the icons as buttons, which can be written as pictures.
class IconPanel final : public AreaPanel {
  Q_OBJECT
 public:
  IconPanel(EditorHand& common, QWidget* owner);
  void ShowEditor() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void AddIcons();
  /// Scrolls to the chosen icon.
  void ShowChosen();
  /// Picture1: the chosen icon in the colour of the area.
  void ShowPicture();
  /// Writes the icons that have a picture into the folder "Icons" below AppPath.
  void MakeIcons();

  QButtonGroup* Option3;         ///< by the numbers of the icons
  QScrollArea* icons = nullptr;  ///< what the buttons lie in
  QLabel* Picture1;
  std::int16_t pictured = 0;  ///< what Picture1 shows
  base::Colour picturedIn = 0;
};

/// Frame1_3.
class TextPanel final : public AreaPanel {
  Q_OBJECT
 public:
  TextPanel(EditorHand& common, QWidget* owner);
  void ShowEditor() override;

  QLineEdit& Text() { return *Text1; }

 private:
  QLineEdit* Text1;
};

}  // namespace kestrel::shell
