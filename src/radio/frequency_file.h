#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/profile_file.h"
#include "radio/frequencies.h"

// The texts that frequencies are kept in: `Theaters\<Name>_Frequencies.dat` of each theater and "DefFreq.ini".
namespace kestrel::radio {

/// The tables in a file; an empty one gives those of a theater without a file. NUM tells how many folders, entries and
/// airfields are read: below 0 none, above 32,767 those that stand there without a gap. One that is promised and
/// missing is a record of defaults; of these a file gets no more than 32,767. `notes` gets a line for each number that
/// does not fit its field, which becomes 0, and for what is left out; after twenty of them one that counts the rest.
Frequencies ReadFrequencies(const base::ProfileFile& file, std::vector<std::string>& notes);

/// Whether a file has a section of frequencies; one without is of another kind.
bool HoldsFrequencies(const base::ProfileFile& file);

/// Whether a file has, line by line, the keys that these tables are written with. One that lacks some, or has others,
/// holds what they do not. RuntimeFailure as from WriteFrequencies.
bool HasKeysOf(const Frequencies& tables, std::string_view file);

/// The text of the file, an empty line at its end. Values are written as they stand: one with a line end in it spoils
/// the file, this stands. RuntimeFailure when it is longer than a file that would be read again.
std::string WriteFrequencies(const Frequencies& tables);

/// What is missing in the file is an empty text.
DefaultFrequencies ReadDefaultFrequencies(const base::ProfileFile& file);

}  // namespace kestrel::radio
