#pragma once

#include <memory>

#include "core/global_keys.h"

namespace kestrel::platform {

/// The keyboard of an X display through its raw key events, on a connection of its own: nothing is grabbed and nothing
/// swallowed. Without X, and within Wayland, where an X client hears the keys of other X clients alone, there is none.
class X11GlobalKeys final : public core::GlobalKeys {
 public:
  /// `wayland`: the desktop is Wayland's. Connects to the display that the environment names.
  explicit X11GlobalKeys(bool wayland);
  ~X11GlobalKeys() override;
  X11GlobalKeys(const X11GlobalKeys&) = delete;
  X11GlobalKeys& operator=(const X11GlobalKeys&) = delete;

  bool Start(Heard heard) override;
  void Stop() override;
  int Descriptor() const override;
  void Drain() override;
  std::string Missing() const override { return missing; }

 private:
  class Connection;

  std::unique_ptr<Connection> connection;  ///< null when there is no source
  std::string missing;
};

}  // namespace kestrel::platform
