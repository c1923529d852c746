#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "falcon/install_keys.h"

namespace kestrel::falcon {

/// What is registered in a Wine prefix: the few values of its "system.reg" that tell of installations, whichever of the
/// registry's views they stand in, and its drives, the links in "dosdevices". The file is read line by line and never
/// held; lines that are longer than a value of ours can be are passed over, and one without an end is not taken.
class WineRegistry final : public InstallKeys {
 public:
  static constexpr std::size_t LongestLine = 4096;  ///< bytes, continued lines together
  static constexpr std::size_t MostKeys = 256;      ///< that are kept, in the order of the file

  /// Of a prefix whose file is to be read by pieces.
  explicit WineRegistry(std::filesystem::path prefix) : folder(std::move(prefix)) {}
  WineRegistry(const WineRegistry&) = delete;
  WineRegistry& operator=(const WineRegistry&) = delete;
  WineRegistry(WineRegistry&&) = default;
  WineRegistry& operator=(WineRegistry&&) = default;
  /// RuntimeFailure when the prefix has no "system.reg" or it cannot be read.
  static WineRegistry Load(const std::filesystem::path& prefix);
  /// Takes the next bytes of the file, pieces of any size.
  void Take(std::string_view bytes);

  std::optional<KeyValue> ReadValue(std::string_view key, std::string_view value) const override;
  std::vector<std::string> SubKeys(std::string_view key) const override;
  std::filesystem::path FolderOf(std::string_view text) const override;

 private:
  struct Value {
    KeyValue Content;
    bool Is32Bit = false;
  };
  struct Key {
    std::string Name;                     ///< its last step as it is written
    std::map<std::string, Value> Values;  ///< by the name in lower case
  };

  void TakeLine(std::string_view line);
  void OpenKey(std::string_view line);
  void TakeValue(std::string_view line);

  std::filesystem::path folder;
  std::map<std::string, Key> keys;  ///< by the whole name in lower case, without the step of the 32-bit view
  Key* open = nullptr;              ///< the key whose values follow; null: one that is not kept
  bool openIs32Bit = false;
  std::string line;       ///< what has come of the line that is being read, cut behind LongestLine
  std::string continued;  ///< the lines before it that go on in it, likewise
  bool goesOn = false;
};

}  // namespace kestrel::falcon
