#include "platform/windows/windows_install_keys.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <memory>

#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"
#include "platform/make_seams.h"

namespace kestrel::platform {
namespace fs = std::filesystem;
namespace {

constexpr REGSAM Views[] = {KEY_WOW64_32KEY, KEY_WOW64_64KEY};
constexpr DWORD MostValueBytes = 4096;
/// Of a key with very many sub-keys the first ones are listed.
constexpr DWORD MostSubKeys = 1024;
/// Characters of the longest name of a key, and one that ends it.
constexpr std::size_t NameRoom = 256;

/// A key while it is read; null where there is none.
class OpenKey {
 public:
  OpenKey(std::string_view name, REGSAM view) {
    const std::string text(name);
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, text.c_str(), 0, KEY_READ | view, &key) != ERROR_SUCCESS) key = nullptr;
  }
  ~OpenKey() {
    if (key != nullptr) RegCloseKey(key);
  }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;

  HKEY Handle() const { return key; }

 private:
  HKEY key = nullptr;
};

/// The value of a key; nothing when there is none of a kind that is read.
std::optional<falcon::KeyValue> ValueIn(HKEY key, const std::string& name) {
  std::array<char, MostValueBytes> bytes{};
  DWORD kind = REG_NONE;
  auto size = static_cast<DWORD>(bytes.size());
  if (RegQueryValueExA(key, name.c_str(), nullptr, &kind, reinterpret_cast<BYTE*>(bytes.data()), &size) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::string content(bytes.data(), std::min<std::size_t>(size, bytes.size()));
  if (kind == REG_BINARY) return falcon::KeyValue{true, std::move(content)};
  if (kind != REG_SZ && kind != REG_EXPAND_SZ) return std::nullopt;
  // The NUL that ends a text is stored with it.
  if (content.ends_with('\0')) content.pop_back();
  return falcon::KeyValue{false, std::move(content)};
}

}  // namespace

std::optional<falcon::KeyValue> WindowsInstallKeys::ReadValue(std::string_view key, std::string_view value) const {
  for (const REGSAM view : Views) {
    const OpenKey open(key, view);
    if (open.Handle() == nullptr) continue;
    if (auto found = ValueIn(open.Handle(), std::string(value))) return found;
  }
  return std::nullopt;
}

std::vector<std::string> WindowsInstallKeys::SubKeys(std::string_view key) const {
  std::vector<std::string> names;
  for (const REGSAM view : Views) {
    const OpenKey open(key, view);
    for (DWORD index = 0; open.Handle() != nullptr && index < MostSubKeys; ++index) {
      std::array<char, NameRoom> room{};
      auto size = static_cast<DWORD>(room.size());
      if (RegEnumKeyExA(open.Handle(), index, room.data(), &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
        break;
      std::string name(room.data(), size);
      const auto same = [&name](const std::string& known) { return base::SameNoCase(known, name); };
      // Both views show the same key where the system has but one of them.
      if (std::none_of(names.begin(), names.end(), same)) names.push_back(std::move(name));
    }
  }
  return names;
}

fs::path WindowsInstallKeys::FolderOf(std::string_view text) const {
  const bool isDrive = text.size() > 2 && text[1] == ':' && (text[2] == '\\' || text[2] == '/');
  if (!isDrive && !text.starts_with("\\\\")) return {};
  try {
    const fs::path folder = base::FindFile({}, text);
    std::error_code failure;
    return isDrive && !fs::is_directory(folder.root_path(), failure) ? fs::path() : folder;
  } catch (const base::RuntimeFailure&) {
    return {};
  }
}

falcon::InstallSources MakeInstallKeys() {
  falcon::InstallSources sources;
  sources.push_back(std::make_unique<WindowsInstallKeys>());
  return sources;
}

}  // namespace kestrel::platform
