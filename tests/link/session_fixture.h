#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/temp_folder.h"
#include "doubles/fake_clock.h"
#include "doubles/fake_socket.h"
#include "doubles/recording_host.h"
#include "doubles/scripted_desktop.h"
#include "link/feed_text.h"
#include "link/session.h"

namespace kestrel::link {

/// A session whose server, person and clock are the test.
class SessionTest : public testing::Test {
 protected:
  /// Connects and lets the person choose a channel.
  void Connect() {
    session.ConnectTo("127.0.0.1");
    socket.Accept();
  }
  void OpenLog() { log.File.Open(folder / "log.txt"); }
  std::string LogText() const { return test::ReadBytes(folder / "log.txt"); }
  std::vector<std::string> BoxTexts() const {
    std::vector<std::string> texts;
    for (const auto& box : desktop.Boxes) texts.push_back(box.Title + ": " + box.Text);
    return texts;
  }

  test::TempFolder folder;
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
