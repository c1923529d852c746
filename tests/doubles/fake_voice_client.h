#pragma once

#include <string>
#include <utility>
#include <vector>

#include "radio/voice_windows.h"

namespace kestrel::doubles {

/// The voice client as windows and their places: a top window, its panel, the panel's controls in their order. It can
/// be taken apart, and it counts what it is asked.
class FakeVoiceClient final : public radio::VoiceWindows {
 public:
  struct Control {
    std::string Class;
    std::string Text;
  };

  FakeVoiceClient() {
    // Six edits and two buttons as the bridge counts on them, among controls that it must pass over.
    Controls = {{"Static", "Radio"},   {"Edit", "pilot"},        {"Edit", "host"},   {"Button", "Connect"},
                {"Edit", "CONNECTED"}, {"Edit", " 305000 "},     {"Edit", "305000"}, {"Button", "Change FRQ"},
                {"Edit", "128550"},    {"Button", "Change FRQ"}, {"Edit", "behind"}};
  }

  void OperationStarts() override {
    ++Operations;
    left = OperationLimit;
  }
  radio::WindowHandle FindTop(const std::string& title) override {
    ++Lookups;
    return Running && title == Title ? top : 0;
  }
  radio::WindowHandle FindChild(radio::WindowHandle parent, radio::WindowHandle after, const char* className,
                                const char* caption) override {
    if (parent == top) return after == 0 && HasPanel && std::string(className) == "wxWindowClassNR" ? panel : 0;
    if (parent != panel) {
      Faults.push_back("children of no window");
      return 0;
    }
    for (std::size_t at = after == 0 ? 0 : after - first + 1; at < Controls.size(); ++at) {
      if (Controls[at].Class == className && (caption == nullptr || Controls[at].Text == caption)) return first + at;
    }
    return 0;
  }
  std::size_t TextLength(radio::WindowHandle window) override {
    if (!Answers()) return 0;
    return LengthLie != 0 ? LengthLie : At(window).Text.size();
  }
  std::string Text(radio::WindowHandle window, std::size_t room) override {
    if (!Answers()) return {};
    Rooms.push_back(room);
    return At(window).Text.substr(0, room - 1);
  }
  void SetText(radio::WindowHandle window, const std::string& text) override {
    if (!Answers()) return;
    At(window).Text = text;
    Log.push_back("set " + std::to_string(window - first) + " " + text);
  }
  void Click(radio::WindowHandle button) override {
    if (Answers()) Log.push_back("click " + std::to_string(button - first));
  }
  void SendKey(radio::WindowHandle window, std::int32_t vkey, bool down) override {
    if (window != top) Faults.push_back("a key to another window");
    Log.push_back((down ? "down " : "up ") + std::to_string(vkey));
  }

  /// Ends and comes back: every window has another handle.
  void Restart() {
    top += 1000;
    panel += 1000;
    first += 1000;
  }

  static constexpr int OperationLimit = 500;  ///< milliseconds

  bool Running = true;
  bool Hung = false;  ///< it answers no message
  int Waited = 0;     ///< milliseconds spent on messages that were not answered
  int Messages = 0;   ///< all but keys
  bool HasPanel = true;
  std::string Title = "IVC Client";
  std::vector<Control> Controls;  ///< children of the panel in their order
  std::size_t LengthLie = 0;      ///< what TextLength says in place of the truth, 0 the truth
  int Operations = 0;
  int Lookups = 0;                  ///< of the top window
  std::vector<std::size_t> Rooms;   ///< buffers that a text was fetched into
  std::vector<std::string> Log;     ///< "set AT TEXT", "click AT", "down KEY", "up KEY"; AT is the place in Controls
  std::vector<std::string> Faults;  ///< calls that no bridge may make

 private:
  /// Whether a message is answered; one that is not takes what is left of the operation's time.
  bool Answers() {
    ++Messages;
    if (!Hung) return true;
    Waited += left;
    left = 0;
    return false;
  }
  Control& At(radio::WindowHandle window) {
    if (window >= first && window - first < Controls.size()) return Controls[window - first];
    Faults.push_back("a message to no window");
    return nowhere;
  }

  radio::WindowHandle top = 1, panel = 2, first = 10;
  int left = 0;  ///< milliseconds of the operation
  Control nowhere;
};

}  // namespace kestrel::doubles
