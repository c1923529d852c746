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
  std::setvbuf(file.get(), nullptr, _IONBF, 0);  // each line goes to the system in one piece, and at once
}

void LineFile::Close() { file.reset(); }

void LineFile::WritePieces(std::initializer_list<std::string_view> pieces) {
  if (!file) return;
  written.clear();
  for (const std::string_view piece : pieces) written += piece;
  written += "\r\n";
  if (std::fwrite(written.data(), 1, written.size(), file.get()) != written.size()) Close();
}

void DebugLog::Open(const std::filesystem::path& path) {
  File.Open(path, begun);
  begun = true;
}

void DebugLog::LogLine(std::string_view text) { File.Write(text); }

void DebugLog::LogTimed(std::string_view text, std::string_view text2) {
  if (On()) File.WritePieces({Now(), " : ", text, text2});
}

void DebugLog::LogMessage(std::string_view text, std::string_view Command, std::string_view Data) {
  if (On()) File.WritePieces({Now(), " : ", text, "(", Command, ")", Data});
}

std::string_view DebugLog::Now() {
  if (const double now = clock.Now(); now != shownTime) {
    timeText = TimeText(now);
    shownTime = now;
  }
  return timeText;
}

void DebugLog::LogDuration(std::string_view what, std::uint32_t start) {
  if (!On()) return;
  // Unsigned, so that it is right over the wrap of the count too.
  const std::uint32_t passed = clock.TickCount() - start;
  LogLine(std::string(what) + " in " + std::to_string(passed) + " ms");
}

}  // namespace kestrel::base
