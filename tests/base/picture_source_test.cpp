// Pictures of files are read by the library's own calls, piece by piece.
#include "base/picture_source.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/picture.h"
#include "base/picture_header.h"
#include "base/picture_replacement.h"
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

TEST(PictureSource, ALargePictureThatTakesThePlaceOfAnotherDoesSoWithinFewBytesMore) {
  constexpr int side = 4096;
  const test::TempFolder folder;
  test::WriteBytes(folder / "f", test::Bmp(side, side, 24, "", ""));
  std::filesystem::resize_file(folder / "f", 54 + 3 * side * side);
  const int code = doubles::ExitCode([&] {
    Picture picture = LoadPicture(folder / "f");
    const long before = Peak();
    picture = ReplacePicture(folder / "f", picture);
    if (picture.Width != side || picture.Pixels[0] != 0 || picture.Pixels[3] != 0xFF) return 255;
    return static_cast<int>((Peak() - before) / 1024);
  });
  // 48 MiB of the former, packed, with the 48 that are read, where 64 were before.
  EXPECT_LE(code, 44);
}
#endif

/// A picture of noise, opaque.
Picture NoisePicture(int width, int height) {
  const auto kept = std::make_shared<std::string>(Noise(static_cast<std::size_t>(width * height) * 4));
  for (std::size_t at = 3; at < kept->size(); at += 4) (*kept)[at] = '\xFF';
  const auto* top = reinterpret_cast<const std::uint8_t*>(kept->data());
  return Picture(width, height, width * 4, top, std::shared_ptr<void>(kept, kept->data()));
}

std::string_view BytesOf(const Picture& picture) {
  return {reinterpret_cast<const char*>(picture.Pixels), static_cast<std::size_t>(picture.Stride * picture.Height)};
}

TEST(PictureReplacement, APictureWhosePlaceIsNotTakenIsAsItWas) {
  const test::TempFolder folder;
  const std::string whole = test::Bmp(100, 100, 24, "", Noise(30000));
  test::WriteBytes(folder / "cut", whole.substr(0, 20000));
  test::WriteBytes(folder / "text", "no picture");
  test::WriteBytes(folder / "lying", test::Png(16384, 16384, 8, 2, "", {std::string(40000, 'x')}));
  // Packed while the other is read, and too small for that.
  for (const auto& [width, height] : {std::pair(2051, 2047), std::pair(30, 20)}) {
    const Picture former = NoisePicture(width, height);
    const std::string bytes(BytesOf(former));
    for (const char* name : {"cut", "text", "lying", "missing"}) {
      EXPECT_THROW(ReplacePicture(folder / name, former), RuntimeFailure) << name;
      EXPECT_TRUE(BytesOf(former) == bytes) << name;
    }
  }
}

TEST(PictureReplacement, TheNewPictureIsTheOneThatIsLoadedWithoutAFormer) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "24", test::Bmp(100, 100, 24, "", Noise(30000)));
  test::WriteBytes(folder / "32", test::Bmp(100, 100, 32, "", Noise(40000)));
  for (const char* name : {"24", "32"}) {
    const Picture wanted = LoadPicture(folder / name);
    for (const Picture& former : {NoisePicture(2051, 2047), NoisePicture(30, 20), Picture()}) {
      const Picture picture = ReplacePicture(folder / name, former);
      EXPECT_EQ(picture.Width, 100);
      EXPECT_TRUE(BytesOf(picture) == BytesOf(wanted)) << name;
    }
  }
}

}  // namespace
}  // namespace kestrel::base
