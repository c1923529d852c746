#pragma once

#include <cstdint>
#include <thread>

#include "core/global_keys.h"

namespace kestrel::platform {

/// The keyboard of the system through a low-level hook. Windows waits for the hook at each key and silently removes one
/// that is slow, while the thread of the windows may be busy for seconds: so the hook has a thread of its own, which
/// does nothing but post what it saw to the message loop of the thread that starts it, where the work is done. It
/// passes every key on. One at a time listens in a process.
class WindowsGlobalKeys final : public core::GlobalKeys {
 public:
  WindowsGlobalKeys() = default;
  ~WindowsGlobalKeys() override;
  WindowsGlobalKeys(const WindowsGlobalKeys&) = delete;
  WindowsGlobalKeys& operator=(const WindowsGlobalKeys&) = delete;

  /// `heard` must not throw. False too when one listens already.
  bool Start(Heard heard) override;
  void Stop() override;
  bool Hears(std::int32_t binding) const override { return core::HookHears(binding); }
  /// Always empty: a hook that cannot be installed is not reported.
  std::string Missing() const override { return {}; }

 private:
  struct Hook;

  std::thread hookThread;
  std::uint32_t threadId = 0;  ///< the hook's thread, as the system counts; 0: it has no hook
};

}  // namespace kestrel::platform
