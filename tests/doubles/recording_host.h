#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "base/changed.h"
#include "link/session.h"

namespace kestrel::doubles {

/// The station around a session: chooses a channel and keeps what it was told to refresh.
class RecordingHost final : public link::SessionHost {
 public:
  std::optional<std::uint8_t> ChooseChannel(std::uint8_t present) override {
    Preselected.push_back(present);
    if (WhileChoosing) WhileChoosing();
    return Choice;
  }
  void Refresh(base::Changed what) override {
    Refreshes.push_back(what);
    if (WhenRefreshed) WhenRefreshed(what);
  }
  void ComputeRecData() override {
    if (WhenSynchronised) WhenSynchronised();
  }
  void RecordingEnd() override {
    if (WhenEnded) WhenEnded();
  }

  std::optional<std::uint8_t> Choice = 1;            ///< the channel that the person picks, nothing when cancelled
  std::vector<std::uint8_t> Preselected;             ///< one for each dialog shown
  std::vector<base::Changed> Refreshes;              ///< in order
  std::function<void()> WhileChoosing;               ///< run while the channel dialog is open
  std::function<void(base::Changed)> WhenRefreshed;  ///< run inside Refresh
  std::function<void()> WhenSynchronised;            ///< run inside ComputeRecData
  std::function<void()> WhenEnded;                   ///< run inside RecordingEnd
};

}  // namespace kestrel::doubles
