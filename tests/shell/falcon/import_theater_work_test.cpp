#include <QDir>

#include "shell/falcon/import_theater_fixture.h"

namespace kestrel::shell {
namespace {

/// While something is going on.
class ImportTheaterAtWork : public ImportTheater {
 protected:
  void SetUp() override {
    ImportTheater::SetUp();
    Open();
    In<QTabWidget>(*window, "tabMethod").setCurrentIndex(1);
  }
  /// The names of all files in the folder of the theaters.
  QStringList Theaters() { return QDir(folder.filePath(QStringLiteral("Theaters"))).entryList(QDir::Files); }
};

TEST_F(ImportTheaterAtWork, AllButCancelIsDisabledAndTheBarIsShown) {
  int turns = 0;
  desk.WhenEventsRun = [&] {
    ++turns;
    for (const char* name : {"cmdOK", "cmdBack", "Opt2colorstype_0", "chkShading", "cmdAutoCalculate"}) {
      EXPECT_FALSE(In<QAbstractButton>(*window, name).isEnabled()) << name;
    }
    EXPECT_TRUE(In<QPushButton>(*window, "cmdCancel").isEnabled());
    EXPECT_TRUE(In<QProgressBar>(*window, "ProgressBar1").isVisible());
    // Enter, while it is at work, begins no second import.
    QTest::keyClick(window.get(), Qt::Key_Return);
    window->accept();
  };
  window->accept();
  EXPECT_GT(turns, 0);
}

TEST_F(ImportTheaterAtWork, CancelLeavesNoTraceAndTheWindowOpen) {
  const QStringList before = Theaters();
  const QByteArray settings = Read("KESTREL.ini");
  desk.WhenEventsRun = [&] { Press(*window, "cmdCancel"); };
  Press(*window, "cmdOK");
  EXPECT_TRUE(window->isVisible());
  EXPECT_FALSE(In<QProgressBar>(*window, "ProgressBar1").isVisible());
  for (const char* name : {"cmdOK", "cmdBack", "chkShading", "cmdAutoCalculate"}) {
    EXPECT_TRUE(In<QAbstractButton>(*window, name).isEnabled()) << name;
  }
  EXPECT_EQ(Theaters(), before);
  EXPECT_EQ(Read("KESTREL.ini"), settings);
  EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 2u);
  EXPECT_TRUE(desk.Boxes.empty());
  // It can be begun again.
  desk.WhenEventsRun = {};
  Press(*window, "cmdOK");
  EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 3u);
}

TEST_F(ImportTheaterAtWork, EscapeAndClosingTheWindowEndTheWorkAlone) {
  desk.WhenEventsRun = [&] { QTest::keyClick(window.get(), Qt::Key_Escape); };
  Press(*window, "cmdOK");
  EXPECT_TRUE(window->isVisible());
  desk.WhenEventsRun = [&] { window->close(); };
  Press(*window, "cmdOK");
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 2u);
}

TEST_F(ImportTheaterAtWork, AutoCalculateCanBeCancelled) {
  In<QTabWidget>(*window, "tabMethod").setCurrentIndex(0);
  Type(*window, "txtColors", "3");
  desk.WhenEventsRun = [&] { Press(*window, "cmdCancel"); };
  Press(*window, "cmdAutoCalculate");
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(Listed().isEmpty());
  EXPECT_EQ(TextOf(*window, "txtColors"), QStringLiteral("3"));
  EXPECT_TRUE(desk.Boxes.empty());
}

TEST_F(ImportTheaterAtWork, HeightsThatCannotBeReadAreToldAndTheWindowStays) {
  island.Write("Terrdata/korea/terrain/theater.l2", "cut");
  Press(*window, "cmdOK");
  ASSERT_EQ(desk.Boxes.size(), 1u);
  EXPECT_TRUE(desk.Boxes[0].Text.starts_with("The theater could not be imported: "));
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(In<QPushButton>(*window, "cmdOK").isEnabled());
}

TEST_F(ImportTheaterAtWork, TheLogTellsHowLongItTook) {
  around.Log.File.Open(program.State.AppPath / "log");
  Press(*window, "cmdOK");
  around.Log.File.Close();
  EXPECT_TRUE(Read("log").contains("Imported the theater in ")) << Read("log").toStdString();
  EXPECT_TRUE(Read("log").contains("the longest time without events "));
}

}  // namespace
}  // namespace kestrel::shell
