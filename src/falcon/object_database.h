#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "base/failure.h"
#include "falcon/object_tables.h"

// The database of what stands on the ground, found on the disk in whatever form a generation has it.
namespace kestrel::falcon {

/// A table that is not there or cannot be read.
class TableFailure : public base::RuntimeFailure {
 public:
  TableFailure(std::string kind, const std::string& reason) : RuntimeFailure(reason), Kind(std::move(kind)) {}
  std::string Kind;  ///< CT, OCD, FED, PHD or PD
};

struct ObjectDatabase {
  ObjectTables Tables;
  std::vector<std::string> Notes;  ///< why the classes of buildings, which may be missing, are; else empty
};

/// Reads all tables. Of each the first of `folders` counts that has it, and of the forms that it has there the newest:
/// folders of objective classes (ObjectiveRelatedData), XML, binary; large points before the plain ones. Where classes
/// of objectives stand in folders, each is taken from the first database that has its folder, with the buildings,
/// headers and points in it. TableFailure for the first table that is not there or cannot be read.
ObjectDatabase LoadObjectDatabase(std::span<const std::filesystem::path> folders);

}  // namespace kestrel::falcon
