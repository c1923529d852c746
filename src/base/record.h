#pragma once

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "base/bytes.h"
#include "base/record_stream.h"
#include "base/table.h"
#include "base/text.h"

// Records of binary files, described once: little-endian and without padding. A description is a function template that
// hands the fields of a record, in the order of the file, to a walk, and the walk decides what becomes of each:
//
//   template <class Walk, class Folder>
//   void FolderFields(Walk& walk, Folder& folder) {
//     walk.PaddedText(folder.Name, 100);
//     walk.Flag(folder.Visible);
//   }
//
// FieldReader fills the fields, FieldSalvager does so with what there is of a file that may be cut, FieldWriter appends
// them, FieldStreamer hands them on by pieces, FieldStepper goes over them, and LeastBytes adds up the fewest bytes
// that they take. A walk has:
//
//   Number(value)                an integer, floating point number or enumeration in the width of its type
//   Number(value, As<double>())  one that the file holds as another type
//   Flag(value)                  16 bits, 0 or -1; any other number reads as true
//   Text(text)                   16-bit length, then the characters; a longer one is cut when it is written
//   PaddedText(text, width)      `width` characters, blanks behind the text; read without the blanks at both ends
//   Array(head, table, fields)   elements, each walked by `fields`
//   Block(head, table)           elements that stand in the file as they do in memory
//
// where `head` (Bounded, Counted) is how the array begins.
namespace kestrel::base {

/// The type in which the file holds a number.
template <class Stored>
struct As {};

/// An array that begins with the number of its dimensions (16 bits, always 1), of its elements, and its lower bound (32
/// bits each, the bound always 0). Slot 0 of the table is an element like the others; without even that it is empty.
struct Bounded {
  std::int32_t Most = std::numeric_limits<std::int32_t>::max();  ///< elements; more are refused
  static constexpr std::size_t Bytes = 10;
  static constexpr std::uint32_t FirstSlot = 0;
};

/// An array that begins with the number of its elements, 32 bits. Slot 0 of the table is not among them.
struct Counted {
  std::int32_t Most = std::numeric_limits<std::int32_t>::max();  ///< elements; more are refused
  static constexpr std::size_t Bytes = 4;
  static constexpr std::uint32_t FirstSlot = 1;
};

template <class T>
concept FieldNumber = std::is_enum_v<T> ||(std::is_arithmetic_v<T> && !std::same_as<std::remove_const_t<T>, bool>);

/// A number as it stands in the file: an enumeration as the number behind it.
template <FieldNumber T>
auto PlainNumber(T value) {
  if constexpr (std::is_enum_v<T>) {
    return static_cast<std::underlying_type_t<T>>(value);
  } else {
    return value;
  }
}
template <FieldNumber T>
using PlainNumberOf = decltype(PlainNumber(std::declval<T>()));

/// What a Block can hold: the memory of its elements is what stands in the file.
template <class T>
concept BlockElement = std::is_trivially_copyable_v<T> && std::endian::native == std::endian::little;

/// Adds up the fewest bytes that a description takes in the file.
class LeastBytes {
 public:
  template <FieldNumber T>
  void Number(const T&) {
    Sum += sizeof(T);
  }
  template <FieldNumber T, class Stored>
  void Number(const T&, As<Stored>) {
    Sum += sizeof(Stored);
  }
  void Flag(bool) { Sum += 2; }
  void Text(const std::string&) { Sum += 2; }
  void PaddedText(const std::string&, std::size_t width) { Sum += width; }
  template <class Head, class T, class Fields>
  void Array(Head, const Table<T>&, const Fields&) {
    Sum += Head::Bytes;
  }
  template <class Head, BlockElement T>
  void Block(Head, const Table<T>&) {
    Sum += Head::Bytes;
  }

  std::uint64_t Sum = 0;
};

/// The fewest bytes of one `T`, walked by `fields`.
template <class T, class Fields>
std::uint64_t LeastBytesOf(const Fields& fields) {
  static const T element{};
  LeastBytes walk;
  fields(walk, element);
  return walk.Sum;
}

/// Reads what an array begins with: how many elements follow, each of at least `least` bytes. RuntimeFailure for one
/// that is not built as it should be, tells of more than is left, or of more than it may hold.
std::uint32_t ReadHead(RecordStream& stream, Bounded head, std::uint64_t least);
std::uint32_t ReadHead(RecordStream& stream, Counted head, std::uint64_t least);

/// Fills the fields from the stream. RuntimeFailure for what is cut or not built as described; the record is filled in
/// part then.
class FieldReader {
 public:
  enum class Blocks { Read, StepOver };

  explicit FieldReader(RecordStream& source, Blocks which = Blocks::Read) : stream(source), blocks(which) {}

  template <FieldNumber T>
  void Number(T& value) {
    value = static_cast<T>(BinaryReader(stream.Take(sizeof(T))).Number<PlainNumberOf<T>>());
  }
  template <FieldNumber T, class Stored>
  void Number(T& value, As<Stored>) {
    value = static_cast<T>(BinaryReader(stream.Take(sizeof(Stored))).Number<Stored>());
  }
  void Flag(bool& value) { value = BinaryReader(stream.Take(2)).I16() != 0; }
  void Text(std::string& text);
  void PaddedText(std::string& text, std::size_t width);
  template <class Head, class T, class Fields>
  void Array(Head head, Table<T>& table, const Fields& fields) {
    const std::uint32_t count = ReadHead(stream, head, LeastBytesOf<T>(fields));
    SizeFor(table, Head::FirstSlot + count);
    for (std::uint32_t n = 0; n < count; ++n) fields(*this, table[Head::FirstSlot + n]);
  }
  template <class Head, BlockElement T>
  void Block(Head head, Table<T>& table) {
    const std::uint32_t count = ReadHead(stream, head, sizeof(T));
    if (blocks == Blocks::StepOver) {
      stream.Skip(count * sizeof(T));
      return;
    }
    SizeFor(table, Head::FirstSlot + count);
    if (count > 0) stream.ReadTo(std::as_writable_bytes(table.Slots().subspan(Head::FirstSlot)));
  }

 private:
  template <class T>
  static void SizeFor(Table<T>& table, std::uint32_t slots) {
    table.Clear();
    if (slots > 0) table.Resize(slots - 1);
  }

  RecordStream& stream;
  Blocks blocks;
};

/// Fills the fields from a stream that may end anywhere, or whose counts lie, without a failure. A number that is not
/// there whole is 0, a text what there is of it; an element of which a byte is there is made, and none behind it,
/// whatever a count says.
class FieldSalvager {
 public:
  explicit FieldSalvager(RecordStream& source) : stream(source) {}

  /// Whether the stream has ended early or a count was below 0.
  bool Damaged() const { return damaged; }

  template <FieldNumber T>
  void Number(T& value) {
    Number(value, As<PlainNumberOf<T>>());
  }
  template <FieldNumber T, class Stored>
  void Number(T& value, As<Stored>) {
    if (stream.Left() < sizeof(Stored)) {
      End();
      value = T{};
    } else {
      value = static_cast<T>(BinaryReader(stream.Take(sizeof(Stored))).Number<Stored>());
    }
  }
  /// `width`: at most RecordStream::SmallestWindow.
  void PaddedText(std::string& text, std::size_t width);
  template <class T, class Fields>
  void Array(Counted, Table<T>& table, const Fields& fields) {
    const std::size_t count = Count(LeastBytesOf<T>(fields));
    table.Clear();
    table.Resize(count);
    for (std::size_t n = 1; n <= count; ++n) {
      if (stream.Left() == 0) {
        End();
        table.Resize(n - 1);
        return;
      }
      fields(*this, table[n]);
    }
  }
  template <BlockElement T>
  void Block(Counted, Table<T>& table) {
    const std::size_t count = Count(sizeof(T));
    table.Clear();
    table.Resize(count);
    const std::span<std::byte> bytes = std::as_writable_bytes(table.Live());
    if (bytes.size() <= stream.Left()) {
      stream.ReadTo(bytes);
      return;
    }
    // The last element is there in part, up to a whole number.
    table[count] = {};
    stream.ReadTo(bytes.first(stream.Left() / alignof(T) * alignof(T)));
    End();
  }

 private:
  /// The elements of an array of which at least a byte is there; each takes `least` bytes.
  std::size_t Count(std::uint64_t least);
  void End();

  RecordStream& stream;
  bool damaged = false;
};

/// Goes over the fields without reading them. Elements are handed as constants; a number that can be written is read.
class FieldStepper {
 public:
  explicit FieldStepper(RecordStream& source) : stream(source) {}

  template <FieldNumber T>
  void Number(T& value) {
    if constexpr (std::is_const_v<T>) {
      stream.Skip(sizeof(T));
    } else {
      value = static_cast<T>(BinaryReader(stream.Take(sizeof(T))).Number<PlainNumberOf<T>>());
    }
  }
  template <FieldNumber T, class Stored>
  void Number(const T&, As<Stored>) {
    stream.Skip(sizeof(Stored));
  }
  void Flag(bool) { stream.Skip(2); }
  void Text(const std::string&) { stream.Skip(BinaryReader(stream.Take(2)).U16()); }
  void PaddedText(const std::string&, std::size_t width) { stream.Skip(width); }
  /// How many elements there were.
  template <class Head, class T, class Fields>
  std::uint32_t Array(Head head, const Table<T>&, const Fields& fields) {
    static const T element{};
    const std::uint32_t count = ReadHead(stream, head, LeastBytesOf<T>(fields));
    for (std::uint32_t n = 0; n < count; ++n) fields(*this, element);
    return count;
  }
  template <class Head, BlockElement T>
  void Block(Head head, const Table<T>&) {
    const std::uint64_t bytes = ReadHead(stream, head, sizeof(T)) * std::uint64_t{sizeof(T)};
    stream.Skip(bytes);
    BlockBytes += Head::Bytes + bytes;
  }

  std::uint64_t BlockBytes = 0;  ///< that all blocks took, with what they begin with

 protected:
  std::uint64_t Position() const { return stream.Position(); }

 private:
  RecordStream& stream;
};

/// Builds the bytes of records. Small fields are gathered in a buffer that is kept from record to record; blocks,
/// unless short, are not copied but stand among the pieces as the memory of their tables.
class FieldWriter {
 public:
  /// Begins anew.
  void Clear();
  /// What has been walked since, piece behind piece; good until the next call or a change of what was walked.
  std::span<std::span<const std::byte>> Pieces();
  /// What has been walked since as one piece, for what has no blocks.
  std::string_view Bytes() const { return small.Bytes(); }
  /// Characters without a length: a file's first word.
  void Characters(std::string_view text) { small.Text(text); }

  template <FieldNumber T>
  void Number(T value) {
    small.Number(PlainNumber(value));
  }
  template <FieldNumber T, class Stored>
  void Number(T value, As<Stored>) {
    small.Number(static_cast<Stored>(value));
  }
  void Flag(bool value) { small.I16(value ? -1 : 0); }
  void Text(std::string_view text);
  void PaddedText(std::string_view text, std::size_t width) { small.PaddedText(text, width); }
  /// An array of either kind of table.
  template <class Head, class AnyTable, class Fields>
  void Array(Head head, const AnyTable& table, const Fields& fields) {
    const std::size_t slots = table.UpperBound() + 1;
    WriteHead(head, slots - Head::FirstSlot);
    for (std::size_t slot = Head::FirstSlot; slot < slots; ++slot) fields(*this, table[slot]);
  }
  template <class Head, BlockElement T>
  void Block(Head head, const Table<T>& table) {
    const auto elements = table.Slots().subspan(Head::FirstSlot);
    WriteHead(head, elements.size());
    Insert(std::as_bytes(elements));
  }

 private:
  /// A block's bytes stand behind the first SmallBytes bytes of the buffer.
  struct Inserted {
    std::size_t SmallBytes = 0;
    std::span<const std::byte> Block;
  };

  void WriteHead(Bounded, std::size_t elements);
  void WriteHead(Counted, std::size_t elements);
  void Insert(std::span<const std::byte> block);

  BinaryWriter small;
  std::vector<Inserted> blocks;
  std::vector<std::span<const std::byte>> pieces;
};

/// Hands the bytes of records on by pieces, so that only a part of them is held, however many there are.
class FieldStreamer : public FieldWriter {
 public:
  using Sink = std::function<void(std::span<std::span<const std::byte>>)>;

  /// `into` takes each part, in order; what it throws passes through.
  explicit FieldStreamer(Sink into) : sink(std::move(into)) {}

  template <class Head, class AnyTable, class Fields>
  void Array(Head head, const AnyTable& table, const Fields& fields) {
    FieldWriter::Array(head, table, [this, &fields](FieldWriter&, const auto& element) {
      fields(*this, element);
      if (Bytes().size() >= HeldBytes) Drain();
    });
  }
  /// Hands on what is left: to be called once all has been walked.
  void Drain() {
    sink(Pieces());
    Clear();
  }

 private:
  static constexpr std::size_t HeldBytes = 256 << 10;
  Sink sink;
};

}  // namespace kestrel::base
