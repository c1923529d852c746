#include "shell/areas/areas_details_frm.h"

#include "shell/areas/area_editor_fixture.h"

namespace kestrel::shell {
namespace {

class AreasDetails : public AreaEditorWindow {
 protected:
  /// The number of the panel that shows, from 0; -1 when none or several do.
  int Panel() {
    int shown = -1;
    int count = 0;
    for (int panel = 0; panel < 5; ++panel) {
      if (!Visible(("Frame1_" + std::to_string(panel)).c_str())) continue;
      shown = panel;
      ++count;
    }
    return count == 1 ? shown : -1;
  }
};

TEST_F(AreasDetails, NewAreaIsARegionWithEmptyFields) {
  OpenNew();
  EXPECT_EQ(Window().windowTitle(), QStringLiteral("New Area in Targets"));
  EXPECT_EQ(Text("Text13"), QStringLiteral("New Area"));
  EXPECT_TRUE(Checked("Option1_1"));
  EXPECT_EQ(Panel(), 0);
  for (const char* field : {"Text1", "Text2", "Text3", "Text4", "Text5", "Text6", "Text7", "Text8"}) {
    EXPECT_EQ(Text(field), QString()) << field;
  }
  EXPECT_TRUE(Checked("Option3_1"));
  EXPECT_TRUE(Checked("chkShowWaypointElevation"));
  EXPECT_EQ(Label(Window(), "lblClickOn_0"), QStringLiteral("Click on the map to add points..."));
}

TEST_F(AreasDetails, TypeOfAStoredOneIsTheTitleAndItsPanelShows) {
  const std::pair<const char*, const char*> words[] = {
      {"Region", "Region"}, {"Circle", "Circle"}, {"Icon", "Icon"}, {"Text", "Text"}, {"FlightPlan", "Flight Plan"}};
  for (int type = 1; type <= 5; ++type) {
    OpenExisting({.Type = static_cast<areas::AreaType>(type)});
    const auto& [title, caption] = words[type - 1];
    EXPECT_EQ(Window().windowTitle(), QString::fromLatin1(title) + QStringLiteral(" in Targets"));
    const std::string option = "Option1_" + std::to_string(type);
    EXPECT_EQ(In<QRadioButton>(Window(), option.c_str()).text(), QString::fromLatin1(caption));
    EXPECT_TRUE(Checked(option.c_str()));
    EXPECT_EQ(Panel(), type - 1);
    Press(Window(), "Command2_1");
  }
}

TEST_F(AreasDetails, AreaOfATypeThatIsNoneShowsNoPanel) {
  OpenExisting({.Name = "Strange", .Type = static_cast<areas::AreaType>(9)});
  EXPECT_EQ(Window().windowTitle(), QStringLiteral(" in Targets"));
  EXPECT_EQ(Panel(), -1);
  for (int type = 1; type <= 5; ++type) EXPECT_FALSE(Checked(("Option1_" + std::to_string(type)).c_str()));
  Press(Window(), "Command2_0");
  EXPECT_EQ(static_cast<int>(Areas()[1].Type), 9);
}

TEST_F(AreasDetails, ChoosingATypeShowsItsPanelPromptAndPosition) {
  OpenNew();
  Work().X = 10.125;
  Work().Y = -20;
  Work().Radius = 5;
  Choose("Option1_2");
  EXPECT_EQ(Panel(), 1);
  EXPECT_EQ(Label(Window(), "lblClickOn_1"), QStringLiteral("Click on the map to define the center..."));
  EXPECT_EQ(Text("Text3"), QStringLiteral("10.13"));
  EXPECT_EQ(Text("Text4"), QStringLiteral("-20.00"));
  EXPECT_EQ(Text("Text5"), QStringLiteral("5.00"));
  Choose("Option1_3");
  EXPECT_EQ(Panel(), 2);
  EXPECT_EQ(Label(Window(), "lblClickOn_2"), QStringLiteral("Click on the map to define the point..."));
  EXPECT_EQ(Text("Text8"), QStringLiteral("10.13"));
  EXPECT_EQ(Text("Text7"), QStringLiteral("-20.00"));
  Choose("Option1_4");
  EXPECT_EQ(Panel(), 3);
  EXPECT_EQ(Label(Window(), "lblClickOn_3"), QStringLiteral("Click on the map to define the upper left point..."));
  EXPECT_EQ(Text("Text6"), QStringLiteral("10.13"));
  EXPECT_EQ(Text("Text2"), QStringLiteral("-20.00"));
  Choose("Option1_5");
  EXPECT_EQ(Panel(), 4);
  EXPECT_EQ(Label(Window(), "lblClickOnFP"), QStringLiteral("Click on the map to add points..."));
  EXPECT_EQ(Work().Type, areas::AreaType::FlightPlan);
}

TEST_F(AreasDetails, OkAppendsANewAreaAndReplacesAStoredOne) {
  OpenNew();
  Work().Radius = 5;
  Type(Window(), "Text13", "First");
  Press(Window(), "Command2_0");
  EXPECT_FALSE(Window().isVisible());
  EXPECT_EQ(Window().result(), QDialog::Accepted);
  ASSERT_EQ(Areas().UpperBound(), 1u);
  EXPECT_EQ(Areas()[1].Name, "First");
  EXPECT_EQ(Areas()[1].Radius, 0) << "of the field that was never filled";
  EXPECT_FALSE(Editor().Open);
  OpenExisting({.Name = "Second", .Visible = areas::Off});
  EXPECT_TRUE(Areas()[2].Editing);
  Type(Window(), "Text13", "Other");
  QTest::keyClick(&In<QLineEdit>(Window(), "Text13"), Qt::Key_Return);
  EXPECT_FALSE(Window().isVisible());
  ASSERT_EQ(Areas().UpperBound(), 2u);
  EXPECT_EQ(Areas()[2].Name, "Other");
  EXPECT_EQ(Areas()[2].Visible, areas::On);
  EXPECT_FALSE(Areas()[2].Editing);
}

TEST_F(AreasDetails, HoweverItIsLeftWithoutOkTheAreaIsAsItWas) {
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"Cancel", [this] { Press(Window(), "Command2_1"); }},
      {"Esc", [this] { QTest::keyClick(&Window(), Qt::Key_Escape); }},
      {"closed", [this] { Window().close(); }},
      {"destroyed", [this] { TakeWindow(); }},
      {"program", [this] { Frame().close(); }},
  };
  for (const auto& [what, way] : ways) {
    SCOPED_TRACE(what);
    Areas().Clear();
    const std::uint64_t revision = station.Areas.Revision;
    OpenExisting({.Name = "Kept"});
    int finished = 0;
    QObject::connect(&Window(), &QDialog::finished, [&finished] { ++finished; });
    Type(Window(), "Text13", "Lost");
    ClickMap(10, 10);
    ClickMap(40, 10);
    EXPECT_EQ(Work().Lines.UpperBound(), 1u);
    way();
    ASSERT_EQ(Areas().UpperBound(), 1u);
    EXPECT_EQ(Areas()[1].Name, "Kept");
    EXPECT_TRUE(Areas()[1].Lines.Empty());
    EXPECT_FALSE(Areas()[1].Editing);
    EXPECT_FALSE(Editor().Open);
    EXPECT_EQ(station.Areas.Revision, revision);
    EXPECT_EQ(finished, std::string(what) == "destroyed" ? 0 : 1);
  }
}

TEST_F(AreasDetails, NameThatTheCodePageDoesNotHoldIsRefused) {
  OpenNew();
  auto& name = In<QLineEdit>(Window(), "Text13");
  name.clear();
  Commit(name, QStringLiteral("\u65E5"));
  ClickMap(0, 0);
  EXPECT_EQ(name.text(), QStringLiteral("\u65E5")) << "what is typed stays";
  Press(Window(), "Command2_0");
  EXPECT_TRUE(Window().isVisible());
  EXPECT_EQ(Label(Window(), "lblRefused"), QStringLiteral("This character cannot be used here: \u65E5."));
  EXPECT_TRUE(Areas().Empty());
  Type(Window(), "Text13", "Nippon");
  Press(Window(), "Command2_0");
  EXPECT_EQ(Areas()[1].Name, "Nippon");
}

TEST_F(AreasDetails, NamesHaveAtMostAHundredBytesAndALongerOneStaysUntouched) {
  OpenNew();
  Type(Window(), "Text13", std::string(105, 'a').c_str());
  Press(Window(), "Command2_0");
  EXPECT_EQ(Areas()[1].Name, std::string(100, 'a'));
  OpenExisting({.Name = std::string(120, 'b')});
  Press(Window(), "Command2_0");
  EXPECT_EQ(Areas()[2].Name, std::string(120, 'b'));
}

TEST_F(AreasDetails, ColourShowsInAllPanelsAndCancelledChangesNothing) {
  OpenExisting({.Color = 0x0000FF});
  const char* buttons[] = {"cmdRegionColor", "cmdCircleColor", "cmdPointColor", "cmdTextColor", "cmdFPColor"};
  for (int type = 1; type <= 5; ++type) {
    Choose(("Option1_" + std::to_string(type)).c_str());
    const base::Colour chosen = 0x102030 * type;
    desk.ColourAnswers = {chosen, std::nullopt};
    PressIn(buttons[type - 1]);
    EXPECT_EQ(Work().Color, chosen);
    PressIn(buttons[type - 1]);
    EXPECT_EQ(Work().Color, chosen);
    EXPECT_EQ(desk.ColourQuestions.back(), chosen);
    for (const char* button : buttons) EXPECT_EQ(In<ColourButton>(Window(), button).Colour(), chosen) << button;
    EXPECT_EQ(FromQColor(In<QLineEdit>(Window(), "Text1").palette().color(QPalette::Text)), chosen);
  }
  EXPECT_EQ(desk.ColourQuestions.front(), 0x0000FF);
}

TEST_F(AreasDetails, KeyboardAloneChoosesFillsAndEnds) {
  OpenNew();
  ASSERT_EQ(QApplication::focusWidget(), &In<QLineEdit>(Window(), "Text13"));
  QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Wall"));
  EXPECT_EQ(Text("Text13"), QStringLiteral("Wall")) << "the name stands selected";
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("Option1_1"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
  EXPECT_EQ(Work().Type, areas::AreaType::Circle);
  EXPECT_EQ(Panel(), 1);
  for (const char* next : {"Text3", "Text4", "Text5", "cmdCircleColor", "Command2_0", "Command2_1", "Text13"}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QString::fromLatin1(next));
  }
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_FALSE(Window().isVisible());
  EXPECT_EQ(Areas()[1].Type, areas::AreaType::Circle);
}

}  // namespace
}  // namespace kestrel::shell
