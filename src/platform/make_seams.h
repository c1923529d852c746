#pragma once

#include <memory>

#include "core/global_keys.h"
#include "radio/voice_windows.h"

namespace kestrel::platform {

/// The keys of the whole system, as the system gives them.
std::unique_ptr<core::GlobalKeys> MakeGlobalKeys();

/// The system's windows as the voice bridge sees them. On Windows they are real; where the voice client cannot run, no
/// window is ever found.
std::unique_ptr<radio::VoiceWindows> MakeVoiceWindows();

}  // namespace kestrel::platform
