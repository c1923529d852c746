#include "shell/areas/editor_hand.h"

#include "shell/parts/character_filter.h"
#include "shell/parts/typed_text.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

constexpr int LongestText = 100;  ///< of names and texts in the files, bytes

}  // namespace

QLineEdit* EditorHand::NewField(const char* name, areas::EditorField field, Takes takes, const char* meaning,
                                QWidget* parent) {
  auto* line = new QLineEdit(parent);
  line->setObjectName(QString::fromLatin1(name));
  line->setToolTip(QString::fromLatin1(meaning));
  if (takes == Takes::Numbers) {
    new CharacterFilter(DigitsAndPoint(), *line);
  } else {
    line->setMaxLength(LongestText);
  }
  const std::size_t index = fields.size();
  fields.push_back({line, field, {}});
  QObject::connect(line, &QLineEdit::textEdited, &window, [this, index, name](const QString& text) {
    if (!UnheldCharacters(text).isEmpty()) return;
    Field& edited = fields[index];
    edited.Shown = ToBytes(text);
    Do(name, [&] { return areas::FieldEdited(Editor(), edited.Of, edited.Shown, Texts()); });
  });
  QObject::connect(line, &QLineEdit::editingFinished, &window, [this, index, name] {
    Guarded(program.Log, name, [this, index] {
      areas::FieldLeft(Editor(), fields[index].Of);
      ShowFields();
    });
  });
  return line;
}

void EditorHand::ShowFields() {
  for (Field& field : fields) {
    const std::string& text = Editor().Fields.*field.Of;
    if (field.Shown == text) continue;
    field.Shown = text;
    field.Line->setText(FromBytes(text));
  }
}

}  // namespace kestrel::shell
