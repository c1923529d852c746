#include "shell/frame/enter_key.h"

#include <QCoreApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QPushButton>

namespace kestrel::shell {
namespace {

/// What would keep Enter for itself though it is not what Enter means. Of push buttons, those that ask for Enter when
/// they have the keyboard get it.
bool KeepsEnter(const QWidget& widget) {
  if (const auto* button = qobject_cast<const QPushButton*>(&widget)) {
    return !button->autoDefault() && !button->isDefault();
  }
  return qobject_cast<const QAbstractButton*>(&widget) != nullptr || qobject_cast<const QDialog*>(&widget) != nullptr;
}

}  // namespace

EnterKey::EnterKey() { QCoreApplication::instance()->installEventFilter(this); }

bool EnterKey::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
  const auto* widget = static_cast<QWidget*>(watched);
  auto* dialog = qobject_cast<QDialog*>(widget->window());
  if (dialog == nullptr || dialog == widget || !KeepsEnter(*widget)) return false;
  QCoreApplication::sendEvent(dialog, event);
  return true;
}

}  // namespace kestrel::shell
