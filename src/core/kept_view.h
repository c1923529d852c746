#pragma once

#include "base/changed.h"
#include "core/station.h"

// The view that the closing leaves, for the next start: while KEEPFRAME.
namespace kestrel::core {

/// Keeps the present view in the settings.
void KeepView(Station& station);

/// Takes up the view that is kept, if it is one of the current theater. Returns what must be shown anew.
base::Changed TakeKeptView(Station& station);

}  // namespace kestrel::core
