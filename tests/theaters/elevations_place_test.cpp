// Heights are read where they are asked for: what a file that changes gives, one that cannot be read, and what is held.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <new>

#include "base/failure.h"
#include "base/little_endian.h"
#include "base/temp_folder.h"
#include "theaters/catalogue.h"
#include "theaters/elevations.h"

namespace {

// The largest piece of memory that has been asked for, bytes.
std::size_t largestPiece = 0;

}  // namespace

void* operator new(std::size_t size) {
  largestPiece = std::max(largestPiece, size);
  if (void* memory = std::malloc(std::max<std::size_t>(size, 1))) return memory;
  throw std::bad_alloc();
}
// A library's own way in, so that all come from and go back to one place, also where a sanitizer has its own.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  largestPiece = std::max(largestPiece, size);
  return std::malloc(std::max<std::size_t>(size, 1));
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace kestrel::theaters {
namespace {

namespace fs = std::filesystem;

class ElevationsAtPlaces : public testing::Test {
 protected:
  /// Makes the file so long as a theater of `size` needs it, all of it 0.
  void Make(int size) {
    test::WriteBytes(path, "");
    fs::resize_file(path, std::uintmax_t{2} * static_cast<unsigned>(size) * static_cast<unsigned>(size));
  }
  /// Writes the height at a place of a theater of `size` over what the file holds.
  void Put(int size, int x, int y, int height) {
    std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
    file.seekp((std::streamoff{y} * size + x) * 2);
    file << test::Bytes2(height);
  }

  test::TempFolder folder;
  fs::path path = folder / "one_Elevation.dat";
};

TEST_F(ElevationsAtPlaces, EachPlaceOfTheLargestTheaterHasItsOwn) {
  struct Place {
    int X, Y, Height;
  };
  // The corners; and 2048 heights are a piece that is read at once.
  const Place places[] = {{0, 0, 11},       {2047, 0, -12},     {2048, 0, 13},      {8191, 0, 14},    {0, 1, 15},
                          {4095, 4095, 16}, {4096, 4095, 1717}, {0, 8191, -18},     {8191, 8190, 19}, {6143, 8191, 20},
                          {6144, 8191, 21}, {8191, 8191, 22},   {4000, 1234, 2323}, {4001, 1234, 0}};
  Make(8192);
  for (const Place& place : places) Put(8192, place.X, place.Y, place.Height);
  Elevations heights;
  heights.SetSource(path, MaxSize);
  ASSERT_TRUE(heights.Read());
  for (const Place& place : places) EXPECT_EQ(heights.At(place.X + 0.5, place.Y + 0.5), place.Height) << place.X;
  for (auto place = std::rbegin(places); place != std::rend(places); ++place) {
    EXPECT_EQ(heights.At(place->X, place->Y), place->Height) << place->X;
  }
  EXPECT_EQ(heights.At(8192, 8191), std::nullopt);
}

TEST_F(ElevationsAtPlaces, AFileThatEndsWithinAPieceOrAHeightIsZeroFromThere) {
  Make(100);
  Put(100, 99, 98, 7);
  Put(100, 0, 99, 0x0405);
  // 99 rows of 200 bytes, and a byte: the lower one of the next height.
  fs::resize_file(path, 99 * 200 + 1);
  Elevations heights;
  heights.SetSource(path, 100);
  heights.Read();
  EXPECT_EQ(heights.At(0, 99), 5);
  EXPECT_EQ(heights.At(1, 99), 0);
  EXPECT_EQ(heights.At(99, 99), 0);
  EXPECT_EQ(heights.At(99, 98), 7);
}

TEST_F(ElevationsAtPlaces, WhatIsWrittenOverInPlaceShowsWhereItIsReadAnew) {
  Make(100);
  Put(100, 0, 0, 1);
  Put(100, 0, 99, 2);
  Elevations heights;
  heights.SetSource(path, 100);
  heights.Read();
  EXPECT_EQ(heights.At(0, 0), 1);
  Put(100, 0, 0, 3);
  Put(100, 0, 99, 4);
  EXPECT_EQ(heights.At(0, 0), 1) << "held";
  EXPECT_EQ(heights.At(0, 99), 4);
  EXPECT_EQ(heights.At(0, 0), 3);
  fs::resize_file(path, 0);
  EXPECT_EQ(heights.At(0, 99), 0);
}

#ifndef _WIN32
TEST_F(ElevationsAtPlaces, AFileThatIsReplacedOrDeletedGivesWhatItHeld) {
  Make(100);
  Put(100, 0, 99, 2);
  Elevations heights;
  heights.SetSource(path, 100);
  heights.Read();
  EXPECT_EQ(heights.At(0, 0), 0);
  test::WriteBytes(folder / "other", std::string(20000, 'x'));
  fs::rename(folder / "other", path);
  EXPECT_EQ(heights.At(0, 99), 2);
  fs::remove(path);
  EXPECT_EQ(heights.At(0, 0), 0);
  EXPECT_EQ(heights.At(0, 99), 2);
}
#endif

#ifdef __linux__
TEST_F(ElevationsAtPlaces, AFileThatFailsWhileItIsReadIsToldOnceAndHasNone) {
  Elevations heights;
  // A file that opens; at its beginning nothing can be read, since no process has memory there.
  heights.SetSource("/proc/self/mem", 100);
  ASSERT_TRUE(heights.Read());
  EXPECT_EQ(heights.At(0, 0), std::nullopt);
  EXPECT_THROW(heights.Read(), base::RuntimeFailure);
  EXPECT_FALSE(heights.Read());
  EXPECT_EQ(heights.At(0, 0), std::nullopt);
  EXPECT_FALSE(heights.Read());
  Make(100);
  heights.SetSource(path, 100);
  EXPECT_TRUE(heights.Read());
  EXPECT_EQ(heights.At(0, 0), 0);
}
#endif

TEST_F(ElevationsAtPlaces, NoneOfTheLargestTheaterIsHeldButAPiece) {
  Make(8192);
  Elevations heights;
  heights.SetSource(path, MaxSize);
  largestPiece = 0;
  heights.Read();
  for (int at = 0; at < 8192; at += 64) EXPECT_EQ(heights.At(at, 8191 - at), 0);
  EXPECT_LE(largestPiece + sizeof heights, 8192u);
}

TEST_F(ElevationsAtPlaces, AfterASwitchTheFormerTheaterHasNoPart) {
  Make(100);
  Put(100, 0, 0, 1);
  Elevations heights;
  heights.SetSource(path, 100);
  heights.Read();
  EXPECT_EQ(heights.At(0, 0), 1);
  heights.SetSource(folder / "none_Elevation.dat", 100);
  EXPECT_EQ(heights.At(0, 0), std::nullopt);
  heights.Read();
  EXPECT_EQ(heights.At(0, 0), 0);
  EXPECT_EQ(heights.At(1, 0), std::nullopt);
}

}  // namespace
}  // namespace kestrel::theaters
