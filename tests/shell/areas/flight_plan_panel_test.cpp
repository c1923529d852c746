#include "shell/areas/area_editor_fixture.h"

namespace kestrel::shell {
namespace {

using areas::PointType;

class FlightPlans : public AreaEditorWindow {
 protected:
  static areas::Area Plan() {
    areas::Area area{.Type = areas::AreaType::FlightPlan};
    area.Points.Append({1, 2, 3000, PointType::Nav});
    area.Points.Append({4, 5, 6000.25, PointType::Target});
    return area;
  }
};

TEST_F(FlightPlans, ListShowsThePointsWithTheirTypes) {
  OpenExisting(Plan());
  EXPECT_EQ(RowOf("ListView2", 0), Texts({"#", "X", "Y", "ELEVATION", "POINT TYPE"}));
  EXPECT_EQ(RowOf("ListView2", 1), Texts({"1", "1.00", "2.00", "3000.00", "Nav Point"}));
  EXPECT_EQ(RowOf("ListView2", 2), Texts({"2", "4.00", "5.00", "6000.25", "Target Point"}));
  EXPECT_EQ(ListOf("ListView2").model()->index(1, 0).data(Qt::UserRole).toString(), QStringLiteral("D2"));
}

TEST_F(FlightPlans, ClickAddsANavPointAtZero) {
  OpenExisting(Plan());
  ClickMap(10, 20);
  EXPECT_EQ(RowOf("ListView2", 3), (QStringList{QStringLiteral("3"), Number(MapX(10)), Number(MapY(20)),
                                                QStringLiteral("0"), QStringLiteral("Nav Point")}));
  EXPECT_EQ(RowOf("ListView2", 1).at(3), QStringLiteral("3000.00")) << "the first ones stand as the opening wrote them";
  EXPECT_EQ(SelectedIn("ListView2"), 3u);
  EXPECT_EQ(Editor().SelectedPoint, 3u);
}

TEST_F(FlightPlans, AddPointTypesInTheValuesAndTheType) {
  OpenNew();
  Choose("Option1_5");
  InNextDialog([](QWidget& details) {
    EXPECT_EQ(details.objectName(), QStringLiteral("FPPointDetailsFrm"));
    const std::pair<const char*, const char*> labels[] = {
        {"Text1", "X Value"}, {"Text2", "Y Value"}, {"Text3", "Elevation"}};
    for (const auto& [field, caption] : labels) {
      EXPECT_EQ(TextOf(details, field), QString());
      EXPECT_EQ(Label(details, (std::string("lbl") + field).c_str()), QString::fromLatin1(caption));
    }
    EXPECT_TRUE(In<QRadioButton>(details, "OptPointType_0").isChecked());
    for (const char* value : {"7", "8.5", "-2500"}) {
      QTest::keyClicks(QApplication::focusWidget(), QString::fromLatin1(value));
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    QTest::keyClick(&details, Qt::Key_Return);
  });
  Press(Window(), "cmdAddPointFP");
  ASSERT_EQ(RowsOf("ListView2"), 1);
  EXPECT_EQ(RowOf("ListView2", 1), Texts({"1", "7.00", "8.50", "2500", "IP Point"}));
  EXPECT_EQ(Work().Points[1].Type, PointType::IP);
}

TEST_F(FlightPlans, EditPointAndDoubleClickChangeIt) {
  OpenExisting(Plan());
  EXPECT_FALSE(Enabled("cmdEditPointFP"));
  EXPECT_FALSE(Enabled("cmdDelPointFP"));
  ClickIn("ListView2", 2);
  InNextDialog([](QWidget& details) {
    EXPECT_EQ(TextOf(details, "Text1"), QStringLiteral("4.00"));
    EXPECT_EQ(TextOf(details, "Text2"), QStringLiteral("5.00"));
    EXPECT_EQ(TextOf(details, "Text3"), QStringLiteral("6000.25"));
    EXPECT_TRUE(In<QRadioButton>(details, "OptPointType_2").isChecked());
    Type(details, "Text3", "7000");
    details.move(140, 90);
    Press(details, "Command1");
  });
  Press(Window(), "cmdEditPointFP");
  EXPECT_EQ(RowOf("ListView2", 2), Texts({"2", "4.00", "5.00", "7000", "Target Point"}));
  EXPECT_EQ(RowOf("ListView2", 1).at(3), QStringLiteral("3000")) << "without decimals once refreshed: this stands";
  EXPECT_EQ(station.Editors.AREAPOINTFPLEFT, 140 * 15);
  EXPECT_EQ(station.Editors.AREAPOINTFPTOP, 90 * 15);
  bool opened = false;
  InNextDialog([&opened](QWidget& details) {
    opened = true;
    EXPECT_EQ(details.pos(), QPoint(140, 90));
    Type(details, "Text1", "99");
    Press(details, "Command2");
  });
  DoubleClickIn("ListView2", 2);
  EXPECT_TRUE(opened);
  EXPECT_EQ(Work().Points[2].X, 4);
}

TEST_F(FlightPlans, PointOfATypeThatIsNoneKeepsIt) {
  areas::Area plan = Plan();
  plan.Points[1].Type = static_cast<PointType>(9);
  OpenExisting(plan);
  ClickIn("ListView2", 1);
  InNextDialog([](QWidget& details) {
    for (const char* option : {"OptPointType_0", "OptPointType_1", "OptPointType_2"}) {
      EXPECT_FALSE(In<QRadioButton>(details, option).isChecked());
    }
    Press(details, "Command1");
  });
  Press(Window(), "cmdEditPointFP");
  EXPECT_EQ(static_cast<int>(Work().Points[1].Type), 9);
}

TEST_F(FlightPlans, PointsAreDeletedOneByOneOrAllTogether) {
  OpenExisting(Plan());
  ClickMap(0, 0);
  ClickIn("ListView2", 1);
  Press(Window(), "cmdDelPointFP");
  ASSERT_EQ(RowsOf("ListView2"), 2);
  EXPECT_EQ(RowOf("ListView2", 1), Texts({"1", "4.00", "5.00", "6000", "Target Point"}));
  EXPECT_EQ(SelectedIn("ListView2"), 1u);
  Press(Window(), "cmdResetAllFP");
  EXPECT_EQ(RowsOf("ListView2"), 0);
  EXPECT_TRUE(Work().Points.Empty());
}

TEST_F(FlightPlans, AltitudesShowAndHaveAFontOfTheirOwn) {
  OpenExisting(Plan());
  EXPECT_TRUE(Checked("chkShowWaypointElevation"));
  Tick("chkShowWaypointElevation");
  EXPECT_EQ(Work().ShowWaypointElevation, areas::Off);
  Tick("chkShowWaypointElevation");
  EXPECT_EQ(Work().ShowWaypointElevation, areas::On);
  desk.FontAnswers = {base::FontRecord{.FontName = "Chosen", .FontSize = 11, .FontItalic = true, .Color = 0x123456}};
  PressIn("cmdFontFPAlt");
  ASSERT_EQ(desk.FontQuestions.size(), 1u);
  EXPECT_EQ(desk.FontQuestions[0].Present.FontName, "OCR A Extended");
  EXPECT_TRUE(desk.FontQuestions[0].Present.FontBold);
  EXPECT_TRUE(desk.FontQuestions[0].WithColour);
  EXPECT_EQ(Work().AltFont.Name, "Chosen");
  EXPECT_EQ(Work().AltFont.Size, 11);
  EXPECT_EQ(Work().AltFont.Bold, areas::Off);
  EXPECT_EQ(Work().AltFont.Italic, areas::On);
  EXPECT_EQ(Work().TextFont.Name, "Verdana");
  EXPECT_EQ(Work().Color, 0x123456);
  EXPECT_EQ(In<ColourButton>(Window(), "cmdFPColor").Colour(), 0x123456);
  PressIn("cmdFontFPAlt");
  EXPECT_EQ(Work().AltFont.Name, "Chosen") << "cancelled";
}

}  // namespace
}  // namespace kestrel::shell
