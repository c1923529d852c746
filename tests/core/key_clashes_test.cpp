#include "core/key_clashes.h"

#include <gmock/gmock.h>

#include "core/execute_shortcut.h"
#include "core/shortcut_capture.h"
#include "core/station_folder.h"

namespace kestrel::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(KeyClashes, AreNoneAmongTheDefaults) {
  const Station station;
  const auto commands = BoundCommands(station);
  ASSERT_EQ(commands.size(), 29U);
  for (const BoundCommand& each : commands) EXPECT_EQ(ClashOf(commands, each.Index), "") << each.Command->Name;
  EXPECT_THAT(Shadowed(commands), IsEmpty());
  EXPECT_EQ(ShadowedLine({}), "");
}

TEST(KeyClashes, AreToldOfBoth) {
  Station station;
  station.ShortcutKeys[1] = 33;
  const auto commands = BoundCommands(station);
  EXPECT_EQ(ClashOf(commands, 0), "shared with Zoom Out");
  EXPECT_EQ(ClashOf(commands, 1), "taken by Zoom In");
  EXPECT_EQ(ClashOf(commands, 2), "");
  EXPECT_THAT(Shadowed(commands), ElementsAre("Zoom Out (PAGEUP is Zoom In)"));
  EXPECT_EQ(ShadowedLine(Shadowed(commands)), "No effect: Zoom Out (PAGEUP is Zoom In)");
}

TEST(KeyClashes, OfThreeTheFirstActs) {
  Station station;
  station.ShortcutKeys[24] = 200075;
  station.ShortcutKeys[7] = 200075;
  const auto commands = BoundCommands(station);
  EXPECT_EQ(ClashOf(commands, 7), "shared with 2 others");
  EXPECT_EQ(ClashOf(commands, 24), "taken by AI Plots");
  EXPECT_EQ(ClashOf(commands, 101), "taken by AI Plots");
  EXPECT_EQ(ShadowedLine(Shadowed(commands)),
            "No effect: Transm GUARD (CTRL+K is AI Plots), Connect to... (CTRL+K is AI Plots)");
}

TEST(KeyClashes, CommandsWithoutAKeyShareNothing) {
  Station station;
  station.ShortcutKeys.fill(0);
  station.OwnKeys.fill(0);
  const auto commands = BoundCommands(station);
  for (const BoundCommand& each : commands) EXPECT_EQ(ClashOf(commands, each.Index), "");
  EXPECT_THAT(Shadowed(commands), IsEmpty());
  EXPECT_EQ(ClashOf(commands, 25), "") << "no command";
}

TEST(KeyClashes, AreListedByNoMoreThanTwoNames) {
  Station station;
  station.ShortcutKeys.fill(65);
  const auto shadowed = Shadowed(BoundCommands(station));
  ASSERT_EQ(shadowed.size(), 24U);
  EXPECT_EQ(ShadowedLine(shadowed), "No effect: Zoom Out (A is Zoom In), Move Left (A is Zoom In) and 22 more");
}

class UndoneKeys : public testing::Test {
 protected:
  UndoneKeys() { StartHook(around.All); }
  Bindings& Keys() { return around.State.ShortcutKeys; }
  OwnBindings& Own() { return around.State.OwnKeys; }

  ProgramFolder folder;
  Around around{folder.Path};
  ShortcutCapture capture{around.All};
};

TEST_F(UndoneKeys, ComeBackOnce) {
  EXPECT_FALSE(capture.MayUndo());
  capture.Begin(3);
  capture.Key(3, 65, 0);
  EXPECT_TRUE(capture.MayUndo());
  capture.Begin(4);
  capture.Key(4, 66, 0);
  capture.Undo();
  EXPECT_EQ(Keys()[4], 38) << "the last one alone";
  EXPECT_EQ(Keys()[3], 65);
  EXPECT_FALSE(capture.MayUndo());
  capture.Undo();
  EXPECT_EQ(Keys()[3], 65);
}

TEST_F(UndoneKeys, EndACaptureThatWaits) {
  capture.Begin(22);
  EXPECT_TRUE(capture.MayUndo());
  EXPECT_FALSE(around.Keys.Listening());
  capture.Undo();
  EXPECT_FALSE(capture.Waiting().has_value());
  EXPECT_TRUE(around.Keys.Listening());
  EXPECT_EQ(Keys()[22], 112);
}

TEST_F(UndoneKeys, ComeBackWithThatOfACaptureThatWasBrokenOff) {
  capture.Begin(5);
  capture.Begin(6);
  capture.Key(6, 81, 0);
  EXPECT_EQ(Keys()[5], 0);
  capture.Undo();
  EXPECT_EQ(Keys(), DefaultBindings());
}

TEST_F(UndoneKeys, AreNothingWhereTheSameKeyWasPressed) {
  capture.Begin(0);
  capture.Key(0, 33, 0);
  EXPECT_FALSE(capture.MayUndo());
}

TEST_F(UndoneKeys, ComeBackAfterTheDefaults) {
  Keys()[2] = 65;
  Keys()[22] = 120;
  Own() = {73, 0, 0, 0};
  capture.LoadDefaults(0, SecondHalf);
  EXPECT_EQ(Keys()[2], 37);
  EXPECT_EQ(Keys()[22], 120);
  EXPECT_THAT(Own(), ElementsAre(0, 200075, 200080, 200070)) << "they stand on the first page";
  capture.Undo();
  EXPECT_EQ(Keys()[2], 65);
  EXPECT_THAT(Own(), ElementsAre(73, 0, 0, 0));
  capture.LoadDefaults(SecondHalf, ShortcutCount);
  EXPECT_THAT(Own(), ElementsAre(73, 0, 0, 0));
  EXPECT_EQ(Keys()[22], 112);
}

TEST_F(UndoneKeys, ReleaseATransmitKeyThatIsHeld) {
  capture.Begin(22);
  capture.Key(22, 120, 0);
  around.Keys.Press(120);
  ASSERT_TRUE(around.State.Transmit.TransmittingUHF);
  capture.Undo();
  EXPECT_FALSE(around.State.Transmit.TransmittingUHF);
}

TEST_F(UndoneKeys, OfOurOwnCommandsAreCapturedToo) {
  capture.Begin(100);
  EXPECT_EQ(capture.Box(100).Text, "<Press Key or ESC to clear>");
  EXPECT_TRUE(capture.Key(100, 73, 1));
  EXPECT_EQ(Own()[0], 100073);
  EXPECT_EQ(capture.Box(100).Text, "SHIFT+I");
  EXPECT_EQ(capture.Box(100).Back, BoundColour);
  capture.Undo();
  EXPECT_EQ(capture.Box(100).Text, "NO KEY");
  capture.Begin(104);
  EXPECT_FALSE(capture.Waiting().has_value()) << "no command";
}

}  // namespace
}  // namespace kestrel::core
