#include "falcon/ground_cover.h"

#include "base/bytes.h"

namespace kestrel::falcon {

std::uint8_t GroundCover::CoverAt(std::int32_t x, std::int32_t y) const {
  if (x < 0 || x >= Width || y < 0 || y >= Height) return Water;
  return Cells[static_cast<std::size_t>(x) * static_cast<std::size_t>(Height) + static_cast<std::size_t>(y)] & 0x0F;
}

GroundCover ReadGroundCover(const DataFile& file) {
  constexpr std::size_t head = 4;
  if (file.Bytes.size() < head) RefuseFile(file.Name, "it ends within its size");
  base::BinaryReader reader(file.Bytes);
  GroundCover cover;
  cover.Width = reader.I16();
  cover.Height = reader.I16();
  const std::size_t cells = file.Bytes.size() - head;
  if (cover.Width < 1 || cover.Height < 1 ||
      static_cast<std::size_t>(cover.Width) * static_cast<std::size_t>(cover.Height) != cells) {
    RefuseFile(file.Name, "it holds " + Told(cells) + " map units and tells of another number");
  }
  cover.Cells.assign(file.Bytes.begin() + head, file.Bytes.end());
  return cover;
}

}  // namespace kestrel::falcon
