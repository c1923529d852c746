#include "core/shortcuts.h"

#include <algorithm>

namespace kestrel::core {

const Shortcut* ShortcutOf(std::int32_t index) {
  const auto in = [](const auto& table, std::int32_t at) {
    return at >= 0 && at < static_cast<std::int32_t>(table.size()) ? &table[static_cast<std::size_t>(at)] : nullptr;
  };
  return index < FirstOwnShortcut ? in(Shortcuts, index) : in(OwnShortcuts, index - FirstOwnShortcut);
}

void LoadDefaults(Bindings& keys, std::size_t first, std::size_t end) {
  for (std::size_t index = first; index < std::min(end, ShortcutCount); ++index) keys[index] = Shortcuts[index].Default;
}

std::int32_t FindShortcut(const Bindings& keys, std::int32_t keyCode, std::int32_t shift) {
  if (keyCode == 0) return -1;
  const auto found = std::find(keys.begin(), keys.end(), Binding(keyCode, shift));
  return found == keys.end() ? -1 : static_cast<std::int32_t>(found - keys.begin());
}

std::int32_t MapShortcut(const Bindings& keys, std::int32_t keyCode, std::int32_t shift) {
  if (IsModifierKey(keyCode)) return -1;
  const std::int32_t index = FindShortcut(keys, keyCode, shift);
  return index < FirstTransmitShortcut ? index : -1;
}

std::int32_t MapShortcut(const Bindings& keys, const OwnBindings& own, std::int32_t keyCode, std::int32_t shift) {
  if (IsModifierKey(keyCode) || keyCode == 0) return -1;
  if (FindShortcut(keys, keyCode, shift) >= 0) return MapShortcut(keys, keyCode, shift);
  const auto found = std::find(own.begin(), own.end(), Binding(keyCode, shift));
  return found == own.end() ? -1 : FirstOwnShortcut + static_cast<std::int32_t>(found - own.begin());
}

std::int32_t GlobalShortcut(const Bindings& keys, std::int32_t keyCode, std::int32_t shift) {
  if (IsModifierKey(keyCode)) return -1;
  const std::int32_t index = FindShortcut(keys, keyCode, shift);
  return index >= FirstTransmitShortcut ? index : -1;
}

}  // namespace kestrel::core
