#pragma once

#include "core/program.h"

// Where the station keeps its files when the program folder cannot be written, as below "Program Files".
namespace kestrel::core {

/// Step of the start: settles AppPath and brings there what the program ships (core/default_files.h). The program
/// folder stands when it can be written. Otherwise the person's own folder (Station::OwnFolder) is offered, once: a
/// KESTREL.ini in it is the memory that the offer was taken, and from then on the folder is used without a word. With
/// neither, the files are read where they lie and nothing is kept. Sets ProgramPath, AppPath, FolderReadOnly.
/// A folder that can be written is taken for this station (Program::TakeFolder), and a setup that waits in it put in
/// place; where another station has it the person is asked whether to go on. RuntimeFailure when a new program folder
/// cannot be filled, AnotherStation when the person does not want a second one.
void ChooseFolder(Program& program);

}  // namespace kestrel::core
