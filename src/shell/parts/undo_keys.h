#pragma once

#include <QKeySequence>
#include <QShortcut>
#include <QWidget>
#include <utility>

#include "base/debug_log.h"
#include "base/history.h"
#include "shell/parts/guard.h"

namespace kestrel::shell {

/// A step back or forward in a history (base/history.h).
template <class History>
using UndoStep = decltype(&History::Undo);

/// Gives a window over the tables of a history the keys of undo and redo. `run` is called with the step; `log` outlives
/// the window.
template <class History, class Run>
void AddUndoKeys(QWidget& window, base::DebugLog& log, Run run) {
  const std::pair<QKeyCombination, UndoStep<History>> keys[] = {
      {Qt::CTRL | Qt::Key_Z, &History::Undo},
      {Qt::CTRL | Qt::Key_Y, &History::Redo},
      {Qt::CTRL | Qt::SHIFT | Qt::Key_Z, &History::Redo},
  };
  for (const auto& [key, step] : keys) {
    auto* shortcut = new QShortcut(QKeySequence(key), &window);
    QObject::connect(shortcut, &QShortcut::activated, &window,
                     [&log, run, step = step] { Guarded(log, "Undo", [&] { run(step); }); });
  }
}

}  // namespace kestrel::shell
