#include "shell/areas/area_panel.h"

#include <utility>

#include "areas/area_drawing.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {

AreaPanel::AreaPanel(areas::AreaType type, const char* promptName, EditorHand& common, QWidget* owner)
    : QFrame(owner), hand(common), shows(type), rows(new QVBoxLayout(this)), prompt(new QLabel(this)) {
  setObjectName(Words("Frame1_") + QString::number(static_cast<int>(type) - 1));
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(8);
  prompt->setObjectName(Words(promptName));
  prompt->setTextFormat(Qt::PlainText);
  // The controls below stay where they are while there is nothing to say.
  QSizePolicy policy = prompt->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  prompt->setSizePolicy(policy);
  rows->addWidget(prompt);
}

void AreaPanel::ShowEditor() {
  if (colour != nullptr && colour->Colour() != hand.Editor().WorkArea.Color) {
    colour->ShowColour(hand.Editor().WorkArea.Color);
  }
  if (hand.Editor().WorkArea.Type != shows) return;
  const QString asked = FromBytes(areas::Prompt(hand.Editor()));
  prompt->setText(asked);
  prompt->setVisible(!asked.isEmpty());
}

QHBoxLayout* AreaPanel::NewRow() {
  auto* row = new QHBoxLayout;
  row->setSpacing(8);
  rows->addLayout(row);
  return row;
}

void AreaPanel::Name(QWidget& control, const char* name, const char* meaning) {
  control.setObjectName(Words(name));
  control.setToolTip(Words(meaning));
}

void AreaPanel::NewNumber(const char* name, const char* label, areas::EditorField field, const char* meaning,
                          QHBoxLayout* row) {
  QLineEdit* line = hand.NewField(name, field, EditorHand::Takes::Numbers, meaning, this);
  auto* caption = new QLabel(Words(label), this);
  caption->setBuddy(line);
  row->addWidget(caption);
  row->addWidget(line, 1);
}

void AreaPanel::NewColour(const char* name, QHBoxLayout* row) {
  colour = new ColourButton(Words("Color"), Words("Color of the area"), this);
  colour->setObjectName(Words(name));
  row->addWidget(colour);
  connect(colour, &ColourButton::clicked, this, [this, name] {
    hand.Do(name, [this] {
      const auto chosen = hand.Program().Desk.PickColour(hand.Editor().WorkArea.Color);
      return chosen ? areas::SetColor(hand.Editor(), *chosen, hand.Texts()) : base::Changed::Nothing;
    });
  });
}

void ChooseAreaFont(EditorHand& hand, const char* handler, const areas::AreaFont& present,
                    base::Changed (*set)(areas::AreaEditor&, areas::AreaFont, base::Colour, areas::TextMeasure&)) {
  hand.Do(handler, [&] {
    const auto flag = [](bool on) { return on ? areas::On : areas::Off; };
    const auto chosen = hand.Program().Desk.PickFont({.FontName = present.Name,
                                                      .FontSize = present.Size,
                                                      .FontBold = present.Bold == areas::On,
                                                      .FontItalic = present.Italic == areas::On,
                                                      .FontStrike = present.Strikethru == areas::On,
                                                      .FontUnder = present.Underline == areas::On,
                                                      .Color = hand.Editor().WorkArea.Color},
                                                     true);
    if (!chosen) return base::Changed::Nothing;
    return set(hand.Editor(),
               {.Name = chosen->FontName,
                .Size = chosen->FontSize,
                .Bold = flag(chosen->FontBold),
                .Italic = flag(chosen->FontItalic),
                .Strikethru = flag(chosen->FontStrike),
                .Underline = flag(chosen->FontUnder)},
               chosen->Color, hand.Texts());
  });
}

}  // namespace kestrel::shell
