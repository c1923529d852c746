#include "shell/falcon/import_theater_frm.h"

#include <QDir>

#include "base/program_title.h"
#include "shell/falcon/import_theater_fixture.h"

namespace kestrel::shell {
namespace {

TEST_F(ImportTheater, ShowsTheTheaterAndBeginsWithoutCriteria) {
  Open();
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Theater Config"));
  EXPECT_EQ(Label(*window, "lblTheaterName"), QStringLiteral("Isle"));
  EXPECT_EQ(Label(*window, "lblTheaterSize"), QStringLiteral("Theater size: 32"));
  EXPECT_FALSE(In<QLabel>(*window, "lblMissing").isVisible());
  EXPECT_TRUE(Listed().isEmpty());
  EXPECT_EQ(TextOf(*window, "txtColors"), QStringLiteral("0"));
  EXPECT_EQ(Label(*window, "lblPaletteTo"), QStringLiteral("Palette to use: Default"));
  EXPECT_EQ(ColourOf("cmdSeaColor"), 16762913u);
  EXPECT_FALSE(In<QPushButton>(*window, "cmdEdit").isEnabled());
  EXPECT_FALSE(In<QPushButton>(*window, "cmdDelete").isEnabled());
  EXPECT_FALSE(In<QProgressBar>(*window, "ProgressBar1").isVisible());
  EXPECT_FALSE(In<QCheckBox>(*window, "chkShading").isChecked());
  EXPECT_TRUE(In<QRadioButton>(*window, "Opt2colorstype_0").isChecked());
}

TEST_F(ImportTheater, CaptionsAreAsTheyAreKnown) {
  Open();
  for (const auto& [name, caption] : {std::pair("cmdSeaColor", "Sea Color:"),
                                      {"cmdAutoCalculate", "Auto Calculate"},
                                      {"cmdLoadPalette", "Load Palette"},
                                      {"cmdExportColors", "Export Criteria"},
                                      {"cmdImportColors", "Import Criteria"},
                                      {"Opt2colorstype_0", "Light"},
                                      {"Opt2colorstype_1", "Dark"},
                                      {"Opt2colorstype_2", "Custom"}}) {
    EXPECT_EQ(In<QAbstractButton>(*window, name).text(), QString::fromLatin1(caption));
  }
  EXPECT_EQ(Label(*window, "lblColors"), QStringLiteral("Colors"));
  EXPECT_EQ(Criteria().headerItem()->text(0), QStringLiteral("Color"));
  EXPECT_EQ(Criteria().headerItem()->text(1), QStringLiteral("Height"));
}

TEST_F(ImportTheater, CriteriaAreListedByHeight) {
  Open();
  AddThree();
  EXPECT_EQ(Listed(), Texts({"#00ff00 999", "#0000ff 1999", "#ffffff 3200"}));
  EXPECT_EQ(TextOf(*window, "txtColors"), QStringLiteral("3"));
  EXPECT_EQ(Label(*window, "lblcolnum"), QStringLiteral("3 of 255"));
  EXPECT_EQ(Criteria().topLevelItem(1)->data(0, Qt::AccessibleTextRole).toString(), QStringLiteral("#0000ff"));
}

TEST_F(ImportTheater, ACriterionIsEditedAndKeepsBeingSelected) {
  Open();
  AddThree();
  Criteria().setCurrentItem(Criteria().topLevelItem(0));
  Edit("cmdEdit", "2500");
  EXPECT_EQ(Listed(), Texts({"#0000ff 1999", "#00ff00 2500", "#ffffff 3200"}));
  EXPECT_EQ(Criteria().indexOfTopLevelItem(Criteria().currentItem()), 1);
  Edit("cmdEdit", "1", "cmdCancel");
  EXPECT_EQ(Listed().size(), 3);
  EXPECT_EQ(Listed()[1], QStringLiteral("#00ff00 2500"));
}

TEST_F(ImportTheater, ADoubleClickEdits) {
  Open();
  AddThree();
  InNextDialog([](QWidget& editor) {
    EXPECT_EQ(TextOf(editor, "txtElevation"), QStringLiteral("1999"));
    EXPECT_EQ(Label(editor, "lblColor"), QStringLiteral("#0000ff"));
    Type(editor, "txtElevation", "7");
    QTest::keyClick(&editor, Qt::Key_Return);
  });
  const QPoint place = Criteria().visualItemRect(Criteria().topLevelItem(1)).center();
  QTest::mouseClick(Criteria().viewport(), Qt::LeftButton, {}, place);
  QTest::mouseDClick(Criteria().viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(Listed()[0], QStringLiteral("#0000ff 7"));
}

TEST_F(ImportTheater, DeleteRemovesTheSelectedRowByButtonAndByKey) {
  Open();
  AddThree();
  Criteria().setCurrentItem(Criteria().topLevelItem(1));
  Press(*window, "cmdDelete");
  EXPECT_EQ(Listed(), Texts({"#00ff00 999", "#ffffff 3200"}));
  Criteria().setFocus();
  QTest::keyClick(&Criteria(), Qt::Key_Delete);
  EXPECT_EQ(Listed(), Texts({"#00ff00 999"}));
  Press(*window, "cmdDelete");
  EXPECT_TRUE(Listed().isEmpty());
  EXPECT_FALSE(In<QPushButton>(*window, "cmdDelete").isEnabled());
}

TEST_F(ImportTheater, HeightsAbove32767AreCut) {
  Open();
  Edit("cmdAdd", "32768");
  Edit("cmdAdd", "999999");
  Edit("cmdAdd", "-40");
  EXPECT_EQ(Listed(), Texts({"#ffffff -40", "#ffffff 32767", "#ffffff 32767"}));
}

TEST_F(ImportTheater, There255CriteriaAndNoMore) {
  Write("many.cxp",
        "Color Export File (KESTREL) v2          " + QByteArray("\1\2\3\0\xFE\0\0\0", 8) + QByteArray(254 * 6, '\2'));
  Open();
  Choose("many.cxp");
  Press(*window, "cmdImportColors");
  EXPECT_EQ(Listed().size(), 254);
  EXPECT_EQ(ColourOf("cmdSeaColor"), 0x030201u);
  Edit("cmdAdd", "5");
  EXPECT_EQ(Listed().size(), 255);
  Press(*window, "cmdAdd");
  ExpectBox(base::ProgramTitle().c_str(), "Can't have more than 255 elements");
  EXPECT_EQ(Listed().size(), 255);
}

TEST_F(ImportTheater, AutoCalculateFillsTheListUpToTheHighestPlace) {
  Write("gradient.act", QByteArray(765, '\x11') + QByteArray(3, '\x22'));
  Open();
  Type(*window, "txtColors", "3");
  Press(*window, "cmdAutoCalculate");
  // The highest place has 3131 feet, a third of which is 1043.67.
  EXPECT_EQ(Listed(), Texts({"#111111 1043", "#111111 2086", "#111111 3129"}));
  EXPECT_EQ(TextOf(*window, "txtColors"), QStringLiteral("3"));
  EXPECT_TRUE(desk.Boxes.empty());
  Type(*window, "txtColors", "1");
  Press(*window, "cmdAutoCalculate");
  EXPECT_EQ(Listed(), Texts({"#111111 3131"}));
}

TEST_F(ImportTheater, AutoCalculateWantsACountOf1To255) {
  Open();
  AddThree();
  for (const char* count : {"0", "256", "999999999999", ""}) {
    Type(*window, "txtColors", count);
    Press(*window, "cmdAutoCalculate");
    ExpectBox(base::ProgramTitle().c_str(), "Invalid number of colors. Should be between 1 and 255");
    EXPECT_EQ(Listed().size(), 3);
  }
  Type(*window, "txtColors", "-7x");
  EXPECT_EQ(TextOf(*window, "txtColors"), QStringLiteral("7")) << "digits only";
}

TEST_F(ImportTheater, WithoutAGradientTheBoxSaysSo) {
  Open();
  Type(*window, "txtColors", "2");
  Press(*window, "cmdAutoCalculate");
  ExpectBox("Error...", "The file gradient.act was not found in program folder. Please reinstall the progam.");
  EXPECT_EQ(Listed(), Texts({"#000000 1565", "#000000 3130"}));
}

TEST_F(ImportTheater, APaletteFileGivesTheSeaAndTheColours) {
  QByteArray act, pal(24, 'R');
  for (int n = 0; n < 256; ++n) {
    const char part = static_cast<char>(n);
    act += QByteArray(2, part) + '\1';
    pal += QByteArray(1, part) + QByteArray("\5\6\0", 3);
  }
  Write("mine.act", act);
  Write("MINE.PAL", pal);
  Open();
  Choose("mine.act");
  Press(*window, "cmdLoadPalette");
  ASSERT_EQ(desk.FileQuestions.size(), 1u);
  EXPECT_EQ(desk.FileQuestions[0].Title, "Open Palette");
  EXPECT_EQ(desk.FileQuestions[0].Filter, "ACT File (*.act)|*.act|PAL File (*.pal)|*.pal");
  EXPECT_EQ(Label(*window, "lblPaletteTo"), QStringLiteral("Palette to use: mine.act"));
  EXPECT_EQ(ColourOf("cmdSeaColor"), 0x010000u);
  Type(*window, "txtColors", "1");
  Press(*window, "cmdAutoCalculate");
  EXPECT_EQ(Listed(), Texts({"#ffff01 3131"}));
  Choose("MINE.PAL");
  Press(*window, "cmdLoadPalette");
  EXPECT_EQ(Label(*window, "lblPaletteTo"), QStringLiteral("Palette to use: MINE.PAL"));
  EXPECT_EQ(ColourOf("cmdSeaColor"), 0x060500u);
  Press(*window, "cmdAutoCalculate");
  EXPECT_EQ(Listed(), Texts({"#ff0506 3131"}));
}

TEST_F(ImportTheater, CriteriaAreExportedAndImported) {
  Open();
  AddThree();
  desk.ColourAnswers.emplace_back(0x0000FFu);
  Press(*window, "cmdSeaColor");
  EXPECT_EQ(ColourOf("cmdSeaColor"), 0x0000FFu);
  desk.SaveAnswers.emplace_back(PathOf("mine.cxp").toStdString());
  Press(*window, "cmdExportColors");
  ASSERT_EQ(desk.SaveQuestions.size(), 1u);
  EXPECT_EQ(desk.SaveQuestions[0].Title, "Save Criteria Export File");
  EXPECT_EQ(desk.SaveQuestions[0].Filter, "Colors export file (*.cxp)|*.cxp");
  EXPECT_EQ(Read("mine.cxp").size(), 48 + 3 * 6);
  Open();
  Choose("mine.cxp");
  Press(*window, "cmdImportColors");
  EXPECT_EQ(desk.FileQuestions[0].Title, "Open Criteria Export File");
  EXPECT_EQ(Listed(), Texts({"#00ff00 999", "#0000ff 1999", "#ffffff 3200"}));
  EXPECT_EQ(ColourOf("cmdSeaColor"), 0x0000FFu);
  Write("mine.cxp", "Color Export File (KESTREL) v1          ........");
  Choose("mine.cxp");
  Press(*window, "cmdImportColors");
  ExpectBox(base::ProgramTitle().c_str(), "Invalid file...");
  EXPECT_EQ(Listed().size(), 3);
}

TEST_F(ImportTheater, WithoutACriterionItDoesNotStart) {
  Open();
  Press(*window, "cmdOK");
  ExpectBox(base::ProgramTitle().c_str(), "You need at least one color for this to work...");
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 2u);
}

TEST_F(ImportTheater, OkImportsAndTheTheaterIsInTheMenuAndWorks) {
  Open();
  AddThree();
  Press(*window, "cmdOK");
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(window->result(), QDialog::Accepted);
  EXPECT_TRUE(desk.Boxes.empty());
  const QImage picture = PictureFile("Theaters/Isle.gif");
  ASSERT_EQ(picture.size(), QSize(32, 32));
  EXPECT_EQ(picture.pixelColor(3, 3), QColor(0x21, 0xC8, 0xFF)) << "sea in the upper left corner";
  EXPECT_EQ(picture.pixelColor(28, 3), QColor(Qt::white));
  EXPECT_EQ(picture.pixelColor(3, 28), QColor(0, 255, 0));
  ASSERT_EQ(Action("mnuTheatername_3").text(), QStringLiteral("Isle"));
  Action("mnuTheatername_3").trigger();
  EXPECT_EQ(station.Catalogue.CurrentTheater, 3);
  EXPECT_EQ(station.MapPicture.Width, 32);
  EXPECT_EQ(Action("mnuBullseyesName_1").text(), QStringLiteral("Default"));
  core::ReadElevations(program);
  EXPECT_EQ(station.Elevations.At(5, 20), 2005);
}

TEST_F(ImportTheater, TwoColoursHaveASampleAndPaintLandAndSea) {
  Open();
  auto& tabs = In<QTabWidget>(*window, "tabMethod");
  tabs.setCurrentIndex(1);
  auto& sample = In<QLabel>(*window, "Pic2Colors");
  const auto shown = [&sample] {
    const QImage image = sample.pixmap().toImage();
    return QStringList{image.pixelColor(5, 5).name(), image.pixelColor(image.width() - 5, 5).name()};
  };
  EXPECT_EQ(shown(), Texts({"#ffffff", "#06cf78"}));
  QTest::mouseClick(&In<QRadioButton>(*window, "Opt2colorstype_1"), Qt::LeftButton, {}, QPoint(8, 8));
  EXPECT_EQ(shown(), Texts({"#4f4e4e", "#1a8641"}));
  // A colour that is picked is wanted, one that is not changes nothing.
  Press(*window, "cmdColor1");
  EXPECT_TRUE(In<QRadioButton>(*window, "Opt2colorstype_1").isChecked());
  desk.ColourAnswers = {0x0000FFu};
  Press(*window, "cmdColor1");
  EXPECT_TRUE(In<QRadioButton>(*window, "Opt2colorstype_2").isChecked());
  EXPECT_EQ(shown(), Texts({"#ff0000", "#06cf78"}));
  QTest::mouseClick(&In<QRadioButton>(*window, "Opt2colorstype_2"), Qt::LeftButton, {}, QPoint(8, 8));
  desk.ColourAnswers = {0xFF0000u};
  Press(*window, "cmdColor2");
  EXPECT_EQ(shown(), Texts({"#ff0000", "#0000ff"}));
  EXPECT_EQ(sample.accessibleName(), QStringLiteral("Sea: #ff0000, land: #0000ff"));
  Press(*window, "cmdOK");
  const QImage picture = PictureFile("Theaters/Isle.gif");
  EXPECT_EQ(picture.pixelColor(3, 3), QColor(Qt::red));
  for (const QPoint land : {QPoint(28, 3), QPoint(3, 28), QPoint(28, 28)}) {
    EXPECT_EQ(picture.pixelColor(land), QColor(Qt::blue));
  }
}

TEST_F(ImportTheater, ShadingPaintsSlopesWhenItIsAskedFor) {
  Open();
  In<QTabWidget>(*window, "tabMethod").setCurrentIndex(1);
  QTest::keyClick(&In<QCheckBox>(*window, "chkShading"), Qt::Key_Space);
  Press(*window, "cmdOK");
  const QImage picture = PictureFile("Theaters/Isle.gif");
  // The ground rises to the north, and looks to the south: a shade darker than #06cf78.
  EXPECT_LT(picture.pixelColor(20, 20).green(), 0xCF);
  EXPECT_EQ(picture.pixelColor(3, 3), QColor(Qt::white)) << "the sea is flat";
}

TEST_F(ImportTheater, BackAndCancelHaveTheirResults) {
  Open();
  Press(*window, "cmdBack");
  EXPECT_EQ(window->result(), ImportTheaterFrm::Back);
  EXPECT_FALSE(window->isVisible());
  Open();
  Press(*window, "cmdCancel");
  EXPECT_EQ(window->result(), QDialog::Rejected);
  Open();
  QTest::keyClick(window.get(), Qt::Key_Escape);
  EXPECT_EQ(window->result(), QDialog::Rejected);
  EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 2u);
}

TEST_F(ImportTheater, WhatIsMissingIsToldBefore) {
  island.Remove("Campaign/te_new.tac");
  Open();
  EXPECT_EQ(Label(*window, "lblMissing"),
            QStringLiteral("No campaign tells the bullseye: it will be in the middle of the map."));
  EXPECT_TRUE(In<QPushButton>(*window, "cmdOK").isEnabled());
  In<QTabWidget>(*window, "tabMethod").setCurrentIndex(1);
  Press(*window, "cmdOK");
  EXPECT_TRUE(desk.Boxes.empty());
  EXPECT_EQ(station.Catalogue.Theaters[3].Bulls[1].X, 16);
}

TEST_F(ImportTheater, WithoutHeightsThereIsNothingToPress) {
  island.Remove("Terrdata/korea/terrain/theater.l2");
  Open();
  EXPECT_TRUE(Label(*window, "lblMissing").startsWith(QStringLiteral("The theater cannot be imported: ")));
  EXPECT_FALSE(In<QPushButton>(*window, "cmdOK").isEnabled());
  EXPECT_FALSE(In<QPushButton>(*window, "cmdAutoCalculate").isEnabled());
  EXPECT_TRUE(In<QPushButton>(*window, "cmdBack").isEnabled());
}

}  // namespace
}  // namespace kestrel::shell
