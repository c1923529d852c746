#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

// A folder of its own for a test, gone with it, and plain file access that does not use the code under test.
namespace kestrel::test {

class TempFolder {
 public:
  TempFolder() {
    std::random_device random;
    do {
      path = std::filesystem::temp_directory_path() / ("kestrel-test-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path));
  }
  ~TempFolder() {
    std::error_code failure;
    std::filesystem::remove_all(path, failure);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& Path() const { return path; }
  std::filesystem::path operator/(std::string_view name) const { return path / name; }

 private:
  std::filesystem::path path;
};

inline void WriteBytes(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::string ReadBytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

}  // namespace kestrel::test
