#include "platform/windows/windows_voice_windows.h"

#include <windows.h>

#include <algorithm>

#include "base/code_page.h"
#include "platform/make_seams.h"

namespace kestrel::platform {
namespace {

using radio::WindowHandle;

HWND Native(WindowHandle window) { return reinterpret_cast<HWND>(window); }
WindowHandle Handle(HWND window) { return reinterpret_cast<WindowHandle>(window); }

}  // namespace

struct WindowsVoiceWindows::Message {
  HWND Window;
  UINT What;
  WPARAM First = 0;
  LPARAM Second = 0;
};

void WindowsVoiceWindows::OperationStarts() { deadline = GetTickCount64() + OperationLimit; }

/// The answer to a message; 0 when there was none in the time that is left. Texts are wide, because the narrow question
/// for a text's length waits without a limit under Wine.
std::uintptr_t WindowsVoiceWindows::Send(const Message& message) {
  const std::uint64_t now = GetTickCount64();
  if (now >= deadline) return 0;
  // Given up at once when the system already knows that the program hangs. While it waits the station still takes
  // messages that are sent to it, the client's among them: no SMTO_BLOCK.
  constexpr UINT flags = SMTO_NORMAL | SMTO_ABORTIFHUNG | SMTO_ERRORONEXIT;
  DWORD_PTR answer = 0;
  const LRESULT handled = SendMessageTimeoutW(message.Window, message.What, message.First, message.Second, flags,
                                              static_cast<UINT>(deadline - now), &answer);
  return handled == 0 ? 0 : answer;
}

WindowHandle WindowsVoiceWindows::FindTop(const std::string& title) {
  return Handle(FindWindowA(nullptr, title.c_str()));
}

WindowHandle WindowsVoiceWindows::FindChild(WindowHandle parent, WindowHandle after, const char* className,
                                            const char* caption) {
  // Without a parent the search would go through the windows of all programs.
  if (parent == 0) return 0;
  return Handle(FindWindowExA(Native(parent), Native(after), className, caption));
}

std::size_t WindowsVoiceWindows::TextLength(WindowHandle window) {
  return Send({.Window = Native(window), .What = WM_GETTEXTLENGTH});
}

std::string WindowsVoiceWindows::Text(WindowHandle window, std::size_t room) {
  std::u16string text(room, u'\0');
  const std::size_t count = Send(
      {.Window = Native(window), .What = WM_GETTEXT, .First = room, .Second = reinterpret_cast<LPARAM>(text.data())});
  // The count is the other program's word.
  text.resize(std::min(count, room));
  return base::FromUnicode(text.substr(0, text.find(u'\0')));
}

void WindowsVoiceWindows::SetText(WindowHandle window, const std::string& text) {
  const std::u16string wide = base::ToUnicode(text);
  Send({.Window = Native(window), .What = WM_SETTEXT, .Second = reinterpret_cast<LPARAM>(wide.c_str())});
}

void WindowsVoiceWindows::Click(WindowHandle button) { Send({.Window = Native(button), .What = BM_CLICK}); }

void WindowsVoiceWindows::SendKey(WindowHandle window, std::int32_t vkey, bool down) {
  // A key has no answer to wait for, and it must not get lost: a hung client finds the release when it comes back, or
  // its radio would stay on.
  SendNotifyMessageA(Native(window), static_cast<UINT>(down ? WM_KEYDOWN : WM_KEYUP), static_cast<WPARAM>(vkey), 0);
}

std::unique_ptr<radio::VoiceWindows> MakeVoiceWindows() { return std::make_unique<WindowsVoiceWindows>(); }

}  // namespace kestrel::platform
