#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "core/station.h"

// A setup: all that makes a station the person's own, but for logs and tapes, as one zip.
namespace kestrel::core {

/// The names of the files of a setup with these theaters, below the program folder, with "/": settings, friends,
/// default channels, and of each theater its settings, picture and data. A file that would lie outside, or whose ending
/// is none of a setup's, is not of it. Each stands once; they need not be there.
std::vector<std::string> SetupFiles(const theaters::Catalogue& catalogue);
/// The same, with what the station keeps beside them of these theaters.
std::vector<std::string> SetupFilesAndCopies(const theaters::Catalogue& catalogue);

/// What a file of a setup is called in the zip: UTF-8.
std::string NameInSetup(const std::string& name);

/// Packs the setup in `station.AppPath` into a zip, whole or not at all. Files that are not there are left out.
/// RuntimeFailure when one cannot be read, or the zip cannot be written or would take the place of one.
void PackSetup(const Station& station, const std::filesystem::path& zip);

/// Unpacks a setup into an empty folder: of the zip the files of the setup that its KESTREL.ini describes, and nothing
/// else. RuntimeFailure when it is no setup: without KESTREL.ini, without a theater, without the picture of the
/// current theater, or damaged.
void UnpackSetup(const std::filesystem::path& zip, const std::filesystem::path& folder);

}  // namespace kestrel::core
