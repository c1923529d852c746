#include "falcon/shape_file.h"

#include <span>
#include <string>

#include "base/files.h"
#include "base/positioned_file.h"
#include "falcon/classic_shape.h"
#include "falcon/dx_shape.h"

namespace kestrel::falcon {
namespace {

DataFile ReadPiece(const std::filesystem::path& path, const DetailPlace& place, const std::string& name) {
  const base::PositionedFile file(path, base::PositionedFile::Mode::Read);
  const std::uint64_t bytes = file.Size();
  if (place.Offset > bytes || place.Size > bytes - place.Offset) RefuseFile(name, "it lies outside of the file");
  if (place.Size > MaxShapeBytes) RefuseFile(name, "it would have " + Told(place.Size) + " bytes");
  DataFile piece{name, std::string(static_cast<std::size_t>(place.Size), '\0')};
  if (file.Read(place.Offset, std::as_writable_bytes(std::span(piece.Bytes))) != piece.Bytes.size()) {
    RefuseFile(name, "it is cut");
  }
  return piece;
}

}  // namespace

ModelShape ReadDirectoryShape(const std::filesystem::path& file, const ModelDirectory& directory, std::size_t model) {
  const std::string name = base::NameForMessage(file) + ", model " + Told(model);
  if (model >= directory.Models.size()) RefuseFile(name, "it is none of the directory");
  const DirectoryModel& found = directory.Models[model];
  if (found.Details.empty()) RefuseFile(name, "it has no shape");
  const DataFile piece = ReadPiece(file, directory.Places[found.Details[0].Number], name);
  return IsDxShape(piece.Bytes) ? ReadDxShape(piece) : ReadClassicShape(piece, found.Dynamic);
}

}  // namespace kestrel::falcon
