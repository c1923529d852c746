#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

#include "base/colour.h"

namespace kestrel::link {

/// What the person has given to the player of a name.
struct GivenLook {
  std::string Label;       ///< callsign; empty: none, his Id stands for it
  base::Colour Color = 0;  ///< 0, in which every player begins: none
};

/// What players have been given, by their names, so that it can come back with them.
class Callsigns {
 public:
  /// Most names that are kept; a further one is not.
  static constexpr std::size_t MaxNames = 10'000;
  /// Names and callsigns that are longer are not kept: they would not fit a value of the file.
  static constexpr std::size_t MaxText = 255;

  bool REMEMBERCALLSIGNS = false;  ///< what is kept comes back, and is written to its file; field named as its key

  /// `label` empty: he is called by his Id again.
  void GiveLabel(std::string_view name, std::string_view label);
  void GiveColor(std::string_view name, base::Colour color);
  /// What comes back with a player of this name; null for nothing, or while nothing is to.
  const GivenLook* Recall(std::string_view name) const;

  const std::map<std::string, GivenLook, std::less<>>& All() const { return looks; }

 private:
  /// The look of a name, to be changed; null when it cannot be kept.
  GivenLook* LookOf(std::string_view name);
  void DropEmpty(std::string_view name);

  std::map<std::string, GivenLook, std::less<>> looks;
};

}  // namespace kestrel::link
