// The commands that other stations do not have.

#include <gmock/gmock.h>

#include "core/execute_shortcut.h"
#include "core/settings.h"
#include "core/shortcuts.h"
#include "core/station_folder.h"
#include "settings_texts.h"

namespace kestrel::core {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(OwnShortcuts, HaveNumbersOfTheirOwn) {
  EXPECT_EQ(ShortcutOf(-1), nullptr);
  EXPECT_EQ(ShortcutOf(0)->Name, "Zoom In");
  EXPECT_EQ(ShortcutOf(24)->Name, "Transm GUARD");
  EXPECT_EQ(ShortcutOf(25), nullptr);
  EXPECT_EQ(ShortcutOf(99), nullptr);
  EXPECT_EQ(ShortcutOf(100)->Name, "AI Names");
  EXPECT_EQ(ShortcutOf(101)->Name, "Connect to...");
  EXPECT_EQ(ShortcutOf(102)->Name, "Phonebook");
  EXPECT_EQ(ShortcutOf(103)->Name, "Find Aircraft");
  EXPECT_EQ(ShortcutOf(104), nullptr);
}

TEST(OwnShortcuts, HaveDefaultsThatNoOtherCommandHas) {
  EXPECT_THAT(DefaultOwnBindings(), ElementsAre(0, 200075, 200080, 200070));
  EXPECT_EQ(KeyName(200075), "CTRL+K");
  EXPECT_EQ(KeyName(200080), "CTRL+P");
  EXPECT_EQ(KeyName(200070), "CTRL+F");
  for (const std::int32_t key : {70, 75, 80}) EXPECT_EQ(FindShortcut(DefaultBindings(), key, CtrlModifier), -1);
}

TEST(OwnShortcuts, ActInTheMapBehindTheOthers) {
  Bindings keys = DefaultBindings();
  OwnBindings own = {65, 200075, 33};
  EXPECT_EQ(MapShortcut(keys, own, 65, 0), 100);
  EXPECT_EQ(MapShortcut(keys, own, 75, 2), 101);
  EXPECT_EQ(MapShortcut(keys, own, 75, 0), -1);
  EXPECT_EQ(MapShortcut(keys, own, 33, 0), 0) << "Zoom In stands first";
  own[2] = 112;
  EXPECT_EQ(MapShortcut(keys, own, 112, 0), -1) << "the transmit key is heard from the system";
  own[2] = 65;
  EXPECT_EQ(MapShortcut(keys, own, 65, 0), 100) << "of two the lower";
  keys[3] = 65;
  EXPECT_EQ(MapShortcut(keys, own, 65, 0), 3);
}

TEST(OwnShortcuts, NeitherNoKeyNorAModifierRunsOne) {
  const OwnBindings own = {0, 16, 100000};
  EXPECT_EQ(MapShortcut(DefaultBindings(), own, 0, 0), -1);
  EXPECT_EQ(MapShortcut(DefaultBindings(), own, 16, 0), -1);
  EXPECT_EQ(MapShortcut(DefaultBindings(), own, 0, 1), -1);
}

class OwnCommands : public testing::Test {
 protected:
  ProgramFolder folder;
  Around around{folder.Path};
};

TEST_F(OwnCommands, RunTheirMenuEntries) {
  MapKey(around.All, 75, CtrlModifier);
  MapKey(around.All, 80, CtrlModifier);
  EXPECT_THAT(around.Shown.Calls, ElementsAre("menu mnuConnCustom", "Refresh", "menu mnuPhonebookEdit", "Refresh"));
}

TEST_F(OwnCommands, SwitchTheNamesOfAiAircraftOnceTheyHaveAKey) {
  ASSERT_TRUE(around.State.MapOptions.SHOWAINAMES);
  around.State.OwnKeys[0] = 73;
  MapKey(around.All, 73, 0);
  EXPECT_FALSE(around.State.MapOptions.SHOWAINAMES);
  ASSERT_FALSE(around.Shown.Refreshes.empty());
  EXPECT_TRUE(Has(around.Shown.Refreshes.back(), base::Changed::Plots | base::Changed::Options));
  MapKey(around.All, 73, 0);
  EXPECT_TRUE(around.State.MapOptions.SHOWAINAMES);
}

TEST_F(OwnCommands, AreNotHeardFromTheWholeSystem) {
  HookedKey(around.All, {75, CtrlModifier, true});
  EXPECT_THAT(around.Shown.Calls, IsEmpty());
}

TEST_F(OwnCommands, SavedViewsAreToldForAMoment) {
  MapKey(around.All, 50, CtrlModifier);
  EXPECT_THAT(around.Shown.Moments, ElementsAre("View 2 saved"));
  MapKey(around.All, 50, 0);
  EXPECT_THAT(around.Shown.Moments, ElementsAre("View 2 saved")) << "shown, not saved";
}

TEST_F(OwnCommands, KeepTheirKeysInTheSectionOfOurOwn) {
  WriteInstallation(folder);
  around.State.AppPath = folder.Path;
  LoadSavedVars(around.State);
  EXPECT_THAT(around.State.OwnKeys, ElementsAre(0, 200075, 200080, 200070));
  around.State.OwnKeys = {73, 0, 200080, 200070};
  SaveVars(around.State);
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("[KESTREL]\r\nKEY_AINAMES=73\r\nKEY_CONNECT=0\r\n"));
  EXPECT_THAT(folder.Read("KESTREL.ini"), Not(HasSubstr("KEY_PHONEBOOK")));
  Station next;
  next.AppPath = folder.Path;
  LoadSavedVars(next);
  EXPECT_THAT(next.OwnKeys, ElementsAre(73, 0, 200080, 200070)) << "one without a key stays so";
}

}  // namespace
}  // namespace kestrel::core
