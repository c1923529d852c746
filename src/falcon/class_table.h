#pragma once

#include <cstddef>
#include <vector>

#include "falcon/data_file.h"
#include "falcon/object_tables.h"

namespace kestrel::falcon {

/// Largest table of the simulator that is read; 32767 records of any of them have less.
inline constexpr std::size_t MaxTableBytes = std::size_t{8} << 20;

/// Reads the class table (Falcon4.ct). Records of 81 bytes are taken as they are known; for any other size the table
/// itself must show where class, kind of data and index stand. RuntimeFailure, naming the file and the record, for one
/// that is cut, longer than its count tells, empty, or shows no such place.
std::vector<EntityClass> ReadClassTable(const DataFile& file);

}  // namespace kestrel::falcon
