#pragma once

#include <set>
#include <string>
#include <utility>

#include "core/global_keys.h"

namespace kestrel::doubles {

/// The keys of the whole system as the test presses them.
class FakeGlobalKeys final : public core::GlobalKeys {
 public:
  bool Start(Heard heard) override {
    ++Starts;
    if (!Why.empty()) return false;
    handler = std::move(heard);
    return true;
  }
  void Stop() override {
    ++Stops;
    handler = nullptr;
  }
  bool Hears(std::int32_t binding) const override { return !Unheard.contains(binding); }
  std::string Missing() const override { return Why; }

  bool Listening() const { return handler != nullptr; }
  /// Nobody hears it when the listening has ended.
  void Press(std::int32_t keyCode, std::int32_t shift = 0) { Send({keyCode, shift, true}); }
  void Release(std::int32_t keyCode, std::int32_t shift = 0) { Send({keyCode, shift, false}); }

  std::string Why;                 ///< not empty: there is no source
  std::set<std::int32_t> Unheard;  ///< bindings that it never tells
  int Starts = 0;                  ///< asked for
  int Stops = 0;

 private:
  void Send(const core::GlobalKey& key) {
    if (handler) handler(key);
  }

  Heard handler;
};

}  // namespace kestrel::doubles
