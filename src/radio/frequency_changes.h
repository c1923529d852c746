#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <variant>

#include "base/history.h"
#include "base/table_changes.h"
#include "radio/frequencies.h"
#include "radio/frequency_tree.h"

// Changes of the tables as data, and the steps made of them. `Group` of a change of entries is their folder.
namespace kestrel::radio {

using base::Insert;
using base::Move;
using base::Placed;
using base::Put;
using base::Replace;
using base::Take;

/// Moves an entry of one folder to another.
struct MoveEntry {
  struct Place {
    std::size_t Folder = 0;
    std::size_t Entry = 0;
  };
  Place From, To;
};

/// Gives the channel of a node another text.
struct PutChannel {
  std::string Key;
  std::string Text;
};

/// Gives the teams other names and puts other airfields in the place of all.
struct PutAirfields {
  std::array<std::string, TeamCount> Teams;
  base::Table<Airfield> Airfields;
};

using Change =
    std::variant<Insert<FreqFolder>, Insert<FreqEntry>, Take<FreqFolder>, Take<FreqEntry>, Move<FreqFolder>,
                 Move<FreqEntry>, Move<Airfield>, MoveEntry, Replace<FreqEntry>, Put<&FreqFolder::Name>,
                 Put<&Airfield::VIS>, Put<&Airfield::TACAN_VIS>, Put<&Airfield::ILS_VIS>, PutChannel, PutAirfields>;

/// Makes the change; gives the one that takes it back.
Change Apply(Frequencies& tables, Change change);

// Bytes of memory, about, that something holds elsewhere.
std::size_t Held(const FreqEntry& entry);
std::size_t Held(const FreqFolder& folder);
std::size_t Held(const PutChannel& put);
std::size_t Held(const Airfield& airfield);
std::size_t Held(const PutAirfields& put);

/// What the panel is to do after an Undo or Redo. After one on the tab of the airports the map is to be drawn anew.
struct Moved {
  bool Done = false;                      ///< false: there was nothing to undo or redo
  std::string Select;                     ///< key of the node to be selected, or empty
  FreqTab Tab = FreqTab::CustomChannels;  ///< that shows what has been changed

  void Note(const Change& change);
};

using FrequencyHistory = base::History<Frequencies, Change, Moved>;
using OneStep = FrequencyHistory::OneStep;

}  // namespace kestrel::radio

extern template class kestrel::base::History<kestrel::radio::Frequencies, kestrel::radio::Change,
                                             kestrel::radio::Moved>;
