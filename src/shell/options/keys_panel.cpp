#include "shell/options/keys_panel.h"

#include <QGridLayout>
#include <QPushButton>
#include <algorithm>

#include "shell/options/key_field.h"
#include "shell/options/panel_parts.h"
#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

/// So that the fields of all groups stand below each other, pixels.
int WidestName(const QFontMetrics& metrics) {
  int widest = 0;
  for (const core::Shortcut& command : core::Shortcuts) {
    widest = std::max(widest, metrics.horizontalAdvance(FromBytes(command.Name)));
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
  AddCommands("In the map window", first, std::min(end, everywhere), *rows);
  if (end > everywhere) {
    QVBoxLayout* group = AddCommands("In every program", everywhere, end, *rows);
    note = new QLabel(this);
    note->setObjectName(QStringLiteral("lblGlobalKeys"));
    note->setTextFormat(Qt::PlainText);
    note->setWordWrap(true);
    group->addWidget(note);
    ShowNote();
  }
  rows->addStretch(1);

  auto* load = new QPushButton(QStringLiteral("Load Defaults"), this);
  load->setObjectName(QString::fromLatin1(defaults));
  load->setToolTip(QStringLiteral("Gives the commands of this page the keys that the station comes with"));
  load->setAutoDefault(false);
  connect(load, &QPushButton::clicked, this, [this, first, end] { LoadDefaults(first, end); });
  rows->addWidget(load, 0, Qt::AlignRight);
}

QVBoxLayout* KeysPanel::AddCommands(const char* heading, std::size_t first, std::size_t end, QVBoxLayout& rows) {
  QVBoxLayout* group = NewGroup(heading, rows, this);
  auto* lines = new QGridLayout;
  lines->setHorizontalSpacing(PanelGap);
  lines->setVerticalSpacing(RowGap);
  lines->setColumnStretch(1, 1);
  lines->setColumnMinimumWidth(0, WidestName(fontMetrics()));
  for (std::size_t index = first; index < end; ++index) AddCommand(index, *lines);
  group->addLayout(lines);
  return group;
}

void KeysPanel::AddCommand(std::size_t index, QGridLayout& lines) {
  const QString command = FromBytes(core::Shortcuts[index].Name);
  const QString number = u'_' + QString::number(index);
  auto* field = new KeyField(program.Log, capture, index, this);
  auto* set = new QPushButton(QStringLiteral("Set"), this);
  set->setObjectName(QStringLiteral("cmdSet") + number);
  set->setToolTip(QStringLiteral("Binds %1 to the key that is pressed next; Esc leaves it without one until the next "
                                 "start, which gives it its default")
                      .arg(command));
  set->setAccessibleName(QStringLiteral("Set the key of ") + command);
  set->setAutoDefault(false);
  connect(set, &QPushButton::clicked, this, [this, index, field] { Set(index, *field); });
  connect(field, &KeyField::Shown, this, &KeysPanel::ShowNote);
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
    ShowBoxes();
  });
}

void KeysPanel::LoadDefaults(std::size_t first, std::size_t end) {
  Guarded(program.Log, "cmdLoadDefaults", [&] {
    capture.LoadDefaults(first, end);
    ShowBoxes();
  });
}

void KeysPanel::ShowBoxes() {
  for (KeyField* field : fields) field->ShowBox();
}

void KeysPanel::ShowNote() {
  if (note == nullptr) return;
  note->setText(FromBytes(capture.Note()));
  note->setVisible(!note->text().isEmpty());
}

}  // namespace kestrel::shell
