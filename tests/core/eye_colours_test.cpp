#include "core/eye_colours.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <utility>
#include <vector>

#include "core/settings.h"
#include "project_paths.h"
#include "seen_colours.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using test::Eye;
using test::Eyes;
using test::Lab;
using test::Seen;

double Apart(const Eye& eye, base::Colour one, base::Colour other) {
  return test::Distance(Seen(eye, one), Seen(eye, other));
}

constexpr std::pair<const char*, base::Colour> Set[] = {{"friend", EyeColours::Friend},
                                                        {"foe", EyeColours::Foe},
                                                        {"players", EyeColours::Players},
                                                        {"cursor", EyeColours::Cursor},
                                                        {"bullseye", EyeColours::Bullseye}};
constexpr double Enough = 20;

TEST(EyeColours, TheMeasureItselfIsRight) {
  // Black to white is 100 of lightness; a grey is the same grey to every eye; red has L 53.24, a 80.09, b 67.20.
  for (const Eye& eye : Eyes) EXPECT_NEAR(Apart(eye, 0, 0xFFFFFF), 100, 0.01) << eye.Name;
  const Lab red = Seen(Eyes[0], 0x0000FF);
  EXPECT_NEAR(red.L, 53.24, 0.01);
  EXPECT_NEAR(red.A, 80.09, 0.01);
  EXPECT_NEAR(red.B, 67.20, 0.01);
  // What the three kinds cannot tell well: a red and a green of one lightness to the first two.
  EXPECT_GT(Apart(Eyes[0], 0x2020C0, 0x208020), 2 * Enough);
  EXPECT_LT(Apart(Eyes[2], 0x2020C0, 0x208020), Apart(Eyes[0], 0x2020C0, 0x208020) / 2);
}

TEST(EyeColours, EachPairIsToldApartByEveryEye) {
  for (const Eye& eye : Eyes) {
    for (std::size_t one = 0; one < std::size(Set); ++one) {
      for (std::size_t other = 0; other < one; ++other) {
        EXPECT_GE(Apart(eye, Set[one].second, Set[other].second), Enough)
            << Set[one].first << " and " << Set[other].first << ", " << eye.Name;
      }
    }
  }
}

TEST(EyeColours, EachIsToldFromTheLowlandOfTheMap) {
  std::ifstream file(std::filesystem::path(KESTREL_SOURCE_DIR) / "data/gradient.act", std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  ASSERT_GE(bytes.size(), 768U);
  // The first 160 of its 256 colours go from the shore up; the last are those of snow.
  for (std::size_t step = 0; step < 160; ++step) {
    const auto part = [&](std::size_t at) { return static_cast<base::Colour>(static_cast<std::uint8_t>(bytes[at])); };
    const base::Colour ground = part(3 * step) | part(3 * step + 1) << 8 | part(3 * step + 2) << 16;
    for (const Eye& eye : Eyes) {
      for (const auto& [name, colour] : Set) {
        EXPECT_GE(Apart(eye, colour, ground), Enough) << name << " on " << step << ", " << eye.Name;
      }
    }
  }
}

class EyeColoursInUse : public testing::Test {
 protected:
  EyeColoursInUse() {
    for (std::int16_t id = 1; id <= 3; ++id) {
      link::PlotRecord& player = station.Plots.Clients.Append({});
      player.Id = player.ClientId = id;
      player.Name = "Pilot" + std::to_string(id);
      player.Color = id == 1 ? 0 : 0x100u * static_cast<base::Colour>(id);
    }
    station.Plots.RebuildIndex();
  }
  base::Colour ColourOf(int id) {
    return station.Plots.Clients[station.Plots.FindClient(static_cast<std::int16_t>(id))].Color;
  }

  Station station;
};

TEST_F(EyeColoursInUse, TheSetIsTakenAndWhatWasThereComesBack) {
  const map::Options before = station.MapOptions;
  station.LinkOptions.AICOLOR = 77;
  EXPECT_EQ(PutColoursBack(station), base::Changed::Nothing) << "not in use";
  const base::Changed shown = UseEyeColours(station);
  for (const base::Changed view : {base::Changed::Map, base::Changed::CursorLine, base::Changed::Options}) {
    EXPECT_TRUE(Has(shown, view));
  }
  EXPECT_EQ(station.LinkOptions.AICOLOR, EyeColours::Foe);
  EXPECT_EQ(station.MapOptions.AICOLOR_FRIENDS, EyeColours::Friend);
  EXPECT_EQ(station.MapOptions.CURSOR_COLOR, EyeColours::Cursor);
  EXPECT_EQ(station.MapOptions.CURSOR_TEXT_COOR, EyeColours::Cursor);
  EXPECT_EQ(station.MapOptions.BULLSEYE_COLOR, EyeColours::Bullseye);
  for (const int id : {1, 2, 3}) EXPECT_EQ(ColourOf(id), EyeColours::Players);
  station.MapOptions.BULLSEYE_COLOR = 5;
  UseEyeColours(station);
  EXPECT_EQ(station.MapOptions.BULLSEYE_COLOR, EyeColours::Bullseye) << "a second press puts it right";
  EXPECT_EQ(PutColoursBack(station), shown);
  EXPECT_EQ(station.LinkOptions.AICOLOR, 77U);
  EXPECT_EQ(station.MapOptions.AICOLOR_FRIENDS, before.AICOLOR_FRIENDS);
  EXPECT_EQ(station.MapOptions.CURSOR_COLOR, before.CURSOR_COLOR);
  EXPECT_EQ(station.MapOptions.CURSOR_TEXT_COOR, before.CURSOR_TEXT_COOR);
  EXPECT_EQ(station.MapOptions.BULLSEYE_COLOR, before.BULLSEYE_COLOR);
  EXPECT_EQ(ColourOf(1), 0U);
  EXPECT_EQ(ColourOf(2), 0x200U);
  EXPECT_EQ(ColourOf(3), 0x300U);
}

TEST_F(EyeColoursInUse, APlayerWhoIsAnotherNowOrHasAColourSinceKeepsIt) {
  UseEyeColours(station);
  station.Plots.Clients[2].Name = "Somebody else";
  station.Plots.Clients[3].Color = 9;
  PutColoursBack(station);
  EXPECT_EQ(ColourOf(2), EyeColours::Players);
  EXPECT_EQ(ColourOf(3), 9U);
}

TEST_F(EyeColoursInUse, WhatWasThereIsKeptOverARestart) {
  ProgramFolder folder;
  WriteInstallation(folder);
  station.AppPath = folder.Path;
  LoadSavedVars(station);
  const std::string before = [&] {
    SaveVars(station);
    return folder.Read("KESTREL.ini");
  }();
  station.MapOptions.CURSOR_COLOR = 12345;
  UseEyeColours(station);
  SaveVars(station);
  Station next;
  next.AppPath = folder.Path;
  LoadSavedVars(next);
  EXPECT_TRUE(next.Extras.EYECOLORS);
  PutColoursBack(next);
  EXPECT_EQ(next.MapOptions.CURSOR_COLOR, 12345U);
  next.MapOptions.CURSOR_COLOR = map::Options().CURSOR_COLOR;
  SaveVars(next);
  EXPECT_EQ(folder.Read("KESTREL.ini"), before) << "not a word of it is left";
}

}  // namespace
}  // namespace kestrel::core
