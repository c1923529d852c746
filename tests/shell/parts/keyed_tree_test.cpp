#include "shell/parts/keyed_tree.h"
#include "shell/word.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QLineEdit>
#include <QMimeData>
#include <QPixmap>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTest>
#include <QTextDocument>
#include <QTreeView>
#include <algorithm>
#include <functional>
#include <memory>

namespace kestrel::shell {
namespace {

using Mark = KeyedTree::Mark;
using Row = KeyedTree::Row;

/// Two folders of two groups and one, which the tests know by their keys.
std::vector<Row> Folders() {
  return {{Word("C1"), Word("First"), -1, 1, Mark::On, true, false},
          {Word("C2"), Word("Second"), -1, 1, Mark::Off, true, false},
          {Word("D1"), Word("One"), 0, 2, Mark::On, true, true},
          {Word("D2"), Word("Two"), 1, 2, Mark::Off, true, true},
          {Word("D3"), Word("Three"), 0, 2, Mark::None, false, true}};
}

/// A tree in a view on the screen; what its handlers are told is kept as text.
class Tree : public testing::Test {
 protected:
  void SetUp() override {
    QPixmap red(16, 16), blue(16, 16);
    red.fill(Qt::red);
    blue.fill(Qt::blue);
    tree.SetImages({QIcon(red), QIcon(blue)});
    tree.SetCheck([this](const QString& key, bool on) {
      told << key + (on ? Word(" on") : Word(" off"));
      if (whenTold) whenTold();
      return accepts;
    });
    tree.SetRename(5, [this](const QString& key, const QString& text) {
      told << key + Word(" is ") + text;
      if (whenTold) whenTold();
      return accepts;
    });
    tree.SetDrag([](const QString& from, const QString& to) { return from.startsWith(u'D') && to.startsWith(u'C'); },
                 [this](const QString& from, const QString& to) { told << from + Word(" to ") + to; });
    tree.ShowIn(view);
    tree.Refresh(Folders());
    view.resize(300, 200);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    QApplication::setActiveWindow(&view);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    view.setFocus();
  }

  QModelIndex At(const char* key) { return tree.Find(Word(key)); }
  QString TextOf(const char* key) { return At(key).data().toString(); }
  /// The keys of a node's children, of the top for an empty key.
  QString ChildrenOf(const char* key) {
    const QModelIndex above = At(key);
    QStringList keys;
    for (int row = 0; row < tree.rowCount(above); ++row) keys << tree.KeyOf(tree.index(row, 0, above));
    return keys.join(u' ');
  }
  QPoint MarkOf(const char* key) {
    QStyleOptionViewItem option;
    option.initFrom(&view);
    option.rect = view.visualRect(At(key));
    option.features = QStyleOptionViewItem::HasCheckIndicator;
    return view.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &view).center();
  }
  void Click(QPoint place) { QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place); }
  void Stand(const char* key) { tree.Select(Word(key)); }
  /// Types a name into the place of the text of the node where the keyboard stands, and Enter.
  void Rename(const char* name) {
    QTest::keyClick(view.viewport(), Qt::Key_F2);
    auto* editor = view.findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, Word(name));
    QTest::keyClick(editor, Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([this] { return view.findChild<QLineEdit*>() == nullptr; }));
  }

  QStringList told;
  bool accepts = true;
  std::function<void()> whenTold;
  KeyedTree tree{nullptr};
  QTreeView view;
  QAbstractItemModelTester tester{&tree, QAbstractItemModelTester::FailureReportingMode::Warning};
};

TEST_F(Tree, ChildrenStandUnderTheirParentInTheOrderOfTheRows) {
  EXPECT_EQ(ChildrenOf(""), Word("C1 C2"));
  EXPECT_EQ(ChildrenOf("C1"), Word("D1 D3"));
  EXPECT_EQ(ChildrenOf("C2"), Word("D2"));
  EXPECT_EQ(ChildrenOf("D1"), QString());
  EXPECT_EQ(At("D3").parent(), At("C1"));
  EXPECT_FALSE(At("C2").parent().isValid());
}

TEST_F(Tree, BlankTextIsShownByWhatStandsForItAndEditedAsItIs) {
  std::vector<Row> rows = Folders();
  rows[0].Instead = Word("(none)");
  rows[1].Instead = Word("(none)");
  rows[1].Text = Word("  ");
  tree.Refresh(rows);
  EXPECT_EQ(TextOf("C1"), Word("First"));
  EXPECT_FALSE(At("C1").data(Qt::ForegroundRole).isValid());
  EXPECT_EQ(TextOf("C2"), Word("(none)"));
  EXPECT_TRUE(At("C2").data(Qt::ForegroundRole).isValid()) << "muted";
  EXPECT_EQ(At("C2").data(Qt::EditRole).toString(), Word("  "));
}

TEST_F(Tree, GoesAsDeepAsItsRows) {
  tree.Refresh({{Word("R"), {}}, {Word("A"), {}, 0}, {Word("U"), {}, 1}, {Word("V"), {}, 1}});
  EXPECT_EQ(ChildrenOf("A"), Word("U V"));
  EXPECT_EQ(At("V").parent().parent(), At("R"));
}

TEST_F(Tree, RowWhoseParentDoesNotStandBeforeItIsAtTheTop) {
  tree.Refresh({{Word("A"), {}, 1}, {Word("B"), {}, 1}, {Word("C"), {}, -7}, {Word("D"), {}, 900}});
  EXPECT_EQ(ChildrenOf(""), Word("A B C D"));
}

TEST_F(Tree, KeyThatIsNotThereIsNoNode) {
  EXPECT_FALSE(At("D4").isValid());
  EXPECT_FALSE(At("").isValid());
  EXPECT_EQ(tree.MarkOf(Word("D4")), Mark::None);
}

TEST_F(Tree, NodeShowsItsTextImageAndMark) {
  EXPECT_EQ(TextOf("D1"), Word("One"));
  const auto pixel = [this](const char* key) {
    return At(key).data(Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage().pixelColor(8, 8);
  };
  EXPECT_EQ(pixel("C1"), QColor(Qt::red));
  EXPECT_EQ(pixel("D1"), QColor(Qt::blue));
  EXPECT_EQ(At("C1").data(Qt::CheckStateRole).toInt(), Qt::Checked);
  EXPECT_EQ(At("C2").data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
  EXPECT_FALSE(At("D3").data(Qt::CheckStateRole).isValid());
}

TEST_F(Tree, ImageThatIsNotInTheListIsNone) {
  tree.Refresh({{Word("A"), {}, -1, 0}, {Word("B"), {}, -1, 3}, {Word("C"), {}, -1, -1}});
  for (const char* key : {"A", "B", "C"}) EXPECT_FALSE(At(key).data(Qt::DecorationRole).isValid()) << key;
}

TEST_F(Tree, TipShowsMarkupAsItIsWritten) {
  for (const char* text : {"<b>bold</b> & more", "&lt;", "plain"}) {
    tree.Refresh({{Word("A"), Word(text)}});
    QTextDocument shown;
    const QString tip = At("A").data(Qt::ToolTipRole).toString();
    ASSERT_TRUE(Qt::mightBeRichText(tip)) << "a tip takes it for markup";
    shown.setHtml(tip);
    EXPECT_EQ(shown.toPlainText(), Word(text));
  }
}

TEST_F(Tree, ClickOnAMarkTellsTheHandlerAndSelectsTheNode) {
  Click(MarkOf("C2"));
  EXPECT_EQ(told, QStringList{Word("C2 on")});
  EXPECT_EQ(tree.MarkOf(Word("C2")), Mark::On);
  EXPECT_EQ(tree.Selected(), Word("C2"));
  Click(MarkOf("C2"));
  EXPECT_EQ(told.last(), Word("C2 off"));
  EXPECT_EQ(tree.MarkOf(Word("C2")), Mark::Off);
  EXPECT_EQ(tree.MarkOf(Word("D2")), Mark::Off) << "of that node alone";
}

TEST_F(Tree, SpaceSetsTheMark) {
  Stand("C2");
  QTest::keyClick(view.viewport(), Qt::Key_Space);
  EXPECT_EQ(told, QStringList{Word("C2 on")});
  EXPECT_EQ(tree.MarkOf(Word("C2")), Mark::On);
}

TEST_F(Tree, MarkThatIsRefusedStays) {
  accepts = false;
  Click(MarkOf("C2"));
  EXPECT_EQ(told, QStringList{Word("C2 on")});
  EXPECT_EQ(tree.MarkOf(Word("C2")), Mark::Off);
}

TEST_F(Tree, NodeWithoutAMarkGetsNone) {
  Stand("D3");
  QTest::keyClick(view.viewport(), Qt::Key_Space);
  tree.SetMark(Word("D3"), true);
  EXPECT_EQ(told, QStringList());
  EXPECT_EQ(tree.MarkOf(Word("D3")), Mark::None);
}

TEST_F(Tree, TextTooLongToBeTypedIsNotCutByALookAtIt) {
  std::vector<Row> rows = Folders();
  rows[0].Text = Word("Longer than five");
  tree.Refresh(rows);
  Stand("C1");
  QTest::keyClick(view.viewport(), Qt::Key_F2);
  auto* editor = view.findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  QTest::keyClick(editor, Qt::Key_Return);
  ASSERT_TRUE(QTest::qWaitFor([this] { return view.findChild<QLineEdit*>() == nullptr; }));
  EXPECT_EQ(told, QStringList());
  EXPECT_EQ(TextOf("C1"), Word("Longer than five"));
}

TEST_F(Tree, HandlerThatRefreshesHasTheLastWord) {
  whenTold = [this] {
    std::vector<Row> rows = Folders();
    rows[1].Text = Word("Told");
    tree.Refresh(rows);
  };
  Click(MarkOf("C2"));
  EXPECT_EQ(told, QStringList{Word("C2 on")});
  EXPECT_EQ(tree.MarkOf(Word("C2")), Mark::Off) << "as the refreshed rows say";
  Stand("C2");
  Rename("Mine");
  EXPECT_EQ(told.last(), Word("C2 is Mine"));
  EXPECT_EQ(TextOf("C2"), Word("Told"));
}

TEST_F(Tree, HandlerMayTakeTheNodeAway) {
  whenTold = [this] { tree.RefreshClosed({}, {}); };
  Click(MarkOf("C2"));
  EXPECT_EQ(told, QStringList{Word("C2 on")});
  EXPECT_EQ(tree.rowCount(), 0);
}

TEST_F(Tree, F2RenamesANodeInPlace) {
  Stand("C1");
  Rename("Other");
  EXPECT_EQ(told, QStringList{Word("C1 is Other")});
  EXPECT_EQ(TextOf("C1"), Word("Other"));
}

TEST_F(Tree, NoMoreIsTypedThanATextCanHave) {
  Stand("C1");
  QTest::keyClick(view.viewport(), Qt::Key_F2);
  auto* editor = view.findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  editor->selectAll();
  QTest::keyClicks(editor, Word("Sevenxx"));
  EXPECT_EQ(editor->text(), Word("Seven"));
  QTest::keyClick(editor, Qt::Key_Return);
  ASSERT_TRUE(QTest::qWaitFor([this] { return view.findChild<QLineEdit*>() == nullptr; }));
  EXPECT_EQ(TextOf("C1"), Word("Seven"));
  EXPECT_EQ(told, QStringList{Word("C1 is Seven")});
}

TEST_F(Tree, TextThatIsRefusedStays) {
  accepts = false;
  Stand("C1");
  Rename("Other");
  EXPECT_EQ(told, QStringList{Word("C1 is Other")});
  EXPECT_EQ(TextOf("C1"), Word("First"));
}

TEST_F(Tree, RenamingToTheSameTextTellsNobody) {
  Stand("C1");
  Rename("First");
  EXPECT_EQ(told, QStringList());
}

TEST_F(Tree, EscapeGivesTheRenamingUp) {
  Stand("C1");
  QTest::keyClick(view.viewport(), Qt::Key_F2);
  auto* editor = view.findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  QTest::keyClicks(editor, Word("x"));
  QTest::keyClick(editor, Qt::Key_Escape);
  ASSERT_TRUE(QTest::qWaitFor([this] { return view.findChild<QLineEdit*>() == nullptr; }));
  EXPECT_EQ(TextOf("C1"), Word("First"));
  EXPECT_EQ(told, QStringList());
}

TEST_F(Tree, NodeThatMayNotBeRenamedIsNot) {
  Stand("D3");
  QTest::keyClick(view.viewport(), Qt::Key_F2);
  EXPECT_EQ(view.findChild<QLineEdit*>(), nullptr);
  EXPECT_FALSE(tree.setData(At("D3"), Word("x"), Qt::EditRole));
}

TEST_F(Tree, DoubleClickDoesNotRename) {
  Stand("D1");
  QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(At("D1")).center());
  EXPECT_EQ(view.findChild<QLineEdit*>(), nullptr);
}

TEST_F(Tree, DropTellsTheHandlerAndMovesNothing) {
  const std::unique_ptr<QMimeData> data(tree.mimeData({At("D1")}));
  EXPECT_TRUE(tree.canDropMimeData(data.get(), Qt::MoveAction, -1, -1, At("C2")));
  EXPECT_TRUE(tree.dropMimeData(data.get(), Qt::MoveAction, -1, -1, At("C2")));
  EXPECT_EQ(told, QStringList{Word("D1 to C2")});
  EXPECT_EQ(ChildrenOf("C1"), Word("D1 D3"));
}

TEST_F(Tree, DropIsTakenOnlyWhereItMayBe) {
  const std::unique_ptr<QMimeData> group(tree.mimeData({At("D1")}));
  EXPECT_FALSE(tree.dropMimeData(group.get(), Qt::MoveAction, -1, -1, At("D2"))) << "on a group";
  EXPECT_FALSE(tree.dropMimeData(group.get(), Qt::MoveAction, 0, 0, At("C2"))) << "between two nodes";
  EXPECT_FALSE(tree.dropMimeData(group.get(), Qt::MoveAction, -1, -1, {})) << "on no node";
  KeyedTree other(nullptr);
  other.Refresh({});
  QMimeData foreign;
  foreign.setData(other.mimeTypes().first(), "D1");
  EXPECT_FALSE(tree.dropMimeData(&foreign, Qt::MoveAction, -1, -1, At("C2"))) << "from another tree";
  EXPECT_EQ(told, QStringList());
}

TEST_F(Tree, OnlyWhatDragsCanBeTaken) {
  EXPECT_TRUE(At("D1").flags().testFlag(Qt::ItemIsDragEnabled));
  EXPECT_FALSE(At("C1").flags().testFlag(Qt::ItemIsDragEnabled));
}

// What the toolkit does to the node that has been moved away.
TEST_F(Tree, NothingIsEmptiedAfterADrag) {
  EXPECT_FALSE(tree.setItemData(At("D1"), {{Qt::CheckStateRole, QVariant()}, {Qt::EditRole, QVariant()}}));
  EXPECT_FALSE(tree.removeRows(0, 1, At("C1")));
  EXPECT_EQ(TextOf("D1"), Word("One"));
  EXPECT_EQ(tree.MarkOf(Word("D1")), Mark::On);
  EXPECT_EQ(told, QStringList());
}

TEST_F(Tree, RefreshKeepsByKeyWhatIsOpenAndSelected) {
  view.expand(At("C2"));
  Stand("D2");
  std::vector<Row> rows = Folders();
  rows.insert(rows.begin(), {Word("C0"), Word("New")});
  for (std::size_t row = 3; row < rows.size(); ++row) ++rows[row].Parent;
  tree.Refresh(rows);
  EXPECT_EQ(ChildrenOf(""), Word("C0 C1 C2"));
  EXPECT_TRUE(view.isExpanded(At("C2")));
  EXPECT_FALSE(view.isExpanded(At("C1")));
  EXPECT_EQ(tree.Selected(), Word("D2"));
  EXPECT_EQ(tree.KeyOf(view.currentIndex()), Word("D2"));
}

TEST_F(Tree, RefreshLeavesClosedWhatIsClosedOverTheSelectedNode) {
  Stand("D2");
  view.expand(At("C1"));
  view.collapse(At("C2"));
  std::vector<Row> rows = Folders();
  rows.push_back({Word("C3"), Word("Third")});
  tree.Refresh(rows);
  EXPECT_TRUE(view.isExpanded(At("C1")));
  EXPECT_FALSE(view.isExpanded(At("C2")));
}

TEST_F(Tree, RefreshSelectsNothingWhenTheNodeIsGone) {
  Stand("C2");
  tree.Refresh({{Word("C1"), Word("First")}});
  EXPECT_EQ(tree.Selected(), QString());
}

TEST_F(Tree, RefreshOfTheSameNodesLeavesTheViewAlone) {
  view.expand(At("C1"));
  Stand("D1");
  int resets = 0;
  QStringList changed;
  QObject::connect(&tree, &QAbstractItemModel::modelReset, &view, [&resets] { ++resets; });
  QObject::connect(&tree, &QAbstractItemModel::dataChanged, &view,
                   [this, &changed](const QModelIndex& first, const QModelIndex& last) {
                     changed << tree.KeyOf(first) + u'-' + tree.KeyOf(last);
                   });
  std::vector<Row> rows = Folders();
  rows[3].Check = Mark::On;
  rows[4].Text = Word("Drei");
  tree.Refresh(rows);
  EXPECT_EQ(resets, 0);
  EXPECT_EQ(changed, (QStringList{Word("D3-D3"), Word("D2-D2")}));
  EXPECT_EQ(tree.MarkOf(Word("D2")), Mark::On);
  EXPECT_EQ(TextOf("D3"), Word("Drei"));
  EXPECT_TRUE(view.isExpanded(At("C1")));
  EXPECT_EQ(told, QStringList()) << "handlers hear of the person alone";
}

TEST_F(Tree, KeptMarkFollowsItsKey) {
  std::vector<Row> rows = Folders();
  for (Row& row : rows) row.Check = Mark::Kept;
  rows.erase(rows.begin());
  for (Row& row : rows) row.Parent = -1;
  rows.push_back({Word("D9"), {}, -1, 0, Mark::Kept});
  tree.Refresh(rows);
  EXPECT_EQ(tree.MarkOf(Word("D1")), Mark::On);
  EXPECT_EQ(tree.MarkOf(Word("C2")), Mark::Off);
  EXPECT_EQ(tree.MarkOf(Word("D3")), Mark::Off) << "it had none";
  EXPECT_EQ(tree.MarkOf(Word("D9")), Mark::Off) << "it is new";
}

TEST_F(Tree, RefreshKeepsThePlaceOfTheView) {
  std::vector<Row> rows;
  rows.push_back({Word("top"), Word("top")});
  for (int row = 0; row < 200; ++row) rows.push_back({QString::number(row), QString::number(row), 0});
  tree.Refresh(rows);
  view.expand(At("top"));
  view.doItemsLayout();
  Stand("3");
  view.verticalScrollBar()->setValue(100);
  ASSERT_EQ(view.verticalScrollBar()->value(), 100);
  rows.pop_back();
  tree.Refresh(rows);
  view.doItemsLayout();
  EXPECT_EQ(view.verticalScrollBar()->value(), 100);
}

TEST_F(Tree, WhatIsOpenAndSelectedFollowsItsNewKey) {
  view.expand(At("C1"));
  Stand("D2");
  std::vector<Row> rows = Folders();
  std::swap(rows[0].Text, rows[1].Text);
  tree.Refresh(rows, [](const QString& before) {
    if (before == u"C1") return Word("C2");
    return before == u"D2" ? Word("D3") : QString();
  });
  EXPECT_FALSE(view.isExpanded(At("C1")));
  EXPECT_TRUE(view.isExpanded(At("C2"))) << "though the keys of all nodes are those that they were";
  EXPECT_EQ(tree.Selected(), Word("D3"));
  tree.Refresh(rows, [](const QString&) { return QString(); });
  EXPECT_FALSE(view.isExpanded(At("C2"))) << "the record is gone";
  EXPECT_EQ(tree.Selected(), QString());
}

TEST_F(Tree, RefreshClosedClosesAllAndShowsTheNodeThatIsAsked) {
  view.expandAll();
  tree.RefreshClosed(Folders(), Word("D2"));
  EXPECT_FALSE(view.isExpanded(At("C1")));
  EXPECT_TRUE(view.isExpanded(At("C2"))) << "the node stands in it";
  EXPECT_EQ(tree.Selected(), Word("D2"));
  EXPECT_TRUE(view.viewport()->rect().contains(view.visualRect(At("D2")).center()));
  tree.RefreshClosed(Folders(), Word("C2"));
  EXPECT_FALSE(view.isExpanded(At("C2")));
  EXPECT_EQ(tree.Selected(), Word("C2"));
}

TEST_F(Tree, RefreshClosedSelectsNothingWithoutSuchANode) {
  for (const char* key : {"", "C7"}) {
    Stand("C1");
    tree.RefreshClosed(Folders(), Word(key));
    EXPECT_EQ(tree.Selected(), QString()) << key;
    EXPECT_EQ(ChildrenOf(""), Word("C1 C2")) << key;
  }
}

}  // namespace
}  // namespace kestrel::shell
