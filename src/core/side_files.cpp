#include "core/side_files.h"

#include <filesystem>
#include <vector>

#include "base/files.h"
#include "base/profile_file.h"
#include "base/text.h"

namespace kestrel::core {
namespace {

std::filesystem::path CommonFile(const Station& station) { return base::FindFile(station.AppPath, "common.ini"); }

}  // namespace

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
  const base::ProfileFile common = base::ProfileFile::Load(CommonFile(station));
  station.AutoUpdate = common.ReadIniValue("GENERAL", "AUTOUPDATE", "1") == "1";
}

void SetAutoUpdate(Station& station, bool on) {
  base::ProfileFile common = base::ProfileFile::Load(CommonFile(station));
  common.WriteIniValue("GENERAL", "AUTOUPDATE", on ? "1" : "0");
  common.Save(CommonFile(station));
  station.AutoUpdate = on;
}

std::string AppPathText(std::string_view folder, char separator) {
  std::string text(folder);
  if (text.size() != 3) text += separator;
  return text;
}

}  // namespace kestrel::core
