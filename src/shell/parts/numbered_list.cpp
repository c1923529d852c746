#include "shell/parts/numbered_list.h"

#include <QApplication>
#include <QFontMetrics>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QStyle>
#include <QTreeView>
#include <utility>

#include "shell/parts/choice_cell.h"

namespace kestrel::shell {

NumberedList::NumberedList(const QStringList& titles, Count count, Text text, QObject* owner)
    : QAbstractTableModel(owner),
      columns(QStringList{QStringLiteral("#")} + titles),
      countOf(std::move(count)),
      textOf(std::move(text)),
      rows(static_cast<int>(countOf())) {}

void NumberedList::SetMarks(Marked isMarked, Mark setMark) {
  marked = std::move(isMarked);
  mark = std::move(setMark);
}

void NumberedList::SetChoice(int column, Choices choices, Choose chosen) {
  choiceColumn = column;
  choicesOf = std::move(choices);
  choose = std::move(chosen);
}

void NumberedList::ShowIn(QTreeView& view) {
  view.setModel(this);
  if (marked) view.installEventFilter(this);
  if (choicesOf) ShowChoices(view, choiceColumn, ChoicesRole);
  QHeaderView& header = *view.header();
  header.setStretchLastSection(false);
  header.setSectionsMovable(false);
  header.setHighlightSections(false);
  for (int column = 0; column < columnCount(); ++column) {
    const bool stretched = words == 0 ? column != 0 : column == words;
    header.setSectionResizeMode(column, stretched ? QHeaderView::Stretch : QHeaderView::ResizeToContents);
  }
}

void NumberedList::ShowMarks(bool shown) {
  if (marksShown == shown) return;
  marksShown = shown;
  if (rows > 0) Q_EMIT dataChanged(index(0, 0), index(rows - 1, 0));
}

void NumberedList::TakeCount() {
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
}

void NumberedList::Follow(QTreeView& view, std::size_t current) {
  TakeCount();
  if (Selected(view) == current) return;
  view.setCurrentIndex(index(static_cast<int>(current) - 1, 0));
}

void NumberedList::Refresh(QTreeView& view, std::size_t current) {
  TakeCount();
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

int NumberedList::AlignmentOf(int column) const {
  // Words at the left, numbers at the right.
  const bool word = (column == words && words != 0) || column == choiceColumn;
  return int(Qt::AlignVCenter | (word ? Qt::AlignLeft : Qt::AlignRight));
}

QVariant NumberedList::data(const QModelIndex& at, int role) const {
  const auto element = static_cast<std::size_t>(at.row()) + 1;
  switch (role) {
    case Qt::DisplayRole:
      return at.column() == 0 ? QString::number(element) : textOf(element, at.column());
    case Qt::SizeHintRole: {
      const QFontMetrics font(QApplication::font());
      // A mark at its left, an arrow at its right.
      const int beside = at.column() == 0 && HasMarks() ? QApplication::style()->pixelMetric(QStyle::PM_IndicatorWidth)
                         : at.column() == choiceColumn  ? font.height() + 8
                                                        : 0;
      return QSize(font.horizontalAdvance(data(at, Qt::DisplayRole).toString()) + 24 + beside, font.height() + 8);
    }
    case Qt::CheckStateRole:
      if (at.column() != 0 || !HasMarks()) return {};
      return marked(element) ? Qt::Checked : Qt::Unchecked;
    case ChoicesRole:
      return at.column() == choiceColumn ? choicesOf(element) : QStringList();
    case Qt::UserRole:
      return QString(u'D' + QString::number(element));
    case Qt::TextAlignmentRole:
      return AlignmentOf(at.column());
    default:
      return {};
  }
}

bool NumberedList::Choosable(const QModelIndex& at) const { return data(at, ChoicesRole).toStringList().size() > 1; }

bool NumberedList::setData(const QModelIndex& at, const QVariant& value, int role) {
  if (!at.isValid()) return false;
  const auto element = static_cast<std::size_t>(at.row()) + 1;
  if (role == Qt::CheckStateRole && at.column() == 0 && HasMarks()) {
    mark(element, value.toInt() == Qt::Checked);
  } else if (role == Qt::EditRole && Choosable(at)) {
    const int choice = value.toInt();
    if (choice < 0 || choice >= data(at, ChoicesRole).toStringList().size()) return false;
    choose(element, choice);
  } else {
    return false;
  }
  // A handler may have made the list shorter.
  if (at.row() < rows) Q_EMIT dataChanged(index(at.row(), 0), index(at.row(), columnCount() - 1));
  return true;
}

Qt::ItemFlags NumberedList::flags(const QModelIndex& at) const {
  Qt::ItemFlags flags = QAbstractTableModel::flags(at);
  if (!at.isValid()) return flags;
  flags.setFlag(Qt::ItemIsUserCheckable, at.column() == 0 && HasMarks());
  flags.setFlag(Qt::ItemIsEditable, Choosable(at));
  return flags;
}

bool NumberedList::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QAbstractTableModel::eventFilter(watched, event);
  const QModelIndex at = static_cast<QTreeView*>(watched)->currentIndex();
  if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Space || !at.isValid() || !HasMarks()) return false;
  const QModelIndex first = index(at.row(), 0);
  setData(first, data(first, Qt::CheckStateRole).toInt() == Qt::Checked ? Qt::Unchecked : Qt::Checked,
          Qt::CheckStateRole);
  return true;
}

QVariant NumberedList::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::DisplayRole) return columns[section];
  if (role == Qt::TextAlignmentRole) {
    return AlignmentOf(section);
  }
  return {};
}

}  // namespace kestrel::shell
