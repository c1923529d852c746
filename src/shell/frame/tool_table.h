#pragma once

#include <span>

#include "core/station.h"
#include "shell/frame/line_icon.h"

namespace kestrel::shell {

/// What belongs to one floating window: its button in the status strip and its menu entry.
struct ToolEntry {
  core::ToolWindow Which;
  const char* Window;   ///< objectName of the window
  const char* Caption;  ///< on its caption strip
  const char* Title;    ///< in menus and tool tips
  const char* Check;    ///< objectName of its button in the status strip
  const char* Menu;     ///< name of its menu entry
  IconKind Icon;        ///< on its button
};

/// The eight in the order of their buttons.
std::span<const ToolEntry> ToolEntries();
const ToolEntry& ToolEntryOf(core::ToolWindow which);

}  // namespace kestrel::shell
