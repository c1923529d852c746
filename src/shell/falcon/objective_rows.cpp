#include "shell/falcon/objective_rows.h"

#include <QApplication>
#include <QFontMetrics>
#include <iterator>

#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

using core::ImportedObjective;
using core::ObjectiveColumn;

struct Column {
  const char* Title;
  const char* Tip;
  ObjectiveColumn Sorts;
};
constexpr Column Columns[] = {{"Name", "Sorts by name (Ctrl+1)", ObjectiveColumn::Name},
                              {"Type", "Sorts by type (Ctrl+2)", ObjectiveColumn::Type},
                              {"Team", "Sorts by team (Ctrl+3)", ObjectiveColumn::Team},
                              {"Features", "Sorts by the number of buildings (Ctrl+4)", ObjectiveColumn::Features}};

constexpr int RowMargin = 8;  ///< pixels above and below a row together

int AlignmentOf(int column) {
  const bool number = Columns[column].Sorts == ObjectiveColumn::Features;
  return int(Qt::AlignVCenter | (number ? Qt::AlignRight : Qt::AlignLeft));
}

}  // namespace

ObjectiveRows::ObjectiveRows(core::ObjectiveList& shown, QObject* owner) : QAbstractTableModel(owner), list(shown) {}

void ObjectiveRows::Refresh() {
  beginResetModel();
  endResetModel();
}

void ObjectiveRows::RefreshMarks() {
  if (rowCount() > 0) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::CheckStateRole});
}

void ObjectiveRows::Mark(const QModelIndexList& rows, bool selected) {
  for (const QModelIndex& row : rows) list.Select(RowOf(row), selected);
  RefreshMarks();
  Q_EMIT Marked();
}

int ObjectiveRows::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(list.Shown().size());
}

int ObjectiveRows::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(std::size(Columns));
}

QVariant ObjectiveRows::data(const QModelIndex& at, int role) const {
  if (!at.isValid()) return {};
  const ImportedObjective& row = list.Row(RowOf(at));
  switch (role) {
    case Qt::DisplayRole:
      break;
    case Qt::CheckStateRole:
      if (at.column() != 0) return {};
      return row.Selected ? Qt::Checked : Qt::Unchecked;
    case Qt::UserRole:
      return QString(u'D' + QString::number(RowOf(at) + 1));
    case Qt::TextAlignmentRole:
      return AlignmentOf(at.column());
    case Qt::SizeHintRole:
      return QSize(0, QFontMetrics(QApplication::font()).height() + RowMargin);
    default:
      return {};
  }
  switch (Columns[at.column()].Sorts) {
    case ObjectiveColumn::Name:
      return FromBytes(row.Name);
    case ObjectiveColumn::Type:
      return FromBytes(row.TypeName);
    case ObjectiveColumn::Team:
      return FromBytes(list.TeamOf(row));
    case ObjectiveColumn::Features:
      break;
  }
  return QString::number(row.Features);
}

bool ObjectiveRows::setData(const QModelIndex& at, const QVariant& value, int role) {
  if (!at.isValid() || at.column() != 0 || role != Qt::CheckStateRole) return false;
  Mark({at}, value.toInt() == Qt::Checked);
  return true;
}

Qt::ItemFlags ObjectiveRows::flags(const QModelIndex& at) const {
  Qt::ItemFlags flags = QAbstractTableModel::flags(at);
  flags.setFlag(Qt::ItemIsUserCheckable, at.isValid() && at.column() == 0);
  flags.setFlag(Qt::ItemNeverHasChildren);
  return flags;
}

QVariant ObjectiveRows::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  if (role == Qt::DisplayRole) return QString::fromLatin1(Columns[section].Title);
  if (role == Qt::ToolTipRole) return QString::fromLatin1(Columns[section].Tip);
  if (role == Qt::TextAlignmentRole) return AlignmentOf(section);
  return {};
}

void ObjectiveRows::sort(int column, Qt::SortOrder order) {
  if (column < 0 || column >= columnCount()) return;
  list.Sort(Columns[column].Sorts, order == Qt::DescendingOrder);
  Refresh();
}

}  // namespace kestrel::shell
