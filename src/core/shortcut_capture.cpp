#include "core/shortcut_capture.h"

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

void ShortcutCapture::End() {
  waiting.reset();
  StartHook(program);
}

KeyBox ShortcutCapture::Box(std::size_t index) const {
  if (waiting == index) return {"<Press Key or ESC to clear>", CapturingColour};
  const std::int32_t binding = program.State.ShortcutKeys[index];
  return {KeyName(binding), binding == 0 ? UnboundColour : BoundColour};
}

}  // namespace kestrel::core
