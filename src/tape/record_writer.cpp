#include "tape/record_writer.h"

namespace kestrel::tape {

std::string_view RecordWriter::Header(const TapeHeader& header) {
  fields.Clear();
  fields.Characters(Magic);
  HeaderFields(fields, header);
  return fields.Bytes();
}

std::span<std::span<const std::byte>> RecordWriter::Record(double time, const link::Tables& tables) {
  fields.Clear();
  RecordFields(fields, time, tables.AIPlots, tables.Clients);
  return fields.Pieces();
}

}  // namespace kestrel::tape
