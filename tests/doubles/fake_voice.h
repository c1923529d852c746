#pragma once

#include <string>
#include <utility>
#include <vector>

#include "radio/voice_windows.h"

namespace kestrel::doubles {

/// A voice client of one top window with its panel, six edits and the two buttons of its radios. It records the keys
/// and what is tuned.
class FakeVoice final : public radio::VoiceWindows {
 public:
  bool Available() const override { return CanRun; }
  void OperationStarts() override { ++Operations; }
  radio::WindowHandle FindTop(const std::string& title) override { return Running && title == Title ? Top : 0; }
  radio::WindowHandle FindChild(radio::WindowHandle parent, radio::WindowHandle after, const char* className,
                                const char* caption) override {
    const std::string name = className;
    if (parent == Top && name == "wxWindowClassNR") return after == 0 ? PanelOfTop : 0;
    if (parent != PanelOfTop) return 0;
    if (name == "Edit" && caption == nullptr) return Next(after, FirstEdit, VhfEdit);
    return name == "Button" && caption == std::string("Change FRQ") ? Next(after, UhfButton, VhfButton) : 0;
  }
  std::size_t TextLength(radio::WindowHandle window) override { return TextOf(window).size(); }
  std::string Text(radio::WindowHandle window, std::size_t room) override { return TextOf(window).substr(0, room - 1); }
  void SetText(radio::WindowHandle window, const std::string& text) override {
    if (window == UhfEdit) UHF = text;
    if (window == VhfEdit) VHF = text;
  }
  void Click(radio::WindowHandle button) override {
    if (button == UhfButton) Tuned.push_back("UHF " + UHF);
    if (button == VhfButton) Tuned.push_back("VHF " + VHF);
  }
  void SendKey(radio::WindowHandle window, std::int32_t vkey, bool down) override {
    if (window == Top) Keys.emplace_back(vkey, down);
  }

  bool CanRun = true;  ///< on this system at all
  bool Running = true;
  std::string Title = "IVC Client";
  std::string Status = "CONNECTED";
  std::string UHF = "305000", VHF = "128550";       ///< what stands in the boxes of the radios
  int Operations = 0;                               ///< that were begun
  std::vector<std::pair<std::int32_t, bool>> Keys;  ///< virtual key number, down; in order
  std::vector<std::string> Tuned;                   ///< "UHF 251000" for each press of a radio's button

 private:
  static constexpr radio::WindowHandle Top = 1, PanelOfTop = 2, FirstEdit = 10, StatusEdit = 12, UhfEdit = 13,
                                       VhfEdit = 15, UhfButton = 20, VhfButton = 21;

  static radio::WindowHandle Next(radio::WindowHandle after, radio::WindowHandle first, radio::WindowHandle last) {
    if (after == 0) return first;
    return after == last ? 0 : after + 1;
  }
  std::string TextOf(radio::WindowHandle window) const {
    if (window == StatusEdit) return Status;
    if (window == UhfEdit) return UHF;
    return window == VhfEdit ? VHF : std::string();
  }
};

}  // namespace kestrel::doubles
