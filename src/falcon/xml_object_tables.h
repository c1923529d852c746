#pragma once

#include <vector>

#include "falcon/data_file.h"
#include "falcon/object_tables.h"

// The tables of newer simulators, XML (xml_records.h): each record stands in the table at the number that it tells, and
// numbers that no record tells are empty slots. A field that is not told is 0. RuntimeFailure, naming file and record,
// as ReadXmlRecords, and for a text that is no number or does not fit, and for two records with one number.
namespace kestrel::falcon {

std::vector<EntityClass> ReadXmlClasses(const DataFile& file);              ///< Falcon4_CT.xml
std::vector<ObjectiveClass> ReadXmlObjectiveClasses(const DataFile& file);  ///< FALCON4_OCD.XML
std::vector<FeatureEntry> ReadXmlFeatureEntries(const DataFile& file);      ///< FALCON4_FED.XML, FED_nnnnn.XML
std::vector<FeatureClass> ReadXmlFeatureClasses(const DataFile& file);      ///< FALCON4_FCD.XML
std::vector<PointHeader> ReadXmlPointHeaders(const DataFile& file);         ///< FALCON4_PHD.XML, PHD_nnnnn.XML
std::vector<ObjectPoint> ReadXmlPoints(const DataFile& file);               ///< FALCON4_PDX.XML, PDX_nnnnn.XML

/// The one record of OCD_nnnnn.XML, whatever its number. It tells nothing of its features and headers.
ObjectiveClass ReadXmlObjectiveClass(const DataFile& file);

}  // namespace kestrel::falcon
