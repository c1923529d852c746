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
#include "station_folder.h"

namespace kestrel::core {
namespace {

using Linear = std::array<double, 3>;
using Lab = std::array<double, 3>;

/// Linear light of one part of a colour of sRGB.
double LinearOf(std::uint8_t part) {
  const double value = part / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

using Matrix = std::array<Linear, 3>;

/// What an eye sees of linear light: all of it, and the matrices of Machado, Oliveira and Fernandes (2009) for the
/// whole loss of one kind of cone.
struct Eye {
  const char* Name;
  Matrix Sees;
};
constexpr Eye Eyes[] = {
    {"usual", {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}},
    {"protanopia",
     {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}}},
    {"deuteranopia",
     {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}}},
    {"tritanopia",
     {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}}},
};

Linear Seen(const Matrix& sees, base::Colour colour) {
  const Linear light = {LinearOf(base::RedOf(colour)), LinearOf(base::GreenOf(colour)), LinearOf(base::BlueOf(colour))};
  Linear seen{};
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 3; ++column) seen[row] += sees[row][column] * light[column];
    seen[row] = std::clamp(seen[row], 0.0, 1.0);
  }
  return seen;
}

/// CIELAB of linear sRGB, white D65.
Lab LabOf(const Linear& light) {
  const auto f = [](double part) { return part > 216.0 / 24389 ? std::cbrt(part) : (24389.0 / 27 * part + 16) / 116; };
  const auto [r, g, b] = light;
  const double x = f((0.4124564 * r + 0.3575761 * g + 0.1804375 * b) / 0.95047);
  const double y = f(0.2126729 * r + 0.7151522 * g + 0.0721750 * b);
  const double z = f((0.0193339 * r + 0.1191920 * g + 0.9503041 * b) / 1.08883);
  return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

double Apart(const Matrix& sees, base::Colour one, base::Colour other) {
  const Lab a = LabOf(Seen(sees, one));
  const Lab b = LabOf(Seen(sees, other));
  return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

constexpr std::pair<const char*, base::Colour> Set[] = {{"friend", EyeColours::Friend},
                                                        {"foe", EyeColours::Foe},
                                                        {"players", EyeColours::Players},
                                                        {"cursor", EyeColours::Cursor},
                                                        {"bullseye", EyeColours::Bullseye}};
constexpr double Enough = 20;

TEST(EyeColours, TheMeasureItselfIsRight) {
  // Black to white is 100 of lightness; a grey is the same grey to every eye; red has L 53.24, a 80.09, b 67.20.
  for (const Eye& eye : Eyes) EXPECT_NEAR(Apart(eye.Sees, 0, 0xFFFFFF), 100, 0.01) << eye.Name;
  const Lab red = LabOf(Seen(Eyes[0].Sees, 0x0000FF));
  EXPECT_NEAR(red[0], 53.24, 0.01);
  EXPECT_NEAR(red[1], 80.09, 0.01);
  EXPECT_NEAR(red[2], 67.20, 0.01);
  // What the three kinds cannot tell well: a red and a green of one lightness to the first two.
  EXPECT_GT(Apart(Eyes[0].Sees, 0x2020C0, 0x208020), 2 * Enough);
  EXPECT_LT(Apart(Eyes[2].Sees, 0x2020C0, 0x208020), Apart(Eyes[0].Sees, 0x2020C0, 0x208020) / 2);
}

TEST(EyeColours, EachPairIsToldApartByEveryEye) {
  for (const Eye& eye : Eyes) {
    for (std::size_t one = 0; one < std::size(Set); ++one) {
      for (std::size_t other = 0; other < one; ++other) {
        EXPECT_GE(Apart(eye.Sees, Set[one].second, Set[other].second), Enough)
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
        EXPECT_GE(Apart(eye.Sees, colour, ground), Enough) << name << " on " << step << ", " << eye.Name;
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
