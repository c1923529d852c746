#pragma once

#include <QKeySequence>
#include <QShortcut>
#include <QWidget>
#include <utility>

#include "areas/area_changes.h"
#include "base/debug_log.h"
#include "shell/parts/guard.h"

namespace kestrel::shell {

/// A step back or forward in the history of the areas.
using AreaStep = areas::Moved (areas::AreaHistory::*)(areas::AreaCatalogue&);

/// Gives a window of the areas the keys of undo and redo. `run` is called with the step; `log` outlives the window.
template <class Run>
void AddUndoKeys(QWidget& window, base::DebugLog& log, Run run) {
  const std::pair<QKeyCombination, AreaStep> keys[] = {
      {Qt::CTRL | Qt::Key_Z, &areas::AreaHistory::Undo},
      {Qt::CTRL | Qt::Key_Y, &areas::AreaHistory::Redo},
      {Qt::CTRL | Qt::SHIFT | Qt::Key_Z, &areas::AreaHistory::Redo},
  };
  for (const auto& [key, step] : keys) {
    auto* shortcut = new QShortcut(QKeySequence(key), &window);
    QObject::connect(shortcut, &QShortcut::activated, &window,
                     [&log, run, step = step] { Guarded(log, "Undo", [&] { run(step); }); });
  }
}

}  // namespace kestrel::shell
