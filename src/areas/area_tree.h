#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "areas/area.h"
#include "areas/area_changes.h"

// What is done to the folders and groups of the tree. Each procedure is one step of the history and returns the key of
// the node to be selected: "C" and the index of a folder, "D" and that of a group. A key that names nothing, or a node
// of the other kind where one kind is asked for, changes nothing.
namespace kestrel::areas {

/// A node of the tree.
struct Node {
  bool IsFolder = false;  ///< otherwise a group
  std::size_t Index = 0;  ///< from 1
};

std::string FolderKey(std::size_t index);
std::string GroupKey(std::size_t index);
/// The node of a key; nothing when the catalogue has none of that index.
std::optional<Node> NodeOf(const AreaCatalogue& catalogue, std::string_view key);

/// Whether the folder that a group names is there; a group without one stands nowhere in the tree.
bool HasFolder(const AreaCatalogue& catalogue, const AreaGroup& group);
/// Whether any group is in folder `index`: its deletion is asked about.
bool HasGroups(const AreaCatalogue& catalogue, std::size_t index);

/// Where a node or area goes among its neighbours.
enum class Way { Up, Down, Top, Bottom };

/// The index of the folder of that name in any case; it is made when there is none. An empty name becomes
/// "Temporary Folder".
std::int32_t FindOrAddFolder(AreaCatalogue& catalogue, AreaHistory& history, std::string& name);
/// The index of the first group of that name in any case, whatever its folder; it is made in that folder when there is
/// none.
std::int32_t FindOrAddGroup(AreaCatalogue& catalogue, AreaHistory& history, const std::string& name,
                            std::int32_t folderIndex);
/// Makes a group "Temp Area " with the lowest number from 1 that no group has; its index.
std::int32_t AddTempGroup(AreaCatalogue& catalogue, AreaHistory& history, std::int32_t folderIndex);

/// Makes "New Folder". `selected` is the key of the node that is selected before.
std::string NewFolder(AreaCatalogue& catalogue, AreaHistory& history, const std::string& selected = {});
/// Makes "New Area Group" in the selected folder, or in that of the selected group. Empty when nothing is selected.
std::string NewGroup(AreaCatalogue& catalogue, AreaHistory& history, const std::string& selected);
/// Gives a folder or group its name; an empty one is a name too.
std::string RenameNode(AreaCatalogue& catalogue, AreaHistory& history, const std::string& key, const std::string& name);
/// Takes a folder out with all its groups. Always empty: nothing is to be selected.
std::string DeleteFolder(AreaCatalogue& catalogue, AreaHistory& history, const std::string& key);
/// Takes a group out with all its areas. Always empty.
std::string DeleteGroup(AreaCatalogue& catalogue, AreaHistory& history, const std::string& key);
/// Moves a folder among the folders, or a group among those of its folder. Empty when it stands there already.
std::string MoveNode(AreaCatalogue& catalogue, AreaHistory& history, const std::string& key, Way way);
/// Puts a group into a folder; its own changes nothing. Empty unless a group was dropped on a folder that is not its
/// own.
std::string DropNode(AreaCatalogue& catalogue, AreaHistory& history, const std::string& dragged,
                     const std::string& target);
/// Gives a folder or group its check mark.
std::string CheckNode(AreaCatalogue& catalogue, AreaHistory& history, const std::string& key, bool checked);
/// Gives all nodes of the tree the same check mark.
void CheckAllNodes(AreaCatalogue& catalogue, AreaHistory& history, bool checked);

}  // namespace kestrel::areas
