#include "falcon/stations.h"

#include <gtest/gtest.h>

#include <string>

#include "base/failure.h"
#include "base/temp_folder.h"
#include "base/text.h"

namespace kestrel::falcon {
namespace {

constexpr std::string_view Whole =
    "# <campaign ID> ...\r\n"
    "\r\n"
    "764 042 X 18 35 1 250200 118700 0 11130 0 11170 305500 275800 292900 311000 128850 2527 2435 2481 -1\r\n"
    "764\t7\tY   32766 0 2 0 0 0 0 0 0";

TEST(Stations, EveryFieldIsRead) {
  const StationList list = ReadStations(Whole);
  ASSERT_EQ(list.Stations.size(), 2U);
  EXPECT_EQ(list.Trouble, "");
  const Station& first = list.Stations[0];
  EXPECT_EQ(first.CampId, 764);
  EXPECT_EQ(first.Told, 21U);
  EXPECT_EQ(first.Text(StationField::TacanChannel), "042");
  EXPECT_EQ(first.Number(StationField::TacanChannel), 42) << "decimal, whatever it begins with";
  EXPECT_EQ(first.Text(StationField::TacanBand), "X");
  EXPECT_EQ(first.Number(StationField::Callsign), 18);
  EXPECT_EQ(first.Number(StationField::TacanRange), 35);
  EXPECT_EQ(first.Number(StationField::TacanType), 1);
  EXPECT_EQ(first.Number(StationField::TowerUhf), 250200);
  EXPECT_EQ(first.Number(StationField::TowerVhf), 118700);
  EXPECT_EQ(first.Text(StationField::Ils1), "0");
  EXPECT_EQ(first.Number(StationField::Ils2), 11130);
  EXPECT_EQ(first.Text(StationField::Ils3), "0");
  EXPECT_EQ(first.Number(StationField::Ils4), 11170);
  EXPECT_EQ(first.Number(StationField::OpsUhf), 305500);
  EXPECT_EQ(first.Number(StationField::GroundUhf), 275800);
  EXPECT_EQ(first.Number(StationField::ApproachUhf), 292900);
  EXPECT_EQ(first.Number(StationField::LsoUhf), 311000);
  EXPECT_EQ(first.Number(StationField::AtisVhf), 128850);
  EXPECT_EQ(first.Number(StationField::TowerVoice), 2527);
  EXPECT_EQ(first.Number(StationField::GroundVoice), 2435);
  EXPECT_EQ(first.Number(StationField::ApproachVoice), 2481);
  EXPECT_EQ(first.Number(StationField::AtisVoice), -1);
}

TEST(Stations, ShortLinesLeaveTheRestEmpty) {
  const Station second = ReadStations(Whole).Stations.at(1);
  EXPECT_EQ(second.CampId, 764) << "one objective may have two";
  EXPECT_EQ(second.Told, 12U);
  EXPECT_EQ(second.Text(StationField::TacanBand), "Y");
  EXPECT_EQ(second.Number(StationField::Callsign), 32766);
  EXPECT_EQ(second.Text(StationField::OpsUhf), "");
  EXPECT_EQ(second.Number(StationField::OpsUhf), 0);
  EXPECT_EQ(ReadStations("9").Stations.at(0).Told, 1U);
}

TEST(Stations, FieldsBeyondTheKnownOnesAreCounted) {
  std::string line = "5";
  for (int n = 0; n < 24; ++n) line += " 1";
  EXPECT_EQ(ReadStations(line).Stations.at(0).Told, 25U);
}

TEST(Stations, CommentsMayBeInAnyLanguage) {
  const StationList list = ReadStations("\xEF\xBB\xBF# Pozna\xC5\x84\n  # also one\n 12 1 X\n");
  ASSERT_EQ(list.Stations.size(), 1U);
  EXPECT_EQ(list.Stations[0].CampId, 12);
}

TEST(Stations, ListGoesAsFarAsItCan) {
  for (const char* const bad : {"x 1 X", "40000 1 X", "1.5 1 X", "-"}) {
    const StationList list = ReadStations("1 2 X\n\n" + std::string(bad) + "\n3 4 X");
    EXPECT_EQ(list.Stations.size(), 1U) << bad;
    EXPECT_EQ(list.Trouble.substr(0, 8), "line 3: ") << bad;
  }
}

TEST(Stations, FileCutAnywhereIsAFile) {
  // A number that is cut is a number; what can be seen of the cut is that fields are missing.
  for (std::size_t length = 0; length < Whole.size(); ++length) {
    const StationList list = ReadStations(Whole.substr(0, length));
    EXPECT_EQ(list.Trouble, "") << length;
    EXPECT_LE(list.Stations.size(), 2U) << length;
  }
}

TEST(Stations, FileIsFoundWhateverItsCase) {
  const test::TempFolder folder;
  EXPECT_THROW(LoadStations(folder.Path()), base::RuntimeFailure);
  test::WriteBytes(folder.Path() / "Stations+Ils.dat", "1 2 X\nnone");
  const StationList list = LoadStations(folder.Path());
  EXPECT_EQ(list.Stations.size(), 1U);
  EXPECT_EQ(base::Lower(list.Trouble.substr(0, 26)), "stations+ils.dat, line 2: ");
}

TEST(Stations, ShortLinesWithoutEndTakeNoMemoryWithoutEnd) {
  std::string text;
  for (int line = 0; line < 40000; ++line) text += "1\n";
  const StationList list = ReadStations(text);
  EXPECT_EQ(list.Stations.size(), 32767u);
  EXPECT_EQ(list.Trouble, "line 32768: there are too many stations");
}

}  // namespace
}  // namespace kestrel::falcon
