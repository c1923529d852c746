// A double click in the window Clients shows its aircraft on the map.

#include "map/ties.h"
#include "shell/link/clients_fixture.h"

namespace kestrel::shell {
namespace {

class ClientsShownOnTheMap : public ClientsWindow {
 protected:
  void DoubleClickItem(int row, int x) {
    const QRect item = List().visualRect(List().model()->index(row, 0));
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, QPoint(item.left() + x, item.center().y()));
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, QPoint(item.left() + x, item.center().y()));
  }
  std::string Ringed() { return station.Ties.Ringed ? station.Ties.Ringed->Name : "none"; }
};

TEST_F(ClientsShownOnTheMap, ADoubleClickOnAPlayerCentresAndRingsHim) {
  Join();
  for (const char* east : {"1000000", "1300000"}) {
    socket.Arrive(Message("INDATA", test::PositionData("20", "1300000", east, "20000")));
  }
  Click(1);
  QTest::mouseDClick(Tree().viewport(), Qt::LeftButton, {}, Tree().visualRect(Node(1)).center());
  ASSERT_TRUE(station.Ties.Ringed);
  EXPECT_EQ(station.Ties.Ringed->Id, 20);
  // 1,300,000 feet are 396.34 map units from the west, 15 view units each.
  EXPECT_NEAR(View().ViewCenterX, 396.34 * 15, 1);
  EXPECT_EQ(SelectedPlot(), 2U) << "the first click has selected him, as ever";
  station.Ties.Ringed.reset();
  QTest::mouseDClick(Tree().viewport(), Qt::LeftButton, {}, Tree().visualRect(Node(0)).center());
  EXPECT_FALSE(station.Ties.Ringed) << "one without a position has no place";
  QTest::mouseDClick(Tree().viewport(), Qt::RightButton, {}, Tree().visualRect(Node(1)).center());
  EXPECT_FALSE(station.Ties.Ringed);
}

TEST_F(ClientsShownOnTheMap, ADoubleClickOnANameOfTheAIListDoesTheSame) {
  Connect();
  socket.Arrive(Message("AILOCA", AIRecord("Cobra1", "090", "10", "20") + AIRecord("Viper1", "090", "010", "20") +
                                      AIRecord("Viper1", "090", "200", "20")));
  DoubleClickItem(0, 60);
  EXPECT_EQ(Ringed(), "Cobra1    ");
  DoubleClickItem(2, 60);
  EXPECT_EQ(Ringed(), "Viper1    ");
  const link::AIPlotRecord& plot = station.Plots.AIPlots[3];
  EXPECT_NEAR(station.Ties.Ringed->At.X, plot.X, 0.01) << "of two of one name the one in this row";
  EXPECT_EQ(Friends(), Texts{});
}

TEST_F(ClientsShownOnTheMap, TwoClicksOnACheckAreTwoChangesAndNoMore) {
  Connect();
  Snapshot({"Cobra1"});
  DoubleClickItem(0, 10);
  EXPECT_EQ(Ringed(), "none");
}

}  // namespace
}  // namespace kestrel::shell
