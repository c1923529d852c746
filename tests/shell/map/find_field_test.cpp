#include "shell/map/find_field.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>

#include "core/tapes.h"
#include "map/ties.h"
#include "shell/map/aircraft_fixture.h"

namespace kestrel::shell {
namespace {

using Found = std::vector<std::string>;

class FindOverTheMap : public AircraftOnTheMap {
 protected:
  FindField& Field() { return OnMap<FindField>("FindField"); }
  QLineEdit& Typed() { return OnMap<QLineEdit>("txtFind"); }
  QListView& List() { return OnMap<QListView>("lstFind"); }
  void Open() {
    Frame().activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &Frame(); }));
    Picture().setFocus();
    QTest::keyClick(&Picture(), Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(Field().isVisible());
    ASSERT_TRUE(Typed().hasFocus());
  }
  void Key(Qt::Key key) { QTest::keyClick(&Typed(), key); }
  void Type(const char* text) {
    Typed().selectAll();
    QTest::keyClicks(&Typed(), QString::fromLatin1(text));
  }
  Found Rows() {
    Found rows;
    for (int row = 0; row < List().model()->rowCount(); ++row) rows.push_back(RowText(row));
    return rows;
  }
  std::string RowText(int row) { return List().model()->index(row, 0).data().toString().toStdString(); }
  std::string Chosen() { return List().currentIndex().data().toString().toStdString(); }
  std::string Count() { return OnMap<QLabel>("lblFound").text().toStdString(); }
  void Many(const std::vector<std::string>& names) {
    std::string data;
    for (const std::string& name : names) data += test::AIRecord(name, "090", "150", "25");
    socket.Arrive(test::Message("AILOCA", data));
  }
};

TEST_F(FindOverTheMap, OpensByCtrlFAtTheUpperLeftAndEscGivesTheKeyboardBack) {
  EXPECT_FALSE(Field().isVisible());
  const std::uint64_t draws = Draws();
  Open();
  EXPECT_EQ(Field().pos(), QPoint(8, 8));
  EXPECT_EQ(Rows(), (Found{"Adams (Airplane 10)", "Bandit1"}));
  EXPECT_EQ(Count(), "2 aircraft");
  Type("dit");
  EXPECT_EQ(Rows(), Found{"Bandit1"});
  EXPECT_EQ(Count(), "1 aircraft");
  Type("zz");
  EXPECT_EQ(Count(), "No aircraft");
  Key(Qt::Key_Return);
  EXPECT_EQ(Draws(), draws) << "nothing of it draws the map";
  Key(Qt::Key_Escape);
  EXPECT_FALSE(Field().isVisible());
  EXPECT_TRUE(Picture().hasFocus());
}

TEST_F(FindOverTheMap, EnterCentresTheMapAndRingsThePlotForThreeSeconds) {
  View().Resolution = 4;
  map::RefreshPositions(View());
  Open();
  Key(Qt::Key_Down);
  EXPECT_EQ(Chosen(), "Bandit1");
  const std::uint64_t maps = Picture().MapDraws();
  Key(Qt::Key_Return);
  EXPECT_EQ(Picture().MapDraws(), maps + 1);
  EXPECT_NEAR(Bandit().x(), Picture().width() / 2.0, 1);
  EXPECT_NEAR(Bandit().y(), Picture().height() / 2.0, 1);
  EXPECT_EQ(View().Resolution, 4);
  EXPECT_TRUE(Field().isVisible()) << "until Esc";
  ASSERT_TRUE(station.Ties.Ringed);
  EXPECT_EQ(station.Ties.Ringed->Name, "Bandit1   ");
  clock.Ticks += 2999;
  bool looked = false;
  QTimer::singleShot(300, qApp, [&looked] { looked = true; });
  ASSERT_TRUE(QTest::qWaitFor([&looked] { return looked; }));
  EXPECT_TRUE(station.Ties.Ringed);
  const std::uint64_t plots = Picture().PlotDraws();
  clock.Ticks += 1;
  ASSERT_TRUE(QTest::qWaitFor([this] { return !station.Ties.Ringed; }));
  EXPECT_EQ(Picture().PlotDraws(), plots + 1);
}

TEST_F(FindOverTheMap, FollowsWhoComesAndGoesAndKeepsTheChoice) {
  Many({"Alpha1", "Bravo1", "Delta1"});
  Open();
  Type("a1");
  EXPECT_EQ(Rows(), (Found{"Alpha1", "Delta1"}));
  Key(Qt::Key_Down);
  EXPECT_EQ(Chosen(), "Delta1");
  Many({"Alpha1", "Bravo1", "Cha1", "Delta1"});
  EXPECT_TRUE(QTest::qWaitFor([this] { return Rows() == Found{"Alpha1", "Cha1", "Delta1"}; }));
  EXPECT_EQ(Chosen(), "Delta1");
  Many({"Alpha1", "Bravo1"});
  EXPECT_TRUE(QTest::qWaitFor([this] { return Rows() == Found{"Alpha1"}; }));
  EXPECT_EQ(Chosen(), "Alpha1");
  socket.Arrive(test::Message("DELCLT", "10"));
  Type("");
  Key(Qt::Key_Backspace);
  EXPECT_EQ(Rows(), (Found{"Alpha1", "Bravo1"}));
}

TEST_F(FindOverTheMap, KeysAndWheelInItAreNotTheMaps) {
  Open();
  const double resolution = View().Resolution;
  const double centre = View().ViewCenterY;
  for (const Qt::Key key : {Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Up, Qt::Key_Down, Qt::Key_B, Qt::Key_Home}) {
    Key(key);
  }
  EXPECT_EQ(View().Resolution, resolution);
  EXPECT_EQ(View().ViewCenterY, centre);
  EXPECT_TRUE(View().BullseyeVisible);
  station.MapOptions.MAP_AUTOFOCUS = true;
  PointTo({400, 300});
  EXPECT_TRUE(Typed().hasFocus()) << "a pointer on its way takes no keyboard from who types";
}

TEST_F(FindOverTheMap, ShowsTheFirstOfTenThousandAndStaysQuick) {
  for (int n = 0; n < 10'000; ++n) {
    link::AIPlotRecord& plot = station.Plots.AIPlots.Append(link::AIPlotRecord(station.Plots.AIPlots[1]));
    plot.Name = "Mig" + std::to_string(n);
  }
  Open();
  EXPECT_EQ(Count(), "The first 100 of 10002 aircraft");
  EXPECT_EQ(Rows().size(), 100U);
  Type("mig9999");
  EXPECT_EQ(Rows(), Found{"Mig9999"});
}

TEST_F(FindOverTheMap, ShowsNamesThatLookLikeMarksAsTheyAreWritten) {
  station.Plots.Clients[1].Name = "<b>x</b>\n" + std::string(10'000, 'y');
  Open();
  EXPECT_EQ(RowText(0), "<b>x</b> " + std::string(51, 'y') + "... (Airplane 10)");
  EXPECT_EQ(List().horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
  EXPECT_LT(Field().width(), 300);
}

TEST_F(FindOverTheMap, OpensFromTheMenuToo) {
  Frame().activateWindow();
  ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &Frame(); }));
  Action("mnuFind").trigger();
  EXPECT_TRUE(Typed().hasFocus());
}

TEST_F(FindOverTheMap, WorksInAReplay) {
  clock.Date = 46347.5;
  core::RecordingStart(program);
  for (int record = 0; record < 3; ++record) {
    clock.Ticks += 1000;
    clock.Date += 5.0 / 86400;
    socket.Arrive(test::Message("SYNCRO"));
  }
  core::RecordingEnd(program);
  desk.FileAnswers = {folder.filePath(QStringLiteral("TAPES/21-11-26_120000.tap")).toStdString()};
  core::LoadTape(program);
  ASSERT_TRUE(station.Tapes.Player.State().Loaded());
  Open();
  Type("bandit");
  EXPECT_EQ(Rows(), Found{"Bandit1"});
  Key(Qt::Key_Return);
  EXPECT_TRUE(station.Ties.Ringed);
}

}  // namespace
}  // namespace kestrel::shell
