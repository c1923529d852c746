#pragma once

#include <array>
#include <cstdint>
#include <string_view>

// Windows virtual key numbers, the form in which bindings are kept on every platform. On Windows the system gives them;
// elsewhere they are found as its layouts do: a letter by what is printed on its key, digits and signs by where the key
// is, since what they write depends on Shift and on the layout.
namespace kestrel::base {

/// The key of a Latin letter, whatever its case; 0 for any other character.
constexpr std::int32_t KeyOfLetter(char32_t character) {
  if (character >= U'a' && character <= U'z') return static_cast<std::int32_t>(character - U'a') + 65;
  return character >= U'A' && character <= U'Z' ? static_cast<std::int32_t>(character) : 0;
}

/// The key of a digit or sign as it is written on a US keyboard, with Shift or without; 0 for any other character.
constexpr std::int32_t KeyOfSign(char32_t character) {
  struct Sign {
    char32_t Plain, Shifted;
    std::int32_t KeyCode;
  };
  constexpr auto signs = std::to_array<Sign>({
      {U'0', U')', 48},   {U'1', U'!', 49},  {U'2', U'@', 50},  {U'3', U'#', 51},   {U'4', U'$', 52},
      {U'5', U'%', 53},   {U'6', U'^', 54},  {U'7', U'&', 55},  {U'8', U'*', 56},   {U'9', U'(', 57},
      {U';', U':', 186},  {U'=', U'+', 187}, {U',', U'<', 188}, {U'-', U'_', 189},  {U'.', U'>', 190},
      {U'/', U'?', 191},  {U'`', U'~', 192}, {U'[', U'{', 219}, {U'\\', U'|', 220}, {U']', U'}', 221},
      {U'\'', U'"', 222},
  });
  for (const Sign& sign : signs) {
    if (character == sign.Plain || character == sign.Shifted) return sign.KeyCode;
  }
  return 0;
}

/// The scan codes of Linux's input devices; an X key code is one of these plus 8.
inline constexpr std::uint32_t ScanCodeOfXKey = 8;

/// The key at a place among the digits and signs of the keyboard; 0 for any other place.
constexpr std::int32_t KeyOfSignPlace(std::uint32_t scanCode) {
  struct Place {
    std::uint32_t ScanCode;
    std::int32_t KeyCode;
  };
  constexpr auto places = std::to_array<Place>({
      {2, 49},   {3, 50},   {4, 51},   {5, 52},   {6, 53},   {7, 54},   {8, 55},   {9, 56},
      {10, 57},  {11, 48},  {12, 189}, {13, 187}, {26, 219}, {27, 221}, {39, 186}, {40, 222},
      {41, 192}, {43, 220}, {51, 188}, {52, 190}, {53, 191}, {86, 226},
  });
  for (const Place& place : places) {
    if (place.ScanCode == scanCode) return place.KeyCode;
  }
  return 0;
}

/// The key at a place among the letters of a US keyboard, for layouts of other scripts; 0 for any other place.
constexpr std::int32_t KeyOfLetterPlace(std::uint32_t scanCode) {
  struct Row {
    std::uint32_t First;
    std::u32string_view Letters;
  };
  constexpr auto rows = std::to_array<Row>({{16, U"qwertyuiop"}, {30, U"asdfghjkl"}, {44, U"zxcvbnm"}});
  for (const Row& row : rows) {
    if (scanCode >= row.First && scanCode - row.First < row.Letters.size()) {
      return KeyOfLetter(row.Letters[scanCode - row.First]);
    }
  }
  return 0;
}

/// The key that writes something: `character` is what it writes, 0 when unknown; `scanCode` its place, 0 when unknown.
/// 0 when neither tells.
constexpr std::int32_t KeyOfWriting(char32_t character, std::uint32_t scanCode) {
  if (const std::int32_t letter = KeyOfLetter(character); letter != 0) return letter;
  if (const std::int32_t place = KeyOfSignPlace(scanCode); place != 0) return place;
  if (const std::int32_t sign = KeyOfSign(character); sign != 0) return sign;
  return KeyOfLetterPlace(scanCode);
}

}  // namespace kestrel::base
