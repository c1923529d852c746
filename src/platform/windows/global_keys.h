#pragma once

#include "core/global_keys.h"

namespace kestrel::platform {

/// The keyboard of the system through a low-level hook, on the message loop of the thread that starts it. Windows waits
/// for the hook at each key and removes one that is slow, so the hook only posts what it saw to that loop, where the
/// work is done. It passes every key on. One at a time listens in a process.
class WindowsGlobalKeys final : public core::GlobalKeys {
 public:
  WindowsGlobalKeys() = default;
  ~WindowsGlobalKeys() override;
  WindowsGlobalKeys(const WindowsGlobalKeys&) = delete;
  WindowsGlobalKeys& operator=(const WindowsGlobalKeys&) = delete;

  /// `heard` must not throw. False too when one listens already.
  bool Start(Heard heard) override;
  void Stop() override;
  /// Always empty: a hook that cannot be installed is not reported.
  std::string Missing() const override { return {}; }

 private:
  struct Hook;

  bool installed = false;
};

}  // namespace kestrel::platform
