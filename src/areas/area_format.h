#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "areas/area.h"
#include "base/record.h"

// The files of areas, told once: a magic of 100 bytes, then groups with their areas, then folders; little-endian and
// without padding. Reading, writing and the fewest bytes of all three formats walk this description (base/record.h);
// docs/area-format.md shows it byte by byte.
namespace kestrel::areas {

enum class AreaFormat {
  V2,      ///< of earlier stations; only read
  V3,      ///< of a theater
  Export,  ///< ".axp", from one station to another
};

inline constexpr std::size_t TextWidth = 100;

constexpr std::string_view MagicOf(AreaFormat format) {
  switch (format) {
    case AreaFormat::V2:
      return "Area File v2";
    case AreaFormat::V3:
      return "Area File v3";
    case AreaFormat::Export:
      break;
  }
  return "Area Export File v3";
}

/// A group that is exported, with its folder in the file's own list.
struct ExportedGroup {
  const AreaGroup* Group = nullptr;
  std::int32_t FolderIndex = 0;
};

// The description.

// A line stands in the file as it does in memory.
static_assert(sizeof(AreaLine) == 32 && offsetof(AreaLine, X1) == 0 && offsetof(AreaLine, Y1) == 8 &&
              offsetof(AreaLine, X2) == 16 && offsetof(AreaLine, Y2) == 24);

template <class Walk, class Font>
void FontFields(Walk& walk, Font& font, AreaFormat format) {
  walk.Number(font.Bold);
  walk.Number(font.Italic);
  walk.PaddedText(font.Name, TextWidth);
  if (format == AreaFormat::V2) {
    walk.Number(font.Size, base::As<double>());
    return;
  }
  walk.Number(font.Size);
  walk.Number(font.Strikethru);
  walk.Number(font.Underline);
}

template <class Walk, class Point>
void PointFields(Walk& walk, Point& point, AreaFormat format) {
  walk.Number(point.Type);
  walk.Number(point.X);
  walk.Number(point.Y);
  if (format != AreaFormat::V2) walk.Number(point.Z);
}

/// `Editing` is in no file.
template <class Walk, class AnyArea>
void AreaFields(Walk& walk, AnyArea& area, AreaFormat format) {
  walk.PaddedText(area.Name, TextWidth);
  walk.Block(base::Counted(), area.Lines);
  if (format == AreaFormat::Export) FontFields(walk, area.AltFont, format);
  walk.Array(base::Counted(), area.Points, [format](auto& fields, auto& point) { PointFields(fields, point, format); });
  if (format == AreaFormat::V3) FontFields(walk, area.AltFont, format);
  walk.Number(area.X);
  walk.Number(area.Y);
  walk.Number(area.Reserved1);
  walk.Number(area.ShowWaypointElevation);
  walk.Number(area.Color);
  walk.Number(area.Icon);
  walk.Number(area.Radius);
  walk.Number(area.Type);
  walk.Number(area.Visible);
  walk.Number(area.Reserved2);
  walk.Number(area.Reserved3);
  walk.PaddedText(area.Text, TextWidth);
  FontFields(walk, area.TextFont, format);
  walk.Number(area.MinX);
  walk.Number(area.MaxX);
  walk.Number(area.MinY);
  walk.Number(area.MaxY);
}

/// `folderIndex` is the group's as this file counts.
template <class Walk, class Group, class Index>
void GroupFields(Walk& walk, Group& group, Index& folderIndex, AreaFormat format) {
  walk.PaddedText(group.Name, TextWidth);
  walk.Number(group.Visible);
  walk.Array(base::Counted(), group.Areas, [format](auto& fields, auto& area) { AreaFields(fields, area, format); });
  if (format != AreaFormat::V2) walk.Number(folderIndex);
}
template <class Walk, class Group>
void GroupFields(Walk& walk, Group& group, AreaFormat format) {
  GroupFields(walk, group, group.FolderIndex, format);
}
template <class Walk>
void GroupFields(Walk& walk, const ExportedGroup& group, AreaFormat format) {
  GroupFields(walk, *group.Group, group.FolderIndex, format);
}

template <class Walk, class Folder>
void FolderFields(Walk& walk, Folder& folder) {
  walk.PaddedText(folder.Name, TextWidth);
  walk.Number(folder.Visible);
}

/// What stands behind the magic.
template <class Walk, class Groups, class Folders>
void FileFields(Walk& walk, Groups& groups, Folders& folders, AreaFormat format) {
  walk.Array(base::Counted(), groups, [format](auto& fields, auto& group) { GroupFields(fields, group, format); });
  if (format == AreaFormat::V2) return;
  walk.Array(base::Counted(), folders, [](auto& fields, auto& folder) { FolderFields(fields, folder); });
}

}  // namespace kestrel::areas
