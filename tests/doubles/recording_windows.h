#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/windows.h"

namespace kestrel::doubles {

/// Every character is 6 wide and 13 high, map units, in any font.
class FixedTexts final : public areas::TextMeasure {
 public:
  areas::TextExtent Extent(const std::string& text, const areas::AreaFont&) override {
    return {6.0 * static_cast<double>(text.size()), 13};
  }
};

/// The windows as a list of what was asked of them.
class RecordingWindows final : public core::Windows {
 public:
  void ShowMainFrm() override {
    Calls.push_back("ShowMainFrm");
    if (WhenShown) WhenShown();
  }
  void PlaceToolWindows() override { Calls.push_back("PlaceToolWindows"); }
  void OpenFreqFrm() override { Calls.push_back("OpenFreqFrm"); }
  void Refresh(base::Changed what) override {
    Calls.push_back("Refresh");
    Refreshes.push_back(what);
  }
  void ShowSavingMessage(bool shown) override { Calls.push_back(shown ? "saving message" : "no saving message"); }
  void ShowLoading(std::optional<int> percent) override { Loading.push_back(percent); }
  areas::TextMeasure& Texts() override { return Letters; }
  void RunEntry(std::string_view entry) override { Calls.push_back("menu " + std::string(entry)); }
  void ShowMoment(std::string_view text) override { Moments.emplace_back(text); }
  void UnloadWindows() override {
    Calls.push_back("UnloadWindows");
    if (WhenUnloaded) WhenUnloaded();
  }

  FixedTexts Letters;
  std::vector<std::string> Calls;           ///< in order
  std::vector<std::string> Moments;         ///< what ShowMoment was called with
  std::vector<base::Changed> Refreshes;     ///< in order
  std::vector<std::optional<int>> Loading;  ///< what ShowLoading was called with
  std::function<void()> WhenShown;          ///< run inside ShowMainFrm
  std::function<void()> WhenUnloaded;       ///< run inside UnloadWindows
};

}  // namespace kestrel::doubles
