#include "falcon/objective_folders.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <exception>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"
#include "falcon/data_file.h"
#include "falcon/object_database.h"
#include "falcon/xml_object_tables.h"

namespace kestrel::falcon {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view RelatedData = "ObjectiveRelatedData";
constexpr std::size_t MaxFolderFileBytes = std::size_t{4} << 20;
/// Of a table that the folders fill together.
constexpr std::size_t MaxRecords = std::size_t{1} << 22;

/// What stands in a folder, by name, so that of several spellings always the same one comes first.
std::vector<fs::path> ListFolder(const fs::path& folder) {
  std::vector<fs::path> entries;
  std::error_code failure;
  for (fs::directory_iterator entry(folder, failure); !failure && entry != fs::directory_iterator();
       entry.increment(failure)) {
    entries.push_back(entry->path());
  }
  std::sort(entries.begin(), entries.end());
  return entries;
}

/// The number in the name "OCD_00834" of a folder; below 0 for any other.
std::int32_t NumberOfFolder(std::string_view name) {
  constexpr std::string_view head = "OCD_";
  if (name.size() != head.size() + 5 || !base::SameNoCase(name.substr(0, head.size()), head)) return -1;
  std::int32_t number = -1;
  const auto [end, error] = std::from_chars(name.data() + head.size(), name.data() + name.size(), number);
  return error == std::errc() && end == name.data() + name.size() ? number : -1;
}

/// `folder` is one of a class, its number being the end of its name.
ObjectiveFiles FilesOf(const fs::path& folder) {
  const std::string digits = base::NameForMessage(folder).substr(3);
  ObjectiveFiles files;
  const std::pair<std::string, fs::path*> wanted[] = {{"OCD" + digits + ".XML", &files.Class},
                                                      {"FED" + digits + ".XML", &files.Features},
                                                      {"PHD" + digits + ".XML", &files.Headers},
                                                      {"PDX" + digits + ".XML", &files.Points}};
  for (const fs::path& entry : ListFolder(folder)) {
    const std::string name = base::NameForMessage(entry);
    for (const auto& [file, place] : wanted) {
      if (place->empty() && base::SameNoCase(name, file)) *place = entry;
    }
  }
  return files;
}

/// What a reader makes of a file; nothing when it is not there. TableFailure of `kind` when it cannot be read.
template <class Read>
auto ReadFile(const char* kind, const fs::path& file, const Read& read) {
  try {
    return file.empty() ? decltype(read(DataFile()))() : read(ReadDataFile(file, MaxFolderFileBytes));
  } catch (const std::exception& failure) {
    throw TableFailure(kind, failure.what());
  }
}

template <class Record>
std::int32_t Append(const char* kind, std::vector<Record> records, std::vector<Record>& table) {
  const auto first = static_cast<std::int32_t>(table.size());
  if (records.size() > MaxRecords - table.size()) throw TableFailure(kind, "its folders have too many records");
  table.insert(table.end(), std::make_move_iterator(records.begin()), std::make_move_iterator(records.end()));
  return first;
}

void ReadClass(std::int32_t number, const ObjectiveFiles& files, ObjectTables& tables) {
  ObjectiveClass& objective = tables.Objectives[static_cast<std::size_t>(number)];
  objective = ReadFile("OCD", files.Class, ReadXmlObjectiveClass);
  std::vector<FeatureEntry> features = ReadFile("FED", files.Features, ReadXmlFeatureEntries);
  std::vector<PointHeader> headers = ReadFile("PHD", files.Headers, ReadXmlPointHeaders);
  std::vector<ObjectPoint> points = ReadFile("PD", files.Points, ReadXmlPoints);

  objective.FeatureCount = static_cast<std::int32_t>(features.size());
  objective.FirstFeature = Append("FED", std::move(features), tables.Features);
  const auto pointCount = static_cast<std::int32_t>(points.size());
  const std::int32_t firstPoint = Append("PD", std::move(points), tables.Points);
  const auto firstHeader = static_cast<std::int32_t>(tables.Headers.size());
  for (std::size_t n = 0; n < headers.size(); ++n) {
    PointHeader& header = headers[n];
    const bool inside = header.FirstPoint >= 0 && header.FirstPoint < pointCount;
    header.PointCount = inside ? std::min(header.PointCount, pointCount - header.FirstPoint) : 0;
    header.FirstPoint = inside ? header.FirstPoint + firstPoint : 0;
    header.Objective = number;
    header.Next = n + 1 < headers.size() ? firstHeader + static_cast<std::int32_t>(n) + 1 : 0;
  }
  if (!headers.empty()) objective.FirstHeader = firstHeader;
  Append("PHD", std::move(headers), tables.Headers);
}

}  // namespace

bool HasObjectiveFolders(const fs::path& folder) {
  const std::vector<fs::path> entries = ListFolder(base::FindFile(folder, RelatedData));
  return std::any_of(entries.begin(), entries.end(), [](const fs::path& entry) {
    return NumberOfFolder(base::NameForMessage(entry)) >= 0 && !FilesOf(entry).Class.empty();
  });
}

std::map<std::int32_t, ObjectiveFiles> FindObjectiveFolders(std::span<const fs::path> folders) {
  std::map<std::int32_t, ObjectiveFiles> classes;
  for (const fs::path& folder : folders) {
    for (const fs::path& entry : ListFolder(base::FindFile(folder, RelatedData))) {
      const std::int32_t number = NumberOfFolder(base::NameForMessage(entry));
      if (number < 0 || classes.contains(number)) continue;
      ObjectiveFiles files = FilesOf(entry);
      if (!files.Class.empty()) classes.emplace(number, std::move(files));
    }
  }
  return classes;
}

void ReadObjectiveFolders(const std::map<std::int32_t, ObjectiveFiles>& classes, ObjectTables& tables) {
  // No header can be the one with the number 0, which means none.
  tables.Headers.assign(1, {});
  tables.Features.clear();
  tables.Points.clear();
  tables.Objectives.assign(classes.empty() ? 0 : static_cast<std::size_t>(classes.rbegin()->first) + 1, {});
  for (const auto& [number, files] : classes) ReadClass(number, files, tables);
}

}  // namespace kestrel::falcon
