// Records read from files that are cut or lie, and written by pieces.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/little_endian.h"
#include "base/record.h"
#include "temp_folder.h"

namespace kestrel::base {
namespace {

using namespace std::string_literals;
using test::Bytes2;
using test::Bytes4;
using test::BytesF64;

enum class Kind : std::int16_t { First = 1, Second };

struct Line {
  double X = 0;
  double Y = 0;
};

struct Leg {
  Kind Way = Kind::First;
  double Height = 5;
};

struct Drawing {
  std::string Name = "new";
  Table<Line> Lines;
  Table<Leg> Legs;
  float Size = 8;
};

template <class Walk, class Shown>
void DrawingFields(Walk& walk, Shown& drawing) {
  walk.PaddedText(drawing.Name, 6);
  walk.Block(Counted(), drawing.Lines);
  walk.Array(Counted(), drawing.Legs, [](auto& fields, auto& leg) {
    fields.Number(leg.Way);
    fields.Number(leg.Height);
  });
  walk.Number(drawing.Size, As<double>());
}

const std::string whole = "North " +                                                         // 6
                          Bytes4(2) + BytesF64(1) + BytesF64(2) + BytesF64(3) + BytesF64(4)  // 10, 42
                          + Bytes4(2) + Bytes2(2) + BytesF64(7) + Bytes2(-9) + BytesF64(8)   // 46, 66
                          + BytesF64(0.5);                                                   // 74

struct Salvaged {
  Drawing Read;
  bool Damaged = false;
  std::uint64_t Left = 0;
};

Salvaged Salvage(const std::string& bytes) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "a", bytes);
  const PositionedFile file(folder / "a", PositionedFile::Mode::Read);
  RecordStream stream("drawing");
  stream.Start(file, 0, 1 << 30);
  FieldSalvager reader(stream);
  Salvaged salvaged;
  DrawingFields(reader, salvaged.Read);
  salvaged.Damaged = reader.Damaged();
  salvaged.Left = stream.Left();
  return salvaged;
}

TEST(RecordSalvage, ReadsAWholeRecordAsItIs) {
  const Salvaged salvaged = Salvage(whole + "more");
  EXPECT_FALSE(salvaged.Damaged);
  EXPECT_EQ(salvaged.Left, 4U);
  EXPECT_EQ(salvaged.Read.Name, "North");
  ASSERT_EQ(salvaged.Read.Lines.UpperBound(), 2U);
  EXPECT_EQ(salvaged.Read.Lines[2].X, 3);
  ASSERT_EQ(salvaged.Read.Legs.UpperBound(), 2U);
  EXPECT_EQ(salvaged.Read.Legs[1].Way, Kind::Second);
  EXPECT_EQ(salvaged.Read.Legs[2].Way, static_cast<Kind>(-9));
  EXPECT_EQ(salvaged.Read.Size, 0.5);
}

TEST(RecordSalvage, CutAnywhereKeepsWhatIsThereAndZerosTheRest) {
  for (std::size_t length = 0; length < whole.size(); ++length) {
    SCOPED_TRACE(length);
    const auto [read, damaged, left] = Salvage(whole.substr(0, length));
    EXPECT_TRUE(damaged);
    EXPECT_EQ(left, 0U);
    EXPECT_EQ(read.Name, "North"s.substr(0, length));
    // 16 bytes each from 10 on, 10 bytes each from 46 on: an element of which a byte is there.
    const std::size_t lines = length > 26 ? 2 : length > 10 ? 1 : 0;
    const std::size_t legs = length > 56 ? 2 : length > 46 ? 1 : 0;
    ASSERT_EQ(read.Lines.UpperBound(), lines);
    ASSERT_EQ(read.Legs.UpperBound(), legs);
    if (lines > 0) {
      EXPECT_EQ(read.Lines[1].X, length >= 18 ? 1 : 0);
      EXPECT_EQ(read.Lines[1].Y, length >= 26 ? 2 : 0);
    }
    if (lines > 1) {
      EXPECT_EQ(read.Lines[2].X, length >= 34 ? 3 : 0);
      EXPECT_EQ(read.Lines[2].Y, length >= 42 ? 4 : 0);
    }
    if (legs > 0) {
      EXPECT_EQ(read.Legs[1].Way, static_cast<Kind>(length >= 48 ? 2 : 0));
      EXPECT_EQ(read.Legs[1].Height, length >= 56 ? 7 : 0);
    }
    if (legs > 1) {
      EXPECT_EQ(read.Legs[2].Way, static_cast<Kind>(length >= 58 ? -9 : 0));
      EXPECT_EQ(read.Legs[2].Height, length >= 66 ? 8 : 0);
    }
    EXPECT_EQ(read.Size, 0);
  }
}

TEST(RecordSalvage, CountsThatLieMakeNoMoreThanTheFileReaches) {
  // Lines: 4 + 32 + 20 + 8 bytes are behind the count, legs: 20 + 8.
  const auto with = [](std::size_t at, std::int64_t count) { return std::string(whole).replace(at, 4, Bytes4(count)); };
  for (const std::int64_t count : {std::int64_t{0x7FFFFFFF}, std::int64_t{5}}) {
    EXPECT_EQ(Salvage(with(6, count)).Read.Lines.UpperBound(), 4U) << count;
    EXPECT_TRUE(Salvage(with(6, count)).Damaged);
    EXPECT_EQ(Salvage(with(42, count)).Read.Legs.UpperBound(), 3U) << count;
    EXPECT_TRUE(Salvage(with(42, count)).Damaged);
  }
  for (const std::int64_t count : {std::int64_t{-1}, -std::int64_t{0x80000000}}) {
    EXPECT_EQ(Salvage(with(6, count)).Read.Lines.UpperBound(), 0U) << count;
    EXPECT_TRUE(Salvage(with(6, count)).Damaged);
    EXPECT_EQ(Salvage(with(42, count)).Read.Legs.UpperBound(), 0U) << count;
    // What stands where Size is: the first leg.
    EXPECT_NE(Salvage(with(42, count)).Read.Size, 0.5F) << count;
  }
}

TEST(RecordSalvage, ACountOfMoreThanIsThereIsDamageThoughAllElementsAreWhole) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "a", Bytes4(3) + Bytes2(1) + Bytes2(2));
  const PositionedFile file(folder / "a", PositionedFile::Mode::Read);
  RecordStream stream("drawing");
  stream.Start(file, 0, 1 << 30);
  FieldSalvager reader(stream);
  Table<Leg> legs;
  reader.Array(Counted(), legs, [](auto& fields, auto& leg) { fields.Number(leg.Way); });
  EXPECT_EQ(legs.UpperBound(), 2U);
  EXPECT_TRUE(reader.Damaged());
}

TEST(RecordSalvage, FewestBytesCountAnEnumerationAsItsNumber) {
  EXPECT_EQ(LeastBytesOf<Leg>([](auto& walk, auto& leg) { walk.Number(leg.Way); }), 2U);
}

TEST(RecordStreamer, HandsOnByPiecesWhatAWriterHolds) {
  Table<Drawing> drawings;
  for (int n = 0; n < 3000; ++n) {
    Drawing& drawing = drawings.Append({});
    drawing.Name = "D" + std::to_string(n);
    for (int leg = 0; leg < n % 50; ++leg) drawing.Legs.Append({Kind::Second, 1.0 * leg});
    for (int line = 0; line < n % 300; ++line) drawing.Lines.Append({1.0 * line, 2.0 * n});
  }
  const auto fields = [](auto& walk, auto& drawing) { DrawingFields(walk, drawing); };
  const auto append = [](std::string& bytes, std::span<std::span<const std::byte>> pieces) {
    for (const auto& piece : pieces) bytes.append(reinterpret_cast<const char*>(piece.data()), piece.size());
  };
  FieldWriter writer;
  writer.Array(Counted(), drawings, fields);
  std::string atOnce, streamed;
  append(atOnce, writer.Pieces());
  int parts = 0;
  FieldStreamer streamer([&](std::span<std::span<const std::byte>> pieces) {
    ++parts;
    append(streamed, pieces);
  });
  streamer.Array(Counted(), drawings, fields);
  streamer.Drain();
  EXPECT_GT(parts, 1);
  EXPECT_TRUE(streamed == atOnce);
}

}  // namespace
}  // namespace kestrel::base
