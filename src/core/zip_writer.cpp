#include "core/zip_writer.h"

#include <zlib.h>

#include <array>
#include <limits>
#include <utility>

#include "base/bytes.h"
#include "base/failure.h"

namespace kestrel::core {
namespace {

constexpr std::uint32_t FileMark = 0x04034B50, SumsMark = 0x08074B50, ListMark = 0x02014B50, EndMark = 0x06054B50;
constexpr std::uint16_t Version = 20;
/// Sums and sizes follow the file; names are UTF-8.
constexpr std::uint16_t Flags = 0x0808;
constexpr std::uint16_t Deflated = 8;
/// 1980-01-01, the first day that can be told: what is packed has no date of its own.
constexpr std::uint16_t NoTime = 0, NoDate = 0x21;
/// Raw data of the largest window.
constexpr int WindowBits = -15, MemoryLevel = 8;
constexpr std::size_t MostCount = std::numeric_limits<std::uint16_t>::max();
constexpr std::uint64_t MostBytes = std::numeric_limits<std::uint32_t>::max();

/// What stands of the file both before it and in the list.
void AppendFields(base::BinaryWriter& out, std::uint32_t sum, std::uint64_t packed, std::uint64_t plain,
                  std::size_t nameLength) {
  out.U16(Version);
  out.U16(Flags);
  out.U16(Deflated);
  out.U16(NoTime);
  out.U16(NoDate);
  out.U32(sum);
  out.U32(static_cast<std::uint32_t>(packed));
  out.U32(static_cast<std::uint32_t>(plain));
  out.U16(static_cast<std::uint16_t>(nameLength));
  out.U16(0);  // no more fields
}

}  // namespace

struct ZipWriter::Packer {
  z_stream Stream{};
  std::array<Bytef, 1 << 16> Out;

  Packer() {
    // The soonest: text like this comes to less than half of its size by it already.
    if (deflateInit2(&Stream, Z_BEST_SPEED, Z_DEFLATED, WindowBits, MemoryLevel, Z_DEFAULT_STRATEGY) != Z_OK) {
      throw base::RuntimeFailure("there is no memory to pack with");
    }
  }
  ~Packer() { deflateEnd(&Stream); }
  Packer(const Packer&) = delete;
  Packer& operator=(const Packer&) = delete;
};

ZipWriter::ZipWriter(std::string_view name, Sink sink) : tell(std::move(sink)) { Begin(name); }

ZipWriter::~ZipWriter() = default;

void ZipWriter::Begin(std::string_view name) {
  if (name.size() > MostCount) throw base::RuntimeFailure("the name is too long");
  if (files.size() + 1 >= MostCount) throw base::RuntimeFailure("there are too many files for a zip");
  packer = std::make_unique<Packer>();
  files.push_back({std::string(name), told});
  base::BinaryWriter head;
  head.U32(FileMark);
  AppendFields(head, 0, 0, 0, name.size());
  head.Text(name);
  Tell(head.Bytes());
}

void ZipWriter::Tell(std::string_view bytes) {
  tell(std::as_bytes(std::span(bytes)));
  told += bytes.size();
}

void ZipWriter::Pack(std::string_view bytes, bool last) {
  z_stream& stream = packer->Stream;
  // The library does not write to what it reads.
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  do {
    stream.next_out = packer->Out.data();
    stream.avail_out = static_cast<uInt>(packer->Out.size());
    deflate(&stream, last ? Z_FINISH : Z_NO_FLUSH);
    const std::size_t made = packer->Out.size() - stream.avail_out;
    Tell({reinterpret_cast<const char*>(packer->Out.data()), made});
    files.back().Bytes += made;
  } while (stream.avail_out == 0);
  if (files.back().Plain > MostBytes || told > MostBytes)
    throw base::RuntimeFailure("it is too large for a zip, beyond 4 GB");
}

void ZipWriter::Write(std::string_view bytes) {
  constexpr std::size_t most = 1 << 30;  // fits the library's counts
  for (; !bytes.empty(); bytes.remove_prefix(std::min(most, bytes.size()))) {
    const std::string_view part = bytes.substr(0, most);
    Packed& file = files.back();
    file.Sum = static_cast<std::uint32_t>(
        crc32(file.Sum, reinterpret_cast<const Bytef*>(part.data()), static_cast<uInt>(part.size())));
    file.Plain += part.size();
    Pack(part, false);
  }
}

void ZipWriter::End() {
  Pack({}, true);
  const Packed& file = files.back();
  base::BinaryWriter sums;
  sums.U32(SumsMark);
  sums.U32(file.Sum);
  sums.U32(static_cast<std::uint32_t>(file.Bytes));
  sums.U32(static_cast<std::uint32_t>(file.Plain));
  Tell(sums.Bytes());
}

void ZipWriter::Next(std::string_view name) {
  End();
  Begin(name);
}

void ZipWriter::Finish() {
  End();
  const std::uint64_t list = told;
  base::BinaryWriter end;
  for (const Packed& file : files) {
    end.U32(ListMark);
    end.U16(Version);  // made by
    AppendFields(end, file.Sum, file.Bytes, file.Plain, file.Name.size());
    end.U16(0);  // no comment
    end.U16(0);  // on the first disk
    end.U16(0);  // no text, no binary: not told
    end.U32(0);  // rights: not told
    end.U32(static_cast<std::uint32_t>(file.At));
    end.Text(file.Name);
  }
  const std::size_t listBytes = end.Bytes().size();
  if (list + listBytes > MostBytes) throw base::RuntimeFailure("it is too large for a zip, beyond 4 GB");
  end.U32(EndMark);
  end.U16(0);
  end.U16(0);
  end.U16(static_cast<std::uint16_t>(files.size()));
  end.U16(static_cast<std::uint16_t>(files.size()));
  end.U32(static_cast<std::uint32_t>(listBytes));
  end.U32(static_cast<std::uint32_t>(list));
  end.U16(0);
  Tell(end.Bytes());
}

}  // namespace kestrel::core
