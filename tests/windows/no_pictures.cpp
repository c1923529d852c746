// Stands in base/ where FreeImage is not there: what is tested there asks for no picture.

#include <stdexcept>

#include "base/picture.h"
#include "base/picture_replacement.h"

namespace kestrel::base {
namespace {

[[noreturn]] void Refuse() { throw std::logic_error("this build has no pictures"); }

}  // namespace

Picture LoadPicture(const std::filesystem::path&) { Refuse(); }
Picture ReplacePicture(const std::filesystem::path&, const Picture&) { Refuse(); }
Picture DecodePicture(std::string_view) { Refuse(); }
Picture BlankPicture(int) { Refuse(); }
Picture SquarePicture(const Picture&) { Refuse(); }
Picture FilledPicture(const Picture&) { Refuse(); }
std::string EncodeGif(const Picture&) { Refuse(); }
void WriteGif(int, std::span<const std::uint8_t>, std::span<const Colour>,
              const std::function<void(std::span<const std::byte>)>&) {
  Refuse();
}

}  // namespace kestrel::base
