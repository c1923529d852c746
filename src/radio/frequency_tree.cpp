#include "radio/frequency_tree.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "base/text.h"

namespace kestrel::radio {
namespace {

using Mark = FreqNode::Mark;

Mark MarkOf(bool on) { return on ? Mark::On : Mark::Off; }

/// The number that all of `text` is; `text` is left empty then.
std::size_t TakeNumber(std::string_view& text) {
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return 0;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return number;
}

/// Keys of one number behind a beginning.
struct Beginning {
  std::string_view Text;
  FreqRecord Record;
  std::size_t Part = 0;
};
constexpr std::array<Beginning, 13> beginnings = {{{"FU", FreqRecord::ChannelUHF},
                                                   {"FV", FreqRecord::ChannelVHF},
                                                   {"FI", FreqRecord::ChannelUI},
                                                   {"R", FreqRecord::Team},
                                                   {"A", FreqRecord::Airfield},
                                                   {"UF", FreqRecord::TowerUHF},
                                                   {"VF", FreqRecord::TowerVHF},
                                                   {"TC", FreqRecord::TACAN},
                                                   {"I1", FreqRecord::ILS, 0},
                                                   {"I2", FreqRecord::ILS, 1},
                                                   {"I3", FreqRecord::ILS, 2},
                                                   {"I4", FreqRecord::ILS, 3},
                                                   {"C", FreqRecord::Folder}}};

FreqKey ReadEntryKey(std::string_view key) {
  key.remove_prefix(1);
  const std::size_t entry = TakeNumber(key);
  if (entry == 0 || !key.starts_with("_C")) return {};
  key.remove_prefix(2);
  const std::size_t folder = TakeNumber(key);
  return folder == 0 || !key.empty() ? FreqKey() : FreqKey{FreqRecord::Entry, folder, entry};
}

/// The text of a channel, null when the key names none.
const std::string* ChannelText(const Frequencies& tables, const FreqKey& key) {
  const bool there = key.Index >= 1 && key.Index <= ChannelCount;
  if (key.Record == FreqRecord::ChannelUHF && there) return &tables.CustomUHF[key.Index];
  if (key.Record == FreqRecord::ChannelVHF && there) return &tables.CustomVHF[key.Index];
  return nullptr;
}

/// The flag that a box stands for.
bool Flag(const Airfield& airfield, SelectAllBox box) {
  if (box == SelectAllBox::Airfields) return airfield.VIS;
  if (box == SelectAllBox::TACANs) return airfield.TACAN_VIS;
  return airfield.ILS_VIS[static_cast<std::size_t>(box) - static_cast<std::size_t>(SelectAllBox::ILS1)];
}

class Nodes {
 public:
  /// Adds a node; its number in the list.
  int Add(FreqNode node) {
    list.push_back(std::move(node));
    return static_cast<int>(list.size()) - 1;
  }
  std::vector<FreqNode> Take() { return std::move(list); }

 private:
  std::vector<FreqNode> list;
};

std::string TrimmedText(std::string_view text) { return std::string(base::Trim(text)); }

void AddAirfield(Nodes& nodes, const Airfield& airfield, const std::string& number, int team) {
  const int parent = nodes.Add({.Key = "A" + number,
                                .Text = TrimmedText(airfield.Name),
                                .Parent = team,
                                .Image = FreqImage::Airfield,
                                .Check = MarkOf(airfield.VIS)});
  const auto add = [&](const char* key, std::string text, FreqImage image, bool on) {
    nodes.Add({.Key = key + number, .Text = std::move(text), .Parent = parent, .Image = image, .Check = MarkOf(on)});
  };
  add("UF", TrimmedText(airfield.UHF), FreqValToIcon(airfield.UHF), false);
  add("VF", TrimmedText(airfield.VHF), FreqValToIcon(airfield.VHF), false);
  add("TC", airfield.TACAN + airfield.TACAN_BAND + " [" + std::to_string(airfield.TACANR) + "nm]", FreqImage::TACAN,
      airfield.TACAN_VIS);
  constexpr std::array<const char*, RunwayEndCount> keys = {"I1", "I2", "I3", "I4"};
  for (std::size_t k = 0; k < RunwayEndCount; ++k) {
    add(keys[k], "[" + airfield.ILS_DES[k] + "]: " + airfield.ILS[k], FreqValToIcon(airfield.ILS[k]),
        airfield.ILS_VIS[k]);
  }
}

}  // namespace

FreqKey ReadFreqKey(std::string_view key) {
  if (key == "U" || key == "V" || key == "I") return {.Record = FreqRecord::Root};
  if (key.starts_with('D')) return ReadEntryKey(key);
  for (const Beginning& each : beginnings) {
    if (!key.starts_with(each.Text)) continue;
    std::string_view rest = key.substr(each.Text.size());
    if (rest.empty()) return {};
    const std::size_t number = TakeNumber(rest);
    const bool good = rest.empty() && (each.Record == FreqRecord::Team ? number < TeamCount : number > 0);
    return good ? FreqKey{each.Record, number, each.Part} : FreqKey();
  }
  return {};
}

std::string FolderKey(std::size_t folder) { return "C" + std::to_string(folder); }
std::string EntryKey(std::size_t folder, std::size_t entry) {
  return "D" + std::to_string(entry) + "_" + FolderKey(folder);
}

std::size_t ShownTeam(const Airfield& airfield) { return airfield.TEAM_INDEX < TeamCount ? airfield.TEAM_INDEX : 0; }

std::vector<FreqNode> ChannelNodes(const Frequencies& tables, const DefaultFrequencies& defaults) {
  Nodes nodes;
  const int uhf = nodes.Add({.Key = "U", .Text = "UHF Channels"});
  const int vhf = nodes.Add({.Key = "V", .Text = "VHF Channels"});
  const int ui = nodes.Add({.Key = "I", .Text = "UI Channels"});
  const auto add = [&](int parent, const char* key, const std::string& number, const std::string& named,
                       const std::string& value) {
    nodes.Add({.Key = key + number,
               .Text = "[" + named + ": " + TrimmedText(value),
               .Parent = parent,
               .Image = FreqValToIcon(value)});
  };
  const auto addAll = [&](int parent, const char* key, const Channels& channels) {
    for (std::size_t i = 1; i <= ChannelCount; ++i) {
      const std::string number = std::to_string(i);
      add(parent, key, number, number + "](" + TrimmedText(defaults.ChannelNames[i]) + ")", channels[i]);
    }
  };
  addAll(uhf, "FU", tables.CustomUHF);
  addAll(vhf, "FV", tables.CustomVHF);
  add(ui, "FI", "1", "F1]", tables.CustomF1);
  add(ui, "FI", "2", "F2]", tables.CustomF2);
  return nodes.Take();
}

std::vector<FreqNode> AirportNodes(const Frequencies& tables) {
  std::array<std::size_t, TeamCount> all = {}, marked = {};
  for (const Airfield& airfield : tables.Airfields.Live()) {
    ++all[ShownTeam(airfield)];
    if (airfield.VIS) ++marked[ShownTeam(airfield)];
  }
  Nodes nodes;
  for (std::size_t t = 0; t < TeamCount; ++t) {
    nodes.Add(
        {.Key = "R" + std::to_string(t), .Text = tables.Teams[t], .Check = MarkOf(all[t] > 0 && marked[t] == all[t])});
  }
  for (std::size_t i = 1; i <= tables.Airfields.UpperBound(); ++i) {
    const Airfield& airfield = tables.Airfields[i];
    AddAirfield(nodes, airfield, std::to_string(i), static_cast<int>(ShownTeam(airfield)));
  }
  return nodes.Take();
}

std::vector<FreqNode> FolderNodes(const Frequencies& tables) {
  Nodes nodes;
  for (std::size_t i = 1; i <= tables.FreqFolders.UpperBound(); ++i) {
    const FreqFolder& folder = tables.FreqFolders[i];
    const int parent = nodes.Add({.Key = FolderKey(i), .Text = TrimmedText(folder.Name), .Renames = true});
    for (std::size_t j = 1; j <= folder.Entries.UpperBound(); ++j) {
      const FreqEntry& entry = folder.Entries[j];
      nodes.Add({.Key = EntryKey(i, j),
                 .Text = "[" + TrimmedText(entry.Description) + "]: " + TrimmedText(entry.Value),
                 .Parent = parent,
                 .Image = FreqValToIcon(entry.Value),
                 .Drags = true});
    }
  }
  return nodes.Take();
}

std::string FirstSelected(const Frequencies& tables, FreqTab tab) {
  if (tab == FreqTab::CustomChannels) return "U";
  return tab == FreqTab::CustomFreqs && !tables.FreqFolders.Empty() ? FolderKey(1) : std::string();
}

std::string ClickedValue(const Frequencies& tables, std::string_view key) {
  const FreqKey read = ReadFreqKey(key);
  if (const std::string* channel = ChannelText(tables, read)) return *channel;
  if (read.Record == FreqRecord::TowerUHF || read.Record == FreqRecord::TowerVHF) {
    if (read.Index > tables.Airfields.UpperBound()) return {};
    const Airfield& airfield = tables.Airfields[read.Index];
    return read.Record == FreqRecord::TowerUHF ? airfield.UHF : airfield.VHF;
  }
  if (read.Record != FreqRecord::Entry || read.Index > tables.FreqFolders.UpperBound()) return {};
  const auto& entries = tables.FreqFolders[read.Index].Entries;
  return read.Part <= entries.UpperBound() ? entries[read.Part].Value : std::string();
}

std::string OfferedValue(const Frequencies& tables, std::string_view key) {
  const FreqKey read = ReadFreqKey(key);
  if (read.Record != FreqRecord::ChannelUI) return ClickedValue(tables, key);
  return read.Index == 1 ? tables.CustomF1 : read.Index == 2 ? tables.CustomF2 : std::string();
}

SelectAllBoxes SelectAllMarks(const Frequencies& tables) {
  SelectAllBoxes boxes = {};
  const auto airfields = tables.Airfields.Live();
  for (std::size_t box = 0; box < boxes.size(); ++box) {
    boxes[box] = !airfields.empty() && std::all_of(airfields.begin(), airfields.end(), [box](const Airfield& each) {
      return Flag(each, static_cast<SelectAllBox>(box));
    });
  }
  return boxes;
}

}  // namespace kestrel::radio
