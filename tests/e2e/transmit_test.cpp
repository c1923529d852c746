// A transmit key of the built station, pressed while another program has the keyboard.

#include <gtest/gtest.h>

#include <utility>

#include "e2e/other_program.h"
#include "e2e/screen.h"
#include "e2e/station_folder.h"

namespace kestrel::e2e {
namespace {

/// Where the lamps stand at the frame's foot. Higher than the strip, because a window's place may count the window
/// manager's title or not; the other program's window stands left of it.
QImage Lamps(const Screen& screen, const QString& frame) {
  constexpr int left = 240, width = 460, height = 64;
  const QRect inside = screen.Geometry(frame);
  return screen.Picture().copy(inside.left() + left, inside.bottom() - height, width, height);
}

TEST(TransmitKey, LightsItsLampWhileAnotherProgramHasTheKeyboard) {
  const QTemporaryDir place;
  const QString folder = place.filePath(S("station"));
  CopyStation(folder);
  const Screen screen;
  const Child station(folder + S("/kestrel"), {}, screen.Environment());
  const QString frame = screen.Window(S("KESTREL"));
  ASSERT_FALSE(frame.isEmpty());
  OtherProgram other(screen.Display());
  ASSERT_TRUE(other.TakeFocus());
  // The pictures of the start have come to rest.
  QImage idle;
  ASSERT_TRUE(WaitFor([&] {
    const QImage before = std::exchange(idle, Lamps(screen, frame));
    return !idle.isNull() && idle == before;
  }));

  screen.Key(S("keydown"), S("F1"));
  // There is no voice client here: the lamp says that it is tried in vain.
  EXPECT_TRUE(WaitFor([&] { return Lamps(screen, frame) != idle; }));
  screen.Key(S("keyup"), S("F1"));
  EXPECT_TRUE(WaitFor([&] { return Lamps(screen, frame) == idle; }));
  constexpr unsigned long f1 = 0xffbe;
  ASSERT_FALSE(other.Heard().empty());
  EXPECT_EQ(other.Heard().front(), f1);
  EXPECT_TRUE(station.Running());
}

}  // namespace
}  // namespace kestrel::e2e
