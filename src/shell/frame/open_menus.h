#pragma once

#include <span>

#include "core/station.h"
#include "shell/frame/menu_table.h"

class QAction;
class QMenuBar;
class QWidget;

namespace kestrel::shell {

/// Gives the entries of `frame`, which have been made, what they have while their menu is open: an access key beyond
/// that of the caption, the key that is bound to them now, grey where they have no action, and their tips. `station`
/// outlives the frame.
void DressOpenMenus(std::span<const MenuEntry> entries, const core::Station& station, QWidget& frame);

/// F10 in the window of `bar` opens its first menu.
void OpenByF10(QMenuBar& bar);

/// Whether an entry can be chosen: neither it nor a menu that it stands in is disabled.
bool MayChoose(const QAction& entry);

}  // namespace kestrel::shell
