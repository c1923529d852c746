#pragma once

#include <cstddef>
#include <string>

#include "core/program.h"
#include "link/link_options.h"

// Where the station connects to: what it remembers of that, asks before and tells when it fails.
namespace kestrel::core {

/// True when the present session may end for something else: there is none, the person is not to be asked, or says Yes.
bool MayLeaveSession(Program& program);

/// An item of the phonebook's menu, index into ConnList: connects there, if the present session may end.
void ConnectToEntry(Program& program, std::size_t index);
/// Connects to what was typed, which goes into the phonebook (KeepTypedEntry). A port behind the address is taken off
/// and becomes the port of all connects. False when the person does not want it after all.
bool ConnectToTyped(Program& program, link::ConnEntry entry);

/// There is a connection to where the latest connect went.
void ServerAnswered(Station& station);
/// The latest connect has failed, or a connection has: what is told of it in a line of its own, with the line end
/// before it. Empty for a server that had answered. A new entry that has never answered can be dropped from now on.
std::string FailureAdvice(Program& program);
/// Takes entry `which` of FailedEntries out of the phonebook.
void DropFailedEntry(Program& program, std::size_t which);

/// True while there is a session to go back to from a tape.
bool MayGoBack(const Station& station);
/// Closes the tape and connects to the server whose session ended for it.
void BackToSession(Program& program);

}  // namespace kestrel::core
