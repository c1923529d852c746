#include "falcon-info/companions.h"

#include <algorithm>
#include <system_error>

#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"
#include "falcon/data_file.h"
#include "falcon/installations.h"

namespace kestrel::falconinfo {
namespace fs = std::filesystem;
namespace {

constexpr const char* ListBelowRoot = "Terrdata/theaterdefinition/theater.lst";

/// The list of theaters as BMS has it.
std::optional<Installation> BmsAt(const fs::path& folder) {
  for (const fs::path& root : {base::FindFile(folder, "Data"), folder}) {
    fs::path list = base::FindFile(root, ListBelowRoot);
    if (!base::FileExists(list)) continue;
    const bool isData = root == folder && base::SameNoCase(base::NameForMessage(folder), "Data");
    return Installation{isData ? folder.parent_path() : folder, root, std::move(list)};
  }
  return std::nullopt;
}

std::optional<Installation> OtherAt(const fs::path& folder) {
  if (!IsFolder(base::FindFile(folder, "Terrdata"))) return std::nullopt;
  fs::path list = base::FindFile(folder, "theater.lst");
  if (!base::FileExists(list)) list.clear();
  return Installation{folder, folder, std::move(list)};
}

/// The nearest folder from `path` upward of which `find` makes something.
template <class Find>
std::optional<Installation> Upward(const fs::path& path, const Find& find) {
  for (fs::path folder = path;; folder = folder.parent_path()) {
    if (std::optional<Installation> found = find(folder)) return found;
    if (folder == folder.parent_path()) return std::nullopt;
  }
}

void Add(std::vector<fs::path>& folders, const fs::path& folder) {
  if (!folder.empty() && std::find(folders.begin(), folders.end(), folder) == folders.end()) folders.push_back(folder);
}

/// The theater whose campaigns stand in `folder`.
std::optional<Theater> TheaterOf(const Installation& installation, const fs::path& folder) {
  for (const fs::path& file : DefinitionsOf(installation)) {
    try {
      Theater theater = ReadTheater(file);
      std::error_code failure;
      const fs::path campaigns = DirOf(installation, theater, &falcon::TheaterDefinition::CampaignDir).Folder;
      if (fs::equivalent(campaigns, folder, failure)) return theater;
    } catch (const base::RuntimeFailure&) {
      continue;  // told where the list itself is
    }
  }
  return std::nullopt;
}

}  // namespace

bool IsFolder(const fs::path& path) {
  std::error_code failure;
  return fs::is_directory(path, failure);
}

std::string LowerNameOf(const fs::path& file) { return base::Lower(base::NameForMessage(file)); }

std::string EndingOf(const fs::path& file) {
  const std::string name = LowerNameOf(file);
  const std::size_t point = name.rfind('.');
  return point == std::string::npos ? std::string() : name.substr(point);
}

std::vector<fs::path> FilesOf(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code failure;
  for (fs::directory_iterator entry(folder, failure); !failure && entry != fs::directory_iterator();
       entry.increment(failure)) {
    if (base::FileExists(entry->path())) files.push_back(entry->path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::optional<Installation> InstallationAt(const fs::path& folder) {
  std::optional<Installation> found = BmsAt(folder);
  return found ? found : OtherAt(folder);
}

std::optional<Installation> InstallationAround(const fs::path& path) {
  std::error_code failure;
  const fs::path whole = fs::absolute(path, failure).lexically_normal();
  std::optional<Installation> found = Upward(whole, BmsAt);
  return found ? found : Upward(whole, OtherAt);
}

fs::path Below(const fs::path& root, std::string_view name) {
  name.remove_prefix(std::min(name.find_first_not_of("/\\"), name.size()));
  if (name.find(':') != std::string_view::npos) {
    throw base::RuntimeFailure("\"" + std::string(name) + "\" names a drive");
  }
  return base::FindFile(root, name);
}

std::vector<fs::path> DefinitionsOf(const Installation& installation) {
  std::vector<fs::path> files;
  if (!installation.List.empty()) {
    const falcon::DataFile list = falcon::ReadDataFile(installation.List, falcon::MaxDefinitionBytes);
    for (const std::string& entry : falcon::ReadTheaterList(list.Bytes)) {
      try {
        Add(files, Below(installation.Root, entry));
      } catch (const base::RuntimeFailure&) {
        continue;  // the list's own report tells it
      }
    }
  }
  for (const fs::path& file : FilesOf(base::FindFile(installation.Root, "Terrdata/theaterdefinition"))) {
    if (EndingOf(file) == ".tdf") Add(files, file);
  }
  return files;
}

Theater ReadTheater(const fs::path& file) {
  return {file, falcon::ReadTheaterDefinition(falcon::ReadDataFile(file, falcon::MaxDefinitionBytes).Bytes)};
}

TheaterDir DirOf(const Installation& installation, const Theater& theater,
                 std::string falcon::TheaterDefinition::*dir) {
  TheaterDir found{theater.Definition.*dir, falcon::TheaterDir(theater.Definition, dir), {}};
  if (found.Used.empty()) return found;
  try {
    found.Folder = Below(installation.Root, found.Used);
  } catch (const base::RuntimeFailure&) {
    found.Folder.clear();
  }
  return found;
}

Companions CompanionsOf(const Context& context, const Installation& installation, const Theater& theater) {
  using falcon::TheaterDefinition;
  Companions found;
  found.Campaign = DirOf(installation, theater, &TheaterDefinition::CampaignDir).Folder;
  if (!context.Asked.Campaign.empty()) found.Campaign = context.Asked.Campaign;
  found.Strings = context.Asked.Strings.empty() ? found.Campaign : context.Asked.Strings;
  found.Objects = context.Asked.Objects;
  if (!found.Objects.empty()) return found;
  Add(found.Objects, DirOf(installation, theater, &TheaterDefinition::ObjectDir).Folder);
  Add(found.Objects, DirOf(installation, Theater{}, &TheaterDefinition::ObjectDir).Folder);
  return found;
}

Companions CompanionsOf(const Context& context, const fs::path& file) {
  std::error_code failure;
  const fs::path folder = fs::absolute(file, failure).lexically_normal().parent_path();
  Companions found;
  if (const std::optional<Installation> installation = InstallationAround(folder)) {
    found = CompanionsOf(context, *installation, TheaterOf(*installation, folder).value_or(Theater{}));
  }
  found.Campaign = context.Asked.Campaign.empty() ? folder : context.Asked.Campaign;
  found.Strings = context.Asked.Strings.empty() ? found.Campaign : context.Asked.Strings;
  found.Objects.insert(found.Objects.begin(), folder);
  if (!context.Asked.Objects.empty()) found.Objects = context.Asked.Objects;
  return found;
}

}  // namespace kestrel::falconinfo
