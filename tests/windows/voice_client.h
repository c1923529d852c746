#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "base/temp_folder.h"

namespace kestrel::test {

/// Until `done`, with the messages of this thread handled meanwhile; false when the limit is over.
bool WaitUntil(const std::function<bool()>& done);

/// The stand-in for the voice client, or for any other program, as a process of its own; it ends with this object.
class VoiceClient {
 public:
  /// Starts it with those arguments and waits until its windows are there.
  explicit VoiceClient(const std::vector<std::string>& arguments = {});
  ~VoiceClient();
  VoiceClient(const VoiceClient&) = delete;
  VoiceClient& operator=(const VoiceClient&) = delete;

  /// What it was sent since it is ready, a line for each.
  std::vector<std::string> Record() const;
  /// Waits until the record has that many lines, and returns it.
  std::vector<std::string> Record(std::size_t lines) const;
  HWND Window() const;
  /// It answers nothing from here on, until GoOn.
  void Hang();
  void GoOn();
  /// Closes its window; waits for the end of the process.
  void Close();

 private:
  std::vector<std::string> Lines() const;

  TempFolder folder;
  std::string title = "IVC Client";
  PROCESS_INFORMATION process{};
};

/// Gives the window of that title the focus and types on the screen's keyboard, real keys and no messages, in the words
/// of xdotool: "keydown F1". Returns before it is done.
void Type(const std::string& title, const std::string& keys);

}  // namespace kestrel::test
