// Tapes that are cut, that lie, or that are none.
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/temp_folder.h"
#include "tape/golden_tape.h"
#include "tape/reader.h"
#include "tape/sample_tape.h"

namespace kestrel::tape {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using test::Put;
using test::ReadAll;
using test::Sample;
using test::Start;

TEST(TapeDamage, OtherMagicIsOfAnotherFormat) {
  const test::TempFolder folder;
  for (const std::string& bytes : {""s, "TAPEv2.0"s, "TAPEv2.00"s + std::string(100, '\0'), "tapev2.01"s}) {
    Put(folder / "a.tap", bytes);
    EXPECT_THROW(TapeReader(folder / "a.tap"), WrongFormat) << bytes;
  }
}

TEST(TapeDamage, WhatIsNoFileIsToldAsSuch) {
  const test::TempFolder folder;
  EXPECT_THROW(TapeReader(folder / "missing.tap"), base::RuntimeFailure);
  EXPECT_THROW(TapeReader(folder.Path()), base::RuntimeFailure);
}

TEST(TapeDamage, TapeCutAtAnyByteIsRefused) {
  const test::TempFolder folder;
  const Sample sample;
  const fs::path path = folder / "a.tap";
  for (std::size_t length = 0; length < sample.Bytes.size(); ++length) {
    Put(path, std::string_view(sample.Bytes).substr(0, length));
    if (length < Magic.size()) {
      EXPECT_THROW(ReadAll(path), WrongFormat) << length;
      continue;
    }
    EXPECT_THROW(ReadAll(path), base::RuntimeFailure) << length;
    if (length < sample.Positions.back()) continue;
    // The record that is cut is refused, those before it are still read.
    TapeReader reader(path);
    EXPECT_THROW(reader.ReadRecord(sample.Positions[2]), base::RuntimeFailure) << length;
    EXPECT_THROW(reader.Skip(sample.Positions[2]), base::RuntimeFailure) << length;
    EXPECT_EQ(reader.ReadRecord(sample.Positions[1]).Clients.UpperBound(), 1U) << length;
  }
  Put(path, sample.Bytes);
  EXPECT_EQ(ReadAll(path), 3);
}

TEST(TapeDamage, TapeThatIsCutWhileOpenIsRefused) {
  const test::TempFolder folder;
  const Sample sample;
  Put(folder / "a.tap", sample.Bytes);
  TapeReader reader(folder / "a.tap");
  reader.ReadRecord(sample.Positions[2]);
  fs::resize_file(folder / "a.tap", sample.Bytes.size() - 1);
  EXPECT_THROW(reader.ReadRecord(sample.Positions[2]), base::RuntimeFailure);
  fs::resize_file(folder / "a.tap", 50);
  EXPECT_THROW(reader.ReadTime(sample.Positions[2]), base::RuntimeFailure);
  EXPECT_THROW(reader.Skip(sample.Positions[0]), base::RuntimeFailure);
}

TEST(TapeDamage, CountThatTheFileCannotHoldIsRefused) {
  const test::TempFolder folder;
  const Sample sample;
  const fs::path path = folder / "a.tap";
  for (const std::int64_t count : std::vector<std::int64_t>{-1, std::numeric_limits<std::int32_t>::min(),
                                                            std::numeric_limits<std::int32_t>::max(), 4, 1000}) {
    std::string bytes = sample.Bytes;
    Put(path, bytes.replace(9, 4, test::Bytes4(count)));
    EXPECT_THROW(ReadAll(path), base::RuntimeFailure) << count;
  }
}

TEST(TapeDamage, CountBelowTheRecordsReadsAsMany) {
  const test::TempFolder folder;
  std::string bytes = Sample().Bytes;
  Put(folder / "a.tap", bytes.replace(9, 4, test::Bytes4(2)));
  EXPECT_EQ(ReadAll(folder / "a.tap"), 2);
}

TEST(TapeDamage, DescriptorThatLiesIsRefused) {
  const test::TempFolder folder;
  const Sample sample;
  const fs::path path = folder / "a.tap";
  int descriptors = 0;
  // Every array begins with its one dimension, its size and the lower bound 0.
  for (std::size_t at = 41; at + 10 <= sample.Bytes.size(); ++at) {
    const bool descriptor = sample.Bytes.compare(at, 2, "\1\0"s) == 0 && sample.Bytes[at + 2] > 0 &&
                            sample.Bytes[at + 2] < 8 && sample.Bytes.compare(at + 3, 7, "\0\0\0\0\0\0\0"s) == 0;
    if (!descriptor) continue;
    ++descriptors;
    const auto refused = [&](std::size_t offset, const std::string& lie) {
      std::string bytes = sample.Bytes;
      Put(path, bytes.replace(at + offset, lie.size(), lie));
      EXPECT_THROW(ReadAll(path), base::RuntimeFailure) << "offset " << at << " field " << offset;
      TapeReader reader(path);
      int whole = 0;
      for (const std::uint64_t position : sample.Positions) {
        try {
          reader.ReadRecord(position);
          ++whole;
        } catch (const base::RuntimeFailure&) {
        }
      }
      EXPECT_EQ(whole, 2) << "offset " << at << " field " << offset;
    };
    refused(0, test::Bytes2(0));
    refused(0, test::Bytes2(2));
    refused(0, test::Bytes2(-1));
    for (const std::int64_t size : std::vector<std::int64_t>{-1, std::numeric_limits<std::int32_t>::min(), 1 << 20,
                                                             std::numeric_limits<std::int32_t>::max()}) {
      refused(2, test::Bytes4(size));
    }
    refused(6, test::Bytes4(1));
    refused(6, test::Bytes4(-1));
  }
  // AI and Clients of three records, histories of 1, 2 and 3 slots.
  EXPECT_EQ(descriptors, 3 * 2 + 1 + 2 + 3);
}

TEST(TapeDamage, TextLongerThanTheTapeIsRefused) {
  const test::TempFolder folder;
  std::string bytes = test::GoldenHeader(1, 1000, Start, 0, 0) + test::GoldenRecord(Start, test::SampleTables(1, 1, 1));
  const std::size_t name = bytes.find("\x07\0Pilot 1"s);
  ASSERT_NE(name, std::string::npos);
  Put(folder / "a.tap", bytes.replace(name, 2, "\xFF\xFF"s));
  TapeReader reader(folder / "a.tap");
  EXPECT_THROW(reader.Skip(FirstRecordAt), base::RuntimeFailure);
  EXPECT_THROW(reader.ReadRecord(FirstRecordAt), base::RuntimeFailure);
}

TEST(TapeDamage, TapeWithSomeBytesChangedIsReadOrRefused) {
  const test::TempFolder folder;
  const Sample sample;
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  int read = 0, refused = 0;
  for (int round = 0; round < 3000; ++round) {
    std::string bytes = sample.Bytes;
    for (auto changes = random() % 3 + 1; changes > 0; --changes) {
      bytes[random() % bytes.size()] = static_cast<char>(random());
    }
    Put(folder / "a.tap", bytes);
    try {
      ReadAll(folder / "a.tap");
      ++read;
    } catch (const base::RuntimeFailure&) {
      ++refused;
    }
  }
  EXPECT_GT(read, 0);
  EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace kestrel::tape
