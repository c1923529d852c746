#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/little_endian.h"

// The binary tables of the simulator's database, written field by field from plans of their records. What a plan does
// not name is filled with what would be noticed.
namespace kestrel::test {

/// `text` with zeros behind it.
inline std::string FixedText(std::string_view text, std::size_t width) {
  std::string field(text.substr(0, width));
  field.resize(width, '\0');
  return field;
}

struct ClassPlan {
  unsigned Domain = 3, Class = 4, Type = 1, SubType = 2, Specific = 9, Owner = 0;
  std::array<int, 7> Models = {0, 0, 0, 0, 0, 0, 0};
  unsigned Data = 3;
  int Index = 0;
};

/// What stands between the class information and the models, 44 bytes: update rate to the padding.
inline std::string ClassMiddle() { return std::string(44, '\x05'); }
inline std::string ClassInfo(const ClassPlan& plan) {
  return Bytes1(plan.Domain) + Bytes1(plan.Class) + Bytes1(plan.Type) + Bytes1(plan.SubType) + Bytes1(plan.Specific) +
         Bytes1(plan.Owner) + "\xFF\xFF";
}
inline std::string ClassModels(const ClassPlan& plan) {
  std::string bytes;
  for (const int model : plan.Models) bytes += Bytes2(model);
  return bytes + Bytes2(-2);  // and the mover
}

/// 81 bytes, as on every disk.
inline std::string ClassRecord(const ClassPlan& plan) {
  return Bytes2(60395) + Bytes2(7) + BytesF32(2.5F) + ClassInfo(plan) + ClassMiddle() + ClassModels(plan) +
         Bytes1(plan.Data) + Bytes4(plan.Index);
}
/// 84 bytes: the index at a multiple of four; or 88, of a program of 64 bits.
inline std::string AlignedClassRecord(const ClassPlan& plan, std::size_t stride) {
  std::string record = ClassRecord(plan);
  record.insert(77, 3, '\x7E');
  return FixedText(record, stride);
}
/// 88 bytes with the type at 13 and an index of 16 bits at 84.
inline std::string DescribedClassRecord(const ClassPlan& plan) {
  return Bytes2(60395) + Bytes2(7) + BytesF32(2.5F) + "\x7C\x7C\x7C" + ClassInfo(plan) + ClassMiddle() +
         "\x7C\x7C\x7C\x7C" + ClassModels(plan) + Bytes1(plan.Data) + Bytes2(plan.Index) + "\x7D\x7D";
}

struct ObjectiveClassPlan {
  int Class = 0;
  std::string Name{};
  int Header = 0;
  int Icon = 11;
  unsigned Features = 0;
  unsigned Radar = 255;
  int First = 0;
};

inline std::string ObjectiveClassRecord(const ObjectiveClassPlan& plan) {
  return Bytes2(plan.Class) + FixedText(plan.Name, 20) + Bytes2(3) + Bytes2(4) + Bytes2(plan.Header) +
         std::string(8 + 11 + 1, '\x21') + Bytes2(plan.Icon) + Bytes1(plan.Features) + Bytes1(plan.Radar) +
         Bytes2(plan.First);
}

struct FeatureEntryPlan {
  int Class = 0;
  int Flags = 0;
  unsigned Value = 0;
  float East = 0, North = 0, Up = 0;
  int Heading = 0;
};

inline std::string FeatureEntryRecord(const FeatureEntryPlan& plan) {
  return Bytes2(plan.Class) + Bytes2(plan.Flags) + std::string(8, '\x22') + Bytes1(plan.Value) +
         std::string(3, '\x23') + BytesF32(plan.East) + BytesF32(plan.North) + BytesF32(plan.Up) +
         Bytes2(plan.Heading) + "\x24\x24";
}

struct FeatureClassPlan {
  int Class = 0;
  int Repair = 0;
  int Flags = 0;
  std::string Name{};
  int HitPoints = 0;
};

inline std::string FeatureClassRecord(const FeatureClassPlan& plan) {
  return Bytes2(plan.Class) + Bytes2(plan.Repair) + "\x31\x31" + Bytes2(plan.Flags) + FixedText(plan.Name, 20) +
         Bytes2(plan.HitPoints) + Bytes2(12) + BytesF32(0.5F) + Bytes2(13) + std::string(8 + 11 + 3, '\x32');
}

struct HeaderPlan {
  int Objective = 0;
  unsigned Kind = 1;
  unsigned Count = 0;
  std::array<unsigned, 5> Features = {255, 255, 255, 255, 255};
  int Data = 0;
  int First = 0;
  int Runway = -1;
  int Side = 0;
  int Next = 0;
};

inline std::string HeaderRecord(const HeaderPlan& plan) {
  std::string bytes = Bytes2(plan.Objective) + Bytes1(plan.Kind) + Bytes1(plan.Count);
  for (const unsigned feature : plan.Features) bytes += Bytes1(feature);
  return bytes + "\x41" + Bytes2(plan.Data) + BytesF32(0.25F) + BytesF32(0.75F) + Bytes2(plan.First) + Bytes2(77) +
         Bytes1(static_cast<unsigned>(plan.Runway)) + Bytes1(static_cast<unsigned>(plan.Side)) + Bytes2(plan.Next);
}

struct PointPlan {
  float East = 0, North = 0;
  unsigned Kind = 0;
  unsigned Flags = 0;
  float Up = 0;  ///< of the large record alone
};

inline std::string PointRecord(const PointPlan& plan) {
  return BytesF32(plan.East) + BytesF32(plan.North) + Bytes1(plan.Kind) + Bytes1(plan.Flags) + "\x51\x51";
}
inline std::string LargePointRecord(const PointPlan& plan) {
  return BytesF32(plan.East) + BytesF32(plan.North) + BytesF32(plan.Up) + BytesF32(9) + BytesF32(8) + BytesF32(7) +
         Bytes1(plan.Kind) + Bytes1(plan.Flags) + "\x52\x52";
}

/// A table of records: their number before them, or 0 there and their number behind them.
enum class Count { Before, Behind };
template <class Plan, class Writer>
std::string TableOf(const std::vector<Plan>& plans, const Writer& record, Count where = Count::Before) {
  const std::string count = Bytes2(static_cast<int>(plans.size()));
  std::string bytes = where == Count::Before ? count : Bytes2(0);
  for (const Plan& plan : plans) bytes += record(plan);
  return where == Count::Before ? bytes : bytes + count;
}

/// Class information of a database: a dummy, `objectives` of them with the data indices 1, 2 ... and as many features.
inline std::vector<ClassPlan> ManyClasses(int objectives) {
  std::vector<ClassPlan> plans = {{.Domain = 0, .Class = 0, .Type = 0, .Data = 2}};
  for (int n = 1; n <= objectives; ++n) {
    plans.push_back({.Type = static_cast<unsigned>(n % 31 + 1), .Models = {n + 500, 0, 0, 0, 0, 0, 0}, .Index = n});
    plans.push_back({.Class = 2, .Models = {n + 1000, 0, 0, 7, 0, 0, 0}, .Data = 1, .Index = objectives - n + 1});
  }
  return plans;
}

}  // namespace kestrel::test
