#include "shell/theaters/numbered_list.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeView>
#include <utility>

namespace kestrel::shell {
namespace {

constexpr int NameColumn = 1;

}  // namespace

NumberedList::NumberedList(QStringList titles, Count count, Text text, QObject* owner)
    : QAbstractTableModel(owner),
      columns(QStringList{QStringLiteral("#")} + titles),
      countOf(std::move(count)),
      textOf(std::move(text)),
      rows(static_cast<int>(countOf())) {}

void NumberedList::ShowIn(QTreeView& view) {
  view.setModel(this);
  QHeaderView& header = *view.header();
  header.setStretchLastSection(false);
  header.setSectionsMovable(false);
  header.setHighlightSections(false);
  for (int column = 0; column < columnCount(); ++column) {
    header.setSectionResizeMode(column, column == NameColumn ? QHeaderView::Stretch : QHeaderView::ResizeToContents);
  }
}

void NumberedList::Refresh(QTreeView& view, std::size_t current) {
  const int wanted = static_cast<int>(countOf());
  // At the end, so that the view stays where it is scrolled to.
  if (wanted > rows) {
    beginInsertRows({}, rows, wanted - 1);
    rows = wanted;
    endInsertRows();
  } else if (wanted < rows) {
    beginRemoveRows({}, wanted, rows - 1);
    rows = wanted;
    endRemoveRows();
  }
  if (rows > 0) Q_EMIT dataChanged(index(0, 0), index(rows - 1, columnCount() - 1));
  view.setCurrentIndex(index(static_cast<int>(current) - 1, 0));
}

std::size_t NumberedList::Selected(const QTreeView& view) {
  // Not the current row: that is where the keyboard is, highlighted or not.
  const QModelIndexList rows = view.selectionModel()->selectedRows();
  // The key is one letter and the index.
  return rows.isEmpty() ? 0 : rows.front().data(Qt::UserRole).toString().mid(1).toULongLong();
}

void NumberedList::EnableWithRow(const QTreeView& view, QPushButton& button) {
  const auto follow = [&view, &button] { button.setEnabled(Selected(view) != 0); };
  connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, &button, follow);
  follow();
}

int NumberedList::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows; }

int NumberedList::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns.size());
}

QVariant NumberedList::data(const QModelIndex& at, int role) const {
  const auto element = static_cast<std::size_t>(at.row()) + 1;
  switch (role) {
    case Qt::DisplayRole:
      return at.column() == 0 ? QString::number(element) : textOf(element, at.column());
    case Qt::SizeHintRole: {
      const QFontMetrics font(QGuiApplication::font());
      return QSize(font.horizontalAdvance(data(at, Qt::DisplayRole).toString()) + 24, font.height() + 8);
    }
    case Qt::UserRole:
      return QString(u'D' + QString::number(element));
    case Qt::TextAlignmentRole:
      return int(Qt::AlignVCenter | (at.column() == NameColumn ? Qt::AlignLeft : Qt::AlignRight));
    default:
      return {};
  }
}

QVariant NumberedList::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::DisplayRole) return columns[section];
  if (role == Qt::TextAlignmentRole) {
    return int(Qt::AlignVCenter | (section == NameColumn ? Qt::AlignLeft : Qt::AlignRight));
  }
  return {};
}

}  // namespace kestrel::shell
