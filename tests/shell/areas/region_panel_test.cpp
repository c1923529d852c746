#include <QSignalSpy>

#include "shell/areas/area_editor_fixture.h"

namespace kestrel::shell {
namespace {

class Regions : public AreaEditorWindow {
 protected:
  static areas::Area ThreeLines() {
    areas::Area area;
    area.Lines.Append({1, 2, 3, 4});
    area.Lines.Append({5, 6, 7, 8});
    area.Lines.Append({9, 10.125, 11, -12});
    return area;
  }
  QString Prompt() { return Label(Window(), "lblClickOn_0"); }
  /// Space on a row's check mark.
  void CheckRow(int row) {
    ClickIn("ListView1", row);
    QTest::keyClick(&ListOf("ListView1"), Qt::Key_Space);
  }
};

TEST_F(Regions, ListShowsTheSegmentsWithTwoDecimals) {
  OpenExisting(ThreeLines());
  EXPECT_EQ(RowOf("ListView1", 0), Texts({"#", "X1", "Y1", "X2", "Y2"}));
  ASSERT_EQ(RowsOf("ListView1"), 3);
  EXPECT_EQ(RowOf("ListView1", 1), Texts({"1", "1.00", "2.00", "3.00", "4.00"}));
  EXPECT_EQ(RowOf("ListView1", 3), Texts({"3", "9.00", "10.13", "11.00", "-12.00"}));
  EXPECT_EQ(ListOf("ListView1").model()->index(2, 0).data(Qt::UserRole).toString(), QStringLiteral("D3"));
  EXPECT_FALSE(ListOf("ListView1").model()->index(0, 0).data(Qt::CheckStateRole).isValid());
}

TEST_F(Regions, TwoClicksAddASegmentAndAnOddOneWaits) {
  OpenNew();
  ClickMap(10, 20);
  EXPECT_EQ(Prompt(), QStringLiteral("First point added, click for second point..."));
  EXPECT_EQ(RowsOf("ListView1"), 0);
  ClickMap(40, -30);
  EXPECT_EQ(Prompt(), QStringLiteral("Click on the map to add points..."));
  ASSERT_EQ(RowsOf("ListView1"), 1);
  EXPECT_EQ(RowOf("ListView1", 1), (QStringList{QStringLiteral("1"), Number(MapX(10)), Number(MapY(20)),
                                                Number(MapX(40)), Number(MapY(-30))}));
  EXPECT_EQ(SelectedIn("ListView1"), 1u);
  ClickMap(0, 0);
  EXPECT_EQ(Prompt(), QStringLiteral("First point added, click for second point..."));
  Press(Window(), "Command2_0");
  EXPECT_EQ(Areas()[1].Lines.UpperBound(), 1u);
}

TEST_F(Regions, SingleClickMakesAChain) {
  OpenNew();
  Tick("chkSingleClick");
  ClickMap(0, 0);
  EXPECT_EQ(Prompt(), QStringLiteral("First point added, click for second point..."));
  ClickMap(30, 0);
  EXPECT_EQ(Prompt(), QStringLiteral("Click on the map to add points..."));
  ClickMap(30, 40);
  ASSERT_EQ(RowsOf("ListView1"), 2);
  EXPECT_EQ(RowOf("ListView1", 2),
            (QStringList{QStringLiteral("2"), Number(MapX(30)), Number(MapY(0)), Number(MapX(30)), Number(MapY(40))}));
  EXPECT_EQ(SelectedIn("ListView1"), 2u);
  Tick("chkSingleClick");
  ClickMap(-50, -50);
  ClickMap(-60, -50);
  EXPECT_EQ(RowOf("ListView1", 3).at(1), Number(MapX(-50))) << "turned off, the next click starts anew";
}

TEST_F(Regions, SelectedRowIsDeletedAndTheNextOneSelected) {
  OpenExisting(ThreeLines());
  EXPECT_FALSE(Enabled("Command5"));
  EXPECT_FALSE(Enabled("Command4"));
  ClickIn("ListView1", 2);
  EXPECT_EQ(Editor().Selected, 2u);
  Press(Window(), "Command5");
  ASSERT_EQ(RowsOf("ListView1"), 2);
  EXPECT_EQ(RowOf("ListView1", 2).at(1), QStringLiteral("9.00"));
  EXPECT_EQ(SelectedIn("ListView1"), 2u);
  Press(Window(), "Command5");
  EXPECT_EQ(SelectedIn("ListView1"), 1u);
  Press(Window(), "Command5");
  EXPECT_EQ(RowsOf("ListView1"), 0);
  EXPECT_FALSE(Enabled("Command5"));
}

TEST_F(Regions, ResetTakesAllRows) {
  OpenExisting(ThreeLines());
  ClickIn("ListView1", 3);
  Press(Window(), "Command1");
  EXPECT_EQ(RowsOf("ListView1"), 0);
  EXPECT_TRUE(Work().Lines.Empty());
  EXPECT_FALSE(Enabled("Command4"));
}

TEST_F(Regions, BulkDeleteChecksRowsAndLeavesTheMapAlone) {
  OpenExisting(ThreeLines());
  EXPECT_FALSE(Visible("chkSelectAll"));
  Tick("chkBulkDelete");
  for (const char* button : {"Command3", "Command4", "Command1"}) EXPECT_FALSE(Enabled(button)) << button;
  EXPECT_FALSE(Visible("lblClickOn_0"));
  EXPECT_TRUE(Visible("chkSelectAll"));
  EXPECT_FALSE(Checked("chkSelectAll"));
  EXPECT_EQ(In<QPushButton>(Window(), "Command5").text(), QStringLiteral("Del Checked"));
  EXPECT_EQ(ListOf("ListView1").model()->index(0, 0).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
  ClickMap(0, 0);
  ClickMap(10, 0);
  EXPECT_EQ(RowsOf("ListView1"), 3);
  CheckRow(1);
  CheckRow(3);
  EXPECT_EQ(areas::HighLights(Editor()), (std::vector<std::size_t>{1, 3}));
  Press(Window(), "Command5");
  ASSERT_EQ(RowsOf("ListView1"), 1);
  EXPECT_EQ(RowOf("ListView1", 1), Texts({"1", "5.00", "6.00", "7.00", "8.00"}));
  EXPECT_EQ(SelectedIn("ListView1"), 0u);
  EXPECT_EQ(ListOf("ListView1").model()->index(0, 0).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
  Tick("chkBulkDelete");
  for (const char* button : {"Command3", "Command1", "lblClickOn_0"}) EXPECT_TRUE(Enabled(button)) << button;
  EXPECT_TRUE(Visible("lblClickOn_0"));
  EXPECT_FALSE(Visible("chkSelectAll"));
  EXPECT_EQ(In<QPushButton>(Window(), "Command5").text(), QStringLiteral("Del Line"));
  EXPECT_FALSE(ListOf("ListView1").model()->index(0, 0).data(Qt::CheckStateRole).isValid());
  ClickMap(0, 0);
  ClickMap(10, 0);
  EXPECT_EQ(RowsOf("ListView1"), 2);
}

TEST_F(Regions, SelectAllChecksAllOrNone) {
  OpenExisting(ThreeLines());
  Tick("chkBulkDelete");
  Tick("chkSelectAll");
  EXPECT_EQ(areas::HighLights(Editor()).size(), 3u);
  for (int row = 0; row < 3; ++row) {
    EXPECT_EQ(ListOf("ListView1").model()->index(row, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
  }
  Tick("chkSelectAll");
  EXPECT_TRUE(areas::HighLights(Editor()).empty());
  Tick("chkSelectAll");
  Press(Window(), "Command5");
  EXPECT_EQ(RowsOf("ListView1"), 0);
}

TEST_F(Regions, AnotherTypeEndsBulkDelete) {
  OpenExisting(ThreeLines());
  Tick("chkBulkDelete");
  Choose("Option1_2");
  Choose("Option1_1");
  EXPECT_FALSE(Checked("chkBulkDelete"));
  EXPECT_TRUE(Enabled("Command3"));
  EXPECT_EQ(Prompt(), QStringLiteral("Click on the map to add points..."));
}

TEST_F(Regions, AddLineTypesInTheFourValues) {
  OpenNew();
  InNextDialog([](QWidget& details) {
    EXPECT_EQ(details.objectName(), QStringLiteral("PointDetailsFrm"));
    const std::pair<const char*, const char*> labels[] = {
        {"Text1", "X1 Value"}, {"Text2", "Y1 Value"}, {"Text4", "X2 Value"}, {"Text3", "Y2 Value"}};
    for (const auto& [field, caption] : labels) {
      EXPECT_EQ(TextOf(details, field), QString());
      EXPECT_EQ(Label(details, (std::string("lbl") + field).c_str()), QString::fromLatin1(caption));
    }
    // By keyboard: the fields in their order on the window, "-" and letters are refused.
    for (const char* value : {"-1x", "2,5", "3.25", ""}) {
      QTest::keyClicks(QApplication::focusWidget(), QString::fromLatin1(value));
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QTest::keyClick(&details, Qt::Key_Return);
  });
  Press(Window(), "Command3");
  ASSERT_EQ(Work().Lines.UpperBound(), 1u);
  EXPECT_EQ(Work().Lines[1].X1, 1);
  EXPECT_EQ(Work().Lines[1].Y1, 2.5);
  EXPECT_EQ(Work().Lines[1].X2, 3.25);
  EXPECT_EQ(Work().Lines[1].Y2, 0);
  EXPECT_EQ(SelectedIn("ListView1"), 1u);
}

TEST_F(Regions, EditLineAndDoubleClickChangeTheSegment) {
  OpenExisting(ThreeLines());
  int opened = 0;
  const auto change = [&opened](QWidget& details) {
    ++opened;
    EXPECT_EQ(TextOf(details, "Text1"), QStringLiteral("9.00"));
    EXPECT_EQ(TextOf(details, "Text2"), QStringLiteral("10.13"));
    EXPECT_EQ(TextOf(details, "Text4"), QStringLiteral("11.00"));
    EXPECT_EQ(TextOf(details, "Text3"), opened == 1 ? QStringLiteral("-12.00") : QStringLiteral("13.00"));
    Type(details, "Text3", "13");
    Press(details, opened == 1 ? "Command1" : "Command2");
  };
  ClickIn("ListView1", 3);
  InNextDialog(change);
  Press(Window(), "Command4");
  EXPECT_EQ(Work().Lines[3].Y2, 13);
  EXPECT_EQ(RowOf("ListView1", 3), Texts({"3", "9.00", "10.13", "11.00", "13.00"}));
  EXPECT_EQ(SelectedIn("ListView1"), 3u);
  InNextDialog(change);
  DoubleClickIn("ListView1", 3);
  EXPECT_EQ(opened, 2);
  EXPECT_EQ(RowsOf("ListView1"), 3);
}

TEST_F(Regions, WindowOfALineComesBackToItsPlace) {
  OpenExisting(ThreeLines());
  InNextDialog([](QWidget& details) {
    details.move(120, 80);
    Press(details, "Command2");
  });
  Press(Window(), "Command3");
  EXPECT_EQ(station.Editors.AREAPOINTLEFT, 120 * 15);
  EXPECT_EQ(station.Editors.AREAPOINTTOP, 80 * 15);
  QPoint place;
  InNextDialog([&place](QWidget& details) {
    place = details.pos();
    QTest::keyClick(&details, Qt::Key_Escape);
  });
  Press(Window(), "Command3");
  EXPECT_EQ(place, QPoint(120, 80));
}

TEST_F(Regions, SelectedSegmentStandsOutWhileAircraftMove) {
  areas::Area area{.Color = 0x0000FF};
  area.Lines.Append({MapX(-40), MapY(30), MapX(40), MapY(30)});
  area.Lines.Append({MapX(-40), MapY(-30), MapX(40), MapY(-30)});
  OpenExisting(area);
  const QColor red(255, 0, 0);
  EXPECT_EQ(Seen(0, 30), red);
  EXPECT_NE(Seen(0, 32), red) << "one pixel wide";
  ClickIn("ListView1", 1);
  EXPECT_EQ(Seen(0, 32), red) << "five pixels wide";
  EXPECT_EQ(Seen(0, 28), red);
  EXPECT_NE(Seen(0, -28), red);
  const std::uint64_t draws = Picture().PlotDraws();
  program.Shown.Refresh(base::Changed::Plots);
  EXPECT_EQ(Picture().PlotDraws(), draws + 1);
  EXPECT_EQ(Seen(0, 32), red);
  ClickIn("ListView1", 2);
  EXPECT_NE(Seen(0, 32), red);
  EXPECT_EQ(Seen(0, -28), red);
  Press(Window(), "Command2_1");
  EXPECT_NE(Seen(0, -28), red);
  EXPECT_EQ(Seen(0, -30), red) << "the stored one shows again";
}

TEST_F(Regions, OfThousandsOfSegmentsOnlyTheNewRowIsTold) {
  areas::Area area;
  for (int line = 0; line < 5000; ++line) area.Lines.Append({1.0 * line, 2, 3, 4});
  OpenExisting(std::move(area));
  QAbstractItemModel& model = *ListOf("ListView1").model();
  QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
  QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
  QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
  ClickMap(0, 0);
  ClickMap(10, 0);
  Type(Window(), "Text13", "Much");
  ASSERT_EQ(inserted.count(), 1);
  EXPECT_EQ(inserted[0][1].toInt(), 5000);
  EXPECT_EQ(inserted[0][2].toInt(), 5000);
  EXPECT_EQ(changed.count(), 0);
  EXPECT_EQ(reset.count(), 0);
  EXPECT_EQ(SelectedIn("ListView1"), 5001u);
  EXPECT_TRUE(QTest::qWaitFor([this] {
    QTreeView& list = ListOf("ListView1");
    return list.viewport()->rect().contains(list.visualRect(list.model()->index(5000, 1)));
  })) << "the new row is scrolled into view";
}

}  // namespace
}  // namespace kestrel::shell
