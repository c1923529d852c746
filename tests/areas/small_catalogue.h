#pragma once

#include <cstdint>
#include <initializer_list>
#include <sstream>
#include <string>
#include <utility>

#include "areas/area.h"
#include "areas/area_changes.h"

namespace kestrel::areas {

inline std::ostream& operator<<(std::ostream& out, const AreaFont& font) {
  return out << font.Name << '/' << font.Size << '/' << font.Bold << font.Italic << font.Strikethru << font.Underline;
}

/// All that is kept of an area, as text to be compared.
inline std::string Told(const Area& area) {
  std::ostringstream out;
  out << area.Name << ' ' << static_cast<int>(area.Type) << ' ' << area.Reserved1 << ' ' << area.ShowWaypointElevation
      << ' ' << area.Radius << ' ' << area.Reserved2 << ' ' << area.Reserved3 << ' ' << area.X << ' ' << area.Y << ' '
      << area.AltFont << ' ' << area.Color << ' ' << area.Icon << ' ' << area.Visible << ' ' << area.Text << ' '
      << area.TextFont << ' ' << area.Editing << ' ' << area.MinX << ' ' << area.MinY << ' ' << area.MaxX << ' '
      << area.MaxY;
  for (const AreaLine& line : area.Lines.Live())
    out << " (" << line.X1 << ',' << line.Y1 << ',' << line.X2 << ',' << line.Y2 << ')';
  for (const FlightPlanPoint& point : area.Points.Live())
    out << " [" << point.X << ',' << point.Y << ',' << point.Z << ',' << static_cast<int>(point.Type) << ']';
  return out.str();
}

/// All that is kept of a catalogue but its Revision, as text to be compared.
inline std::string Told(const AreaCatalogue& catalogue) {
  std::ostringstream out;
  for (const AreaFolder& folder : catalogue.AreaFolders.Live())
    out << "folder " << folder.Name << ' ' << folder.Visible << '\n';
  for (const AreaGroup& group : catalogue.AreaGroups.Live()) {
    out << "group " << group.Name << ' ' << group.Visible << ' ' << group.FolderIndex << '\n';
    for (const Area& area : group.Areas.Live()) out << "  " << Told(area) << '\n';
  }
  return out.str();
}

inline Area Named(const std::string& name) {
  Area area;
  area.Name = name;
  return area;
}

/// A catalogue with its history, made and told in short.
struct Small {
  AreaCatalogue Catalogue;
  AreaHistory History;

  void AddFolders(std::initializer_list<const char*> names) {
    for (const char* name : names) Catalogue.AreaFolders.Append({name, On});
  }
  /// Each group with the index of its folder.
  void AddGroups(std::initializer_list<std::pair<const char*, std::int32_t>> groups) {
    for (const auto& [name, folder] : groups) Catalogue.AreaGroups.Append({.Name = name, .FolderIndex = folder});
  }
  void AddAreas(std::size_t group, std::initializer_list<const char*> names) {
    for (const char* name : names) Catalogue.AreaGroups[group].Areas.Append(Named(name));
  }

  /// "A B C"
  std::string Folders() const {
    return Joined(Catalogue.AreaFolders, [](const auto& folder) { return folder.Name; });
  }
  /// "g1:1 g2:2": each group with the index of its folder.
  std::string Groups() const {
    return Joined(Catalogue.AreaGroups,
                  [](const auto& group) { return group.Name + ":" + std::to_string(group.FolderIndex); });
  }
  std::string Areas(std::size_t group) const {
    return Joined(Catalogue.AreaGroups[group].Areas, [](const auto& area) { return area.Name; });
  }

 private:
  template <class T, class Word>
  static std::string Joined(const base::Table<T>& table, Word word) {
    std::string all;
    for (const T& item : table.Live()) all += (all.empty() ? "" : " ") + word(item);
    return all;
  }
};

}  // namespace kestrel::areas
