#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/program.h"

// Data of the current theater that the station changes and keeps in a file of their own, `<Name><Stem>.dat`. What such
// a file holds is not lost: one that could not be read whole stays as `<Name><Stem>.dat.old` when it is saved over.
namespace kestrel::core {

enum class FileState : std::uint8_t {
  Whole,
  Damaged,  ///< what could be read of it has been taken
  Refused,  ///< it is of another kind, and nothing has been taken
};

struct FileReading {
  FileState State = FileState::Whole;
  std::vector<std::string> Notes = {};  ///< for the log
};

/// What a kind of data has of its own.
struct KeptFile {
  std::string_view What;  ///< the data, for the log and the person: "areas"
  std::string_view Stem;  ///< "_Areas"
  FileKeeping Station::*Keeping;
  /// Gives the station what a theater without the file has.
  void (*Reset)(Station&);
  /// Gives the station what a file holds, unless it is refused. RuntimeFailure when it cannot be read; the station is
  /// then as it was.
  FileReading (*Read)(Station&, const std::filesystem::path&);
  /// Writes a file, whole or not at all. RuntimeFailure when that fails.
  void (*Write)(const Station&, const std::filesystem::path&);
  /// What counts the changes by the person; null: what a crash loses of them is not rescued.
  std::uint64_t& (*Revision)(Station&) = nullptr;
  std::string_view Refusal = {};  ///< what the person is told of a file that is refused; empty: nothing
};

/// The data become what the current theater's file holds, as far as it can be read, and that counts as a change.
/// RuntimeFailure when it cannot be read; they are then as without it. What was not read is kept beside the next save.
void LoadKept(Program& program, const KeptFile& kept);

/// Writes the file, whole or not at all; what a rescue holds is then in it. RuntimeFailure when it cannot be written,
/// or when the former one could not be read and cannot be kept.
void SaveKept(Station& station, const KeptFile& kept);

/// A file of the current theater beside the data, such as ".dat".
std::filesystem::path KeptPath(const Station& station, const KeptFile& kept, std::string_view ending);

}  // namespace kestrel::core
