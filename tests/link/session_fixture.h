#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/temp_folder.h"
#include "link/feed_text.h"
#include "link/lone_session.h"

namespace kestrel::link {

/// A session whose server, person and clock are the test.
class SessionTest : public testing::Test, protected LoneSession {
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
};

}  // namespace kestrel::link
