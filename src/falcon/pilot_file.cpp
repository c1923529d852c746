#include "falcon/pilot_file.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <system_error>
#include <tuple>

#include "base/failure.h"
#include "base/files.h"
#include "base/profile_file.h"
#include "base/text.h"
#include "falcon/foreign_text.h"
#include "falcon/user_file.h"

namespace kestrel::falcon {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view Section = "Radio";

struct Bank {
  std::string_view Prefix;
  PresetTexts RadioPresets::*Texts;
};
constexpr Bank Banks[] = {{"UHF_", &RadioPresets::Uhf}, {"VHF_", &RadioPresets::Vhf}};

std::string KeyOf(const Bank& bank, std::size_t preset) { return std::string(bank.Prefix) + std::to_string(preset); }

/// The folder's files by their names, as bytes of the system.
std::vector<fs::path> FilesIn(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code failure;
  for (fs::directory_iterator entry(folder, failure); !failure && entry != fs::directory_iterator();
       entry.increment(failure)) {
    if (base::FileExists(entry->path())) files.push_back(entry->path());
  }
  return files;
}

std::string FileName(const fs::path& file) { return base::TextOfPath(file.filename()); }

/// Where a value is to stand instead of the bytes from `At` on.
struct Edit {
  std::size_t At;
  std::size_t Size;
  std::string Bytes;
};

/// The first section "Radio" of a pilot's file, as base::ProfileFile tells sections and keys.
struct RadioSection {
  struct Place {
    std::size_t At, Size;  ///< of the value, quotes included
  };
  bool IsThere = false;
  std::size_t End = 0;                  ///< behind its last line that is not blank, with the line's end
  std::map<std::string, Place> Values;  ///< by the key in upper case, of equal ones the first
};

RadioSection FindRadio(std::string_view text) {
  RadioSection section;
  bool within = false;
  for (std::size_t at = 0, next = 0; at < text.size(); at = next) {
    next = std::min(text.find('\n', at), text.size() - 1) + 1;
    std::string_view line = text.substr(at, next - at);
    if (line.ends_with('\n')) line.remove_suffix(1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    const std::string_view content = TrimLine(line);
    if (content.empty()) continue;
    if (content.front() == '[') {
      if (section.IsThere) break;
      within = base::SameNoCase(TrimLine(content.substr(1, content.find(']') - 1)), Section);
      section.IsThere = within;
    }
    if (!within) continue;
    section.End = next;
    const std::size_t equals = line.find('=');
    if (content.front() == '[' || equals == std::string_view::npos) continue;
    const std::string_view value = TrimLine(line.substr(equals + 1));
    const auto valueAt = value.empty() ? at + equals + 1 : static_cast<std::size_t>(value.data() - text.data());
    section.Values.emplace(base::Upper(TrimLine(line.substr(0, equals))), RadioSection::Place{valueAt, value.size()});
  }
  return section;
}

bool IsWideText(std::string_view text) { return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"); }

}  // namespace

std::vector<Callsign> ListCallsigns(const fs::path& folder) {
  constexpr std::size_t endingSize = 4;
  const std::vector<fs::path> files = FilesIn(folder);
  // By the name in lower case; of several spellings always the same one.
  std::map<std::string, fs::path> pilotFiles;
  for (const fs::path& file : files) {
    fs::path& known = pilotFiles[base::Lower(FileName(file))];
    if (known.empty() || file < known) known = file;
  }
  std::vector<Callsign> callsigns;
  for (const fs::path& file : files) {
    const std::string name = FileName(file);
    if (name.size() <= endingSize || !base::SameNoCase(std::string_view(name).substr(name.size() - 3), "lbk")) continue;
    const std::string pilot = name.substr(0, name.size() - endingSize);
    const auto found = pilotFiles.find(base::Lower(pilot) + ".ini");
    if (found != pilotFiles.end()) callsigns.push_back({base::NameForMessage(base::PathOfText(pilot)), found->second});
  }
  std::sort(callsigns.begin(), callsigns.end(), [](const Callsign& a, const Callsign& b) {
    const std::string first = base::Upper(a.Name), second = base::Upper(b.Name);
    return std::tie(first, a.Name) < std::tie(second, b.Name);
  });
  return callsigns;
}

RadioPresets PresetsOf(std::string_view text) {
  const base::ProfileFile file(text);
  base::ProfileFile::SectionView section = file.Open(Section);
  RadioPresets presets;
  for (const Bank& bank : Banks) {
    for (std::size_t preset = 1; preset <= PresetCount; ++preset) {
      (presets.*bank.Texts)[preset] = section.Value(KeyOf(bank, preset), "000000");
    }
  }
  return presets;
}

std::string WithPresets(std::string_view text, const RadioPresets& presets) {
  if (IsWideText(text)) throw base::RuntimeFailure("text in UTF-16 is not written");
  const RadioSection section = FindRadio(text);
  std::vector<Edit> edits;
  std::vector<std::string> missing;
  for (std::size_t preset = 1; preset <= PresetCount; ++preset) {
    for (const Bank& bank : Banks) {
      const std::string key = KeyOf(bank, preset);
      std::string value = OneLine((presets.*bank.Texts)[preset]);
      const auto known = section.Values.find(key);
      if (known == section.Values.end()) {
        missing.push_back(key + "=" + value);
      } else {
        edits.push_back({known->second.At, known->second.Size, std::move(value)});
      }
    }
  }
  std::sort(edits.begin(), edits.end(), [](const Edit& a, const Edit& b) { return a.At < b.At; });

  const std::size_t end = section.IsThere ? section.End : text.size();
  std::string result;
  std::size_t done = 0;
  for (const Edit& edit : edits) {
    result.append(text.substr(done, edit.At - done)).append(edit.Bytes);
    done = edit.At + edit.Size;
  }
  result.append(text.substr(done, end - done));
  if (!section.IsThere) missing.insert(missing.begin(), "[" + std::string(Section) + "]");
  for (const std::string& line : missing) AppendLine(result, line, LineEndOf(text));
  return result.append(text.substr(end));
}

RadioPresets LoadRadioFile(const fs::path& pilotFile) {
  return PresetsOf(base::ReadWholeFile(pilotFile, base::MaxTextFileBytes));
}

void SaveRadioFile(const fs::path& pilotFile, const RadioPresets& presets) {
  const std::string text = base::ReadWholeFile(pilotFile, base::MaxTextFileBytes);
  ReplaceUserFile(pilotFile, Within(base::NameForMessage(pilotFile), [&] { return WithPresets(text, presets); }));
}

}  // namespace kestrel::falcon
