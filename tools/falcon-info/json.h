#pragma once

#include <array>
#include <charconv>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace kestrel::falconinfo {

/// A value of JSON, made to be printed. Members of an object keep the order in which they were set. Texts are bytes of
/// the code page, as everywhere in the station; what comes out is UTF-8 whatever they hold.
class Json {
 public:
  Json() = default;  ///< null
  Json(std::nullptr_t) {}
  template <std::integral Number>
  Json(Number number) {
    if constexpr (std::same_as<Number, bool>) {
      value = number;
    } else {
      TakeDigits(number);
    }
  }
  /// null for what is no number or infinite.
  Json(double number) {
    if (std::isfinite(number)) TakeDigits(number);
  }
  Json(float number) {
    if (std::isfinite(number)) TakeDigits(number);
  }
  Json(std::string_view text);
  Json(const std::string& text) : Json(std::string_view(text)) {}
  Json(const char* text) : Json(std::string_view(text)) {}
  /// null for nothing.
  template <class T>
  Json(const std::optional<T>& perhaps) {
    if (perhaps) *this = Json(*perhaps);
  }

  /// A path as it is named on this system; null for an empty one.
  static Json OfPath(const std::filesystem::path& path);
  static Json EmptyList();
  static Json EmptyObject();

  /// The member of that name, null when it is new. What is null becomes an object.
  Json& operator[](std::string_view key);
  /// Adds an element. What is null becomes a list.
  void Append(Json element);
  bool IsNull() const { return std::holds_alternative<std::nullptr_t>(value); }

  /// As text, indented by two blanks a level, all but its first line `depth` levels more; lists of plain values stand
  /// on one line.
  std::string Text(std::size_t depth = 0) const;

 private:
  /// A number, as it is written.
  struct Digits {
    std::string Text;
  };
  using List = std::vector<Json>;
  using Object = std::vector<std::pair<std::string, Json>>;

  /// The fewest digits that give the number back, with an exponent only where it is far from 1.
  template <class Number>
  void TakeDigits(Number number) {
    std::array<char, 40> text{};
    char* const last = text.data() + text.size();
    char* end = text.data();
    if constexpr (std::floating_point<Number>) {
      const Number size = std::abs(number);
      const bool isPlain = size == 0 || (size >= Number(1e-5) && size < Number(1e15));
      end = std::to_chars(end, last, number, isPlain ? std::chars_format::fixed : std::chars_format::scientific).ptr;
    } else {
      end = std::to_chars(end, last, number).ptr;
    }
    value = Digits{std::string(text.data(), end)};
  }
  void Print(std::string& out, std::size_t depth) const;
  void PrintList(const List& list, std::string& out, std::size_t depth) const;
  bool IsPlain() const;

  std::variant<std::nullptr_t, bool, Digits, std::string, List, Object> value = nullptr;
};

/// A list of what `one` makes of each element.
template <class Range, class Make>
Json ListOf(const Range& range, const Make& one) {
  Json list = Json::EmptyList();
  for (const auto& element : range) list.Append(one(element));
  return list;
}
/// A list of elements that are values themselves.
template <class Range>
Json ListOf(const Range& range) {
  return ListOf(range, [](const auto& element) { return Json(element); });
}

}  // namespace kestrel::falconinfo
