#include <gtest/gtest.h>

#include <QFont>
#include <QTextDocument>

#include "shell/parts/keyed_tree.h"
#include "shell/word.h"

namespace kestrel::shell {
namespace {

/// Ten airfields of two towers each, as "A1", "U1", "V1"; keeps the keys of the rows that are to be drawn anew.
class TreeNotes : public testing::Test {
 protected:
  void SetUp() override {
    Fill(10);
    QObject::connect(&tree, &QAbstractItemModel::dataChanged, &tree,
                     [this](const QModelIndex& first, const QModelIndex& last) {
                       EXPECT_EQ(first, last);
                       drawn << tree.KeyOf(first);
                     });
  }
  void Fill(int airfields) {
    std::vector<KeyedTree::Row> rows;
    for (int i = 1; i <= airfields; ++i) {
      const QString number = QString::number(i);
      const int airfield = static_cast<int>(rows.size());
      rows.push_back({u'A' + number, Word("Airfield ") + number});
      rows.push_back({u'U' + number, Word("297500"), airfield});
      rows.push_back({u'V' + number, Word("138050"), airfield});
    }
    tree.Refresh(std::move(rows));
  }
  /// The keys that were drawn since it was last asked.
  QStringList Drawn() {
    QStringList keys;
    keys.swap(drawn);
    keys.sort();
    return keys;
  }
  bool Bold(const char* key) { return tree.Find(Word(key)).data(Qt::FontRole).value<QFont>().bold(); }
  QString Tip(const char* key) {
    QTextDocument shown;
    shown.setHtml(tree.Find(Word(key)).data(Qt::ToolTipRole).toString());
    return shown.toPlainText();
  }

  QStringList drawn;
  KeyedTree tree{nullptr};
};

TEST_F(TreeNotes, MakeTheirNodesBoldAndStandInTheTips) {
  tree.SetNotes({{Word("U3"), Word("on UHF")}, {Word("V9"), Word("a < b")}});
  EXPECT_TRUE(Bold("U3"));
  EXPECT_EQ(Tip("U3"), Word("297500\non UHF"));
  EXPECT_EQ(Tip("V9"), Word("138050\na < b"));
  EXPECT_EQ(tree.Find(Word("U3")).data(Qt::AccessibleDescriptionRole).toString(), Word("on UHF"));
  EXPECT_EQ(tree.Find(Word("U3")).data().toString(), Word("297500")) << "the text stays";
  EXPECT_FALSE(Bold("U4"));
  EXPECT_EQ(Tip("U4"), Word("297500"));
}

TEST_F(TreeNotes, DrawOnlyTheRowsThatTheyConcern) {
  Fill(30000);
  drawn.clear();
  tree.SetNotes({{Word("U3"), Word("on UHF")}, {Word("V9"), Word("on VHF")}});
  EXPECT_EQ(Drawn(), (QStringList{Word("U3"), Word("V9")}));
  tree.SetNotes({{Word("V9"), Word("on VHF")}, {Word("U29999"), Word("on UHF")}});
  EXPECT_EQ(Drawn(), (QStringList{Word("U29999"), Word("U3")}));
  EXPECT_FALSE(Bold("U3"));
  EXPECT_EQ(Tip("U3"), Word("297500"));
  tree.SetNotes({{Word("V9"), Word("on UHF")}, {Word("U29999"), Word("on UHF")}});
  EXPECT_EQ(Drawn(), QStringList{Word("V9")});
  EXPECT_EQ(Tip("V9"), Word("138050\non UHF"));
  tree.SetNotes({});
  EXPECT_EQ(Drawn(), (QStringList{Word("U29999"), Word("V9")}));
  tree.SetNotes({});
  EXPECT_EQ(Drawn(), QStringList());
}

TEST_F(TreeNotes, OfKeysThatAreNotThereSayNothingUntilTheyAre) {
  tree.SetNotes({{Word("U11"), Word("on UHF")}});
  EXPECT_EQ(Drawn(), QStringList());
  Fill(11);
  EXPECT_TRUE(Bold("U11"));
}

}  // namespace
}  // namespace kestrel::shell
