#pragma once

#include <QAbstractItemModel>
#include <QHash>
#include <QIcon>
#include <QPointer>
#include <QString>
#include <QTreeView>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace kestrel::shell {

/// A tree over tables of the station. It holds a copy of what is shown and nothing else: each node has a key by which a
/// handler finds its record, and whatever the person does to a node is told to the handler, which changes the tables
/// and refreshes the tree. Qt::UserRole of a node is its key. Texts are shown as they are, never as markup.
class KeyedTree final : public QAbstractItemModel {
  Q_OBJECT
 public:
  enum class Mark : std::uint8_t {
    None,  ///< no check mark
    Off,
    On,
    Kept,  ///< in a Refresh: that of the node which had the key before; Off when there was none
  };
  /// What a node is made of.
  struct Row {
    QString Key;  ///< different for each node; of equal ones the first is found
    QString Text;
    int Parent = -1;  ///< number of its parent in the list of rows, from 0; -1 at the top of the tree
    int Image = 0;    ///< number of its image, from 1; 0 is none
    Mark Check = Mark::None;
    bool Renames = false;  ///< its text can be edited in place
    bool Drags = false;    ///< it can be dragged
    QString Instead = {};  ///< shown, muted, where the text is blank, so that the node is seen; never edited
  };

  /// The person has set (`on`) or taken away the mark of a node. False: the mark stays as it was.
  using OnCheck = std::function<bool(const QString& key, bool on)>;
  /// The person has given a node another text. False: the text stays as it was.
  using OnRename = std::function<bool(const QString& key, const QString& text)>;
  /// Whether a node may be dropped on another.
  using MayDrop = std::function<bool(const QString& from, const QString& to)>;
  /// A node has been dropped on another. The tree has moved nothing.
  using OnDrop = std::function<void(const QString& from, const QString& to)>;
  /// The key that the node of a record has now, empty when the record is gone.
  using KeyNow = std::function<QString(const QString& before)>;

  using QAbstractItemModel::QAbstractItemModel;

  void SetImages(std::vector<QIcon> list) { images = std::move(list); }
  // Handlers may refresh the tree. Without one, a mark cannot be changed, a text not renamed, a node not dragged.
  void SetCheck(OnCheck handler) { check = std::move(handler); }
  /// `limit`: characters that a text can have.
  void SetRename(int limit, OnRename handler);
  void SetDrag(MayDrop may, OnDrop dropped);

  /// Makes it the content of `view`, its only one, without a header; after the handlers have been set. F2 renames,
  /// Space sets the mark, and a click on a mark selects its node; a double click on a node without children is left to
  /// whoever wants it.
  void ShowIn(QTreeView& view);
  /// The rows are these now, children in the order of the list. A row whose parent does not stand before it is at the
  /// top of the tree. The view keeps by key what is open and what is selected, and it keeps its place. Where records
  /// have been given other keys, `now` tells them.
  void Refresh(std::vector<Row> rows, const KeyNow& now = {});
  /// Refresh with all nodes closed. The node `key` is selected and brought into view; none is, when there is none.
  void RefreshClosed(std::vector<Row> rows, const QString& key);
  /// Selects the node `key` and brings it into view, opening those above it; when there is none, nothing is selected.
  void Select(const QString& key);

  /// The node of that key; an index that is not valid when there is none. In constant time.
  QModelIndex Find(const QString& key) const;
  /// The key of a node, empty for an index that is not valid.
  QString KeyOf(const QModelIndex& at) const;
  /// The key of the node that is highlighted, empty when there is none.
  QString Selected() const;
  /// The mark of a node, None when there is no such node.
  Mark MarkOf(const QString& key) const;
  /// Sets the mark of a node that has one; no handler is told.
  void SetMark(const QString& key, bool on);
  /// What is said of a few nodes, by key: they are bold, with the words below the text in their tips; no other is. The
  /// notes stay over a Refresh, and those of keys that are not there say nothing. Only rows whose words differ from
  /// those before are drawn anew.
  void SetNotes(QHash<QString, QString> words);

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& at) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& at, int role) const override;
  bool setData(const QModelIndex& at, const QVariant& value, int role) override;
  bool setItemData(const QModelIndex& at, const QMap<int, QVariant>& roles) override;
  Qt::ItemFlags flags(const QModelIndex& at) const override;
  QStringList mimeTypes() const override;
  QMimeData* mimeData(const QModelIndexList& dragged) const override;
  Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
  bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                       const QModelIndex& parent) const override;
  bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                    const QModelIndex& parent) override;

 private:
  /// Where a node stands. Children of one parent lie together in `order`.
  struct Place {
    int Row = 0;         ///< among its parent's children
    int FirstChild = 0;  ///< in `order`
    int Children = 0;
  };

  QString TipOf(const Row& row) const;
  const Row& RowAt(const QModelIndex& at) const { return rows[at.internalId()]; }
  QModelIndex IndexOf(int node) const;
  bool SameNodes(const std::vector<Row>& fresh) const;
  /// Takes Mark::Kept and parents that are not to be out of `fresh`.
  void Settle(std::vector<Row>& fresh) const;
  /// Takes rows of the same keys and parents, telling the views what differs.
  void Update(std::vector<Row> fresh);
  void Reset(std::vector<Row> fresh);
  bool Check(const QModelIndex& at, bool on);
  bool Rename(const QModelIndex& at, const QString& text);
  /// The key in what is dragged, empty when it comes from elsewhere.
  QString KeyIn(const QMimeData* data) const;

  QPointer<QTreeView> view;
  std::vector<Row> rows;
  std::vector<Place> places;            ///< of the rows, the top of the tree after them
  std::vector<int> order;               ///< numbers of the rows, the children of each parent together
  mutable QHash<QString, int> numbers;  ///< of the rows by key; made when it is first asked
  QHash<QString, QString> notes;        ///< words by key
  std::vector<QIcon> images;
  OnCheck check;
  OnRename rename;
  MayDrop mayDrop;
  OnDrop dropped;
  int renameLimit = 0;
  bool renaming = false;
  unsigned refreshes = 0;
};

}  // namespace kestrel::shell
