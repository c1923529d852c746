// Tells what Windows knows of the windows on its desktop, for tests from outside: the pointer's place on the first
// line, then a line for each visible window with a title: whether it is above all others, its opacity (0 to 255, "-"
// when it has none of its own), its place, size and title.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <cstdio>
#include <string>

namespace {

BOOL CALLBACK TellWindow(HWND window, LPARAM) {
  wchar_t title[256];
  const int length = GetWindowTextW(window, title, 256);
  if (length == 0 || !IsWindowVisible(window)) return TRUE;
  const LONG_PTR style = GetWindowLongPtrW(window, GWL_EXSTYLE);
  std::string opacity = "-";
  BYTE alpha = 0;
  DWORD flags = 0;
  if ((style & WS_EX_LAYERED) != 0 && GetLayeredWindowAttributes(window, nullptr, &alpha, &flags) &&
      (flags & LWA_ALPHA) != 0) {
    opacity = std::to_string(alpha);
  }
  RECT place;
  GetWindowRect(window, &place);
  std::printf("topmost=%d opacity=%s at %ld,%ld size %ldx%ld %ls\n", (style & WS_EX_TOPMOST) != 0 ? 1 : 0,
              opacity.c_str(), place.left, place.top, place.right - place.left, place.bottom - place.top, title);
  return TRUE;
}

}  // namespace

int main() {
  POINT pointer;
  GetCursorPos(&pointer);
  std::printf("pointer %ld,%ld, code page %u\n", pointer.x, pointer.y, GetACP());
  EnumWindows(TellWindow, 0);
  return 0;
}
