// Stands in core/ where zlib is not there: what is tested there packs nothing.

#include <stdexcept>

#include "core/zip_reader.h"
#include "core/zip_writer.h"

namespace kestrel::core {

struct ZipWriter::Packer {};

ZipWriter::ZipWriter(std::string_view, Sink) { throw std::logic_error("this build packs nothing"); }
ZipWriter::~ZipWriter() = default;
void ZipWriter::Write(std::string_view) {}
void ZipWriter::Next(std::string_view) {}
void ZipWriter::Finish() {}

bool IsPlainZipName(std::string_view) { return false; }
ZipReader::ZipReader(const std::filesystem::path&) { throw std::logic_error("this build unpacks nothing"); }
void ZipReader::Unpack(const ZipEntry&, const Sink&) const {}
std::string ZipReader::Text(const ZipEntry&, std::size_t) const { return {}; }

}  // namespace kestrel::core
