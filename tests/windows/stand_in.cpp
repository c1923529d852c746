// A real program with the windows of the voice client, which writes down what it is sent:
//
//   stand_in RECORD [title=TEXT] [status=TEXT] [edits=N] [slow=MS] [nopanel] [hidden]
//
// RECORD gets a line for each thing: "ready", "keydown KEY SECOND", "keyup KEY SECOND" (the second message parameter as
// a signed number), "set EDIT TEXT" (edits counted from 1), "click BUTTON" (change buttons counted from 1), "hung",
// "goes on". A press of a change button takes SLOW milliseconds. Without a panel it is any program's window; so it
// stands in for the simulator too.

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "windows/stand_in.h"

namespace {

using namespace kestrel::test;

constexpr const char* TopClass = "KestrelStandIn";
constexpr const char* PanelClass = "wxWindowClassNR";
constexpr int FirstEditId = 100;
constexpr int FirstButtonId = 200;

struct Options {
  std::string Record;
  std::string Title = "IVC Client";
  std::string Status = "CONNECTED";
  int Edits = 7;
  bool Panel = true;
  bool Visible = true;
  DWORD Slow = 0;
};

Options options;
WNDPROC editProcedure = nullptr;

void Write(const std::string& line) {
  std::FILE* file = std::fopen(options.Record.c_str(), "ab");
  if (file == nullptr) std::exit(3);
  std::fputs((line + "\n").c_str(), file);
  std::fclose(file);
}

void Hang() {
  const HANDLE goOn = CreateEventA(nullptr, FALSE, FALSE, (GoOnEvent + options.Title).c_str());
  Write("hung");
  WaitForSingleObject(goOn, HangLimit);
  CloseHandle(goOn);
  Write("goes on");
}

LRESULT CALLBACK OnTop(HWND window, UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_KEYDOWN:
    case WM_KEYUP:
      Write((message == WM_KEYDOWN ? "keydown " : "keyup ") + std::to_string(first) + " " + std::to_string(second));
      return 0;
    case HangMessage:
      Hang();
      return 0;
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcA(window, message, first, second);
  }
}

LRESULT CALLBACK OnPanel(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_COMMAND && HIWORD(first) == BN_CLICKED && LOWORD(first) >= FirstButtonId) {
    Sleep(options.Slow);
    Write("click " + std::to_string(LOWORD(first) - FirstButtonId + 1));
    return 0;
  }
  return DefWindowProcA(window, message, first, second);
}

LRESULT CALLBACK OnEdit(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_SETTEXT) {
    Write("set " + std::to_string(GetDlgCtrlID(window) - FirstEditId + 1) + " " +
          reinterpret_cast<const char*>(second));
  }
  return CallWindowProcA(editProcedure, window, message, first, second);
}

HWND MakeControl(HWND parent, const char* className, const char* text, int id, int row) {
  return CreateWindowExA(0, className, text, WS_CHILD | WS_VISIBLE, 10, 10 + 24 * row, 200, 22, parent,
                         reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr), nullptr);
}

void MakeEdit(HWND panel, int number, int row) {
  static const std::string texts[] = {"pilot", "host", options.Status, " 305000 ", "305000", "128550", "behind"};
  const HWND edit = MakeControl(panel, "Edit", texts[number - 1].c_str(), FirstEditId + number - 1, row);
  editProcedure = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrA(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(static_cast<WNDPROC>(OnEdit))));
}

/// Controls as the bridge looks for, where it must not find them: it would take their text, or change them in vain.
void MakeDecoys(HWND parent) {
  for (int row = 0; row < 6; ++row) MakeControl(parent, "Edit", "decoy", 0, row);
  for (int row = 6; row < 8; ++row) MakeControl(parent, "Button", "Change FRQ", 0, row);
}

/// Its controls in the order that the bridge counts on, among others that it must pass over.
void MakePanel(HWND top) {
  const HWND panel = MakeControl(top, PanelClass, "", 1, 0);
  MoveWindow(panel, 0, 0, 300, 400, FALSE);
  MakeControl(panel, "Static", "Radios", 2, 0);
  MakeControl(panel, "Button", "Connect", 3, 1);
  // A group box, whose controls are the panel's grandchildren.
  const HWND group = MakeControl(panel, "Button", "Pilot", 4, 1);
  SendMessageA(group, BM_SETSTYLE, BS_GROUPBOX, FALSE);
  MakeDecoys(group);
  int row = 2;
  for (int number = 1; number <= options.Edits; ++number) {
    MakeEdit(panel, number, row++);
    if (number == 4) MakeControl(panel, "Button", "Change FRQ", FirstButtonId, row++);
    if (number == 6) MakeControl(panel, "Button", "Change FRQ", FirstButtonId + 1, row++);
  }
  // Behind it another of its class.
  const HWND other = MakeControl(top, PanelClass, "", 5, 0);
  MoveWindow(other, 0, 400, 300, 10, FALSE);
  MakeDecoys(other);
}

void Register(const char* name, WNDPROC procedure) {
  WNDCLASSA description{};
  description.lpfnWndProc = procedure;
  description.hInstance = GetModuleHandleA(nullptr);
  description.lpszClassName = name;
  description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  if (RegisterClassA(&description) == 0) std::exit(4);
}

bool Read(const std::string& argument) {
  const auto equals = argument.find('=');
  const std::string name = argument.substr(0, equals);
  const std::string value = equals == std::string::npos ? "" : argument.substr(equals + 1);
  if (name == "title") {
    options.Title = value;
  } else if (name == "status") {
    options.Status = value;
  } else if (name == "edits") {
    options.Edits = std::atoi(value.c_str());
  } else if (name == "slow") {
    options.Slow = static_cast<DWORD>(std::atoi(value.c_str()));
  } else if (name == "nopanel") {
    options.Panel = false;
  } else if (name == "hidden") {
    options.Visible = false;
  } else {
    return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  options.Record = argv[1];
  for (int at = 2; at < argc; ++at) {
    if (!Read(argv[at])) return 2;
  }
  Register(TopClass, OnTop);
  Register(PanelClass, OnPanel);
  const HWND top = CreateWindowExA(0, TopClass, options.Title.c_str(), WS_OVERLAPPEDWINDOW, 50, 50, 320, 430, nullptr,
                                   nullptr, GetModuleHandleA(nullptr), nullptr);
  if (top == nullptr) return 5;
  if (options.Panel) MakePanel(top);
  if (options.Visible) ShowWindow(top, SW_SHOWNORMAL);
  Write("ready");
  for (MSG message; GetMessageA(&message, nullptr, 0, 0) > 0;) DispatchMessageA(&message);
  return 0;
}
