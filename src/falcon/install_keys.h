#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::falcon {

/// The key of an older Falcon.
inline constexpr std::string_view FalconKey = "SOFTWARE\\Microprose\\Falcon\\4.0";
/// The key whose sub-keys are the versions of BMS, and how the name of each begins.
inline constexpr std::string_view BmsKeys = "SOFTWARE\\Benchmark Sims";
inline constexpr std::string_view BmsName = "Falcon BMS";

/// A value of the registry: bytes as they are stored, or text as bytes of the code page.
struct KeyValue {
  bool IsBinary = false;
  std::string Bytes;
};

/// Where installations have registered themselves: the registry of the system or of a Wine prefix, or what a person
/// has written by hand. Keys are named below HKEY_LOCAL_MACHINE, with backslashes, in any case; one that stands in the
/// registry's view of 32 bits goes before its namesake in the other. It is only read.
class InstallKeys {
 public:
  virtual ~InstallKeys() = default;
  /// Nothing when there is no such value or it cannot be read.
  virtual std::optional<KeyValue> ReadValue(std::string_view key, std::string_view value) const = 0;
  /// The names of the keys right below, each once; none when there is no such key.
  virtual std::vector<std::string> SubKeys(std::string_view key) const = 0;
  /// The folder that a text such as "C:\Games" names; empty when there is no such drive or the text names none.
  virtual std::filesystem::path FolderOf(std::string_view text) const = 0;
};

/// All places where installations may have registered themselves, those that count first first.
using InstallSources = std::vector<std::unique_ptr<InstallKeys>>;

}  // namespace kestrel::falcon
