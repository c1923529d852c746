#include "falcon/colour_criteria.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kestrel::falcon {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

/// A choice whose palette entry n is colour n.
ColourChoice Numbered() {
  ColourChoice choice;
  for (std::size_t n = 0; n < choice.Palette.size(); ++n) choice.Palette[n] = static_cast<base::Colour>(n);
  return choice;
}

TEST(ColourCriteria, BeginWithoutAnyAndALightBlueSea) {
  const ColourChoice choice;
  EXPECT_TRUE(choice.Criteria.empty());
  EXPECT_EQ(choice.Sea, 0xFFC821u);
  EXPECT_FALSE(choice.PaletteLoaded);
}

TEST(ColourCriteria, AreSortedByHeight) {
  std::vector<ColourCriterion> criteria = {{1, 500}, {2, -100}, {3, 32767}, {4, 0}};
  SortCriteria(criteria);
  EXPECT_THAT(criteria, ElementsAre(ColourCriterion{2, -100}, ColourCriterion{4, 0}, ColourCriterion{1, 500},
                                    ColourCriterion{3, 32767}));
}

TEST(ColourCriteria, ATypedHeightIsLimitedTo16Bits) {
  for (const auto& [text, height] : {std::pair("1200", 1200),
                                     {"-40", -40},
                                     {"32767", 32767},
                                     {"32768", 32767},
                                     {"99999999999", 32767},
                                     {"-40000", -32768},
                                     {"2,5", 2},
                                     {"3.5", 4},
                                     {"", 0},
                                     {"-", 0}}) {
    EXPECT_EQ(TypedHeight(text), height) << text;
  }
}

TEST(ColourCriteria, ATypedCountIs1To255) {
  for (const char* text : {"", "0", "256", "99999999999", "-3"}) EXPECT_FALSE(TypedCount(text)) << text;
  EXPECT_EQ(TypedCount("1"), 1);
  EXPECT_EQ(TypedCount("255"), 255);
}

TEST(AutoCalculate, BandsHaveEqualWholeSteps) {
  ColourChoice choice = Numbered();
  choice.Criteria = {{9, 9}};
  // 1000 / 3 is 333 and a third, 255 / 3 is 85.
  CalculateCriteria(choice, 3, 1000);
  EXPECT_THAT(choice.Criteria,
              ElementsAre(ColourCriterion{85, 333}, ColourCriterion{170, 666}, ColourCriterion{255, 999}));
}

TEST(AutoCalculate, OneBandHasTheWholeHeightAndTheLastColour) {
  ColourChoice choice = Numbered();
  CalculateCriteria(choice, 1, 9001);
  EXPECT_THAT(choice.Criteria, ElementsAre(ColourCriterion{255, 9001}));
}

TEST(AutoCalculate, TwoHundredBandsUseTheFirstTwoHundredColours) {
  ColourChoice choice = Numbered();
  CalculateCriteria(choice, 200, 20000);
  ASSERT_THAT(choice.Criteria, SizeIs(200));
  EXPECT_EQ(choice.Criteria[0], (ColourCriterion{1, 100}));
  EXPECT_EQ(choice.Criteria[199], (ColourCriterion{200, 20000}));
}

TEST(AutoCalculate, TheHighestPlaceOf16BitsStillFits) {
  ColourChoice choice = Numbered();
  CalculateCriteria(choice, 255, 32767);
  // 32767 / 255 is 128.498; 255 * 128 is 32640.
  EXPECT_EQ(choice.Criteria.front(), (ColourCriterion{1, 128}));
  EXPECT_EQ(choice.Criteria.back(), (ColourCriterion{255, 32640}));
}

TEST(AutoCalculate, LandThatLiesBelowTheSeaHasItsBandsSorted) {
  ColourChoice choice = Numbered();
  // -101 / 2 is cut to -50.
  CalculateCriteria(choice, 2, -101);
  EXPECT_THAT(choice.Criteria, ElementsAre(ColourCriterion{254, -100}, ColourCriterion{127, -50}));
}

TEST(AutoCalculate, MoreBandsThanFeetHaveNoHeight) {
  ColourChoice choice = Numbered();
  CalculateCriteria(choice, 5, 3);
  ASSERT_THAT(choice.Criteria, SizeIs(5));
  for (const ColourCriterion& criterion : choice.Criteria) EXPECT_EQ(criterion.Height, 0);
}

}  // namespace
}  // namespace kestrel::falcon
