#include "shell/map/lost_link.h"

#include <QCheckBox>
#include <QPushButton>

#include "core/healing.h"
#include "core/theater_switch.h"
#include "core/view_options.h"
#include "link/feed_text.h"
#include "map/geometry.h"
#include "shell/frame/lamp.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

using test::Message;

/// The whole station in a session with one player; the peer, the clock and the looks at the link are the test's.
class LinkOverTheMap : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    if (HasFatalFailure()) return;
    // The looks come when the test asks for them.
    clock.Ticks = 50'000;
    Start();
    ASSERT_TRUE(QTest::qWaitFor([this] { return Picture().MapDraws() > 0 && Settled(); }));
    Join();
  }

  void Join() {
    Connect();
    socket.Arrive(Message("NEWCLT", test::ClientData("10", "Adams")));
    // 1,300,000 feet are 396.34 map units.
    for (const char* east : {"1000000", "1300000"}) {
      socket.Arrive(Message("INDATA", test::PositionData("10", "1300000", east, "20000")));
    }
  }
  bool Settled() {
    const std::uint64_t before = Picture().PlotDraws();
    Picture().RedrawPlots();
    return Picture().PlotDraws() == before + 1;
  }
  LostLink& Lost() { return Frame().Lost(); }
  template <class Control>
  Control& Part(const char* name) {
    return *Picture().findChild<Control*>(QString::fromLatin1(name));
  }
  bool WordsShown() { return Part<QFrame>("LinkWords").isVisible(); }
  QString Words() { return Part<QLabel>("lblLink").text(); }
  void Press(const char* button) { QTest::mouseClick(&Part<QPushButton>(button), Qt::LeftButton); }
  /// `seconds` later at the next look.
  void Pass(int seconds) {
    for (int second = 0; second < seconds; ++second) {
      clock.Ticks += 1000;
      core::LinkTick(program);
      Lost().Follow();
    }
  }
  QImage Map() { return Picture().grab().toImage(); }
  /// Pixels that have a colour, of the map without the words.
  static int Coloured(const QImage& picture) {
    int count = 0;
    for (int y = picture.height() / 4; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        const QRgb pixel = picture.pixel(x, y);
        count += qRed(pixel) != qGreen(pixel) || qGreen(pixel) != qBlue(pixel);
      }
    }
    return count;
  }
  QPointF PixelOf(map::MapPoint at) {
    const map::SurfacePoint place = map::SurfaceFromMap(View(), at);
    return {place.X / 15, place.Y / 15};
  }
};

TEST_F(LinkOverTheMap, LostOneKeepsTheLastPictureInGreyUntilItIsGivenUp) {
  const QImage surface = Picture().ShownImage().copy();
  EXPECT_GT(Coloured(Map()), 1000);
  EXPECT_FALSE(WordsShown());
  socket.PeerCloses();
  EXPECT_TRUE(WordsShown());
  EXPECT_EQ(Words(), QStringLiteral("LOST 12:00:00, 0 s ago"));
  EXPECT_EQ(Coloured(Map()), 0);
  EXPECT_TRUE(station.Plots.Clients.Empty()) << "ended as ever";
  EXPECT_NE(Picture().ShownImage(), surface) << "the map itself has no plots any more";
  EXPECT_TRUE(Lost().HoldsPicture());
  Pass(35);
  EXPECT_EQ(Words(), QStringLiteral("LOST 12:00:00, 35 s ago"));
  Press("cmdStopHealing");
  EXPECT_FALSE(WordsShown());
  EXPECT_FALSE(Lost().HoldsPicture());
  EXPECT_GT(Coloured(Map()), 1000);
}

TEST_F(LinkOverTheMap, GreyPictureIsTheOneThatWasShownUnderTheHatching) {
  const QImage before = Map().convertToFormat(QImage::Format_Grayscale8);
  socket.PeerCloses();
  const QImage lost = Map().convertToFormat(QImage::Format_Grayscale8);
  ASSERT_EQ(lost.size(), before.size());
  int same = 0, darker = 0, other = 0;
  for (int y = before.height() / 4; y < before.height(); ++y) {
    for (int x = 0; x < before.width(); ++x) {
      const int difference = qGray(lost.pixel(x, y)) - qGray(before.pixel(x, y));
      ++(std::abs(difference) <= 1 ? same : difference < 0 ? darker : other);
    }
  }
  EXPECT_EQ(other, 0);
  EXPECT_GT(darker, same / 20) << "hatched";
  EXPECT_GT(same, darker) << "and to be seen through it";
}

TEST_F(LinkOverTheMap, ReconnectCallsOnceAndDataMakesTheGreyGo) {
  socket.PeerCloses();
  const int before = socket.Connects;
  Press("cmdReconnect");
  EXPECT_EQ(socket.Connects, before + 1);
  EXPECT_FALSE(Part<QPushButton>("cmdReconnect").isEnabled()) << "one is on its way";
  socket.Fail("Connection refused");
  EXPECT_TRUE(desk.Boxes.empty());
  EXPECT_EQ(Part<QLabel>("lblLinkDetail").text(), QStringLiteral("Connection refused."));
  EXPECT_TRUE(Part<QPushButton>("cmdReconnect").isEnabled());
  EXPECT_EQ(Coloured(Map()), 0) << "still the picture that was lost";
  Press("cmdReconnect");
  socket.Accept();
  EXPECT_EQ(Coloured(Map()), 0);
  EXPECT_EQ(Frame().windowTitle(), QStringLiteral("KESTREL v1.0.0 - BLUE CHANNEL"));
  socket.Arrive(Message("NEWCLT", test::ClientData("10", "Adams")));
  EXPECT_FALSE(WordsShown());
  EXPECT_FALSE(Lost().HoldsPicture());
  EXPECT_GT(Coloured(Map()), 1000);
}

TEST_F(LinkOverTheMap, BoxOfTheWordsIsTheSettingOfTheOptions) {
  socket.PeerCloses();
  auto& box = Part<QCheckBox>("chkByItself");
  EXPECT_FALSE(box.isChecked());
  QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(10, box.height() / 2));
  EXPECT_TRUE(station.HealingOptions.RECONNECT);
  const int before = socket.Connects;
  Pass(1);
  EXPECT_EQ(socket.Connects, before + 1);
  socket.Fail("Connection refused");
  EXPECT_EQ(Part<QLabel>("lblLinkDetail").text(), QStringLiteral("Connection refused. Next try in 2 s."));
  QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(10, box.height() / 2));
  Pass(10);
  EXPECT_EQ(socket.Connects, before + 1);
  windows.Refresh(core::ToggleOption(program, "chkReconnect"));
  EXPECT_TRUE(box.isChecked()) << "changed in the options";
}

TEST_F(LinkOverTheMap, ErrorIsToldInItsBoxWithTheOptionOffAndInTheWordsWithItOn) {
  desk.WhileOpen = [this] { EXPECT_TRUE(WordsShown()) << "already, below the box"; };
  socket.Fail("Connection reset by peer");
  ASSERT_EQ(desk.Boxes.size(), 1u);
  EXPECT_EQ(desk.Boxes[0].Text, "Connection reset by peer");
  station.HealingOptions.RECONNECT = true;
  Join();
  EXPECT_FALSE(WordsShown()) << "the person's own call";
  socket.Fail("Connection reset by peer");
  EXPECT_EQ(desk.Boxes.size(), 1u);
  EXPECT_TRUE(WordsShown());
}

TEST_F(LinkOverTheMap, SilenceGreysTheMapAndIsToldByTheLampUntilDataComes) {
  auto& lamp = *Frame().Strip().findChild<Lamp*>(QStringLiteral("StatPic_Act"));
  Pass(11);
  EXPECT_FALSE(WordsShown());
  Pass(1);
  EXPECT_TRUE(QTest::qWaitFor([&lamp] { return lamp.toolTip() == QStringLiteral("no data for 12 s"); }));
  EXPECT_TRUE(lamp.Failed());
  EXPECT_EQ(Words(), lamp.toolTip());
  EXPECT_FALSE(Part<QPushButton>("cmdReconnect").isVisible()) << "the link is up";
  EXPECT_EQ(Coloured(Map()), 0);
  QTest::keyClick(&Picture(), Qt::Key_PageUp);
  EXPECT_EQ(Coloured(Map()), 0);
  EXPECT_EQ(Map().convertToFormat(QImage::Format_Grayscale8).pixel(5, 500),
            Picture().ShownImage().convertToFormat(QImage::Format_Grayscale8).pixel(5, 500))
      << "the map as it is now, not hatched";
  socket.Arrive(Message("SYNCRO"));
  EXPECT_FALSE(WordsShown());
  EXPECT_FALSE(Lost().HoldsPicture());
  EXPECT_GT(Coloured(Map()), 1000);
  EXPECT_TRUE(QTest::qWaitFor([&lamp] { return lamp.toolTip() == QStringLiteral("No data"); }));
  EXPECT_FALSE(lamp.Failed());
}

TEST_F(LinkOverTheMap, LinkWithoutASessionIsToldWithoutGrey) {
  session.Disconnect();
  Connect();
  Pass(10);
  EXPECT_EQ(Words(), QStringLiteral("connected, but no session data: is this a session server?"));
  EXPECT_FALSE(Part<QPushButton>("cmdReconnect").isVisible());
  EXPECT_FALSE(Lost().HoldsPicture());
  EXPECT_GT(Coloured(Map()), 1000);
  Action("mnuDisconnect").trigger();
  EXPECT_FALSE(WordsShown());
}

TEST_F(LinkOverTheMap, LostPictureStaysOnItsPlacesOfTheMap) {
  station.MapOptions.REALLABELSVISIBLE = false;
  const QPointF before = PixelOf({station.Plots.Clients[1].X, station.Plots.Clients[1].Y});
  const map::MapPoint at{station.Plots.Clients[1].X, station.Plots.Clients[1].Y};
  socket.PeerCloses();
  QTest::keyClick(&Picture(), Qt::Key_PageUp);
  const QPointF now = PixelOf(at);
  ASSERT_GT((now - before).manhattanLength(), 20) << "the map has been zoomed";
  const QImage lost = Map();
  station.Healing = {};
  Lost().Follow();
  const QImage empty = Map().convertToFormat(QImage::Format_Grayscale8);
  // The symbol of the aircraft is another grey than the map, which has one colour there.
  const auto greys = [](const QImage& picture, QPointF place) {
    int least = 255, most = 0;
    for (int dy = -6; dy <= 6; ++dy) {
      for (int dx = -6; dx <= 6; ++dx) {
        const int grey = qGray(picture.pixel(place.toPoint() + QPoint(dx, dy)));
        least = std::min(least, grey);
        most = std::max(most, grey);
      }
    }
    return std::pair(least, most);
  };
  const auto [emptyLeast, emptyMost] = greys(empty, now);
  const auto [least, most] = greys(lost, now);
  EXPECT_GT(emptyLeast - least, 30) << "the aircraft is where it was on the map; there " << emptyMost << ' ' << most;
  EXPECT_EQ(Coloured(lost), 0);
}

TEST_F(LinkOverTheMap, MouseGoesThroughThePictureAndNotThroughTheWords) {
  socket.PeerCloses();
  const auto click = [this](QPoint place) {
    QTest::mouseClick(Frame().windowHandle(), Qt::LeftButton, {}, Picture().mapTo(&Frame(), place));
  };
  const double anchor = View().AnchorX;
  click(Part<QFrame>("LinkWords").pos() + QPoint(3, 3));
  EXPECT_EQ(View().AnchorX, anchor);
  click({40, 300});
  EXPECT_NE(View().AnchorX, anchor);
}

TEST_F(LinkOverTheMap, WordsStandAtTheUpperMiddleOfEverySize) {
  socket.PeerCloses();
  const auto& words = Part<QFrame>("LinkWords");
  for (const QSize& size : {QSize(900, 600), QSize(1200, 700)}) {
    Frame().resize(size);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Frame().size() == size && Settled(); }));
    EXPECT_LE(std::abs(words.geometry().center().x() - Picture().rect().center().x()), 1);
    EXPECT_LT(words.y(), 30);
    EXPECT_EQ(Lost().size(), Picture().size());
    EXPECT_EQ(Coloured(Map()), 0);
  }
}

TEST_F(LinkOverTheMap, ButtonsAreReachedByTabAndGiveTheKeyboardBack) {
  socket.PeerCloses();
  Frame().activateWindow();
  Part<QPushButton>("cmdStopHealing").setFocus();
  ASSERT_TRUE(QTest::qWaitFor([this] { return Part<QPushButton>("cmdStopHealing").hasFocus(); }));
  QTest::keyClick(&Part<QPushButton>("cmdStopHealing"), Qt::Key_Space);
  EXPECT_FALSE(WordsShown());
  EXPECT_TRUE(Picture().hasFocus());
}

TEST_F(LinkOverTheMap, AnotherTheaterLeavesNothingOfTheFormer) {
  socket.PeerCloses();
  core::SwitchTheater(program, 2);
  EXPECT_TRUE(WordsShown());
  const QImage lost = Map();
  EXPECT_EQ(Coloured(lost), 0);
  Press("cmdStopHealing");
  EXPECT_GT(Coloured(Map()), 1000);
}

TEST_F(LinkOverTheMap, StationIsClosedWhileALostLinkIsBeingCalled) {
  station.HealingOptions.RECONNECT = true;
  socket.PeerCloses();
  Pass(1);
  ASSERT_EQ(socket.State(), link::SocketState::Connecting);
  Frame().close();
  EXPECT_EQ(socket.State(), link::SocketState::Closed);
  const int calls = socket.Connects;
  clock.Ticks += 60'000;
  core::LinkTick(program);
  EXPECT_EQ(socket.Connects, calls);
}

TEST_F(LinkOverTheMap, LooksComeByThemselves) {
  station.HealingOptions.RECONNECT = true;
  socket.PeerCloses();
  const int before = socket.Connects;
  clock.Ticks += 1000;
  EXPECT_TRUE(QTest::qWaitFor([&] { return socket.Connects == before + 1; }));
}

}  // namespace
}  // namespace kestrel::shell
