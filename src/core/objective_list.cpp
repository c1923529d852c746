#include "core/objective_list.h"

#include <algorithm>
#include <numeric>

#include "base/text.h"
#include "falcon/campaign.h"
#include "falcon/object_tables.h"
#include "falcon/objective_types.h"
#include "radio/airfield_build.h"
#include "radio/frequencies.h"

namespace kestrel::core {
namespace {

using Kind = ObjectiveTypeChoice::Kind;

// The captions differ from the names of the types in places: this stands.
constexpr ObjectiveTypeChoice TypeChoices[] = {
    {"All Types", Kind::All, 0},    {"Airbase", Kind::One, 1},        {"Airstrip", Kind::One, 2},
    {"Army Base", Kind::One, 3},    {"Beach", Kind::One, 4},          {"Border", Kind::One, 5},
    {"Bridge", Kind::One, 6},       {"Chemical Plant", Kind::One, 7}, {"City", Kind::One, 8},
    {"Headquarters", Kind::One, 9}, {"HART Site", Kind::One, 30},     {"Highway", Kind::One, 26},
    {"Hill Top", Kind::One, 14},    {"Depot", Kind::One, 10},         {"Factory", Kind::One, 11},
    {"Ford", Kind::One, 12},        {"Fortification", Kind::One, 13}, {"Junction", Kind::One, 15},
    {"Nav Beacon", Kind::One, 16},  {"Nuclear Plant", Kind::One, 17}, {"TYPE_PASS", Kind::One, 18},
    {"Port", Kind::One, 19},        {"Power Plant", Kind::One, 20},   {"Radar Site", Kind::One, 21},
    {"Radio Tower", Kind::One, 22}, {"Rail Terminal", Kind::One, 23}, {"Railroad", Kind::One, 24},
    {"Refinery", Kind::One, 25},    {"Sea", Kind::One, 27},           {"Town", Kind::One, 28},
    {"Village", Kind::One, 29},     {"SAM Site", Kind::One, 31},      {"Unknown", Kind::Unknown, 0}};

bool HasChoice(std::uint8_t type) {
  return std::any_of(std::begin(TypeChoices), std::end(TypeChoices), [type](const ObjectiveTypeChoice& choice) {
    return choice.What == Kind::One && choice.Type == type;
  });
}

/// Orders by what `key` gives of a row, from the least or from the most; equal ones stay as they stand.
template <class Keys>
void SortBy(std::vector<std::uint32_t>& order, const Keys& keys, bool descending) {
  std::stable_sort(order.begin(), order.end(), [&keys, descending](std::uint32_t a, std::uint32_t b) {
    return descending ? keys[b] < keys[a] : keys[a] < keys[b];
  });
}

}  // namespace

std::span<const ObjectiveTypeChoice> ObjectiveTypeChoices() { return TypeChoices; }

ObjectiveList::ObjectiveList(const CampaignData& data) : order(data.World.Objectives.size()) {
  for (std::size_t i = 0; i < teams.size(); ++i) {
    const std::string& name = data.World.Teams[i].Name;
    teams[i] = name.empty() ? radio::DefaultTeam(i) : name;
  }
  const falcon::ObjectiveNames names(data.World);
  rows.reserve(order.size());
  for (const falcon::Objective& one : data.World.Objectives) {
    ImportedObjective row{.Team = one.Owner, .ObjIndex = rows.size()};
    const falcon::EntityClass* const thing = falcon::ClassAt(data.Tables, one.ClassIndex);
    if (thing) row.Type = thing->Type;
    row.TypeName = falcon::ObjectiveTypeName(row.Type);
    row.Name = names.Of(one, row.TypeName);
    if (row.Name.empty()) row.Name = radio::NoAirfieldName;
    const falcon::ObjectiveClass* const known = falcon::ObjectiveClassAt(data.Tables, one.ClassIndex);
    if (known) row.Features = known->FeatureCount;
    rows.push_back(std::move(row));
  }
  std::iota(order.begin(), order.end(), 0U);
  shown = order;
}

bool ObjectiveList::IsShown(const ImportedObjective& row) const {
  if (team && row.Team != *team) return false;
  const ObjectiveTypeChoice& choice = TypeChoices[types];
  switch (choice.What) {
    case Kind::All:
      return true;
    case Kind::One:
      return row.Type == choice.Type;
    case Kind::Unknown:
      break;
  }
  return !HasChoice(row.Type);
}

void ObjectiveList::Show() {
  shown.clear();
  std::copy_if(order.begin(), order.end(), std::back_inserter(shown),
               [this](std::uint32_t index) { return IsShown(rows[index]); });
}

void ObjectiveList::ShowTeam(std::optional<std::uint8_t> only) {
  team = only;
  Show();
}

void ObjectiveList::ShowTypes(std::size_t choice) {
  types = std::min(choice, std::size(TypeChoices) - 1);
  Show();
}

void ObjectiveList::Sort(ObjectiveColumn column, bool descending) {
  if (column == ObjectiveColumn::Features) {
    std::vector<std::int32_t> counts;
    for (const ImportedObjective& row : rows) counts.push_back(row.Features);
    SortBy(order, counts, descending);
  } else {
    std::vector<std::string> words;
    words.reserve(rows.size());
    for (const ImportedObjective& row : rows) {
      words.push_back(base::Lower(column == ObjectiveColumn::Name   ? row.Name
                                  : column == ObjectiveColumn::Type ? row.TypeName
                                                                    : TeamOf(row)));
    }
    SortBy(order, words, descending);
  }
  Show();
}

void ObjectiveList::Select(std::size_t index, bool selected) {
  if (rows[index].Selected == selected) return;
  rows[index].Selected = selected;
  selectedCount = selected ? selectedCount + 1 : selectedCount - 1;
}

void ObjectiveList::SelectShown(bool selected) {
  for (const std::uint32_t index : shown) Select(index, selected);
}

bool ObjectiveList::AllShownSelected() const {
  const auto selected = [this](std::uint32_t index) { return rows[index].Selected; };
  return !shown.empty() && std::all_of(shown.begin(), shown.end(), selected);
}

std::vector<std::size_t> ObjectiveList::Selected() const {
  std::vector<std::size_t> chosen;
  chosen.reserve(selectedCount);
  std::copy_if(order.begin(), order.end(), std::back_inserter(chosen),
               [this](std::uint32_t index) { return rows[index].Selected; });
  return chosen;
}

}  // namespace kestrel::core
