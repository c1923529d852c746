#include "radio/navaid_place.h"

#include <gtest/gtest.h>

#include <limits>

namespace kestrel::radio {
namespace {

/// One airfield with a TACAN and two runway ends, of which the second has no ILS; one without a place.
Frequencies Tables() {
  Frequencies tables;
  Airfield field;
  field.UHF = " 292300 ";
  field.TACAN = "75";
  field.TACAN_BAND = "X";
  field.TACANX = 100;
  field.TACANY = 700;
  field.ILS = {"10930", "-", "11110", ""};
  field.ILS_DES = {"09L", "27R", "-", " "};
  field.ILS_R = {{{101, 703}, {98, 696}, {500, 500}, {0, 0}}};
  tables.Airfields.Append(field);
  Airfield nowhere;
  nowhere.TACANX = std::numeric_limits<double>::quiet_NaN();
  nowhere.TACANY = 5;
  tables.Airfields.Append(nowhere);
  tables.CustomF1 = "349000";
  return tables;
}

std::string Place(const Frequencies& tables, std::string_view key) {
  const auto place = PlaceOf(tables, key);
  if (!place) return "none";
  std::string text;
  for (const double at : {place->MinX, place->MinY, place->MaxX, place->MaxY}) {
    text += std::to_string(static_cast<int>(at)) + " ";
  }
  return text;
}

TEST(NavaidPlace, IsThatOfTheTacanAndOfTheRunwayEnd) {
  const Frequencies tables = Tables();
  EXPECT_EQ(Place(tables, "TC1"), "100 700 100 700 ");
  EXPECT_EQ(Place(tables, "I11"), "101 703 101 703 ");
  EXPECT_EQ(Place(tables, "I21"), "98 696 98 696 ") << "a runway without an ILS has its place";
}

TEST(NavaidPlace, OfAnAirfieldHoldsAllThatHasAName) { EXPECT_EQ(Place(Tables(), "A1"), "98 696 101 703 "); }

TEST(NavaidPlace, IsNoneForOtherNodesAndForWhatIsNotThere) {
  const Frequencies tables = Tables();
  for (const char* key : {"", "R1", "UF1", "VF1", "I31", "I41", "A3", "TC3", "A0", "TC2", "A2", "C1", "FU1", "x"}) {
    EXPECT_EQ(Place(tables, key), "none") << key;
  }
}

TEST(NavaidPlace, CopiedIsTheValueOrTheChannelWithItsBand) {
  const Frequencies tables = Tables();
  EXPECT_EQ(CopiedValue(tables, "UF1"), "292300");
  EXPECT_EQ(CopiedValue(tables, "FI1"), "349000");
  EXPECT_EQ(CopiedValue(tables, "FU1"), "000000");
  EXPECT_EQ(CopiedValue(tables, "TC1"), "75X");
  EXPECT_EQ(CopiedValue(tables, "I11"), "10930");
  for (const char* key : {"", "I21", "I41", "A1", "R1", "U", "C1", "TC2", "TC9"}) {
    EXPECT_EQ(CopiedValue(tables, key), "") << key;
  }
}

}  // namespace
}  // namespace kestrel::radio
