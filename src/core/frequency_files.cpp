#include "core/frequency_files.h"

#include <filesystem>
#include <string>

#include "base/failure.h"
#include "base/files.h"
#include "base/profile_file.h"
#include "radio/frequency_file.h"

namespace kestrel::core {

void LoadDefaultFrequencies(Station& station) {
  station.DefaultFrequencies = {};
  try {
    const std::filesystem::path path = base::FindFile(station.AppPath, "DefFreq.ini");
    station.DefaultFrequencies = radio::ReadDefaultFrequencies(base::ProfileFile::Load(path));
  } catch (const base::RuntimeFailure& failure) {
    station.Notes.push_back(std::string("There are no default channels: ") + failure.what());
  }
}

}  // namespace kestrel::core
