#pragma once

#include <QAbstractListModel>
#include <algorithm>
#include <cstddef>
#include <deque>
#include <map>
#include <memory>
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

  const Row& At(const QModelIndex& index) const { return *rows[static_cast<std::size_t>(index.row())]; }

  /// Makes the rows those of `wanted`, in that order.
  void Show(std::vector<Row> wanted) { ShowBetween(0, std::move(wanted), 0); }

  /// The first `front` and the last `back` rows stay as they are; makes those between them `wanted`, in that order.
  void ShowBetween(std::size_t front, std::vector<Row> wanted, std::size_t back) {
    std::map<Key, std::size_t> toCome;
    for (const Row& row : wanted) ++toCome[row.Key()];
    std::size_t at = front;  // in `rows`
    std::size_t next = 0;    // in `wanted`
    const auto end = [this, back] { return rows.size() - back; };
    while (next < wanted.size()) {
      if (at < end() && rows[at]->Key() == wanted[next].Key()) {
        --toCome[wanted[next].Key()];
        if (!(*rows[at] == wanted[next])) Replace(at, std::move(wanted[next]));
        ++at;
        ++next;
      } else if (const std::size_t gone = GoneFrom(at, end(), toCome); gone > 0) {
        Take(at, gone);
      } else {
        std::vector<RowPlace> added;
        while (next < wanted.size() && (at >= end() || rows[at]->Key() != wanted[next].Key())) {
          --toCome[wanted[next].Key()];
          added.push_back(std::make_unique<Row>(std::move(wanted[next++])));
        }
        const std::size_t from = at;
        at += added.size();
        Put(from, std::move(added));
      }
    }
    if (at < end()) Take(at, end() - at);
  }

 protected:
  std::size_t Count() const { return rows.size(); }
  Row& RowAt(std::size_t row) { return *rows[row]; }

 private:
  using Key = std::decay_t<decltype(std::declval<const Row&>().Key())>;
  /// Each row stands by itself, so that thousands of them shift quickly when one above them goes.
  using RowPlace = std::unique_ptr<Row>;

  static std::ptrdiff_t Offset(std::size_t row) { return static_cast<std::ptrdiff_t>(row); }

  /// How many rows from `at` on, before `end`, have a key of which no wanted row is left.
  std::size_t GoneFrom(std::size_t at, std::size_t end, const std::map<Key, std::size_t>& toCome) const {
    const auto first = rows.begin() + Offset(at);
    const auto stays = [&toCome](const RowPlace& row) {
      const auto left = toCome.find(row->Key());
      return left != toCome.end() && left->second > 0;
    };
    return static_cast<std::size_t>(std::find_if(first, rows.begin() + Offset(end), stays) - first);
  }

  void Replace(std::size_t at, Row row) {
    *rows[at] = std::move(row);
    const QModelIndex changed = index(static_cast<int>(at));
    Q_EMIT dataChanged(changed, changed);
  }

  void Take(std::size_t at, std::size_t count) {
    beginRemoveRows({}, static_cast<int>(at), static_cast<int>(at + count) - 1);
    rows.erase(rows.begin() + Offset(at), rows.begin() + Offset(at + count));
    endRemoveRows();
  }

  void Put(std::size_t at, std::vector<RowPlace> added) {
    beginInsertRows({}, static_cast<int>(at), static_cast<int>(at + added.size()) - 1);
    rows.insert(rows.begin() + Offset(at), std::make_move_iterator(added.begin()),
                std::make_move_iterator(added.end()));
    endInsertRows();
  }

  std::deque<RowPlace> rows;  // when one goes, the fewer of those before and behind it shift
};

}  // namespace kestrel::shell
