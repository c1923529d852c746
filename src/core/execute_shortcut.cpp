#include "core/execute_shortcut.h"

#include <exception>
#include <string>

#include "core/shortcuts.h"
#include "core/view_options.h"
#include "map/cursor_tools.h"
#include "map/geometry.h"
#include "radio/transmit.h"

namespace kestrel::core {
namespace {

using base::Changed;

radio::TransmitKey TransmitOf(const Shortcut& shortcut) { return static_cast<radio::TransmitKey>(shortcut.Argument); }

/// What the windows then have to show anew.
Changed Run(Program& program, const Shortcut& shortcut) {
  map::ViewState& view = program.State.View;
  switch (shortcut.Act) {
    case ShortcutAct::ZoomIn:
      return map::IncreaseResolution(view);
    case ShortcutAct::ZoomOut:
      return map::DecreaseResolution(view);
    case ShortcutAct::Move:
      return map::MoveScreen(view, shortcut.Argument);
    case ShortcutAct::ApplyView:
      return map::SetViewShortcut(view, shortcut.Argument);
    case ShortcutAct::SaveView:
      SaveView(program, shortcut.Argument);
      return Changed::Nothing;
    case ShortcutAct::Toggle:
      return ToggleOption(program, shortcut.Option);
    case ShortcutAct::Cursor:
      return map::SetStaticCursor(view, program.State.MapOptions, !program.State.MapOptions.STATICCURSOR) |
             Changed::Options;
    case ShortcutAct::Transmit:
      radio::PressTransmit(program.State.Transmit, program.Voice, TransmitOf(shortcut));
      return Changed::Transmit;
    case ShortcutAct::Menu:
      program.Shown.RunEntry(shortcut.Option);
      return Changed::Nothing;
  }
  return Changed::Nothing;
}

}  // namespace

void SaveView(Program& program, std::int16_t slot) {
  map::SaveViewShortcut(program.State.View, slot);
  program.Shown.ShowMoment("View " + std::to_string(slot) + " saved");
}

void ExecuteShortcut(Program& program, std::int32_t index) {
  const Shortcut* shortcut = ShortcutOf(index);
  if (shortcut != nullptr) program.Shown.Refresh(Run(program, *shortcut));
}

void MapKey(Program& program, std::int32_t keyCode, std::int32_t shift) {
  ExecuteShortcut(program, MapShortcut(program.State.ShortcutKeys, program.State.OwnKeys, keyCode, shift));
}

void HookedKey(Program& program, const GlobalKey& key) {
  const std::int32_t index = GlobalShortcut(program.State.ShortcutKeys, key.KeyCode, key.Shift);
  if (index < 0) return;
  if (key.Down) {
    ExecuteShortcut(program, index);
    return;
  }
  radio::ReleaseTransmit(program.State.Transmit, program.Voice, TransmitOf(Shortcuts[static_cast<std::size_t>(index)]));
  program.Shown.Refresh(Changed::Transmit);
}

void StartHook(Program& program) {
  // A key box that loses the focus to the closing asks for it again.
  if (program.State.HookInstalled || program.State.Closing) return;
  program.State.HookInstalled = program.Keys.Start([&program](const GlobalKey& key) {
    try {
      HookedKey(program, key);
    } catch (const std::exception& failure) {
      program.Log.LogLine(failure.what());
    }
  });
}

void StopHook(Program& program) {
  if (!program.State.HookInstalled) return;
  program.Keys.Stop();
  program.State.HookInstalled = false;
  ReleaseRadios(program);
}

void ReleaseRadios(Program& program) {
  if (radio::ReleaseHeld(program.State.Transmit, program.Voice)) program.Shown.Refresh(Changed::Transmit);
}

}  // namespace kestrel::core
