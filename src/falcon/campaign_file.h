#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::falcon {

/// Largest campaign file that is read; the largest known are below 2 MB.
inline constexpr std::size_t MaxCampaignFileBytes = std::size_t{64} << 20;

/// The container that the suffixes ".cam", ".tac" and ".trn" share: pieces of any order and a directory of them, which
/// other bytes may follow.
class CampaignFile {
 public:
  /// Takes the bytes of a whole file. RuntimeFailure when its directory is damaged or names what lies outside the file.
  explicit CampaignFile(std::string bytes);

  /// A piece as the directory tells it. Pieces may share bytes.
  struct Entry {
    std::string Name;
    std::size_t Position = 0;
    std::size_t Size = 0;
  };
  const std::vector<Entry>& Entries() const { return entries; }

  /// The piece whose name ends in "." and `extension`, whatever the case: a container may have been renamed after it
  /// was written, so nothing but the extension counts. Nothing when there is none; the view lasts as long as the file.
  std::optional<std::string_view> Piece(std::string_view extension) const;

  /// The number of the layout of its pieces ("ver"), 1 to 999; nothing when the file does not tell. RuntimeFailure when
  /// what it tells is no such number.
  std::optional<int> DataVersion() const;

 private:
  std::string content;
  std::vector<Entry> entries;
};

}  // namespace kestrel::falcon
