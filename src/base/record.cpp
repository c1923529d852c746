#include "base/record.h"

#include <algorithm>

namespace kestrel::base {
namespace {

/// A piece of its own costs as much as the copying of so many bytes.
constexpr std::size_t CopiedBlock = 2048;

std::uint32_t Checked(const RecordStream& stream, std::int32_t count, std::int32_t most, std::uint64_t least) {
  if (count < 0) stream.Refuse("an array", "has a negative size");
  if (static_cast<std::uint64_t>(count) > stream.Left() / least) {
    stream.Refuse("an array", "is longer than what is left of it");
  }
  if (count > most) stream.Refuse("an array", "has too many elements");
  return static_cast<std::uint32_t>(count);
}

}  // namespace

std::uint32_t ReadHead(RecordStream& stream, Bounded head, std::uint64_t least) {
  BinaryReader bytes(stream.Take(Bounded::Bytes));
  const std::uint16_t dimensions = bytes.U16();
  const std::int32_t count = bytes.I32();
  const std::int32_t lowerBound = bytes.I32();
  if (dimensions != 1 || lowerBound != 0) stream.Refuse("an array", "has no proper bounds");
  return Checked(stream, count, head.Most, least);
}

std::uint32_t ReadHead(RecordStream& stream, Counted head, std::uint64_t least) {
  return Checked(stream, BinaryReader(stream.Take(Counted::Bytes)).I32(), head.Most, least);
}

void FieldReader::Text(std::string& text) {
  const std::uint16_t length = BinaryReader(stream.Take(2)).U16();
  if (length > stream.Left()) stream.Refuse("a text", "is longer than its record");
  text.resize(length);
  stream.ReadTo(std::as_writable_bytes(std::span(text)));
}

void FieldReader::PaddedText(std::string& text, std::size_t width) {
  std::string padded(width, '\0');
  stream.ReadTo(std::as_writable_bytes(std::span(padded)));
  text = Trim(padded);
}

void FieldSalvager::PaddedText(std::string& text, std::size_t width) {
  const std::size_t count = static_cast<std::size_t>(std::min<std::uint64_t>(width, stream.Left()));
  const std::span<const std::byte> there = stream.Take(count);
  text = Trim({reinterpret_cast<const char*>(there.data()), there.size()});
  if (count < width) End();
}

std::size_t FieldSalvager::Count(std::uint64_t least) {
  std::int32_t count = 0;
  Number(count);
  if (count < 0) damaged = true;
  const std::uint64_t reached = (stream.Left() + least - 1) / least;
  if (count > 0 && static_cast<std::uint64_t>(count) > reached) damaged = true;
  return static_cast<std::size_t>(std::min(static_cast<std::uint64_t>(std::max(count, 0)), reached));
}

void FieldSalvager::End() {
  stream.Skip(stream.Left());
  damaged = true;
}

void FieldWriter::Clear() {
  small.Clear();
  blocks.clear();
}

void FieldWriter::Text(std::string_view text) {
  text = text.substr(0, std::numeric_limits<std::uint16_t>::max());
  small.U16(static_cast<std::uint16_t>(text.size()));
  small.Text(text);
}

void FieldWriter::WriteHead(Bounded, std::size_t elements) {
  small.U16(1);
  small.I32(static_cast<std::int32_t>(elements));
  small.I32(0);
}

void FieldWriter::WriteHead(Counted, std::size_t elements) { small.I32(static_cast<std::int32_t>(elements)); }

void FieldWriter::Insert(std::span<const std::byte> block) {
  if (block.size() <= CopiedBlock) {
    small.Text({reinterpret_cast<const char*>(block.data()), block.size()});
  } else {
    blocks.push_back({small.Bytes().size(), block});
  }
}

std::span<std::span<const std::byte>> FieldWriter::Pieces() {
  const std::span<const std::byte> gathered = std::as_bytes(std::span(small.Bytes()));
  pieces.clear();
  std::size_t done = 0;
  for (const Inserted& inserted : blocks) {
    pieces.push_back(gathered.subspan(done, inserted.SmallBytes - done));
    pieces.push_back(inserted.Block);
    done = inserted.SmallBytes;
  }
  pieces.push_back(gathered.subspan(done));
  return pieces;
}

}  // namespace kestrel::base
