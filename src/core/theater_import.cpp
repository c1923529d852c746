#include "core/theater_import.h"

#include <algorithm>
#include <filesystem>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "base/file_replacement.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/picture.h"
#include "base/profile_file.h"
#include "base/program_title.h"
#include "base/text.h"
#include "core/default_files.h"
#include "core/settings.h"
#include "core/tell.h"
#include "core/theater_data.h"
#include "falcon/colour_files.h"
#include "theaters/catalogue.h"
#include "theaters/elevation_file.h"
#include "theaters/theater_file.h"

namespace kestrel::core {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view Elevation = "_Elevation.dat";

/// Where reading, painting, the picture and the heights end of all parts.
constexpr std::uint64_t ReadParts = 500, PaintedParts = 600, PictureParts = 900;

/// Progress of a step as parts `from` to `to` of the whole.
falcon::Progress Share(const falcon::Progress& progress, std::uint64_t from, std::uint64_t to) {
  if (!progress) return {};
  return [&progress, from, to](std::uint64_t done, std::uint64_t total) {
    progress(from + (to - from) * done / std::max<std::uint64_t>(total, 1), ImportParts);
  };
}

/// New files of which all are to stay, or none.
class NewFiles {
 public:
  ~NewFiles() {
    for (const fs::path& path : paths) base::DeleteFile(path);
  }
  void Add(fs::path path) { paths.push_back(std::move(path)); }
  void Keep() { paths.clear(); }

 private:
  std::vector<fs::path> paths;
};

void WritePicture(base::FileReplacement& file, const falcon::GroundPicture& picture, const falcon::Progress& progress) {
  // It comes by some 256 bytes: many of them are written together.
  constexpr std::size_t room = 64 << 10;
  std::vector<std::byte> gathered;
  gathered.reserve(room);
  std::uint64_t written = 0;
  // How long the file becomes is not known: the more there is, the slower the bar grows.
  const std::uint64_t likely = picture.Cells.size() / 8 + 1;
  base::WriteGif(picture.Size, picture.Cells, picture.Palette, [&](std::span<const std::byte> piece) {
    if (gathered.size() + piece.size() > room) {
      file.Write(gathered);
      gathered.clear();
    }
    gathered.insert(gathered.end(), piece.begin(), piece.end());
    written += piece.size();
    if (progress) progress(written, written + likely);
  });
  file.Write(gathered);
}

/// Whether the main settings file on the disk names the last theater of the catalogue.
bool IsListed(const Station& station) {
  const base::Table<theaters::Theater>& theaters = station.Catalogue.Theaters;
  const std::string key = "MAP" + base::FormatInvariant(static_cast<double>(theaters.UpperBound()), "0");
  try {
    const base::ProfileFile ini = base::ProfileFile::Load(base::FindFile(station.AppPath, "KESTREL.ini"));
    return ini.ReadIniValue("MAPS", key, "") == theaters[theaters.UpperBound()].TheaterFile;
  } catch (const base::RuntimeFailure&) {
    return false;
  }
}

/// `name` as it comes back out of a settings file, which drops blanks and quotes around a value.
std::string CleanStem(std::string_view name) {
  std::string clean = theaters::CleanFileName(name.substr(0, theaters::MaxNameLength));
  std::string_view stem = base::Trim(clean);
  while (stem.size() >= 2 && stem.front() == '\'' && stem.back() == '\'') {
    stem = base::Trim(stem.substr(1, stem.size() - 2));
  }
  return theaters::CleanFileName(stem);
}

fs::path GradientFile(const Station& station) {
  for (const fs::path& folder : {station.AppPath, station.ProgramPath, DefaultsFolder(station.ProgramPath)}) {
    const fs::path file = base::FindFile(folder, "gradient.act");
    if (!folder.empty() && base::FileExists(file)) return file;
  }
  return {};
}

/// The first bytes of a file, as many as there are up to `limit`.
std::string Head(const fs::path& file, std::size_t limit) {
  std::string bytes(limit, '\0');
  bytes.resize(base::ReadHead(file, std::as_writable_bytes(std::span(bytes))));
  return bytes;
}

/// Does `work`. False after a box that names the file and why it failed.
template <class Work>
bool DoneOrBox(Program& program, const std::string& what, const fs::path& file, const Work& work) {
  try {
    work();
    return true;
  } catch (const std::exception& failure) {
    TellFailure(program, what + " \"" + base::NameForMessage(file) + "\": ", failure);
    return false;
  }
}

}  // namespace

TheaterImport::TheaterImport(Program& running, const falcon::FalconInstall& install, std::size_t index)
    : program(running), source(FindTheaterSource(install, index)) {
  for (const std::string& note : source.Notes) program.Log.LogLine(note);
}

const falcon::TheaterGround& TheaterImport::Ground(const falcon::Progress& progress) {
  if (!ground) {
    ground = falcon::ReadTheaterGround(source.Terrain, source.Cover, progress);
    program.Log.LogLine("The heights of " + source.Name + " are from " + ground->Source);
    for (const std::string& note : ground->Notes) program.Log.LogLine(note);
  }
  return *ground;
}

std::optional<std::int16_t> TheaterImport::Highest(const falcon::Progress& progress) {
  try {
    return Ground(Share(progress, 0, ImportParts)).Heights.Highest;
  } catch (const ImportCancelled&) {
    return std::nullopt;
  } catch (const std::exception& failure) {
    TellFailure(program, "The heights of the theater cannot be read: ", failure);
    return std::nullopt;
  }
}

bool TheaterImport::Import(const falcon::ColourScheme& scheme, const falcon::Progress& progress) {
  try {
    const falcon::Terrain& terrain = Ground(Share(progress, 0, ReadParts)).Heights;
    Store(falcon::PaintGround(terrain, scheme, Share(progress, ReadParts, PaintedParts)), progress);
  } catch (const ImportCancelled&) {
    return false;
  } catch (const std::exception& failure) {
    TellFailure(program, "The theater could not be imported: ", failure);
    return false;
  }
  program.Shown.Refresh(base::Changed::NameMenus);
  return true;
}

theaters::Theater TheaterImport::NewTheater() const {
  const Station& station = program.State;
  theaters::Theater theater;
  theater.Name = theater.DisplayName = NewTheaterStem(station, source.Name);
  theater.TheaterFile = theater.Name + ".ini";
  // With a number of its own: stray pictures may lie there.
  theater.Pic = theaters::NewFileName(TheatersFolder(station), CleanStem(source.Name), ".gif") + ".gif";
  theater.Size = theater.PicSize = ground->Heights.Size;
  theater.CoordLat = ground->Latitude;
  theater.CoordLong = ground->Longitude;
  const double middle = theater.Size / 2;
  const bool told = source.Bullseye.has_value();
  theaters::AddBullseye(theater, {"Default", told ? source.Bullseye->X : middle, told ? source.Bullseye->Y : middle});
  return theater;
}

void TheaterImport::Store(const falcon::GroundPicture& picture, const falcon::Progress& progress) {
  const Station& station = program.State;
  base::MakeFolder(TheatersFolder(station));
  theaters::Theater theater = NewTheater();
  const fs::path pictureFile = TheaterPath(station, theater.Pic);
  const fs::path heightsFile = TheaterPath(station, theaters::DataFile(theater, Elevation));
  const fs::path theaterFile = TheaterPath(station, theater.TheaterFile);
  base::FileReplacement pictureBytes(pictureFile), heightsBytes(heightsFile);
  WritePicture(pictureBytes, picture, Share(progress, PaintedParts, PictureParts));
  theaters::WriteElevations(heightsBytes, ground->Heights.Heights, Share(progress, PictureParts, ImportParts));
  NewFiles files;
  files.Add(pictureFile);
  pictureBytes.Commit();
  files.Add(heightsFile);
  heightsBytes.Commit();
  files.Add(theaterFile);
  theaters::WriteTheaterFile(theater, base::Banner("Theater")).Save(theaterFile);
  Enter(std::move(theater));
  files.Keep();
}

void TheaterImport::Enter(theaters::Theater theater) {
  Station& station = program.State;
  const std::string name = theater.Name;
  theaters::AppendTheater(station.Catalogue, std::move(theater));
  const std::vector<Unsaved> failures = SaveAll(station);
  if (!failures.empty() && !IsListed(station)) {
    station.Catalogue.Theaters.Remove(station.Catalogue.Theaters.UpperBound());
    throw base::RuntimeFailure(failures.back().Reason);
  }
  for (const Unsaved& failure : failures) TellUnsaved(program, failure);
  program.Log.LogLine("Imported the theater " + name + ", its bullseye " +
                      (source.Bullseye ? "from " + source.BullseyeFile : "in the middle, as no campaign tells it"));
}

std::string NewTheaterStem(const Station& station, std::string_view name) {
  const std::string clean = CleanStem(name);
  const auto isTaken = [&](const std::string& stem) {
    const auto keepsDataThere = [&](const theaters::Theater& theater) {
      return base::SameNoCase(theaters::DataFile(theater, Elevation), stem + std::string(Elevation));
    };
    const auto all = station.Catalogue.Theaters.Live();
    return std::any_of(all.begin(), all.end(), keepsDataThere) || base::FileExists(TheaterPath(station, stem + ".ini"));
  };
  std::string stem = clean;
  for (int n = 1; isTaken(stem); ++n) stem = clean + "(" + base::FormatInvariant(n, "0") + ")";
  return stem;
}

void AutoCalculate(Program& program, falcon::ColourChoice& choice, int count, std::int16_t highest) {
  if (!choice.PaletteLoaded) {
    const fs::path file = GradientFile(program.State);
    try {
      if (file.empty()) throw base::RuntimeFailure("gradient.act is missing");
      // Entry 1 is the file's first colour, while the person's own palettes have the sea there: this stands.
      falcon::TakeActColours(Head(file, falcon::ActBytes), std::span(choice.Palette).subspan(1));
    } catch (const base::RuntimeFailure& failure) {
      program.Log.LogLine(failure.what());
      Tell(program, "The file gradient.act was not found in program folder. Please reinstall the progam.", "Error...");
    }
  }
  falcon::CalculateCriteria(choice, count, highest);
}

bool LoadPalette(Program& program, falcon::ColourChoice& choice, const fs::path& file, bool isPal) {
  return DoneOrBox(program, "The palette cannot be read from", file, [&] {
    const std::string bytes = Head(file, isPal ? falcon::PalBytes : falcon::ActBytes);
    falcon::ColourPalette palette = choice.Palette;
    palette[0] = choice.Sea;
    isPal ? falcon::TakePalColours(bytes, palette) : falcon::TakeActColours(bytes, palette);
    choice.Sea = palette[0];
    choice.Palette = palette;
    choice.PaletteLoaded = true;
  });
}

bool ExportCriteria(Program& program, const falcon::ColourChoice& choice, const fs::path& file) {
  return DoneOrBox(program, "The criteria cannot be written to", file,
                   [&] { base::WriteWholeFile(file, falcon::WriteCxp(choice)); });
}

bool ImportCriteria(Program& program, falcon::ColourChoice& choice, const fs::path& file) {
  bool taken = false;
  const bool read = DoneOrBox(program, "The criteria cannot be read from", file,
                              [&] { taken = falcon::ReadCxp(Head(file, falcon::MaxCxpBytes), choice); });
  if (read && !taken) Tell(program, "Invalid file...");
  return taken;
}

}  // namespace kestrel::core
