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
  using Text = std::function<QString(std::size_t index, int column)>;  ///< the columns behind "#"

  using Marked = std::function<bool(std::size_t index)>;
  using Mark = std::function<void(std::size_t index, bool on)>;
  using Choices = std::function<QStringList(std::size_t index)>;
  using Choose = std::function<void(std::size_t index, int choice)>;  ///< by its number from 0

  /// QStringList: what can be chosen in a cell.
  static constexpr int ChoicesRole = Qt::UserRole + 1;

  /// `titles`: of the columns behind "#".
  NumberedList(const QStringList& titles, Count count, Text text, QObject* owner);

  /// The column of words, which stands at the left and takes the room that is left over; the one behind "#" unless
  /// another is told. 0: all are numbers, which share the room. To be called before ShowIn.
  void SetWords(int column) { words = column; }
  /// Gives each row a check mark, at its index; Space sets it wherever in the row the keyboard is. `mark` is told what
  /// the person sets. To be called before ShowIn.
  void SetMarks(Marked marked, Mark mark);
  /// Makes `column` one of choice: a row with two alternatives or more shows its text as a combo box, which a click or
  /// F2 opens. To be called before ShowIn, for one column.
  void SetChoice(int column, Choices choices, Choose choose);
  /// Makes it the content of `view` and sets the widths of the columns.
  void ShowIn(QTreeView& view);
  /// Shows or hides the marks that SetMarks has given.
  void ShowMarks(bool shown);
  /// Rows have come to the end of the table or gone from it, nothing else has changed; `current` as in Refresh.
  void Follow(QTreeView& view, std::size_t current);
  /// The table has changed; `current` (1 or more; 0 is none) becomes the selected row of `view`.
  void Refresh(QTreeView& view, std::size_t current);
  /// The index of the row that is highlighted in `view`, 0 when there is none.
  static std::size_t Selected(const QTreeView& view);
  /// Enables `button` for as long as a row of `view` is highlighted.
  static void EnableWithRow(const QTreeView& view, QPushButton& button);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  int AlignmentOf(int column) const;
  bool Choosable(const QModelIndex& at) const;
  bool HasMarks() const { return marked && marksShown; }
  void TakeCount();

  QStringList columns;
  Count countOf;
  Text textOf;
  Marked marked;
  Mark mark;
  bool marksShown = true;
  int words = 1;
  int choiceColumn = -1;
  Choices choicesOf;
  Choose choose;
  int rows = 0;  ///< as the views know it
};

}  // namespace kestrel::shell
