#include "shell/options/key_field.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>

#include "shell/parts/colour_button.h"
#include "shell/parts/guard.h"
#include "shell/parts/key_events.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

/// On the three light colours of the field, in either palette.
constexpr QColor FieldText(0x20, 0x26, 0x2b);
/// Right of the word about the key, pixels.
constexpr int ClashMargin = 10;

}  // namespace

QString EscMeaning(std::size_t command) {
  // A command of our own is as the settings have it.
  if (command >= static_cast<std::size_t>(core::FirstOwnShortcut)) return QStringLiteral("Esc leaves it without one");
  return QStringLiteral("Esc leaves it without one until the next start, which gives it its default");
}

KeyField::KeyField(base::DebugLog& lines, core::ShortcutCapture& shown, std::size_t command, QWidget* owner)
    : QLineEdit(owner), log(lines), capture(shown), index(command) {
  const QString name = FromBytes(core::ShortcutOf(static_cast<std::int32_t>(command))->Name);
  setObjectName(QStringLiteral("txtKey_") + QString::number(command));
  setAccessibleName(QStringLiteral("Key of ") + name);
  setToolTip(QStringLiteral("The key of %1. Press Set, then the key; %2.").arg(name, EscMeaning(command)));
  setReadOnly(true);
  setContextMenuPolicy(Qt::NoContextMenu);
  // Its longest text must be read whole.
  setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("<Press Key or ESC to clear>")) + 16);
  lblClash = new QLabel(this);
  lblClash->setObjectName(QStringLiteral("lblClash_") + QString::number(command));
  lblClash->setTextFormat(Qt::PlainText);
  lblClash->setAttribute(Qt::WA_TransparentForMouseEvents);
  // On the field's own ground.
  lblClash->setForegroundRole(QPalette::Text);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, ClashMargin, 0);
  row->addStretch(1);
  row->addWidget(lblClash);
  ShowBox();
}

void KeyField::ShowClash(const QString& word) {
  lblClash->setText(word);
  lblClash->setVisible(!word.isEmpty());
  setAccessibleDescription(word);
}

void KeyField::ShowBox() {
  const core::KeyBox box = capture.Box(index);
  setText(FromBytes(box.Text));
  QPalette colours = palette();
  colours.setColor(QPalette::Base, ToQColor(box.Back));
  colours.setColor(QPalette::Text, FieldText);
  setPalette(colours);
  Q_EMIT Shown();
}

bool KeyField::TakeKey(QKeyEvent& key) {
  bool ours = false;
  Guarded(log, "txtKey", [&] {
    ours = capture.Key(index, VirtualKey(key), ShiftState(key));
    if (ours) ShowBox();
  });
  return ours;
}

bool KeyField::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && capture.Waiting() == index) {
    event->accept();
    return true;
  }
  // Before the toolkit makes a step to the next field of Tab.
  if (event->type() == QEvent::KeyPress && TakeKey(static_cast<QKeyEvent&>(*event))) {
    event->accept();
    return true;
  }
  return QLineEdit::event(event);
}

void KeyField::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  deselect();
}

void KeyField::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  Guarded(log, "txtKey", [this] {
    capture.LoseFocus(index);
    ShowBox();
  });
}

}  // namespace kestrel::shell
