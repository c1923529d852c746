#pragma once

#include <vector>

#include "falcon/data_file.h"
#include "falcon/object_tables.h"

// The binary tables of the simulator's database: a count of 16 bits and as many records of one size. Where the count is
// 0 (FreeFalcon) it stands behind the records; those of headers and points know no such form. Each reader takes a whole
// file and throws RuntimeFailure, naming file and record, for one that is cut, goes on behind its last record, or holds
// none. Numbers in a record stand as they are in the file: whether they lead anywhere is for the lookups.
namespace kestrel::falcon {

std::vector<ObjectiveClass> ReadObjectiveClasses(const DataFile& file);  ///< Falcon4.OCD
std::vector<FeatureEntry> ReadFeatureEntries(const DataFile& file);      ///< Falcon4.FED
std::vector<FeatureClass> ReadFeatureClasses(const DataFile& file);      ///< Falcon4.FCD
std::vector<PointHeader> ReadPointHeaders(const DataFile& file);         ///< Falcon4.PHD
std::vector<ObjectPoint> ReadPoints(const DataFile& file);               ///< Falcon4.PD
std::vector<ObjectPoint> ReadLargePoints(const DataFile& file);          ///< Falcon4.PDX

}  // namespace kestrel::falcon
