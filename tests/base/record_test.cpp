#include "base/record.h"

#include <gtest/gtest.h>

#include <string>

#include "base/failure.h"
#include "temp_folder.h"

namespace kestrel::base {
namespace {

using namespace std::string_literals;

struct Point {
  double X = 0;
  double Y = 0;
};

struct Leg {
  std::int16_t Kind = 0;
  float Height = 0;
};

struct Drawing {
  std::string Name;
  bool Visible = false;
  std::string Note;
  float Size = 0;
  std::uint32_t Color = 0;
  Table<Leg> Legs;
  Table<Point> Trail;
};

/// An older edition of the file holds the size as a double and no heights.
enum class Edition { Older, Newer };

template <class Walk, class Shown>
void DrawingFields(Walk& walk, Shown& drawing, Edition edition) {
  walk.PaddedText(drawing.Name, 6);
  walk.Flag(drawing.Visible);
  walk.Text(drawing.Note);
  if (edition == Edition::Older) {
    walk.Number(drawing.Size, As<double>());
  } else {
    walk.Number(drawing.Size);
  }
  walk.Number(drawing.Color);
  walk.Array(Counted{100}, drawing.Legs, [edition](auto& fields, auto& leg) {
    fields.Number(leg.Kind);
    if (edition == Edition::Newer) fields.Number(leg.Height);
  });
  walk.Block(Bounded(), drawing.Trail);
}

const std::string newer =
    "North "                                    // Name
    "\xFF\xFF"                                  // Visible
    "\x02\0ab"                                  // Note
    "\0\0\0\x41"                                // Size 8
    "\x10\x20\x30\0"                            // Color
    "\x02\0\0\0"                                // two legs
    "\x07\0\0\0\x80\x3F"                        // kind 7, height 1
    "\xFE\xFF\0\0\0\0"                          // kind -2, height 0
    "\x01\0\x02\0\0\0\0\0\0\0"                  // Trail: 1 dimension, 2 elements, from 0
    "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"          // slot 0
    "\0\0\0\0\0\0\0\x40\0\0\0\0\0\0\xF0\xBF"s;  // 2, -1
const std::string older =
    "North "
    "\xFF\xFF"
    "\x02\0ab"
    "\0\0\0\0\0\0\x20\x40"
    "\x10\x20\x30\0"
    "\x02\0\0\0"
    "\x07\0"
    "\xFE\xFF"
    "\x01\0\x02\0\0\0\0\0\0\0"
    "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
    "\0\0\0\0\0\0\0\x40\0\0\0\0\0\0\xF0\xBF"s;

Drawing Sample() {
  Drawing drawing{"North", true, "ab", 8, 0x302010, {}, {}};
  drawing.Legs.Append({7, 1});
  drawing.Legs.Append({-2, 0});
  drawing.Trail.Append({2, -1});
  return drawing;
}

std::string Written(const Drawing& drawing, Edition edition) {
  FieldWriter writer;
  DrawingFields(writer, drawing, edition);
  std::string bytes;
  for (const auto& piece : writer.Pieces()) bytes.append(reinterpret_cast<const char*>(piece.data()), piece.size());
  return bytes;
}

/// A file of these bytes with a stream at its start.
struct Opened {
  explicit Opened(const std::string& bytes, std::uint64_t limit = 1 << 20) {
    test::WriteBytes(folder / "a", bytes);
    file = PositionedFile(folder / "a", PositionedFile::Mode::Read);
    stream.Start(file, 0, limit);
  }
  test::TempFolder folder;
  PositionedFile file;
  RecordStream stream{"drawing"};
};

Drawing Read(const std::string& bytes, Edition edition) {
  Opened opened(bytes);
  FieldReader reader(opened.stream);
  Drawing drawing;
  DrawingFields(reader, drawing, edition);
  return drawing;
}

TEST(Record, IsWrittenAsItsDescriptionSays) {
  EXPECT_EQ(Written(Sample(), Edition::Newer), newer);
  EXPECT_EQ(Written(Sample(), Edition::Older), older);
}

TEST(Record, IsReadFieldByField) {
  for (const Edition edition : {Edition::Newer, Edition::Older}) {
    const Drawing drawing = Read(edition == Edition::Newer ? newer : older, edition);
    EXPECT_EQ(drawing.Name, "North");
    EXPECT_TRUE(drawing.Visible);
    EXPECT_EQ(drawing.Note, "ab");
    EXPECT_EQ(drawing.Size, 8);
    EXPECT_EQ(drawing.Color, 0x302010U);
    ASSERT_EQ(drawing.Legs.UpperBound(), 2U);
    EXPECT_EQ(drawing.Legs[1].Kind, 7);
    EXPECT_EQ(drawing.Legs[1].Height, edition == Edition::Newer ? 1 : 0);
    EXPECT_EQ(drawing.Legs[2].Kind, -2);
    ASSERT_EQ(drawing.Trail.UpperBound(), 1U);
    EXPECT_EQ(drawing.Trail[1].X, 2);
    EXPECT_EQ(drawing.Trail[1].Y, -1);
  }
}

TEST(Record, PaddedTextIsCutAndReadWithoutItsBlanks) {
  Drawing drawing;
  drawing.Name = "  Northern";
  EXPECT_EQ(Written(drawing, Edition::Newer).substr(0, 6), "  Nort");
  EXPECT_EQ(Read(Written(drawing, Edition::Newer), Edition::Newer).Name, "Nort");
}

TEST(Record, TextIsCutWhereItsLengthEnds) {
  Drawing drawing;
  drawing.Note = std::string(70000, 'n');
  EXPECT_EQ(Read(Written(drawing, Edition::Newer), Edition::Newer).Note, std::string(65535, 'n'));
}

TEST(Record, ArraysWithoutElementsAreEmpty) {
  EXPECT_TRUE(Read(Written({}, Edition::Newer), Edition::Newer).Legs.Empty());
  EXPECT_TRUE(Read(Written({}, Edition::Newer), Edition::Newer).Trail.Empty());
  // Without even a slot 0.
  std::string bytes = Written({}, Edition::Newer);
  bytes.resize(bytes.size() - 16);
  bytes[bytes.size() - 8] = 0;
  EXPECT_TRUE(Read(bytes, Edition::Newer).Trail.Empty());
}

TEST(Record, IsSteppedOverToItsEnd) {
  for (const Edition edition : {Edition::Newer, Edition::Older}) {
    const std::string& bytes = edition == Edition::Newer ? newer : older;
    Opened opened(bytes + "more");
    FieldStepper stepper(opened.stream);
    const Drawing none;
    DrawingFields(stepper, none, edition);
    EXPECT_EQ(opened.stream.Position(), bytes.size());
    EXPECT_EQ(stepper.BlockBytes, 10 + 2 * 16U);
  }
}

TEST(Record, StepperReadsTheNumbersThatCanBeWritten) {
  Opened opened("\x05\0\x06\0"s);
  FieldStepper stepper(opened.stream);
  const std::int16_t constant = 1;
  std::int16_t number = 1;
  stepper.Number(constant);
  stepper.Number(number);
  EXPECT_EQ(number, 6);
}

TEST(Record, BlocksCanBeSteppedOverByTheReader) {
  Opened opened(newer);
  FieldReader reader(opened.stream, FieldReader::Blocks::StepOver);
  Drawing drawing;
  DrawingFields(reader, drawing, Edition::Newer);
  EXPECT_EQ(opened.stream.Position(), newer.size());
  EXPECT_TRUE(drawing.Trail.Empty());
  EXPECT_EQ(drawing.Legs.UpperBound(), 2U);
}

TEST(Record, FewestBytesAreThoseOfEmptyTextsAndArrays) {
  const auto least = [](Edition edition) {
    return LeastBytesOf<Drawing>([edition](auto& walk, auto& drawing) { DrawingFields(walk, drawing, edition); });
  };
  // Name, Visible, length of Note, Size, Color, heads of Legs and Trail.
  EXPECT_EQ(least(Edition::Newer), 6 + 2 + 2 + 4 + 4 + 4 + 10U);
  EXPECT_EQ(least(Edition::Older), 6 + 2 + 2 + 8 + 4 + 4 + 10U);
}

TEST(Record, LongBlockIsNotCopied) {
  Drawing drawing = Sample();
  for (int n = 0; n < 1000; ++n) drawing.Trail.Append({1.0 * n, 2.0 * n});
  FieldWriter writer;
  DrawingFields(writer, drawing, Edition::Newer);
  const auto pieces = writer.Pieces();
  ASSERT_EQ(pieces.size(), 3U);
  EXPECT_EQ(static_cast<const void*>(pieces[1].data()), drawing.Trail.Slots().data());
  EXPECT_EQ(pieces[1].size(), 1002 * 16U);
  const Drawing back = Read(Written(drawing, Edition::Newer), Edition::Newer);
  ASSERT_EQ(back.Trail.UpperBound(), 1001U);
  EXPECT_EQ(back.Trail[1001].Y, 2 * 999);
}

TEST(Record, CutAnywhereIsRefused) {
  for (const Edition edition : {Edition::Newer, Edition::Older}) {
    const std::string& bytes = edition == Edition::Newer ? newer : older;
    for (std::size_t length = 0; length < bytes.size(); ++length) {
      EXPECT_THROW(Read(bytes.substr(0, length), edition), RuntimeFailure) << length;
      Opened opened(bytes.substr(0, length));
      FieldStepper stepper(opened.stream);
      const Drawing none;
      EXPECT_THROW(DrawingFields(stepper, none, edition), RuntimeFailure) << length;
      Opened limited(bytes, length);
      FieldReader reader(limited.stream);
      Drawing drawing;
      EXPECT_THROW(DrawingFields(reader, drawing, edition), RuntimeFailure) << length;
    }
  }
}

/// What reading `bytes` is refused for.
std::string Refusal(const std::string& bytes) {
  try {
    Read(bytes, Edition::Newer);
  } catch (const RuntimeFailure& failure) {
    return failure.what();
  }
  return "taken";
}

TEST(Record, HeadsThatLieAreRefused) {
  const auto with = [](std::size_t at, const std::string& bytes) {
    return std::string(newer).replace(at, bytes.size(), bytes);
  };
  constexpr std::size_t note = 8, legs = 20, trail = 36;
  EXPECT_EQ(Refusal(with(note, "\xFF\xFF"s)), "a text of the drawing is longer than its record");
  EXPECT_EQ(Refusal(with(legs, "\xFF\xFF\xFF\xFF"s)), "an array of the drawing has a negative size");
  EXPECT_EQ(Refusal(with(legs, "\0\0\0\x01"s)), "an array of the drawing is longer than what is left of it");
  EXPECT_EQ(Refusal(with(trail, "\x02\0"s)), "an array of the drawing has no proper bounds");
  EXPECT_EQ(Refusal(with(trail + 6, "\x01"s)), "an array of the drawing has no proper bounds");
  EXPECT_EQ(Refusal(with(trail + 2, "\xFF\xFF\xFF\xFF"s)), "an array of the drawing has a negative size");
  EXPECT_EQ(Refusal(with(trail + 2, "\x03"s)), "an array of the drawing is longer than what is left of it");
  EXPECT_EQ(Refusal(newer), "taken");
}

TEST(Record, MoreElementsThanAnArrayMayHoldAreRefused) {
  Drawing drawing;
  for (int n = 0; n < 100; ++n) drawing.Legs.Append({});
  EXPECT_EQ(Read(Written(drawing, Edition::Newer), Edition::Newer).Legs.UpperBound(), 100U);
  drawing.Legs.Append({});
  EXPECT_EQ(Refusal(Written(drawing, Edition::Newer)), "an array of the drawing has too many elements");
}

}  // namespace
}  // namespace kestrel::base
