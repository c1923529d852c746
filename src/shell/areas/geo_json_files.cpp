#include "shell/areas/geo_json_files.h"

#include <exception>
#include <optional>
#include <utility>
#include <vector>

#include "areas/area_tree.h"
#include "base/files.h"
#include "core/tell.h"
#include "shell/areas/geo_json.h"

namespace kestrel::shell {
namespace {

theaters::Corner CornerOf(const core::Station& station) {
  const theaters::Theater& theater = station.Catalogue.Current();
  return {theater.CoordLat, theater.CoordLong};
}

std::vector<std::size_t> GroupsOf(const areas::AreaCatalogue& catalogue, const std::string& key) {
  const std::optional<areas::Node> node = areas::NodeOf(catalogue, key);
  std::vector<std::size_t> groups;
  for (std::size_t index = 1; index <= catalogue.AreaGroups.UpperBound(); ++index) {
    const areas::AreaGroup& group = catalogue.AreaGroups[index];
    const bool taken = !node            ? areas::Shows(catalogue, group)
                       : node->IsFolder ? std::cmp_equal(group.FolderIndex, node->Index)
                                        : index == node->Index;
    if (taken) groups.push_back(index);
  }
  return groups;
}

}  // namespace

void ExportGeoJson(core::Program& program, const std::string& key) {
  const areas::AreaCatalogue& catalogue = program.State.Areas;
  const std::vector<std::size_t> groups = GroupsOf(catalogue, key);
  if (groups.empty()) {
    core::Tell(program, "There is no group of areas to be exported.");
    return;
  }
  const auto file = core::ChooseNewFile(program, "Export as GeoJSON", "GeoJSON files|*.geojson");
  if (!file) return;
  try {
    base::WriteWholeFile(*file, WriteGeoJson(catalogue, groups, CornerOf(program.State)).toStdString());
  } catch (const std::exception& failure) {
    core::TellFailure(program, "The areas could not be exported: ", failure);
  }
}

std::string ImportGeoJson(core::Program& program) {
  const auto file = core::ChooseFile(program, "Import GeoJSON", "GeoJSON files|*.geojson;*.json");
  if (!file) return {};
  areas::AreaCatalogue& catalogue = program.State.Areas;
  const std::size_t folders = catalogue.AreaFolders.UpperBound();
  try {
    const std::string bytes = base::ReadWholeFile(*file, MaxGeoJsonBytes);
    areas::AreaFile read = ReadGeoJson(QByteArray::fromStdString(bytes), CornerOf(program.State),
                                       base::NameForMessage(file->stem()), program.Shown.Texts());
    if (read.AreaGroups.Empty()) throw base::RuntimeFailure("there is no position in it");
    areas::AppendAreas(catalogue, program.State.AreaSteps, std::move(read));
  } catch (const std::exception& failure) {
    core::TellFailure(program, "The areas cannot be read from \"" + base::NameForMessage(*file) + "\": ", failure);
    return {};
  }
  return areas::FolderKey(folders + 1);
}

}  // namespace kestrel::shell
