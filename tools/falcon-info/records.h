#pragma once

#include "falcon-info/json.h"
#include "falcon/object_tables.h"

// Records of the database as they stand in their tables, without their index.
namespace kestrel::falconinfo {

Json RecordOf(const falcon::EntityClass& record);
Json RecordOf(const falcon::ObjectiveClass& record);
Json RecordOf(const falcon::FeatureEntry& record);
Json RecordOf(const falcon::FeatureClass& record);
Json RecordOf(const falcon::PointHeader& record);
Json RecordOf(const falcon::ObjectPoint& record);

}  // namespace kestrel::falconinfo
