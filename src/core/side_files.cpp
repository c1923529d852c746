#include "core/side_files.h"

#include <filesystem>
#include <vector>

#include "base/files.h"
#include "base/profile_file.h"
#include "base/text.h"

namespace kestrel::core {
namespace {

std::filesystem::path Beside(const Station& station, std::string_view name) {
  return base::FindFile(station.AppPath, name);
}

/// The lines of a text with either line end; a line end at the very end begins no further line. Views into `text`.
std::vector<std::string_view> Lines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(line);
  }
  return lines;
}

}  // namespace

void LoadUpdateText(Station& station) {
  const std::string text =
      base::ReadWholeFile(base::FindFile(station.ProgramPath, "update.txt"), base::MaxTextFileBytes);
  for (const std::string_view line : Lines(text)) {
    const std::vector<std::string_view> pieces = base::Split(line, '=');
    if (pieces.size() < 2) continue;
    const std::string target = base::Upper(base::Trim(pieces[0]));
    if (target == "DOCS") station.DocsUrl = pieces[1];
    if (target == "MAIL") station.MailUrl = pieces[1];
  }
}

void LoadAutoUpdate(Station& station) {
  const base::ProfileFile common = base::ProfileFile::Load(Beside(station, "common.ini"));
  station.AutoUpdate = common.ReadIniValue("GENERAL", "AUTOUPDATE", "1") == "1";
}

void LoadFriendsDef(Station& station) {
  base::Table<std::string>& names = station.LinkOptions.FriendNames;
  names.Clear();
  const std::filesystem::path path = Beside(station, "FriendlyNames.ini");
  if (!base::FileExists(path)) return;
  const std::string text = base::ReadWholeFile(path, base::MaxTextFileBytes);
  for (const std::string_view line : Lines(text)) names.Append(std::string(line));
}

std::string AppPathText(std::string_view folder, char separator) {
  std::string text(folder);
  if (text.size() != 3) text += separator;
  return text;
}

}  // namespace kestrel::core
