#include "radio/frequency_edits.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"

namespace kestrel::radio {
namespace {

/// The place of the record at `from` after the move; nothing when it cannot go there.
std::optional<std::size_t> Target(std::size_t from, std::size_t count, FreqMove move) {
  switch (move) {
    case FreqMove::Top:
      return 1;
    case FreqMove::Up:
      return from > 1 ? std::optional(from - 1) : std::nullopt;
    case FreqMove::Down:
      return from < count ? std::optional(from + 1) : std::nullopt;
    case FreqMove::Bottom:
      return count;
  }
  return std::nullopt;
}

bool Holds(const auto& table, std::size_t index) { return index >= 1 && index <= table.UpperBound(); }

/// The folder that a key names or whose entry it names; 0 when there is none.
std::size_t FolderOf(const Frequencies& tables, const FreqKey& key) {
  const bool names = key.Record == FreqRecord::Folder || key.Record == FreqRecord::Entry;
  return names && Holds(tables.FreqFolders, key.Index) ? key.Index : 0;
}

/// The entries among which that of the key is; null when it names none.
const base::Table<FreqEntry>* EntriesWith(const Frequencies& tables, const FreqKey& key) {
  if (key.Record != FreqRecord::Entry || !Holds(tables.FreqFolders, key.Index)) return nullptr;
  const base::Table<FreqEntry>& entries = tables.FreqFolders[key.Index].Entries;
  return Holds(entries, key.Part) ? &entries : nullptr;
}

bool IsFolder(const Frequencies& tables, const FreqKey& key) {
  return key.Record == FreqRecord::Folder && Holds(tables.FreqFolders, key.Index);
}

/// The beginning of a key of the second tree that is kept when its airfield gets another number.
std::string_view KeptBeginning(std::string_view key) { return key.substr(0, key.starts_with('A') ? 1 : 2); }

std::string Trimmed(std::string_view text) { return std::string(base::Trim(text)); }

/// The keys of a step; the one that is selected now.
std::string Select(OneStep& step, std::string_view before, std::string after) {
  step.Select(std::string(before), after);
  return after;
}

void PutText(Frequencies& tables, OneStep& step, std::string key, const std::string& text) {
  if (*ChannelOf(tables, key) != text) step.Do(PutChannel{std::move(key), text});
}

void PutChannels(Frequencies& tables, OneStep& step, const LoadedChannels& to) {
  for (std::size_t i = 1; i <= ChannelCount; ++i) {
    PutText(tables, step, "FU" + std::to_string(i), to.UHF[i]);
    PutText(tables, step, "FV" + std::to_string(i), to.VHF[i]);
  }
  PutText(tables, step, "FI1", to.F1);
  PutText(tables, step, "FI2", to.F2);
}

/// Changes a field of the airfields that are wanted, by their numbers.
template <auto Field, class Wanted, class Becomes>
void PutField(const Frequencies& tables, OneStep& step, Wanted wanted, Becomes becomes) {
  Put<Field> put;
  for (std::size_t i = 1; i <= tables.Airfields.UpperBound(); ++i) {
    if (!wanted(i)) continue;
    auto value = tables.Airfields[i].*Field;
    becomes(value);
    if (value != tables.Airfields[i].*Field) put.Values.push_back({i, value});
  }
  if (!put.Values.empty()) step.Do(std::move(put));
}

/// Gives the flag of a box to the airfields that are wanted.
template <class Wanted>
void PutFlags(const Frequencies& tables, OneStep& step, SelectAllBox box, bool on, Wanted wanted) {
  const auto become = [on](bool& flag) { flag = on; };
  if (box == SelectAllBox::Airfields) return PutField<&Airfield::VIS>(tables, step, wanted, become);
  if (box == SelectAllBox::TACANs) return PutField<&Airfield::TACAN_VIS>(tables, step, wanted, become);
  const std::size_t end = static_cast<std::size_t>(box) - static_cast<std::size_t>(SelectAllBox::ILS1);
  PutField<&Airfield::ILS_VIS>(tables, step, wanted, [&](auto& flags) { flags[end] = on; });
}

/// The box whose flag the mark of an airfield's node is; nothing for a tower.
std::optional<SelectAllBox> BoxOf(const FreqKey& key) {
  if (key.Record == FreqRecord::Airfield) return SelectAllBox::Airfields;
  if (key.Record == FreqRecord::TACAN) return SelectAllBox::TACANs;
  if (key.Record != FreqRecord::ILS) return std::nullopt;
  return static_cast<SelectAllBox>(static_cast<std::size_t>(SelectAllBox::ILS1) + key.Part);
}

const char* Checking(bool on) { return on ? "check of " : "uncheck of "; }

}  // namespace

std::string* ChannelOf(Frequencies& tables, std::string_view key) {
  const FreqKey read = ReadFreqKey(key);
  const bool there = read.Index <= ChannelCount;
  if (read.Record == FreqRecord::ChannelUHF && there) return &tables.CustomUHF[read.Index];
  if (read.Record == FreqRecord::ChannelVHF && there) return &tables.CustomVHF[read.Index];
  if (read.Record != FreqRecord::ChannelUI || read.Index > 2) return nullptr;
  return read.Index == 1 ? &tables.CustomF1 : &tables.CustomF2;
}

FreqEntry* EntryOf(Frequencies& tables, std::string_view key) {
  const FreqKey read = ReadFreqKey(key);
  return EntriesWith(tables, read) == nullptr ? nullptr : &tables.FreqFolders[read.Index].Entries[read.Part];
}

Reselect SetChannel(Frequencies& tables, FrequencyHistory& steps, std::string_view key, const std::string& text) {
  const std::string* present = ChannelOf(tables, key);
  if (present == nullptr) return std::nullopt;
  const FreqKey read = ReadFreqKey(key);
  const char* kind = read.Record == FreqRecord::ChannelUI    ? "F"
                     : read.Record == FreqRecord::ChannelUHF ? "UHF "
                                                             : "VHF ";
  OneStep step(tables, steps, std::string("change of ") + kind + std::to_string(read.Index));
  PutText(tables, step, std::string(key), text);
  return Select(step, key, std::string(key));
}

void TakeChannels(Frequencies& tables, FrequencyHistory& steps, const LoadedChannels& loaded) {
  OneStep step(tables, steps, "loaded channels");
  PutChannels(tables, step, loaded);
}

void TakeDefaults(Frequencies& tables, FrequencyHistory& steps, const DefaultFrequencies& defaults) {
  OneStep step(tables, steps, "default channels");
  PutChannels(tables, step, {defaults.DefaultUHF, defaults.DefaultVHF, defaults.DefaultF1, defaults.DefaultF2});
}

std::string AddFolder(Frequencies& tables, FrequencyHistory& steps, std::string_view selected) {
  OneStep step(tables, steps, "new folder");
  const std::size_t folder = tables.FreqFolders.UpperBound() + 1;
  Insert<FreqFolder> insert;
  insert.Items.push_back({folder, {std::string(NewFolderName), {}}});
  step.Do(std::move(insert));
  return Select(step, selected, FolderKey(folder));
}

bool RenameFolder(Frequencies& tables, FrequencyHistory& steps, std::string_view key, const std::string& text) {
  const FreqKey read = ReadFreqKey(key);
  if (!IsFolder(tables, read)) return false;
  const std::string& present = tables.FreqFolders[read.Index].Name;
  OneStep step(tables, steps, "rename of " + Trimmed(present));
  if (present != text) step.Do(Put<&FreqFolder::Name>{0, {{read.Index, text}}});
  Select(step, key, std::string(key));
  return true;
}

std::string DeleteFolderQuestion(const Frequencies& tables, std::string_view key) {
  const FreqKey read = ReadFreqKey(key);
  if (!IsFolder(tables, read) || tables.FreqFolders[read.Index].Entries.Empty()) return {};
  return "Are you sure you want to delete the " + Trimmed(tables.FreqFolders[read.Index].Name) +
         " Folder? All Frequencies under it will be deleted also.";
}

Reselect DeleteFolder(Frequencies& tables, FrequencyHistory& steps, std::string_view key) {
  const FreqKey read = ReadFreqKey(key);
  if (!IsFolder(tables, read)) return std::nullopt;
  OneStep step(tables, steps, "delete of " + Trimmed(tables.FreqFolders[read.Index].Name));
  step.Do(Take<FreqFolder>{0, {read.Index}});
  const std::size_t last = tables.FreqFolders.UpperBound();
  return Select(step, key, last == 0 ? "" : FolderKey(std::min(read.Index, last)));
}

std::string AddFreq(Frequencies& tables, FrequencyHistory& steps, std::string_view key, FreqEntry entry) {
  OneStep step(tables, steps, "new frequency");
  std::size_t folder = FolderOf(tables, ReadFreqKey(key));
  if (folder == 0) {
    AddFolder(tables, steps);
    folder = tables.FreqFolders.UpperBound();
  }
  const std::size_t at = tables.FreqFolders[folder].Entries.UpperBound() + 1;
  Insert<FreqEntry> insert{folder, {}};
  insert.Items.push_back({at, std::move(entry)});
  step.Do(std::move(insert));
  return Select(step, key, EntryKey(folder, at));
}

Reselect SetEntry(Frequencies& tables, FrequencyHistory& steps, std::string_view key, FreqEntry entry) {
  const FreqKey read = ReadFreqKey(key);
  const base::Table<FreqEntry>* entries = EntriesWith(tables, read);
  if (entries == nullptr) return std::nullopt;
  const FreqEntry& present = (*entries)[read.Part];
  OneStep step(tables, steps, "change of " + Trimmed(present.Description));
  if (present != entry) step.Do(Replace<FreqEntry>{read.Index, {read.Part, std::move(entry)}});
  return Select(step, key, std::string(key));
}

Reselect DeleteFreq(Frequencies& tables, FrequencyHistory& steps, std::string_view key) {
  const FreqKey read = ReadFreqKey(key);
  const base::Table<FreqEntry>* entries = EntriesWith(tables, read);
  if (entries == nullptr) return std::nullopt;
  OneStep step(tables, steps, "delete of " + Trimmed((*entries)[read.Part].Description));
  step.Do(Take<FreqEntry>{read.Index, {read.Part}});
  const std::size_t last = entries->UpperBound();
  return Select(step, key, last == 0 ? FolderKey(read.Index) : EntryKey(read.Index, std::min(read.Part, last)));
}

Reselect MoveFreq(Frequencies& tables, FrequencyHistory& steps, std::string_view key, FreqMove move) {
  const FreqKey read = ReadFreqKey(key);
  if (const base::Table<FreqEntry>* entries = EntriesWith(tables, read)) {
    const auto to = Target(read.Part, entries->UpperBound(), move);
    if (!to) return std::nullopt;
    OneStep step(tables, steps, "move of " + Trimmed((*entries)[read.Part].Description));
    if (*to != read.Part) step.Do(Move<FreqEntry>{read.Index, read.Part, *to});
    return Select(step, key, EntryKey(read.Index, *to));
  }
  if (!IsFolder(tables, read)) return std::nullopt;
  const auto to = Target(read.Index, tables.FreqFolders.UpperBound(), move);
  if (!to) return std::nullopt;
  OneStep step(tables, steps, "move of " + Trimmed(tables.FreqFolders[read.Index].Name));
  if (*to != read.Index) step.Do(Move<FreqFolder>{0, read.Index, *to});
  return Select(step, key, FolderKey(*to));
}

Reselect MoveAirfield(Frequencies& tables, FrequencyHistory& steps, std::string_view key, FreqMove move) {
  const FreqKey read = ReadFreqKey(key);
  const bool below = read.Record == FreqRecord::TowerUHF || read.Record == FreqRecord::TowerVHF ||
                     read.Record == FreqRecord::TACAN || read.Record == FreqRecord::ILS;
  if ((read.Record != FreqRecord::Airfield && !below) || !Holds(tables.Airfields, read.Index)) return std::nullopt;
  const auto to = Target(read.Index, tables.Airfields.UpperBound(), move);
  if (!to) return std::nullopt;
  OneStep step(tables, steps, "move of " + Trimmed(tables.Airfields[read.Index].Name));
  if (*to != read.Index) step.Do(Move<Airfield>{0, read.Index, *to});
  std::size_t selected = *to;
  const std::size_t folders = tables.FreqFolders.UpperBound();
  if (move == FreqMove::Bottom && Holds(tables.Airfields, folders)) selected = folders;
  return Select(step, key, std::string(KeptBeginning(key)) + std::to_string(selected));
}

bool MayDropFreq(std::string_view from, std::string_view to) {
  return ReadFreqKey(from).Record == FreqRecord::Entry && ReadFreqKey(to).Record == FreqRecord::Folder;
}

Reselect DropFreq(Frequencies& tables, FrequencyHistory& steps, std::string_view from, std::string_view to) {
  const FreqKey dragged = ReadFreqKey(from);
  const FreqKey target = ReadFreqKey(to);
  const base::Table<FreqEntry>* entries = EntriesWith(tables, dragged);
  if (entries == nullptr || !IsFolder(tables, target) || target.Index == dragged.Index) return std::nullopt;
  OneStep step(tables, steps, "move of " + Trimmed((*entries)[dragged.Part].Description));
  const std::size_t at = tables.FreqFolders[target.Index].Entries.UpperBound() + 1;
  step.Do(MoveEntry{{dragged.Index, dragged.Part}, {target.Index, at}});
  return Select(step, from, EntryKey(target.Index, at));
}

bool CheckNode(Frequencies& tables, FrequencyHistory& steps, std::string_view key, bool on) {
  const FreqKey read = ReadFreqKey(key);
  const bool team = read.Record == FreqRecord::Team;
  const std::optional<SelectAllBox> box = team ? SelectAllBox::Airfields : BoxOf(read);
  if (!box || (!team && !Holds(tables.Airfields, read.Index))) return false;
  std::string name = Checking(on) + Trimmed(team ? tables.Teams[read.Index] : tables.Airfields[read.Index].Name);
  if (read.Record == FreqRecord::TACAN) name += " TACAN";
  if (read.Record == FreqRecord::ILS) name += " ILS " + tables.Airfields[read.Index].ILS_DES[read.Part];
  OneStep step(tables, steps, name);
  PutFlags(tables, step, *box, on,
           [&](std::size_t i) { return team ? ShownTeam(tables.Airfields[i]) == read.Index : i == read.Index; });
  Select(step, key, std::string(key));
  return true;
}

void SelectAll(Frequencies& tables, FrequencyHistory& steps, SelectAllBox box, bool on) {
  constexpr std::array<const char*, 6> names = {"airfields", "TACANs", "ILS1", "ILS2", "ILS3", "ILS4"};
  OneStep step(tables, steps, std::string(Checking(on)) + "all " + names[static_cast<std::size_t>(box)]);
  PutFlags(tables, step, box, on, [](std::size_t) { return true; });
}

}  // namespace kestrel::radio
