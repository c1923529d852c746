#include "core/key_page.h"

#include <gmock/gmock.h>

#include "base/failure.h"
#include "core/station_folder.h"

namespace kestrel::core {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(KeyPage, HasEachCommandWithItsPresentKey) {
  Station station;
  station.ShortcutKeys[0] = 300081;
  station.ShortcutKeys[1] = 0;
  const std::vector<KeyRow> rows = KeyRows(station);
  ASSERT_GT(rows.size(), 28U);
  EXPECT_EQ(rows[0].Where, "Map");
  EXPECT_EQ(rows[0].Key, "SHIFT+CTRL+Q");
  EXPECT_EQ(rows[0].What, "Zoom In");
  EXPECT_EQ(rows[1].Key, "NO KEY");
  EXPECT_EQ(rows[21].Where, "Map");
  EXPECT_EQ(rows[22].Where, "Every program");
  EXPECT_EQ(rows[22].What, "Transm UHF");
  EXPECT_EQ(rows[25].What, "AI Names");
  EXPECT_EQ(rows[26].Key, "CTRL+K");
  EXPECT_EQ(rows[26].Where, "Map");
  EXPECT_EQ(rows[29].Key, "TAB") << "behind the commands what nobody can change";
}

TEST(KeyPage, SaysWhichCommandHasNoEffect) {
  Station station;
  station.ShortcutKeys[1] = 33;
  const std::vector<KeyRow> rows = KeyRows(station);
  EXPECT_EQ(rows[0].What, "Zoom In");
  EXPECT_EQ(rows[1].What, "Zoom Out (no effect: taken by Zoom In)");
}

TEST(KeyPage, IsTextWithTabs) {
  EXPECT_EQ(KeyText(std::vector<KeyRow>{{"Map", "A", "Does it"}, {"Map", "B", "Too"}}),
            "Where\tKey\tWhat it does\nMap\tA\tDoes it\nMap\tB\tToo\n");
}

TEST(KeyPage, IsATableInWhichNothingIsTakenForAMark) {
  const std::string page = KeyHtml(std::vector<KeyRow>{{"Map", "<", "a & b \xe4"}});
  EXPECT_THAT(page, HasSubstr("<tr><td>Map</td><td>&#60;</td><td>a &#38; b &#228;</td></tr>"));
  EXPECT_THAT(page, Not(HasSubstr("\xe4")));
}

TEST(KeyPage, IsWrittenWhereTheSettingsLie) {
  ProgramFolder folder;
  Station station;
  station.AppPath = folder.Path;
  EXPECT_EQ(WriteKeyPage(station), folder.Path / "Keys.html");
  EXPECT_EQ(folder.Read("Keys.html"), KeyHtml(KeyRows(station)));
  std::filesystem::remove(folder.Path / "Keys.html");
  std::filesystem::create_directories(folder.Path / "Keys.html/in the way");
  EXPECT_THROW(WriteKeyPage(station), base::RuntimeFailure);
}

}  // namespace
}  // namespace kestrel::core
