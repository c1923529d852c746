#pragma once

#include <exception>
#include <string>
#include <string_view>

#include "base/debug_log.h"

namespace kestrel::shell {

/// The boundary around the body of an event handler: a failure is written to the log and the session goes on. Nothing
/// may be thrown through the toolkit's own frames, so whatever an event calls stands within this.
template <class Body>
void Guarded(base::DebugLog& log, std::string_view handler, Body&& body) noexcept {
  try {
    body();
  } catch (const std::exception& failure) {
    try {
      log.LogTimed(std::string(handler) + " failed: ", failure.what());
    } catch (const std::exception&) {
      // No memory even for the line: there is nobody left to tell.
    }
  }
}

}  // namespace kestrel::shell
