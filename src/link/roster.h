#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "link/tables.h"

// NEWCLT, PLSUPD, DELCLT and the friendly list. All throw RuntimeFailure before any change when the data has too few
// fields or an Id that is no 16-bit number; further fields are ignored, but for DELCLT, whose data is the Id alone.
namespace kestrel::link {

/// Most clients of a session: indices of clients are 16-bit numbers, and no check for an Id that is there already
/// bounds them.
inline constexpr std::size_t MaxClients = 32767;

/// The callsign of a client who has been given none.
std::string IdLabel(std::int16_t Id);

/// NEWCLT: appends a client, with the callsign and colour that his name has been given if they are to come back. No
/// check for an Id that is there already is made. `showLabel` comes from the bullseye option, not from the one for
/// labels of real players: this cross-over stands.
void AddAWASCClient(std::string_view Data, bool showLabel, Tables& tables);

/// PLSUPD: sets callsign (an edited one is lost, unless it is to come back: this stands), name, info and status of a
/// client. False when nobody holds the Id.
bool UpdateClientStatus(std::string_view Data, Tables& tables);

/// DELCLT: takes the client out. Returns the index that it had, 0 when nobody holds the Id. RuntimeFailure also for
/// fields behind the Id.
std::size_t DelAWACSClient(std::string_view Data, Tables& tables);

/// Gives every client at once what his name has been given.
void RecallLooks(Tables& tables);

/// Sets ShowLabel of every client that has a ClientId.
void ShowLabels(bool shown, Tables& tables);

void AddToFriendlyList(std::string_view Name, Tables& tables);
/// Takes out every entry equal to `Name` and every entry that is the trimmed `Name` less one last digit.
void DeleteFromFriendlyList(std::string_view Name, Tables& tables);

}  // namespace kestrel::link
