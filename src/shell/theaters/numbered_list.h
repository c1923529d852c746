#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <functional>

class QPushButton;
class QTreeView;

namespace kestrel::shell {

/// A table of the station as a list whose first column "#" is the index. It holds no copy: Refresh tells what has
/// changed. Qt::UserRole of a row is its key, "D" and the index.
class NumberedList final : public QAbstractTableModel {
  Q_OBJECT
 public:
  using Count = std::function<std::size_t()>;                          ///< elements in the table
  using Text = std::function<QString(std::size_t index, int column)>;  ///< of the columns behind "#"

  /// `titles`: of the columns behind "#".
  NumberedList(QStringList titles, Count count, Text text, QObject* owner);

  /// Makes it the content of `view` and sets the widths of the columns.
  void ShowIn(QTreeView& view);
  /// The table has changed; `current` (1 or more; 0 is none) becomes the selected row of `view`.
  void Refresh(QTreeView& view, std::size_t current);
  /// The index of the row that is highlighted in `view`, 0 when there is none.
  static std::size_t Selected(const QTreeView& view);
  /// Enables `button` for as long as a row of `view` is highlighted.
  static void EnableWithRow(const QTreeView& view, QPushButton& button);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QStringList columns;
  Count countOf;
  Text textOf;
  int rows = 0;  ///< as the views know it
};

}  // namespace kestrel::shell
