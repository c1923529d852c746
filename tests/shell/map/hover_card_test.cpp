#include "shell/map/hover_card.h"

#include "core/view_options.h"
#include "shell/map/aircraft_fixture.h"

namespace kestrel::shell {
namespace {

class CardOverTheMap : public AircraftOnTheMap {
 protected:
  void SetUp() override {
    AircraftOnTheMap::SetUp();
    if (HasFatalFailure()) return;
    windows.Refresh(core::ToggleOption(program, "chkPlotCard"));
  }

  HoverCard& Card() { return OnMap<HoverCard>("HoverCard"); }
  bool Comes() {
    return QTest::qWaitFor([this] { return Card().isVisible(); });
  }
  /// After a time in which a card that was awaited before would have come.
  static void Outwait() {
    bool over = false;
    QTimer::singleShot(HoverCard::RestMs + 50, qApp, [&over] { over = true; });
    ASSERT_TRUE(QTest::qWaitFor([&over] { return over; }));
  }
  std::string Value(std::string_view label) {
    for (const map::PlotCard::Row& row : Card().Card().Rows) {
      if (row.Label == label) return row.Value;
    }
    return "no row";
  }
};

TEST_F(CardOverTheMap, ComesWhereThePointerRestsOnAPlotAndDrawsNothingOfTheMap) {
  const std::uint64_t draws = Draws();
  PointTo(Player() + QPointF(11, 0));
  EXPECT_FALSE(Card().isVisible()) << "not at once";
  ASSERT_TRUE(Comes());
  EXPECT_EQ(Card().Card().Title, "Adams");
  EXPECT_EQ(Value("Callsign"), "Airplane 10");
  EXPECT_EQ(Value("Altitude"), "20 000 ft");
  EXPECT_EQ(Value("Track"), "090");
  const QPoint place = Card().pos();
  PointTo(Player() + QPointF(-4, 5));
  EXPECT_EQ(Card().pos(), place + QPoint(-15, 5)) << "it follows the pointer";
  EXPECT_EQ(Draws(), draws);
}

TEST_F(CardOverTheMap, FollowsWhatComesOfItsPlot) {
  PointTo(Player());
  ASSERT_TRUE(Comes());
  socket.Arrive(test::Message("INDATA", test::PositionData("10", "1300000", "1302000", "30000")));
  EXPECT_TRUE(Card().isVisible());
  EXPECT_EQ(Value("Altitude"), "30 000 ft");
  socket.Arrive(test::Message("DELCLT", "10"));
  EXPECT_FALSE(Card().isVisible());
}

TEST_F(CardOverTheMap, TellsOfAnAIAircraftAsItFlies) {
  PointTo(Bandit());
  ASSERT_TRUE(Comes());
  EXPECT_EQ(Card().Card().Title, "Bandit1");
  EXPECT_EQ(Value("Bullseye"), "090/150 NM");
  EXPECT_EQ(Value("Track"), "-");
  Snapshot("151");
  EXPECT_TRUE(Card().isVisible()) << "it is still within 12 pixels of the pointer";
  EXPECT_EQ(Value("Bullseye"), "090/151 NM");
  EXPECT_EQ(Value("Track"), "090");
  Snapshot("190");
  EXPECT_FALSE(Card().isVisible()) << "it has flown away from under the pointer";
}

TEST_F(CardOverTheMap, GoesWithThePointer) {
  PointTo(Player());
  ASSERT_TRUE(Comes());
  PointTo(Player() + QPointF(13, 0));
  EXPECT_FALSE(Card().isVisible());
  PointTo(Player());
  ASSERT_TRUE(Comes());
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(&Picture(), &leave);
  EXPECT_FALSE(Card().isVisible());
  PointTo(Player());
  ASSERT_TRUE(Comes());
  Mouse(QEvent::MouseButtonPress, Player(), Qt::LeftButton);
  EXPECT_FALSE(Card().isVisible());
  Mouse(QEvent::MouseMove, Player(), Qt::LeftButton);
  Outwait();
  EXPECT_FALSE(Card().isVisible()) << "while a button is held";
}

TEST_F(CardOverTheMap, IsOfAnotherPlotAfterItsOwnTime) {
  PointTo(Player());
  ASSERT_TRUE(Comes());
  PointTo(Bandit());
  EXPECT_FALSE(Card().isVisible());
  ASSERT_TRUE(Comes());
  EXPECT_EQ(Card().Card().Title, "Bandit1");
}

TEST_F(CardOverTheMap, StaysOnTheMap) {
  station.Plots.Clients[1].Name = std::string(10'000, 'W');
  const map::MapPoint corner = map::MapFromSurface(View(), {View().SurfaceWidth - 45, View().SurfaceHeight - 45});
  station.Plots.Clients[1].X = corner.X;
  station.Plots.Clients[1].Y = corner.Y;
  PointTo(Player());
  ASSERT_TRUE(Comes());
  EXPECT_TRUE(Picture().rect().contains(Card().geometry()));
  EXPECT_LT(Card().width(), 400);
  EXPECT_FALSE(Card().geometry().contains(Player().toPoint())) << "the plot is not covered";
}

TEST_F(CardOverTheMap, LetsPressesThroughAndTakesNoKeyboard) {
  EXPECT_TRUE(Card().testAttribute(Qt::WA_TransparentForMouseEvents));
  EXPECT_EQ(Card().focusPolicy(), Qt::NoFocus);
}

TEST_F(CardOverTheMap, IsOffAsTheStationShips) {
  EXPECT_FALSE(map::Extras().PLOTCARD);
  windows.Refresh(core::ToggleOption(program, "chkPlotCard"));
  PointTo(Player());
  Outwait();
  EXPECT_FALSE(Card().isVisible());
}

}  // namespace
}  // namespace kestrel::shell
