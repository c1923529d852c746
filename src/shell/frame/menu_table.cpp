#include "shell/frame/menu_table.h"

#include "core/area_exchange.h"
#include "core/guide.h"
#include "core/mission_areas.h"
#include "core/setup.h"
#include "shell/frame/area_windows.h"
#include "shell/frame/bullseye_windows.h"
#include "shell/frame/falcon_windows.h"
#include "shell/frame/frame.h"
#include "shell/radio/freq_frm.h"

namespace kestrel::shell {
namespace {

using enum MenuWork;
using enum core::ToolWindow;

template <core::ToolWindow Which>
void ToggleTool(MDIForm1& frame) {
  frame.ToggleTool(Which);
}

template <int Percent>
void ResetTransparency(MDIForm1& frame) {
  frame.Tools().ResetTransparency(Percent);
}

/// A procedure of core that asks and tells by itself.
template <void (*Procedure)(core::Program&)>
void Core(MDIForm1& frame) {
  Procedure(frame.Program());
}

/// What the panel of the frequencies does for the node that its pop-up menu was opened on.
template <void (FreqFrm::*Procedure)()>
void Freqs(MDIForm1& frame) {
  (frame.Tools().The<FreqFrm>().*Procedure)();
}

/// Tips of entries without action.
constexpr char LoadInPlayback[] = "Not in this version: Load File in the window Playback opens a tape";
constexpr char NotThere[] = "Not in this version";

constexpr MenuEntry MenuBar[] = {
    {"mnuFile", "&File", "", Submenu},
    {"mnuOpenSession", "Open Recorded &Session", "mnuFile", Nothing, nullptr, false, nullptr, LoadInPlayback},
    {"mnuOpenFlight", "Open Recorded F&light", "mnuFile", Nothing, nullptr, false, nullptr, LoadInPlayback},
    {"mnuImportAreas", "Import Areas", "mnuFile", Runs, Core<core::ImportAreas>, true},
    {"mnuExportSelectedAreas", "Export Visible Areas", "mnuFile", Runs, Core<core::ExportVisibleAreas>},
    {"mnuExit", "E&xit", "mnuFile", Runs, [](MDIForm1& frame) { frame.close(); }, true},

    {"mnuConnection", "Co&nnection", "", Submenu},
    {"mnuConnCustom", "Connect to...", "mnuConnection", Runs, [](MDIForm1& frame) { frame.ConnectCustom(); }, false,
     "&Connect to..."},
    {"mnuConnPort", "Connection Port...", "mnuConnection", Runs, [](MDIForm1& frame) { frame.ChangePort(); }},
    {"mnuDisconnect", "Disconnect", "mnuConnection", Runs, [](MDIForm1& frame) { frame.Disconnect(); }, true},
    {"mnuPhonebook", "Phonebook", "mnuConnection", Submenu, nullptr, true, "&Phonebook"},
    {"mnuPhonebookEdit", "Edit...", "mnuPhonebook", Runs, [](MDIForm1& frame) { frame.EditPhonebook(); }, false,
     "&Edit..."},
    {"mnuConnList", "", "mnuPhonebook", Items},

    {"mnuTheaters", "T&heaters", "", Submenu},
    {"mnuModifyTheater", "M&odify Theaters...", "mnuTheaters", Runs, [](MDIForm1& frame) { frame.ModifyTheaters(); }},
    {"mnuTheatername", "", "mnuTheaters", Items},

    {"mnuBullseyes", "B&ullseyes", "", Submenu},
    {"mnuModifyBullseyes", "Modify Bull&seyes...", "mnuBullseyes", Runs,
     [](MDIForm1& frame) { frame.Bullseyes().ShowList(); }},
    {"mnuBullseyesName", "", "mnuBullseyes", Items},

    {"mnuScreen", "S&creen", "", Submenu},
    {"mnuFormsShow", "Show...", "mnuScreen", Submenu},
    {"mnuShowAll", "Show All Floating Windows", "mnuFormsShow", Runs,
     [](MDIForm1& frame) { frame.CheckAllTools(true); }},
    {"mnuHideAll", "Hide All Floating Windows", "mnuFormsShow", Runs,
     [](MDIForm1& frame) { frame.CheckAllTools(false); }},
    {"mnuFClients", "Clients", "mnuFormsShow", Toggles, ToggleTool<Clients>, true},
    {"mnuFOptions", "Options", "mnuFormsShow", Toggles, ToggleTool<View>},
    {"mnuFBullseye", "Bullseye", "mnuFormsShow", Toggles, ToggleTool<Bulls>},
    {"mnuFCursor", "Cursor", "mnuFormsShow", Toggles, ToggleTool<Curs>},
    {"mnuFAreas", "Areas", "mnuFormsShow", Toggles, ToggleTool<Areas>},
    {"mnuFRec", "Playback", "mnuFormsShow", Toggles, ToggleTool<Rec>},
    {"mnuFMiniMap", "MiniMap", "mnuFormsShow", Toggles, ToggleTool<MiniMap>},
    {"mnuFrequencies", "Frequencies", "mnuFormsShow", Toggles, ToggleTool<Freq>},
    {"mnuResetFloating", "Re&set Floating Windows Position", "mnuScreen", Runs,
     [](MDIForm1& frame) { frame.Tools().ResetPositions(); }, true},
    {"mnuResetTransparency", "R&eset Floating Windows Transparency", "mnuScreen", Submenu},
    {"mnuTR100", "To 100% (Opaque)", "mnuResetTransparency", Runs, ResetTransparency<100>},
    {"mnuTR75", "To 75%", "mnuResetTransparency", Runs, ResetTransparency<75>},
    {"mnuTR50", "To 50%", "mnuResetTransparency", Runs, ResetTransparency<50>},
    {"mnuTR25", "To 25%", "mnuResetTransparency", Runs, ResetTransparency<25>},
    {"mnuTR5", "To 5%", "mnuResetTransparency", Runs, ResetTransparency<5>},
    {"mnuResteZoomCenter", "Reset Z&oom and Screen Center", "mnuScreen", Runs,
     [](MDIForm1& frame) { frame.ResetZoomAndCenter(); }, true},
    {"mnuResetMainWindowPosition", "Reset Ma&in Window Position", "mnuScreen", Nothing, nullptr, false, nullptr,
     NotThere},
    {"mnuFind", "Find Aircraft...", "mnuScreen", Runs, [](MDIForm1& frame) { frame.Map().Picture().OpenFind(); }, true},
    {"mnuArrangeRight", "Arrange Floating Windows at the Ri&ght Edge", "mnuScreen", Runs,
     [](MDIForm1& frame) { frame.Tools().ArrangeAtRight(); }, true},
    {"mnuUndoPositions", "&Undo Floating Windows Position", "mnuScreen", Runs,
     [](MDIForm1& frame) { frame.Tools().UndoPositions(); }},

    {"mnuRecording", "Re&cording", "", Submenu},
    {"mnuStartRec", "Star&t Recording", "mnuRecording", Runs, [](MDIForm1& frame) { frame.StartRecording(); }},
    {"mnuStopRecording", "Sto&p Recording", "mnuRecording", Runs, [](MDIForm1& frame) { frame.StopRecording(); }},
    {"mnuPlaybackMode", "Play&back Mode", "mnuRecording", Nothing, nullptr, true, nullptr, LoadInPlayback},
    {"mnuOpenPlaybackFile", "Ope&n File for Playback", "mnuRecording", Nothing, nullptr, false, nullptr,
     LoadInPlayback},
    {"mnuExportTape", "Export Tape to Tacview...", "mnuRecording", Runs, [](MDIForm1& frame) { frame.ExportTape(); },
     true},

    {"mnuLinks", "Li&nks", "", Submenu},
    {"mnuManageLinks", "Mana&ge Links...", "mnuLinks", Nothing, nullptr, false, nullptr, NotThere},
    {"mnuLinksNames", "(No Links)", "mnuLinks", Nothing, nullptr, true, nullptr, NotThere},

    {"mnuTools", "Too&ls", "", Submenu},
    {"mnuFalconTools", "Falcon Tools", "mnuTools", Submenu},
    {"mnuImportNewTheater", "Import New T&heater", "mnuFalconTools", Runs,
     [](MDIForm1& frame) { frame.Falcon().ImportTheater(); }},
    {"mnuImportObjectives", "Import Ob&jectives", "mnuFalconTools", Runs,
     [](MDIForm1& frame) { frame.Falcon().ImportObjectives(); }},
    {"mnuGetBullseyFromTac", "Get Bu&llseye from tac/cam/trn", "mnuFalconTools", Runs,
     [](MDIForm1& frame) { frame.Bullseyes().GetFromCampaignFile(); }},
    {"mnuImportFalconINI", "Import Areas from Falcon INI files", "mnuFalconTools", Runs,
     [](MDIForm1& frame) { core::ImportMissionAreas(frame.Program()); }},
    {"mnuSaveSetup", "Sa&ve Setup...", "mnuTools", Runs, Core<core::SaveSetup>, true},
    {"mnuLoadSetup", "Loa&d Setup...", "mnuTools", Runs,
     [](MDIForm1& frame) {
       if (core::LoadSetup(frame.Program())) frame.close();
     }},

    {"mnuHelp", "Hel&p", "", Submenu},
    {"mnuOnlineDocs", "Online Do&cuments", "mnuHelp", Runs, [](MDIForm1& frame) { frame.OpenOnlineDocs(); }},
    {"mnuAutoUpdate", "Auto Check for Update", "mnuHelp", Toggles, [](MDIForm1& frame) { frame.ToggleAutoUpdate(); }},
    {"mnuAbout", "About...", "mnuHelp", Runs, [](MDIForm1& frame) { frame.About(); }, true},
    {"mnuKeys", "&Keys...", "mnuHelp", Runs, [](MDIForm1& frame) { frame.ShowKeys(); }, true},
    {"mnuGuide", "&Guide", "mnuHelp", Runs, Core<core::OpenGuide>},
};

constexpr MenuEntry PopUpMenus[] = {
    {"PopUp1", "", "", Submenu},
    {"ClsCon", "Close Connection", "PopUp1", Nothing},

    {"PopUp2", "", "", Submenu},
    {"mnuSetCenterOfMap", "Set Center of Map", "PopUp2", Runs, [](MDIForm1& frame) { frame.SetCenterOfMap(); }},
    {"mnuSetNewBulls", "Set New Bullseye", "PopUp2", Runs,
     [](MDIForm1& frame) { frame.Bullseyes().CreateAtPointer(); }},
    {"mnuAddnewIconArea", "Add New Icon Area", "PopUp2", Runs, [](MDIForm1& frame) { frame.Areas().AddNewIconArea(); }},

    {"PopUp3", "", "", Submenu},
    {"mnuP3ShowPlot", "Show Plot", "PopUp3", Runs, [](MDIForm1& frame) { frame.ShowPlotOfNode(); }},
    {"mnuP3HidePlot", "Hide Plot", "PopUp3", Runs, [](MDIForm1& frame) { frame.HidePlotOfNode(); }},

    {"mnupopup4", "", "", Submenu},
    {"mnuTuneUHF", "Tune UHF", "mnupopup4", Runs, Freqs<&FreqFrm::TuneUHF>},
    {"mnuTuneVHF", "Tune VHF", "mnupopup4", Runs, Freqs<&FreqFrm::TuneVHF>},
    {"mnuCopyFreq", "Copy\tCtrl+C", "mnupopup4", Runs, Freqs<&FreqFrm::CopyOffered>, true},
    {"mnuShowFreqOnMap", "Show on Map", "mnupopup4", Runs, Freqs<&FreqFrm::ShowOfferedOnMap>, true},
};

}  // namespace

std::span<const MenuEntry> MenuBarEntries() { return MenuBar; }

std::span<const MenuEntry> PopUpEntries() { return PopUpMenus; }

}  // namespace kestrel::shell
