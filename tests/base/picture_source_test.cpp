// Pictures of files are read by the library's own calls, piece by piece.
#include "base/picture_source.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/picture.h"
#include "base/picture_header.h"
#include "base/positioned_file.h"
#include "picture_files.h"
#include "temp_folder.h"

#ifdef __linux__
#include <sys/resource.h>

#include "doubles/other_process.h"
#endif

namespace kestrel::base {
namespace {

using namespace std::string_literals;

std::string ReadFrom(const PictureSource& source, std::uint64_t position, std::size_t count) {
  std::string text(count, '?');
  text.resize(source.Read(position, std::as_writable_bytes(std::span(text))));
  return text;
}

std::string Noise(std::size_t count) {
  std::mt19937 random(1);
  std::string bytes(count, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  return bytes;
}

TEST(PictureSource, FileAndMemoryGiveTheSameAtEachPlace) {
  const std::string bytes = Noise(300000);
  const test::TempFolder folder;
  test::WriteBytes(folder / "f", bytes);
  const PositionedFile file(folder / "f", PositionedFile::Mode::Read);
  const PictureSource ofFile(file), ofMemory(bytes);
  EXPECT_EQ(ofFile.Size(), 300000u);
  EXPECT_EQ(ofMemory.Size(), 300000u);
  std::mt19937 random(2);
  for (int n = 0; n < 2000; ++n) {
    const std::size_t at = random() % 300100;
    const std::size_t count = n % 10 == 0 ? random() % 200000 : random() % 300;
    const std::string wanted = at < bytes.size() ? bytes.substr(at, count) : "";
    ASSERT_EQ(ReadFrom(ofFile, at, count), wanted) << at << ", " << count;
    ASSERT_EQ(ReadFrom(ofMemory, at, count), wanted) << at << ", " << count;
  }
  EXPECT_EQ(ReadFrom(ofFile, UINT64_MAX, 1), "");
  EXPECT_EQ(ReadFrom(ofMemory, UINT64_MAX, 1), "");
}

TEST(PictureSource, AFileThatHasBecomeShorterGivesWhatThereIs) {
  const std::string bytes = Noise(300000);
  const test::TempFolder folder;
  test::WriteBytes(folder / "f", bytes);
  const PositionedFile file(folder / "f", PositionedFile::Mode::Read);
  const PictureSource source(file);
  std::filesystem::resize_file(folder / "f", 200000);
  EXPECT_EQ(source.Size(), 300000u);
  EXPECT_EQ(ReadFrom(source, 199990, 20), bytes.substr(199990, 10));
  EXPECT_EQ(ReadFrom(source, 250000, 20), "");
  EXPECT_EQ(ReadFrom(source, 10, 20), bytes.substr(10, 20));
}

TEST(PictureSource, OfAJpegTheLibraryReadsTheKeptPartsAsOneFile) {
  // More than is held of a file at once, in front of each of its segments.
  const std::string plain = test::Jpeg();
  const std::string comment = "\xFF\xFE\xFF\xFF"s + std::string(65533, 'c');
  std::string bytes = plain.substr(0, 2) + comment;
  for (std::size_t at = 2; static_cast<unsigned char>(plain[at + 1]) != 0xDA;) {
    const std::size_t length =
        2 + static_cast<unsigned char>(plain[at + 2]) * 256u + static_cast<unsigned char>(plain[at + 3]);
    bytes += plain.substr(at, length) + comment + comment;
    at += length;
  }
  bytes += plain.substr(plain.find("\xFF\xDA"));
  EXPECT_EQ(JpegWithoutMetadata(bytes), plain);
  const PictureSource source(bytes);
  EXPECT_GT(JpegPartsWithoutMetadata(source).size(), 5u);
  const test::TempFolder folder;
  test::WriteBytes(folder / "f", bytes);
  const Picture fromFile = LoadPicture(folder / "f");
  const Picture fromMemory = DecodePicture(plain);
  ASSERT_EQ(fromFile.Width, 8);
  ASSERT_EQ(fromFile.Height, 8);
  EXPECT_EQ(std::string_view(reinterpret_cast<const char*>(fromFile.Pixels), 256),
            std::string_view(reinterpret_cast<const char*>(fromMemory.Pixels), 256));
}

#if defined(__linux__) && !defined(__SANITIZE_ADDRESS__)
/// Kilobytes that this process has held at most.
long Peak() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

TEST(PictureSource, ALargePictureIsNeverHeldInBothDepthsNorBesideItsFile) {
  // 4096 by 4096 pixels: 48 MiB in the file, 64 MiB of 32 bits.
  constexpr int side = 4096;
  const test::TempFolder folder;
  test::WriteBytes(folder / "f", test::Bmp(side, side, 24, "", ""));
  std::filesystem::resize_file(folder / "f", 54 + 3 * side * side);
  const int code = doubles::ExitCode([&] {
    const long before = Peak();
    const Picture picture = LoadPicture(folder / "f");
    if (picture.Width != side || picture.Pixels[0] != 0 || picture.Pixels[3] != 0xFF) return 255;
    return static_cast<int>((Peak() - before) / 1024);
  });
  EXPECT_GE(code, 60) << "of " << side << " by " << side << " pixels";
  EXPECT_LE(code, 76);
}
#endif

}  // namespace
}  // namespace kestrel::base
