#pragma once

#include "core/program.h"
#include "doubles/fake_clock.h"
#include "doubles/fake_global_keys.h"
#include "doubles/fake_socket.h"
#include "doubles/fake_voice.h"
#include "doubles/recording_host.h"
#include "doubles/recording_windows.h"
#include "doubles/scripted_desktop.h"

namespace kestrel::doubles {

/// Who is told of changes in a station without windows.
struct NoWindows {
  RecordingWindows Shown;
  RecordingHost Host;
};

/// A whole station with doubles at its seams. `Outside` brings who is told of changes: `Shown`, the windows of the
/// program, and `Host`, the host of its session.
template <class Outside = NoWindows>
struct StationAround : Outside {
  core::Station State;
  FakeClock Clock;
  ScriptedDesktop Desk;
  base::DebugLog Log{Clock};
  link::Capture Raw{Clock};
  FakeSocket WS1;
  link::Session Link{WS1, Desk, this->Host, Log, Raw, State.Session, State.Plots, State.LinkOptions};
  FakeGlobalKeys Keys;
  FakeVoice VoiceWindows;
  radio::VoiceBridge Voice{VoiceWindows, State.VoiceWindowName};
  core::Program All{State, Desk, this->Shown, Log, Raw, Link, Keys, Voice};
};

}  // namespace kestrel::doubles
