#pragma once

#include "doubles/fake_clock.h"
#include "doubles/fake_socket.h"
#include "doubles/recording_host.h"
#include "doubles/scripted_desktop.h"
#include "link/session.h"

namespace kestrel::link {

/// A session without a station, whose server, person and clock are doubles.
struct LoneSession {
  doubles::FakeClock clock;
  doubles::FakeSocket socket;
  doubles::ScriptedDesktop desktop;
  doubles::RecordingHost host;
  base::DebugLog log{clock};
  Capture capture{clock};
  SessionState state;
  Tables tables;
  Options options;
  Session session{socket, desktop, host, log, capture, state, tables, options};
};

}  // namespace kestrel::link
