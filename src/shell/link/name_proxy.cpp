#include "shell/link/name_proxy.h"

namespace kestrel::shell {

void NameProxy::SetText(const QString& wanted) {
  if (text == wanted.trimmed()) return;
  text = wanted.trimmed();
  invalidateFilter();
}

void NameProxy::SetOrder(NameOrder wanted) {
  order = wanted;
  sort(order == NameOrder::AsTold ? -1 : 0, order == NameOrder::Descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

bool NameProxy::filterAcceptsRow(int row, const QModelIndex& parent) const {
  if (text.isEmpty()) return true;
  return sourceModel()->index(row, 0, parent).data().toString().contains(text, Qt::CaseInsensitive);
}

bool NameProxy::lessThan(const QModelIndex& left, const QModelIndex& right) const {
  return left.data().toString().compare(right.data().toString(), Qt::CaseInsensitive) < 0;
}

}  // namespace kestrel::shell
