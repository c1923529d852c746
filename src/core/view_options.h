#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/font.h"
#include "core/program.h"

// What the controls of the options window set: one table of control, setting and redraw.
namespace kestrel::core {

/// A font and, where a setting holds one, its colour; null otherwise.
struct FontField {
  base::FontRecord* Font;
  base::Colour* Color;
};

/// What a control stores: a tick, the chosen number of a list, a typed number, a colour, a font.
using OptionField = std::variant<bool*, std::int16_t*, std::int32_t*, double*, base::Colour*, FontField>;

struct OptionRow {
  std::string_view Control;  ///< objectName
  OptionField Bound;
  base::Changed Redraw;              ///< the cheapest that shows a change
  void (*Also)(Program&) = nullptr;  ///< what else a change does, once it is stored
  double Greatest = 0;               ///< a typed number beyond it becomes 0. 0: no limit
};

/// Every control that has a setting. The pointers go into `station`.
std::vector<OptionRow> OptionsTable(Station& station);
/// The row of a control; std::out_of_range when there is none.
const OptionRow& RowOf(std::span<const OptionRow> rows, std::string_view control);

/// Stores a control's value and does what goes with it. Returns what must be shown anew.
template <class T>
base::Changed SetOption(Program& program, const OptionRow& row, T value) {
  *std::get<T*>(row.Bound) = value;
  if (row.Also != nullptr) row.Also(program);
  return row.Redraw;
}

/// Gives an option that is on or off its other state and does what goes with it. Returns what must be shown anew, its
/// control among it.
base::Changed ToggleOption(Program& program, std::string_view control);

/// Stores a font, and its colour where a setting holds one.
base::Changed SetFont(Program& program, const OptionRow& row, const base::FontRecord& font);
/// The font of a row, with its colour.
base::FontRecord FontOf(const OptionRow& row);

/// A typed number as it is stored: a "," counts as "."; no number is 0.
struct TypedNumber {
  double Value = 0;
  bool OutOfRange = false;  ///< Value is 0 instead of what was typed; the field is to say so
};
TypedNumber ReadTyped(const OptionRow& row, std::string text);
/// How a numeric field shows a value.
std::string TypedText(double value);

/// The scales that Combo1 offers, ascending.
std::span<const std::int16_t> MiniMapScales();
/// The icon numbers that cmbSelectIcon offers, ascending: those that have a shape.
std::span<const std::int32_t> TacanIcons();

}  // namespace kestrel::core
