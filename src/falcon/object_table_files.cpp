#include "falcon/object_table_files.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/bytes.h"

namespace kestrel::falcon {
namespace {

enum class CountAtEnd { Never, Allowed };

constexpr std::uint8_t NoFeature = 255;

/// `width` characters, ended by the first 0; what stands behind it is left from an older name.
std::string Name(base::BinaryReader& record, std::size_t width) {
  std::string name = record.Text(width);
  return name.substr(0, name.find('\0'));
}

/// The bytes of all records of `stride` bytes.
std::string_view RecordBytes(const DataFile& file, std::size_t stride, CountAtEnd atEnd) {
  std::string_view bytes = file.Bytes;
  if (bytes.size() < 2) RefuseFile(file.Name, "it is empty");
  std::int16_t count = base::BinaryReader(bytes).I16();
  bytes.remove_prefix(2);
  if (count == 0 && atEnd == CountAtEnd::Allowed && bytes.size() >= 2) {
    count = base::BinaryReader(bytes.substr(bytes.size() - 2)).I16();
    bytes.remove_suffix(2);
  }
  if (count < 1) RefuseFile(file.Name, "it tells of no records");
  const auto records = static_cast<std::size_t>(count);
  const std::size_t whole = bytes.size() / stride;
  if (whole < records) RefuseFile(file.Name, "record " + Told(whole) + " of " + Told(records) + " is cut");
  if (bytes.size() != records * stride) RefuseFile(file.Name, "it goes on behind its last record");
  return bytes;
}

template <class Record, class Fields>
std::vector<Record> ReadRecords(const DataFile& file, std::size_t stride, CountAtEnd atEnd, const Fields& fields) {
  const std::string_view bytes = RecordBytes(file, stride, atEnd);
  std::vector<Record> records(bytes.size() / stride);
  for (std::size_t n = 0; n < records.size(); ++n) {
    base::BinaryReader reader(bytes.substr(n * stride, stride));
    fields(reader, records[n]);
  }
  return records;
}

void ObjectiveClassFields(base::BinaryReader& record, ObjectiveClass& objective) {
  objective.ClassIndex = record.I16();
  objective.Name = Name(record, 20);
  record.Skip(4);  // data rate, distance of deaggregation
  objective.FirstHeader = record.I16();
  record.Skip(8 + 11 + 1);  // detection, damage, padding
  objective.Icon = record.I16();
  objective.FeatureCount = record.U8();
  const std::uint8_t radar = record.U8();
  if (radar != NoFeature) objective.RadarFeature = radar;
  objective.FirstFeature = record.I16();
}

void FeatureEntryFields(base::BinaryReader& record, FeatureEntry& entry) {
  entry.ClassIndex = record.I16();
  entry.Flags = record.U16();
  record.Skip(8);  // class information, as in the class table
  entry.Value = record.U8();
  record.Skip(3);
  entry.East = record.F32();
  entry.North = record.F32();
  entry.Up = record.F32();
  entry.Heading = record.I16();
}

void FeatureClassFields(base::BinaryReader& record, FeatureClass& feature) {
  feature.ClassIndex = record.I16();
  feature.RepairTime = record.I16();
  record.Skip(2);  // display priority, padding
  feature.Flags = record.U16();
  feature.Name = Name(record, 20);
  feature.HitPoints = record.I16();
}

void PointHeaderFields(base::BinaryReader& record, PointHeader& header) {
  header.Objective = record.I16();
  header.Kind = record.U8();
  header.PointCount = record.U8();
  for (int n = 0; n < 5; ++n) {
    const std::uint8_t feature = record.U8();
    if (feature != NoFeature) header.Features.push_back(feature);
  }
  record.Skip(1);
  header.Data = record.I16();
  record.Skip(8);  // sine and cosine of the heading
  header.FirstPoint = record.I16();
  record.Skip(2);  // texture
  header.RunwayNumber = static_cast<std::int8_t>(record.U8());
  header.BaseLeg = static_cast<std::int8_t>(record.U8());
  header.Next = record.I16();
}

void PointFields(base::BinaryReader& record, ObjectPoint& point) {
  point.East = record.F32();
  point.North = record.F32();
  point.Kind = record.U8();
  point.Flags = record.U8();
}

void LargePointFields(base::BinaryReader& record, ObjectPoint& point) {
  point.East = record.F32();
  point.North = record.F32();
  point.Up = record.F32();
  record.Skip(12);  // largest height, width and length of what may stand there
  point.Kind = record.U8();
  point.Flags = record.U8();
}

}  // namespace

std::vector<ObjectiveClass> ReadObjectiveClasses(const DataFile& file) {
  return ReadRecords<ObjectiveClass>(file, 54, CountAtEnd::Allowed, ObjectiveClassFields);
}

std::vector<FeatureEntry> ReadFeatureEntries(const DataFile& file) {
  return ReadRecords<FeatureEntry>(file, 32, CountAtEnd::Allowed, FeatureEntryFields);
}

std::vector<FeatureClass> ReadFeatureClasses(const DataFile& file) {
  return ReadRecords<FeatureClass>(file, 60, CountAtEnd::Allowed, FeatureClassFields);
}

std::vector<PointHeader> ReadPointHeaders(const DataFile& file) {
  return ReadRecords<PointHeader>(file, 28, CountAtEnd::Never, PointHeaderFields);
}

std::vector<ObjectPoint> ReadPoints(const DataFile& file) {
  return ReadRecords<ObjectPoint>(file, 12, CountAtEnd::Never, PointFields);
}

std::vector<ObjectPoint> ReadLargePoints(const DataFile& file) {
  return ReadRecords<ObjectPoint>(file, 28, CountAtEnd::Never, LargePointFields);
}

}  // namespace kestrel::falcon
