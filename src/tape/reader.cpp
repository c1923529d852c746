#include "tape/reader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>

#include "base/files.h"

namespace kestrel::tape {
namespace {

std::uint64_t LeastRecord() {
  base::LeastBytes sum;
  const TapeRecord none;
  RecordFields(sum, none.Time, none.AI, none.Clients);
  return sum.Sum;
}

/// Steps over a record and notes what its two tables took.
class ShapeStepper final : public base::FieldStepper {
 public:
  struct Extent {
    std::uint32_t Elements = 0;
    std::uint64_t Bytes = 0;
  };

  using FieldStepper::FieldStepper;

  template <class Head, class T, class Fields>
  void Array(Head head, const base::Table<T>& table, const Fields& fields) {
    const std::uint64_t start = Position();
    Extent& extent = Tables[done++];
    extent.Elements = FieldStepper::Array(head, table, fields);
    extent.Bytes = Position() - start;
  }

  std::array<Extent, 2> Tables;  ///< AI, Clients

 private:
  std::size_t done = 0;
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
  base::FieldReader fields(stream);
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
  ShapeStepper fields(stream);
  static const TapeRecord none;
  RecordFields(fields, shape.Time, none.AI, none.Clients);
  shape.Next = stream.Position();
  const auto& [ai, clients] = fields.Tables;
  shape.AIPlots = WithoutDummy(ai.Elements);
  shape.Clients = WithoutDummy(clients.Elements);
  shape.AIBytes = ai.Bytes;
  shape.HistoryBytes = fields.BlockBytes;
  shape.ClientBytes = clients.Bytes - fields.BlockBytes;
  return shape;
}

TapeRecord TapeReader::ReadRecord(std::uint64_t position, Histories histories) {
  stream.Forget();
  stream.Start(file, position, MaxRecordBytes);
  TapeRecord record;
  base::FieldReader fields(stream, histories);
  RecordFields(fields, record.Time, record.AI, record.Clients);
  return record;
}

double TapeReader::ReadTime(std::uint64_t position) {
  stream.Forget();
  stream.Start(file, position, MaxRecordBytes);
  double time = 0;
  base::FieldReader(stream).Number(time);
  return time;
}

}  // namespace kestrel::tape
