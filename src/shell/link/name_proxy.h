#pragma once

#include <QSortFilterProxyModel>

namespace kestrel::shell {

/// The order of a list's names.
enum class NameOrder { AsTold, Ascending, Descending };

/// The rows of a list whose text holds what is typed, in the order that the person wants; small and capital letters
/// count alike. It takes the place of the list's own model only while it does something, and costs nothing otherwise.
class NameProxy final : public QSortFilterProxyModel {
  Q_OBJECT
 public:
  using QSortFilterProxyModel::QSortFilterProxyModel;

  void SetText(const QString& wanted);
  void SetOrder(NameOrder wanted);
  NameOrder Order() const { return order; }
  bool Active() const { return !text.isEmpty() || order != NameOrder::AsTold; }

 protected:
  bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
  bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

 private:
  QString text;
  NameOrder order = NameOrder::AsTold;
};

}  // namespace kestrel::shell
