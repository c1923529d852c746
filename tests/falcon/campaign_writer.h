#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/little_endian.h"
#include "falcon/campaign_bytes.h"
#include "falcon/lzss_packer.h"

// Whole campaign files of every data version, put together from a plan of what they tell.
namespace kestrel::test {

struct ObjectivePlan {
  std::uint32_t Id = 1;
  int Type = 100;
  int X = 0;
  int Y = 0;
  int Owner = 0;
  int CampId = 0;
  std::string Status = {};  ///< as it is stored
  int NameId = 0;
  std::uint32_t Parent = 0;
  int FirstOwner = 0;
  std::vector<std::uint32_t> Links = {};
  int Radar = 0;  ///< ranges follow for 1
  double North = 0;
  double East = 0;
  float Heading = 0;
  std::string Name = {};
};

struct DeltaPlan {
  std::uint32_t Id = 1;
  int Owner = 0;
  int Supply = 0;
  int Fuel = 0;
  int Losses = 0;
  std::string Status = {};
};

struct TeamPlan {
  int Number = 0;
  int Side = 0;
  int Flags = 1;
  std::string Name = {};
  std::string Motto = {};
  std::array<int, 8> Stance = {};
  int Airbases = 0;  ///< of its air tasking manager
  int Requests = 0;
};

struct WorldPlan {
  CampaignPlan Place = {};
  std::string Theater = "korea";
  std::string Scenario = "te_new";
  std::string SaveName = "mission";
  std::string ShownName = "A mission";
  std::vector<std::string> Names = {};  ///< of countries in the description
  std::vector<TeamPlan> Teams = {};
  std::vector<ObjectivePlan> Objectives = {};  ///< none: no piece of them
  std::vector<DeltaPlan> Deltas = {};
  int Events = 0;
  int MapBytes = 0;  ///< of occupation
  int Squadrons = 0;
};

/// A field of `width` bytes; what stands behind the first NUL is garbage.
inline std::string GarbageEnded(std::string_view text, std::size_t width) {
  std::string field(text.substr(0, width));
  if (field.size() < width) field += '\0';
  field.resize(width, '\xEE');
  return field;
}

inline std::size_t SquadronBytes(int version) {
  if (version >= 109) return 200;
  return version >= 100 ? 196 : 68;
}

/// "cmp", not packed, of a version from 52 on.
inline std::string DescriptionBytes(const WorldPlan& plan) {
  std::string block = CampaignBlock(plan.Place);
  for (std::size_t n = 0; n < 8; ++n) {
    const std::string name = n < plan.Names.size() ? plan.Names[n] : "";
    block.replace(128 + 222 * n, 222,
                  std::string("\x01") + static_cast<char>(n) + GarbageEnded(name, 20) + GarbageEnded("", 200));
  }
  for (const std::string& name : {plan.Theater, plan.Scenario, plan.SaveName, plan.ShownName})
    block += GarbageEnded(name, 40);
  block += Bytes8(0);
  for (int list = 0; list < 2; ++list) {
    block += Bytes2(plan.Events);
    for (int n = 0; n < plan.Events; ++n) block += std::string(20, '\x3C') + Bytes2(n) + std::string(n, 'e');
  }
  block += Bytes2(plan.MapBytes) + std::string(plan.MapBytes, '\x05') + Bytes2(77);
  block += Bytes2(plan.Squadrons) + std::string(SquadronBytes(plan.Place.Version) * plan.Squadrons, '\x4D');
  return block + std::string(13, '\x5E');
}

/// "cmp" as it stands in the file; the packed size counts as the version does.
inline std::string DescriptionPiece(std::string_view block, int version) {
  const std::string packed = Packed(block) + std::string(version == 103 ? 6 : 0, '\0');
  const std::size_t told = packed.size() + (version == 103 ? 0 : 4);
  return Bytes4(static_cast<std::int64_t>(told)) + Bytes4(static_cast<std::int64_t>(block.size())) + packed;
}

inline std::string IdBytes(std::uint32_t id) { return Bytes4(id) + Bytes4(0); }

inline std::string ObjectiveBytes(const ObjectivePlan& one, int version) {
  std::string bytes = Bytes2(one.Type) + IdBytes(one.Id) + Bytes2(one.Type) + Bytes2(one.X) + Bytes2(one.Y);
  if (version >= 70) bytes += BytesF32(0);
  bytes += Bytes4(0x11111111) + Bytes2(0x22) + Bytes2(0x33) + Bytes1(one.Owner) + Bytes2(one.CampId) + Bytes4(0x44);
  bytes += Bytes4(0x20000) + "\x50\x40\x30";
  bytes += Bytes1(static_cast<unsigned>(one.Status.size())) + one.Status + Bytes1(20);
  bytes += Bytes2(one.NameId) + IdBytes(one.Parent) + Bytes1(one.FirstOwner);
  bytes += Bytes1(static_cast<unsigned>(one.Links.size()));
  for (const std::uint32_t link : one.Links) bytes += "\x01\x02\x03\x04\x05\x06\x07\xFF" + IdBytes(link);
  bytes += Bytes1(one.Radar);
  if (one.Radar == 1) bytes += std::string(32, '\x3F');
  if (version >= 100) bytes += BytesF64(one.North) + BytesF64(one.East) + BytesF64(0) + BytesF32(one.Heading);
  if (version >= 108) bytes += GarbageEnded(one.Name, 80);
  return bytes;
}

inline std::string ObjectiveListBytes(const std::vector<ObjectivePlan>& objectives, int version) {
  std::string bytes = {};
  for (const ObjectivePlan& one : objectives) bytes += ObjectiveBytes(one, version);
  return bytes;
}

/// "obj" as it stands in the file.
inline std::string ObjectivePiece(std::string_view bytes, int count) {
  const std::string packed = Packed(bytes);
  return Bytes2(count) + Bytes4(static_cast<std::int64_t>(bytes.size())) +
         Bytes4(static_cast<std::int64_t>(packed.size())) + packed;
}

inline std::string DeltaBytes(const std::vector<DeltaPlan>& deltas, int version) {
  std::string bytes = {};
  for (const DeltaPlan& one : deltas) {
    bytes += IdBytes(one.Id) + Bytes4(0x55) + Bytes1(one.Owner) + Bytes1(one.Supply) + Bytes1(one.Fuel);
    bytes += Bytes1(one.Losses) + Bytes1(static_cast<unsigned>(one.Status.size()));
    bytes += version < 64 ? GarbageEnded(one.Status, 1) : one.Status;
  }
  return bytes;
}

/// "obd" as it stands in the file.
inline std::string DeltaPiece(std::string_view bytes, int count) {
  const std::string packed = Packed(bytes);
  return Bytes4(static_cast<std::int64_t>(packed.size() + 6)) + Bytes2(count) +
         Bytes4(static_cast<std::int64_t>(bytes.size())) + packed;
}

/// How many kinds of missions each team has priorities for.
inline std::size_t MissionKinds(int version) { return version >= 100 ? 50 : 41; }

inline std::string ManagerHead() { return IdBytes(9) + Bytes2(900) + Bytes2(3) + Bytes1(2); }

/// A team of a version from 63 on, with its managers.
inline std::string TeamBytes(const TeamPlan& team, std::size_t missions) {
  std::string bytes = IdBytes(7) + Bytes2(885) + Bytes1(team.Number) + Bytes1(team.Side) + Bytes2(team.Flags);
  bytes += std::string(8, '\x01');
  for (const int stance : team.Stance) bytes += Bytes2(stance);
  bytes += std::string(8 + 4 + 2 + 4, '\x0A') + Bytes2(5) + BytesF32(1.5F) + Bytes4(6);
  bytes += std::string(32 + 2 + 160 + 80, '\x0B') + std::string(36 + 20, '\x0C') + std::string(missions, '\x0D');
  bytes += "\x10\x10\x10\x10" + Bytes1(team.Number + 20) + Bytes1(team.Number + 30) + Bytes1(0);
  bytes +=
      GarbageEnded(team.Name, 20) + GarbageEnded(team.Motto, 200) + std::string(19, '\x0E') + std::string(56, '\x0F');
  bytes += ManagerHead() + Bytes2(1) + Bytes2(2) + Bytes2(3) + Bytes1(4);
  bytes += Bytes1(team.Airbases) + std::string(std::size_t{40} * team.Airbases, '\x6F') + Bytes1(5);
  bytes += Bytes2(team.Requests) + std::string(std::size_t{76} * team.Requests, '\x7F');
  return bytes + ManagerHead() + Bytes2(1) + ManagerHead() + Bytes2(1);
}

/// "tea", which is not packed.
inline std::string TeamPiece(const std::vector<TeamPlan>& teams, std::size_t missions) {
  std::string bytes = Bytes2(static_cast<int>(teams.size()));
  for (const TeamPlan& team : teams) bytes += TeamBytes(team, missions);
  return bytes;
}

/// The pieces of a whole file, named after its SaveName.
inline Pieces WorldPieces(const WorldPlan& plan) {
  const int version = plan.Place.Version;
  const std::string stem = plan.SaveName + ".";
  Pieces pieces = {{stem + "cmp", DescriptionPiece(DescriptionBytes(plan), version)}};
  if (!plan.Objectives.empty()) {
    pieces.emplace_back(stem + "obj", ObjectivePiece(ObjectiveListBytes(plan.Objectives, version),
                                                     static_cast<int>(plan.Objectives.size())));
  }
  pieces.emplace_back(stem + "obd", DeltaPiece(DeltaBytes(plan.Deltas, version), static_cast<int>(plan.Deltas.size())));
  pieces.emplace_back(stem + "tea", TeamPiece(plan.Teams, MissionKinds(version)));
  pieces.emplace_back(stem + "ver", std::to_string(version));
  return pieces;
}

inline std::string WorldBytes(const WorldPlan& plan) { return Container(WorldPieces(plan)); }

/// The data versions that are known from files.
inline constexpr int KnownVersions[] = {63, 73, 103, 108, 109};

/// Three objectives: an airbase with features, links and a radar, a bridge that is its child, one without anything.
/// Their states stand as the version has them: the airbase has six features, the third destroyed, the sixth damaged.
inline std::vector<ObjectivePlan> SomeObjectives(int version) {
  const std::string packed("\x30\x08", 2);
  const std::string bytes("\0\0\3\0\0\2", 6);
  // The middle of a cell in feet: (cell + 0.5) * 3279.98.
  return {{.Id = 501,
           .Type = 433,
           .X = 398,
           .Y = 236,
           .Owner = 2,
           .CampId = 766,
           .Status = version >= 100 ? bytes : packed,
           .NameId = version >= 108 ? 0 : 3,
           .FirstOwner = 6,
           .Links = {502, 503},
           .Radar = 1,
           .North = 775715.27,
           .East = 1307072.03,
           .Heading = 41.5F,
           .Name = "Kunsan Airbase"},
          {.Id = 502,
           .Type = 100,
           .X = 0,
           .Y = 1023,
           .Owner = 6,
           .CampId = 12,
           .Status = std::string(1, '\0'),
           .Parent = 501,
           .Links = {501},
           .North = 3357059.53,
           .East = 1639.99,
           .Name = std::string(79, 'n')},
          {.Id = 503,
           .Type = 2000,
           .X = 1023,
           .Y = 0,
           .CampId = 13,
           .North = 1639.99,
           .East = 3357059.53,
           .Name = std::string(80, 'z')}};
}

}  // namespace kestrel::test
