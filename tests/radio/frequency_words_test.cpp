#include "radio/frequency_words.h"

#include <gtest/gtest.h>

namespace kestrel::radio {
namespace {

TEST(FrequencyWords, TellTheKindAndTheMegahertz) {
  EXPECT_EQ(FrequencyWords("297500"), "UHF 297.500 MHz");
  EXPECT_EQ(FrequencyWords("225000"), "UHF 225.000 MHz");
  EXPECT_EQ(FrequencyWords("399975"), "UHF 399.975 MHz");
  EXPECT_EQ(FrequencyWords("138050"), "VHF 138.050 MHz");
  EXPECT_EQ(FrequencyWords("116020"), "VHF 116.020 MHz");
  EXPECT_EQ(FrequencyWords("10810"), "ILS 108.10 MHz");
  EXPECT_EQ(FrequencyWords("11995"), "ILS 119.95 MHz");
}

TEST(FrequencyWords, OfTheExplicitNoneAreThatItTunesBoth) { EXPECT_EQ(FrequencyWords("0"), "none: tunes both radios"); }

TEST(FrequencyWords, OfWhatNoRadioKnowsSaySo) {
  for (const char* value : {"", " ", "-", "000000", "00", "tower", "297510", "399976", "152000", "10811", "3e5",
                            "1e999", "nan", "297.500"}) {
    EXPECT_EQ(FrequencyWords(value), "no frequency that the radios know") << '"' << value << '"';
  }
}

TEST(FrequencyWords, AreOfTheNumberAtTheHead) {
  // The characters 5 and 6 are "00", as they are in the second.
  EXPECT_EQ(FrequencyWords("225000abc"), "UHF 225.000 MHz");
  EXPECT_EQ(FrequencyWords("297500.4"), "UHF 297.500 MHz");
  // One blank in front moves the characters: "50" of 297500.
  EXPECT_EQ(FrequencyWords(" 297500"), "UHF 297.500 MHz");
  EXPECT_EQ(FrequencyWords("10815 "), "ILS 108.15 MHz");
}

}  // namespace
}  // namespace kestrel::radio
