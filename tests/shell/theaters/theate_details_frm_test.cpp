#include "shell/theaters/theate_details_frm.h"

#include "base/picture_files.h"
#include "base/program_title.h"
#include "shell/near.h"
#include "shell/theaters/theater_windows_fixture.h"

namespace kestrel::shell {
namespace {

class TheateDetails : public TheaterWindows {
 protected:
  void TearDown() override {
    window.reset();
    TheaterWindows::TearDown();
  }
  void Open(std::size_t index) {
    window = std::make_unique<TheateDetailsFrm>(program, index, &Frame());
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }
  QPixmap Shown() { return In<QLabel>(*window, "Picture1").pixmap(); }

  std::unique_ptr<TheateDetailsFrm> window;
};

TEST_F(TheateDetails, NewTheaterBeginsWithDefaults) {
  Open(0);
  EXPECT_EQ(window->windowTitle(), QStringLiteral("New Theater"));
  EXPECT_EQ(TextOf(*window, "txtName"), QStringLiteral("New Theater"));
  EXPECT_EQ(TextOf(*window, "txtSize"), QStringLiteral("1024"));
  for (const char* field : {"txtBullX", "txtBullY"}) {
    EXPECT_EQ(TextOf(*window, field), QStringLiteral("0"));
    EXPECT_TRUE(In<QLineEdit>(*window, field).isVisible());
  }
  EXPECT_TRUE(In<QLabel>(*window, "lblBullX").isVisible());
  for (const char* field : {"txtLat", "txtLong"}) EXPECT_EQ(TextOf(*window, field), QStringLiteral("0.00000000"));
  EXPECT_EQ(Label(*window, "lblPicSize"), QStringLiteral("Picture size: 1024"));
  EXPECT_EQ(Shown().toImage().pixelColor(5, 5), QColor(Qt::black));
  EXPECT_EQ(window->focusWidget(), &In<QLineEdit>(*window, "txtName"));
}

TEST_F(TheateDetails, EditedTheaterIsShown) {
  station.Catalogue.Theaters[2].CoordLat = -33.5;
  Open(2);
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Theater: Second theater"));
  EXPECT_EQ(TextOf(*window, "txtName"), QStringLiteral("Second theater"));
  EXPECT_EQ(TextOf(*window, "txtSize"), QStringLiteral("512"));
  EXPECT_EQ(Label(*window, "lblIniFile"), QStringLiteral("Theater INI file: two.ini"));
  EXPECT_EQ(TextOf(*window, "txtLat"), QStringLiteral("-33.50000000"));
  EXPECT_EQ(TextOf(*window, "txtLong"), QStringLiteral("125.00000000"));
  for (const char* hidden : {"txtBullX", "txtBullY"}) EXPECT_FALSE(In<QLineEdit>(*window, hidden).isVisible());
  for (const char* hidden : {"lblBullX", "lblBullY"}) EXPECT_FALSE(In<QLabel>(*window, hidden).isVisible());
  EXPECT_EQ(Label(*window, "lblPicSize"), QStringLiteral("Picture size: 64"));
  EXPECT_TRUE(test::NearColour(Shown().toImage().pixelColor(5, 5), Qt::darkGreen));
}

TEST_F(TheateDetails, TheaterWithoutItsPictureShowsTheKeptSize) {
  QFile::remove(folder.filePath(QStringLiteral("Theaters/two.png")));
  station.Catalogue.Theaters[2].PicSize = 2048;
  Open(2);
  EXPECT_EQ(Label(*window, "lblPicSize"), QStringLiteral("Picture Size: 2048"));
  EXPECT_TRUE(Shown().isNull());
  EXPECT_TRUE(desk.Boxes.empty());
}

TEST_F(TheateDetails, UnreadablePictureIsToldAndTheWindowStays) {
  Write("Theaters/two.png", "no picture");
  Open(2);
  ExpectBox(base::ProgramTitle().c_str(), "Error loading image file.");
  EXPECT_TRUE(window->isVisible());
}

TEST_F(TheateDetails, PictureOutsideTheFolderCountsAsUnreadable) {
  ASSERT_TRUE(
      QFile::copy(folder.filePath(QStringLiteral("Theaters/two.png")), folder.filePath(QStringLiteral("outside.png"))));
  for (const std::string& pic : {std::string("../outside.png"), PathOf("outside.png").toStdString()}) {
    station.Catalogue.Theaters[2].Pic = pic;
    around.Log.File.Open(program.State.AppPath / "log");
    Open(2);
    around.Log.File.Close();
    ExpectBox(base::ProgramTitle().c_str(), "Error loading image file.");
    EXPECT_TRUE(Shown().isNull());
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(Read("log").contains("leaves")) << "the log says why";
  }
}

TEST_F(TheateDetails, StoredValuesThatCouldNotBeTypedBlockNothing) {
  theaters::Theater& theater = station.Catalogue.Theaters[2];
  theater.Size = 9000;
  theater.CoordLat = 95;
  theater.CoordLong = -400;
  Open(2);
  Type(*window, "txtName", "Other");
  Press(*window, "Command1");
  EXPECT_TRUE(desk.Boxes.empty());
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(theater.DisplayName, "Other");
  EXPECT_EQ(theater.Size, 9000);
  EXPECT_EQ(theater.CoordLat, 95);
  EXPECT_EQ(theater.CoordLong, -400);
}

TEST_F(TheateDetails, StoredValuesAreJudgedOnceTheyAreTouched) {
  theaters::Theater& theater = station.Catalogue.Theaters[2];
  theater.Size = 9000;
  theater.CoordLat = 95;
  Open(2);
  Type(*window, "txtSize", "9001");
  Press(*window, "Command1");
  ExpectBox("Error", "The size of a theater must lie between 1 and 8192.");
  Type(*window, "txtSize", "600");
  Type(*window, "txtLat", "96");
  Press(*window, "Command1");
  ASSERT_EQ(desk.Boxes.size(), 1u);
  EXPECT_TRUE(desk.Boxes[0].Text.starts_with("The corner of a theater must lie between"));
  desk.Boxes.clear();
  Type(*window, "txtLat", "36");
  Press(*window, "Command1");
  EXPECT_TRUE(desk.Boxes.empty());
  EXPECT_EQ(theater.Size, 600);
  EXPECT_EQ(theater.CoordLat, 36);
}

TEST_F(TheateDetails, NameThatMakesNoFileMayBeLong) {
  Open(1);
  In<QLineEdit>(*window, "txtName").setText(QString(300, u'x'));
  Press(*window, "Command1");
  EXPECT_TRUE(desk.Boxes.empty());
  EXPECT_EQ(Current().DisplayName, std::string(300, 'x'));
}

TEST_F(TheateDetails, NameThatTheCodePageDoesNotHoldIsRefused) {
  for (const std::size_t index : {0u, 2u}) {
    Open(index);
    auto& name = In<QLineEdit>(*window, "txtName");
    name.clear();
    Commit(name, QStringLiteral("\uD55C\uAD6D caf\u00E9 \uD55C"));
    Press(*window, "Command1");
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(In<QLabel>(*window, "lblRefused").isVisible());
    EXPECT_EQ(Label(*window, "lblRefused"), QStringLiteral("These characters cannot be used here: \uD55C, \uAD6D."));
    EXPECT_EQ(name.text(), QStringLiteral("\uD55C\uAD6D caf\u00E9 \uD55C")) << "as typed";
    EXPECT_EQ(window->focusWidget(), &name);
    EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 2u);
    EXPECT_EQ(station.Catalogue.Theaters[2].DisplayName, "Second theater");
    EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("Theaters/__ caf\u00E9 _.ini"))));
  }
  Type(*window, "txtName", "Korea");
  Press(*window, "Command1");
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(station.Catalogue.Theaters[2].DisplayName, "Korea");
}

TEST_F(TheateDetails, CornerTakesDigitsASignInFrontCommaAndPoint) {
  Open(1);
  for (const char* field : {"txtLat", "txtLong"}) {
    SCOPED_TRACE(field);
    auto& line = In<QLineEdit>(*window, field);
    const std::pair<const char*, const char*> cases[] = {{"36,5N", "36,5"}, {"xx", ""},          {"-7.5", "-7.5"},
                                                         {"+12", "+12"},    {"1-2e3", "123"},    {"--5", "-5"},
                                                         {"5 \xB0", "5"},   {"-12,5W", "-12,5"}, {"+-1", "+1"}};
    for (const auto& [typed, taken] : cases) {
      Type(*window, field, typed);
      EXPECT_EQ(TextOf(*window, field), QString::fromLatin1(taken)) << typed;
    }
    Type(*window, field, "-5");
    QTest::keyClick(&line, Qt::Key_Home);
    QTest::keyClicks(&line, QStringLiteral("3-"));
    EXPECT_EQ(line.text(), QStringLiteral("-5")) << "the sign stands in front";
    line.selectAll();
    Paste(line, QStringLiteral("36,5N"));
    EXPECT_EQ(line.text(), QStringLiteral("-5")) << "half of what is pasted would be another place";
    line.selectAll();
    Paste(line, QStringLiteral("-36,5"));
    EXPECT_EQ(line.text(), QStringLiteral("-36,5"));
  }
  Press(*window, "Command1");
  EXPECT_EQ(Current().CoordLat, -36.5);
  EXPECT_EQ(Current().CoordLong, -36.5);
}

TEST_F(TheateDetails, SizeTakesDigitsOnly) {
  Open(0);
  Type(*window, "txtSize", "-1a2,3. 4");
  EXPECT_EQ(TextOf(*window, "txtSize"), QStringLiteral("1234"));
  QTest::keyClick(&In<QLineEdit>(*window, "txtSize"), Qt::Key_Backspace);
  EXPECT_EQ(TextOf(*window, "txtSize"), QStringLiteral("123"));
}

TEST_F(TheateDetails, BullseyeTakesDigitsCommaAndPoint) {
  Open(0);
  for (const char* field : {"txtBullX", "txtBullY"}) {
    Type(*window, field, "-1x2,5e.");
    EXPECT_EQ(TextOf(*window, field), QStringLiteral("12,5."));
  }
}

TEST_F(TheateDetails, NewTheaterHasWhatWasEntered) {
  Open(0);
  Type(*window, "txtName", "Balkans");
  Type(*window, "txtSize", "2048");
  Type(*window, "txtBullX", "12,5");
  Type(*window, "txtBullY", "700.25");
  Type(*window, "txtLat", "33,75");
  Type(*window, "txtLong", "-7.5");
  Press(*window, "Command1");
  EXPECT_FALSE(window->isVisible());
  ASSERT_EQ(station.Catalogue.Theaters.UpperBound(), 3u);
  const theaters::Theater& theater = station.Catalogue.Theaters[3];
  EXPECT_EQ(theater.Name, "Balkans");
  EXPECT_EQ(theater.Size, 2048);
  EXPECT_EQ(theater.PicSize, 1024);
  EXPECT_EQ(theater.CoordLat, 33.75);
  EXPECT_EQ(theater.CoordLong, -7.5);
  EXPECT_EQ(theater.Bulls[1].Name, "Default");
  EXPECT_EQ(theater.Bulls[1].X, 12.5);
  EXPECT_EQ(theater.Bulls[1].Y, 700.25);
}

TEST_F(TheateDetails, EmptyNameIsTold) {
  Open(0);
  Type(*window, "txtName", "");
  Press(*window, "Command1");
  ExpectBox("Error", "Theater needs a name...");
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 2u);
}

TEST_F(TheateDetails, SizeThatCannotBeIsTold) {
  Open(1);
  for (const char* size : {"0", "8193", "", "99999999999999999999"}) {
    Type(*window, "txtSize", size);
    Press(*window, "Command1");
    ExpectBox("Error", "The size of a theater must lie between 1 and 8192.");
    EXPECT_TRUE(window->isVisible());
  }
  EXPECT_EQ(Current().Size, 1024);
}

TEST_F(TheateDetails, NameOf300CharactersIsTold) {
  Open(0);
  In<QLineEdit>(*window, "txtName").setText(QString(300, u'x'));
  Press(*window, "Command1");
  ExpectBox("Error", "The name of a theater can have at most 100 characters.");
}

TEST_F(TheateDetails, NameOfADeviceGetsOtherFiles) {
  Open(0);
  Type(*window, "txtName", "con");
  Press(*window, "Command1");
  EXPECT_EQ(station.Catalogue.Theaters[3].Name, "con");
  EXPECT_EQ(station.Catalogue.Theaters[3].Pic, "con_.gif");
}

TEST_F(TheateDetails, PictureIsMadeSquareAndStored) {
  Write("tall.bmp",
        QByteArray::fromStdString(test::Bmp(800, 1000, 24, "", std::string(std::size_t{800} * 3 * 1000, '\x40'))));
  Open(1);
  Choose("tall.bmp");
  Press(*window, "cmdChange");
  ASSERT_EQ(desk.FileQuestions.size(), 1u);
  EXPECT_EQ(desk.FileQuestions[0].Title, "Open Map Image");
  EXPECT_EQ(desk.FileQuestions[0].Filter, "Images |*.bmp;*.jpg;*.gif;*.png;*.dds");
  EXPECT_EQ(Label(*window, "lblPicSize"), QStringLiteral("Picture size: 1000"));
  EXPECT_TRUE(test::NearColour(Shown().toImage().pixelColor(50, 50), QColor(0x40, 0x40, 0x40)));
  EXPECT_EQ(Current().PicSize, 64) << "held until OK";
  Press(*window, "Command1");
  EXPECT_EQ(Current().PicSize, 1000);
  EXPECT_EQ(QImage(folder.filePath(QStringLiteral("Theaters/one.png")), "GIF").size(), QSize(1000, 1000));
}

TEST_F(TheateDetails, PictureThatCannotBeLoadedLeavesTheFormerOne) {
  const std::string good = test::Bmp(2, 2, 24, "", std::string(16, '\x40'));
  Write("cut.bmp", QByteArray::fromStdString(good.substr(0, 60)));
  Write("none.bmp", QByteArray::fromStdString(test::Bmp(0, 0, 24, "", "")));
  Write("huge.bmp", QByteArray::fromStdString(test::Bmp(40000, 40000, 24, "", std::string(16, '\x40'))));
  Write("text.bmp", "no picture");
  Open(0);
  const QImage before = Shown().toImage();
  for (const char* name : {"cut.bmp", "none.bmp", "huge.bmp", "text.bmp", "missing.bmp"}) {
    SCOPED_TRACE(name);
    Choose(name);
    Press(*window, "cmdChange");
    ExpectBox(base::ProgramTitle().c_str(), "Error loading image file.");
    EXPECT_EQ(Shown().toImage(), before);
    EXPECT_EQ(Label(*window, "lblPicSize"), QStringLiteral("Picture size: 1024"));
    EXPECT_TRUE(window->isVisible());
  }
  Press(*window, "cmdChange");
  EXPECT_TRUE(desk.Boxes.empty()) << "a cancelled choice is no failure";
}

TEST_F(TheateDetails, CornerComesFromAMapFile) {
  Write("theater.map", QByteArray(1104, 'x') + QByteArray("\0\0\xFA\x42\0\0\x0A\x42", 8));
  Open(0);
  Choose("theater.map");
  Press(*window, "cmdGetCoords");
  ASSERT_EQ(desk.FileQuestions.size(), 1u);
  EXPECT_EQ(desk.FileQuestions[0].Title, "Open Map File");
  EXPECT_EQ(desk.FileQuestions[0].Filter, "Theater.map file |*.map");
  EXPECT_EQ(desk.FileQuestions[0].DefaultName, "theater.map");
  EXPECT_EQ(TextOf(*window, "txtLat"), QStringLiteral("34.50000000"));
  EXPECT_EQ(TextOf(*window, "txtLong"), QStringLiteral("125.00000000"));
}

TEST_F(TheateDetails, MapFileThatIsTooShortLeavesTheFields) {
  Write("theater.map", QByteArray(1111, 'x'));
  Open(2);
  Choose("theater.map");
  Press(*window, "cmdGetCoords");
  ASSERT_EQ(desk.Boxes.size(), 1u);
  EXPECT_EQ(TextOf(*window, "txtLat"), QStringLiteral("34.00000000"));
  EXPECT_EQ(TextOf(*window, "txtLong"), QStringLiteral("125.00000000"));
  Press(*window, "cmdGetCoords");
  EXPECT_EQ(desk.Boxes.size(), 1u) << "a cancelled choice is no failure";
}

TEST_F(TheateDetails, EscapeLeavesEverythingAsItWas) {
  Open(1);
  Type(*window, "txtName", "Other");
  QTest::keyClick(window.get(), Qt::Key_Escape);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(Current().DisplayName, "First theater");
}

TEST_F(TheateDetails, EnterIsOk) {
  Open(1);
  Type(*window, "txtName", "Other");
  QTest::keyClick(&In<QLineEdit>(*window, "txtName"), Qt::Key_Return);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(Current().DisplayName, "Other");
  EXPECT_EQ(Current().Name, "one");
}

}  // namespace
}  // namespace kestrel::shell
