#include "core/setup_files.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string_view>
#include <system_error>

#include "base/code_page.h"
#include "base/failure.h"
#include "base/file_replacement.h"
#include "base/files.h"
#include "base/picture_header.h"
#include "base/picture_source.h"
#include "base/positioned_file.h"
#include "base/text.h"
#include "core/settings.h"
#include "core/zip_reader.h"
#include "core/zip_writer.h"
#include "theaters/catalogue.h"

namespace kestrel::core {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view MainName = "KESTREL.ini";
constexpr std::array<std::string_view, 5> OwnNames = {MainName, "common.ini", "FriendlyNames.ini", "DefFreq.ini",
                                                      "Callsigns.ini"};
constexpr std::array<std::string_view, 4> KeptEnds = {"_Areas.dat", "_Elevation.dat", "_ViewShort.dat",
                                                      "_Frequencies.dat"};
constexpr std::array<std::string_view, 9> Endings = {".ini", ".dat", ".rescue", ".old", ".bmp",
                                                     ".jpg", ".gif", ".png",    ".dds"};
constexpr std::size_t PieceBytes = 1 << 18;

/// The names as they come, each once whatever its case.
class NameList {
 public:
  void Add(std::string name) {
    if (seen.insert(base::Lower(name)).second) names.push_back(std::move(name));
  }
  /// `name` below the folder of the theaters.
  void AddOfTheater(std::string name) {
    std::replace(name.begin(), name.end(), '\\', '/');
    const bool known = std::any_of(Endings.begin(), Endings.end(),
                                   [&name](std::string_view end) { return base::Lower(name).ends_with(end); });
    name.insert(0, "Theaters/");
    if (known && IsPlainZipName(name)) Add(std::move(name));
  }
  std::vector<std::string> Take() { return std::move(names); }

 private:
  std::vector<std::string> names;
  std::set<std::string> seen;
};

std::vector<std::string> FilesWith(const theaters::Catalogue& catalogue, std::span<const std::string_view> ends) {
  NameList names;
  for (const std::string_view name : OwnNames) names.Add(std::string(name));
  for (const theaters::Theater& theater : catalogue.Theaters.Live()) {
    names.AddOfTheater(theater.TheaterFile);
    names.AddOfTheater(theater.Pic);
    for (const std::string_view end : ends) names.AddOfTheater(theaters::DataFile(theater, end));
  }
  return names.Take();
}

void PackFile(ZipWriter& zip, const fs::path& path) {
  const base::PositionedFile file(path, base::PositionedFile::Mode::Read);
  std::string piece(PieceBytes, '\0');
  std::uint64_t at = 0;
  while (const std::size_t count = file.Read(at, std::as_writable_bytes(std::span(piece)))) {
    zip.Write(std::string_view(piece).substr(0, count));
    at += count;
  }
}

/// The files of a zip that a setup asks for.
class Unpacking {
 public:
  Unpacking(const fs::path& path, const fs::path& into) : zip(path), folder(into) {}

  /// False when the zip has none of that name, or it has been unpacked.
  bool Take(const std::string& name) {
    const std::string wanted = base::Lower(NameInSetup(name));
    const auto& all = zip.Entries();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&wanted](const ZipEntry& entry) { return base::Lower(entry.Name) == wanted; });
    if (found == all.end() || !done.insert(wanted).second) return false;
    if (wanted.ends_with(".ini") && found->Plain > base::MaxTextFileBytes) {
      throw base::RuntimeFailure(found->Name + " in the zip is too large");
    }
    const fs::path path = folder / fs::path(base::ToUnicode(name));
    base::MakeFolder(path.parent_path());
    base::FileReplacement file(path);
    zip.Unpack(*found, [&file](std::span<const std::byte> bytes) { file.Write(bytes); });
    file.Commit();
    return true;
  }
  /// RuntimeFailure when the disk has no room for all that the zip declares.
  void CheckRoom() const {
    std::uint64_t all = 0;
    for (const ZipEntry& entry : zip.Entries()) all += entry.Plain;
    const std::optional<std::uint64_t> room = base::FreeSpace(folder);
    if (room && all > *room) throw base::RuntimeFailure("the disk has no room for what the zip declares");
  }

 private:
  ZipReader zip;
  fs::path folder;
  std::set<std::string> done;
};

/// Without it a start would end.
void CheckCurrentPicture(const Station& station) {
  const theaters::Theater& theater = station.Catalogue.Current();
  const fs::path picture = TheaterPath(station, theater.Pic);
  if (!base::FileExists(picture)) {
    throw base::RuntimeFailure("it lacks the picture " + theater.Pic + " of its current theater");
  }
  const base::PositionedFile file(picture, base::PositionedFile::Mode::Read);
  base::ReadPictureHeader(base::PictureSource(file));
}

}  // namespace

std::vector<std::string> SetupFiles(const theaters::Catalogue& catalogue) { return FilesWith(catalogue, KeptEnds); }

std::vector<std::string> SetupFilesAndCopies(const theaters::Catalogue& catalogue) {
  return FilesWith(catalogue, theaters::DataFileEnds);
}

std::string NameInSetup(const std::string& name) {
  const std::u8string text = fs::path(base::ToUnicode(name)).generic_u8string();
  return {text.begin(), text.end()};
}

void PackSetup(const Station& station, const fs::path& zip) {
  base::FileReplacement file(zip);
  std::optional<ZipWriter> writer;
  for (const std::string& name : SetupFiles(station.Catalogue)) {
    const fs::path path = base::FindFile(station.AppPath, name);
    if (!base::FileExists(path)) continue;
    std::error_code missing;
    if (fs::equivalent(path, zip, missing)) throw base::RuntimeFailure("the zip would take the place of " + name);
    if (writer) {
      writer->Next(NameInSetup(name));
    } else {
      writer.emplace(NameInSetup(name), [&file](std::span<const std::byte> bytes) { file.Write(bytes); });
    }
    PackFile(*writer, path);
  }
  if (!writer) throw base::RuntimeFailure("there are no settings");
  writer->Finish();
  file.Commit();
}

void UnpackSetup(const fs::path& zip, const fs::path& folder) {
  Unpacking unpacking(zip, folder);
  unpacking.CheckRoom();
  if (!unpacking.Take(std::string(MainName))) throw base::RuntimeFailure("it holds no KESTREL.ini");
  const auto read = [&folder] {
    auto station = std::make_unique<Station>();
    station->AppPath = folder;
    LoadSavedVars(*station);
    return station;
  };
  // Where none of the theaters' files is there, all theaters that are listed are told.
  bool any = false;
  const auto listed = read();
  for (const theaters::Theater& theater : listed->Catalogue.Theaters.Live()) {
    NameList name;
    name.AddOfTheater(theater.TheaterFile);
    for (const std::string& each : name.Take()) any = unpacking.Take(each) || any;
  }
  if (!any) throw base::RuntimeFailure("it holds no theater");
  const auto station = read();
  for (const std::string& name : SetupFiles(station->Catalogue)) unpacking.Take(name);
  CheckCurrentPicture(*station);
}

}  // namespace kestrel::core
