#pragma once

#include <string>

#include "core/program.h"

namespace kestrel::shell {

/// Asks for a file and writes the groups of a node of the tree into it, those that show for an empty key. A failure is
/// told; an older file stays then.
void ExportGeoJson(core::Program& program, const std::string& key);

/// Asks for a file and adds what it holds as one step. The key of the first folder that it has made, empty when nothing
/// has changed. A failure is told and leaves the catalogue as it stands.
std::string ImportGeoJson(core::Program& program);

}  // namespace kestrel::shell
