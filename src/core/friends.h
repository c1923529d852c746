#pragma once

#include "core/program.h"

// The names of "FriendlyNames.ini" and the friendly list.
namespace kestrel::core {

/// The lines of "FriendlyNames.ini" as they stand, blank ones too; none when the file does not exist.
/// RuntimeFailure when it cannot be read.
void LoadFriendsDef(Station& station);

/// AUTOFRIENDS is on: the friendly list is the one of "FriendlyNames.ini". Off: it stays as it is.
void TakeFriends(Program& program);

}  // namespace kestrel::core
