#include "falcon/installations.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"
#include "falcon/terrain_files.h"

namespace kestrel::falcon {
namespace fs = std::filesystem;
namespace {

constexpr std::pair<std::string TheaterDefinition::*, std::string_view> DefaultDirs[] = {
    {&TheaterDefinition::CampaignDir, "Campaign"},
    {&TheaterDefinition::TerrainDir, "Terrdata\\korea"},
    {&TheaterDefinition::ObjectDir, "Terrdata\\objects"},
    {&TheaterDefinition::ThreeDDataDir, "Terrdata\\objects"},
};

/// `name` below a folder. RuntimeFailure when it leads elsewhere; a slash at its beginning means nothing.
fs::path Below(const fs::path& folder, std::string_view name) {
  name.remove_prefix(std::min(name.find_first_not_of("/\\"), name.size()));
  if (name.find(':') != std::string_view::npos)
    throw base::RuntimeFailure("\"" + std::string(name) + "\" names a drive");
  return base::FindFile(folder, name);
}

/// A file of at most MaxDefinitionBytes; nothing when it cannot be read.
std::optional<std::string> TextBelow(const fs::path& folder, std::string_view name) {
  try {
    return base::ReadWholeFile(Below(folder, name), MaxDefinitionBytes);
  } catch (const base::RuntimeFailure&) {
    return std::nullopt;
  }
}

std::string TextValue(const InstallKeys& keys, std::string_view key, std::string_view value) {
  std::string text = keys.ReadValue(key, value).value_or(KeyValue{}).Bytes;
  std::erase(text, '\0');
  return text;
}

/// Bytes have leftovers behind their first NUL.
std::string CallsignValue(const InstallKeys& keys, std::string_view key) {
  const KeyValue value = keys.ReadValue(key, "PilotCallsign").value_or(KeyValue{});
  return value.Bytes.substr(0, value.Bytes.find('\0'));
}

std::string SizeOf(const FalconInstall& install, const TheaterDefinition& definition) {
  try {
    const fs::path folder = TheaterFolder(install, definition, &TheaterDefinition::TerrainDir);
    const std::optional<std::int32_t> size = TerrainSize(FindTerrainFiles(folder, definition.TileSet));
    return size ? std::to_string(*size) : "";
  } catch (const base::RuntimeFailure&) {
    return "";
  }
}

void ReadTheaters(FalconInstall& install, std::string_view list, std::vector<std::string>& messages) {
  for (const std::string& line : ReadTheaterList(list)) {
    const std::optional<std::string> text = TextBelow(install.Root, line);
    if (!text) {
      messages.push_back("The theaters.lst entry \"" + line + "\" doesn't exist on your system. It will be discarded.");
      continue;
    }
    FalconTheater theater{ReadTheaterDefinition(*text), line, {}};
    std::replace(theater.TdfPath.begin(), theater.TdfPath.end(), '/', '\\');
    theater.TheaterSize = SizeOf(install, theater.Definition);
    install.Theaters.Append(std::move(theater));
  }
}

/// What a key registers; nothing when it names no folder.
std::optional<FalconInstall> Registered(const InstallKeys& keys, const std::string& key, std::string_view name) {
  const std::string baseDir = TextValue(keys, key, "baseDir");
  if (baseDir.empty()) return std::nullopt;
  FalconInstall install;
  install.Key = name;
  install.InstallDir = baseDir + "\\";
  install.Folder = keys.FolderOf(baseDir);
  install.CurTheater = TextValue(keys, key, "curTheater");
  install.PilotCallsign = CallsignValue(keys, key);
  return install;
}

bool HasFile(const fs::path& folder, std::string_view name) {
  return !folder.empty() && base::FileExists(base::FindFile(folder, name));
}

void FindFalcon(const InstallKeys& keys, FalconInstalls& found) {
  std::optional<FalconInstall> install = Registered(keys, std::string(FalconKey), "4.0");
  if (!install) return;
  const bool hasModels = HasFile(install->Folder, "terrdata\\objects\\KoreaObj.Dxl");
  install->Kind = hasModels ? InstallKind::FalconModels : InstallKind::Falcon;
  install->Root = install->Folder;
  found.Falcon.push_back(std::move(*install));
}

void FindBms(const InstallKeys& keys, FalconInstalls& found) {
  for (const std::string& name : keys.SubKeys(BmsKeys)) {
    if (!base::SameNoCase(std::string_view(name).substr(0, BmsName.size()), BmsName)) continue;
    std::optional<FalconInstall> install = Registered(keys, std::string(BmsKeys) + "\\" + name, name);
    if (!install || !HasFile(install->Folder, "Data\\Terrdata\\theaterdefinition\\theater.lst")) continue;
    install->Kind = InstallKind::Bms;
    install->Root = base::FindFile(install->Folder, "Data");
    found.Bms.push_back(std::move(*install));
  }
}

/// The numbers in the name of a version, which order it: "Falcon BMS 4.33 U1" has 4, 33 and 1.
std::vector<std::uint64_t> VersionOf(std::string_view name) {
  constexpr std::uint64_t largest = 1'000'000'000;
  std::vector<std::uint64_t> numbers;
  bool within = false;
  for (const char letter : name) {
    const bool isDigit = letter >= '0' && letter <= '9';
    if (isDigit && !within) numbers.push_back(0);
    if (isDigit) numbers.back() = std::min(numbers.back() * 10 + static_cast<std::uint64_t>(letter - '0'), largest);
    within = isDigit;
  }
  return numbers;
}

}  // namespace

FalconInstalls DiscoverFalcon(std::span<const InstallKeys* const> sources) {
  FalconInstalls found;
  for (const InstallKeys* const keys : sources) FindFalcon(*keys, found);
  for (const InstallKeys* const keys : sources) FindBms(*keys, found);
  std::stable_sort(found.Bms.begin(), found.Bms.end(),
                   [](const FalconInstall& a, const FalconInstall& b) { return VersionOf(a.Key) > VersionOf(b.Key); });
  for (FalconInstall& install : found.Falcon) {
    if (install.Folder.empty()) continue;
    ReadTheaters(install, TextBelow(install.Root, "theater.lst").value_or(""), found.Messages);
  }
  for (FalconInstall& install : found.Bms) {
    const auto list = TextBelow(install.Root, "Terrdata\\theaterdefinition\\theater.lst");
    ReadTheaters(install, list.value_or(""), found.Messages);
  }
  return found;
}

std::string TheaterDir(const TheaterDefinition& definition, std::string TheaterDefinition::*dir) {
  if (!(definition.*dir).empty()) return definition.*dir;
  for (const auto& [member, path] : DefaultDirs) {
    if (member == dir) return std::string(path);
  }
  return "";
}

fs::path TheaterFolder(const FalconInstall& install, const TheaterDefinition& definition,
                       std::string TheaterDefinition::*dir) {
  return Below(install.Root, TheaterDir(definition, dir));
}

}  // namespace kestrel::falcon
