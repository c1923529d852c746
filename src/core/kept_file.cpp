#include "core/kept_file.h"

#include "base/failure.h"
#include "base/files.h"
#include "core/tell.h"
#include "core/theater_data.h"

namespace kestrel::core {

std::filesystem::path KeptPath(const Station& station, const KeptFile& kept, std::string_view ending) {
  return DataPath(station, std::string(kept.Stem).append(ending));
}

void LoadKept(Program& program, const KeptFile& kept) {
  Station& station = program.State;
  FileKeeping& keeping = station.*kept.Keeping;
  kept.Reset(station);
  keeping = {};
  if (kept.Revision != nullptr) keeping.SafeRevision = ++kept.Revision(station);
  const std::filesystem::path path = KeptPath(station, kept, ".dat");
  if (!base::FileExists(path)) return;
  const std::uint32_t start = program.Log.Time().TickCount();
  // Until it has been read.
  keeping.KeepFormer = true;
  const FileReading reading = kept.Read(station, path);
  keeping.KeepFormer = reading.State != FileState::Whole;
  program.Log.LogDuration("Loaded the " + std::string(kept.What), start);
  for (const std::string& note : reading.Notes) program.Log.LogLine(note);
  if (reading.State == FileState::Refused && !kept.Refusal.empty()) Tell(program, std::string(kept.Refusal));
}

void SaveKept(Station& station, const KeptFile& kept) {
  FileKeeping& keeping = station.*kept.Keeping;
  const std::filesystem::path path = KeptPath(station, kept, ".dat");
  base::MakeFolder(path.parent_path());
  if (keeping.KeepFormer && base::FileExists(path)) base::CopyOver(path, KeptPath(station, kept, ".dat.old"));
  kept.Write(station, path);
  keeping.KeepFormer = false;
  if (kept.Revision == nullptr) return;
  keeping.SafeRevision = kept.Revision(station);
  const std::filesystem::path rescue = KeptPath(station, kept, ".rescue");
  // It would be offered in place of newer data.
  if (!base::DeleteFile(rescue)) throw base::RuntimeFailure(base::NameForMessage(rescue) + " cannot be deleted");
}

}  // namespace kestrel::core
