#pragma once

#include "core/program.h"

// Areas that go from one station to another, in files ".axp".
namespace kestrel::core {

/// Menu entry mnuExportSelectedAreas: asks for a file and writes the groups that show into it. A failure is told; an
/// older file stays then.
void ExportVisibleAreas(Program& program);

/// Menu entry mnuImportAreas: asks for a file and adds its groups and their folders to the catalogue. A failure is told
/// and leaves the catalogue as it stands.
void ImportAreas(Program& program);

}  // namespace kestrel::core
