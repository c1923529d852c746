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
/// is written back, either line end read, CR LF written. It lives in memory: read once, change, write once. A key is
/// found and written at the same cost however many there are.
class ProfileFile {
 public:
  ProfileFile() = default;
  /// Parses the whole text of a file. Any bytes are accepted; what is no section and no key is kept as it stands. Text
  /// that begins with the byte order mark of UTF-16, either way round, is first brought to the code page, "?" standing
  /// for what that does not hold.
  explicit ProfileFile(std::string_view text);
  /// A missing file gives an empty profile. RuntimeFailure when it cannot be read or exceeds MaxTextFileBytes.
  static ProfileFile Load(const std::filesystem::path& path);

  /// The first value of the key in the first section of the name, cut at 749 characters (a buffer of 750 with its end
  /// mark); `Default` when the key is missing or its value is empty. `Key` is given in any case.
  std::string ReadIniValue(std::string_view Section, std::string_view Key, std::string_view Default) const;
  bool HasSection(std::string_view Section) const;
  /// Whether the first section of the name has the key, were it without a value.
  bool HasKey(std::string_view Section, std::string_view Key) const;

  /// Replaces the key's value in place, or appends the key to its section, making the section when missing. The value
  /// is written as it stands, so that one with blanks at its ends or in quotes comes back without them: this stands.
  /// Line ends and NULs in it become blanks. RuntimeFailure for a section or key that the file cannot hold (a key that
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
    std::vector<std::string> Lines;  ///< as they stand, without line ends, up to the last that is not blank
    std::vector<std::string> Blank;  ///< those behind it: they stay at the end when a key is appended
    std::unordered_map<std::string, std::size_t> Keys;  ///< place in Lines of the first key of each name, in upper case

    void Add(std::string_view line);
  };
  void AddLines(std::string_view text);
  void AddLine(std::string_view line);
  const Part* Find(std::string_view section) const;
  /// The line of a key, null when it is missing.
  const std::string* FindLine(std::string_view section, std::string_view key) const;

  std::vector<Part> parts = std::vector<Part>(1);      ///< in file order; the first has no header
  std::unordered_map<std::string, std::size_t> index;  ///< place of the first section of each name, in upper case
};

}  // namespace kestrel::base
