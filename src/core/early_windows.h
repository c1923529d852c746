#pragma once

namespace kestrel::core {

/// Seam: windows that can be made before the start shows them, so that it need not wait for one thing after another.
/// Filled beside core::Windows by those that take their time to be made.
class EarlyWindows {
 public:
  virtual ~EarlyWindows() = default;
  /// Makes the frame with all that stands in and above it, unseen, or drops it again before it has been shown.
  virtual void MakeMainFrm(bool made) = 0;
};

}  // namespace kestrel::core
