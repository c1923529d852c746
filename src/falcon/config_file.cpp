#include "falcon/config_file.h"

#include <algorithm>
#include <optional>
#include <system_error>

#include "base/files.h"
#include "base/text.h"
#include "falcon/foreign_text.h"
#include "falcon/user_file.h"

namespace kestrel::falcon {
namespace {

constexpr std::size_t NameAt = 4;

std::string_view NameOf(bool isF1) { return isF1 ? "g_nF1TeamUiFreq" : "g_nF2TeamUiFreq"; }

/// Calls `work` with each line of `text` and what ends it, CR, LF or nothing. Between CR and LF stands an empty line.
template <class Work>
void ForEachLine(std::string_view text, const Work& work) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view lineEnd = text.substr(end, 1);
    work(text.substr(0, end), lineEnd);
    text.remove_prefix(end + lineEnd.size());
  }
}

/// The value of the last statement of the name.
std::optional<std::string> LastValue(const std::filesystem::path& file, std::string_view wanted) {
  std::optional<std::string> last;
  ForEachLine(base::ReadWholeFile(file, base::MaxTextFileBytes), [&](std::string_view line, std::string_view) {
    std::string name, value;
    if (ParseSetLine(line, name, value) && name == wanted) last = value;
  });
  return last;
}

std::string Replaced(std::string_view text, std::string_view old, std::string_view fresh) {
  std::string replaced;
  for (std::size_t at = text.find(old); at != std::string_view::npos; at = text.find(old)) {
    replaced.append(text.substr(0, at)).append(fresh);
    text.remove_prefix(at + old.size());
  }
  return replaced.append(text);
}

}  // namespace

bool ParseSetLine(std::string_view line, std::string& name, std::string& value) {
  const std::string_view statement = line.substr(0, line.find("//"));
  if (!base::SameNoCase(statement.substr(0, NameAt), "set ")) return false;
  const std::size_t end = statement.find(' ', NameAt + 1);
  if (end == std::string_view::npos) return false;
  name = statement.substr(NameAt, end - NameAt);
  value = TrimLine(statement.substr(end));
  return true;
}

std::string ReadCfgValue(const std::filesystem::path& cfgFile, bool isF1) {
  return LastValue(cfgFile, NameOf(isF1)).value_or("");
}

bool SetsCfgValue(const std::filesystem::path& cfgFile, bool isF1) {
  std::error_code failure;
  return std::filesystem::exists(cfgFile, failure) && LastValue(cfgFile, NameOf(isF1)).has_value();
}

std::string WithCfgValue(std::string_view before, bool isF1, std::string_view value) {
  const std::string fresh = OneLine(value);
  const std::string_view wanted = NameOf(isF1);
  std::string after;
  bool found = false;
  ForEachLine(before, [&](std::string_view line, std::string_view lineEnd) {
    std::string name, old;
    const bool matches = ParseSetLine(line, name, old) && name == wanted;
    found = found || matches;
    if (matches && !old.empty()) {
      const std::size_t nameEnd = NameAt + name.size();
      after.append(line.substr(0, nameEnd)).append(Replaced(line.substr(nameEnd), old, fresh));
    } else {
      after.append(line);
    }
    after.append(lineEnd);
  });
  if (!found) {
    const std::string added = "set " + std::string(wanted) + " " + fresh + " //Added by KESTREL - Frequency for " +
                              (isF1 ? "F1" : "F2") + " UI voice comms (for Force on Force type missions).";
    AppendLine(after, added, LineEndOf(before));
  }
  return after;
}

void WriteCfgValue(const std::filesystem::path& cfgFile, bool isF1, std::string_view value) {
  const std::string after = WithCfgValue(base::ReadWholeFile(cfgFile, base::MaxTextFileBytes), isF1, value);
  std::filesystem::path backup = cfgFile;
  backup += "_backup";
  ReplaceUserFile(cfgFile, after, backup);
}

}  // namespace kestrel::falcon
