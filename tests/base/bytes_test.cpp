#include "base/bytes.h"

#include <gtest/gtest.h>

#include <string>

#include "base/failure.h"

namespace kestrel::base {
namespace {

using namespace std::string_literals;

// 1, -2, 3000000000, -5, 1.5 and -0.25 in the order of the calls below.
const std::string Golden =
    "\x01"
    "\xFE\xFF"
    "\x00\x5E\xD0\xB2"
    "\xFB\xFF\xFF\xFF"
    "\x00\x00\xC0\x3F"
    "\x00\x00\x00\x00\x00\x00\xD0\xBF"
    "ab  "s;

void ReadAll(BinaryReader& reader) {
  EXPECT_EQ(reader.U8(), 1);
  EXPECT_EQ(reader.I16(), -2);
  EXPECT_EQ(reader.U32(), 3000000000u);
  EXPECT_EQ(reader.I32(), -5);
  EXPECT_EQ(reader.F32(), 1.5f);
  EXPECT_EQ(reader.F64(), -0.25);
  EXPECT_EQ(reader.Text(4), "ab  ");
}

TEST(Bytes, ReaderReadsLittleEndian) {
  BinaryReader reader{std::string_view(Golden)};
  ReadAll(reader);
  EXPECT_EQ(reader.Left(), 0u);
}

TEST(Bytes, WriterWritesLittleEndian) {
  BinaryWriter writer;
  writer.U8(1);
  writer.I16(-2);
  writer.U32(3000000000u);
  writer.I32(-5);
  writer.F32(1.5f);
  writer.F64(-0.25);
  writer.PaddedText("ab", 4);
  EXPECT_EQ(writer.Bytes(), Golden);
}

TEST(Bytes, EveryShorterSourceThrows) {
  for (std::size_t length = 0; length < Golden.size(); ++length) {
    BinaryReader reader(std::string_view(Golden).substr(0, length));
    EXPECT_THROW(ReadAll(reader), RuntimeFailure) << length;
  }
}

TEST(Bytes, HugeCountsThrowWithoutOverflow) {
  BinaryReader reader(std::string_view("abc"));
  reader.Skip(1);
  EXPECT_THROW(reader.Skip(static_cast<std::size_t>(-1)), RuntimeFailure);
  EXPECT_THROW(reader.Text(static_cast<std::size_t>(-1)), RuntimeFailure);
  EXPECT_EQ(reader.Left(), 2u);
}

TEST(Bytes, ClearedWriterBeginsAgain) {
  BinaryWriter writer;
  writer.U32(1);
  writer.Clear();
  writer.U8(2);
  EXPECT_EQ(writer.Bytes(), "\x02");
}

TEST(Bytes, PaddedTextIsCutToItsWidth) {
  BinaryWriter writer;
  writer.PaddedText("abcdef", 3);
  writer.PaddedText("", 2);
  writer.Text("x");
  EXPECT_EQ(writer.Bytes(), "abc  x");
}

}  // namespace
}  // namespace kestrel::base
