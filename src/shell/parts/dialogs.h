#pragma once

#include <QCursor>
#include <QDialog>
#include <QGuiApplication>
#include <QList>

#include "shell/parts/modal_count.h"

namespace kestrel::shell {

/// Takes an hourglass off the pointer for as long as it stands: what is on the screen meanwhile waits for the person.
class PlainPointer {
 public:
  PlainPointer() {
    while (const QCursor* top = QGuiApplication::overrideCursor()) {
      lifted.prepend(*top);
      QGuiApplication::restoreOverrideCursor();
    }
  }
  ~PlainPointer() {
    for (const QCursor& each : lifted) QGuiApplication::setOverrideCursor(each);
  }
  PlainPointer(const PlainPointer&) = delete;
  PlainPointer& operator=(const PlainPointer&) = delete;

 private:
  QList<QCursor> lifted;  ///< the undermost first
};

/// Makes the pointer an hourglass for as long as it stands.
class WaitCursor {
 public:
  WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
};

/// Runs a dialog or a message box of the program until it is closed: it counts as open, the floating windows are out of
/// its way, and the pointer is no hourglass. Returns what its exec() gives.
inline int RunDialog(QDialog& dialog, ModalCount& modal) {
  const ModalCount::Scope open(modal);
  const PlainPointer plain;
  return dialog.exec();
}

}  // namespace kestrel::shell
