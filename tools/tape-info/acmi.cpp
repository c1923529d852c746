#include "tape-info/acmi.h"

#include "base/failure.h"
#include "base/files.h"
#include "base/profile_file.h"
#include "core/acmi_export.h"
#include "theaters/catalogue.h"
#include "theaters/theater_file.h"

namespace kestrel::tapeinfo {
namespace {

namespace fs = std::filesystem;

theaters::Theater Read(const fs::path& file) {
  if (!base::FileExists(file)) throw base::RuntimeFailure("there is no theater " + base::PathForMessage(file));
  theaters::Theater theater = theaters::ReadTheaterFile(base::ProfileFile::Load(file), base::NameForMessage(file));
  theaters::MendTheater(theater);
  return theater;
}

}  // namespace

theaters::Theater TheaterOf(const fs::path& tape, const std::string& theaterFile) {
  if (!theaterFile.empty()) return Read(theaterFile);
  const fs::path station = fs::absolute(tape).parent_path().parent_path();
  const base::ProfileFile settings = base::ProfileFile::Load(base::FindFile(station, "KESTREL.ini"));
  const std::string name = settings.ReadIniValue("MAPS", "MAP" + settings.ReadIniValue("MAPS", "CURRENTMAP", "1"), {});
  if (name.empty()) throw base::RuntimeFailure("over which theater the tape was flown is to be told by --theater");
  return Read(base::FindFile(base::FindFile(station, "Theaters"), name));
}

std::int32_t WriteAcmi(const fs::path& tape, const fs::path& file, const theaters::Theater& theater) {
  core::AcmiExport exported(tape, file, theater);
  while (exported.Step()) {
  }
  return exported.Records();
}

}  // namespace kestrel::tapeinfo
