#include "falcon/xml_records.h"

#include <expat.h>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <memory>
#include <new>
#include <optional>

#include "base/code_page.h"
#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"
#include "falcon/foreign_text.h"

namespace kestrel::falcon {
namespace {

constexpr int RecordDepth = 2, FieldDepth = 3;
constexpr std::size_t LongestTold = 40;  // of a text in a failure
constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

bool IsDigit(char letter) { return letter >= '0' && letter <= '9'; }

/// The place of `name` in the form; nothing when it is not taken. Fields come in the order of the form, so that the
/// likeliest is `next`.
std::optional<std::size_t> FindField(const XmlForm& form, std::string_view name, std::size_t next) {
  const auto is = [name](std::string_view field) {
    if (!field.ends_with('_')) return field == name;
    if (!name.starts_with(field) || name.size() == field.size()) return false;
    const std::string_view digits = name.substr(field.size());
    return std::all_of(digits.begin(), digits.end(), IsDigit);
  };
  if (next < form.Fields.size() && is(form.Fields[next])) return next;
  const auto found = std::find_if(form.Fields.begin(), form.Fields.end(), is);
  if (found == form.Fields.end()) return std::nullopt;
  return static_cast<std::size_t>(found - form.Fields.begin());
}

/// Goes over a document. Its handlers are called from C, through which nothing may be thrown: a failure is kept, and
/// the parser stopped.
class Walk {
 public:
  Walk(const DataFile& which, const XmlForm& how, XmlTaker& to)
      : file(which), form(how), taker(to), bytes(which.Bytes) {
    if (bytes.size() > MaxXmlBytes) RefuseFile(file.Name, "it has " + Told(bytes.size()) + " bytes");
    const bool wide = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
    const bool one = !wide && !IsUtf8(bytes);
    // What is no UTF-8 is of one byte a character, whatever it tells.
    if (one && bytes.starts_with(Utf8Mark)) bytes.remove_prefix(Utf8Mark.size());
    parser.reset(XML_ParserCreate(one ? "code page" : nullptr));
    if (!parser) throw std::bad_alloc();
    XML_SetUserData(parser.get(), this);
    XML_SetElementHandler(parser.get(), OnStart, OnEnd);
    XML_SetCharacterDataHandler(parser.get(), OnText);
    XML_SetStartDoctypeDeclHandler(parser.get(), OnDoctype);
    XML_SetUnknownEncodingHandler(parser.get(), OnEncoding, nullptr);
  }

  void Run() {
    const XML_Status status = XML_Parse(parser.get(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE);
    if (failure) Rethrow();
    if (status == XML_STATUS_OK) return;
    RefuseFile(file.Name, Place() + "line " + Told(XML_GetCurrentLineNumber(parser.get())) + ", " +
                              XML_ErrorString(XML_GetErrorCode(parser.get())));
  }

 private:
  static Walk& Of(void* data) { return *static_cast<Walk*>(data); }
  static void OnStart(void* data, const XML_Char* name, const XML_Char** attributes) {
    Of(data).Guarded([&](Walk& walk) { walk.Start(name, attributes); });
  }
  static void OnEnd(void* data, const XML_Char*) {
    Of(data).Guarded([](Walk& walk) { walk.End(); });
  }
  static void OnText(void* data, const XML_Char* text, int length) {
    Of(data).Guarded([&](Walk& walk) { walk.Text({text, static_cast<std::size_t>(length)}); });
  }
  static void OnDoctype(void* data, const XML_Char*, const XML_Char*, const XML_Char*, int) {
    Of(data).Guarded([](Walk&) { throw base::RuntimeFailure("it has a document type"); });
  }
  /// Any encoding that the parser does not know.
  static int OnEncoding(void*, const XML_Char*, XML_Encoding* encoding) {
    for (int byte = 0; byte < 256; ++byte) {
      const char letter = static_cast<char>(byte);
      const std::u16string unicode = base::ToUnicode({&letter, 1});
      encoding->map[byte] = byte < 128 ? byte : unicode.size() == 1 ? static_cast<int>(unicode[0]) : -1;
    }
    encoding->data = nullptr;
    encoding->convert = nullptr;
    encoding->release = nullptr;
    return XML_STATUS_OK;
  }

  template <class Work>
  void Guarded(const Work& work) noexcept {
    if (failure) return;
    try {
      work(*this);
    } catch (...) {
      failure = std::current_exception();
      XML_StopParser(parser.get(), XML_FALSE);
    }
  }

  void Start(std::string_view name, const XML_Char** attributes) {
    if (++depth > MaxXmlDepth) throw base::RuntimeFailure("its elements lie too deep within each other");
    length = 0;
    if (depth == RecordDepth && name == form.Record) {
      Begin(attributes);
    } else if (depth == FieldDepth && record) {
      field = FindField(form, name, next);
      if (field) BeginField();
    }
  }

  void Begin(const XML_Char** attributes) {
    ++count;
    record.reset();
    while (*attributes != nullptr && *attributes != form.Number) attributes += 2;
    if (*attributes == nullptr) throw base::RuntimeFailure("record " + Told(count) + " from the top has no number");
    const std::int32_t number = Within("record " + Told(count) + " from the top, " + std::string(form.Number),
                                       [&] { return XmlText(attributes[1]).Whole<std::int32_t>(); });
    if (number < 0 || number > MaxXmlNumber) {
      throw base::RuntimeFailure("record " + Told(count) + " from the top has the number " + std::to_string(number));
    }
    record = number;
    told = 0;
    next = 0;
    taker.Begin(number);
  }

  void BeginField() {
    text.clear();
    next = *field + 1;
    const std::uint64_t bit = std::uint64_t{1} << *field;
    if (told & bit && !form.Fields[*field].ends_with('_')) {
      throw base::RuntimeFailure("it tells " + std::string(form.Fields[*field]) + " twice");
    }
    told |= bit;
  }

  void Text(std::string_view piece) {
    length += piece.size();
    if (length > MaxXmlText)
      throw base::RuntimeFailure("an element has more than " + Told(MaxXmlText) + " bytes of text");
    if (field && depth == FieldDepth) text += piece;
  }

  void End() {
    length = 0;
    if (depth == FieldDepth && field) {
      Within(std::string(form.Fields[*field]), [this] { taker.Take(*field, XmlText(text)); });
      field.reset();
    }
    if (depth == RecordDepth) record.reset();
    --depth;
  }

  /// The record that is being read, with a comma behind it.
  std::string Place() const { return record ? "record " + std::to_string(*record) + ", " : std::string(); }

  [[noreturn]] void Rethrow() const {
    try {
      std::rethrow_exception(failure);
    } catch (const base::RuntimeFailure& why) {
      RefuseFile(file.Name, Place() + why.what());
    }
  }

  struct Free {
    void operator()(XML_Parser one) const { XML_ParserFree(one); }
  };

  const DataFile& file;
  const XmlForm& form;
  XmlTaker& taker;
  std::string_view bytes;
  std::unique_ptr<XML_ParserStruct, Free> parser;
  std::exception_ptr failure;
  int depth = 0;
  std::uint64_t count = 0;             ///< records that have begun
  std::optional<std::int32_t> record;  ///< the one that is being read
  std::optional<std::size_t> field;    ///< of it
  std::uint64_t told = 0;              ///< a bit for each field that it has told
  std::size_t next = 0;                ///< the field that is likely to follow
  std::size_t length = 0;              ///< of the text since the last mark of an element
  std::string text;                    ///< of the field
};

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

}  // namespace

std::string XmlText::Text() const { return FromForeignText(Trimmed(text)); }

double XmlText::Number() const {
  std::string_view number = Trimmed(text);
  if (number.empty()) return 0;
  const double value = base::WholeNumberOrZero(number);
  if (value != 0 || number.find_first_not_of("+-0.,") == std::string_view::npos) return value;
  const std::string word = "\"" + std::string(number.substr(0, LongestTold)) + "\"";
  if (number.front() == '-' || number.front() == '+') number.remove_prefix(1);
  for (const std::string_view none : {"nan", "inf", "1.#"}) {
    if (base::SameNoCase(number.substr(0, none.size()), none)) return std::numeric_limits<double>::quiet_NaN();
  }
  throw base::RuntimeFailure(word + " is no number");
}

double XmlText::WholeWithin(double least, double most) const {
  const double value = base::RoundHalfEven(Number());
  if (value >= least && value <= most) return value;
  throw base::RuntimeFailure("\"" + std::string(Trimmed(text).substr(0, LongestTold)) + "\" does not fit");
}

std::uint16_t XmlText::Bits() const { return static_cast<std::uint16_t>(static_cast<int>(WholeWithin(-32768, 65535))); }

void ReadXmlRecords(const DataFile& file, const XmlForm& form, XmlTaker& taker) { Walk(file, form, taker).Run(); }

}  // namespace kestrel::falcon
