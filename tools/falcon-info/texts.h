#pragma once

#include <filesystem>

#include "falcon-info/context.h"

// Files of text: names and general strings, stations, missions, pilots, configuration.
namespace kestrel::falconinfo {

/// A pair of .idx and .wch, either of which names it, or Strings.txt.
Json StringsReport(Context& context, const std::filesystem::path& file);
/// CampObjData.XML
Json CampObjectsReport(Context& context, const std::filesystem::path& file);
Json StationsReport(Context& context, const std::filesystem::path& file);
/// An .ini: steerpoints of a mission or a pilot, channels of a pilot.
Json MissionReport(Context& context, const std::filesystem::path& file);
/// A pilot's log book, whose name is what counts: the file beside it.
Json LogBookReport(Context& context, const std::filesystem::path& file);
/// One of the files "falcon bms.cfg" and "Falcon BMS User.cfg".
Json ConfigReport(Context& context, const std::filesystem::path& file);

}  // namespace kestrel::falconinfo
