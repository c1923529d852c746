#include "falcon/bml_expander.h"

#include <lz4.h>
#include <lzma.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "base/bytes.h"
#include "base/failure.h"

namespace kestrel::falcon {
namespace {

/// Of LZMA, before the stream: how bits are modelled, and how far back it may look.
constexpr std::size_t PropertyBytes = 5;
/// What a decoder takes besides the bytes that it looks back to.
constexpr std::uint64_t DecoderBytes = std::uint64_t{1} << 20;

const std::uint8_t* Bytes(std::string_view text) { return reinterpret_cast<const std::uint8_t*>(text.data()); }

class LzmaDecoder {
 public:
  explicit LzmaDecoder(std::uint64_t memory) {
    if (lzma_alone_decoder(&stream, memory) != LZMA_OK) throw base::RuntimeFailure("there is no memory to expand it");
  }
  ~LzmaDecoder() { lzma_end(&stream); }
  LzmaDecoder(const LzmaDecoder&) = delete;
  LzmaDecoder& operator=(const LzmaDecoder&) = delete;

  void ExpandInto(std::string& out) {
    stream.next_out = reinterpret_cast<std::uint8_t*>(out.data());
    stream.avail_out = out.size();
  }
  lzma_ret Take(std::string_view packed, lzma_action action) {
    stream.next_in = Bytes(packed);
    stream.avail_in = packed.size();
    return lzma_code(&stream, action);
  }
  std::size_t Unused() const { return stream.avail_in; }

 private:
  lzma_stream stream = LZMA_STREAM_INIT;
};

std::string ExpandLzma(std::string_view packed, std::size_t size) {
  if (packed.size() < PropertyBytes) throw base::RuntimeFailure("its LZMA stream has no properties");
  // It cannot look back farther than there are bytes, whatever the properties tell.
  constexpr std::uint32_t least = 4096;
  base::BinaryReader properties(packed);
  base::BinaryWriter head;
  head.U8(properties.U8());
  head.U32(std::min(properties.U32(), std::max(least, static_cast<std::uint32_t>(size))));
  head.U32(static_cast<std::uint32_t>(size));
  head.U32(0);
  std::string content(size, '\0');
  LzmaDecoder decoder(2 * MaxBmlBytes + DecoderBytes);
  decoder.ExpandInto(content);
  lzma_ret result = decoder.Take(head.Bytes(), LZMA_RUN);
  if (result == LZMA_OK) result = decoder.Take(packed.substr(PropertyBytes), LZMA_FINISH);
  if (result != LZMA_STREAM_END) throw base::RuntimeFailure("its LZMA stream is damaged or cut");
  if (decoder.Unused() > 0) throw base::RuntimeFailure("its LZMA stream goes on behind its end");
  return content;
}

std::string ExpandLz4(std::string_view packed, std::size_t size) {
  // A byte tells of no more than 255.
  if (packed.size() > MaxBmlBytes || packed.size() < size / 255) throw base::RuntimeFailure("its LZ4 block is cut");
  std::string content(size, '\0');
  const int expanded = LZ4_decompress_safe(packed.data(), content.data(), static_cast<int>(packed.size()),
                                           static_cast<int>(content.size()));
  if (expanded < 0 || static_cast<std::size_t>(expanded) != size) {
    throw base::RuntimeFailure("its LZ4 block is damaged, cut or of another size");
  }
  return content;
}

std::string Expand(BmlPacking packing, std::string_view packed, std::size_t size) {
  if (size > MaxBmlBytes) throw base::RuntimeFailure("its content would have " + Told(size) + " bytes");
  if (packing == BmlPacking::Lzma) return ExpandLzma(packed, size);
  if (packing == BmlPacking::Lz4) return ExpandLz4(packed, size);
  throw base::RuntimeFailure("its packing is not known");
}

}  // namespace

BmlExpander SystemBmlExpander() { return Expand; }

}  // namespace kestrel::falcon
