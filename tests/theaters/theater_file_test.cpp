#include "theaters/theater_file.h"

#include <gtest/gtest.h>

#include <string>

#include "base/profile_file.h"

namespace kestrel::theaters {
namespace {

constexpr std::string_view Golden =
    "\"KESTREL v1.0.0 Theater INI File\"\r\n"
    "[MAP]\r\n"
    "NAME=Korea\r\n"
    "DISPLNAME=Korea 2005\r\n"
    "PIC=Korea.gif\r\n"
    "SIZE=1025\r\n"
    "BULLSEYES=2\r\n"
    "CURRENTBULL=2\r\n"
    "PICSIZE=2048\r\n"
    "COORDLAT=33.12345679\r\n"
    "COORDLONG=-123.50000000\r\n"
    "[BULLS1]\r\n"
    "NAME=North\r\n"
    "X=101\r\n"
    "Y=200\r\n"
    "[BULLS2]\r\n"
    "NAME=South\r\n"
    "X=0\r\n"
    "Y=-4\r\n";

Theater Korea() {
  Theater theater;
  theater.TheaterFile = "korea.ini";
  theater.Name = "Korea";
  theater.DisplayName = "Korea 2005";
  theater.Pic = "Korea.gif";
  theater.Size = 1024.7;
  theater.PicSize = 2048;
  theater.Bulls.Append({"North", 100.5, 200.4});
  theater.Bulls.Append({"South", 0.2, -3.6});
  theater.CurrentBull = 2;
  theater.CoordLat = 33.123456789;
  theater.CoordLong = -123.5;
  return theater;
}

Theater Read(std::string_view text) { return ReadTheaterFile(base::ProfileFile(text), "x.ini"); }

TEST(TheaterFile, IsWrittenByteForByte) {
  EXPECT_EQ(WriteTheaterFile(Korea(), "\"KESTREL v1.0.0 Theater INI File\"").Text(), Golden);
}

TEST(TheaterFile, IsReadWhole) {
  const Theater theater = Read(Golden);
  EXPECT_EQ(theater.TheaterFile, "x.ini");
  EXPECT_EQ(theater.Name, "Korea");
  EXPECT_EQ(theater.DisplayName, "Korea 2005");
  EXPECT_EQ(theater.Pic, "Korea.gif");
  EXPECT_EQ(theater.Size, 1025);
  EXPECT_EQ(theater.PicSize, 2048);
  EXPECT_EQ(theater.CurrentBull, 2);
  EXPECT_EQ(theater.CoordLat, 33.12345679);
  EXPECT_EQ(theater.CoordLong, -123.5);
  ASSERT_EQ(theater.Bulls.UpperBound(), 2u);
  EXPECT_EQ(theater.Bulls[1].Name, "North");
  EXPECT_EQ(theater.Bulls[2].Y, -4);
}

TEST(TheaterFile, WritingWhatWasReadGivesTheSameBytes) {
  EXPECT_EQ(WriteTheaterFile(Read(Golden), "\"KESTREL v1.0.0 Theater INI File\"").Text(), Golden);
}

TEST(TheaterFile, MissingFileGivesDefaults) {
  const Theater theater = Read("");
  EXPECT_EQ(theater.Name, "");
  EXPECT_EQ(theater.Size, 0);
  EXPECT_EQ(theater.CurrentBull, 0);
  EXPECT_TRUE(theater.Bulls.Empty());
}

TEST(TheaterFile, CommaIsADecimalSignExceptInPicSize) {
  const Theater theater = Read(
      "[MAP]\nSIZE=1024,5\nPICSIZE=2048,5\nCOORDLAT=33,25\nCOORDLONG=-1,5\nBULLSEYES=1,0\n"
      "[BULLS1]\nX=3,5\nY=1.234,5\n");
  EXPECT_EQ(theater.Size, 1024.5);
  EXPECT_EQ(theater.PicSize, 2048);
  EXPECT_EQ(theater.CoordLat, 33.25);
  EXPECT_EQ(theater.CoordLong, -1.5);
  ASSERT_EQ(theater.Bulls.UpperBound(), 1u);
  EXPECT_EQ(theater.Bulls[1].X, 3.5);
  EXPECT_EQ(theater.Bulls[1].Y, 1.234);
}

TEST(TheaterFile, CountsThatLieGiveWhatIsThere) {
  struct Case {
    const char* Count;
    std::size_t Read;
  };
  const Case cases[] = {{"99999", 3},
                        {"1e300", 3},
                        {"2", 2},
                        {"3", 2},
                        {"4", 3},
                        {"1", 1},
                        {"0", 0},
                        {"-5", 0},
                        {"many", 0},
                        {"", 0},
                        {"nan", 0},
                        {"9e999", 3},
                        {"-9e999", 0},
                        {"1.6", 2},
                        // Halves go to the even number: 0.5 to 0, 1.5 to 2, 2.5 to 2, 3.5 to 4.
                        {"0.5", 0},
                        {"1.5", 2},
                        {"2.5", 2},
                        {"3,5", 3}};
  for (const Case& c : cases) {
    const Theater theater =
        Read(std::string("[MAP]\nBULLSEYES=") + c.Count + "\n[BULLS1]\nNAME=a\n[BULLS2]\nNAME=b\n[BULLS4]\nNAME=d\n");
    EXPECT_EQ(theater.Bulls.UpperBound(), c.Read) << c.Count;
  }
}

TEST(TheaterFile, BullseyesBehindAGapAreReadAndTheCurrentOneStays) {
  struct Case {
    const char* Current;
    std::int16_t Place;
  };
  for (const Case& c : {Case{"1", 1}, {"2", 0}, {"3", 2}, {"4", 0}, {"5", 3}, {"6", 6}, {"0", 0}, {"-3", -3}}) {
    const Theater theater = Read(std::string("[MAP]\nBULLSEYES=5\nCURRENTBULL=") + c.Current +
                                 "\n[BULLS1]\nNAME=a\n[BULLS3]\nNAME=c\n[BULLS5]\nNAME=e\n");
    ASSERT_EQ(theater.Bulls.UpperBound(), 3u);
    EXPECT_EQ(theater.Bulls[2].Name, "c");
    EXPECT_EQ(theater.Bulls[3].Name, "e");
    EXPECT_EQ(theater.CurrentBull, c.Place) << c.Current;
  }
}

TEST(TheaterFile, CurrentBullBeyond16BitsIsNone) {
  for (const char* text : {"99999", "-99999", "1e999", "-1e999"}) {
    EXPECT_EQ(Read(std::string("[MAP]\nCURRENTBULL=") + text).CurrentBull, 0) << text;
  }
  EXPECT_EQ(Read("[MAP]\nCURRENTBULL=-3").CurrentBull, -3);
}

TEST(TheaterFile, CurrentBullRoundsHalvesToTheEvenNumber) {
  const auto current = [](const std::string& text) { return Read("[MAP]\nCURRENTBULL=" + text).CurrentBull; };
  EXPECT_EQ(current("1.5"), 2);
  EXPECT_EQ(current("2,5"), 2);
  EXPECT_EQ(current("2.6"), 3);
}

TEST(TheaterFile, HalvesAreWrittenAwayFromZero) {
  Theater theater = Korea();
  theater.Size = 1024.5;
  theater.PicSize = 2048.5;
  theater.Bulls[2].X = 0.5;
  theater.Bulls[2].Y = -2.5;
  const std::string text = WriteTheaterFile(theater, "\"banner\"").Text();
  for (const char* line : {"SIZE=1025\r\n", "PICSIZE=2049\r\n", "\r\nX=1\r\n", "\r\nY=-3\r\n"}) {
    EXPECT_NE(text.find(line), std::string::npos) << line;
  }
}

}  // namespace
}  // namespace kestrel::theaters
