#pragma once

#include "falcon/install_keys.h"

namespace kestrel::platform {

/// The registry, HKEY_LOCAL_MACHINE, opened to be read and for the time of a question alone: first its view of 32 bits,
/// then that of 64 bits.
class WindowsInstallKeys final : public falcon::InstallKeys {
 public:
  /// Of values texts and bytes; text that is to be expanded is taken as it stands. One of more than 4096 bytes counts
  /// as missing.
  std::optional<falcon::KeyValue> ReadValue(std::string_view key, std::string_view value) const override;
  std::vector<std::string> SubKeys(std::string_view key) const override;
  std::filesystem::path FolderOf(std::string_view text) const override;
};

}  // namespace kestrel::platform
