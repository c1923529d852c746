#pragma once

#include <optional>
#include <string_view>

#include "areas/area_bounds.h"
#include "base/changed.h"

namespace kestrel::core {

/// Seam: what the station asks of its windows. Filled by shell/; by a recording double in tests.
class Windows {
 public:
  virtual ~Windows() = default;
  /// Makes and shows the frame and, in it, the map window, and runs their load steps (FrameLoadSteps, MapLoadSteps).
  virtual void ShowMainFrm() = 0;
  /// Start: each floating window takes the place, opacity, roll and visibility that are kept of it.
  virtual void PlaceToolWindows() = 0;
  /// Start: FreqFrm as it is first seen; it stays hidden when that is kept.
  virtual void OpenFreqFrm() = 0;
  /// Refreshes each marked view once, now.
  virtual void Refresh(base::Changed what) = 0;
  /// Shows frmSavingMessage and lets it paint, or hides it. What the person does meanwhile waits, and so do the
  /// sockets.
  virtual void ShowSavingMessage(bool shown) = 0;
  /// "Loading the requested file..." in the middle of the map window with its bar at `percent`; nothing hides it.
  virtual void ShowLoading(std::optional<int> percent) = 0;
  /// How large a text is on the map, for the boxes of areas; good as long as the windows.
  virtual areas::TextMeasure& Texts() = 0;
  /// Runs a menu entry by its name, as if it were chosen; nothing while it cannot be.
  virtual void RunEntry(std::string_view /*entry*/) {}
  /// Says something in the status strip for a moment; what was said before makes room.
  virtual void ShowMoment(std::string_view /*text*/) {}
  /// Unloads every open window except the frame.
  virtual void UnloadWindows() = 0;
};

}  // namespace kestrel::core
