#pragma once

#include "core/program.h"

// "Save Setup..." and "Load Setup...". A setup that is loaded waits in the folder setup.new until the next start puts
// it in place: the present station saves its own files until its end.
namespace kestrel::core {

/// Saves everything, asks for a file and packs the setup into it. What fails is told.
void SaveSetup(Program& program);

/// Asks for a zip, unpacks it to "setup.new" and holds it against what a setup is; what is refused leaves everything as
/// it was and is told. True when the person wants the station closed, so that the next start takes the setup.
bool LoadSetup(Program& program);

/// Step of the start, of a folder that can be written: puts a setup that waits there in the place of the present one,
/// which goes to "setup.old", whose former content is dropped. A start that was cut goes on at the next. What fails
/// puts the present setup back and is told.
void TakeSetup(Program& program);

}  // namespace kestrel::core
