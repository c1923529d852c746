#include "shell/parts/keyed_tree.h"

#include <QFont>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMimeData>
#include <QPalette>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <algorithm>
#include <utility>

namespace kestrel::shell {
namespace {

/// Lets no more be typed than a text can have.
class LimitedText final : public QStyledItemDelegate {
 public:
  LimitedText(int characters, QObject* owner) : QStyledItemDelegate(owner), limit(characters) {}
  QWidget* createEditor(QWidget* owner, const QStyleOptionViewItem& option, const QModelIndex& at) const override {
    QWidget* editor = QStyledItemDelegate::createEditor(owner, option, at);
    if (auto* line = qobject_cast<QLineEdit*>(editor)) line->setMaxLength(limit);
    return editor;
  }

 private:
  int limit;
};

bool Blank(const KeyedTree::Row& row) { return !row.Instead.isEmpty() && row.Text.trimmed().isEmpty(); }

}  // namespace

void KeyedTree::SetRename(int limit, OnRename handler) {
  renameLimit = limit;
  rename = std::move(handler);
}

void KeyedTree::SetDrag(MayDrop may, OnDrop handler) {
  mayDrop = std::move(may);
  dropped = std::move(handler);
}

void KeyedTree::ShowIn(QTreeView& shown) {
  view = &shown;
  view->setModel(this);
  view->setHeaderHidden(true);
  view->setUniformRowHeights(true);
  view->setEditTriggers(QAbstractItemView::EditKeyPressed);
  if (rename) view->setItemDelegate(new LimitedText(renameLimit, view));
  if (!dropped) return;
  view->setDragDropMode(QAbstractItemView::InternalMove);
  // A node is dropped on another, not between two, so the whole of it is the target.
  view->setDragDropOverwriteMode(true);
}

void KeyedTree::Refresh(std::vector<Row> fresh, const KeyNow& now) {
  Settle(fresh);
  if (!now && SameNodes(fresh)) {
    Update(std::move(fresh));
    return;
  }
  if (view.isNull()) {
    Reset(std::move(fresh));
    return;
  }
  const auto known = [this, &now](const QModelIndex& at) { return now ? now(KeyOf(at)) : KeyOf(at); };
  std::vector<QString> open;
  for (std::size_t node = 0; node < rows.size(); ++node) {
    if (places[node].Children == 0) continue;
    const QModelIndex at = IndexOf(static_cast<int>(node));
    if (view->isExpanded(at)) open.push_back(known(at));
  }
  QStringList selected;
  for (const QModelIndex& at : view->selectionModel()->selectedRows()) selected << known(at);
  const QString current = known(view->currentIndex());

  Reset(std::move(fresh));
  for (const QString& key : open) {
    const QModelIndex at = Find(key);
    if (at.isValid()) view->expand(at);
  }
  QItemSelection again;
  for (const QString& key : selected) {
    const QModelIndex at = Find(key);
    if (at.isValid()) again.select(at, at);
  }
  // The keyboard's place without a scroll to it, which would open what is closed above it.
  const bool scrolls = view->hasAutoScroll();
  view->setAutoScroll(false);
  const QModelIndex keyboard = Find(current);
  if (keyboard.isValid()) view->selectionModel()->setCurrentIndex(keyboard, QItemSelectionModel::NoUpdate);
  view->selectionModel()->select(again, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  view->setAutoScroll(scrolls);
}

void KeyedTree::RefreshClosed(std::vector<Row> fresh, const QString& key) {
  Settle(fresh);
  Reset(std::move(fresh));
  Select(key);
}

void KeyedTree::Select(const QString& key) {
  if (view.isNull()) return;
  const QModelIndex at = Find(key);
  if (!at.isValid()) {
    view->selectionModel()->clear();
    return;
  }
  view->selectionModel()->setCurrentIndex(at, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  view->scrollTo(at);
}

QModelIndex KeyedTree::Find(const QString& key) const {
  if (numbers.isEmpty()) {
    numbers.reserve(static_cast<qsizetype>(rows.size()));
    // From the end, so that of equal keys the first stays.
    for (std::size_t node = rows.size(); node-- > 0;) numbers.insert(rows[node].Key, static_cast<int>(node));
  }
  const auto found = numbers.constFind(key);
  return found == numbers.constEnd() ? QModelIndex() : IndexOf(*found);
}

QString KeyedTree::KeyOf(const QModelIndex& at) const { return at.isValid() ? RowAt(at).Key : QString(); }

QString KeyedTree::Selected() const {
  if (view.isNull()) return {};
  // Not the current node: that is where the keyboard is, highlighted or not.
  const QModelIndexList selected = view->selectionModel()->selectedRows();
  return selected.isEmpty() ? QString() : KeyOf(selected.front());
}

KeyedTree::Mark KeyedTree::MarkOf(const QString& key) const {
  const QModelIndex at = Find(key);
  return at.isValid() ? RowAt(at).Check : Mark::None;
}

void KeyedTree::SetMark(const QString& key, bool on) {
  const QModelIndex at = Find(key);
  if (!at.isValid() || RowAt(at).Check == Mark::None) return;
  rows[at.internalId()].Check = on ? Mark::On : Mark::Off;
  Q_EMIT dataChanged(at, at, {Qt::CheckStateRole});
}

void KeyedTree::SetNotes(QHash<QString, QString> words) {
  notes.swap(words);
  const auto tell = [this](const QString& key) {
    const QModelIndex at = Find(key);
    if (at.isValid()) Q_EMIT dataChanged(at, at, {Qt::FontRole, Qt::ToolTipRole, Qt::AccessibleDescriptionRole});
  };
  for (auto now = notes.cbegin(); now != notes.cend(); ++now) {
    if (words.value(now.key()) != now.value()) tell(now.key());
  }
  for (auto before = words.cbegin(); before != words.cend(); ++before) {
    if (!notes.contains(before.key())) tell(before.key());
  }
}

QModelIndex KeyedTree::IndexOf(int node) const {
  const auto number = static_cast<std::size_t>(node);
  return createIndex(places[number].Row, 0, static_cast<quintptr>(number));
}

bool KeyedTree::SameNodes(const std::vector<Row>& fresh) const {
  return std::equal(rows.begin(), rows.end(), fresh.begin(), fresh.end(),
                    [](const Row& a, const Row& b) { return a.Parent == b.Parent && a.Key == b.Key; });
}

void KeyedTree::Settle(std::vector<Row>& fresh) const {
  for (std::size_t node = 0; node < fresh.size(); ++node) {
    Row& row = fresh[node];
    if (row.Parent < 0 || static_cast<std::size_t>(row.Parent) >= node) row.Parent = -1;
    if (row.Check == Mark::Kept) row.Check = MarkOf(row.Key) == Mark::On ? Mark::On : Mark::Off;
  }
}

void KeyedTree::Update(std::vector<Row> fresh) {
  ++refreshes;
  rows.swap(fresh);
  const auto differs = [this, &fresh](int node) {
    const Row& now = rows[static_cast<std::size_t>(node)];
    const Row& before = fresh[static_cast<std::size_t>(node)];
    return now.Check != before.Check || now.Image != before.Image || now.Renames != before.Renames ||
           now.Drags != before.Drags || now.Text != before.Text || now.Instead != before.Instead;
  };
  for (const Place& place : places) {
    const auto begin = order.begin() + place.FirstChild;
    const auto end = begin + place.Children;
    const auto first = std::find_if(begin, end, differs);
    if (first == end) continue;
    const auto last = std::find_if(std::reverse_iterator(end), std::reverse_iterator(first), differs);
    Q_EMIT dataChanged(IndexOf(*first), IndexOf(*last));
  }
}

void KeyedTree::Reset(std::vector<Row> fresh) {
  beginResetModel();
  ++refreshes;
  rows = std::move(fresh);
  numbers.clear();
  places.assign(rows.size() + 1, {});
  order.resize(rows.size());
  const auto above = [this](const Row& row) -> Place& {
    return row.Parent < 0 ? places.back() : places[static_cast<std::size_t>(row.Parent)];
  };
  for (std::size_t node = 0; node < rows.size(); ++node) places[node].Row = above(rows[node]).Children++;
  int used = 0;
  for (Place& place : places) {
    place.FirstChild = used;
    used += place.Children;
  }
  for (std::size_t node = 0; node < rows.size(); ++node) {
    order[static_cast<std::size_t>(above(rows[node]).FirstChild + places[node].Row)] = static_cast<int>(node);
  }
  endResetModel();
}

QModelIndex KeyedTree::index(int row, int column, const QModelIndex& parent) const {
  if (column != 0 || row < 0 || row >= rowCount(parent)) return {};
  const Place& place = parent.isValid() ? places[parent.internalId()] : places.back();
  return IndexOf(order[static_cast<std::size_t>(place.FirstChild + row)]);
}

QModelIndex KeyedTree::parent(const QModelIndex& at) const {
  if (!at.isValid() || RowAt(at).Parent < 0) return {};
  return IndexOf(RowAt(at).Parent);
}

int KeyedTree::rowCount(const QModelIndex& parent) const {
  if (rows.empty()) return 0;
  return parent.isValid() ? places[parent.internalId()].Children : places.back().Children;
}

int KeyedTree::columnCount(const QModelIndex&) const { return 1; }

QString KeyedTree::TipOf(const Row& row) const {
  // A tip takes for markup what looks like it, so it is given markup.
  QString tip = QStringLiteral("<span>") + (Blank(row) ? row.Instead : row.Text).toHtmlEscaped();
  const QString note = notes.value(row.Key);
  if (!note.isEmpty()) tip += QStringLiteral("<br>") + note.toHtmlEscaped();
  return tip + QStringLiteral("</span>");
}

QVariant KeyedTree::data(const QModelIndex& at, int role) const {
  if (!at.isValid()) return {};
  const Row& row = RowAt(at);
  switch (role) {
    case Qt::DisplayRole:
      return Blank(row) ? row.Instead : row.Text;
    case Qt::EditRole:
      return row.Text;
    case Qt::ForegroundRole:
      if (!Blank(row)) return {};
      return QGuiApplication::palette().brush(QPalette::PlaceholderText);
    case Qt::ToolTipRole:
      return TipOf(row);
    case Qt::FontRole: {
      if (notes.value(row.Key).isEmpty()) return {};
      QFont bold;
      bold.setBold(true);
      return bold;
    }
    case Qt::AccessibleDescriptionRole:
      return notes.value(row.Key);
    case Qt::DecorationRole:
      if (row.Image < 1 || static_cast<std::size_t>(row.Image) > images.size()) return {};
      return images[static_cast<std::size_t>(row.Image) - 1];
    case Qt::CheckStateRole:
      if (row.Check == Mark::None) return {};
      return row.Check == Mark::On ? Qt::Checked : Qt::Unchecked;
    case Qt::UserRole:
      return row.Key;
    default:
      return {};
  }
}

bool KeyedTree::setData(const QModelIndex& at, const QVariant& value, int role) {
  if (!at.isValid()) return false;
  if (role == Qt::CheckStateRole) return Check(at, value.toInt() == Qt::Checked);
  return role == Qt::EditRole && Rename(at, value.toString());
}

bool KeyedTree::Check(const QModelIndex& at, bool on) {
  if (!check || RowAt(at).Check == Mark::None) return false;
  const QString key = RowAt(at).Key;
  const unsigned before = refreshes;
  // The toolkit selects nothing by a press on a mark.
  Select(key);
  if (!check(key, on)) return false;
  // A handler that refreshed the tree has told what the mark is.
  if (refreshes == before) SetMark(key, on);
  return true;
}

bool KeyedTree::Rename(const QModelIndex& at, const QString& text) {
  // While the handler asks something, the editor may lose the keyboard and give its text again.
  if (!rename || renaming || !RowAt(at).Renames) return false;
  const QString key = RowAt(at).Key;
  const QString taken = text.left(renameLimit);
  // Nor is a text changed that has merely been looked at and is longer than a new one can be.
  if (taken == RowAt(at).Text.left(renameLimit)) return true;
  const unsigned before = refreshes;
  renaming = true;
  const bool accepted = rename(key, taken);
  renaming = false;
  if (!accepted) return false;
  if (refreshes != before) return true;
  const QModelIndex now = Find(key);
  rows[now.internalId()].Text = taken;
  Q_EMIT dataChanged(now, now, {Qt::DisplayRole, Qt::EditRole, Qt::ToolTipRole});
  return true;
}

// After a drag the toolkit would empty what has been dragged.
bool KeyedTree::setItemData(const QModelIndex&, const QMap<int, QVariant>&) { return false; }

Qt::ItemFlags KeyedTree::flags(const QModelIndex& at) const {
  if (!at.isValid()) return Qt::NoItemFlags;
  const Row& row = RowAt(at);
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  flags.setFlag(Qt::ItemIsUserCheckable, check && row.Check != Mark::None);
  flags.setFlag(Qt::ItemIsEditable, rename && row.Renames);
  flags.setFlag(Qt::ItemIsDragEnabled, dropped && row.Drags);
  flags.setFlag(Qt::ItemIsDropEnabled, static_cast<bool>(dropped));
  flags.setFlag(Qt::ItemNeverHasChildren, places[at.internalId()].Children == 0);
  return flags;
}

QStringList KeyedTree::mimeTypes() const {
  // No other tree takes a node of this one.
  return {QStringLiteral("application/x-kestrel-node-") + QString::number(reinterpret_cast<quintptr>(this), 16)};
}

QMimeData* KeyedTree::mimeData(const QModelIndexList& dragged) const {
  if (dragged.isEmpty()) return nullptr;
  auto* data = new QMimeData;
  data->setData(mimeTypes().constFirst(), KeyOf(dragged.front()).toUtf8());
  return data;
}

QString KeyedTree::KeyIn(const QMimeData* data) const {
  return data == nullptr ? QString() : QString::fromUtf8(data->data(mimeTypes().constFirst()));
}

bool KeyedTree::canDropMimeData(const QMimeData* data, Qt::DropAction, int row, int, const QModelIndex& parent) const {
  const QString from = KeyIn(data);
  return row == -1 && parent.isValid() && !from.isEmpty() && mayDrop && mayDrop(from, KeyOf(parent));
}

bool KeyedTree::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                             const QModelIndex& parent) {
  if (!canDropMimeData(data, action, row, column, parent)) return false;
  const QString to = KeyOf(parent);
  dropped(KeyIn(data), to);
  return true;
}

}  // namespace kestrel::shell
