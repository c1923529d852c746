#pragma once

#include <QObject>
#include <cstdint>

#include "core/channel_exchange.h"
#include "core/program.h"
#include "shell/parts/modal_count.h"

namespace kestrel::shell {

class MDIForm1;

/// Leads through the windows that bring in what the installed simulator has.
class FalconWindows final : public QObject {
  Q_OBJECT
 public:
  /// `running` and `dialogs` outlive the frame, which owns this.
  FalconWindows(core::Program& running, ModalCount& dialogs, MDIForm1& owner);

  /// mnuImportNewTheater: a theater of the simulator becomes one of the station.
  void ImportTheater();
  /// mnuImportObjectives: objectives of a theater's campaign become areas of the map.
  void ImportObjectives();
  /// cmdLoadAirports: the airfields of a theater and a campaign that are asked for.
  void LoadAirports();
  /// cmdLoadChannels.
  void LoadChannels() { ExchangeChannels(core::ChannelUse::Load); }
  /// cmdSaveChannels.
  void SaveChannels() { ExchangeChannels(core::ChannelUse::Save); }
  /// The default channels for a pilot; no control of a window begins it.
  void SaveDefaultChannels() { ExchangeChannels(core::ChannelUse::SaveDefaults); }

 private:
  /// Whether the window of the theaters has done what it was opened for.
  bool LoadAirportsOf(const falcon::FalconInstall& install, std::int32_t theater);
  void ExchangeChannels(core::ChannelUse use);

  core::Program& program;
  ModalCount& modal;
  MDIForm1& frame;
};

}  // namespace kestrel::shell
