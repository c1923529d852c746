#pragma once

#include <span>

namespace kestrel::shell {

class MDIForm1;

/// What is behind a menu entry.
enum class MenuWork {
  Submenu,  ///< opens the entries below it
  Runs,     ///< calls Run
  Toggles,  ///< the same, with a check mark that shows a state
  Nothing,  ///< no action, by intention; greyed while its menu is open
  Items,    ///< a row of items, one for each element of a table, made when the table is known
};

/// One menu entry. The rows stand in the order of display, each parent before its entries.
struct MenuEntry {
  const char* Name;     ///< objectName of the action
  const char* Caption;  ///< with its access key
  const char* Parent;   ///< Name of the menu that it stands in, "" for the menu bar and the pop-up menus
  MenuWork Work = MenuWork::Nothing;
  void (*Run)(MDIForm1&) = nullptr;
  bool LineAbove = false;  ///< a separator before it
  // What it has while its menu is open alone: by the caption others know it.
  const char* Letters = nullptr;  ///< the caption with an access key
  const char* Tip = nullptr;
};

/// The menu bar of the frame.
std::span<const MenuEntry> MenuBarEntries();
/// The pop-up menus: PopUp2 on a right click on the map, PopUp3 in the clients' tree, mnupopup4 in the frequencies'.
/// PopUp1 with its ClsCon is shown nowhere: this stands.
std::span<const MenuEntry> PopUpEntries();

}  // namespace kestrel::shell
