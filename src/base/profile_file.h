#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::base {

/// A sectioned text file ("[SECTION]", "KEY=value") as the Windows profile interface reads and writes it: names without
/// regard to case, the first section and the first key of a name win, blanks around key and value dropped, one pair of
/// enclosing quotes dropped on reading, lines that begin with ";" and lines without "=" skipped but kept when the file
/// is written back, either line end read, CR LF written. It lives in memory: read once, change, write once. A key is
/// found and written at the same cost however many there are.
class ProfileFile {
  struct Part;

 public:
  /// A section, for who reads many keys of it: good until the file is written to or ends. One that is missing has none.
  /// Keys that are asked for in their order in the file are found soonest.
  class SectionView {
   public:
    /// As ReadIniValue; the text is the file's, or `Default` itself.
    std::string_view Value(std::string_view Key, std::string_view Default = {});
    /// Whether the key stands there, with a value or without.
    bool HasKey(std::string_view Key) const;
    /// Whether the section stands in the file.
    bool IsThere() const { return part != nullptr; }

   private:
    friend class ProfileFile;
    explicit SectionView(const Part* found) : part(found) {}
    const Part* part;      ///< null: missing
    std::size_t next = 0;  ///< line behind the one that was found last
  };

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
  /// How many sections there are, those of a name that stood before included.
  std::size_t SectionCount() const { return parts.size() - 1; }
  SectionView Open(std::string_view name) const { return SectionView(Find(name)); }

  /// Replaces the key's value in place, or appends the key to its section, making the section when missing. The value
  /// is written as it stands, so that one with blanks at its ends or in quotes comes back without them: this stands.
  /// Line ends and NULs in it become blanks. RuntimeFailure for a section or key that the file cannot hold (a key that
  /// is empty, or begins as a comment, header or banner does, or holds "=").
  void WriteIniValue(std::string_view Section, std::string_view Key, std::string_view Value);

  /// Appends the first section of the name in another file as it stands, with what is no key; nothing when it has none.
  /// This file has no such section yet.
  void CopySection(const ProfileFile& from, std::string_view section);

  /// Adds a line as it stands at the end of what is there (the banner of line 1).
  void AppendLine(std::string_view line);

  /// The file as it is written, with CR LF at each line end.
  std::string Text() const;
  /// Writes it whole (WriteWholeFile).
  void Save(const std::filesystem::path& path) const;

 private:
  /// Where names stand in a list that tells them by `nameOf(place)`, of equal ones the first; one without data is none.
  /// A table that is longer than the list, in which the next places are tried where two names meet.
  class NameIndex {
   public:
    /// Makes it anew for a list of `count` names.
    template <class NameOf>
    void Fill(std::size_t count, const NameOf& nameOf);
    /// Adds the last name of a list, which is now `count` long.
    template <class NameOf>
    void AddLast(std::size_t count, const NameOf& nameOf);
    /// The place of a name; nothing when it is not there.
    template <class NameOf>
    std::optional<std::size_t> Find(std::string_view name, const NameOf& nameOf) const;
    /// No name stands at two places.
    bool AllDiffer() const { return !repeats; }

   private:
    struct Slot {
      std::uint32_t Hash = 0;
      std::uint32_t Place = 0;  ///< from 1; 0 is free
    };
    /// The slot of the name, or the free one where it belongs.
    template <class NameOf>
    std::size_t SlotOf(std::string_view name, std::uint32_t hash, const NameOf& nameOf) const;

    std::vector<Slot> slots;  ///< their number is a power of two
    bool repeats = false;
  };

  /// Its texts belong to `texts`.
  struct Part {
    std::string_view Header;  ///< the header line as it stands; none for what stands before the first header
    std::string_view Name;    ///< of the section, blanks at its ends left out
    std::vector<std::string_view> Lines;  ///< as they stand, without line ends, up to the last that is not blank
    std::vector<std::string_view> Blank;  ///< those behind it: they stay at the end when a key is appended
    NameIndex Keys;                       ///< places in Lines

    auto KeyAt() const;  ///< tells the key of each of the lines
  };
  auto NameAt() const;  ///< tells the name of each of the parts
  void AddPart(std::string_view header, std::string_view name);
  /// Keeps a text for as long as this file or a copy lives.
  std::string_view Keep(std::string text);
  /// The lines of a whole file.
  void Parse(std::string bytes);
  void AddLine(std::string_view line);
  const Part* Find(std::string_view section) const;

  std::vector<std::shared_ptr<const std::string>> texts;  ///< what was read as a whole, and each line that was written
  std::vector<Part> parts = std::vector<Part>(1);         ///< in file order; the first has no header
  NameIndex sections;                                     ///< places in parts
};

}  // namespace kestrel::base
