#include "shell/frame/tool_table.h"

#include <algorithm>

namespace kestrel::shell {
namespace {

using enum core::ToolWindow;

constexpr ToolEntry Entries[] = {
    {Clients, "ClientsFrm", "CLIENTS", "Clients", "chkClients", "mnuFClients", IconKind::Clients},
    {View, "ViewFrm", "OPTIONS", "Options", "chkOPtions", "mnuFOptions", IconKind::Options},
    {Bulls, "BullsFrm", "BULLSEYE", "Bullseye", "chkBullseye", "mnuFBullseye", IconKind::Bullseye},
    {Curs, "CursFrm", "CURSOR", "Cursor", "chkCursor", "mnuFCursor", IconKind::Cursor},
    {Areas, "AreasFrm", "AREAS", "Areas", "chkAreas", "mnuFAreas", IconKind::Areas},
    {Rec, "RecFrm", "PLAYBACK", "Playback", "chkPlayback", "mnuFRec", IconKind::Playback},
    {MiniMap, "MiniMapFrm", "MINIMAP", "MiniMap", "chkMinimap", "mnuFMiniMap", IconKind::MiniMap},
    {Freq, "FreqFrm", "FREQUENCIES", "Frequencies", "chkFreq", "mnuFrequencies", IconKind::Freq},
};
static_assert(std::size(Entries) == core::ToolWindowCount);

}  // namespace

std::span<const ToolEntry> ToolEntries() { return Entries; }

const ToolEntry& ToolEntryOf(core::ToolWindow which) {
  return *std::find_if(std::begin(Entries), std::end(Entries),
                       [which](const ToolEntry& entry) { return entry.Which == which; });
}

}  // namespace kestrel::shell
