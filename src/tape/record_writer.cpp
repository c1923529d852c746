#include "tape/record_writer.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace kestrel::tape {

// The memory of a history is what stands in the file.
static_assert(std::endian::native == std::endian::little);
static_assert(std::is_trivially_copyable_v<link::PlotPoint> && sizeof(link::PlotPoint) == 16);
static_assert(offsetof(link::PlotPoint, X) == 0 && offsetof(link::PlotPoint, Y) == 8);

void RecordWriter::Text(std::string_view text) {
  text = text.substr(0, std::numeric_limits<std::uint16_t>::max());
  small.U16(static_cast<std::uint16_t>(text.size()));
  small.Text(text);
}

void RecordWriter::Descriptor(std::size_t elements) {
  small.U16(1);
  small.I32(static_cast<std::int32_t>(elements));
  small.I32(0);
}

namespace {

/// A piece of its own costs as much as the copying of so many bytes.
constexpr std::size_t CopiedHistory = 2048;

}  // namespace

void RecordWriter::Points(const base::Table<link::PlotPoint>& history) {
  Descriptor(history.UpperBound() + 1);
  const std::span<const std::byte> bytes = std::as_bytes(history.Slots());
  if (bytes.size() <= CopiedHistory) {
    small.Text({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  } else {
    histories.push_back({small.Bytes().size(), bytes});
  }
}

std::string_view RecordWriter::Header(const TapeHeader& header) {
  small.Clear();
  small.Text(Magic);
  HeaderFields(*this, header);
  return small.Bytes();
}

std::span<std::span<const std::byte>> RecordWriter::Record(double time, const link::Tables& tables) {
  small.Clear();
  histories.clear();
  RecordFields(*this, time, tables.AIPlots, tables.Clients);

  const std::span<const std::byte> gathered = std::as_bytes(std::span(small.Bytes()));
  pieces.clear();
  std::size_t done = 0;
  for (const Inserted& inserted : histories) {
    pieces.push_back(gathered.subspan(done, inserted.SmallBytes - done));
    pieces.push_back(inserted.History);
    done = inserted.SmallBytes;
  }
  pieces.push_back(gathered.subspan(done));
  return pieces;
}

}  // namespace kestrel::tape
