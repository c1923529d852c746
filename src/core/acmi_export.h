#pragma once

#include <cstdint>
#include <exception>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/file_replacement.h"
#include "core/zip_writer.h"
#include "tape/acmi_writer.h"
#include "tape/reader.h"
#include "theaters/theater.h"

namespace kestrel::core {

struct Program;

/// Ends of the names of what is exported: text, and the same packed.
inline constexpr std::string_view AcmiText = ".txt.acmi", AcmiZip = ".zip.acmi";

/// A tape that is being written as ACMI, a record after another. The file takes its name when the last one is written;
/// unless that has come there is nothing, or the older file.
class AcmiExport {
 public:
  /// `theater`: whose corner says where on the earth the map lies; it is not kept. `file` is packed when its name ends
  /// with AcmiZip, upper or lower case. RuntimeFailure, as by Step, when the tape cannot be read, tells of no records
  /// or is `file` itself.
  AcmiExport(const std::filesystem::path& tape, const std::filesystem::path& file, const theaters::Theater& theater);

  /// Writes the next record. False once all are written and the file has its name. RuntimeFailure when the tape cannot
  /// be read or the file not be written; then this is of no more use.
  bool Step();
  /// Of the tape, 0 to 100.
  int Percent() const;
  std::int32_t Records() const { return done; }
  const std::filesystem::path& Tape() const { return tapePath; }

 private:
  void WriteText();

  std::filesystem::path tapePath;
  tape::TapeReader reader;
  tape::AcmiWriter writer;
  base::FileReplacement file;
  std::optional<ZipWriter> zip;
  std::string text;                              ///< that is not written yet
  std::uint64_t position = tape::FirstRecordAt;  ///< of the next record
  std::int32_t done = 0;
};

/// Menu entry mnuExportTape: asks for a tape and for the file, for the theater in use. Nothing when the person cancels,
/// or when the tape cannot be exported, which is told.
std::unique_ptr<AcmiExport> ChooseExport(Program& program);
/// Tells that an export has failed.
void TellExportFailed(Program& program, const std::exception& failure);

}  // namespace kestrel::core
