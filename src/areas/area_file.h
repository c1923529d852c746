#pragma once

#include <cstddef>
#include <filesystem>

#include "areas/area.h"
#include "areas/area_changes.h"

// Reading and writing the files of areas (areas/area_format.h). None is held whole: the memory taken is what the areas
// themselves take, and no more than the file has bytes for, whatever its counts say.
namespace kestrel::areas {

enum class AreaFileKind {
  Theater,  ///< "Area File v3", or v2
  Export,   ///< "Area Export File v3"
};

enum class AreaFileState {
  Whole,
  Damaged,  ///< it ends early or has a count below 0; all that it holds has been read
  Refused,  ///< its magic is of another kind; nothing has been read
};

/// What a file holds, as it stands there: FolderIndex counts in these folders and may name none of them.
struct AreaFile {
  base::Table<AreaFolder> AreaFolders;
  base::Table<AreaGroup> AreaGroups;
  AreaFileState State = AreaFileState::Whole;
};

/// Reads a file. What it does not reach is 0 and empty. RuntimeFailure when it cannot be opened or read.
AreaFile ReadAreaFile(const std::filesystem::path& path, AreaFileKind kind);

/// Writes the catalogue as the file of a theater; a failure or a kill leaves the file that was there. RuntimeFailure
/// when it cannot be written.
void WriteAreaFile(const std::filesystem::path& path, const AreaCatalogue& catalogue);

/// Whether there is a group to be exported: one that shows, with its folder.
bool HasExport(const AreaCatalogue& catalogue);
/// Writes the groups that show, each with all its areas, and the folders that they are in, as an export file. As
/// WriteAreaFile.
void WriteAreaExport(const std::filesystem::path& path, const AreaCatalogue& catalogue);

// Both of these give a group that names no folder a place in the folder "Temporary Folder", made unless there is one,
// where the person sees it again. They return the number of such groups.

/// Puts the file in place of what the catalogue holds.
std::size_t ReplaceAreas(AreaCatalogue& catalogue, AreaFile file);
/// Adds the groups at the end, and before them the folders that they are in, whatever their names; one step of the
/// history.
std::size_t AppendAreas(AreaCatalogue& catalogue, AreaHistory& history, AreaFile file);

}  // namespace kestrel::areas
