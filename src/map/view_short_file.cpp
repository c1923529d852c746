#include "map/view_short_file.h"

#include <cmath>

#include "base/bytes.h"
#include "base/failure.h"
#include "base/text.h"
#include "map/geometry.h"

namespace kestrel::map {
namespace {

constexpr std::string_view Title = "ViewShort File v3";
constexpr std::size_t TitleWidth = 100;

bool CanBeShown(const ViewShort& slot) {
  return std::isfinite(slot.ViewCenterX) && std::isfinite(slot.ViewCenterY) && slot.Resolution >= LeastResolution &&
         slot.Resolution <= GreatestResolution;
}

}  // namespace

ViewShorts DefaultViewShorts(double size) {
  ViewShorts shorts;
  shorts.fill({size / 2 * UnitsPerPixelX, size / 2 * UnitsPerPixelY, 1});
  return shorts;
}

ViewShorts ReadViewShorts(std::string_view bytes, const ViewShorts& otherwise) {
  if (base::Trim(bytes.substr(0, TitleWidth)) != Title) return otherwise;
  base::BinaryReader reader(bytes);
  reader.Skip(TitleWidth);
  ViewShorts shorts;
  for (ViewShort& slot : shorts) {
    slot.ViewCenterX = reader.F64();
    slot.ViewCenterY = reader.F64();
    slot.Resolution = reader.F64();
    if (!CanBeShown(slot)) throw base::RuntimeFailure("a saved view holds numbers that no view can have");
  }
  return shorts;
}

std::string WriteViewShorts(const ViewShorts& shorts) {
  base::BinaryWriter writer;
  writer.PaddedText(Title, TitleWidth);
  for (const ViewShort& slot : shorts) {
    writer.F64(slot.ViewCenterX);
    writer.F64(slot.ViewCenterY);
    writer.F64(slot.Resolution);
  }
  return std::string(writer.Bytes());
}

}  // namespace kestrel::map
