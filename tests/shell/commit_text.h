#pragma once

#include <QApplication>
#include <QInputMethodEvent>
#include <QLineEdit>

namespace kestrel::shell {

/// Commits `text` into a field as an input method does: the letters that no Latin keyboard has.
inline void Commit(QLineEdit& field, const QString& text) {
  QInputMethodEvent event;
  event.setCommitString(text);
  QApplication::sendEvent(&field, &event);
}

}  // namespace kestrel::shell
