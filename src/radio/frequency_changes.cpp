#include "radio/frequency_changes.h"

#include <type_traits>
#include <utility>

#include "radio/frequency_edits.h"

namespace kestrel::radio {
namespace {

template <class T>
base::Table<T>& TableOf(Frequencies& tables, std::size_t group) {
  if constexpr (std::is_same_v<T, Airfield>) {
    return tables.Airfields;
  } else if constexpr (std::is_same_v<T, FreqFolder>) {
    return tables.FreqFolders;
  } else {
    return tables.FreqFolders[group].Entries;
  }
}

template <class Made>
Change Run(Frequencies& tables, Made& made) {
  auto& table = TableOf<typename Made::Record>(tables, made.Group);
  return base::Apply(table, std::move(made));
}

Change Run(Frequencies& tables, MoveEntry& move) {
  const auto entries = [&tables](std::size_t folder) -> auto& { return TableOf<FreqEntry>(tables, folder); };
  Insert<FreqEntry> moved = base::Apply(entries(move.From.Folder), Take<FreqEntry>{0, {move.From.Entry}});
  moved.Items.front().At = move.To.Entry;
  base::Apply(entries(move.To.Folder), std::move(moved));
  std::swap(move.From, move.To);
  return move;
}

Change Run(Frequencies& tables, PutChannel& put) {
  std::swap(*ChannelOf(tables, put.Key), put.Text);
  return std::move(put);
}

Change Run(Frequencies& tables, PutAirfields& put) {
  std::swap(tables.Teams, put.Teams);
  std::swap(tables.Airfields, put.Airfields);
  return std::move(put);
}

struct TabOf {
  template <class Made>
  FreqTab operator()(const Made&) const {
    return std::is_same_v<typename Made::Record, Airfield> ? FreqTab::Airports : FreqTab::CustomFreqs;
  }
  FreqTab operator()(const MoveEntry&) const { return FreqTab::CustomFreqs; }
  FreqTab operator()(const PutChannel&) const { return FreqTab::CustomChannels; }
  FreqTab operator()(const PutAirfields&) const { return FreqTab::Airports; }
};

}  // namespace

Change Apply(Frequencies& tables, Change change) {
  return std::visit([&tables](auto& made) { return Run(tables, made); }, change);
}

std::size_t Held(const FreqEntry& entry) { return base::Held(entry.Description) + base::Held(entry.Value); }

std::size_t Held(const FreqFolder& folder) { return base::Held(folder.Name) + base::Held(folder.Entries); }

std::size_t Held(const PutChannel& put) { return base::Held(put.Key) + base::Held(put.Text); }

std::size_t Held(const Airfield& airfield) {
  std::size_t sum = 0;
  for (const std::string* const text :
       {&airfield.Name, &airfield.UHF, &airfield.VHF, &airfield.TACAN, &airfield.TACAN_BAND}) {
    sum += base::Held(*text);
  }
  for (std::size_t i = 0; i < RunwayEndCount; ++i) sum += base::Held(airfield.ILS[i]) + base::Held(airfield.ILS_DES[i]);
  return sum;
}

std::size_t Held(const PutAirfields& put) {
  std::size_t sum = base::Held(put.Airfields);
  for (const std::string& team : put.Teams) sum += base::Held(team);
  return sum;
}

void Moved::Note(const Change& change) { Tab = std::visit(TabOf(), change); }

}  // namespace kestrel::radio

template class kestrel::base::History<kestrel::radio::Frequencies, kestrel::radio::Change, kestrel::radio::Moved>;
