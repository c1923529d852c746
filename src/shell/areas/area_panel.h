#pragma once

#include <QCheckBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "shell/areas/editor_hand.h"
#include "shell/parts/colour_button.h"

namespace kestrel::shell {

/// The panel of one type: what is to be done on the map, its own controls, its colour.
class AreaPanel : public QFrame {
  Q_OBJECT
 public:
  /// Brings the controls to what the editor holds.
  virtual void ShowEditor();

 protected:
  /// `promptName`: objectName of the prompt. `common` outlives the panel.
  AreaPanel(areas::AreaType type, const char* promptName, EditorHand& common, QWidget* owner);

  static QString Words(const char* text) { return QString::fromLatin1(text); }
  /// Another row below those that stand.
  QHBoxLayout* NewRow();
  /// The room that is left, below the last row.
  void AddRoom() { rows->addStretch(1); }
  template <class Act>
  QPushButton* NewButton(const char* name, const char* caption, const char* meaning, QHBoxLayout* row, Act act) {
    auto* button = new QPushButton(Words(caption), this);
    Name(*button, name, meaning);
    button->setAutoDefault(false);
    row->addWidget(button);
    connect(button, &QPushButton::clicked, this, act);
    return button;
  }
  template <class Act>
  QCheckBox* NewCheck(const char* name, const char* caption, const char* meaning, QHBoxLayout* row, Act act) {
    auto* box = new QCheckBox(Words(caption), this);
    Name(*box, name, meaning);
    row->addWidget(box);
    connect(box, &QCheckBox::clicked, this, act);
    return box;
  }
  /// A field of numbers behind its label.
  void NewNumber(const char* name, const char* label, areas::EditorField field, const char* meaning, QHBoxLayout* row);
  /// The button with the colour of the area, which opens the dialog.
  void NewColour(const char* name, QHBoxLayout* row);

  EditorHand& hand;

 private:
  void Name(QWidget& control, const char* name, const char* meaning);

  areas::AreaType shows;
  QVBoxLayout* rows;
  QLabel* prompt;
  ColourButton* colour = nullptr;
};

/// The colour and font dialogs of the platform on a font of the area and its colour; `set` gets what is chosen.
void ChooseAreaFont(EditorHand& hand, const char* handler, const areas::AreaFont& present,
                    base::Changed (*set)(areas::AreaEditor&, areas::AreaFont, base::Colour, areas::TextMeasure&));

}  // namespace kestrel::shell
