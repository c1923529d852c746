#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "radio/voice_windows.h"

namespace kestrel::radio {

/// A radio of the voice client.
enum class Radio { UHF = 1, VHF = 2 };

/// What a window shows of the client.
struct VoiceStatus {
  bool Running = false;
  bool Connected = false;
  std::string UHF, VHF;  ///< the trimmed texts of the radios' boxes; empty when it does not run
};

/// The voice program "IVC Client", driven through its windows as a user would. Its controls are known by their place
/// among their siblings alone: a client whose layout has changed fails silently, or hits the wrong box. No handle is
/// kept, each operation looks the windows up anew, so a client that restarts is found again. Nothing here reports an
/// error: a missing window gives false or an empty text.
class VoiceBridge {
 public:
  /// `IVC_WINDOW_NAME` is the exact title of the client's top window. Both references outlive the bridge.
  VoiceBridge(VoiceWindows& windows, const std::string& IVC_WINDOW_NAME);

  /// False where the client cannot run at all, so that nobody waits for it.
  bool Available() const { return seen.Available(); }
  bool IsIVCRunning();
  /// True only when the whole status reads CONNECTED, in whatever case.
  bool IsIVCConnected();
  /// The trimmed text of the radio's box; empty when a window is missing.
  std::string GetRadioFreq(Radio radio);
  /// Writes `value` into the radio's box; true if the box was found.
  bool SetRadioFreq(Radio radio, const std::string& value);
  /// Presses the button beside the radio's box; true if it was found.
  bool PressChange(Radio radio);
  /// Writes the frequency, presses the button, then calls RefreshIVCStatus whether or not these succeeded.
  void TuneRadio(Radio radio, const std::string& value);
  /// The whole status, asked in one operation: a client that hangs is waited for once.
  VoiceStatus Status();
  /// A click on a value of the frequencies: RefreshIVCStatus, then, if the client is connected, the value is tuned on
  /// each radio whose kind it is ("0" is of both). The same operation from the first question to the last refresh.
  void ClickValue(const std::string& value);
  /// Sends the client's top window a key-down or key-up; `vkey` is the virtual key number. True if it was found.
  bool SendIVCKey(std::int32_t vkey, bool down);

  /// Refreshes what a window shows of the client's state; may be empty.
  std::function<void()> RefreshIVCStatus;

 private:
  class Operation;

  WindowHandle Panel();
  WindowHandle NthControl(int count, const char* className, const char* caption);
  WindowHandle FreqBox(Radio radio);
  std::string TextOf(WindowHandle window);

  VoiceWindows& seen;
  const std::string& title;
  int running = 0;  ///< operations that are running, one inside the other
};

}  // namespace kestrel::radio
