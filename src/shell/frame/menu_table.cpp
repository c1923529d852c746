#include "shell/frame/menu_table.h"

#include "shell/frame/frame.h"

namespace kestrel::shell {
namespace {

using enum MenuWork;

constexpr MenuEntry MenuBar[] = {
    {"mnuFile", "&File", "", Submenu},
    {"mnuOpenSession", "Open Recorded &Session", "mnuFile", Nothing},
    {"mnuOpenFlight", "Open Recorded F&light", "mnuFile", Nothing},
    {"mnuImportAreas", "Import Areas", "mnuFile", Later, nullptr, true},
    {"mnuExportSelectedAreas", "Export Visible Areas", "mnuFile", Later},
    {"mnuExit", "E&xit", "mnuFile", Runs, [](MDIForm1& frame) { frame.close(); }, true},

    {"mnuConnection", "Co&nnection", "", Submenu},
    {"mnuConnCustom", "Connect to...", "mnuConnection", Later},
    {"mnuConnPort", "Connection Port...", "mnuConnection", Later},
    {"mnuDisconnect", "Disconnect", "mnuConnection", Runs, [](MDIForm1& frame) { frame.Disconnect(); }, true},
    {"mnuPhonebook", "Phonebook", "mnuConnection", Submenu, nullptr, true},
    {"mnuPhonebookEdit", "Edit...", "mnuPhonebook", Later},
    {"mnuConnList", "", "mnuPhonebook", Items},

    {"mnuTheaters", "T&heaters", "", Submenu},
    {"mnuModifyTheater", "M&odify Theaters...", "mnuTheaters", Later},
    {"mnuTheatername", "", "mnuTheaters", Items},

    {"mnuBullseyes", "B&ullseyes", "", Submenu},
    {"mnuModifyBullseyes", "Modify Bull&seyes...", "mnuBullseyes", Later},
    {"mnuBullseyesName", "", "mnuBullseyes", Items},

    {"mnuScreen", "S&creen", "", Submenu},
    {"mnuFormsShow", "Show...", "mnuScreen", Submenu},
    {"mnuShowAll", "Show All Floating Windows", "mnuFormsShow", Later},
    {"mnuHideAll", "Hide All Floating Windows", "mnuFormsShow", Later},
    {"mnuFClients", "Clients", "mnuFormsShow", Later, nullptr, true},
    {"mnuFOptions", "Options", "mnuFormsShow", Later},
    {"mnuFBullseye", "Bullseye", "mnuFormsShow", Later},
    {"mnuFCursor", "Cursor", "mnuFormsShow", Later},
    {"mnuFAreas", "Areas", "mnuFormsShow", Later},
    {"mnuFRec", "Playback", "mnuFormsShow", Later},
    {"mnuFMiniMap", "MiniMap", "mnuFormsShow", Later},
    {"mnuFrequencies", "Frequencies", "mnuFormsShow", Later},
    {"mnuResetFloating", "Re&set Floating Windows Position", "mnuScreen", Later},
    {"mnuResetTransparency", "R&eset Floating Windows Transparency", "mnuScreen", Submenu},
    {"mnuTR100", "To 100% (Opaque)", "mnuResetTransparency", Later},
    {"mnuTR75", "To 75%", "mnuResetTransparency", Later},
    {"mnuTR50", "To 50%", "mnuResetTransparency", Later},
    {"mnuTR25", "To 25%", "mnuResetTransparency", Later},
    {"mnuTR5", "To 5%", "mnuResetTransparency", Later},
    {"mnuResteZoomCenter", "Reset Z&oom and Screen Center", "mnuScreen", Runs,
     [](MDIForm1& frame) { frame.ResetZoomAndCenter(); }, true},
    {"mnuResetMainWindowPosition", "Reset Ma&in Window Position", "mnuScreen", Nothing},

    {"mnuRecording", "Re&cording", "", Submenu},
    {"mnuStartRec", "Star&t Recording", "mnuRecording", Later},
    {"mnuStopRecording", "Sto&p Recording", "mnuRecording", Later},
    {"mnuPlaybackMode", "Play&back Mode", "mnuRecording", Nothing, nullptr, true},
    {"mnuOpenPlaybackFile", "Ope&n File for Playback", "mnuRecording", Nothing},

    {"mnuLinks", "Li&nks", "", Submenu},
    {"mnuManageLinks", "Mana&ge Links...", "mnuLinks", Nothing},
    {"mnuLinksNames", "(No Links)", "mnuLinks", Nothing, nullptr, true},

    {"mnuTools", "Too&ls", "", Submenu},
    {"mnuFalconTools", "Falcon Tools", "mnuTools", Submenu},
    {"mnuImportNewTheater", "Import New T&heater", "mnuFalconTools", Later},
    {"mnuImportObjectives", "Import Ob&jectives", "mnuFalconTools", Later},
    {"mnuGetBullseyFromTac", "Get Bu&llseye from tac/cam/trn", "mnuFalconTools", Later},
    {"mnuImportFalconINI", "Import Areas from Falcon INI files", "mnuFalconTools", Later},

    {"mnuHelp", "Hel&p", "", Submenu},
    {"mnuOnlineDocs", "Online Do&cuments", "mnuHelp", Runs, [](MDIForm1& frame) { frame.OpenOnlineDocs(); }},
    {"mnuAutoUpdate", "Auto Check for Update", "mnuHelp", Toggles, [](MDIForm1& frame) { frame.ToggleAutoUpdate(); }},
    {"mnuAbout", "About...", "mnuHelp", Later, nullptr, true},
};

constexpr MenuEntry MapMenu[] = {
    {"PopUp2", "", "", Submenu},
    {"mnuSetCenterOfMap", "Set Center of Map", "PopUp2", Runs, [](MDIForm1& frame) { frame.SetCenterOfMap(); }},
    {"mnuSetNewBulls", "Set New Bullseye", "PopUp2", Later},
    {"mnuAddnewIconArea", "Add New Icon Area", "PopUp2", Later},
};

}  // namespace

std::span<const MenuEntry> MenuBarEntries() { return MenuBar; }

std::span<const MenuEntry> MapMenuEntries() { return MapMenu; }

}  // namespace kestrel::shell
