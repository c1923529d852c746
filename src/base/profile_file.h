#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kestrel::base {

/// A sectioned text file ("[SECTION]", "KEY=value") as the Windows profile interface reads and writes it: names without
/// regard to case, the first section and the first key of a name win, blanks around key and value dropped, one pair of
/// enclosing quotes dropped on reading, lines that begin with ";" and lines without "=" skipped but kept when the file
/// is written back, either line end read, CR LF written. It lives in memory: read once, change, write once.
class ProfileFile {
 public:
  ProfileFile() = default;
  /// Parses the whole text of a file. Any bytes are accepted; what is no section and no key is kept as it stands.
  explicit ProfileFile(std::string_view text);
  /// A missing file gives an empty profile. RuntimeFailure when it cannot be read or exceeds MaxTextFileBytes.
  static ProfileFile Load(const std::filesystem::path& path);

  /// The first value of the key in the first section of the name, cut at 749 characters (a buffer of 750 with its end
  /// mark); `Default` when the key is missing or its value is empty. `Key` is given in any case.
  std::string ReadIniValue(std::string_view Section, std::string_view Key, std::string_view Default) const;
  bool HasSection(std::string_view Section) const;

  /// Replaces the key's value in place, or appends the key to its section, making the section when missing. A value
  /// that begins or ends with a blank or stands in quotes is written in double quotes, so that it comes back as held;
  /// line ends and NULs in it become blanks. RuntimeFailure for a section or key that the file cannot hold (a key that
  /// is empty, or begins as a comment, header or banner does, or holds "=").
  void WriteIniValue(std::string_view Section, std::string_view Key, std::string_view Value);

  /// Adds a line as it stands at the end of what is there (the banner of line 1).
  void AppendLine(std::string_view line);

  /// The file as it is written, with CR LF at each line end.
  std::string Text() const;
  /// Writes it whole (WriteWholeFile).
  void Save(const std::filesystem::path& path) const;

 private:
  struct Part {
    std::string Header;              ///< the header line as it stands; none for what stands before the first header
    std::vector<std::string> Lines;  ///< as they stand, without line ends
  };
  void AddLine(std::string_view line);
  const Part* Find(std::string_view section) const;

  std::vector<Part> parts = std::vector<Part>(1);      ///< in file order; the first has no header
  std::unordered_map<std::string, std::size_t> index;  ///< place of the first section of each name, in upper case
};

}  // namespace kestrel::base
