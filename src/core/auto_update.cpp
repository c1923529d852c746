#include "core/auto_update.h"

#include "base/files.h"
#include "base/profile_file.h"

namespace kestrel::core {

void SetAutoUpdate(Station& station, bool on) {
  const std::filesystem::path path = base::FindFile(station.AppPath, "common.ini");
  base::ProfileFile file = base::ProfileFile::Load(path);
  file.WriteIniValue("GENERAL", "AUTOUPDATE", on ? "1" : "0");
  file.Save(path);
  station.AutoUpdate = on;
}

}  // namespace kestrel::core
