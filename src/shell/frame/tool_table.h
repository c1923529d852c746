#pragma once

#include <memory>
#include <span>

#include "core/program.h"
#include "shell/parts/line_icon.h"
#include "shell/parts/modal_count.h"
#include "shell/parts/tool_frm.h"

namespace kestrel::shell {

/// What belongs to one floating window: its class, its button in the status strip and its menu entry.
struct ToolEntry {
  core::ToolWindow Which;
  const char* Window;   ///< objectName of the window
  const char* Caption;  ///< on its caption strip
  const char* Title;    ///< in menus and tool tips
  const char* Check;    ///< objectName of its button in the status strip
  const char* Menu;     ///< name of its menu entry
  IconKind Icon;        ///< on its button
  std::unique_ptr<ToolFrm> (*Make)(core::Program&, ModalCount&, QWidget* frame);
};

/// The eight in the order of their buttons.
std::span<const ToolEntry> ToolEntries();

}  // namespace kestrel::shell
