#include "shell/areas/points_view.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScopedValueRollback>
#include <utility>

namespace kestrel::shell {

PointsView::PointsView(const char* name, NumberedList* rows, std::function<void(std::size_t)> selected, QWidget* owner)
    : QTreeView(owner), list(rows) {
  list->setParent(this);
  setObjectName(QString::fromLatin1(name));
  setAlternatingRowColors(true);
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setItemsExpandable(false);
  setExpandsOnDoubleClick(false);
  setAllColumnsShowFocus(true);
  header()->setResizeContentsPrecision(0);
  list->ShowIn(*this);
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this, chosen = std::move(selected)] {
    if (!populating) chosen(NumberedList::Selected(*this));
  });
}

void PointsView::Follow(std::size_t current) {
  const QScopedValueRollback guard(populating, true);
  list->Follow(*this, current);
}

void PointsView::Refresh(std::size_t current) {
  const QScopedValueRollback guard(populating, true);
  list->Refresh(*this, current);
}

}  // namespace kestrel::shell
