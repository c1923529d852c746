#pragma once

#include <QAbstractListModel>
#include <algorithm>
#include <cstddef>
#include <map>
#include <type_traits>
#include <utility>
#include <vector>

namespace kestrel::shell {

/// A list model over a table that is read anew several times a second: only the rows that differ are taken out, put in
/// or marked as changed, so that a view keeps its selection, its place and an edit in progress. A Row has Key(), which
/// tells whose row it is, and ==; two rows may have the same key.
template <class Row>
class RowModel : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(rows.size());
  }

  const Row& At(const QModelIndex& index) const { return rows[static_cast<std::size_t>(index.row())]; }

  /// Makes the rows those of `wanted`, in that order.
  void Show(std::vector<Row> wanted) {
    std::map<Key, std::size_t> toCome;
    for (const Row& row : wanted) ++toCome[row.Key()];
    std::size_t at = 0;
    while (at < wanted.size()) {
      if (at < rows.size() && rows[at].Key() == wanted[at].Key()) {
        --toCome[wanted[at].Key()];
        if (!(rows[at] == wanted[at])) Replace(at, std::move(wanted[at]));
        ++at;
      } else if (const std::size_t gone = GoneFrom(at, toCome); gone > 0) {
        Take(at, gone);
      } else {
        const std::size_t from = at;
        while (at < wanted.size() && (from >= rows.size() || rows[from].Key() != wanted[at].Key())) {
          --toCome[wanted[at].Key()];
          ++at;
        }
        Put(from, {std::make_move_iterator(wanted.begin() + Offset(from)),
                   std::make_move_iterator(wanted.begin() + Offset(at))});
      }
    }
    if (at < rows.size()) Take(at, rows.size() - at);
  }

 protected:
  std::vector<Row>& Rows() { return rows; }

 private:
  using Key = std::decay_t<decltype(std::declval<const Row&>().Key())>;

  static std::ptrdiff_t Offset(std::size_t row) { return static_cast<std::ptrdiff_t>(row); }

  /// How many rows from `at` on have a key of which no wanted row is left.
  std::size_t GoneFrom(std::size_t at, const std::map<Key, std::size_t>& toCome) const {
    const auto first = rows.begin() + Offset(at);
    const auto stays = [&toCome](const Row& row) {
      const auto left = toCome.find(row.Key());
      return left != toCome.end() && left->second > 0;
    };
    return static_cast<std::size_t>(std::find_if(first, rows.end(), stays) - first);
  }

  void Replace(std::size_t at, Row row) {
    rows[at] = std::move(row);
    const QModelIndex changed = index(static_cast<int>(at));
    Q_EMIT dataChanged(changed, changed);
  }

  void Take(std::size_t at, std::size_t count) {
    beginRemoveRows({}, static_cast<int>(at), static_cast<int>(at + count) - 1);
    rows.erase(rows.begin() + Offset(at), rows.begin() + Offset(at + count));
    endRemoveRows();
  }

  void Put(std::size_t at, std::vector<Row> added) {
    beginInsertRows({}, static_cast<int>(at), static_cast<int>(at + added.size()) - 1);
    rows.insert(rows.begin() + Offset(at), std::make_move_iterator(added.begin()),
                std::make_move_iterator(added.end()));
    endInsertRows();
  }

  std::vector<Row> rows;
};

}  // namespace kestrel::shell
