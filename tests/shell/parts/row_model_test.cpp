#include "shell/parts/row_model.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <random>
#include <string>
#include <vector>

namespace kestrel::shell {
namespace {

struct ModelRow {
  int Number = 0;
  int Shown = 0;
  int Key() const { return Number; }
  bool operator==(const ModelRow&) const = default;
};

class Model final : public RowModel<ModelRow> {
 public:
  QVariant data(const QModelIndex& index, int role) const override {
    return index.isValid() && role == Qt::DisplayRole ? QVariant(At(index).Shown) : QVariant();
  }
};

std::vector<ModelRow> Shown(const Model& model) {
  std::vector<ModelRow> rows;
  for (int row = 0; row < model.rowCount(); ++row) rows.push_back(model.At(model.index(row)));
  return rows;
}

TEST(RowModel, SameRowsChangeNothing) {
  Model model;
  model.Show({{1, 1}, {2, 2}});
  QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
  QSignalSpy put(&model, &QAbstractItemModel::rowsInserted);
  QSignalSpy taken(&model, &QAbstractItemModel::rowsRemoved);
  model.Show({{1, 1}, {2, 2}});
  EXPECT_EQ(changed.count() + put.count() + taken.count(), 0);
  model.Show({{1, 1}, {2, 7}});
  EXPECT_EQ(changed.count(), 1);
  EXPECT_EQ(put.count() + taken.count(), 0);
}

TEST(RowModel, NeighbouringRowsComeAndGoTogether) {
  Model model;
  QSignalSpy put(&model, &QAbstractItemModel::rowsInserted);
  QSignalSpy taken(&model, &QAbstractItemModel::rowsRemoved);
  model.Show({{1, 1}, {2, 2}, {3, 3}, {4, 4}});
  EXPECT_EQ(put.count(), 1);
  model.Show({{1, 1}, {4, 4}});
  EXPECT_EQ(taken.count(), 1);
}

TEST(RowModel, ItemsThatStayKeepTheirIndex) {
  Model model;
  model.Show({{1, 1}, {2, 2}, {3, 3}});
  const QPersistentModelIndex third = model.index(2);
  model.Show({{0, 0}, {2, 5}, {3, 8}, {9, 9}});
  ASSERT_TRUE(third.isValid());
  EXPECT_EQ(third.row(), 2);
  EXPECT_EQ(model.At(third).Shown, 8);
  model.Show({{0, 0}});
  EXPECT_FALSE(third.isValid());
}

TEST(RowModel, AnyRowsBecomeAnyOtherRows) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  Model model;
  const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);
  for (int round = 0; round < 500; ++round) {
    std::vector<ModelRow> wanted(random() % 12);
    // Few numbers, so that keys come twice and change places.
    for (ModelRow& row : wanted) row = {static_cast<int>(random() % 8), static_cast<int>(random() % 3)};
    model.Show(wanted);
    ASSERT_EQ(Shown(model), wanted) << "round " << round;
  }
}

}  // namespace
}  // namespace kestrel::shell
