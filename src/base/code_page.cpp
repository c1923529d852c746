#include "base/code_page.h"

#include <algorithm>
#include <array>

#ifdef _WIN32
#include <windows.h>
#endif

namespace kestrel::base {
namespace {

constexpr bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
constexpr bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

#ifdef _WIN32

namespace {

/// Two units of one character, which no such code page holds, as the one that stands for what cannot be shown.
std::wstring WithoutPairs(std::u16string_view text) {
  std::wstring wide;
  wide.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool pair = IsHighSurrogate(text[at]) && at + 1 < text.size() && IsLowSurrogate(text[at + 1]);
    wide += pair ? L'\uFFFD' : static_cast<wchar_t>(text[at]);
    if (pair) ++at;
  }
  return wide;
}

}  // namespace

std::u16string ToUnicode(std::string_view bytes) {
  const int count = static_cast<int>(bytes.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, bytes.data(), count, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_ACP, 0, bytes.data(), count, wide.data(), static_cast<int>(wide.size()));
  return std::u16string(wide.begin(), wide.end());
}

std::string FromUnicode(std::u16string_view text) {
  const bool holdsAll = GetACP() == CP_UTF8;
  const std::wstring wide = holdsAll ? std::wstring(text.begin(), text.end()) : WithoutPairs(text);
  const int count = static_cast<int>(wide.size());
  const DWORD flags = holdsAll ? 0 : WC_NO_BEST_FIT_CHARS;
  std::string bytes(
      static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, flags, wide.data(), count, nullptr, 0, nullptr, nullptr)),
      '\0');
  WideCharToMultiByte(CP_ACP, flags, wide.data(), count, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                      nullptr);
  return bytes;
}

#else

namespace {

// What the bytes 0x80 to 0x9F stand for; the others are the character of the same number.
constexpr std::array<char16_t, 32> Middle = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                             0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                             0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                             0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char ByteOf(char16_t unit) {
  if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return static_cast<char>(unit);
  const auto found = std::find(Middle.begin(), Middle.end(), unit);
  return found == Middle.end() ? '?' : static_cast<char>(0x80 + (found - Middle.begin()));
}

}  // namespace

std::u16string ToUnicode(std::string_view bytes) {
  std::u16string text(bytes.size(), u'\0');
  std::transform(bytes.begin(), bytes.end(), text.begin(), [](char letter) {
    const auto byte = static_cast<unsigned char>(letter);
    return byte >= 0x80 && byte < 0xA0 ? Middle[byte - 0x80u] : static_cast<char16_t>(byte);
  });
  return text;
}

std::string FromUnicode(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    bytes += ByteOf(text[at]);
    // Two units of one character give one "?".
    if (IsHighSurrogate(text[at]) && at + 1 < text.size() && IsLowSurrogate(text[at + 1])) ++at;
  }
  return bytes;
}

#endif

}  // namespace kestrel::base
