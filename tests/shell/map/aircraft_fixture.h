#pragma once

#include <QMouseEvent>

#include "core/theater_switch.h"
#include "link/feed_text.h"
#include "map/geometry.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {

/// The whole station in a session with the player Adams at map point (396.34, 396.34) and Bandit1 due east of the
/// second bullseye, which is at (300, 400); a mile is 1.852 map units.
class AircraftOnTheMap : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    if (HasFatalFailure()) return;
    Start();
    windows.Refresh(core::SelectBullseye(program, 2));
    Connect();
    socket.Arrive(test::Message("NEWCLT", test::ClientData("10", "Adams")));
    // 1,300,000 feet are 396.34 map units.
    for (const char* east : {"1000000", "1300000"}) {
      socket.Arrive(test::Message("INDATA", test::PositionData("10", "1300000", east, "20000")));
    }
    Snapshot("150");
    ASSERT_TRUE(QTest::qWaitFor([this] { return Picture().MapDraws() > 0 && Settled(); }));
  }

  void Snapshot(const char* range) {
    socket.Arrive(test::Message("AILOCA", test::AIRecord("Bandit1", "090", range, "25")));
  }
  bool Settled() {
    const std::uint64_t before = Picture().PlotDraws();
    Picture().RedrawPlots();
    return Picture().PlotDraws() == before + 1;
  }
  QPointF PixelOf(map::MapPoint at) {
    const map::SurfacePoint place = map::SurfaceFromMap(View(), at);
    return {place.X / 15, place.Y / 15};
  }
  QPointF Player() { return PixelOf({station.Plots.Clients[1].X, station.Plots.Clients[1].Y}); }
  QPointF Bandit() {
    const link::AIPlotRecord& plot = station.Plots.AIPlots[1];
    return PixelOf({plot.X, View().Size - plot.Y});
  }
  void Mouse(QEvent::Type type, QPointF at, Qt::MouseButton button = Qt::NoButton) {
    QMouseEvent event(type, at, Picture().mapToGlobal(at), button, button, Qt::NoModifier);
    QCoreApplication::sendEvent(&Picture(), &event);
  }
  void PointTo(QPointF at) { Mouse(QEvent::MouseMove, at); }
  template <class Widget>
  Widget& OnMap(const char* name) {
    auto* part = Picture().findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(part, nullptr) << name;
    return *part;
  }
  std::uint64_t Draws() { return Picture().MapDraws() * 1000 + Picture().PlotDraws(); }
};

}  // namespace kestrel::shell
