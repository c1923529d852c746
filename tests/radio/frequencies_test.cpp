#include "radio/frequencies.h"

#include <gtest/gtest.h>

namespace kestrel::radio {
namespace {

struct Judged {
  const char* Value;
  bool UHF, VHF, ILS;
  FreqImage Image;
};

// Characters 5 and 6 of each text and the number at its head are read off by eye.
constexpr Judged judged[] = {
    {"225000", true, false, false, FreqImage::UHF},
    {"399975", true, false, false, FreqImage::UHF},
    {"297500", true, false, false, FreqImage::UHF},
    {"297520", true, false, false, FreqImage::UHF},
    {"297525", true, false, false, FreqImage::UHF},
    {"297550", true, false, false, FreqImage::UHF},
    {"297570", true, false, false, FreqImage::UHF},
    {"297575", true, false, false, FreqImage::UHF},
    {"297510", false, false, false, FreqImage::Unknown},
    {"297505", false, false, false, FreqImage::Unknown},
    {"224975", false, false, false, FreqImage::Unknown},
    {"399976", false, false, false, FreqImage::Unknown},
    {"400000", false, false, false, FreqImage::Unknown},
    {"116000", false, true, false, FreqImage::VHF},
    {"151975", false, true, false, FreqImage::VHF},
    {"138050", false, true, false, FreqImage::VHF},
    {"151976", false, false, false, FreqImage::Unknown},
    {"152000", false, false, false, FreqImage::Unknown},
    {"115975", false, false, false, FreqImage::Unknown},
    {"138010", false, false, false, FreqImage::Unknown},
    {"10810", false, false, true, FreqImage::ILS},
    {"10815", false, false, true, FreqImage::ILS},
    {"11995", false, false, true, FreqImage::ILS},
    {"11996", false, false, false, FreqImage::Unknown},
    {"10811", false, false, false, FreqImage::Unknown},
    {"10805", false, false, false, FreqImage::Unknown},
    {"0", true, true, true, FreqImage::ILS},
    {"000000", false, false, false, FreqImage::Unknown},
    {"00", false, false, false, FreqImage::Unknown},
    {" 0", false, false, false, FreqImage::Unknown},
    {"", false, false, false, FreqImage::Unknown},
    {"-", false, false, false, FreqImage::Unknown},
    {"tower", false, false, false, FreqImage::Unknown},
    {"3e5", false, false, false, FreqImage::Unknown},       // 300000, and there are no characters 5 and 6
    {"3.00000e5", true, false, false, FreqImage::UHF},      // 300000, "3.0000": "00"
    {" 297500", true, false, false, FreqImage::UHF},        // blanks are skipped; " 29750": "50"
    {"  297510", true, false, false, FreqImage::UHF},       // "  2975": "75"
    {" 297510", false, false, false, FreqImage::Unknown},   // " 29751": "51"
    {" 297525", false, false, false, FreqImage::Unknown},   // " 29752": "52"
    {"225000abc", true, false, false, FreqImage::UHF},      // the number ends at the "a"
    {"297500.4", true, false, false, FreqImage::UHF},       // rounded down
    {"399975.5", false, false, false, FreqImage::Unknown},  // to the even 399976
    {"399975.4", true, false, false, FreqImage::UHF},
    {"224999.5", false, false, false, FreqImage::Unknown},  // 225000, and the text has "99"
    {"297500,9", true, false, false, FreqImage::UHF},       // a comma ends the number
    {"1e999", false, false, false, FreqImage::Unknown},
    {"-297500", false, false, false, FreqImage::Unknown},
    {"10815abc", false, false, true, FreqImage::ILS},
    {" 10810", false, false, false, FreqImage::Unknown},  // character 5 is "1"
    {"2.97500e5", true, false, false, FreqImage::UHF},    // "2.9750": "50"
};

TEST(FrequencyKinds, AreJudgedByTheNumberAndTheTextAsItStands) {
  for (const Judged& each : judged) {
    EXPECT_EQ(IsUHF(each.Value), each.UHF) << each.Value;
    EXPECT_EQ(IsVHF(each.Value), each.VHF) << each.Value;
    EXPECT_EQ(IsILS(each.Value), each.ILS) << each.Value;
    EXPECT_EQ(FreqValToIcon(each.Value), each.Image) << each.Value;
  }
}

TEST(FrequencyTables, OfATheaterWithoutAFileHaveUnsetChannelsAndNumberedTeams) {
  const Frequencies tables;
  for (std::size_t i = 1; i <= 20; ++i) {
    EXPECT_EQ(tables.CustomUHF[i], "000000");
    EXPECT_EQ(tables.CustomVHF[i], "000000");
  }
  EXPECT_EQ(tables.CustomF1, "000000");
  EXPECT_EQ(tables.CustomF2, "000000");
  EXPECT_TRUE(tables.FreqFolders.Empty());
  EXPECT_TRUE(tables.Airfields.Empty());
  EXPECT_EQ(tables.Teams[0], "Team #0");
  EXPECT_EQ(tables.Teams[7], "Team #7");
}

}  // namespace
}  // namespace kestrel::radio
