#include "core/acmi_export.h"

#include <cmath>
#include <exception>
#include <span>
#include <system_error>

#include "base/code_page.h"
#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"
#include "core/tell.h"
#include "map/lat_long.h"
#include "theaters/catalogue.h"

namespace kestrel::core {
namespace {

namespace fs = std::filesystem;

/// So much text is gathered before it is written.
constexpr std::size_t PieceBytes = 1 << 18;

std::string Utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

bool EndsWith(const std::string& name, std::string_view end) {
  return name.size() >= end.size() && base::SameNoCase(std::string_view(name).substr(name.size() - end.size()), end);
}

/// The tape itself, before what is to be written has taken a name. RuntimeFailure when the two are one.
fs::path OtherFile(const fs::path& file, const fs::path& tape) {
  std::error_code missing;
  if (fs::equivalent(file, tape, missing)) throw base::RuntimeFailure("the export would take the place of the tape");
  return file;
}

tape::AcmiWriter WriterFor(const tape::TapeHeader& header, const theaters::Theater& theater) {
  const theaters::Corner corner{theater.CoordLat, theater.CoordLong};
  const auto earth = [corner](double X, double Y) {
    const map::LatLong place = map::LatLongFromFeet(corner, X * link::FeetPerMapUnit, Y * link::FeetPerMapUnit);
    return tape::EarthPlace{place.Lat, place.Long};
  };
  // As in a replay: for a bullseye that is no place the theater's own stands.
  const bool isPlace = std::isfinite(header.BullX) && std::isfinite(header.BullY);
  const theaters::Bullseye own = theaters::CurrentBullseyePlace(theater);
  return {earth, theater.Size, isPlace ? header.BullX : own.X, isPlace ? header.BullY : own.Y};
}

/// What the file in the zip is called: the zip's name with the end of a text.
std::string NameInZip(const fs::path& file) {
  const std::string name = Utf8(file.filename());
  return name.substr(0, name.size() - AcmiZip.size()).append(AcmiText);
}

}  // namespace

AcmiExport::AcmiExport(const fs::path& tape, const fs::path& path, const theaters::Theater& theater)
    : tapePath(tape), reader(tape), writer(WriterFor(reader.Header(), theater)), file(OtherFile(path, tape)) {
  reader.CheckRecordCount();
  if (reader.Header().RecordCount == 0) {
    throw base::RuntimeFailure(base::NameForMessage(tape) +
                               " tells of no records; tape-info --repair saves those of a tape that was not closed");
  }
  if (EndsWith(Utf8(path.filename()), AcmiZip)) {
    zip.emplace(NameInZip(path), [this](std::span<const std::byte> bytes) { file.Write(bytes); });
  }
}

bool AcmiExport::Step() {
  if (done == reader.Header().RecordCount) return false;
  const std::uint64_t next = reader.Skip(position).Next;
  writer.Append(reader.ReadRecord(position, tape::TapeReader::Histories::StepOver), text);
  position = next;
  const bool last = ++done == reader.Header().RecordCount;
  if (last || text.size() >= PieceBytes) WriteText();
  if (!last) return true;
  if (writer.Records() == 0) throw base::RuntimeFailure("none of its records has a time");
  if (zip) zip->Finish();
  file.Commit();
  return false;
}

void AcmiExport::WriteText() {
  if (zip) {
    zip->Write(text);
  } else {
    file.Write(std::as_bytes(std::span(text)));
  }
  text.clear();
}

int AcmiExport::Percent() const { return static_cast<int>(std::int64_t{done} * 100 / reader.Header().RecordCount); }

std::unique_ptr<AcmiExport> ChooseExport(Program& program) {
  constexpr std::string_view title = "Export Tape to Tacview...";
  const Station& station = program.State;
  const fs::path tapes = base::FindFile(station.AppPath, "TAPES");
  const std::optional<fs::path> tape = ChooseFile(program, title, "Tape Files (*.tap)|*.tap", {}, tapes);
  if (!tape) return nullptr;
  const std::optional<std::string> file =
      program.Desk.SaveFile(title, "Text (*.txt.acmi)|*.txt.acmi|Packed (*.zip.acmi)|*.zip.acmi",
                            base::TextOfPath(tape->parent_path()), base::NameForMessage(tape->stem()));
  if (!file) return nullptr;
  try {
    return std::make_unique<AcmiExport>(*tape, base::PathOfText(*file), station.Catalogue.Current());
  } catch (const std::exception& failure) {
    TellExportFailed(program, failure);
    return nullptr;
  }
}

void TellExportFailed(Program& program, const std::exception& failure) {
  TellFailure(program, "The tape could not be exported: ", failure);
}

}  // namespace kestrel::core
