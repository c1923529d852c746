// Any text as a profile file, with names and values taken from it: what is written is read back, and the file as it
// would be saved reads the same.
#include "base/profile_file.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "base/text.h"

namespace {

using kestrel::base::ProfileFile;

void Check(bool holds) {
  if (!holds) std::abort();
}

/// What reading gives for a written value: line ends and NULs become blanks, 749 characters at most, nothing for empty.
std::string Expected(std::string_view value) {
  std::string text(value);
  for (char& letter : text) {
    if (letter == '\r' || letter == '\n' || letter == '\0') letter = ' ';
  }
  return text.empty() ? "default" : text.substr(0, 749);
}

void WriteAndRead(ProfileFile& file, std::string_view section, std::string_view key, std::string_view value) {
  const std::string before = file.Text();
  try {
    file.WriteIniValue(section, key, value);
  } catch (const kestrel::base::RuntimeFailure&) {
    Check(file.Text() == before);
    return;
  }
  Check(file.ReadIniValue(section, key, "default") == Expected(value));
  Check(file.ReadIniValue(kestrel::base::Lower(section), kestrel::base::Upper(key), "default") == Expected(value));
  const std::string text = file.Text();
  const ProfileFile again(text);
  Check(again.Text() == text);
  Check(again.ReadIniValue(section, key, "default") == Expected(value));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // Section, key and value parted by bytes of 2, up to a byte of 1; all behind it is the file.
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::size_t end = std::min(input.find('\x01'), size);
  const auto pieces = kestrel::base::Split(input.substr(0, end), '\x02');
  ProfileFile file(input.substr(std::min(end + 1, size)));
  const std::string text = file.Text();
  Check(ProfileFile(text).Text() == text);
  for (const char* section : {"LOG", "MAPS", "S"}) {
    for (const char* key : {"DEBUG", "MAP1", "K"}) {
      Check(ProfileFile(text).ReadIniValue(section, key, "") == file.ReadIniValue(section, key, ""));
    }
  }
  if (pieces.size() >= 3) WriteAndRead(file, pieces[0], pieces[1], pieces[2]);
  WriteAndRead(file, "S", "K", input.substr(0, end));
  return 0;
}
