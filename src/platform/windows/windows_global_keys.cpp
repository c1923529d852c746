#include "platform/windows/windows_global_keys.h"

#include <windows.h>

#include <future>
#include <utility>

#include "core/shortcuts.h"
#include "platform/make_seams.h"

namespace kestrel::platform {
namespace {

constexpr const char* WindowClass = "KestrelGlobalKeys";
constexpr UINT HeardMessage = WM_APP;

}  // namespace

/// What the system calls by its address alone, and therefore the one place that is known to the whole process.
struct WindowsGlobalKeys::Hook {
  static inline HWND Receiver = nullptr;  ///< never seen; takes what the hook posts
  static inline Heard Handler;

  static std::int32_t HeldModifiers();
  static LRESULT CALLBACK OnKey(int code, WPARAM message, LPARAM data);
  static LRESULT CALLBACK OnPosted(HWND window, UINT message, WPARAM keyCode, LPARAM rest);
  static HWND MakeReceiver();
  static void Listen(std::promise<DWORD> listening);
};

std::int32_t WindowsGlobalKeys::Hook::HeldModifiers() {
  const auto held = [](int key) { return (GetAsyncKeyState(key) & 0x8000) != 0; };
  return (held(VK_SHIFT) ? core::ShiftModifier : 0) + (held(VK_CONTROL) ? core::CtrlModifier : 0) +
         (held(VK_MENU) ? core::AltModifier : 0);
}

LRESULT CALLBACK WindowsGlobalKeys::Hook::OnKey(int code, WPARAM message, LPARAM data) {
  // With any other code there is no event to look at.
  if (code == HC_ACTION) {
    const auto& event = *reinterpret_cast<const KBDLLHOOKSTRUCT*>(data);
    const auto key = core::FromHook(code, event.vkCode, event.flags, HeldModifiers());
    if (key) PostMessageA(Receiver, HeardMessage, event.vkCode, MAKELPARAM(key->Shift, key->Down ? 1 : 0));
  }
  return CallNextHookEx(nullptr, code, message, data);
}

LRESULT CALLBACK WindowsGlobalKeys::Hook::OnPosted(HWND window, UINT message, WPARAM keyCode, LPARAM rest) {
  if (message != HeardMessage) return DefWindowProcA(window, message, keyCode, rest);
  // A copy, because what is called may end the listening.
  const Heard handler = Handler;
  if (handler) handler({static_cast<std::int32_t>(keyCode), LOWORD(rest), HIWORD(rest) != 0});
  return 0;
}

HWND WindowsGlobalKeys::Hook::MakeReceiver() {
  WNDCLASSA description{};
  description.lpfnWndProc = OnPosted;
  description.hInstance = GetModuleHandleA(nullptr);
  description.lpszClassName = WindowClass;
  // Registered at the second start already: that failure is none.
  RegisterClassA(&description);
  return CreateWindowA(WindowClass, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, description.hInstance, nullptr);
}

/// The thread of the hook, until it is told to quit. `listening` gets its number, 0 when there is no hook.
void WindowsGlobalKeys::Hook::Listen(std::promise<DWORD> listening) {
  MSG message;
  // A thread has messages only from its first look at them on.
  PeekMessageA(&message, nullptr, WM_USER, WM_USER, PM_NOREMOVE);
  const HHOOK hook = SetWindowsHookExA(WH_KEYBOARD_LL, OnKey, GetModuleHandleA(nullptr), 0);
  listening.set_value(hook != nullptr ? GetCurrentThreadId() : 0);
  if (hook == nullptr) return;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
  }
  UnhookWindowsHookEx(hook);
}

WindowsGlobalKeys::~WindowsGlobalKeys() { Stop(); }

bool WindowsGlobalKeys::Start(Heard heard) {
  if (hookThread.joinable()) return true;
  if (Hook::Receiver != nullptr) return false;
  Hook::Receiver = Hook::MakeReceiver();
  if (Hook::Receiver == nullptr) return false;
  Hook::Handler = std::move(heard);
  std::promise<DWORD> listening;
  std::future<DWORD> answer = listening.get_future();
  hookThread = std::thread(Hook::Listen, std::move(listening));
  threadId = answer.get();
  if (threadId == 0) Stop();
  return threadId != 0;
}

void WindowsGlobalKeys::Stop() {
  if (!hookThread.joinable()) return;
  if (threadId != 0) PostThreadMessageA(threadId, WM_QUIT, 0, 0);
  hookThread.join();
  // What was posted and not yet looked at goes with its window.
  DestroyWindow(std::exchange(Hook::Receiver, nullptr));
  Hook::Handler = nullptr;
}

std::unique_ptr<core::GlobalKeys> MakeGlobalKeys() { return std::make_unique<WindowsGlobalKeys>(); }

}  // namespace kestrel::platform
