#include "shell/parts/numbered_list.h"
#include "shell/word.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTest>
#include <QTreeView>
#include <algorithm>
#include <vector>

namespace kestrel::shell {
namespace {

constexpr int ModeColumn = 2;

struct Record {
  const char* Name;
  bool Marked;
  QStringList Modes;
  int Mode;
};

/// Three rows with a mark each; the second has one mode alone, the others have three.
class MarkedList : public testing::Test {
 protected:
  void SetUp() override {
    list.SetMarks([this](std::size_t index) { return records[index - 1].Marked; },
                  [this](std::size_t index, bool on) {
                    records[index - 1].Marked = on;
                    ++marks;
                  });
    list.SetChoice(
        ModeColumn, [this](std::size_t index) { return records[index - 1].Modes; },
        [this](std::size_t index, int choice) {
          records[index - 1].Mode = choice;
          ++choices;
        });
    list.ShowIn(view);
    list.Refresh(view, 1);
    view.setRootIsDecorated(false);
    view.resize(500, 200);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    QApplication::setActiveWindow(&view);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    view.setFocus();
  }

  QModelIndex At(int row, int column) { return list.index(row - 1, column); }
  void Click(const QPoint& place) { QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place); }
  void ClickCell(int row, int column) { Click(view.visualRect(At(row, column)).center()); }
  QPoint MarkOf(int row) {
    QStyleOptionViewItem option;
    option.initFrom(&view);
    option.rect = view.visualRect(At(row, 0));
    option.features = QStyleOptionViewItem::HasCheckIndicator;
    return view.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &view).center();
  }
  /// The box that is open in a cell.
  QComboBox* Box() { return view.findChild<QComboBox*>(); }
  bool BoxGone() {
    return QTest::qWaitFor([this] { return Box() == nullptr; });
  }
  QString ModeOf(int row) { return At(row, ModeColumn).data().toString(); }

  std::vector<Record> records{{"Alpha", false, {Word("Off"), Word("Low"), Word("High")}, 0},
                              {"Bravo", true, {Word("Only")}, 0},
                              {"Charlie", false, {Word("Off"), Word("Low"), Word("High")}, 2}};
  int marks = 0;
  int choices = 0;
  NumberedList list{{Word("Name"), Word("Mode")},
                    [this] { return records.size(); },
                    [this](std::size_t index, int column) {
                      const Record& record = records[index - 1];
                      return column == ModeColumn ? record.Modes[record.Mode] : Word(record.Name);
                    },
                    nullptr};
  QTreeView view;
  QAbstractItemModelTester tester{&list, QAbstractItemModelTester::FailureReportingMode::Warning};
};

TEST_F(MarkedList, MarksStandAtTheIndex) {
  EXPECT_EQ(At(1, 0).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
  EXPECT_EQ(At(2, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
  EXPECT_FALSE(At(2, 1).data(Qt::CheckStateRole).isValid());
  EXPECT_EQ(At(2, 0).data().toString(), Word("2"));
}

TEST_F(MarkedList, ClickOnAMarkSetsIt) {
  Click(MarkOf(3));
  EXPECT_TRUE(records[2].Marked);
  Click(MarkOf(2));
  EXPECT_FALSE(records[1].Marked);
  EXPECT_EQ(marks, 2);
  EXPECT_FALSE(records[0].Marked);
}

TEST_F(MarkedList, SpaceSetsTheMarkWhereverInTheRowTheKeyboardIs) {
  for (const int column : {0, 1}) {
    ClickCell(3, column);
    const bool before = records[2].Marked;
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_NE(records[2].Marked, before) << column;
  }
  EXPECT_EQ(marks, 2);
}

TEST_F(MarkedList, MarkThatChangesInTheTableIsShownByRefresh) {
  records[0].Marked = true;
  list.Refresh(view, 1);
  EXPECT_EQ(At(1, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
  EXPECT_EQ(marks, 0) << "that tells nobody";
}

TEST_F(MarkedList, MarksCanBeTakenAwayAndGivenBack) {
  list.ShowMarks(false);
  EXPECT_FALSE(At(2, 0).data(Qt::CheckStateRole).isValid());
  EXPECT_FALSE(list.flags(At(2, 0)).testFlag(Qt::ItemIsUserCheckable));
  ClickCell(3, 1);
  QTest::keyClick(&view, Qt::Key_Space);
  EXPECT_EQ(marks, 0);
  list.ShowMarks(true);
  EXPECT_EQ(At(2, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
  QTest::keyClick(&view, Qt::Key_Space);
  EXPECT_TRUE(records[2].Marked);
}

TEST_F(MarkedList, FollowTellsOfTheRowsAtTheEndAlone) {
  QSignalSpy inserted(&list, &QAbstractItemModel::rowsInserted);
  QSignalSpy removed(&list, &QAbstractItemModel::rowsRemoved);
  QSignalSpy changed(&list, &QAbstractItemModel::dataChanged);
  records.push_back({"Delta", false, {Word("Only")}, 0});
  list.Follow(view, 4);
  ASSERT_EQ(inserted.count(), 1);
  EXPECT_EQ(inserted[0][1].toInt(), 3);
  EXPECT_EQ(NumberedList::Selected(view), 4u);
  records.pop_back();
  list.Follow(view, 0);
  EXPECT_EQ(removed.count(), 1);
  EXPECT_EQ(NumberedList::Selected(view), 0u);
  EXPECT_EQ(changed.count(), 0);
}

TEST(NumbersAlone, ColumnsStandAtTheRightAndShareTheRoom) {
  NumberedList list(
      {Word("X"), Word("Y")}, [] { return std::size_t{1}; }, [](std::size_t, int) { return Word("1"); }, nullptr);
  list.SetWords(0);
  QTreeView view;
  view.setRootIsDecorated(false);
  view.resize(400, 100);
  list.ShowIn(view);
  view.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
  for (const int column : {0, 1, 2}) {
    EXPECT_EQ(list.index(0, column).data(Qt::TextAlignmentRole).toInt(), int(Qt::AlignRight | Qt::AlignVCenter));
  }
  EXPECT_NEAR(view.columnWidth(1), view.columnWidth(2), 1);
  EXPECT_GT(view.columnWidth(1), view.columnWidth(0));
}

TEST_F(MarkedList, IndexHasRoomBesideItsMark) {
  QStyleOptionViewItem option;
  option.initFrom(&view);
  const int needed = view.style()->pixelMetric(QStyle::PM_IndicatorWidth) +
                     view.fontMetrics().horizontalAdvance(At(1, 0).data().toString());
  EXPECT_GT(view.columnWidth(0), needed);
}

TEST_F(MarkedList, ClickOpensTheChoiceAndEnterTakesIt) {
  ClickCell(1, ModeColumn);
  QComboBox* box = Box();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->count(), 3);
  EXPECT_EQ(box->currentText(), Word("Off"));
  auto& popup = *box->view();
  ASSERT_TRUE(QTest::qWaitFor([&popup] { return popup.isVisible(); }));
  QTest::keyClick(&popup, Qt::Key_Down);
  QTest::keyClick(&popup, Qt::Key_Return);
  ASSERT_TRUE(BoxGone());
  EXPECT_EQ(ModeOf(1), Word("Low"));
  EXPECT_EQ(choices, 1);
}

TEST_F(MarkedList, F2OpensTheChoiceAndEscapeLeavesIt) {
  view.setCurrentIndex(At(3, ModeColumn));
  QTest::keyClick(&view, Qt::Key_F2);
  QComboBox* box = Box();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->currentText(), Word("High"));
  QTest::keyClick(box, Qt::Key_Escape);
  ASSERT_TRUE(BoxGone());
  EXPECT_EQ(choices, 0);
}

TEST_F(MarkedList, KeysChooseInTheCell) {
  view.setCurrentIndex(At(3, ModeColumn));
  QTest::keyClick(&view, Qt::Key_F2);
  QComboBox* box = Box();
  ASSERT_NE(box, nullptr);
  QTest::keyClick(box, Qt::Key_Up);
  ASSERT_TRUE(BoxGone());
  EXPECT_EQ(ModeOf(3), Word("Low"));
}

TEST_F(MarkedList, RowWithOneAlternativeHasNoChoice) {
  ClickCell(2, ModeColumn);
  EXPECT_EQ(Box(), nullptr);
  EXPECT_FALSE(list.flags(At(2, ModeColumn)).testFlag(Qt::ItemIsEditable));
  EXPECT_FALSE(list.setData(At(2, ModeColumn), 0, Qt::EditRole));
  EXPECT_EQ(ModeOf(2), Word("Only"));
}

TEST_F(MarkedList, ChoiceThatIsNotOfferedIsRefused) {
  for (const int choice : {-1, 3}) EXPECT_FALSE(list.setData(At(1, ModeColumn), choice, Qt::EditRole)) << choice;
  EXPECT_FALSE(list.setData(At(1, 1), 1, Qt::EditRole)) << "no column of choice";
  EXPECT_EQ(choices, 0);
}

// The arrow of a box at the right of the cell is what tells a choice from a text.
TEST_F(MarkedList, ChoiceLooksLikeABox) {
  const QImage seen = view.viewport()->grab().toImage();
  const auto right = [&](int row) {
    QRect cell = view.visualRect(At(row, ModeColumn));
    cell.setLeft(cell.right() - cell.height());
    const QRect part = cell.adjusted(2, 2, -2, -2);
    const qreal ratio = seen.devicePixelRatio();
    const QImage image =
        seen.copy(QRectF(part.x() * ratio, part.y() * ratio, part.width() * ratio, part.height() * ratio).toRect());
    int least = 255, most = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        least = std::min(least, qGray(image.pixel(x, y)));
        most = std::max(most, qGray(image.pixel(x, y)));
      }
    }
    return most - least;
  };
  EXPECT_GT(right(3), 48);
  EXPECT_LT(right(2), 16) << "a text alone leaves it empty";
}

}  // namespace
}  // namespace kestrel::shell
