#include "windows/voice_client.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "windows/stand_in.h"

namespace kestrel::test {
namespace {

// Milliseconds; far more than anything here takes.
constexpr DWORD Limit = 20000;

PROCESS_INFORMATION Run(std::string command) {
  STARTUPINFOA start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION process{};
  if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process)) {
    throw std::runtime_error("cannot start " + command);
  }
  return process;
}

}  // namespace

bool WaitUntil(const std::function<bool()>& done) {
  const ULONGLONG until = GetTickCount64() + Limit;
  for (;;) {
    for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) DispatchMessageA(&message);
    if (done()) return true;
    if (GetTickCount64() >= until) return false;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
  }
}

VoiceClient::VoiceClient(const std::vector<std::string>& arguments) {
  std::string command = std::string("\"" KESTREL_STAND_IN "\" \"") + (folder / "record").string() + "\"";
  for (const std::string& argument : arguments) {
    command += " \"" + argument + "\"";
    if (argument.starts_with("title=")) title = argument.substr(6);
  }
  process = Run(command);
  if (!WaitUntil([this] { return !Lines().empty(); })) throw std::runtime_error("the stand-in shows no window");
}

VoiceClient::~VoiceClient() {
  TerminateProcess(process.hProcess, 0);
  WaitForSingleObject(process.hProcess, Limit);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
}

std::vector<std::string> VoiceClient::Lines() const {
  std::istringstream text(ReadBytes(folder / "record"));
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

std::vector<std::string> VoiceClient::Record() const {
  std::vector<std::string> lines = Lines();
  lines.erase(lines.begin());
  return lines;
}

std::vector<std::string> VoiceClient::Record(std::size_t lines) const {
  WaitUntil([&] { return Record().size() >= lines; });
  return Record();
}

HWND VoiceClient::Window() const { return FindWindowA(nullptr, title.c_str()); }

void VoiceClient::Hang() {
  const std::size_t before = Record().size();
  PostMessageA(Window(), HangMessage, 0, 0);
  ASSERT_EQ(Record(before + 1).back(), "hung");
}

void VoiceClient::GoOn() {
  const HANDLE goOn = OpenEventA(EVENT_MODIFY_STATE, FALSE, (GoOnEvent + title).c_str());
  ASSERT_NE(goOn, nullptr);
  SetEvent(goOn);
  CloseHandle(goOn);
}

void VoiceClient::Close() {
  PostMessageA(Window(), WM_CLOSE, 0, 0);
  ASSERT_TRUE(WaitUntil([this] { return WaitForSingleObject(process.hProcess, 0) == WAIT_OBJECT_0; }));
}

void Type(const std::string& title, const std::string& keys) {
  const char* program = std::getenv("XDOTOOL");
  ASSERT_NE(program, nullptr) << "started without under-wine";
  // In one run, so that the keys come after the focus.
  const PROCESS_INFORMATION process = Run("Z:" + std::string(program) + " search --sync --onlyvisible --name \"^" +
                                          title + "$\" windowactivate --sync " + keys);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
}

}  // namespace kestrel::test
