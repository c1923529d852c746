#pragma once

#include <string>
#include <vector>

#include "radio/frequency_tree.h"
#include "radio/voice_bridge.h"

namespace kestrel::radio {

/// A row of a tree of the frequency panel whose value a radio of the voice client has.
struct TunedRow {
  std::string Key;
  bool UHF = false;  ///< which radio, one at least
  bool VHF = false;
};

/// The rows of a tab that have the text of a radio's box, blanks at the ends aside, in the order of the tree's tables.
/// Only digits that are not all zero are compared: "0", "000000" and "-" are no frequency that a radio could have.
std::vector<TunedRow> TunedRows(const Frequencies& tables, FreqTab tab, const VoiceStatus& status);

/// "on UHF", "on VHF" or "on UHF and VHF".
std::string TunedWords(const TunedRow& row);

}  // namespace kestrel::radio
