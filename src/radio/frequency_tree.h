#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "radio/frequencies.h"

// What the three trees of the frequency panel show. They hold nothing of their own: they are rebuilt from the tables,
// and by the key of a node a handler finds its record again.
namespace kestrel::radio {

/// The tabs of the panel, a tree each.
enum class FreqTab : std::int16_t { CustomChannels = 1, Airports, CustomFreqs };

/// What a node stands for.
enum class FreqRecord : std::uint8_t {
  None,
  Root,        ///< "U", "V", "I": UHF, VHF and UI channels
  ChannelUHF,  ///< "FU<i>"
  ChannelVHF,  ///< "FV<i>"
  ChannelUI,   ///< "FI1", "FI2"
  Team,        ///< "R<t>", from 0
  Airfield,    ///< "A<i>"
  TowerUHF,    ///< "UF<i>", below airfield i as those that follow
  TowerVHF,    ///< "VF<i>"
  TACAN,       ///< "TC<i>"
  ILS,         ///< "I1<i>" to "I4<i>": the runway ends 0 to 3
  Folder,      ///< "C<i>"
  Entry,       ///< "D<j>_C<i>": entry j of folder i
};

/// A key taken apart. It need not name a record that is there.
struct FreqKey {
  FreqRecord Record = FreqRecord::None;
  std::size_t Index = 0;  ///< of the channel, team, airfield or folder
  std::size_t Part = 0;   ///< ILS: number of the runway end, from 0; Entry: its number
};
/// None for a text that is no key.
FreqKey ReadFreqKey(std::string_view key);
std::string FolderKey(std::size_t folder);
std::string EntryKey(std::size_t folder, std::size_t entry);

struct FreqNode {
  /// Its check mark. A tower row can be checked and does not stay so.
  enum class Mark : std::uint8_t { None, Off, On };

  std::string Key;
  std::string Text;
  int Parent = -1;  ///< number of its parent in the list, from 0; -1 at the top
  FreqImage Image = FreqImage::Folder;
  Mark Check = Mark::None;
  bool Renames = false;  ///< its text can be edited in place
  bool Drags = false;    ///< it can be dragged
};

/// The nodes of a tree, parents before their children, children in their order. The marks of the teams are in line with
/// the flags of their airfields.
std::vector<FreqNode> ChannelNodes(const Frequencies& tables, const DefaultFrequencies& defaults);
std::vector<FreqNode> AirportNodes(const Frequencies& tables);
std::vector<FreqNode> FolderNodes(const Frequencies& tables);

/// The node that is selected when a tree is built without a wish: the first root, nothing, the first folder.
std::string FirstSelected(const Frequencies& tables, FreqTab tab);

/// What a left click on a node tunes: the frequency of a channel, a tower or an entry. Empty for all others, also for
/// the UI channels.
std::string ClickedValue(const Frequencies& tables, std::string_view key);
/// What a right click offers to tune: the same, and that of a UI channel.
std::string OfferedValue(const Frequencies& tables, std::string_view key);

/// The boxes "Select All ...": airfields, TACANs, ILS1 to ILS4. Cleared they are all false, which changes no flag.
enum class SelectAllBox : std::uint8_t { Airfields, TACANs, ILS1, ILS2, ILS3, ILS4 };
using SelectAllBoxes = std::array<bool, 6>;
/// A box is ticked when there is an airfield and all of them have its flag.
SelectAllBoxes SelectAllMarks(const Frequencies& tables);

/// The team under which an airfield is shown: the first for one of a team that there is not, which keeps its number.
std::size_t ShownTeam(const Airfield& airfield);

}  // namespace kestrel::radio
