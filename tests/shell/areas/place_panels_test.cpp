#include <QDir>
#include <cmath>
#include <limits>

#include "map/icon_strokes.h"
#include "shell/areas/area_editor_fixture.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

class Places : public AreaEditorWindow {
 protected:
  void OpenAs(const char* option) {
    OpenNew();
    Choose(option);
  }
  QByteArray ReadIcon(int icon) { return Read(("Icons/" + std::to_string(icon) + ".bmp").c_str()); }
};

struct Fields {
  const char* Option;
  const char* X;
  const char* Y;
};
/// Of an icon and of a text the numbers of the fields run against their order.
constexpr Fields OfTypes[] = {
    {"Option1_2", "Text3", "Text4"}, {"Option1_3", "Text8", "Text7"}, {"Option1_4", "Text6", "Text2"}};

TEST_F(Places, EachTypeHasItsFieldsOfThePosition) {
  for (const auto& [option, x, y] : OfTypes) {
    SCOPED_TRACE(option);
    OpenAs(option);
    Type(Window(), x, "12.5");
    Type(Window(), y, "34,25");
    EXPECT_EQ(Work().X, 12.5);
    EXPECT_EQ(Work().Y, 34.25);
    Leave(x);
    Leave(y);
    EXPECT_EQ(Text(x), QStringLiteral("12.50"));
    EXPECT_EQ(Text(y), QStringLiteral("34.25"));
    ClickMap(-20, 30);
    EXPECT_EQ(Text(x), Number(MapX(-20)));
    EXPECT_EQ(Text(y), Number(MapY(30)));
    Type(Window(), x, "7.129");
    Leave(x);
    Press(Window(), "Command2_0");
    EXPECT_EQ(Areas()[Areas().UpperBound()].X, 7.13);
    EXPECT_EQ(Areas()[Areas().UpperBound()].Y, MapY(30));
  }
}

TEST_F(Places, FieldsTakeNumbersAloneAndKeepWhatAClickHasPutThere) {
  for (const auto& [option, x, y] : OfTypes) {
    SCOPED_TRACE(option);
    OpenAs(option);
    Type(Window(), x, "-1a2,5 e.");
    EXPECT_EQ(Text(x), QStringLiteral("12,5."));
    // The left edge of the theater is 512 pixels left of the middle at zoom 1.
    Window().MapClicked(-12.5, -3, {});
    EXPECT_EQ(Text(x), QStringLiteral("-12.50"));
    EXPECT_EQ(Text(y), QStringLiteral("-3.00"));
    auto& line = In<QLineEdit>(Window(), x);
    line.end(false);
    QTest::keyClicks(&line, QStringLiteral("-7x"));
    EXPECT_EQ(line.text(), QStringLiteral("-12.507"));
    EXPECT_EQ(Work().X, -12.507);
    Press(Window(), "Command2_1");
  }
}

TEST_F(Places, CircleThatBecomesAnIconKeepsPlaceAndRadius) {
  OpenAs("Option1_2");
  ClickMap(15, -25);
  Type(Window(), "Text5", "3.5");
  EXPECT_EQ(Work().Radius, 3.5);
  Choose("Option1_3");
  EXPECT_EQ(Text("Text8"), Number(MapX(15)));
  EXPECT_EQ(Text("Text7"), Number(MapY(-25)));
  Press(Window(), "Command2_0");
  EXPECT_EQ(Areas()[1].Type, areas::AreaType::Icon);
  EXPECT_EQ(Areas()[1].Radius, 3.5);
  EXPECT_EQ(Areas()[1].X, MapX(15));
}

TEST_F(Places, IconFromTheMapsMenuBeginsWhereTheMenuWas) {
  areas::PopulateFromNewIconMenu(Editor(), station.Areas, 1, 100.5, 200.25, windows.Texts());
  AreasDetailsFrm icon(program, dialogs, &Frame());
  EXPECT_TRUE(In<QRadioButton>(icon, "Option1_3").isChecked());
  EXPECT_EQ(TextOf(icon, "Text8"), QStringLiteral("100.50"));
  EXPECT_EQ(TextOf(icon, "Text7"), QStringLiteral("200.25"));
  icon.reject();
  EXPECT_TRUE(Areas().Empty());
}

TEST_F(Places, IconsAreButtonsWithTheirCaptionsAndPictures) {
  OpenAs("Option1_3");
  for (int icon = 1; icon <= 35; ++icon) {
    const auto& button = In<QToolButton>(Window(), ("Option3_" + std::to_string(icon)).c_str());
    EXPECT_EQ(button.text(), FromBytes(map::IconCaption(icon)));
    EXPECT_GE(button.width(), button.sizeHint().width()) << "cut: " << qPrintable(button.text());
    const QImage picture = button.icon().pixmap(button.iconSize()).toImage();
    const QImage empty = [&] {
      QImage image(picture.size(), picture.format());
      image.fill(Qt::transparent);
      return image;
    }();
    const bool drawn = icon != 23 && icon < 30;
    EXPECT_EQ(picture != empty, drawn) << icon;
    EXPECT_EQ(button.toolTip() == QStringLiteral("This icon has no shape: only the name of the area is drawn"), !drawn);
  }
  EXPECT_EQ(In<QToolButton>(Window(), "Option3_12").text(), QStringLiteral("Nuclear Poerplant"));
}

TEST_F(Places, ChosenIconGoesToTheAreaAndIntoThePicture) {
  OpenAs("Option1_3");
  const auto picture = [this] { return In<QLabel>(Window(), "Picture1").pixmap(Qt::ReturnByValue).toImage(); };
  const QImage dot = picture();
  PressIn("Option3_9");
  EXPECT_EQ(Work().Icon, 9);
  EXPECT_TRUE(Checked("Option3_9"));
  EXPECT_FALSE(Checked("Option3_1"));
  const QImage box = picture();
  EXPECT_NE(box, dot);
  // Icon 9 is a box of 18 by 10 around the middle, black on light.
  const QPoint middle(box.width() / 2, box.height() / 2);
  EXPECT_EQ(box.pixelColor(middle + QPoint(9, 5)), QColor(Qt::black));
  EXPECT_EQ(box.pixelColor(middle - QPoint(9, 5)), QColor(Qt::black));
  EXPECT_EQ(box.pixelColor(middle), box.pixelColor(1, 1));
  desk.ColourAnswers = {0x0000FF};
  PressIn("cmdPointColor");
  EXPECT_EQ(picture().pixelColor(middle + QPoint(9, 5)), QColor(Qt::red));
  In<QToolButton>(Window(), "Option3_9").setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
  EXPECT_EQ(Work().Icon, 10) << "the arrows go from icon to icon";
}

TEST_F(Places, LowScreenScrollsToTheChosenIcon) {
  OpenAs("Option1_3");
  Window().resize(Window().width(), 400);
  EXPECT_LE(Window().height(), 440);
  const auto seen = [this](const char* name) {
    const auto& button = In<QToolButton>(Window(), name);
    return button.visibleRegion().boundingRect() == button.rect();
  };
  EXPECT_TRUE(seen("Option3_1"));
  EXPECT_FALSE(seen("Option3_12"));
  EXPECT_TRUE(seen("Option3_25")) << "the columns stand beside each other";
  In<QToolButton>(Window(), "Option3_1").setFocus();
  for (int icon = 1; icon < 12; ++icon) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
  EXPECT_EQ(Work().Icon, 12);
  EXPECT_TRUE(QTest::qWaitFor([&] { return seen("Option3_12"); }));
  EXPECT_TRUE(Visible("Command2_0"));
  Choose("Option1_2");
  Press(Window(), "Command2_0");
  OpenExisting({.Type = areas::AreaType::Icon, .Icon = 12});
  Window().resize(Window().width(), 400);
  Choose("Option1_2");
  Choose("Option1_3");
  EXPECT_TRUE(QTest::qWaitFor([&] { return seen("Option3_12"); })) << "where the window opens with it";
}

TEST_F(Places, IconThatIsNoneIsKeptAndChoosesNothing) {
  OpenExisting({.Type = areas::AreaType::Icon, .Icon = 77});
  for (int icon = 1; icon <= 35; ++icon) EXPECT_FALSE(Checked(("Option3_" + std::to_string(icon)).c_str()));
  Press(Window(), "Command2_0");
  EXPECT_EQ(Areas()[1].Icon, 77);
}

TEST_F(Places, MakeIconsWritesThirtyOnePictures) {
  OpenAs("Option1_3");
  PressIn("cmdMakeIcons");
  EXPECT_TRUE(desk.Boxes.empty());
  EXPECT_EQ(QDir(folder.filePath(QStringLiteral("Icons"))).entryList(QDir::Files).size(), 31);
  EXPECT_EQ(ReadIcon(32), QByteArray());
  for (const int icon : {1, 31}) {
    QImage picture;
    ASSERT_TRUE(picture.loadFromData(ReadIcon(icon), "BMP")) << icon;
    EXPECT_EQ(picture.size(), QSize(32, 32));
    EXPECT_EQ(picture.pixelColor(1, 1), QColor(Qt::white));
    EXPECT_EQ(picture.pixelColor(16, 16), QColor(icon == 1 ? Qt::black : Qt::white)) << "31 has no shape";
  }
  EXPECT_EQ(Work().Icon, 1);
}

TEST_F(Places, MakeIconsTellsWhatItCannotWrite) {
  OpenAs("Option1_3");
  Write("Icons", "in the way");
  PressIn("cmdMakeIcons");
  ASSERT_EQ(desk.Boxes.size(), 1u);
  EXPECT_TRUE(desk.Boxes[0].Text.starts_with("The icons could not be written: ")) << desk.Boxes[0].Text;
  EXPECT_TRUE(Window().isVisible());
}

TEST_F(Places, TextIsDrawnAsItIsTypedInItsFontAndColour) {
  OpenAs("Option1_4");
  Type(Window(), "Text1", "Fence");
  EXPECT_EQ(Work().Text, "Fence");
  desk.FontAnswers = {base::FontRecord{
      .FontName = "Chosen", .FontSize = 14, .FontBold = true, .FontStrike = true, .FontUnder = true, .Color = 0xFF}};
  PressIn("cmdChangeFont");
  ASSERT_EQ(desk.FontQuestions.size(), 1u);
  EXPECT_EQ(desk.FontQuestions[0].Present.FontName, "Verdana");
  EXPECT_EQ(desk.FontQuestions[0].Present.FontSize, 8);
  const auto& field = In<QLineEdit>(Window(), "Text1");
  EXPECT_EQ(Work().TextFont.Name, "Chosen");
  EXPECT_EQ(Work().TextFont.Bold, areas::On);
  EXPECT_EQ(Work().TextFont.Strikethru, areas::On);
  EXPECT_EQ(Work().TextFont.Underline, areas::On);
  EXPECT_EQ(Work().AltFont.Name, "OCR A Extended");
  EXPECT_EQ(field.font().family(), QStringLiteral("Chosen"));
  EXPECT_EQ(field.font().pointSizeF(), 14);
  EXPECT_TRUE(field.font().bold() && field.font().strikeOut() && field.font().underline());
  EXPECT_EQ(field.palette().color(QPalette::Text), QColor(Qt::red));
  Press(Window(), "Command2_0");
  EXPECT_EQ(Areas()[1].Text, "Fence");
  EXPECT_EQ(Areas()[1].Color, 0xFF);
}

TEST_F(Places, TextThatTheCodePageDoesNotHoldIsRefusedWhereItIsSeen) {
  OpenAs("Option1_4");
  Type(Window(), "Text1", "Old");
  auto& field = In<QLineEdit>(Window(), "Text1");
  Commit(field, QStringLiteral("\u65E5"));
  EXPECT_EQ(Work().Text, "Old") << "the map shows what can be kept";
  Press(Window(), "Command2_0");
  EXPECT_TRUE(Window().isVisible());
  EXPECT_EQ(Label(Window(), "lblRefused"), QStringLiteral("This character cannot be used here: \u65E5."));
  QTest::keyClick(&field, Qt::Key_Backspace);
  Press(Window(), "Command2_0");
  EXPECT_EQ(Areas()[1].Text, "Old");
}

TEST_F(Places, FontOfAFileIsShownWithinBoundsAndKept) {
  areas::Area area{.Type = areas::AreaType::Text, .Text = "Large"};
  for (const float size : {300.0F, 0.0F, std::numeric_limits<float>::quiet_NaN()}) {
    area.TextFont.Size = size;
    OpenExisting(area);
    const double shown = In<QLineEdit>(Window(), "Text1").font().pointSizeF();
    EXPECT_EQ(shown, size > 100 ? 20 : 6);
    EXPECT_EQ(std::isnan(Work().TextFont.Size), std::isnan(size));
    Press(Window(), "Command2_1");
  }
}

}  // namespace
}  // namespace kestrel::shell
