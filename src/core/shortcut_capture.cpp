#include "core/shortcut_capture.h"

#include <algorithm>

#include "core/execute_shortcut.h"
#include "core/shortcuts.h"

namespace kestrel::core {

void ShortcutCapture::Begin(std::size_t index) {
  if (waiting) End();
  if (index >= ShortcutCount) return;
  StopHook(program);
  program.State.ShortcutKeys[index] = 0;
  waiting = index;
}

bool ShortcutCapture::Key(std::size_t index, std::int32_t keyCode, std::int32_t shift) {
  if (waiting != index) return false;
  if (keyCode == 0 || IsModifierKey(keyCode)) return true;
  program.State.ShortcutKeys[index] = keyCode == KeyEsc ? 0 : Binding(keyCode, shift);
  End();
  return true;
}

void ShortcutCapture::LoseFocus(std::size_t index) {
  if (waiting == index) End();
}

void ShortcutCapture::LoadDefaults(std::size_t first, std::size_t end) {
  Bindings& keys = program.State.ShortcutKeys;
  const Bindings former = keys;
  core::LoadDefaults(keys, first, end);
  // The release of a key that is held would not be known as one any more.
  if (!std::equal(former.begin() + FirstTransmitShortcut, former.end(), keys.begin() + FirstTransmitShortcut)) {
    ReleaseRadios(program);
  }
}

void ShortcutCapture::End() {
  waiting.reset();
  StartHook(program);
}

KeyBox ShortcutCapture::Box(std::size_t index) const {
  if (waiting == index) return {"<Press Key or ESC to clear>", CapturingColour};
  const std::int32_t binding = program.State.ShortcutKeys[index];
  return {KeyName(binding), binding == 0 ? UnboundColour : BoundColour};
}

std::string ShortcutCapture::Note() const {
  if (std::string missing = program.Keys.Missing(); !missing.empty()) return missing;
  std::string unheard;
  for (auto index = static_cast<std::size_t>(FirstTransmitShortcut); index < ShortcutCount; ++index) {
    const std::int32_t binding = program.State.ShortcutKeys[index];
    if (binding == 0 || program.Keys.Hears(binding)) continue;
    if (!unheard.empty()) unheard += ", ";
    unheard += KeyName(binding) + " (" + std::string(Shortcuts[index].Name) + ")";
  }
  return unheard.empty() ? unheard : "Not heard here: " + unheard + ". Choose another key.";
}

}  // namespace kestrel::core
