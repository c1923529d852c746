#pragma once

#include <memory>

#include "core/global_keys.h"
#include "falcon/install_keys.h"
#include "radio/voice_windows.h"

namespace kestrel::platform {

/// The keys of the whole system, as the system gives them.
std::unique_ptr<core::GlobalKeys> MakeGlobalKeys();

/// The system's windows as the voice bridge sees them. On Windows they are real; where the voice client cannot run, no
/// window is ever found.
std::unique_ptr<radio::VoiceWindows> MakeVoiceWindows();

/// Where installations of the simulator have registered themselves at this moment: the registry of Windows, or those of
/// all prefixes of Wine and Proton. What cannot be read is left out.
falcon::InstallSources MakeInstallKeys();

}  // namespace kestrel::platform
