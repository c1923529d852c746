#pragma once

#include <QHash>
#include <QMainWindow>
#include <QSet>
#include <QTimer>
#include <memory>
#include <span>
#include <string_view>

#include "core/program.h"
#include "shell/frame/enter_key.h"
#include "shell/frame/focus_filter.h"
#include "shell/frame/menu_table.h"
#include "shell/frame/status_strip.h"
#include "shell/frame/tool_windows.h"
#include "shell/map/map_window.h"
#include "shell/parts/modal_count.h"

class QMenu;

namespace kestrel::shell {

class AreaWindows;
class BullseyeWindows;
class FalconWindows;
class LostLink;
class ReplaySign;

/// The frame: menus, the map window and the status strip. Its menus come from the tables of menu_table.h; a menu entry
/// is a QAction named as the entry, an item of a row as the row with "_" and the number of its element.
class MDIForm1 final : public QMainWindow {
  Q_OBJECT
 public:
  /// `running` and `dialogs` outlive the frame.
  MDIForm1(core::Program& running, ModalCount& dialogs);

  MainFrm& Map() { return *map; }
  StatusStrip& Strip() { return *strip; }
  ToolWindows& Tools() { return *tools; }
  core::Program& Program() { return program; }
  BullseyeWindows& Bullseyes() { return *bullseyes; }
  AreaWindows& Areas() { return *areas; }
  FalconWindows& Falcon() { return *falcon; }
  LostLink& Lost() { return *lost; }
  /// True from the moment the closing begins.
  bool Closing() const { return closing; }
  /// A pop-up menu by its name, e.g. "PopUp3".
  QMenu& PopUp(const char* name) const;

  /// Refreshes each marked view once: the map, the frame's own, the floating windows.
  void Refresh(base::Changed what);
  void ShowAutoUpdate();
  /// Runs the menu entry of a name, unless it or its menu is disabled.
  void RunEntry(std::string_view name);

  // What the menu entries run.
  void Disconnect();
  void StartRecording();
  void StopRecording();
  void ExportTape();
  void ResetZoomAndCenter();
  void OpenOnlineDocs();
  void ToggleAutoUpdate();
  void SetCenterOfMap();
  void ConnectCustom();
  void ChangePort();
  void EditPhonebook();
  void ModifyTheaters();
  /// Disables a menu entry for as long as anybody holds it.
  void Hold(const char* entry, const QObject& holder, bool held);
  /// Holds a floating window back while another window works on what it shows: it is hidden, its button and its menu
  /// entry are disabled; or gives it back as it was.
  void Withhold(core::ToolWindow which, bool withheld);
  /// mnuShowAll and mnuHideAll, for the windows that are not held back.
  void CheckAllTools(bool shown);
  /// A menu entry of a floating window: presses its button in the strip. A window that is shown so gets the keyboard.
  void ToggleTool(core::ToolWindow which);
  void About();
  void ShowKeys();
  /// The entries of PopUp3, for the client whose node it was opened on.
  void ShowPlotOfNode();
  void HidePlotOfNode();

 Q_SIGNALS:
  /// The stop steps have run; nothing is left to do but to end.
  void Closed();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  /// One item for each entry of the phonebook.
  void LoadConnectionMenus();
  /// Behind them: what takes out an entry that is new and never connected.
  void AddDrops();
  /// One item for each theater and each bullseye of the current one; only the current ones are checked.
  void ReloadNameMenu();
  /// Caption, lamp and mnuDisconnect.
  void ShowConnection();
  /// The recording lamp and entries, and what a loaded tape disables.
  void ShowTape();
  void ShowZoom();
  /// How many lines to threats the map has.
  void ShowThreats();
  /// What follows the pointer: its position and elevation, and the line on the map with its text.
  void ShowPointer();

  void BuildMenus(std::span<const MenuEntry> entries);
  QAction* AddEntry(const MenuEntry& entry, QMenu& parent);
  /// Takes the items of a row out of its menu; the menu that it stands in.
  QMenu& ClearItems(const char* row);
  QAction& AddItem(const char* row, std::size_t index, const std::string& caption);
  QAction& Entry(const char* name) const;

  /// Takes the floating windows away while another program is in front.
  void FollowActivation();
  void ShowPopUp4(const QPoint& place);

  core::Program& program;
  ModalCount& modal;
  MainFrm* map = nullptr;
  ReplaySign* replay = nullptr;
  BullseyeWindows* bullseyes = nullptr;
  AreaWindows* areas = nullptr;
  FalconWindows* falcon = nullptr;
  StatusStrip* strip = nullptr;
  LostLink* lost = nullptr;
  std::unique_ptr<ToolWindows> tools;
  EnterKey enter;
  FocusFilter focus;
  QTimer rescue;  ///< now and then, for what a crash would lose
  QTimer left;    ///< runs while no window of ours is active
  bool closing = false;
  QHash<QString, QSet<const QObject*>> holders;  ///< of menu entries, by their names
};

}  // namespace kestrel::shell
