#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

#include "falcon/data_file.h"
#include "falcon/world.h"

// What newer simulators tell of the objectives of a folder of campaigns beside the campaigns themselves.
namespace kestrel::falcon {

struct CampObject {
  std::string Name;  ///< empty before 4.38
  // As they are told, numbers or not: degrees clockwise from north, feet.
  double Heading = 0, North = 0, East = 0, Height = 0;
};

/// Reads CampObjData.XML: each object by the number that it has in campaigns. RuntimeFailure, naming file and object,
/// as ReadXmlRecords, and for a text that is no number and two objects with one number.
std::map<std::int32_t, CampObject> ReadCampObjects(const DataFile& file);

/// Adds to the objectives of `world` what their campaign does not tell and the file of `campaignFolder` does: the names
/// of those without one, exact places, headings. An object that stands more than a cell from its objective is another
/// one, and counted in a note. Without a file nothing is added; why it cannot be read is told in a note.
void TakeCampObjects(const std::filesystem::path& campaignFolder, World& world);

}  // namespace kestrel::falcon
