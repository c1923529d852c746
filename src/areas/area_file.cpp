#include "areas/area_file.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "areas/area_format.h"
#include "areas/area_tree.h"
#include "base/file_replacement.h"
#include "base/positioned_file.h"
#include "base/text.h"

namespace kestrel::areas {
namespace {

constexpr std::string_view TemporaryFolder = "Temporary Folder";

std::optional<AreaFormat> FormatOf(std::string_view magic, AreaFileKind kind) {
  for (const AreaFormat format : {AreaFormat::V3, AreaFormat::V2, AreaFormat::Export}) {
    const bool fits = (format == AreaFormat::Export) == (kind == AreaFileKind::Export);
    if (fits && magic == MagicOf(format)) return format;
  }
  return std::nullopt;
}

template <class Groups>
void Write(const std::filesystem::path& path, const Groups& groups, const base::Table<AreaFolder>& folders,
           AreaFormat format) {
  base::FileReplacement file(path);
  base::FieldStreamer writer([&file](std::span<std::span<const std::byte>> pieces) { file.Write(pieces); });
  writer.PaddedText(MagicOf(format), TextWidth);
  FileFields(writer, groups, folders, format);
  writer.Drain();
  file.Commit();
}

bool NamesFolder(const base::Table<AreaFolder>& folders, std::int32_t index) {
  return index >= 1 && static_cast<std::size_t>(index) <= folders.UpperBound();
}

std::int32_t AppendFolder(base::Table<AreaFolder>& folders, AreaFolder folder) {
  folders.Append(std::move(folder));
  return static_cast<std::int32_t>(folders.UpperBound());
}

std::int32_t FindOrAddTemporaryFolder(base::Table<AreaFolder>& folders) {
  for (std::size_t n = 1; n <= folders.UpperBound(); ++n) {
    if (base::SameNoCase(folders[n].Name, TemporaryFolder)) return static_cast<std::int32_t>(n);
  }
  return AppendFolder(folders, {std::string(TemporaryFolder), On});
}

}  // namespace

AreaFile ReadAreaFile(const std::filesystem::path& path, AreaFileKind kind) {
  const base::PositionedFile file(path, base::PositionedFile::Mode::Read);
  base::RecordStream stream("file of areas");
  stream.Start(file, 0, std::numeric_limits<std::uint64_t>::max());
  base::FieldSalvager reader(stream);
  std::string magic;
  reader.PaddedText(magic, TextWidth);
  const std::optional<AreaFormat> format = FormatOf(magic, kind);
  AreaFile read;
  if (!format) {
    read.State = AreaFileState::Refused;
    return read;
  }
  FileFields(reader, read.AreaGroups, read.AreaFolders, *format);
  if (reader.Damaged()) read.State = AreaFileState::Damaged;
  if (*format == AreaFormat::V2) {
    read.AreaFolders.Append({"General", On});
    for (AreaGroup& group : read.AreaGroups.Live()) group.FolderIndex = 1;
  }
  return read;
}

void WriteAreaFile(const std::filesystem::path& path, const AreaCatalogue& catalogue) {
  Write(path, catalogue.AreaGroups, catalogue.AreaFolders, AreaFormat::V3);
}

bool HasExport(const AreaCatalogue& catalogue) {
  for (const AreaGroup& group : catalogue.AreaGroups.Live()) {
    if (Shows(catalogue, group)) return true;
  }
  return false;
}

void WriteAreaExport(const std::filesystem::path& path, const AreaCatalogue& catalogue) {
  base::Table<ExportedGroup> groups;
  base::Table<AreaFolder> folders;
  std::vector<std::int32_t> indexInFile(catalogue.AreaFolders.UpperBound() + 1);
  for (const AreaGroup& group : catalogue.AreaGroups.Live()) {
    if (!Shows(catalogue, group)) continue;
    const auto folder = static_cast<std::size_t>(group.FolderIndex);
    if (indexInFile[folder] == 0) indexInFile[folder] = AppendFolder(folders, catalogue.AreaFolders[folder]);
    groups.Append({&group, indexInFile[folder]});
  }
  Write(path, groups, folders, AreaFormat::Export);
}

std::size_t ReplaceAreas(AreaCatalogue& catalogue, AreaFile file) {
  std::size_t homeless = 0;
  const auto folders = static_cast<std::int32_t>(file.AreaFolders.UpperBound());
  for (AreaGroup& group : file.AreaGroups.Live()) {
    if (group.FolderIndex >= 1 && group.FolderIndex <= folders) continue;
    group.FolderIndex = FindOrAddTemporaryFolder(file.AreaFolders);
    ++homeless;
  }
  catalogue.AreaFolders = std::move(file.AreaFolders);
  catalogue.AreaGroups = std::move(file.AreaGroups);
  return homeless;
}

std::size_t AppendAreas(AreaCatalogue& catalogue, AreaHistory& history, AreaFile file) {
  OneStep step(catalogue, history, "import of areas");
  std::size_t homeless = 0;
  std::vector<std::int32_t> indexHere(file.AreaFolders.UpperBound() + 1);
  Insert<AreaGroup> groups;
  for (AreaGroup& group : file.AreaGroups.Live()) {
    if (NamesFolder(file.AreaFolders, group.FolderIndex)) {
      const auto folder = static_cast<std::size_t>(group.FolderIndex);
      if (indexHere[folder] == 0) {
        const std::size_t last = catalogue.AreaFolders.UpperBound() + 1;
        step.Do(Insert<AreaFolder>{0, {{last, std::move(file.AreaFolders[folder])}}});
        indexHere[folder] = static_cast<std::int32_t>(last);
      }
      group.FolderIndex = indexHere[folder];
    } else {
      std::string unnamed;
      group.FolderIndex = FindOrAddFolder(catalogue, history, unnamed);
      ++homeless;
    }
    groups.Items.push_back({catalogue.AreaGroups.UpperBound() + groups.Items.size() + 1, std::move(group)});
  }
  if (!groups.Items.empty()) step.Do(std::move(groups));
  return homeless;
}

}  // namespace kestrel::areas
