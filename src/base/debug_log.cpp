#include "base/debug_log.h"

#include <string>

#include "base/failure.h"
#include "base/files.h"

namespace kestrel::base {

void LineFile::Closer::operator()(std::FILE* open) const { std::fclose(open); }

void LineFile::Open(const std::filesystem::path& path, bool goOn) {
  Close();
#ifdef _WIN32
  file.reset(_wfopen(path.c_str(), goOn ? L"ab" : L"wb"));
#else
  file.reset(std::fopen(path.c_str(), goOn ? "ab" : "wb"));
#endif
  if (!file) throw RuntimeFailure(NameForMessage(path) + " cannot be created");
}

void LineFile::Close() { file.reset(); }

void LineFile::Write(std::string_view line) {
  if (!file) return;
  const bool written = std::fwrite(line.data(), 1, line.size(), file.get()) == line.size() &&
                       std::fwrite("\r\n", 1, 2, file.get()) == 2 && std::fflush(file.get()) == 0;
  if (!written) Close();
}

void DebugLog::Open(const std::filesystem::path& path) {
  File.Open(path, begun);
  begun = true;
}

void DebugLog::LogLine(std::string_view text) { File.Write(text); }

void DebugLog::LogTimed(std::string_view text, std::string_view text2) {
  if (!On()) return;
  std::string line = TimeText(clock.Now());
  line += " : ";
  line += text;
  line += text2;
  File.Write(line);
}

void DebugLog::LogDuration(std::string_view what, std::uint32_t start) {
  if (!On()) return;
  // Unsigned, so that it is right over the wrap of the count too.
  const std::uint32_t passed = clock.TickCount() - start;
  LogLine(std::string(what) + " in " + std::to_string(passed) + " ms");
}

}  // namespace kestrel::base
