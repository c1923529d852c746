#include "core/zip_reader.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <limits>
#include <set>

#include "base/bytes.h"
#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"

namespace kestrel::core {
namespace {

constexpr std::uint32_t HeadMark = 0x04034B50, ListedMark = 0x02014B50, LastMark = 0x06054B50;
constexpr std::size_t HeadBytes = 30, ListedBytes = 46, LastBytes = 22, MostComment = 65535;
constexpr std::uint16_t Stored = 0, Deflate = 8;
/// Encrypted, in either way; of a patch.
constexpr std::uint16_t Unreadable = 0x0001 | 0x0040 | 0x0020;
constexpr std::uint32_t Beyond = std::numeric_limits<std::uint32_t>::max();
/// Deflated bytes can stand for no more than that many each.
constexpr std::uint64_t MostRatio = 1032;
/// Raw data of the largest window.
constexpr int RawBits = -15;
constexpr std::size_t PieceBytes = 1 << 16;

struct Inflater {
  z_stream Stream{};

  Inflater() {
    if (inflateInit2(&Stream, RawBits) != Z_OK) throw base::RuntimeFailure("there is no memory to unpack with");
  }
  ~Inflater() { inflateEnd(&Stream); }
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;
};

/// The bytes of one file on their way out: never more than it declares, with their sum.
class Outlet {
 public:
  Outlet(const ZipEntry& entry, const ZipReader::Sink& sink) : file(entry), tell(sink) {}

  void Tell(std::span<const std::byte> bytes) {
    if (bytes.size() > file.Plain - told) Damaged();
    sum = static_cast<std::uint32_t>(
        crc32(sum, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(bytes.size())));
    told += bytes.size();
    if (!bytes.empty()) tell(bytes);
  }
  void Finish() const {
    if (told != file.Plain || sum != file.Sum) Damaged();
  }
  [[noreturn]] void Damaged() const { throw base::RuntimeFailure(file.Name + " in the zip is damaged"); }

 private:
  const ZipEntry& file;
  const ZipReader::Sink& tell;
  std::uint64_t told = 0;
  std::uint32_t sum = 0;
};

}  // namespace

bool IsPlainZipName(std::string_view name) {
  if (name.empty()) return false;
  if (name.back() == '/') name.remove_suffix(1);
  for (const char letter : name) {
    const auto code = static_cast<unsigned char>(letter);
    if (code < 0x20 || code == 0x7F || letter == '\\' || letter == ':') return false;
  }
  while (true) {
    const std::size_t end = name.find('/');
    const std::string_view step = name.substr(0, end);
    if (step.empty() || step == "." || step == "..") return false;
    // Windows drops them, so that "..." and ".. " are ".." there.
    if (step.back() == '.' || step.back() == ' ') return false;
    if (end == std::string_view::npos) return true;
    name.remove_prefix(end + 1);
  }
}

ZipReader::ZipReader(const std::filesystem::path& path)
    : name(base::NameForMessage(path)), file(path, base::PositionedFile::Mode::Read) {
  const std::uint64_t size = file.Size();
  if (size < LastBytes || size > Beyond) throw base::RuntimeFailure(name + " is no zip");
  const std::size_t tailBytes = static_cast<std::size_t>(std::min<std::uint64_t>(size, LastBytes + MostComment));
  const std::string tail = Piece(size - tailBytes, tailBytes);
  // The last record that a comment of just its length follows.
  for (std::size_t at = tailBytes - LastBytes + 1; at-- > 0;) {
    base::BinaryReader last(std::string_view(tail).substr(at));
    if (last.U32() != LastMark) continue;
    const std::uint16_t disk = last.U16(), listDisk = last.U16(), here = last.U16(), count = last.U16();
    const std::uint32_t bytes = last.U32(), listAt = last.U32();
    if (last.U16() != tailBytes - at - LastBytes) continue;
    if (disk != 0 || listDisk != 0 || here != count || count == std::numeric_limits<std::uint16_t>::max() ||
        bytes == Beyond || listAt == Beyond) {
      throw base::RuntimeFailure(name + " is a zip of a form that is not read");
    }
    // Nothing stands before the first file or behind the list.
    if (std::uint64_t{listAt} + bytes != size - tailBytes + at) break;
    if (count > MostEntries) throw base::RuntimeFailure(name + " holds too many files");
    ReadList(listAt, bytes, count);
    CheckPlaces(listAt);
    CheckNames();
    return;
  }
  throw base::RuntimeFailure(name + " is no zip, or is cut");
}

std::string ZipReader::Piece(std::uint64_t at, std::size_t count) const {
  std::string bytes(count, '\0');
  if (file.Read(at, std::as_writable_bytes(std::span(bytes))) != count) throw base::RuntimeFailure(name + " is cut");
  return bytes;
}

void ZipReader::ReadList(std::uint64_t at, std::size_t bytes, std::size_t count) {
  if (bytes < count * ListedBytes) throw base::RuntimeFailure(name + " has a damaged list");
  const std::string text = Piece(at, bytes);
  base::BinaryReader list(text);
  for (std::size_t n = 0; n < count; ++n) {
    if (list.Left() < ListedBytes || list.U32() != ListedMark) throw base::RuntimeFailure(name + " has a damaged list");
    ZipEntry entry;
    list.Skip(2 + 2);
    const std::uint16_t flags = list.U16();
    entry.Method = list.U16();
    list.Skip(2 + 2);
    entry.Sum = list.U32();
    entry.Packed = list.U32();
    entry.Plain = list.U32();
    const std::uint16_t nameBytes = list.U16(), moreBytes = list.U16(), commentBytes = list.U16();
    const std::uint16_t disk = list.U16();
    list.Skip(2 + 4);
    entry.HeadAt = list.U32();
    if (list.Left() < std::size_t{nameBytes} + moreBytes + commentBytes) {
      throw base::RuntimeFailure(name + " has a damaged list");
    }
    entry.Name = list.Text(nameBytes);
    list.Skip(std::size_t{moreBytes} + commentBytes);
    if ((flags & Unreadable) != 0 || disk != 0 || (entry.Method != Stored && entry.Method != Deflate) ||
        entry.Packed == Beyond || entry.Plain == Beyond || entry.HeadAt == Beyond) {
      throw base::RuntimeFailure(name + " is a zip of a form that is not read");
    }
    if (!IsPlainZipName(entry.Name)) throw base::RuntimeFailure(name + " holds a file that would leave its folder");
    const bool fits = entry.Method == Stored ? entry.Plain == entry.Packed : entry.Plain <= entry.Packed * MostRatio;
    if (!fits) throw base::RuntimeFailure(name + " declares more than it holds");
    entries.push_back(std::move(entry));
  }
  if (list.Left() != 0) throw base::RuntimeFailure(name + " has a damaged list");
}

void ZipReader::CheckPlaces(std::uint64_t listAt) {
  std::vector<ZipEntry*> ordered;
  for (ZipEntry& entry : entries) ordered.push_back(&entry);
  std::sort(ordered.begin(), ordered.end(), [](auto* a, auto* b) { return a->HeadAt > b->HeadAt; });
  std::uint64_t next = listAt;
  for (ZipEntry* entry : ordered) {
    if (entry->HeadAt + HeadBytes + entry->Name.size() + entry->Packed > next) {
      throw base::RuntimeFailure(name + " holds files that lie over each other");
    }
    entry->MustEnd = next;
    next = entry->HeadAt;
  }
  std::erase_if(entries, [](const ZipEntry& entry) { return entry.Name.back() == '/'; });
}

void ZipReader::CheckNames() const {
  std::set<std::string> seen;
  for (const ZipEntry& entry : entries) {
    if (!seen.insert(base::Lower(entry.Name)).second) {
      throw base::RuntimeFailure(name + " holds " + entry.Name + " twice");
    }
  }
}

void ZipReader::Unpack(const ZipEntry& entry, const Sink& tell) const {
  Outlet out(entry, tell);
  const std::string headBytes = Piece(entry.HeadAt, HeadBytes + entry.Name.size());
  base::BinaryReader head(headBytes);
  if (head.U32() != HeadMark) out.Damaged();
  head.Skip(2);
  const std::uint16_t flags = head.U16(), method = head.U16();
  head.Skip(2 + 2 + 4 + 4 + 4);
  const std::uint16_t nameBytes = head.U16(), moreBytes = head.U16();
  // What the list says and what stands before the file are one, or another program would find another file here.
  if ((flags & Unreadable) != 0 || method != entry.Method || nameBytes != entry.Name.size() ||
      head.Text(nameBytes) != entry.Name) {
    out.Damaged();
  }
  std::uint64_t at = entry.HeadAt + HeadBytes + nameBytes + moreBytes;
  std::uint64_t left = entry.Packed;
  if (at + left > entry.MustEnd) out.Damaged();

  Inflater inflater;
  z_stream& stream = inflater.Stream;
  std::array<std::byte, PieceBytes> plain;
  int state = Z_OK;
  while (left > 0) {
    std::string piece = Piece(at, static_cast<std::size_t>(std::min<std::uint64_t>(left, PieceBytes)));
    at += piece.size();
    left -= piece.size();
    if (entry.Method == Stored) {
      out.Tell(std::as_bytes(std::span(piece)));
      continue;
    }
    if (state == Z_STREAM_END) out.Damaged();  // bytes behind the end
    stream.next_in = reinterpret_cast<Bytef*>(piece.data());
    stream.avail_in = static_cast<uInt>(piece.size());
    do {
      stream.next_out = reinterpret_cast<Bytef*>(plain.data());
      stream.avail_out = static_cast<uInt>(plain.size());
      state = inflate(&stream, Z_NO_FLUSH);
      // Z_BUF_ERROR: all that was there has been used, and there is more to come.
      if (state != Z_OK && state != Z_STREAM_END && state != Z_BUF_ERROR) out.Damaged();
      out.Tell(std::span(plain).first(plain.size() - stream.avail_out));
    } while (state == Z_OK && stream.avail_out == 0);
    if (stream.avail_in != 0) out.Damaged();
  }
  if (entry.Method == Deflate && state != Z_STREAM_END) out.Damaged();
  out.Finish();
}

std::string ZipReader::Text(const ZipEntry& entry, std::size_t limit) const {
  if (entry.Plain > limit) throw base::RuntimeFailure(entry.Name + " in the zip is too large");
  std::string text;
  Unpack(entry, [&text](std::span<const std::byte> bytes) {
    text.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  });
  return text;
}

}  // namespace kestrel::core
