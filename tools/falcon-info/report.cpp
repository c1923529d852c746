#include "falcon-info/report.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "base/files.h"
#include "falcon-info/campaigns.h"
#include "falcon-info/companions.h"
#include "falcon-info/models.h"
#include "falcon-info/tables.h"
#include "falcon-info/terrains.h"
#include "falcon-info/texts.h"
#include "falcon-info/theaters.h"

namespace kestrel::falconinfo {
namespace fs = std::filesystem;
namespace {

/// What tells of which kind a file is.
struct Looks {
  fs::path Path;
  std::string Name;    ///< in lower case
  std::string Ending;  ///< with its point
  std::string Head;    ///< first bytes
};

/// A kind of file. The first row that takes a file is asked.
struct FileKind {
  std::string_view Names;  ///< names and endings, in lower case, with blanks between; "*.hdr" is an ending
  bool (*Fits)(const Looks& looks);
  Json (*Report)(Context& context, const fs::path& file);
};

bool Always(const Looks&) { return true; }
bool IsText(const Looks& looks) { return looks.Head.find('\0') == std::string::npos; }
bool IsNoText(const Looks& looks) { return !IsText(looks); }
bool IsTable(const Looks& looks) { return IsTableFile(looks.Path); }
bool IsBml(const Looks& looks) { return looks.Head.starts_with(std::string_view("BML\0", 4)); }

Json PrefixOfRegistry(Context& context, const fs::path& file) { return PrefixReport(context, file.parent_path()); }

constexpr FileKind FileKinds[] = {
    {"*.cam *.tac *.trn", Always, CampaignReport},
    {"*.lst", Always, TheaterListReport},
    {"*.tdf", Always, DefinitionReport},
    {"campobjdata.xml", Always, CampObjectsReport},
    {"*", IsTable, TableReport},
    {"*.idx *.wch strings.txt", Always, StringsReport},
    {"stations+ils.dat", Always, StationsReport},
    {"*.ini", Always, MissionReport},
    {"*.lbk", Always, LogBookReport},
    {"*.cfg", Always, ConfigReport},
    {"*.map", Always, TerrainMapReport},
    {"*.l2 *.o2 *.bil *.raw", Always, HeightsReport},
    {"*.mea", Always, HighestTerrainReport},
    {"*.thr", Always, GroundCoverReport},
    {"*.bin", Always, TileSetsReport},
    {"theater.txt", Always, TheaterTextReport},
    {"*.hdr", IsText, GridHeaderReport},
    {"*.hdr *.dxh", IsNoText, ModelDirectoryReport},
    {"*.lod *.dxl", Always, ShapesReport},
    {"parent.dat", Always, ParentReport},
    {"*.bml", Always, BmlReport},
    {"*", IsBml, BmlReport},
    {"system.reg", Always, PrefixOfRegistry},
};

bool IsNamed(std::string_view names, const Looks& looks) {
  while (!names.empty()) {
    const std::string_view name = names.substr(0, names.find(' '));
    names.remove_prefix(std::min(name.size() + 1, names.size()));
    const bool isEnding = name.starts_with('*');
    if (name == "*" || (isEnding ? looks.Ending == name.substr(1) : looks.Name == name)) return true;
  }
  return false;
}

Looks LooksOf(const fs::path& file) {
  std::array<std::byte, 64> head{};
  const std::size_t bytes = base::ReadHead(file, head);
  return {file, LowerNameOf(file), EndingOf(file), std::string(reinterpret_cast<const char*>(head.data()), bytes)};
}

/// Nothing for a file that is of no kind.
const FileKind* KindOf(const fs::path& file) {
  const Looks looks = LooksOf(file);
  const auto* const kind = std::find_if(std::begin(FileKinds), std::end(FileKinds), [&looks](const FileKind& one) {
    return IsNamed(one.Names, looks) && one.Fits(looks);
  });
  return kind == std::end(FileKinds) ? nullptr : kind;
}

Json FileReport(Context& context, const fs::path& file) {
  if (const FileKind* const kind = KindOf(file)) return kind->Report(context, file);
  throw base::RuntimeFailure(base::NameForMessage(file) + " is no file of the simulator that is known");
}

bool HasFile(const fs::path& folder, std::string_view name) { return base::FileExists(base::FindFile(folder, name)); }

/// A kind of folder. The first row that takes a folder is asked.
struct FolderKind {
  bool (*Fits)(const fs::path& folder);
  Json (*Report)(Context& context, const fs::path& folder);
};
constexpr FolderKind FolderKinds[] = {
    {[](const fs::path& folder) { return HasFile(folder, "system.reg"); }, PrefixReport},
    {[](const fs::path& folder) { return InstallationAt(folder).has_value(); },
     [](Context& context, const fs::path& folder) { return InstallationReport(context, *InstallationAt(folder)); }},
    {[](const fs::path& folder) { return HasFile(folder, "Parent.dat"); },
     [](Context& context, const fs::path& folder) {
       return ParentReport(context, base::FindFile(folder, "Parent.dat"));
     }},
    {IsClassFolder, ClassFolderReport},
    {IsCampaignFolder, CampaignFolderReport},
    {IsObjectFolder, ObjectFolderReport},
    {IsTerrainFolder, TerrainFolderReport},
};

/// The reports of all files of a known kind in a folder that is of none itself; null when there are no such files.
Json FilesReport(Context& context, const fs::path& folder) {
  Json files;
  for (const fs::path& file : FilesOf(folder)) {
    if (KindOf(file)) files.Append(ReportOn(context, file));
  }
  return files;
}

Json FolderReport(Context& context, const fs::path& folder) {
  for (const FolderKind& kind : FolderKinds) {
    if (kind.Fits(folder)) return kind.Report(context, folder);
  }
  Json json = ReportOf(folder, "folder");
  json["files"] = FilesReport(context, folder);
  if (!json["files"].IsNull()) return json;
  throw base::RuntimeFailure(base::NameForMessage(folder) + " holds nothing of the simulator that is known");
}

}  // namespace

Json ReportOn(Context& context, const fs::path& path) {
  return Attempt(context, path,
                 [&] { return IsFolder(path) ? FolderReport(context, path) : FileReport(context, path); });
}

void PrintReports(Context& context, std::ostream& out) {
  const auto& paths = context.Asked.Paths;
  const bool isList = paths.size() > 1;
  if (isList) out << "[\n";
  for (std::size_t at = 0; at < paths.size(); ++at) {
    if (at > 0) out << ",\n";
    out << (isList ? "  " : "") << ReportOn(context, paths[at]).Text(isList ? 1 : 0) << std::flush;
  }
  out << (isList ? "\n]\n" : "\n") << std::flush;
}

}  // namespace kestrel::falconinfo
