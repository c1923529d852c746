#pragma once

#include <QTreeView>
#include <functional>

#include "shell/parts/numbered_list.h"

namespace kestrel::shell {

/// The list of an area's segments or points. Thousands of them are shown as readily as one: what is not seen is not
/// asked for, and what comes to the end or goes from it leaves the rest alone.
class PointsView final : public QTreeView {
  Q_OBJECT
 public:
  /// `selected` is told the row that the person selects, from 1, 0 being none. `rows` becomes the view's own.
  PointsView(const char* name, NumberedList* rows, std::function<void(std::size_t)> selected, QWidget* owner);

  NumberedList& List() { return *list; }
  /// Rows have come to the end or gone from it; `current` is selected and scrolled into view.
  void Follow(std::size_t current);
  /// Any row may have changed.
  void Refresh(std::size_t current);

 private:
  NumberedList* list;
  bool populating = false;  ///< a row is being selected by the program
};

}  // namespace kestrel::shell
