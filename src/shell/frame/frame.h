#pragma once

#include <QMainWindow>
#include <span>

#include "core/program.h"
#include "shell/frame/menu_table.h"
#include "shell/frame/status_strip.h"
#include "shell/map/map_window.h"

class QMenu;

namespace kestrel::shell {

/// The frame: menus, the map window and the status strip. Its menus come from the tables of menu_table.h; a menu entry
/// is a QAction named as the entry, an item of a row as the row with "_" and the number of its element.
class MDIForm1 final : public QMainWindow {
  Q_OBJECT
 public:
  /// `program` outlives the frame.
  explicit MDIForm1(core::Program& program);

  MainFrm& Map() { return *map; }
  StatusStrip& Strip() { return *strip; }

  /// One item for each entry of the phonebook.
  void LoadConnectionMenus();
  /// One item for each theater and each bullseye of the current one; only the current ones are checked.
  void ReloadNameMenu();
  /// Caption, lamp and mnuDisconnect.
  void ShowConnection();
  void ShowZoom();
  /// Position, latitude and longitude of the pointer.
  void ShowPointer();
  void ShowAutoUpdate();

  // What the menu entries run.
  void Disconnect();
  void ResetZoomAndCenter();
  void OpenOnlineDocs();
  void ToggleAutoUpdate();
  void SetCenterOfMap();

 Q_SIGNALS:
  /// The stop steps have run; nothing is left to do but to end.
  void Closed();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QMenu* BuildMenus(std::span<const MenuEntry> entries);
  QAction* AddEntry(const MenuEntry& entry, QMenu& parent);
  /// Takes the items of a row out of its menu; the menu that it stands in.
  QMenu& ClearItems(const char* row);
  QAction& AddItem(const char* row, std::size_t index, const std::string& caption);
  QAction& Entry(const char* name) const;

  core::Program& station;
  MainFrm* map = nullptr;
  StatusStrip* strip = nullptr;
  bool closing = false;
};

}  // namespace kestrel::shell
