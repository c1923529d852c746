#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/program.h"
#include "link/link_options.h"

// What the connection windows do when a button is pressed: the phonebook and the port.
namespace kestrel::core {

/// Connecting to a typed address. What is new goes into the phonebook; a known name with another address, or a known
/// address with another name, is asked about. False when the person cancels: nothing has changed, nothing is connected.
/// A replacement reaches the file with the next saving of the settings only: this stands.
bool KeepTypedEntry(Program& program, const link::ConnEntry& entry);

/// Appends an entry, keeps the phonebook and rebuilds its menu.
void AddEntry(Program& program, link::ConnEntry entry);
/// Takes out entry `index`, 1 to the last one; the same follows.
void RemoveEntry(Program& program, std::size_t index);
/// Puts `entry` in the place of entry `index`; the same follows.
void ReplaceEntry(Program& program, std::size_t index, link::ConnEntry entry);

/// Sets the remote port (1..65535) of the next connect and saves the settings.
void StoreConnPort(Program& program, std::int32_t port);
/// Sets the remote port (1..65535), saves the settings and drops an open socket.
void ChangeConnPort(Program& program, std::int32_t port);

}  // namespace kestrel::core
