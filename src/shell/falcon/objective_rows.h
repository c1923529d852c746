#pragma once

#include <QAbstractTableModel>

#include "core/objective_list.h"

namespace kestrel::shell {

/// The objectives that are shown, each with its mark of selection in the first column; sorted by a click on a column.
/// It holds no copy: Refresh tells that others are shown now. Qt::UserRole of a row is its key, "D" and its index in
/// the campaign, from 1.
class ObjectiveRows final : public QAbstractTableModel {
  Q_OBJECT
 public:
  /// `shown` outlives it.
  ObjectiveRows(core::ObjectiveList& shown, QObject* owner);

  /// Others are shown than before, or in another order.
  void Refresh();
  /// The marks have changed, nothing else has.
  void RefreshMarks();
  /// Selects these rows, or takes them from the selection.
  void Mark(const QModelIndexList& rows, bool selected);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& at, int role) const override;
  bool setData(const QModelIndex& at, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& at) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  void sort(int column, Qt::SortOrder order) override;

 Q_SIGNALS:
  /// Marks have been set by the person.
  void Marked();

 private:
  std::size_t RowOf(const QModelIndex& at) const { return list.Shown()[static_cast<std::size_t>(at.row())]; }

  core::ObjectiveList& list;
};

}  // namespace kestrel::shell
