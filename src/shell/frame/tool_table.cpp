#include "shell/frame/tool_table.h"

#include <iterator>
#include <type_traits>

#include "shell/areas/areas_frm.h"
#include "shell/link/clients_frm.h"
#include "shell/map/bulls_frm.h"
#include "shell/map/curs_frm.h"
#include "shell/map/mini_map_frm.h"
#include "shell/options/view_frm.h"
#include "shell/radio/freq_frm.h"
#include "shell/tape/rec_frm.h"

namespace kestrel::shell {
namespace {

using enum core::ToolWindow;

template <class Frm>
std::unique_ptr<ToolFrm> New(core::Program& program, ModalCount& dialogs, QWidget* frame) {
  if constexpr (std::is_constructible_v<Frm, core::Program&, ModalCount&, QWidget*>) {
    return std::make_unique<Frm>(program, dialogs, frame);
  } else {
    return std::make_unique<Frm>(program, frame);
  }
}

constexpr ToolEntry Entries[] = {
    {Clients, "ClientsFrm", "CLIENTS", "Clients", "chkClients", "mnuFClients", IconKind::Clients, New<ClientsFrm>},
    {View, "ViewFrm", "OPTIONS", "Options", "chkOPtions", "mnuFOptions", IconKind::Options, New<ViewFrm>},
    {Bulls, "BullsFrm", "BULLSEYE", "Bullseye", "chkBullseye", "mnuFBullseye", IconKind::Bullseye, New<BullsFrm>},
    {Curs, "CursFrm", "CURSOR", "Cursor", "chkCursor", "mnuFCursor", IconKind::Cursor, New<CursFrm>},
    {Areas, "AreasFrm", "AREAS", "Areas", "chkAreas", "mnuFAreas", IconKind::Areas, New<AreasFrm>},
    {Rec, "RecFrm", "PLAYBACK", "Playback", "chkPlayback", "mnuFRec", IconKind::Playback, New<RecFrm>},
    {MiniMap, "MiniMapFrm", "MINIMAP", "MiniMap", "chkMinimap", "mnuFMiniMap", IconKind::MiniMap, New<MiniMapFrm>},
    {Freq, "FreqFrm", "FREQs", "Frequencies", "chkFreq", "mnuFrequencies", IconKind::Freq, New<FreqFrm>},
};
static_assert(std::size(Entries) == core::ToolWindowCount);

}  // namespace

std::span<const ToolEntry> ToolEntries() { return Entries; }

}  // namespace kestrel::shell
