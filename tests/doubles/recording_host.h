#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
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
  bool LinkLost(const std::string& why) override {
    Lost.push_back(why);
    if (WhenLost) WhenLost();
    return GoesOn;
  }
  void LinkLeft() override { ++Left; }

  std::optional<std::uint8_t> Choice = 1;            ///< the channel that the person picks, nothing when cancelled
  std::vector<std::uint8_t> Preselected;             ///< one for each dialog shown
  std::vector<base::Changed> Refreshes;              ///< in order
  std::function<void()> WhileChoosing;               ///< run while the channel dialog is open
  std::function<void(base::Changed)> WhenRefreshed;  ///< run inside Refresh
  std::function<void()> WhenSynchronised;            ///< run inside ComputeRecData
  std::function<void()> WhenEnded;                   ///< run inside RecordingEnd
  std::vector<std::string> Lost;                     ///< why, one for each LinkLost
  std::function<void()> WhenLost;                    ///< run inside LinkLost
  bool GoesOn = false;                               ///< what LinkLost answers
  int Left = 0;                                      ///< calls of LinkLeft
};

}  // namespace kestrel::doubles
