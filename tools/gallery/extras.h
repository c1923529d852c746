#pragma once

#include <QProcess>
#include <filesystem>

#include "gallery/script.h"

// Pictures of what the map shows beyond what a display has to show.
namespace kestrel::gallery {

/// Ties, threats, labels apart, colours for every eye, card, Find, a dimmed map with degrees; of a running session.
void AddAircraft(Script& script);
/// The map when the server has gone, by killing it.
void AddLostLink(Script& script, QProcess& server);
/// The window of an export of the demo tape.
void AddExport(Script& script, const std::filesystem::path& station);
/// The sign of a replay on the map, while one is on show.
void AddReplay(Script& script);

}  // namespace kestrel::gallery
