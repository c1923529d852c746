#include "radio/frequency_edits.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "radio/frequency_tree.h"

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
base::Table<FreqEntry>* EntriesWith(Frequencies& tables, const FreqKey& key) {
  if (key.Record != FreqRecord::Entry || !Holds(tables.FreqFolders, key.Index)) return nullptr;
  base::Table<FreqEntry>& entries = tables.FreqFolders[key.Index].Entries;
  return Holds(entries, key.Part) ? &entries : nullptr;
}

bool IsFolder(const Frequencies& tables, const FreqKey& key) {
  return key.Record == FreqRecord::Folder && Holds(tables.FreqFolders, key.Index);
}

/// The beginning of a key of the second tree that is kept when its airfield gets another number.
std::string_view KeptBeginning(std::string_view key) { return key.substr(0, key.starts_with('A') ? 1 : 2); }

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
  base::Table<FreqEntry>* entries = EntriesWith(tables, read);
  return entries == nullptr ? nullptr : &(*entries)[read.Part];
}

std::string AddFolder(Frequencies& tables) {
  tables.FreqFolders.Append({std::string(NewFolderName), {}});
  return FolderKey(tables.FreqFolders.UpperBound());
}

bool RenameFolder(Frequencies& tables, std::string_view key, const std::string& text) {
  const FreqKey read = ReadFreqKey(key);
  if (!IsFolder(tables, read)) return false;
  tables.FreqFolders[read.Index].Name = text;
  return true;
}

std::string DeleteFolderQuestion(const Frequencies& tables, std::string_view key) {
  const FreqKey read = ReadFreqKey(key);
  if (!IsFolder(tables, read) || tables.FreqFolders[read.Index].Entries.Empty()) return {};
  return "Are you sure you want to delete the " + std::string(base::Trim(tables.FreqFolders[read.Index].Name)) +
         " Folder? All Frequencies under it will be deleted also.";
}

Reselect DeleteFolder(Frequencies& tables, std::string_view key) {
  const FreqKey read = ReadFreqKey(key);
  if (!IsFolder(tables, read)) return std::nullopt;
  tables.FreqFolders.Remove(read.Index);
  if (tables.FreqFolders.Empty()) return "";
  return FolderKey(std::min(read.Index, tables.FreqFolders.UpperBound()));
}

std::string AddFreq(Frequencies& tables, std::string_view key, FreqEntry entry) {
  std::size_t folder = FolderOf(tables, ReadFreqKey(key));
  if (folder == 0) {
    AddFolder(tables);
    folder = tables.FreqFolders.UpperBound();
  }
  base::Table<FreqEntry>& entries = tables.FreqFolders[folder].Entries;
  entries.Append(std::move(entry));
  return EntryKey(folder, entries.UpperBound());
}

Reselect DeleteFreq(Frequencies& tables, std::string_view key) {
  const FreqKey read = ReadFreqKey(key);
  base::Table<FreqEntry>* entries = EntriesWith(tables, read);
  if (entries == nullptr) return std::nullopt;
  entries->Remove(read.Part);
  if (entries->Empty()) return FolderKey(read.Index);
  return EntryKey(read.Index, std::min(read.Part, entries->UpperBound()));
}

Reselect MoveFreq(Frequencies& tables, std::string_view key, FreqMove move) {
  const FreqKey read = ReadFreqKey(key);
  if (base::Table<FreqEntry>* entries = EntriesWith(tables, read)) {
    const auto to = Target(read.Part, entries->UpperBound(), move);
    if (!to) return std::nullopt;
    entries->Move(read.Part, *to);
    return EntryKey(read.Index, *to);
  }
  if (!IsFolder(tables, read)) return std::nullopt;
  const auto to = Target(read.Index, tables.FreqFolders.UpperBound(), move);
  if (!to) return std::nullopt;
  tables.FreqFolders.Move(read.Index, *to);
  return FolderKey(*to);
}

Reselect MoveAirfield(Frequencies& tables, std::string_view key, FreqMove move) {
  const FreqKey read = ReadFreqKey(key);
  const bool below = read.Record == FreqRecord::TowerUHF || read.Record == FreqRecord::TowerVHF ||
                     read.Record == FreqRecord::TACAN || read.Record == FreqRecord::ILS;
  if ((read.Record != FreqRecord::Airfield && !below) || !Holds(tables.Airfields, read.Index)) return std::nullopt;
  const auto to = Target(read.Index, tables.Airfields.UpperBound(), move);
  if (!to) return std::nullopt;
  tables.Airfields.Move(read.Index, *to);
  std::size_t selected = *to;
  const std::size_t folders = tables.FreqFolders.UpperBound();
  if (move == FreqMove::Bottom && Holds(tables.Airfields, folders)) selected = folders;
  return std::string(KeptBeginning(key)) + std::to_string(selected);
}

bool MayDropFreq(std::string_view from, std::string_view to) {
  return ReadFreqKey(from).Record == FreqRecord::Entry && ReadFreqKey(to).Record == FreqRecord::Folder;
}

Reselect DropFreq(Frequencies& tables, std::string_view from, std::string_view to) {
  const FreqKey dragged = ReadFreqKey(from);
  const FreqKey target = ReadFreqKey(to);
  base::Table<FreqEntry>* entries = EntriesWith(tables, dragged);
  if (entries == nullptr || !IsFolder(tables, target) || target.Index == dragged.Index) return std::nullopt;
  base::Table<FreqEntry>& others = tables.FreqFolders[target.Index].Entries;
  others.Append(std::move((*entries)[dragged.Part]));
  entries->Remove(dragged.Part);
  return EntryKey(target.Index, others.UpperBound());
}

}  // namespace kestrel::radio
