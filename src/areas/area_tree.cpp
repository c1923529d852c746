#include "areas/area_tree.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <utility>

#include "base/text.h"

namespace kestrel::areas {
namespace {

constexpr Flag FlagOf(bool on) { return on ? On : Off; }

bool IsIn(const AreaGroup& group, std::size_t folder) { return std::cmp_equal(group.FolderIndex, folder); }

std::optional<std::size_t> FolderOf(const AreaCatalogue& catalogue, const std::string& key) {
  const std::optional<Node> node = NodeOf(catalogue, key);
  return node && node->IsFolder ? std::optional(node->Index) : std::nullopt;
}

std::optional<std::size_t> GroupOf(const AreaCatalogue& catalogue, const std::string& key) {
  const std::optional<Node> node = NodeOf(catalogue, key);
  return node && !node->IsFolder ? std::optional(node->Index) : std::nullopt;
}

/// Appends a folder or group; its index.
template <class T>
std::size_t Append(OneStep& step, const base::Table<T>& table, T item) {
  const std::size_t index = table.UpperBound() + 1;
  Insert<T> insert;
  insert.Items.push_back({index, std::move(item)});
  step.Do(std::move(insert));
  return index;
}

AreaGroup GroupNamed(std::string name, std::int32_t folderIndex) {
  return {.Name = std::move(name), .FolderIndex = folderIndex};
}

/// Gives each group the folder index that `as` makes of the one it has.
template <class As>
void Reindex(const AreaCatalogue& catalogue, OneStep& step, As as) {
  Put<&AreaGroup::FolderIndex> put;
  for (std::size_t group = 1; group <= catalogue.AreaGroups.UpperBound(); ++group) {
    const std::int32_t present = catalogue.AreaGroups[group].FolderIndex;
    const std::int32_t becomes = as(present);
    if (becomes != present) put.Values.push_back({group, becomes});
  }
  if (!put.Values.empty()) step.Do(std::move(put));
}

/// Where a folder comes to stand; 0 when it cannot go that way.
std::size_t FolderTarget(std::size_t folder, std::size_t count, Way way) {
  switch (way) {
    case Way::Up:
      return folder - 1;
    case Way::Down:
      return folder < count ? folder + 1 : 0;
    case Way::Top:
      return 1;
    case Way::Bottom:
      return count;
  }
  return 0;
}

std::string MoveFolder(AreaCatalogue& catalogue, AreaHistory& history, std::size_t from, Way way) {
  const std::size_t to = FolderTarget(from, catalogue.AreaFolders.UpperBound(), way);
  if (to == 0 || to == from) return {};
  OneStep step(catalogue, history, "move of " + catalogue.AreaFolders[from].Name);
  step.Do(Move<AreaFolder>{0, from, to});
  const auto was = static_cast<std::int32_t>(from);
  const auto is = static_cast<std::int32_t>(to);
  Reindex(catalogue, step, [&](std::int32_t present) {
    if (present == was) return is;
    // To the top any index below rises and to the bottom any above drops, that of no folder too: this stands.
    if (way == Way::Top) return present < was ? present + 1 : present;
    if (way == Way::Bottom) return present > was ? present - 1 : present;
    return present == is ? was : present;
  });
  step.Select(FolderKey(from), FolderKey(to));
  return FolderKey(to);
}

/// The next group of the same folder before `group`, or behind it; 0 when there is none.
std::size_t NeighbourOf(const AreaCatalogue& catalogue, std::size_t group, bool up) {
  const base::Table<AreaGroup>& groups = catalogue.AreaGroups;
  const std::int32_t folder = groups[group].FolderIndex;
  for (std::size_t at = up ? group - 1 : group + 1; at >= 1 && at <= groups.UpperBound(); at += up ? -1 : 1) {
    if (groups[at].FolderIndex == folder) return at;
  }
  return 0;
}

std::string MoveGroup(AreaCatalogue& catalogue, AreaHistory& history, std::size_t from, Way way) {
  const bool up = way == Way::Up || way == Way::Top;
  const bool once = way == Way::Up || way == Way::Down;
  OneStep step(catalogue, history, "move of " + catalogue.AreaGroups[from].Name);
  std::size_t at = from;
  for (std::size_t next = NeighbourOf(catalogue, at, up); next != 0; next = NeighbourOf(catalogue, at, up)) {
    step.Do(SwapGroups{at, next});
    at = next;
    if (once) break;
  }
  if (at == from) return {};
  step.Select(GroupKey(from), GroupKey(at));
  return GroupKey(at);
}

}  // namespace

std::string FolderKey(std::size_t index) { return "C" + std::to_string(index); }

std::string GroupKey(std::size_t index) { return "D" + std::to_string(index); }

std::optional<Node> NodeOf(const AreaCatalogue& catalogue, std::string_view key) {
  if (key.empty() || (key.front() != 'C' && key.front() != 'D')) return std::nullopt;
  Node node{key.front() == 'C', 0};
  const char* end = key.data() + key.size();
  const auto [rest, failure] = std::from_chars(key.data() + 1, end, node.Index);
  const std::size_t count = node.IsFolder ? catalogue.AreaFolders.UpperBound() : catalogue.AreaGroups.UpperBound();
  if (failure != std::errc() || rest != end || node.Index < 1 || node.Index > count) return std::nullopt;
  return node;
}

bool HasFolder(const AreaCatalogue& catalogue, const AreaGroup& group) {
  return group.FolderIndex >= 1 && std::cmp_less_equal(group.FolderIndex, catalogue.AreaFolders.UpperBound());
}

bool HasGroups(const AreaCatalogue& catalogue, std::size_t index) {
  return std::ranges::any_of(catalogue.AreaGroups.Live(),
                             [index](const AreaGroup& group) { return IsIn(group, index); });
}

std::int32_t FindOrAddFolder(AreaCatalogue& catalogue, AreaHistory& history, std::string& name) {
  if (name.empty()) name = "Temporary Folder";
  const base::Table<AreaFolder>& folders = catalogue.AreaFolders;
  for (std::size_t folder = 1; folder <= folders.UpperBound(); ++folder) {
    if (base::SameNoCase(folders[folder].Name, name)) return static_cast<std::int32_t>(folder);
  }
  OneStep step(catalogue, history, "new folder " + name);
  const std::size_t folder = Append(step, folders, AreaFolder{name, On});
  step.Select({}, FolderKey(folder));
  return static_cast<std::int32_t>(folder);
}

std::int32_t FindOrAddGroup(AreaCatalogue& catalogue, AreaHistory& history, const std::string& name,
                            std::int32_t folderIndex) {
  const base::Table<AreaGroup>& groups = catalogue.AreaGroups;
  for (std::size_t group = 1; group <= groups.UpperBound(); ++group) {
    if (base::SameNoCase(groups[group].Name, name)) return static_cast<std::int32_t>(group);
  }
  OneStep step(catalogue, history, "new group " + name);
  const std::size_t group = Append(step, groups, GroupNamed(name, folderIndex));
  step.Select({}, GroupKey(group));
  return static_cast<std::int32_t>(group);
}

std::int32_t AddTempGroup(AreaCatalogue& catalogue, AreaHistory& history, std::int32_t folderIndex) {
  std::set<std::string> taken;
  for (const AreaGroup& group : catalogue.AreaGroups.Live()) taken.insert(base::Upper(group.Name));
  std::size_t number = 1;
  while (taken.contains("TEMP AREA " + std::to_string(number))) ++number;

  const std::string name = "Temp Area " + std::to_string(number);
  OneStep step(catalogue, history, "new group " + name);
  const std::size_t group = Append(step, catalogue.AreaGroups, GroupNamed(name, folderIndex));
  step.Select({}, GroupKey(group));
  return static_cast<std::int32_t>(group);
}

std::string NewFolder(AreaCatalogue& catalogue, AreaHistory& history, const std::string& selected) {
  OneStep step(catalogue, history, "new folder");
  const std::string key = FolderKey(Append(step, catalogue.AreaFolders, AreaFolder{"New Folder", On}));
  step.Select(selected, key);
  return key;
}

std::string NewGroup(AreaCatalogue& catalogue, AreaHistory& history, const std::string& selected) {
  const std::optional<Node> node = NodeOf(catalogue, selected);
  if (!node) return {};
  const std::int32_t folder =
      node->IsFolder ? static_cast<std::int32_t>(node->Index) : catalogue.AreaGroups[node->Index].FolderIndex;
  OneStep step(catalogue, history, "new group");
  const std::string key = GroupKey(Append(step, catalogue.AreaGroups, GroupNamed("New Area Group", folder)));
  step.Select(selected, key);
  return key;
}

std::string RenameNode(AreaCatalogue& catalogue, AreaHistory& history, const std::string& key,
                       const std::string& name) {
  const std::optional<Node> node = NodeOf(catalogue, key);
  if (!node) return {};
  const std::string& present =
      node->IsFolder ? catalogue.AreaFolders[node->Index].Name : catalogue.AreaGroups[node->Index].Name;
  if (present == name) return key;
  OneStep step(catalogue, history, "rename of " + present);
  step.Select(key, key);
  if (node->IsFolder) {
    step.Do(Put<&AreaFolder::Name>{0, {{node->Index, name}}});
  } else {
    step.Do(Put<&AreaGroup::Name>{0, {{node->Index, name}}});
  }
  return key;
}

std::string DeleteFolder(AreaCatalogue& catalogue, AreaHistory& history, const std::string& key) {
  const std::optional<std::size_t> folder = FolderOf(catalogue, key);
  if (!folder) return {};
  OneStep step(catalogue, history, "delete of " + catalogue.AreaFolders[*folder].Name);
  step.Select(key, {});
  Take<AreaGroup> groups;
  for (std::size_t group = 1; group <= catalogue.AreaGroups.UpperBound(); ++group) {
    if (IsIn(catalogue.AreaGroups[group], *folder)) groups.At.push_back(group);
  }
  if (!groups.At.empty()) step.Do(std::move(groups));
  Reindex(catalogue, step,
          [&](std::int32_t present) { return std::cmp_greater(present, *folder) ? present - 1 : present; });
  step.Do(Take<AreaFolder>{0, {*folder}});
  return {};
}

std::string DeleteGroup(AreaCatalogue& catalogue, AreaHistory& history, const std::string& key) {
  const std::optional<std::size_t> group = GroupOf(catalogue, key);
  if (!group) return {};
  OneStep step(catalogue, history, "delete of " + catalogue.AreaGroups[*group].Name);
  step.Select(key, {});
  step.Do(Take<AreaGroup>{0, {*group}});
  return {};
}

std::string MoveNode(AreaCatalogue& catalogue, AreaHistory& history, const std::string& key, Way way) {
  const std::optional<Node> node = NodeOf(catalogue, key);
  if (!node) return {};
  return node->IsFolder ? MoveFolder(catalogue, history, node->Index, way)
                        : MoveGroup(catalogue, history, node->Index, way);
}

std::string DropNode(AreaCatalogue& catalogue, AreaHistory& history, const std::string& dragged,
                     const std::string& target) {
  const std::optional<std::size_t> group = GroupOf(catalogue, dragged);
  const std::optional<std::size_t> folder = FolderOf(catalogue, target);
  if (!group || !folder || IsIn(catalogue.AreaGroups[*group], *folder)) return {};
  OneStep step(catalogue, history, "move of " + catalogue.AreaGroups[*group].Name);
  step.Select(dragged, dragged);
  step.Do(Put<&AreaGroup::FolderIndex>{0, {{*group, static_cast<std::int32_t>(*folder)}}});
  return dragged;
}

std::string CheckNode(AreaCatalogue& catalogue, AreaHistory& history, const std::string& key, bool checked) {
  const std::optional<Node> node = NodeOf(catalogue, key);
  if (!node) return {};
  const Flag flag = FlagOf(checked);
  const std::string word = checked ? "check of " : "uncheck of ";
  if (node->IsFolder) {
    const AreaFolder& folder = catalogue.AreaFolders[node->Index];
    OneStep step(catalogue, history, word + folder.Name);
    step.Select(key, key);
    if (folder.Visible != flag) step.Do(Put<&AreaFolder::Visible>{0, {{node->Index, flag}}});
  } else {
    const AreaGroup& group = catalogue.AreaGroups[node->Index];
    OneStep step(catalogue, history, word + group.Name);
    step.Select(key, key);
    if (group.Visible != flag) step.Do(Put<&AreaGroup::Visible>{0, {{node->Index, flag}}});
  }
  return key;
}

void CheckAllNodes(AreaCatalogue& catalogue, AreaHistory& history, bool checked) {
  const Flag flag = FlagOf(checked);
  Put<&AreaFolder::Visible> folders;
  for (std::size_t folder = 1; folder <= catalogue.AreaFolders.UpperBound(); ++folder) {
    if (catalogue.AreaFolders[folder].Visible != flag) folders.Values.push_back({folder, flag});
  }
  Put<&AreaGroup::Visible> groups;
  for (std::size_t index = 1; index <= catalogue.AreaGroups.UpperBound(); ++index) {
    const AreaGroup& group = catalogue.AreaGroups[index];
    if (HasFolder(catalogue, group) && group.Visible != flag) groups.Values.push_back({index, flag});
  }
  OneStep step(catalogue, history, checked ? "check of all" : "uncheck of all");
  if (!folders.Values.empty()) step.Do(std::move(folders));
  if (!groups.Values.empty()) step.Do(std::move(groups));
}

}  // namespace kestrel::areas
