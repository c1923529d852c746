// A file of areas from a stranger, as that of a theater and as an import: it is refused by its magic or read as far as
// it goes, with no more elements than it has bytes; what was read is written and read again.
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "areas/area_file.h"
#include "areas/area_format.h"

namespace {

using namespace kestrel;
using areas::AreaFileKind;
using areas::AreaFileState;

/// A file in memory that is opened by its name.
class MemoryFile {
 public:
  MemoryFile() : descriptor(memfd_create("areas", 0)) {}
  std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor); }
  void Fill(const void* bytes, std::size_t count) const {
    if (ftruncate(descriptor, 0) != 0 || pwrite(descriptor, bytes, count, 0) != static_cast<ssize_t>(count)) {
      std::abort();
    }
  }

 private:
  int descriptor;
};

std::string Written(const areas::AreaCatalogue& catalogue) {
  std::string bytes;
  base::FieldStreamer writer([&bytes](std::span<std::span<const std::byte>> pieces) {
    for (const auto& piece : pieces) bytes.append(reinterpret_cast<const char*>(piece.data()), piece.size());
  });
  writer.PaddedText(areas::MagicOf(areas::AreaFormat::V3), areas::TextWidth);
  areas::FileFields(writer, catalogue.AreaGroups, catalogue.AreaFolders, areas::AreaFormat::V3);
  writer.Drain();
  return bytes;
}

/// No element is made that has not a byte of the file.
void CheckBounded(const areas::AreaFile& file, std::size_t size) {
  std::size_t reached = 0;
  const auto add = [&reached](const auto& table, std::size_t least) {
    if (!table.Empty()) reached += (table.UpperBound() - 1) * least + 1;
  };
  add(file.AreaFolders, 1);  // that of a v2 file is in no file
  add(file.AreaGroups, 106);
  for (const areas::AreaGroup& group : file.AreaGroups.Live()) {
    add(group.Areas, 1);
    for (const areas::Area& area : group.Areas.Live()) {
      add(area.Lines, 32);
      add(area.Points, 18);
    }
  }
  if (reached > size + 4) std::abort();
}

void Check(AreaFileKind kind, std::size_t size, const std::string& path) {
  static const MemoryFile copy;
  areas::AreaFile read = areas::ReadAreaFile(path, kind);
  if (read.State == AreaFileState::Refused) {
    if (!read.AreaGroups.Empty() || !read.AreaFolders.Empty()) std::abort();
    return;
  }
  CheckBounded(read, size);
  areas::AreaCatalogue catalogue, added;
  areas::AreaHistory history;
  const std::size_t homeless = areas::AppendAreas(added, history, read);
  if (areas::ReplaceAreas(catalogue, std::move(read)) != homeless) std::abort();
  for (const auto* made : {&catalogue, &added}) {
    for (const areas::AreaGroup& group : made->AreaGroups.Live()) {
      if (group.FolderIndex < 1 || static_cast<std::size_t>(group.FolderIndex) > made->AreaFolders.UpperBound()) {
        std::abort();
      }
      for (const areas::Area& area : group.Areas.Live()) {
        if (area.Editing) std::abort();
      }
    }
  }
  const std::string once = Written(catalogue);
  copy.Fill(once.data(), once.size());
  areas::AreaFile again = areas::ReadAreaFile(copy.Path(), AreaFileKind::Theater);
  if (again.State != AreaFileState::Whole) std::abort();
  if (areas::ReplaceAreas(catalogue, std::move(again)) != 0 || Written(catalogue) != once) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const MemoryFile file;
  file.Fill(data, size);
  for (const AreaFileKind kind : {AreaFileKind::Theater, AreaFileKind::Export}) Check(kind, size, file.Path());
  return 0;
}
