// Filling the tree that folders of areas and frequencies are shown in, against the toolkit's own model of the same
// rows: 5,000 groups with 15 rows each. One ratio from one run.
#include <QApplication>
#include <QElapsedTimer>
#include <QStandardItemModel>
#include <QTreeView>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "shell/parts/keyed_tree.h"

namespace {

using namespace kestrel::shell;

constexpr int Groups = 5000, Each = 15, Rounds = 9;

double Milliseconds(const QElapsedTimer& watch) { return static_cast<double>(watch.nsecsElapsed()) / 1e6; }

double FillOurs() {
  QTreeView view;
  KeyedTree tree(nullptr);
  tree.ShowIn(view);
  QElapsedTimer watch;
  watch.start();
  std::vector<KeyedTree::Row> rows;
  rows.reserve(Groups * (Each + 1));
  for (int group = 0; group < Groups; ++group) {
    const auto parent = static_cast<int>(rows.size());
    rows.push_back({u'C' + QString::number(group), QStringLiteral("Group"), -1, 1, KeyedTree::Mark::On});
    for (int child = 0; child < Each; ++child) {
      rows.push_back({u'D' + QString::number(parent + child), QStringLiteral("Row"), parent, 2, KeyedTree::Mark::On});
    }
  }
  tree.RefreshClosed(std::move(rows), QStringLiteral("C4999"));
  return Milliseconds(watch);
}

double FillTheirs() {
  QTreeView view;
  view.setUniformRowHeights(true);
  QStandardItemModel model;
  view.setModel(&model);
  QElapsedTimer watch;
  watch.start();
  for (int group = 0; group < Groups; ++group) {
    auto* above = new QStandardItem(QStringLiteral("Group"));
    above->setData(QString(u'C' + QString::number(group)), Qt::UserRole);
    above->setCheckState(Qt::Checked);
    for (int child = 0; child < Each; ++child) {
      auto* item = new QStandardItem(QStringLiteral("Row"));
      item->setData(QString(u'D' + QString::number(child)), Qt::UserRole);
      item->setCheckState(Qt::Checked);
      above->appendRow(item);
    }
    model.appendRow(above);
  }
  return Milliseconds(watch);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  // The best of some rounds each, in turn, so that what else the machine does spoils neither.
  double ours = FillOurs(), theirs = FillTheirs();
  for (int round = 1; round < Rounds; ++round) {
    ours = std::min(ours, FillOurs());
    theirs = std::min(theirs, FillTheirs());
  }
  std::printf("%d rows: %.1f ms, the toolkit's model %.1f ms, ratio %.2f\n", Groups * (Each + 1), ours, theirs,
              ours / theirs);
}
