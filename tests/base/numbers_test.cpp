#include "base/numbers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "base/failure.h"

namespace kestrel::base {
namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

struct Reading {
  const char* Text;
  double Leading;    ///< "," ends the number
  double Invariant;  ///< "," is the point
};

TEST(Numbers, ReadingStopsWhereTheNumberStops) {
  const Reading cases[] = {
      {"", 0, 0},
      {"abc", 0, 0},
      {".", 0, 0},
      {"-", 0, 0},
      {"-.", 0, 0},
      {"+-1", 0, 0},
      {"5556", 5556, 5556},
      {"12,5", 12, 12.5},
      {"12.5", 12.5, 12.5},
      {"1.234,5", 1.234, 1.234},
      {"1,234.5", 1, 1.234},
      {"3,5", 3, 3.5},
      {",5", 0, 0.5},
      {".5", 0.5, 0.5},
      {"5.", 5, 5},
      {"-.5x", -0.5, -0.5},
      {" \t\r\n 7", 7, 7},
      {"+7", 7, 7},
      {"- 7", 0, 0},
      {"7 8", 7, 7},
      {"007", 7, 7},
      {"1e3", 1000, 1000},
      {"1E+3", 1000, 1000},
      {"1e-3", 0.001, 0.001},
      {"1e", 1, 1},
      {"1e+", 1, 1},
      {"1ex", 1, 1},
      {"e5", 0, 0},
      {".e5", 0, 0},
      {"1,5e2", 1, 150},
      {"0x10", 0, 0},
      {"&H10", 0, 0},
      {"inf", 0, 0},
      {"nan", 0, 0},
      {"-inf", 0, 0},
      {"1e308", 1e308, 1e308},
      {"1e309", Infinity, Infinity},
      {"-1e309", -Infinity, -Infinity},
      {"0.001e312", Infinity, Infinity},
      {"1e99999999999999999999", Infinity, Infinity},
      {"1e-99999999999999999999", 0, 0},
      {"0e99999999999999999999", 0, 0},
      {"5e-324", 5e-324, 5e-324},
      {"1e-400", 0, 0},
      {"0.1", 0.1, 0.1},
      {"123456789012345678901234567890", 123456789012345678901234567890.0, 123456789012345678901234567890.0},
      {"0.1234567890123456789", 0.1234567890123456789, 0.1234567890123456789},
      {"0000012345.6", 12345.6, 12345.6},
      {"1\0002", 1, 1},
  };
  for (const Reading& reading : cases) {
    EXPECT_EQ(LeadingNumber(reading.Text), reading.Leading) << reading.Text;
    EXPECT_EQ(InvariantNumber(reading.Text), reading.Invariant) << reading.Text;
    std::string text = reading.Text;
    EXPECT_EQ(ParseInvariantNumber(text), reading.Invariant) << reading.Text;
    EXPECT_EQ(text.find(','), std::string::npos);
  }
}

TEST(Numbers, ParseInvariantNumberChangesTheCallersText) {
  std::string text = "1,234,5";
  EXPECT_EQ(ParseInvariantNumber(text), 1.234);
  EXPECT_EQ(text, "1.234.5");
}

TEST(Numbers, LongDigitTextsHaveTheirValue) {
  EXPECT_EQ(LeadingNumber(std::string(400, '9')), Infinity);
  EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1"), 0);
  EXPECT_EQ(LeadingNumber(std::string(100000, '0') + "3"), 3);
  EXPECT_EQ(LeadingNumber("2." + std::string(100000, '0')), 2);
  EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1e401"), 1);
}

TEST(Numbers, RandomNumbersAreReadToTheNearestDouble) {
  const unsigned seed = std::random_device{}();
  std::mt19937 random(seed);
  for (int i = 0; i < 200000; ++i) {
    char text[64];
    const double magnitude = std::pow(10, std::uniform_real_distribution(-12.0, 18.0)(random));
    std::snprintf(text, sizeof text, random() % 4 == 0 ? "%.*e" : "%.*f", static_cast<int>(random() % 18), magnitude);
    ASSERT_EQ(InvariantNumber(text), std::strtod(text, nullptr)) << text << ", seed " << seed;
  }
}

/// The C library's reading: of a text that is cut at the first character that stands in no number, it takes as much as
/// is one. Nothing when that is none; `used` becomes the length of what was taken.
std::optional<double> LibraryNumber(std::string text, bool commaIsPoint, std::size_t& used) {
  for (char& c : text) c = commaIsPoint && c == ',' ? '.' : c;
  text.resize(std::min(text.find_first_not_of("0123456789.+-eE"), text.size()));
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  used = static_cast<std::size_t>(end - text.c_str());
  if (used == 0) return std::nullopt;
  return value;
}

double LibraryLeading(const std::string& text, bool commaIsPoint) {
  const std::string rest = text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  std::size_t used = 0;
  return LibraryNumber(rest, commaIsPoint, used).value_or(rest.starts_with('-') ? -0.0 : 0.0);
}

std::optional<double> LibraryWhole(std::string text) {
  text.erase(0, std::min(text.find_first_not_of(' '), text.size()));
  text.resize(text.find_last_not_of(' ') + 1);
  std::size_t used = 0;
  const std::optional<double> value = LibraryNumber(text, true, used);
  return used == text.size() && value && std::isfinite(*value) ? value : std::nullopt;
}

/// Any characters of one of some sets, or a number behind blanks as the wire has it.
std::string RandomText(std::mt19937& random) {
  const auto below = [&random](unsigned count) { return static_cast<std::size_t>(random() % count); };
  static constexpr char foreign[] = "0123456789.,-+eEdD x\t\r\n\0infa";
  const std::string_view sets[] = {"0123456789", "0123456789.,", "0123456789.,-+ ",
                                   "00001.e-+5", " 12.5e3,",     {foreign, sizeof foreign - 1}};
  const auto add = [&](std::string& text, std::size_t count, std::string_view set) {
    while (count-- > 0) text += set[below(static_cast<unsigned>(set.size()))];
  };
  std::string text;
  if (below(4) != 0) {
    add(text, below(below(16) == 0 ? 48 : 16), sets[below(6)]);
    return text;
  }
  add(text, below(5), below(4) == 0 ? " \t\r\n" : " ");
  add(text, below(2), "+-");
  add(text, below(below(32) == 0 ? 330 : 18), "0123456789");
  add(text, below(4) == 0 ? 0 : 1, ".,");
  add(text, below(below(32) == 0 ? 60 : 18), "0123456789");
  if (below(3) == 0) {
    add(text, 1, "eE");
    add(text, below(2), "+-");
    add(text, below(4), "0123456789");
  }
  add(text, below(3), " ");
  return text;
}

std::uint64_t Bits(double value) { return std::bit_cast<std::uint64_t>(value); }

// KESTREL_NUMBER_TEXTS in the environment asks for more texts than a usual run has.
TEST(Numbers, AnyTextIsReadToTheBitAsTheLibraryReadsIt) {
  const char* const wanted = std::getenv("KESTREL_NUMBER_TEXTS");
  const long texts = wanted == nullptr ? 300000 : std::atol(wanted);
  const unsigned seed = std::random_device{}();
  std::mt19937 random(seed);
  for (long i = 0; i < texts; ++i) {
    std::string text = RandomText(random);
    const std::optional<double> whole = LibraryWhole(text);
    const bool same = Bits(LeadingNumber(text)) == Bits(LibraryLeading(text, false)) &&
                      Bits(InvariantNumber(text)) == Bits(LibraryLeading(text, true)) &&
                      Bits(WholeNumberOrZero(text)) == Bits(whole.value_or(0));
    ASSERT_TRUE(same) << testing::PrintToString(text) << ", seed " << seed;
    const double invariant = InvariantNumber(text);
    ASSERT_EQ(Bits(ParseInvariantNumber(text)), Bits(invariant)) << text << ", seed " << seed;
  }
}

/// A number of the wire: blanks, digits and perhaps a decimal sign and digits, which fill `width` characters.
std::string WireField(std::mt19937& random, std::size_t width) {
  const std::size_t number = 1 + random() % width;
  std::string text(width - number, ' ');
  for (std::size_t i = 0; i < number; ++i) text += static_cast<char>('0' + random() % 10);
  if (random() % 4 != 0) text[width - 1 - random() % number] = random() % 4 == 0 ? ',' : '.';
  return text;
}

// KESTREL_NUMBER_TEXTS asks for more here too.
TEST(Numbers, EveryByteAtEveryPlaceOfAWireFieldIsReadAsTheLibraryReadsIt) {
  const char* const wanted = std::getenv("KESTREL_NUMBER_TEXTS");
  const long texts = wanted == nullptr ? 250000 : std::atol(wanted);
  std::mt19937 random(16);
  for (long done = 0; done < texts;) {
    const std::string field = WireField(random, random() % 2 == 0 ? 12 : 7 + random() % 11);
    for (std::size_t place = 0; place < field.size(); ++place) {
      std::string text = field;
      for (int byte = 0; byte < 256; ++byte, ++done) {
        text[place] = static_cast<char>(byte);
        const bool same = Bits(LeadingNumber(text)) == Bits(LibraryLeading(text, false)) &&
                          Bits(InvariantNumber(text)) == Bits(LibraryLeading(text, true));
        ASSERT_TRUE(same) << testing::PrintToString(text);
      }
    }
  }
}

TEST(Numbers, EveryByteAtEveryPlaceOfThreeIsReadAsTheLibraryReadsIt) {
  constexpr std::string_view others(" 059.,-+ex\t\0\x1a", 13);
  for (std::size_t place = 0; place < 3; ++place) {
    for (const char one : others) {
      for (const char two : others) {
        std::string text = {one, one, two};
        if (place == 2) text[1] = two;
        for (int byte = 0; byte < 256; ++byte) {
          text[place] = static_cast<char>(byte);
          ASSERT_EQ(Bits(WholeNumberOrZero(text)), Bits(LibraryWhole(text).value_or(0)))
              << testing::PrintToString(text);
        }
      }
    }
  }
}

TEST(Numbers, WholeNumberTakesNothingElse) {
  EXPECT_EQ(WholeNumberOrZero("12,5"), 12.5);
  EXPECT_EQ(WholeNumberOrZero(" -12.5 "), -12.5);
  EXPECT_EQ(WholeNumberOrZero("1e2"), 100);
  for (const char* text :
       {"", " ", ".", "-", "12x", "1 2", "1.2.3", "1,2,3", "\t1", "1\t", "1e", "0x1", "inf", "1e999"}) {
    EXPECT_EQ(WholeNumberOrZero(text), 0) << text;
  }
  EXPECT_EQ(WholeNumberOrZero(" 5. "), 5);
  EXPECT_EQ(WholeNumberOrZero("1234567890"), 1234567890);
  EXPECT_EQ(WholeNumberOrZero("  7"), 7);
  EXPECT_EQ(WholeNumberOrZero("-12,5 "), -12.5);
}

TEST(Numbers, Int16FromTextTakesWholeNumbersOf16Bits) {
  EXPECT_EQ(Int16FromText("12"), 12);
  EXPECT_EQ(Int16FromText(" -32768 "), -32768);
  EXPECT_EQ(Int16FromText("+32767"), 32767);
  EXPECT_EQ(Int16FromText("007"), 7);
  for (const char* text :
       {"", " ", "32768", "-32769", "1.5", "1,0", "1e2", "x", "1x", "+", "-", "+-1", "- 1", "99999999999"}) {
    EXPECT_THROW(Int16FromText(text), RuntimeFailure) << text;
  }
}

TEST(Numbers, HalvesRoundToTheEvenNumber) {
  EXPECT_EQ(RoundHalfEven(0.5), 0);
  EXPECT_EQ(RoundHalfEven(1.5), 2);
  EXPECT_EQ(RoundHalfEven(2.5), 2);
  EXPECT_EQ(RoundHalfEven(-2.5), -2);
  EXPECT_EQ(RoundHalfEven(2.500001), 3);
}

TEST(Numbers, ConversionsThatDoNotFitThrow) {
  EXPECT_EQ(ToInt16(32767.49), 32767);
  EXPECT_EQ(ToInt16(-32768.5), -32768);
  EXPECT_THROW(ToInt16(32767.5), RuntimeFailure);
  EXPECT_THROW(ToInt16(-32769), RuntimeFailure);
  EXPECT_EQ(ToInt32(2147483647.4), 2147483647);
  EXPECT_EQ(ToInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
  EXPECT_THROW(ToInt32(2147483647.5), RuntimeFailure);
  for (const double strange : {Infinity, -Infinity, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_THROW(ToInt16(strange), RuntimeFailure);
    EXPECT_THROW(ToInt32(strange), RuntimeFailure);
  }
}

TEST(Numbers, ConversionsRoundToTheEvenNumberWhateverTheSize) {
  EXPECT_EQ(ToInt16(0.5), 0);
  EXPECT_EQ(ToInt16(-0.5), 0);
  EXPECT_EQ(ToInt16(1.5), 2);
  EXPECT_EQ(ToInt16(-2.5), -2);
  EXPECT_EQ(ToInt16(0.49999999999999994), 0);
  EXPECT_EQ(ToInt16(32766.5), 32766);
  EXPECT_EQ(ToInt32(2147483646.5), 2147483646);
  EXPECT_EQ(ToInt32(-2147483648.5), -2147483647 - 1);
  for (const double large : {1e10, 4503599627370496.0, 6755399441055744.0, 1e18, 1e300}) {
    EXPECT_THROW(ToInt32(large), RuntimeFailure) << large;
    EXPECT_THROW(ToInt32(-large), RuntimeFailure) << large;
  }
}

struct Formatting {
  double Value;
  const char* Pattern;
  const char* Text;
};

TEST(Numbers, PicturesShapeTheText) {
  const Formatting cases[] = {
      {0, "0", "0"},
      {0, "000", "000"},
      {0, "0.00", "0.00"},
      {0, "#", ""},
      {0, "##0.00", "0.00"},
      {-0.0, "0.00", "0.00"},
      {-0.004, "0.00", "0.00"},
      {-0.4, "0", "0"},
      {7, "000", "007"},
      {-7, "000", "-007"},
      {1234, "000", "1234"},
      {1024.7, "0", "1025"},
      {0.5, "0", "1"},
      {1.5, "0", "2"},
      {2.5, "0", "3"},
      {-2.5, "0", "-3"},
      {1.005, "0.00", "1.01"},
      {1.115, "0.00", "1.12"},
      {2.675, "0.00", "2.68"},
      {0.285, "0.00", "0.29"},
      {1.0049999999, "0.00", "1.00"},
      {12.3, "0000.000", "0012.300"},
      {-12.3, "0000.000", "-0012.300"},
      {99.9996, "0.000", "100.000"},
      {9.5, "0", "10"},
      {9999.9995, "0000.000", "10000.000"},
      {0.0005, "0.000", "0.001"},
      {0.0004999, "0.000", "0.000"},
      {0.05, "0.0", "0.1"},
      {0.04, "0.0", "0.0"},
      {0.005, "0", "0"},
      {0.25, "0.0#####", "0.25"},
      {3, "0.0#####", "3.0"},
      {1.0000004, "0.0#####", "1.0"},
      {1.0000005, "0.0#####", "1.000001"},
      {-1.5, "0.0#####", "-1.5"},
      {0.5, "##0.00", "0.50"},
      {123.456, "##0.00", "123.46"},
      {0.25, "#.##", ".25"},
      {37.12345678, "0.00000000", "37.12345678"},
      {127.5, "0.00000000", "127.50000000"},
      {4.08, "00", "04"},
      {12.3454, "00.000", "12.345"},
      {1e15, "0", "1000000000000000"},
      {1e20, "0", "100000000000000000000"},
      {1e20, "0.0", "100000000000000000000.0"},
      {1e20, "0.0#", "100000000000000000000.0"},
      {1e-20, "0.00", "0.00"},
      {123456789012345678.0, "0", "123456789012346000"},
      {999999999999999.5, "0", "1000000000000000"},
      {0.1 + 0.2, "0.0#################", "0.3"},
      {5e-324, "0.0", "0.0"},
      {Infinity, "0.00", "0.00"},
      {-Infinity, "000", "000"},
      {std::numeric_limits<double>::quiet_NaN(), "0", "0"},
  };
  for (const Formatting& formatting : cases) {
    EXPECT_EQ(FormatInvariant(formatting.Value, formatting.Pattern), formatting.Text)
        << formatting.Value << " in " << formatting.Pattern;
  }
}

TEST(Numbers, AppendFormatKeepsWhatIsThere) {
  std::string text = "X=";
  AppendFormat(text, 1.5, "0.0");
  EXPECT_EQ(text, "X=1.5");
}

TEST(Numbers, TheLargestNumberHasAllItsPlaces) {
  const std::string text = FormatInvariant(std::numeric_limits<double>::max(), "0.0");
  EXPECT_EQ(text.size(), 311u);
  EXPECT_EQ(text.substr(0, 16), "1797693134862320");
}

/// The 15 digits of `value` written out in full by the C library, then rounded as a pupil does on paper.
std::string OnPaper(double value, int decimals) {
  char scientific[40];
  std::snprintf(scientific, sizeof scientific, "%.14e", std::abs(value));
  const int exponent = std::atoi(std::string(scientific).substr(17).c_str());
  std::string digits = scientific[0] + std::string(scientific + 2, 14);
  std::string plain = exponent < 0 ? std::string(static_cast<std::size_t>(-exponent), '0') + digits
                                   : digits + std::string(static_cast<std::size_t>(std::max(0, exponent - 14)), '0');
  plain += std::string(40, '0');
  const std::size_t point = exponent < 0 ? 1 : static_cast<std::size_t>(exponent) + 1;
  const std::size_t kept = point + static_cast<std::size_t>(decimals);
  bool carry = plain[kept] >= '5';
  plain.resize(kept);
  for (std::size_t at = kept; carry && at-- > 0;) {
    carry = plain[at] == '9';
    plain[at] = carry ? '0' : static_cast<char>(plain[at] + 1);
  }
  std::string result = carry ? "1" : "";
  result += plain.substr(0, point);
  if (decimals > 0) result += "." + plain.substr(point);
  const bool zero = result.find_first_not_of("0.") == std::string::npos;
  return value < 0 && !zero ? "-" + result : result;
}

TEST(Numbers, RandomNumbersAreFormattedAsOnPaper) {
  const unsigned seed = std::random_device{}();
  std::mt19937 random(seed);
  for (int i = 0; i < 200000; ++i) {
    const int decimals = static_cast<int>(random() % 6);
    double value = std::pow(10, std::uniform_real_distribution(-7.0, 16.0)(random));
    // Half of them near or on a half in the last place, where it matters.
    if (random() % 2 == 0) value = (std::floor(value) + 0.5) / std::pow(10, decimals);
    if (random() % 2 == 0) value = -value;
    const std::string pattern = decimals == 0 ? "0" : "0." + std::string(static_cast<std::size_t>(decimals), '0');
    ASSERT_EQ(FormatInvariant(value, pattern), OnPaper(value, decimals))
        << std::hexfloat << value << " in " << pattern << ", seed " << seed;
  }
}

}  // namespace
}  // namespace kestrel::base
