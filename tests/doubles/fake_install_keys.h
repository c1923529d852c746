#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "falcon/install_keys.h"

namespace kestrel::doubles {

/// Registrations that a test makes. Drive C: is a folder of the test, others are not there.
struct FakeInstallKeys final : falcon::InstallKeys {
  std::map<std::string, std::map<std::string, falcon::KeyValue>> Keys;  ///< values by their names, by the key
  std::filesystem::path DriveC;

  void AddText(const std::string& key, const std::string& value, const std::string& text) {
    Keys[key][value] = {false, text};
  }

  std::optional<falcon::KeyValue> ReadValue(std::string_view key, std::string_view value) const override {
    const auto values = Keys.find(std::string(key));
    if (values == Keys.end()) return std::nullopt;
    const auto found = values->second.find(std::string(value));
    return found == values->second.end() ? std::nullopt : std::optional(found->second);
  }

  std::vector<std::string> SubKeys(std::string_view key) const override {
    std::vector<std::string> names;
    const std::string above = std::string(key) + "\\";
    for (const auto& [name, values] : Keys) {
      if (name.starts_with(above)) names.push_back(name.substr(above.size()));
    }
    return names;
  }

  std::filesystem::path FolderOf(std::string_view text) const override {
    return text.starts_with("C:\\") ? DriveC / text.substr(3) : std::filesystem::path();
  }
};

}  // namespace kestrel::doubles
