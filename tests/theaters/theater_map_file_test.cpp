#include "theaters/theater_map_file.h"

#include <gtest/gtest.h>

#include <string>

#include "base/failure.h"

namespace kestrel::theaters {
namespace {

using namespace std::string_literals;

const std::string Longitude = "\x00\x00\xFA\x42"s;  // 125
const std::string Latitude = "\x00\x00\x0A\x42"s;   // 34.5
const std::string NotANumber = "\x00\x00\xC0\x7F"s, Infinite = "\x00\x00\x80\x7F"s, Hundred = "\x00\x00\xC8\x42"s,
                  FourHundred = "\x00\x00\xC8\x43"s;

std::string MapFile(const std::string& longitude, const std::string& latitude) {
  return std::string(1104, '\xEE') + longitude + latitude;
}

TEST(TheaterMapFile, CornerStandsAtItsEnd) {
  const Corner corner = ReadTheaterMapCorner(MapFile(Longitude, Latitude));
  EXPECT_EQ(corner.Long, 125);
  EXPECT_EQ(corner.Lat, 34.5);
}

TEST(TheaterMapFile, WhatFollowsTheRecordIsNotLookedAt) {
  EXPECT_EQ(ReadTheaterMapCorner(MapFile(Longitude, Latitude) + std::string(500, '\xFF')).Lat, 34.5);
}

TEST(TheaterMapFile, ShorterFileIsRefused) {
  const std::string whole = MapFile(Longitude, Latitude);
  ASSERT_EQ(whole.size(), 1112U);
  for (const std::size_t length : {0U, 1U, 1100U, 1104U, 1108U, 1111U}) {
    EXPECT_THROW(ReadTheaterMapCorner(whole.substr(0, length)), base::RuntimeFailure) << length;
  }
}

TEST(TheaterMapFile, CornerThatIsNoPlaceIsRefused) {
  for (const std::string& bad : {NotANumber, Infinite, FourHundred}) {
    EXPECT_THROW(ReadTheaterMapCorner(MapFile(bad, Latitude)), base::RuntimeFailure);
    EXPECT_THROW(ReadTheaterMapCorner(MapFile(Longitude, bad)), base::RuntimeFailure);
  }
  EXPECT_THROW(ReadTheaterMapCorner(MapFile(Longitude, Hundred)), base::RuntimeFailure);
  EXPECT_EQ(ReadTheaterMapCorner(MapFile(Hundred, Latitude)).Long, 100);
}

}  // namespace
}  // namespace kestrel::theaters
