#include "falcon/colour_files.h"

#include <cstdint>

#include "base/bytes.h"
#include "base/text.h"

namespace kestrel::falcon {
namespace {

constexpr std::size_t PalHead = 24;
constexpr std::string_view CxpMark = "Color Export File (KESTREL) v2";
constexpr std::size_t CxpMarkBytes = 40;
constexpr std::size_t CxpHead = CxpMarkBytes + 8;
constexpr std::size_t CriterionBytes = 6;

/// Colours that begin with red, green and blue, `width` bytes each.
void TakeColours(std::string_view bytes, std::size_t width, std::span<base::Colour> into) {
  for (std::size_t n = 0; n < into.size() && n * width + 3 <= bytes.size(); ++n) {
    const auto part = [&](std::size_t at) {
      return static_cast<base::Colour>(static_cast<unsigned char>(bytes[n * width + at]));
    };
    into[n] = part(0) | part(1) << 8 | part(2) << 16;
  }
}

}  // namespace

void TakeActColours(std::string_view bytes, std::span<base::Colour> into) { TakeColours(bytes, 3, into); }

void TakePalColours(std::string_view bytes, std::span<base::Colour> into) {
  if (bytes.size() > PalHead) TakeColours(bytes.substr(PalHead), 4, into);
}

std::string WriteCxp(const ColourChoice& choice) {
  base::BinaryWriter out;
  std::string mark(CxpMark);
  mark.resize(CxpMarkBytes, ' ');
  out.Text(mark);
  out.U32(choice.Sea);
  out.U32(static_cast<std::uint32_t>(choice.Criteria.size()));
  for (const ColourCriterion& criterion : choice.Criteria) {
    out.U32(criterion.Colour);
    out.I16(criterion.Height);
  }
  return std::string(out.Bytes());
}

bool ReadCxp(std::string_view bytes, ColourChoice& choice) {
  if (bytes.size() < CxpHead || base::Trim(bytes.substr(0, CxpMarkBytes)) != CxpMark) return false;
  base::BinaryReader reader(bytes);
  reader.Skip(CxpMarkBytes);
  const base::Colour sea = reader.U32();
  const std::uint32_t count = reader.U32();
  if (count > MostCriteria || reader.Left() < count * CriterionBytes) return false;
  std::vector<ColourCriterion> criteria(count);
  for (ColourCriterion& criterion : criteria) {
    criterion.Colour = reader.U32();
    criterion.Height = reader.I16();
  }
  SortCriteria(criteria);
  choice.Sea = sea;
  choice.Criteria = std::move(criteria);
  return true;
}

}  // namespace kestrel::falcon
