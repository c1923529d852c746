// A zip from a stranger: names that are plain and stand once, and never more bytes than a file declares.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string_view>

#include "base/failure.h"
#include "base/text.h"
#include "core/zip_reader.h"
#include "memory_file.h"

namespace {

void Demand(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using kestrel::core::ZipEntry;
  static const kestrel::fuzz::MemoryFile file;
  file.Fill({reinterpret_cast<const char*>(data), size});
  try {
    const kestrel::core::ZipReader zip(file.Path());
    std::set<std::string> names;
    for (const ZipEntry& entry : zip.Entries()) {
      Demand(kestrel::core::IsPlainZipName(entry.Name));
      Demand(names.insert(kestrel::base::Lower(entry.Name)).second);
      std::uint64_t told = 0;
      try {
        zip.Unpack(entry, [&told](std::span<const std::byte> bytes) { told += bytes.size(); });
        Demand(told == entry.Plain);
      } catch (const kestrel::base::RuntimeFailure&) {
        Demand(told <= entry.Plain);
      }
    }
  } catch (const kestrel::base::RuntimeFailure&) {
  }
  return 0;
}
