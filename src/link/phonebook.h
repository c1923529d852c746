#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/table.h"
#include "link/link_options.h"

// What may stand in the phonebook and in the field of the port. A name need not be the only one of its kind.
namespace kestrel::link {

/// Longest name and longest address that the windows take, characters: both fit a value of the settings file.
inline constexpr std::size_t MaxEntryText = 255;

/// The entry that was typed: characters that no line of text holds become blanks, blanks at the ends go.
ConnEntry TrimmedEntry(std::string_view name, std::string_view ip);

/// Why the entry cannot be taken, in words for the person; nothing when it can. An address is
/// needed, without blanks in it; a name is not.
std::optional<std::string> Objection(const ConnEntry& entry);

/// Indices in the phonebook, 0 for none.
struct EntryMatch {
  std::size_t Name = 0;  ///< the last entry with an equal name
  std::size_t Ip = 0;    ///< the last entry with an equal address; not always the same one
};

/// What of `entry` the phonebook already holds, letter by letter.
EntryMatch ValidateEntry(const ConnEntry& entry, const base::Table<ConnEntry>& list);

/// The port that was typed, blanks at its ends aside: digits only, 1..65535. Nothing otherwise.
std::optional<std::int32_t> PortFromText(std::string_view text);

/// An address that was typed with its port behind it.
struct HostAndPort {
  std::string Host;
  std::int32_t Port = 0;
};
/// Takes "host:5557" or "[::1]:5557" apart. Nothing for an address without a port, of which the one with more than one
/// colon outside of brackets is.
std::optional<HostAndPort> SplitPort(std::string_view address);

}  // namespace kestrel::link
