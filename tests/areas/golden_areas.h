#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "areas/area.h"
#include "base/little_endian.h"

// A second, independent writer of area files: bytes put one behind the other as docs/area-format.md shows them, with
// nothing of the room's own description.
namespace kestrel::test {

enum class Golden { V2, V3, Export };

inline std::string Str100(std::string_view text) {
  std::string bytes(text.substr(0, 100));
  bytes.resize(100, ' ');
  return bytes;
}

inline std::string GoldenMagic(Golden kind) {
  return Str100(kind == Golden::V2 ? "Area File v2" : kind == Golden::V3 ? "Area File v3" : "Area Export File v3");
}

inline std::string GoldenAltFont(const areas::AreaFont& font) {
  return Bytes2(font.Bold) + Bytes2(font.Italic) + Str100(font.Name) + BytesF32(font.Size) + Bytes2(font.Strikethru) +
         Bytes2(font.Underline);
}

inline std::string GoldenArea(const areas::Area& area, Golden kind) {
  std::string bytes = Str100(area.Name) + Bytes4(static_cast<std::int64_t>(area.Lines.UpperBound()));
  for (const areas::AreaLine& line : area.Lines.Live()) {
    bytes += BytesF64(line.X1) + BytesF64(line.Y1) + BytesF64(line.X2) + BytesF64(line.Y2);
  }
  if (kind == Golden::Export) bytes += GoldenAltFont(area.AltFont);
  bytes += Bytes4(static_cast<std::int64_t>(area.Points.UpperBound()));
  for (const areas::FlightPlanPoint& point : area.Points.Live()) {
    bytes += Bytes2(static_cast<int>(point.Type)) + BytesF64(point.X) + BytesF64(point.Y);
    if (kind != Golden::V2) bytes += BytesF64(point.Z);
  }
  if (kind == Golden::V3) bytes += GoldenAltFont(area.AltFont);
  bytes += BytesF64(area.X) + BytesF64(area.Y) + Bytes2(area.Reserved1) + Bytes2(area.ShowWaypointElevation);
  bytes += Bytes4(static_cast<std::int64_t>(area.Color)) + Bytes2(area.Icon) + BytesF64(area.Radius);
  bytes += Bytes2(static_cast<int>(area.Type)) + Bytes2(area.Visible) + Bytes2(area.Reserved2) + Bytes2(area.Reserved3);
  bytes += Str100(area.Text) + Bytes2(area.TextFont.Bold) + Bytes2(area.TextFont.Italic) + Str100(area.TextFont.Name);
  if (kind == Golden::V2) {
    bytes += BytesF64(area.TextFont.Size);
  } else {
    bytes += BytesF32(area.TextFont.Size) + Bytes2(area.TextFont.Strikethru) + Bytes2(area.TextFont.Underline);
  }
  return bytes + BytesF64(area.MinX) + BytesF64(area.MaxX) + BytesF64(area.MinY) + BytesF64(area.MaxY);
}

inline std::string GoldenGroup(const areas::AreaGroup& group, Golden kind) {
  std::string bytes = Str100(group.Name) + Bytes2(group.Visible);
  bytes += Bytes4(static_cast<std::int64_t>(group.Areas.UpperBound()));
  for (const areas::Area& area : group.Areas.Live()) bytes += GoldenArea(area, kind);
  if (kind != Golden::V2) bytes += Bytes4(group.FolderIndex);
  return bytes;
}

/// `Groups` and `Folders`: tables of them.
template <class Groups, class Folders>
std::string GoldenFile(const Groups& groups, const Folders& folders, Golden kind) {
  std::string bytes = GoldenMagic(kind) + Bytes4(static_cast<std::int64_t>(groups.UpperBound()));
  for (const areas::AreaGroup& group : groups.Live()) bytes += GoldenGroup(group, kind);
  if (kind == Golden::V2) return bytes;
  bytes += Bytes4(static_cast<std::int64_t>(folders.UpperBound()));
  for (const areas::AreaFolder& folder : folders.Live()) bytes += Str100(folder.Name) + Bytes2(folder.Visible);
  return bytes;
}
inline std::string GoldenFile(const areas::AreaCatalogue& catalogue, Golden kind) {
  return GoldenFile(catalogue.AreaGroups, catalogue.AreaFolders, kind);
}

/// Five folders; six groups, one without areas, with areas of each type and with numbers that no table has. Every field
/// has a value of its own. The groups of folders 1 and 5 show.
inline areas::AreaCatalogue SampleAreas() {
  areas::AreaCatalogue catalogue;
  for (int n = 1; n <= 5; ++n) {
    // Of a folder any number but 0 is true.
    catalogue.AreaFolders.Append({"Folder " + std::to_string(n), static_cast<areas::Flag>(n == 1   ? -1
                                                                                          : n == 5 ? 7
                                                                                                   : 0)});
  }
  int seed = 1;
  for (const std::int32_t folder : {5, 2, 1, 5, 1, 3}) {
    areas::AreaGroup& group = catalogue.AreaGroups.Append({});
    const auto n = static_cast<int>(catalogue.AreaGroups.UpperBound());
    group.Name = "Group " + std::to_string(n);
    group.FolderIndex = folder;
    group.Visible = n == 5 ? areas::Flag{1} : areas::On;
    for (int at = 1; at < n; ++at, ++seed) {
      areas::Area& area = group.Areas.Append({});
      area.Name = "Area " + std::to_string(seed);
      area.Type = static_cast<areas::AreaType>(seed == 9 ? -300 : 1 + seed % 5);
      area.Reserved1 = static_cast<std::int16_t>(1000 + seed);
      area.Reserved2 = static_cast<std::int16_t>(-2000 - seed);
      area.Reserved3 = static_cast<std::int16_t>(3000 + seed);
      area.ShowWaypointElevation = static_cast<areas::Flag>(seed % 3 - 1);
      area.Radius = 10.5 + seed;
      for (int line = 0; line < seed % 4; ++line) area.Lines.Append({1.5 * line, 2.5 * line, -3.25, 1e300});
      area.X = 100.125 * seed;
      area.Y = -200.0625 * seed;
      for (int point = 0; point < seed % 3; ++point) {
        area.Points.Append({300.5 + point, 400.5 - seed, 25000.75, static_cast<areas::PointType>(point == 1 ? 99 : 3)});
      }
      area.AltFont = {"Alt " + std::to_string(seed), 7.25F, areas::Off, areas::On, 5, areas::On};
      area.TextFont = {"Text " + std::to_string(seed), 9.5F, areas::On, areas::Off, areas::On, -6};
      area.Color = 0x00804020U + static_cast<std::uint32_t>(seed);
      area.Icon = static_cast<std::int16_t>(seed == 4 ? -1 : 30 + seed);
      area.Visible = static_cast<areas::Flag>(seed % 2 == 0 ? -1 : 0);
      area.Text = "Printed " + std::to_string(seed);
      area.MinX = -1.5 * seed;
      area.MinY = -2.5 * seed;
      area.MaxX = 3.5 * seed;
      area.MaxY = 4.5 * seed;
    }
  }
  return catalogue;
}

}  // namespace kestrel::test
