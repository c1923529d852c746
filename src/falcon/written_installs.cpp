#include "falcon/written_installs.h"

#include <memory>
#include <string>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"

namespace kestrel::falcon {
namespace fs = std::filesystem;
namespace {

constexpr int MostWritten = 99;

/// The folder that a text names; empty when there is none. Editors write it as the system writes names, or in the code
/// page that the rest of the file has.
fs::path WrittenFolder(const std::string& text) {
  if (text.find('\0') != std::string::npos) return {};
  for (const auto read : {+[](const std::string& name) { return base::PathOfText(name); },
                          +[](const std::string& name) { return base::FindFile({}, name); }}) {
    try {
      fs::path folder = read(text);
      std::error_code failure;
      if (folder.is_absolute() && fs::is_directory(folder, failure)) return folder;
    } catch (const std::exception&) {
      // It is no text of that kind.
    }
  }
  return {};
}

std::string LastName(std::string_view folder) {
  const std::size_t end = folder.find_last_not_of("/\\");
  folder = folder.substr(0, end == std::string_view::npos ? 0 : end + 1);
  const std::size_t slash = folder.find_last_of("/\\");
  return std::string(slash == std::string_view::npos ? folder : folder.substr(slash + 1));
}

bool IsBmsName(std::string_view name) { return base::SameNoCase(name.substr(0, BmsName.size()), BmsName); }

/// The name of a BMS: the one that is written, or its folder's.
std::string NameOfBms(const std::string& written, const std::string& folder) {
  if (IsBmsName(written)) return written;
  if (!written.empty()) return std::string(BmsName) + " " + written;
  std::string last = LastName(folder);
  return IsBmsName(last) ? last : std::string(BmsName);
}

/// A registration of one installation, which has its folder alone.
class WrittenInstall final : public InstallKeys {
 public:
  /// `version` is the name of a BMS; empty for an older Falcon.
  WrittenInstall(std::string version, std::string dir)
      : name(std::move(version)),
        key(name.empty() ? std::string(FalconKey) : std::string(BmsKeys) + "\\" + name),
        baseDir(std::move(dir)) {}

  std::optional<KeyValue> ReadValue(std::string_view wantedKey, std::string_view value) const override {
    if (!base::SameNoCase(wantedKey, key) || !base::SameNoCase(value, "baseDir")) return std::nullopt;
    return KeyValue{false, baseDir};
  }
  std::vector<std::string> SubKeys(std::string_view above) const override {
    if (name.empty() || !base::SameNoCase(above, BmsKeys)) return {};
    return {name};
  }
  fs::path FolderOf(std::string_view text) const override { return WrittenFolder(std::string(text)); }

 private:
  std::string name;
  std::string key;
  std::string baseDir;
};

}  // namespace

InstallSources ReadWrittenInstalls(const base::ProfileFile& settings) {
  base::ProfileFile::SectionView section = settings.Open(InstallSection);
  InstallSources sources;
  for (const std::string_view family : {"BMS", "FALCON"}) {
    for (int number = 1; number <= MostWritten; ++number) {
      const std::string key = std::string(family) + std::to_string(number);
      std::string folder(section.Value(key));
      if (folder.empty()) continue;
      std::string name;
      if (family == "BMS") name = NameOfBms(std::string(section.Value(key + "_NAME")), folder);
      sources.push_back(std::make_unique<WrittenInstall>(std::move(name), std::move(folder)));
    }
  }
  return sources;
}

}  // namespace kestrel::falcon
