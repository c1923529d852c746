#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace kestrel::falcon {

/// A file of the simulator, held whole, with the name by which a failure tells of it.
struct DataFile {
  std::string Name;
  std::string Bytes;
};

/// RuntimeFailure, naming the file, when it cannot be read or has more than `limit` bytes.
DataFile ReadDataFile(const std::filesystem::path& path, std::size_t limit);

/// RuntimeFailure "<name>: <complaint>".
[[noreturn]] void RefuseFile(std::string_view name, std::string_view complaint);

/// A number in the text of a failure.
std::string Told(std::uint64_t number);

}  // namespace kestrel::falcon
