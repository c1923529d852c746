#include "base/bytes.h"

#include <algorithm>

#include "base/failure.h"

namespace kestrel::base {
void BinaryReader::RefuseEnd() { throw RuntimeFailure("the file ends too early"); }

std::string BinaryReader::Text(std::size_t count) {
  const auto taken = Take(count);
  return std::string(reinterpret_cast<const char*>(taken.data()), taken.size());
}

void BinaryReader::Skip(std::size_t count) { Take(count); }

void BinaryWriter::PaddedText(std::string_view text, std::size_t width) {
  text = text.substr(0, width);
  Text(text);
  std::fill_n(Next(width - text.size()), width - text.size(), ' ');
}

void BinaryWriter::Grow(std::size_t count) { buffer.resize(std::max(2 * buffer.size(), used + count)); }

}  // namespace kestrel::base
