#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <span>

#include "falcon/object_tables.h"

// Objectives as newer simulators have them: a folder for each class, with its own buildings, headers and points, all
// numbered from 0.
namespace kestrel::falcon {

/// The files of a class; what is empty is not there.
struct ObjectiveFiles {
  std::filesystem::path Class, Features, Headers, Points;
};

/// Whether a folder of objects has the folder of any class.
bool HasObjectiveFolders(const std::filesystem::path& folder);

/// Of each class, by its number, the files of the first of `folders` that has it. A folder without the file of the
/// class counts as none.
std::map<std::int32_t, ObjectiveFiles> FindObjectiveFolders(std::span<const std::filesystem::path> folders);

/// Reads them all into Objectives, Features, Headers and Points of `tables`, as if they had always been of one table
/// each; headers are chained in the order of their file, and points beyond the class's own are not told. TableFailure
/// for the first file that cannot be read.
void ReadObjectiveFolders(const std::map<std::int32_t, ObjectiveFiles>& classes, ObjectTables& tables);

}  // namespace kestrel::falcon
