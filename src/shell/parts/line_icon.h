#pragma once

#include <QIcon>

namespace kestrel::shell {

enum class IconKind {
  Clients,
  Options,
  Bullseye,
  Cursor,
  Areas,
  Playback,
  MiniMap,
  Freq,
  RollUp,
  RollDown,
  Leftward,
  Rightward,
  Centre,
  Opacity,
  Close,
  OpenFile,
  Pause,
  Stop,
  Eject,
  ToTop,
  ToBottom,
  AreaFolder,
  AreaGroup,
  Region,
  Circle,
  MapIcon,
  Text,
  FlightPlan,
  RadioUHF,
  RadioVHF,
  Airfield,
  TACAN,
  ILS,
  Unknown,
  VoiceConnected,
  VoiceApart,
  ProgramRuns,
  ProgramMissing
};

/// An icon of one stroke weight, drawn at the size and in the text colour that are asked of it, so that it is sharp at
/// every scale and fits either palette.
QIcon LineIcon(IconKind kind);

}  // namespace kestrel::shell
