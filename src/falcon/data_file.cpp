#include "falcon/data_file.h"

#include "base/failure.h"
#include "base/files.h"

namespace kestrel::falcon {

DataFile ReadDataFile(const std::filesystem::path& path, std::size_t limit) {
  return {base::NameForMessage(path), base::ReadWholeFile(path, limit)};
}

void RefuseFile(std::string_view name, std::string_view complaint) {
  throw base::RuntimeFailure(std::string(name) + ": " + std::string(complaint));
}

std::string Told(std::uint64_t number) { return std::to_string(number); }

}  // namespace kestrel::falcon
