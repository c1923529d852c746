#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <type_traits>

#include "falcon/xml_records.h"

namespace kestrel::falcon {

/// A field of a table and what takes its text into a record.
template <class Record>
struct XmlField {
  std::string_view Name;
  void (*Take)(Record& record, const XmlText& text);
};

/// The names of a table's fields, for its XmlForm.
template <class Record, std::size_t Count>
constexpr std::array<std::string_view, Count> XmlFieldNames(const XmlField<Record> (&fields)[Count]) {
  static_assert(Count <= 64);
  std::array<std::string_view, Count> names;
  for (std::size_t n = 0; n < Count; ++n) names[n] = fields[n].Name;
  return names;
}

/// A whole number that fits the member.
template <auto Member, class Record>
void TakeWhole(Record& record, const XmlText& text) {
  using Integer = std::remove_reference_t<decltype(record.*Member)>;
  record.*Member = text.Whole<Integer>();
}
/// Any number.
template <auto Member, class Record>
void TakeNumber(Record& record, const XmlText& text) {
  record.*Member = static_cast<std::remove_reference_t<decltype(record.*Member)>>(text.Number());
}
template <auto Member, class Record>
void TakeName(Record& record, const XmlText& text) {
  record.*Member = text.Text();
}
template <auto Member, class Record>
void TakeBits(Record& record, const XmlText& text) {
  record.*Member = text.Bits();
}

}  // namespace kestrel::falcon
