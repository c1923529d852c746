#include "shell/options/keys_panel.h"

#include <QGridLayout>
#include <QPushButton>
#include <QScopedValueRollback>
#include <algorithm>

#include "core/key_clashes.h"
#include "shell/options/key_field.h"
#include "shell/options/panel_parts.h"
#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

/// So that the fields of all groups stand below each other, pixels.
int WidestName(const core::Station& station, const QFontMetrics& metrics) {
  int widest = 0;
  for (const core::BoundCommand& each : core::BoundCommands(station)) {
    widest = std::max(widest, metrics.horizontalAdvance(FromBytes(each.Command->Name)));
  }
  return widest;
}

}  // namespace

KeysPanel::KeysPanel(core::Program& running, core::ShortcutCapture& shown, const char* name, std::size_t first,
                     std::size_t end, const char* defaults, QWidget* owner)
    : QFrame(owner), program(running), capture(shown) {
  setObjectName(QString::fromLatin1(name));
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(PanelMargin, PanelMargin, PanelMargin, PanelMargin);
  rows->setSpacing(PanelGap);
  constexpr auto everywhere = static_cast<std::size_t>(core::FirstTransmitShortcut);
  constexpr auto own = static_cast<std::size_t>(core::FirstOwnShortcut);
  AddCommands("In the map window", first, std::min(end, everywhere), *rows);
  if (first == 0) AddCommands("There too, beyond the others", own, own + core::OwnShortcuts.size(), *rows);
  if (end > everywhere) {
    QVBoxLayout* group = AddCommands("In every program", everywhere, end, *rows);
    note = new QLabel(this);
    note->setObjectName(QStringLiteral("lblGlobalKeys"));
    note->setTextFormat(Qt::PlainText);
    note->setWordWrap(true);
    group->addWidget(note);
  }
  rows->addStretch(1);
  AddButtons(first, end, defaults, *rows);
  ShowKeys();
}

void KeysPanel::AddButtons(std::size_t first, std::size_t end, const char* defaults, QVBoxLayout& rows) {
  QHBoxLayout* row = NewRow(rows);
  shadowed = NewLabel("lblShadowed", {}, nullptr, this);
  shadowed->setWordWrap(true);
  row->addWidget(shadowed, 1);
  QPushButton* undo =
      NewButton("cmdUndoKey", "Undo", "Puts back the keys as they were before the last Set or Load Defaults");
  connect(undo, &QPushButton::clicked, this, &KeysPanel::Undo);
  QPushButton* load =
      NewButton(defaults, "Load Defaults", "Gives the commands of this page the keys that the station comes with");
  connect(load, &QPushButton::clicked, this, [this, first, end] { LoadDefaults(first, end); });
  for (QPushButton* button : {undo, load}) row->addWidget(button, 0, Qt::AlignBottom);
}

QPushButton* KeysPanel::NewButton(const char* name, const char* caption, const char* meaning) {
  auto* button = new QPushButton(Words(caption), this);
  button->setObjectName(Words(name));
  button->setToolTip(Words(meaning));
  button->setAutoDefault(false);
  return button;
}

QVBoxLayout* KeysPanel::AddCommands(const char* heading, std::size_t first, std::size_t end, QVBoxLayout& rows) {
  QVBoxLayout* group = NewGroup(heading, rows, this);
  auto* lines = new QGridLayout;
  lines->setHorizontalSpacing(PanelGap);
  lines->setVerticalSpacing(RowGap);
  lines->setColumnStretch(1, 1);
  lines->setColumnMinimumWidth(0, WidestName(program.State, fontMetrics()));
  for (std::size_t index = first; index < end; ++index) AddCommand(index, *lines);
  group->addLayout(lines);
  return group;
}

void KeysPanel::AddCommand(std::size_t index, QGridLayout& lines) {
  const QString command = FromBytes(core::ShortcutOf(static_cast<std::int32_t>(index))->Name);
  const QString number = u'_' + QString::number(index);
  auto* field = new KeyField(program.Log, capture, index, this);
  auto* set = new QPushButton(QStringLiteral("Set"), this);
  set->setObjectName(QStringLiteral("cmdSet") + number);
  set->setToolTip(QStringLiteral("Binds %1 to the key that is pressed next; %2").arg(command, EscMeaning(index)));
  set->setAccessibleName(QStringLiteral("Set the key of ") + command);
  set->setAutoDefault(false);
  connect(set, &QPushButton::clicked, this, [this, index, field] { Set(index, *field); });
  connect(field, &KeyField::Shown, this, &KeysPanel::ShowEverywhere);
  auto* label = NewLabel("lblKey", command, set, this);
  label->setObjectName(label->objectName() + number);
  const int line = lines.rowCount();
  lines.addWidget(label, line, 0);
  lines.addWidget(field, line, 1);
  lines.addWidget(set, line, 2);
  fields.push_back(field);
}

void KeysPanel::Set(std::size_t index, KeyField& field) {
  Guarded(program.Log, "cmdSet", [&] {
    capture.Begin(index);
    activateWindow();
    field.setFocus(Qt::OtherFocusReason);
    ShowEverywhere();
  });
}

void KeysPanel::LoadDefaults(std::size_t first, std::size_t end) {
  Guarded(program.Log, "cmdLoadDefaults", [&] {
    capture.LoadDefaults(first, end);
    ShowEverywhere();
  });
}

void KeysPanel::Undo() {
  Guarded(program.Log, "cmdUndoKey", [this] {
    capture.Undo();
    ShowEverywhere();
  });
}

void KeysPanel::ShowEverywhere() {
  if (showing) return;
  ShowKeys();
  Q_EMIT KeysChanged();
}

void KeysPanel::ShowKeys() {
  const QScopedValueRollback<bool> ours(showing, true);
  const std::vector<core::BoundCommand> commands = core::BoundCommands(program.State);
  for (KeyField* field : fields) {
    field->ShowBox();
    field->ShowClash(FromBytes(core::ClashOf(commands, field->Command())));
  }
  const std::vector<std::string> names = core::Shadowed(commands);
  shadowed->setText(FromBytes(core::ShadowedLine(names)));
  QStringList all;
  for (const std::string& name : names) all << FromBytes(name);
  shadowed->setToolTip(all.join(u'\n'));
  ShowNote();
}

void KeysPanel::ShowNote() {
  if (note == nullptr) return;
  note->setText(FromBytes(capture.Note()));
  note->setVisible(!note->text().isEmpty());
}

}  // namespace kestrel::shell
