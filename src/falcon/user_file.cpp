#include "falcon/user_file.h"

#include <algorithm>
#include <span>
#include <system_error>

#include "base/file_replacement.h"
#include "base/files.h"
#include "falcon/data_file.h"

namespace kestrel::falcon {
namespace fs = std::filesystem;
namespace {

/// Elsewhere than on Windows a new file could take the name of one that must not be written.
bool IsWriteProtected(const fs::path& file) {
  std::error_code failure;
  const fs::perms rights = fs::status(file, failure).permissions();
  return !failure &&
         (rights & (fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write)) == fs::perms::none;
}

/// A copy of a file that goes with this object unless it is kept.
class Backup {
 public:
  Backup(const fs::path& file, const fs::path& copy) {
    std::error_code failure;
    if (copy.empty() || fs::exists(fs::symlink_status(copy, failure))) return;
    base::WriteWholeFile(copy, base::ReadWholeFile(file, base::MaxTextFileBytes));
    made = copy;
  }
  ~Backup() {
    if (!made.empty()) base::DeleteFile(made);
  }
  Backup(const Backup&) = delete;
  Backup& operator=(const Backup&) = delete;
  void Keep() { made.clear(); }

 private:
  fs::path made;
};

}  // namespace

void ReplaceUserFile(const fs::path& file, std::string_view bytes, const fs::path& backup) {
  if (!base::FileExists(file)) RefuseFile(base::NameForMessage(file), "there is no such file");
  if (IsWriteProtected(file)) RefuseFile(base::NameForMessage(file), "it is write-protected");
  base::FileReplacement fresh(file);
  fresh.Write(std::as_bytes(std::span(bytes)));
  Backup copy(file, backup);
  fresh.Commit();
  copy.Keep();
}

std::string_view LineEndOf(std::string_view text) {
  const std::size_t end = text.find('\n');
  return end != std::string_view::npos && (end == 0 || text[end - 1] != '\r') ? "\n" : "\r\n";
}

void AppendLine(std::string& text, std::string_view line, std::string_view lineEnd) {
  // A file may be cut within CR LF.
  if (text.ends_with('\r')) text += '\n';
  if (!text.empty() && !text.ends_with('\n')) text += lineEnd;
  text.append(line).append(lineEnd);
}

std::string OneLine(std::string_view value) {
  std::string line(value);
  const auto ends = [](char letter) { return letter == '\r' || letter == '\n' || letter == '\0'; };
  std::replace_if(line.begin(), line.end(), ends, ' ');
  return line;
}

}  // namespace kestrel::falcon
