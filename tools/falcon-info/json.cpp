#include "falcon-info/json.h"

#include <algorithm>

#include "base/code_page.h"

namespace kestrel::falconinfo {
namespace {

constexpr char32_t Unknown = 0xFFFD;

void AppendUtf8(std::string& out, char32_t character) {
  const auto put = [&out](char32_t byte) { out += static_cast<char>(byte); };
  if (character < 0x80) {
    put(character);
  } else if (character < 0x800) {
    put(0xC0 | character >> 6);
    put(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    put(0xE0 | character >> 12);
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  } else {
    put(0xF0 | character >> 18);
    put(0x80 | (character >> 12 & 0x3F));
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  }
}

std::string Utf8Of(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    char32_t character = text[at];
    if (character >= 0xD800 && character < 0xE000) {
      const bool isPair = character < 0xDC00 && at + 1 < text.size() && text[at + 1] >= 0xDC00 && text[at + 1] < 0xE000;
      character = isPair ? 0x10000 + ((character - 0xD800) << 10) + (text[++at] - 0xDC00u) : Unknown;
    }
    AppendUtf8(out, character);
  }
  return out;
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char letter) { return static_cast<unsigned char>(letter) < 0x80; });
}

/// How many bytes the character at the head of `text` has; 0 when that is no UTF-8.
std::size_t LengthOfCharacter(std::string_view text) {
  const auto byte = [text](std::size_t at) { return at < text.size() ? static_cast<unsigned char>(text[at]) : 0u; };
  const unsigned lead = byte(0);
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xC2 && lead < 0xE0   ? 2
                             : (lead & 0xF0u) == 0xE0      ? 3
                             : lead >= 0xF0 && lead < 0xF5 ? 4
                                                           : 0;
  for (std::size_t at = 1; at < length; ++at) {
    if ((byte(at) & 0xC0u) != 0x80) return 0;
  }
  // Longer than need be, surrogates, beyond the last character.
  const bool isWrong = (lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xED && byte(1) >= 0xA0) ||
                       (lead == 0xF0 && byte(1) < 0x90) || (lead == 0xF4 && byte(1) >= 0x90);
  return isWrong ? 0 : length;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = LengthOfCharacter(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

void AppendEscaped(std::string& out, unsigned character) {
  static constexpr char digits[] = "0123456789abcdef";
  out += "\\u00";
  out += digits[character >> 4];
  out += digits[character & 0xF];
}

/// `text`, which is UTF-8, in quotes. Control characters never reach a terminal as such.
void AppendQuoted(std::string& out, std::string_view text) {
  out += '"';
  for (std::size_t at = 0; at < text.size(); ++at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    const unsigned next = at + 1 < text.size() ? static_cast<unsigned char>(text[at + 1]) : 0u;
    if (byte == '"' || byte == '\\') {
      out += '\\';
      out += text[at];
    } else if (byte < 0x20 || byte == 0x7F) {
      AppendEscaped(out, byte);
    } else if (byte == 0xC2 && next < 0xA0) {
      AppendEscaped(out, next);
      ++at;
    } else {
      out += text[at];
    }
  }
  out += '"';
}

void AppendLine(std::string& out, std::size_t depth) {
  out += '\n';
  out.append(2 * depth, ' ');
}

}  // namespace

Json::Json(std::string_view text) : value(IsAscii(text) ? std::string(text) : Utf8Of(base::ToUnicode(text))) {}

Json Json::OfPath(const std::filesystem::path& path) {
  if (path.empty()) return {};
  const std::u8string name = path.u8string();
  const std::string bytes(name.begin(), name.end());
  // Names of another system's code page occur in archives.
  if (!IsUtf8(bytes)) return Json(bytes);
  Json json;
  json.value = bytes;
  return json;
}

Json Json::EmptyList() {
  Json json;
  json.value = List();
  return json;
}

Json Json::EmptyObject() {
  Json json;
  json.value = Object();
  return json;
}

Json& Json::operator[](std::string_view key) {
  if (IsNull()) value = Object();
  Object& members = std::get<Object>(value);
  for (auto& [name, member] : members) {
    if (name == key) return member;
  }
  return members.emplace_back(key, Json()).second;
}

void Json::Append(Json element) {
  if (IsNull()) value = List();
  std::get<List>(value).push_back(std::move(element));
}

bool Json::IsPlain() const { return !std::holds_alternative<List>(value) && !std::holds_alternative<Object>(value); }

void Json::PrintList(const List& list, std::string& out, std::size_t depth) const {
  const bool isShort = std::all_of(list.begin(), list.end(), [](const Json& one) { return one.IsPlain(); });
  out += '[';
  for (std::size_t at = 0; at < list.size(); ++at) {
    if (at > 0) out += isShort ? ", " : ",";
    if (!isShort) AppendLine(out, depth + 1);
    list[at].Print(out, depth + 1);
  }
  if (!isShort) AppendLine(out, depth);
  out += ']';
}

void Json::Print(std::string& out, std::size_t depth) const {
  if (const bool* const truth = std::get_if<bool>(&value)) {
    out += *truth ? "true" : "false";
  } else if (const Digits* const number = std::get_if<Digits>(&value)) {
    out += number->Text;
  } else if (const std::string* const text = std::get_if<std::string>(&value)) {
    AppendQuoted(out, *text);
  } else if (const List* const list = std::get_if<List>(&value)) {
    PrintList(*list, out, depth);
  } else if (const Object* const members = std::get_if<Object>(&value)) {
    out += '{';
    for (std::size_t at = 0; at < members->size(); ++at) {
      if (at > 0) out += ',';
      AppendLine(out, depth + 1);
      AppendQuoted(out, (*members)[at].first);
      out += ": ";
      (*members)[at].second.Print(out, depth + 1);
    }
    if (!members->empty()) AppendLine(out, depth);
    out += '}';
  } else {
    out += "null";
  }
}

std::string Json::Text(std::size_t depth) const {
  std::string out;
  Print(out, depth);
  return out;
}

}  // namespace kestrel::falconinfo
