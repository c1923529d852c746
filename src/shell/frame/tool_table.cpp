#include "shell/frame/tool_table.h"

#include <iterator>

#include "shell/areas/areas_frm.h"
#include "shell/link/clients_frm.h"
#include "shell/map/bulls_frm.h"
#include "shell/map/curs_frm.h"
#include "shell/map/mini_map_frm.h"
#include "shell/options/view_frm.h"
#include "shell/tape/rec_frm.h"

namespace kestrel::shell {
namespace {

using enum core::ToolWindow;

/// A window whose content is still to come: its caption over an empty body.
class EmptyFrm final : public ToolFrm {
 public:
  EmptyFrm(core::Program& running, const ToolEntry& entry, QWidget* frame)
      : ToolFrm(running, entry.Which, QString::fromLatin1(entry.Window), QString::fromLatin1(entry.Caption), frame) {
    Body().setMinimumSize(200, 48);
    FitBody();
  }
};

std::unique_ptr<ToolFrm> Empty(core::Program& program, const ToolEntry& entry, QWidget* frame) {
  return std::make_unique<EmptyFrm>(program, entry, frame);
}

template <class Frm>
std::unique_ptr<ToolFrm> New(core::Program& program, const ToolEntry&, QWidget* frame) {
  return std::make_unique<Frm>(program, frame);
}

constexpr ToolEntry Entries[] = {
    {Clients, "ClientsFrm", "CLIENTS", "Clients", "chkClients", "mnuFClients", IconKind::Clients, New<ClientsFrm>},
    {View, "ViewFrm", "OPTIONS", "Options", "chkOPtions", "mnuFOptions", IconKind::Options, New<ViewFrm>},
    {Bulls, "BullsFrm", "BULLSEYE", "Bullseye", "chkBullseye", "mnuFBullseye", IconKind::Bullseye, New<BullsFrm>},
    {Curs, "CursFrm", "CURSOR", "Cursor", "chkCursor", "mnuFCursor", IconKind::Cursor, New<CursFrm>},
    {Areas, "AreasFrm", "AREAS", "Areas", "chkAreas", "mnuFAreas", IconKind::Areas, New<AreasFrm>},
    {Rec, "RecFrm", "PLAYBACK", "Playback", "chkPlayback", "mnuFRec", IconKind::Playback, New<RecFrm>},
    {MiniMap, "MiniMapFrm", "MINIMAP", "MiniMap", "chkMinimap", "mnuFMiniMap", IconKind::MiniMap, New<MiniMapFrm>},
    {Freq, "FreqFrm", "FREQUENCIES", "Frequencies", "chkFreq", "mnuFrequencies", IconKind::Freq, Empty},
};
static_assert(std::size(Entries) == core::ToolWindowCount);

}  // namespace

std::span<const ToolEntry> ToolEntries() { return Entries; }

}  // namespace kestrel::shell
