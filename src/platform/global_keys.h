#pragma once

#include <memory>

#include "core/global_keys.h"

namespace kestrel::platform {

/// The keys of the whole system, as the system gives them.
std::unique_ptr<core::GlobalKeys> MakeGlobalKeys();

}  // namespace kestrel::platform
