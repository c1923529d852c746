#include "radio/tuned_rows.h"

#include "base/text.h"

namespace kestrel::radio {
namespace {

/// The text that is compared; empty for what is no frequency.
std::string_view Digits(std::string_view text) {
  text = base::Trim(text);
  const bool frequency = text.find_first_not_of("0123456789") == std::string_view::npos &&
                         text.find_first_not_of('0') != std::string_view::npos;
  return frequency ? text : std::string_view();
}

/// Gathers the rows whose values the radios have.
class Gathering {
 public:
  explicit Gathering(const VoiceStatus& status) : uhf(Digits(status.UHF)), vhf(Digits(status.VHF)) {}

  bool Idle() const { return uhf.empty() && vhf.empty(); }
  /// `key` is a procedure: most rows have no need of one.
  template <class Key>
  void Look(std::string_view value, Key key) {
    const std::string_view digits = Digits(value);
    if (digits.empty() || (digits != uhf && digits != vhf)) return;
    Rows.push_back({.Key = key(), .UHF = digits == uhf, .VHF = digits == vhf});
  }

  std::vector<TunedRow> Rows;

 private:
  std::string_view uhf, vhf;
};

void LookAtChannels(const Frequencies& tables, Gathering& found) {
  const auto numbered = [](const char* beginning, std::size_t i) {
    return [=] { return beginning + std::to_string(i); };
  };
  for (std::size_t i = 1; i <= ChannelCount; ++i) found.Look(tables.CustomUHF[i], numbered("FU", i));
  for (std::size_t i = 1; i <= ChannelCount; ++i) found.Look(tables.CustomVHF[i], numbered("FV", i));
  found.Look(tables.CustomF1, numbered("FI", 1));
  found.Look(tables.CustomF2, numbered("FI", 2));
}

void LookAtTowers(const Frequencies& tables, Gathering& found) {
  for (std::size_t i = 1; i <= tables.Airfields.UpperBound(); ++i) {
    found.Look(tables.Airfields[i].UHF, [i] { return "UF" + std::to_string(i); });
    found.Look(tables.Airfields[i].VHF, [i] { return "VF" + std::to_string(i); });
  }
}

void LookAtEntries(const Frequencies& tables, Gathering& found) {
  for (std::size_t i = 1; i <= tables.FreqFolders.UpperBound(); ++i) {
    const base::Table<FreqEntry>& entries = tables.FreqFolders[i].Entries;
    for (std::size_t j = 1; j <= entries.UpperBound(); ++j) {
      found.Look(entries[j].Value, [i, j] { return EntryKey(i, j); });
    }
  }
}

}  // namespace

std::vector<TunedRow> TunedRows(const Frequencies& tables, FreqTab tab, const VoiceStatus& status) {
  Gathering found(status);
  if (found.Idle()) return {};
  if (tab == FreqTab::CustomChannels) LookAtChannels(tables, found);
  if (tab == FreqTab::Airports) LookAtTowers(tables, found);
  if (tab == FreqTab::CustomFreqs) LookAtEntries(tables, found);
  return std::move(found.Rows);
}

std::string TunedWords(const TunedRow& row) {
  if (row.UHF && row.VHF) return "on UHF and VHF";
  return row.UHF ? "on UHF" : "on VHF";
}

}  // namespace kestrel::radio
