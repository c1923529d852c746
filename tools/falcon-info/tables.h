#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "falcon-info/context.h"
#include "falcon/object_tables.h"
#include "falcon/world.h"

// The simulator's database of objects.
namespace kestrel::falconinfo {

/// The tables that were found in some folders.
struct Database {
  struct Source {
    std::string_view Table;      ///< "ct"
    std::filesystem::path File;  ///< empty: in none of the folders
    std::string Error;           ///< why it could not be read; empty when it was
  };
  falcon::ObjectTables Tables;
  std::vector<Source> Sources;

  /// How many features the objectives of a class have; as falcon::FeatureCounts.
  std::optional<std::size_t> FeaturesOf(std::uint16_t classIndex) const;
};

/// Reads the tables; of each the first folder counts that has it. What cannot be read is told in its source.
Database LoadDatabase(const std::vector<std::filesystem::path>& folders);

/// {"tables": [...], "records": [...], "classes": [...]}: what was found, the records and classes that were asked for.
/// Tables that could not be read count as failures.
void TellDatabase(Context& context, const Database& database, Json& into);

/// What a class of objectives is, into its report: the record, its features, lists of points and runways.
void TellObjectiveClass(const falcon::ObjectTables& tables, const falcon::ObjectiveClass& objective, Json& into);
/// A class of objectives with its features, lists of points and runways.
Json ClassReport(const falcon::ObjectTables& tables, std::int32_t classIndex);

/// Whether that is the name of a table that records can be asked of.
bool IsTableName(std::string_view name);
/// The names of all of them, with commas between.
std::string TableNames();

/// A file with one table, by its name: Falcon4.OCD.
bool IsTableFile(const std::filesystem::path& file);
Json TableReport(Context& context, const std::filesystem::path& file);
/// A folder of tables.
bool IsObjectFolder(const std::filesystem::path& folder);
Json ObjectFolderReport(Context& context, const std::filesystem::path& folder);
/// The folder of a class of objectives, ObjectiveRelatedData\OCD_00834.
bool IsClassFolder(const std::filesystem::path& folder);
Json ClassFolderReport(Context& context, const std::filesystem::path& folder);

}  // namespace kestrel::falconinfo
