#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/windows.h"

namespace kestrel::doubles {

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
  void UnloadWindows() override {
    Calls.push_back("UnloadWindows");
    if (WhenUnloaded) WhenUnloaded();
  }

  std::vector<std::string> Calls;           ///< in order
  std::vector<base::Changed> Refreshes;     ///< in order
  std::vector<std::optional<int>> Loading;  ///< what ShowLoading was called with
  std::function<void()> WhenShown;          ///< run inside ShowMainFrm
  std::function<void()> WhenUnloaded;       ///< run inside UnloadWindows
};

}  // namespace kestrel::doubles
