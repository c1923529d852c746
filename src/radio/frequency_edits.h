#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "radio/frequencies.h"
#include "radio/frequency_changes.h"
#include "radio/frequency_tree.h"

// What the person does to the tables in the frequency panel. Each procedure that takes the history is one step, if it
// changes something. `key` is that of the selected node, empty when there is none. Nothing here checks a text: a
// frequency that is none is kept as it was typed.
namespace kestrel::radio {

/// Nothing: nothing has been done and nothing is to be refreshed. Otherwise the tree is to be refreshed with the node
/// of this key selected; none is when it is empty.
using Reselect = std::optional<std::string>;

/// Name of a folder that is made.
inline constexpr std::string_view NewFolderName = "New Folder";
/// What the dialog of a new frequency begins with.
inline constexpr std::string_view NewFrequencyDescription = "New Frequency";
inline constexpr std::string_view NewFrequencyValue = "243000";

/// Where a record goes in its list.
enum class FreqMove : std::uint8_t { Top, Up, Down, Bottom };

/// The channel of a node of the first tree; null for a root. The person changes it through SetChannel.
std::string* ChannelOf(Frequencies& tables, std::string_view key);
/// The entry of a node of the third tree; null for a folder. The person changes it through SetEntry.
FreqEntry* EntryOf(Frequencies& tables, std::string_view key);

/// Gives a channel another text and selects it again. Nothing for a root.
Reselect SetChannel(Frequencies& tables, FrequencyHistory& steps, std::string_view key, const std::string& text);
/// The channels and the two UI frequencies of another place.
struct LoadedChannels {
  Channels UHF, VHF;
  std::string F1, F2;
};
/// Replaces the channels and the two UI frequencies; folders and airfields stay.
void TakeChannels(Frequencies& tables, FrequencyHistory& steps, const LoadedChannels& loaded);
/// The same by the defaults.
void TakeDefaults(Frequencies& tables, FrequencyHistory& steps, const DefaultFrequencies& defaults);

/// Appends a folder. `selected` is the key that was selected before.
std::string AddFolder(Frequencies& tables, FrequencyHistory& steps, std::string_view selected = {});
/// Gives a folder the text that was typed into its node; false for an entry, whose text is not edited in place.
bool RenameFolder(Frequencies& tables, FrequencyHistory& steps, std::string_view key, const std::string& text);
/// What is asked before a folder with entries is deleted; empty when nothing is to be asked.
std::string DeleteFolderQuestion(const Frequencies& tables, std::string_view key);
/// Takes a folder out with its entries and selects the one that follows, or the last. Nothing for an entry.
Reselect DeleteFolder(Frequencies& tables, FrequencyHistory& steps, std::string_view key);

/// Appends an entry to the folder that is selected or holds the selected entry; without one to a new folder.
std::string AddFreq(Frequencies& tables, FrequencyHistory& steps, std::string_view key, FreqEntry entry);
/// Gives an entry other texts and selects it again. Nothing for a folder.
Reselect SetEntry(Frequencies& tables, FrequencyHistory& steps, std::string_view key, FreqEntry entry);
/// Takes an entry out and selects the one that follows, or the last, or the folder when it is empty. Nothing for a
/// folder.
Reselect DeleteFreq(Frequencies& tables, FrequencyHistory& steps, std::string_view key);

/// Moves an entry within its folder or a folder among the folders, and selects it. Up and Down do nothing at the end of
/// the list; to the top and to the bottom is done there as well.
Reselect MoveFreq(Frequencies& tables, FrequencyHistory& steps, std::string_view key, FreqMove move);
/// Moves an airfield among all of them; its neighbour may be another team's. A node below an airfield moves that and is
/// selected again. The key after a move to the bottom has the number of the folders: this stands. When there is no
/// airfield of that number the moved one is selected.
Reselect MoveAirfield(Frequencies& tables, FrequencyHistory& steps, std::string_view key, FreqMove move);

/// Whether the node `from` is one that is dragged and `to` one that it may be dropped on: an entry on a folder.
bool MayDropFreq(std::string_view from, std::string_view to);
/// Moves an entry to the end of another folder. Nothing for its own and for any other drop.
Reselect DropFreq(Frequencies& tables, FrequencyHistory& steps, std::string_view from, std::string_view to);

/// The mark of a node has been set or taken away: the flag of an airfield, a TACAN or an ILS; of a team those of all
/// airfields that are shown below it. False for any other node, whose mark is taken away again. The map is to be drawn
/// anew.
bool CheckNode(Frequencies& tables, FrequencyHistory& steps, std::string_view key, bool on);
/// A box has been set or cleared: all airfields get its flag. The map is to be drawn anew.
void SelectAll(Frequencies& tables, FrequencyHistory& steps, SelectAllBox box, bool on);

}  // namespace kestrel::radio
