// A transmit key of the built station, pressed while another program has the keyboard, and while its own map has it.

#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "e2e/other_program.h"
#include "e2e/screen.h"
#include "e2e/station_on_screen.h"

namespace kestrel::e2e {
namespace {

/// Where the lamps stand at the frame's foot. Higher than the strip, because a window's place may count the window
/// manager's title or not; the other program's window stands left of it.
QImage Lamps(const Screen& screen, const QString& frame) {
  constexpr int left = 240, width = 460, height = 64;
  const QRect inside = screen.Geometry(frame);
  return screen.Picture().copy(inside.left() + left, inside.bottom() - height, width, height);
}

/// The left half of the map, where no floating window stands at the start.
QImage Map(const Screen& screen, const QString& frame) {
  constexpr int edge = 80;
  const QRect inside = screen.Geometry(frame);
  return screen.Picture().copy(inside.left() + edge, inside.top() + edge, inside.width() / 2 - edge,
                               inside.height() - 2 * edge);
}

/// A part of the screen as soon as it stays as it is.
QImage AtRest(const std::function<QImage()>& look) {
  QImage now;
  const bool rests = WaitFor([&] {
    const QImage before = std::exchange(now, look());
    return !now.isNull() && now == before;
  });
  return rests ? now : QImage();
}

class TransmitKey : public StationOnScreen {
 protected:
  void SetUp() override {
    StationOnScreen::SetUp();
    StartStation();
  }
};

TEST_F(TransmitKey, LightsItsLampWhileAnotherProgramHasTheKeyboard) {
  OtherProgram other(screen.Display());
  ASSERT_TRUE(other.TakeFocus());
  const QImage idle = AtRest([this] { return Lamps(screen, frame); });
  ASSERT_FALSE(idle.isNull());

  screen.Key(S("keydown"), S("F1"));
  // There is no voice client here: the lamp says that it is tried in vain.
  EXPECT_TRUE(WaitFor([&] { return Lamps(screen, frame) != idle; }));
  screen.Key(S("keyup"), S("F1"));
  EXPECT_TRUE(WaitFor([&] { return Lamps(screen, frame) == idle; }));
  constexpr unsigned long f1 = 0xffbe;
  ASSERT_FALSE(other.Heard().empty());
  EXPECT_EQ(other.Heard().front(), f1);
  EXPECT_TRUE(station->Running());
}

TEST_F(TransmitKey, LightsItsLampWhileTheMapHasTheKeyboardAndTheMapIgnoresIt) {
  const auto map = [this] { return Map(screen, frame); };
  screen.Activate(frame);
  screen.Click(screen.Geometry(frame).topLeft() + QPoint(300, 300));
  const QImage before = AtRest(map);
  ASSERT_FALSE(before.isNull());
  screen.Press({S("Prior")});
  ASSERT_TRUE(WaitFor([&] { return map() != before; })) << "the map does not have the keyboard";
  const QImage shown = AtRest(map);
  const QImage idle = AtRest([this] { return Lamps(screen, frame); });
  ASSERT_FALSE(shown.isNull());
  ASSERT_FALSE(idle.isNull());

  screen.Key(S("keydown"), S("F1"));
  EXPECT_TRUE(WaitFor([&] { return Lamps(screen, frame) != idle; }));
  EXPECT_EQ(map(), shown);
  screen.Key(S("keyup"), S("F1"));
  EXPECT_TRUE(WaitFor([&] { return Lamps(screen, frame) == idle; }));
  EXPECT_EQ(map(), shown);
  EXPECT_TRUE(station->Running());
}

}  // namespace
}  // namespace kestrel::e2e
