#include "e2e/other_program.h"

#include <QLibrary>

#include "e2e/screen.h"

// After the toolkit's headers, whose words its macros would take.
#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace kestrel::e2e {

struct OtherProgram::Window {
  explicit Window(const QString& name) : Connection(XOpenDisplay(name.toLatin1().constData())) {
    if (Connection == nullptr) return;
    // A window that is not on the screen at that moment cannot have the keyboard: it is asked for again.
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    const int screen = DefaultScreen(Connection);
    Id = XCreateSimpleWindow(Connection, RootWindow(Connection, screen), 20, 20, 200, 100, 0, 0,
                             WhitePixel(Connection, screen));
    XWMHints hints{};
    hints.flags = InputHint;
    hints.input = True;
    XSetWMHints(Connection, Id, &hints);
    XStoreName(Connection, Id, "Another program");
    XSelectInput(Connection, Id, KeyPressMask | StructureNotifyMask | FocusChangeMask);
    XMapRaised(Connection, Id);
    XFlush(Connection);
  }
  ~Window() {
    if (Connection != nullptr) XCloseDisplay(Connection);
  }
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  void Drain() {
    while (Connection != nullptr && XPending(Connection) > 0) {
      XEvent event;
      XNextEvent(Connection, &event);
      if (event.type == ReparentNotify) Managed = true;
      if (event.type == MapNotify) Mapped = true;
      if (event.type == KeyPress) Keys.push_back(XLookupKeysym(&event.xkey, 0));
    }
  }
  bool HasFocus() const {
    ::Window focused = 0;
    int revert = 0;
    XGetInputFocus(Connection, &focused, &revert);
    return focused == Id;
  }

  Display* Connection;
  ::Window Id = 0;
  bool Managed = false;  ///< the window manager has put its border around it
  bool Mapped = false;
  std::vector<unsigned long> Keys;
};

OtherProgram::OtherProgram(const QString& display) : window(std::make_unique<Window>(display)) {}
OtherProgram::~OtherProgram() = default;

bool OtherProgram::TakeFocus() {
  const bool shown = WaitFor([this] {
    window->Drain();
    return window->Managed && window->Mapped;
  });
  if (!shown) return false;
  return WaitFor([this] {
    XSetInputFocus(window->Connection, window->Id, RevertToParent, CurrentTime);
    XSync(window->Connection, False);
    return window->HasFocus();
  });
}

bool OtherProgram::GrabKeyboard() {
  return WaitFor([this] {
    return XGrabKeyboard(window->Connection, window->Id, True, GrabModeAsync, GrabModeAsync, CurrentTime) ==
           GrabSuccess;
  });
}

void OtherProgram::SwitchLayout(unsigned layout) {
  XkbLockGroup(window->Connection, XkbUseCoreKbd, layout);
  XSync(window->Connection, False);
}

bool OtherProgram::PressKey(unsigned keyCode) {
  // xdotool, whose library it is, would switch the layout back for the time of the key.
  QLibrary library(QStringLiteral("Xtst"), 6);
  using Fake = int (*)(Display*, unsigned, int, unsigned long);
  const auto fake = reinterpret_cast<Fake>(library.resolve("XTestFakeKeyEvent"));
  if (fake == nullptr) return false;
  for (const int down : {1, 0}) fake(window->Connection, keyCode, down, CurrentTime);
  XSync(window->Connection, False);
  return true;
}

std::vector<unsigned long> OtherProgram::Heard() {
  window->Drain();
  return window->Keys;
}

}  // namespace kestrel::e2e
