#pragma once

#include <zlib.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"

namespace kestrel::test {

/// One file of a zip, as it is told; what is not set follows from its bytes.
struct ZipFile {
  std::string Name;
  std::string Bytes;
  bool Stored = false;
  std::uint16_t Flags = 0;
  std::string HeadName = {};          ///< what stands before the file, when that is another name
  std::uint32_t Plain = 0xFFFFFFFE;   ///< declared size, when that is a lie
  std::uint32_t SumLie = 0;           ///< laid over the sum
  std::string Packed = {};            ///< its bytes in the zip, when they are no such
  std::uint32_t HeadAt = 0xFFFFFFFE;  ///< where it is told to begin, when that is a lie
};

inline std::string Deflated(const std::string& bytes) {
  z_stream stream{};
  if (deflateInit2(&stream, 9, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY) != Z_OK) return {};
  std::string out(deflateBound(&stream, static_cast<uLong>(bytes.size())), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  stream.next_out = reinterpret_cast<Bytef*>(out.data());
  stream.avail_out = static_cast<uInt>(out.size());
  deflate(&stream, Z_FINISH);
  out.resize(stream.total_out);
  deflateEnd(&stream);
  return out;
}

/// A zip written by hand, as another program would, with its sizes before each file.
inline std::string MadeZip(const std::vector<ZipFile>& files, std::string_view comment = {}) {
  base::BinaryWriter zip;
  base::BinaryWriter list;
  for (const ZipFile& file : files) {
    const std::string packed = !file.Packed.empty() ? file.Packed : (file.Stored ? file.Bytes : Deflated(file.Bytes));
    const auto sum = static_cast<std::uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(file.Bytes.data()),
                                                      static_cast<uInt>(file.Bytes.size()))) ^
                     file.SumLie;
    const auto at = static_cast<std::uint32_t>(zip.Bytes().size());
    const auto fields = [&](base::BinaryWriter& out, std::size_t nameBytes) {
      out.U16(20);
      out.U16(file.Flags);
      out.U16(file.Stored ? 0 : 8);
      out.U32(0x210000);
      out.U32(sum);
      out.U32(static_cast<std::uint32_t>(packed.size()));
      out.U32(file.Plain != 0xFFFFFFFE ? file.Plain : static_cast<std::uint32_t>(file.Bytes.size()));
      out.U16(static_cast<std::uint16_t>(nameBytes));
      out.U16(0);
    };
    const std::string& headName = file.HeadName.empty() ? file.Name : file.HeadName;
    zip.U32(0x04034B50);
    fields(zip, headName.size());
    zip.Text(headName);
    zip.Text(packed);
    list.U32(0x02014B50);
    list.U16(20);
    fields(list, file.Name.size());
    for (int n = 0; n < 3; ++n) list.U16(0);
    list.U32(0);
    list.U32(file.HeadAt != 0xFFFFFFFE ? file.HeadAt : at);
    list.Text(file.Name);
  }
  const std::size_t listAt = zip.Bytes().size();
  zip.Text(list.Bytes());
  zip.U32(0x06054B50);
  zip.U32(0);
  zip.U16(static_cast<std::uint16_t>(files.size()));
  zip.U16(static_cast<std::uint16_t>(files.size()));
  zip.U32(static_cast<std::uint32_t>(list.Bytes().size()));
  zip.U32(static_cast<std::uint32_t>(listAt));
  zip.U16(static_cast<std::uint16_t>(comment.size()));
  zip.Text(comment);
  return std::string(zip.Bytes());
}

}  // namespace kestrel::test
