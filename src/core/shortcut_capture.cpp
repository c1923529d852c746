#include "core/shortcut_capture.h"

#include <algorithm>

#include "core/execute_shortcut.h"
#include "core/shortcuts.h"

namespace kestrel::core {

void ShortcutCapture::Begin(std::size_t index) {
  // The key of a capture that is broken off comes back with this one's.
  if (!waiting) former = Present();
  if (waiting) End();
  if (ShortcutOf(static_cast<std::int32_t>(index)) == nullptr) return;
  StopHook(program);
  BindingOf(index) = 0;
  waiting = index;
}

bool ShortcutCapture::Key(std::size_t index, std::int32_t keyCode, std::int32_t shift) {
  if (waiting != index) return false;
  if (keyCode == 0 || IsModifierKey(keyCode)) return true;
  BindingOf(index) = keyCode == KeyEsc ? 0 : Binding(keyCode, shift);
  End();
  return true;
}

void ShortcutCapture::LoseFocus(std::size_t index) {
  if (waiting == index) End();
}

void ShortcutCapture::LoadDefaults(std::size_t first, std::size_t end) {
  former = Present();
  AllKeys keys = *former;
  core::LoadDefaults(keys.Keys, first, end);
  if (first == 0) keys.Own = DefaultOwnBindings();
  Take(keys);
}

void ShortcutCapture::Undo() {
  if (waiting) End();
  if (former) Take(*former);
  former.reset();
}

bool ShortcutCapture::MayUndo() const { return former && *former != Present(); }

std::int32_t& ShortcutCapture::BindingOf(std::size_t index) const {
  Station& station = program.State;
  constexpr auto own = static_cast<std::size_t>(FirstOwnShortcut);
  return index < own ? station.ShortcutKeys.at(index) : station.OwnKeys.at(index - own);
}

ShortcutCapture::AllKeys ShortcutCapture::Present() const {
  return {program.State.ShortcutKeys, program.State.OwnKeys};
}

void ShortcutCapture::Take(const AllKeys& keys) {
  const Bindings before = program.State.ShortcutKeys;
  program.State.ShortcutKeys = keys.Keys;
  program.State.OwnKeys = keys.Own;
  // The release of a key that is held would not be known as one any more.
  if (!std::equal(before.begin() + FirstTransmitShortcut, before.end(), keys.Keys.begin() + FirstTransmitShortcut)) {
    ReleaseRadios(program);
  }
}

void ShortcutCapture::End() {
  waiting.reset();
  StartHook(program);
}

KeyBox ShortcutCapture::Box(std::size_t index) const {
  if (waiting == index) return {"<Press Key or ESC to clear>", CapturingColour};
  const std::int32_t binding = BindingOf(index);
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
