#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <string>

#include "core/program.h"
#include "core/theater_source.h"
#include "falcon/colour_bands.h"
#include "falcon/colour_criteria.h"
#include "falcon/terrain_files.h"

// A new theater made of the simulator's files.
namespace kestrel::core {

/// To be thrown out of the progress: what goes on ends and leaves no trace.
struct ImportCancelled : std::exception {
  const char* what() const noexcept override { return "cancelled"; }
};

/// Most parts of the whole that progress tells of.
inline constexpr std::uint64_t ImportParts = 1000;

/// The import of one theater. Its heights are read once, when they are needed first.
class TheaterImport {
 public:
  /// Looks for the files of theater `index` (1 or more) and logs what could not be read. `running` outlives it.
  TheaterImport(Program& running, const falcon::FalconInstall& install, std::size_t index);

  const TheaterSource& Source() const { return source; }

  /// The highest place of the theater, feet. Nothing after a box that says why the heights cannot be read, and when
  /// progress was cancelled. Progress tells parts of ImportParts.
  std::optional<std::int16_t> Highest(const falcon::Progress& progress);

  /// Writes picture and heights, appends the theater to the catalogue, saves the settings and shows the menus anew. Of
  /// the files all are there or none: before they take their names nothing but neighbours of theirs is written, and
  /// the main settings file, which names the theater, comes last. False when it was cancelled, or after a box that says
  /// why it failed: then nothing has changed.
  bool Import(const falcon::ColourScheme& scheme, const falcon::Progress& progress);

 private:
  const falcon::TheaterGround& Ground(const falcon::Progress& progress);
  theaters::Theater NewTheater() const;
  void Store(const falcon::GroundPicture& picture, const falcon::Progress& progress);
  void Enter(theaters::Theater theater);

  Program& program;
  TheaterSource source;
  std::optional<falcon::TheaterGround> ground;
};

/// The stem of the files of a new theater `name`: cleaned of what no file name may hold, and with "(" n ")" behind it
/// for the lowest n from 1 when a settings file has that name or a theater of the catalogue keeps its data under it.
std::string NewTheaterStem(const Station& station, std::string_view name);

/// Fills the palette with the colours of "gradient.act" unless the person has loaded one, then the criteria
/// (falcon::CalculateCriteria). A file that is missing is told in a box; the colours stay what they were.
void AutoCalculate(Program& program, falcon::ColourChoice& choice, int count, std::int16_t highest);
/// Takes the sea and the palette of a file of the person's. False after a box that says why it cannot be read.
bool LoadPalette(Program& program, falcon::ColourChoice& choice, const std::filesystem::path& file, bool isPal);
/// Writes the sea and the criteria. False after a box.
bool ExportCriteria(Program& program, const falcon::ColourChoice& choice, const std::filesystem::path& file);
/// Takes the sea and the criteria of a file. False after the box "Invalid file...", or that says why it cannot be read.
bool ImportCriteria(Program& program, falcon::ColourChoice& choice, const std::filesystem::path& file);

}  // namespace kestrel::core
