#include "falcon-info/records.h"

namespace kestrel::falconinfo {

Json RecordOf(const falcon::EntityClass& record) {
  Json json;
  json["domain"] = record.Domain;
  json["class"] = record.Class;
  json["type"] = record.Type;
  json["sub_type"] = record.SubType;
  json["specific"] = record.Specific;
  json["owner"] = record.Owner;
  json["models"] = ListOf(record.Models);
  json["data"] = static_cast<int>(record.Data);
  json["data_index"] = record.DataIndex;
  return json;
}

Json RecordOf(const falcon::ObjectiveClass& record) {
  Json json;
  json["class_index"] = record.ClassIndex;
  json["name"] = record.Name;
  json["icon"] = record.Icon;
  json["first_feature"] = record.FirstFeature;
  json["feature_count"] = record.FeatureCount;
  json["radar_feature"] = record.RadarFeature;
  json["first_header"] = record.FirstHeader;
  return json;
}

Json RecordOf(const falcon::FeatureEntry& record) {
  Json json;
  json["class_index"] = record.ClassIndex;
  json["flags"] = record.Flags;
  json["value"] = record.Value;
  json["east"] = record.East;
  json["north"] = record.North;
  json["up"] = record.Up;
  json["heading"] = record.Heading;
  return json;
}

Json RecordOf(const falcon::FeatureClass& record) {
  Json json;
  json["class_index"] = record.ClassIndex;
  json["flags"] = record.Flags;
  json["name"] = record.Name;
  json["repair_time"] = record.RepairTime;
  json["hit_points"] = record.HitPoints;
  return json;
}

Json RecordOf(const falcon::PointHeader& record) {
  Json json;
  json["objective"] = record.Objective;
  json["type"] = record.Kind;
  json["first_point"] = record.FirstPoint;
  json["point_count"] = record.PointCount;
  json["features"] = ListOf(record.Features);
  json["data"] = record.Data;
  json["runway_number"] = record.RunwayNumber;
  json["base_leg"] = record.BaseLeg;
  json["next"] = record.Next;
  return json;
}

Json RecordOf(const falcon::ObjectPoint& record) {
  Json json;
  json["east"] = record.East;
  json["north"] = record.North;
  json["up"] = record.Up;
  json["type"] = record.Kind;
  json["flags"] = record.Flags;
  return json;
}

}  // namespace kestrel::falconinfo
