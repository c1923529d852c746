#include "tape/reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <span>
#include <string>
#include <type_traits>

#include "base/bytes.h"
#include "base/files.h"

namespace kestrel::tape {
namespace {

// A history is read straight into the memory of its table.
static_assert(std::endian::native == std::endian::little);
static_assert(std::is_trivially_copyable_v<link::PlotPoint> && sizeof(link::PlotPoint) == 16);

/// Dimensions, elements, lower bound.
constexpr std::size_t DescriptorBytes = 10;

/// Walks the description and adds up the fewest bytes that an element takes.
class LeastBytes {
 public:
  template <class T>
  void Number(const T&) {
    Sum += sizeof(T);
  }
  void Flag(bool) { Sum += 2; }
  void Text(const std::string&) { Sum += 2; }
  void Points(const base::Table<link::PlotPoint>&) { Sum += DescriptorBytes; }
  template <class T, class Fields>
  void Array(const base::Table<T>&, Fields) {
    Sum += DescriptorBytes;
  }
  std::uint64_t Sum = 0;
};

/// The fewest bytes of one `T`, walked by `fields`.
template <class T, class Fields>
std::uint64_t LeastOf(Fields fields) {
  static const std::uint64_t least = [&fields] {
    LeastBytes sum;
    const T element{};
    fields(sum, element);
    return sum.Sum;
  }();
  return least;
}

std::uint64_t LeastRecord() {
  LeastBytes sum;
  const TapeRecord none;
  RecordFields(sum, none.Time, none.AI, none.Clients);
  return sum.Sum;
}

/// The number of elements that an array's descriptor tells, each of at least `least` bytes. RuntimeFailure for one that
/// is not built as every array is, or tells of more than is left.
std::uint32_t ReadDescriptor(TapeStream& stream, std::uint64_t least) {
  base::BinaryReader bytes(stream.Take(DescriptorBytes));
  const std::uint16_t dimensions = bytes.U16();
  const std::int32_t count = bytes.I32();
  const std::int32_t lowerBound = bytes.I32();
  if (dimensions != 1 || lowerBound != 0) throw base::RuntimeFailure("an array of the tape has no proper bounds");
  if (count < 0) throw base::RuntimeFailure("an array of the tape has a negative size");
  if (static_cast<std::uint64_t>(count) > stream.Left() / least) {
    throw base::RuntimeFailure("an array of the tape is longer than what is left of it");
  }
  return static_cast<std::uint32_t>(count);
}

std::uint32_t ReadTableDescriptor(TapeStream& stream, std::uint64_t least) {
  const std::uint32_t count = ReadDescriptor(stream, least);
  if (count > MaxSlots) throw base::RuntimeFailure("a table of the tape has too many elements");
  return count;
}

/// An array of 0 elements, without even a slot 0, reads as an empty table.
template <class T>
void SizeFor(base::Table<T>& table, std::uint32_t count) {
  table.Clear();
  if (count > 0) table.Resize(count - 1);
}

/// Walks the description and fills the fields from the stream.
class FieldReader {
 public:
  FieldReader(TapeStream& source, TapeReader::Histories which) : stream(source), histories(which) {}

  void Number(std::uint8_t& value) { value = Next(sizeof value).U8(); }
  void Number(std::int16_t& value) { value = Next(sizeof value).I16(); }
  void Number(std::int32_t& value) { value = Next(sizeof value).I32(); }
  void Number(std::uint32_t& value) { value = Next(sizeof value).U32(); }
  void Number(float& value) { value = Next(sizeof value).F32(); }
  void Number(double& value) { value = Next(sizeof value).F64(); }
  void Flag(bool& value) { value = Next(2).I16() != 0; }
  void Text(std::string& text) {
    const std::uint16_t length = Next(2).U16();
    if (length > stream.Left()) throw base::RuntimeFailure("a text of the tape is longer than its record");
    text.resize(length);
    stream.ReadTo(std::as_writable_bytes(std::span(text)));
  }
  void Points(base::Table<link::PlotPoint>& history) {
    const std::uint32_t count = ReadDescriptor(stream, sizeof(link::PlotPoint));
    if (histories == TapeReader::Histories::StepOver) {
      stream.Skip(count * sizeof(link::PlotPoint));
      return;
    }
    SizeFor(history, count);
    if (count > 0) stream.ReadTo(std::as_writable_bytes(history.Slots()));
  }
  template <class T, class Fields>
  void Array(base::Table<T>& table, Fields fields) {
    const std::uint32_t count = ReadTableDescriptor(stream, LeastOf<T>(fields));
    SizeFor(table, count);
    for (std::uint32_t n = 0; n < count; ++n) fields(*this, table[n]);
  }

 private:
  base::BinaryReader Next(std::size_t count) { return base::BinaryReader(stream.Take(count)); }

  TapeStream& stream;
  TapeReader::Histories histories;
};

/// Walks the description and steps over the fields. Elements are handed as constants and left alone; the record's time,
/// the one field that can be written, is read.
class FieldSkipper {
 public:
  /// What an array of the record took.
  struct Extent {
    std::uint32_t Elements = 0;
    std::uint64_t Bytes = 0;
  };

  explicit FieldSkipper(TapeStream& source) : stream(source) {}

  void Number(double& value) { value = base::BinaryReader(stream.Take(sizeof value)).F64(); }
  template <class T>
  void Number(const T&) {
    stream.Skip(sizeof(T));
  }
  void Flag(bool) { stream.Skip(2); }
  void Text(const std::string&) { stream.Skip(base::BinaryReader(stream.Take(2)).U16()); }
  void Points(const base::Table<link::PlotPoint>&) {
    const std::uint64_t bytes = ReadDescriptor(stream, sizeof(link::PlotPoint)) * sizeof(link::PlotPoint);
    stream.Skip(bytes);
    HistoryBytes += DescriptorBytes + bytes;
  }
  template <class T, class Fields>
  void Array(const base::Table<T>&, Fields fields) {
    static const T element{};
    const std::uint64_t start = stream.Position();
    Extent& extent = Arrays[arraysDone++];
    extent.Elements = ReadTableDescriptor(stream, LeastOf<T>(fields));
    for (std::uint32_t n = 0; n < extent.Elements; ++n) fields(*this, element);
    extent.Bytes = stream.Position() - start;
  }

  std::array<Extent, 2> Arrays;  ///< AI, Clients
  std::uint64_t HistoryBytes = 0;

 private:
  TapeStream& stream;
  std::size_t arraysDone = 0;
};

std::uint32_t WithoutDummy(std::uint32_t elements) { return elements == 0 ? 0 : elements - 1; }

}  // namespace

TapeReader::TapeReader(const std::filesystem::path& path) : file(path, base::PositionedFile::Mode::Read) {
  std::array<std::byte, Magic.size()> head{};
  file.Read(0, head);
  if (!std::ranges::equal(head, std::as_bytes(std::span(Magic)))) {
    throw WrongFormat(base::NameForMessage(path) + " is no tape of this kind");
  }
  ReadHeader();
}

const TapeHeader& TapeReader::ReadHeader() {
  stream.Start(file, RecordCountAt, FirstRecordAt - RecordCountAt);
  if (stream.Left() < FirstRecordAt - RecordCountAt) throw base::RuntimeFailure("the tape ends within its header");
  FieldReader fields(stream, Histories::Read);
  HeaderFields(fields, header);
  return header;
}

void TapeReader::CheckRecordCount() const {
  const std::uint64_t size = Size();
  const std::uint64_t room = size < FirstRecordAt ? 0 : size - FirstRecordAt;
  if (header.RecordCount < 0 || static_cast<std::uint64_t>(header.RecordCount) > room / LeastRecord()) {
    throw base::RuntimeFailure("the tape tells of " + std::to_string(header.RecordCount) +
                               " records, which it cannot hold");
  }
}

RecordShape TapeReader::Skip(std::uint64_t position) {
  stream.Start(file, position, MaxRecordBytes);
  RecordShape shape;
  shape.Position = position;
  FieldSkipper fields(stream);
  static const TapeRecord none;
  RecordFields(fields, shape.Time, none.AI, none.Clients);
  shape.Next = stream.Position();
  const auto& [ai, clients] = fields.Arrays;
  shape.AIPlots = WithoutDummy(ai.Elements);
  shape.Clients = WithoutDummy(clients.Elements);
  shape.AIBytes = ai.Bytes;
  shape.HistoryBytes = fields.HistoryBytes;
  shape.ClientBytes = clients.Bytes - fields.HistoryBytes;
  return shape;
}

TapeRecord TapeReader::ReadRecord(std::uint64_t position, Histories histories) {
  stream.Forget();
  stream.Start(file, position, MaxRecordBytes);
  TapeRecord record;
  FieldReader fields(stream, histories);
  RecordFields(fields, record.Time, record.AI, record.Clients);
  return record;
}

double TapeReader::ReadTime(std::uint64_t position) {
  stream.Forget();
  stream.Start(file, position, MaxRecordBytes);
  double time = 0;
  FieldReader(stream, Histories::Read).Number(time);
  return time;
}

}  // namespace kestrel::tape
