#include "core/area_exchange.h"

#include <cstddef>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "areas/area_file.h"
#include "base/changed.h"
#include "core/tell.h"
#include "core/theater_areas.h"

namespace kestrel::core {

void ExportVisibleAreas(Program& program) {
  if (!areas::HasExport(program.State.Areas)) {
    Tell(program, "No Area was selected for export...", "Critical");
    return;
  }
  const std::optional<std::filesystem::path> path =
      ChooseNewFile(program, "Export Visible Areas...", "Area export file (*.axp)|*.axp");
  if (!path) return;
  try {
    areas::WriteAreaExport(*path, program.State.Areas);
  } catch (const std::exception& failure) {
    TellFailure(program, "The areas could not be exported: ", failure);
  }
}

void ImportAreas(Program& program) {
  const std::optional<std::filesystem::path> path =
      ChooseFile(program, "Import Areas...", "Area Export Files (*.axp)|*.axp");
  if (!path) return;
  try {
    areas::AreaFile file = areas::ReadAreaFile(*path, areas::AreaFileKind::Export);
    const areas::AreaFileState state = file.State;
    if (state == areas::AreaFileState::Refused) {
      Tell(program, "Wrong Export Area File version. Disregarding...");
      return;
    }
    const std::size_t homeless = areas::AppendAreas(program.State.Areas, program.State.AreaSteps, std::move(file));
    for (const std::string& note : AreaFileNotes(*path, state, homeless)) program.Log.LogLine(note);
  } catch (const std::exception& failure) {
    TellFailure(program, "The areas could not be imported: ", failure);
    return;
  }
  program.Shown.Refresh(base::Changed::Areas | base::Changed::Map);
}

}  // namespace kestrel::core
