#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>

#include "falcon/data_file.h"

// Tables of newer simulators: XML with an element for each record, a number in an attribute of it, and an element for
// each field. <Root><CT Num="5"><Domain>3</Domain>...</CT>...</Root>
namespace kestrel::falcon {

/// Largest file of XML that is read; the class table has 8 MB.
inline constexpr std::size_t MaxXmlBytes = std::size_t{64} << 20;
/// Largest text of an element.
inline constexpr std::size_t MaxXmlText = std::size_t{64} << 10;
/// How deep elements may lie within each other.
inline constexpr int MaxXmlDepth = 16;
/// Largest number of a record.
inline constexpr std::int32_t MaxXmlNumber = 262143;

/// The text of a field. What throws RuntimeFailure tells nothing of where it stands, which the reader adds.
class XmlText {
 public:
  /// `bytes` are UTF-8.
  explicit XmlText(std::string_view bytes) : text(bytes) {}

  /// In the code page, without blanks at its ends.
  std::string Text() const;
  /// With "." or ","; 0 when there is none. The words that programs write for what is no number are NaN; any other text
  /// is RuntimeFailure.
  double Number() const;
  /// The nearest whole number; RuntimeFailure when it does not fit.
  template <std::integral Integer>
  Integer Whole() const {
    return static_cast<Integer>(WholeWithin(std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max()));
  }
  /// The bits of a number of 16 bits, told with or without sign.
  std::uint16_t Bits() const;

 private:
  double WholeWithin(double least, double most) const;
  std::string_view text;
};

/// What is taken of a table.
struct XmlForm {
  std::string_view Record;  ///< name of the records' elements
  std::string_view Number;  ///< name of their attribute
  /// Names of the fields that are taken, no more than 64. One that ends in "_" stands for all that go on with digits.
  std::span<const std::string_view> Fields;
};

/// Takes the records of a table, in the order of the file. What these throw ends the reading; it names the record.
class XmlTaker {
 public:
  virtual ~XmlTaker() = default;
  /// A record with that number, 0 to MaxXmlNumber, begins.
  virtual void Begin(std::int32_t number) = 0;
  /// The text of a field of it, by its place in XmlForm::Fields.
  virtual void Take(std::size_t field, const XmlText& text) = 0;
};

/// Reads a table, whatever its encoding: UTF-8, UTF-16, or one byte for a character, which is taken for the code
/// page's. Elements that the form does not name are passed over. RuntimeFailure, naming the file and the record, for
/// what is no XML, is cut, has a document type (and so entities of its own), lies deeper or tells more than the bounds
/// above, has a record without a number, or tells a field twice.
void ReadXmlRecords(const DataFile& file, const XmlForm& form, XmlTaker& taker);

}  // namespace kestrel::falcon
