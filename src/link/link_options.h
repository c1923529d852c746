#pragma once

#include <cstdint>
#include <string>

#include "base/colour.h"
#include "base/table.h"

namespace kestrel::link {

/// One entry of the phonebook.
struct ConnEntry {
  std::string Name;
  std::string Ip;  ///< address or host name
};

/// Settings of the server link; fields named as their keys.
struct Options {
  std::int32_t CONNPORT = 5556;     ///< remote TCP port
  base::Colour AICOLOR = 255;       ///< AI plots and trails that are not friendly
  bool AUTOFRIENDS = true;          ///< FriendlyList is taken from "FriendlyNames.ini"
  bool BULLSEYEVISIBLE = true;      ///< bullseye marker shown; also the ShowLabel of new clients, see AddAWASCClient
  base::Table<ConnEntry> ConnList;  ///< phonebook
  base::Table<std::string> FriendNames;  ///< lines of "FriendlyNames.ini" as they stand
};

}  // namespace kestrel::link
