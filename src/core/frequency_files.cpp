#include "core/frequency_files.h"

#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "base/profile_file.h"
#include "radio/frequency_file.h"

namespace kestrel::core {
namespace {

void Replace(Station& station, radio::Frequencies tables) {
  tables.Revision = station.Frequencies.Revision;
  station.Frequencies = std::move(tables);
}

/// Whether saving the tables over the file that they were read from loses nothing of it.
bool HoldAll(const radio::Frequencies& tables, const std::string& bytes) {
  try {
    return radio::HasKeysOf(tables, bytes);
  } catch (const base::RuntimeFailure&) {
    return false;
  }
}

FileReading Read(Station& station, const std::filesystem::path& path) {
  const std::string bytes = base::ReadWholeFile(path, base::MaxTextFileBytes);
  const base::ProfileFile file(bytes);
  const std::string name = base::NameForMessage(path);
  if (!radio::HoldsFrequencies(file)) return {FileState::Refused, {name + " is no file of frequencies"}};
  std::vector<std::string> notes;
  radio::Frequencies tables = radio::ReadFrequencies(file, notes);
  // What is noted has been left out.
  const bool whole = notes.empty() && HoldAll(tables, bytes);
  for (std::string& note : notes) note = name + ", " + note;
  if (!whole) notes.push_back(name + " is damaged or not by the station: there is what could be read");
  Replace(station, std::move(tables));
  return {whole ? FileState::Whole : FileState::Damaged, std::move(notes)};
}

}  // namespace

constinit const KeptFile KeptFrequencies = {
    .What = "frequencies",
    .Stem = "_Frequencies",
    .Keeping = &Station::FrequencyFiles,
    .Reset = [](Station& station) { Replace(station, {}); },
    .Read = Read,
    .Write =
        [](const Station& station, const std::filesystem::path& path) {
          base::WriteWholeFile(path, radio::WriteFrequencies(station.Frequencies));
        },
    .Revision = [](Station& station) -> std::uint64_t& { return station.Frequencies.Revision; },
};

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
