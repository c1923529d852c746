#pragma once

#include <string>
#include <utility>
#include <vector>

#include "radio/voice_windows.h"

namespace kestrel::doubles {

/// A voice client of one top window with what a status text needs: its panel and three edits. It records the keys.
class FakeVoice final : public radio::VoiceWindows {
 public:
  void OperationStarts() override {}
  radio::WindowHandle FindTop(const std::string& title) override { return Running && title == Title ? Top : 0; }
  radio::WindowHandle FindChild(radio::WindowHandle parent, radio::WindowHandle after, const char* className,
                                const char* caption) override {
    const std::string name = className;
    if (parent == Top && name == "wxWindowClassNR") return after == 0 ? PanelOfTop : 0;
    if (parent != PanelOfTop || name != "Edit" || caption != nullptr || after == LastEdit) return 0;
    return after == 0 ? FirstEdit : after + 1;
  }
  std::size_t TextLength(radio::WindowHandle window) override { return window == StatusEdit ? Status.size() : 0; }
  std::string Text(radio::WindowHandle window, std::size_t room) override {
    return window == StatusEdit ? Status.substr(0, room - 1) : std::string();
  }
  void SetText(radio::WindowHandle, const std::string&) override {}
  void Click(radio::WindowHandle) override {}
  void SendKey(radio::WindowHandle window, std::int32_t vkey, bool down) override {
    if (window == Top) Keys.emplace_back(vkey, down);
  }

  bool Running = true;
  std::string Title = "IVC Client";
  std::string Status = "CONNECTED";
  std::vector<std::pair<std::int32_t, bool>> Keys;  ///< virtual key number, down; in order

 private:
  static constexpr radio::WindowHandle Top = 1, PanelOfTop = 2, FirstEdit = 10, StatusEdit = 12, LastEdit = 15;
};

}  // namespace kestrel::doubles
