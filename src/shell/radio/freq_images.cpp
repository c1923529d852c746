#include "shell/radio/freq_images.h"

#include "shell/parts/line_icon.h"

namespace kestrel::shell {
namespace {

constexpr IconKind Kinds[] = {IconKind::AreaFolder, IconKind::RadioUHF, IconKind::RadioVHF, IconKind::Airfield,
                              IconKind::TACAN,      IconKind::ILS,      IconKind::Unknown};

}  // namespace

std::vector<QIcon> FreqImages() {
  std::vector<QIcon> images;
  for (const IconKind kind : Kinds) images.push_back(LineIcon(kind));
  return images;
}

QIcon FreqImageOf(radio::FreqImage image) { return LineIcon(Kinds[static_cast<std::size_t>(image) - 1]); }

}  // namespace kestrel::shell
