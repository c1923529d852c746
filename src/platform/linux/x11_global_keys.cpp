#include "platform/linux/x11_global_keys.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <X11/keysym.h>

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "core/shortcuts.h"
#include "platform/linux/key_symbols.h"
#include "platform/make_seams.h"

namespace kestrel::platform {
namespace {

constexpr std::size_t KeyCodes = 256;

struct CloseDisplay {
  void operator()(Display* display) const { XCloseDisplay(display); }
};
using OwnDisplay = std::unique_ptr<Display, CloseDisplay>;

/// The number by which the extension's events are known; 0 when the display has not the version that tells raw events
/// to everybody, also while another program has grabbed the keyboard.
int RawEventsOf(Display* display) {
  int opcode = 0, event = 0, error = 0, major = 2, minor = 2;
  if (XQueryExtension(display, "XInputExtension", &opcode, &event, &error) == 0) return 0;
  if (XIQueryVersion(display, &major, &minor) != Success) return 0;
  return major > 2 || minor >= 1 ? opcode : 0;
}

bool IsWithinWayland(Display* display) {
  int opcode = 0, event = 0, error = 0;
  return XQueryExtension(display, "XWAYLAND", &opcode, &event, &error) != 0;
}

/// The library's own would end the process at the loss of any display; each display's handler of exits decides that.
int GoOn(Display*) { return 0; }

}  // namespace

class X11GlobalKeys::Connection {
 public:
  Connection(OwnDisplay opened, int eventOpcode) : display(std::move(opened)), opcode(eventOpcode) {
    XSetIOErrorHandler(&GoOn);
    XSetIOErrorExitHandler(display.get(), &Connection::Lost, this);
  }

  int Descriptor() const { return lost ? -1 : ConnectionNumber(display.get()); }

  bool Start(Heard toTell) {
    if (lost) return false;
    heard = std::move(toTell);
    held = HeldNow();
    Select(true);
    return !lost;
  }

  void Stop() {
    heard = nullptr;
    if (!lost) Select(false);
  }

  void Drain() {
    if (lost) return;
    std::bitset<KeyCodes> now;
    do {
      while (!lost && XPending(display.get()) > 0) TakeNext();
      if (lost) return;
      now = HeldNow();
      // What came while we asked was there before the answer: only with nothing left are the two of one moment.
    } while (XEventsQueued(display.get(), QueuedAlready) > 0);
    held = now;
  }

 private:
  /// The display is gone: it is not asked again.
  static void Lost(Display*, void* self) { static_cast<Connection*>(self)->lost = true; }

  void Select(bool on) {
    unsigned char bits[XIMaskLen(XI_LASTEVENT)] = {};
    if (on) {
      XISetMask(bits, XI_RawKeyPress);
      XISetMask(bits, XI_RawKeyRelease);
    }
    XIEventMask mask{XIAllMasterDevices, sizeof(bits), bits};
    XISelectEvents(display.get(), DefaultRootWindow(display.get()), &mask, 1);
    XFlush(display.get());
  }

  std::bitset<KeyCodes> HeldNow() {
    char bytes[KeyCodes / 8] = {};
    XQueryKeymap(display.get(), bytes);
    std::bitset<KeyCodes> keys;
    for (std::size_t key = 0; key < KeyCodes; ++key) keys[key] = (bytes[key / 8] >> (key % 8) & 1) != 0;
    return keys;
  }

  void TakeNext() {
    XEvent event{};
    XNextEvent(display.get(), &event);
    if (event.type == MappingNotify) XRefreshKeyboardMapping(&event.xmapping);
    XGenericEventCookie& cookie = event.xcookie;
    if (cookie.type != GenericEvent || cookie.extension != opcode || XGetEventData(display.get(), &cookie) == 0) return;
    const bool down = cookie.evtype == XI_RawKeyPress;
    const auto keyCode = static_cast<std::uint32_t>(static_cast<const XIRawEvent*>(cookie.data)->detail);
    XFreeEventData(display.get(), &cookie);
    if (keyCode < KeyCodes) Take(keyCode, down);
  }

  void Take(std::uint32_t keyCode, bool down) {
    held[keyCode] = down;
    XkbGetState(display.get(), XkbUseCoreKbd, &state);
    if (lost) return;
    const std::int32_t modifiers = HeldModifiers();
    const core::GlobalKey key{KeyOf(keyCode, modifiers), modifiers, down};
    // A copy, because what is called may end the listening.
    const Heard toTell = heard;
    if (toTell && key.KeyCode != 0 && !core::IsModifierKey(key.KeyCode)) toTell(key);
  }

  unsigned long SymbolOf(std::uint32_t keyCode) {
    unsigned int used = 0;
    KeySym symbol = NoSymbol;
    // By the layout that is in use; a key without symbols of its own in it has those of another.
    XkbLookupKeySym(display.get(), static_cast<KeyCode>(keyCode), XkbBuildCoreState(0U, unsigned{state.group}), &used,
                    &symbol);
    return symbol;
  }

  std::int32_t KeyOf(std::uint32_t keyCode, std::int32_t modifiers) {
    const unsigned long symbol = SymbolOf(keyCode);
    const bool keypad = symbol >= XK_KP_Space && symbol <= XK_KP_9;
    return KeyOfSymbol(symbol, keyCode, keypad && KeypadWrites((modifiers & core::ShiftModifier) != 0));
  }

  /// Shift turns the meaning of the lock over.
  bool KeypadWrites(bool shifted) {
    const bool locked = (state.locked_mods & XkbKeysymToModifiers(display.get(), XK_Num_Lock)) != 0;
    return locked != shifted;
  }

  std::int32_t HeldModifiers() {
    std::int32_t modifiers = 0;
    for (std::size_t keyCode = 0; keyCode < KeyCodes; ++keyCode) {
      if (!held[keyCode]) continue;
      const std::int32_t key = KeyOfSymbol(SymbolOf(static_cast<std::uint32_t>(keyCode)), 0, false);
      if (key == core::KeyShift) modifiers |= core::ShiftModifier;
      if (key == core::KeyCtrl) modifiers |= core::CtrlModifier;
      if (key == core::KeyMenu) modifiers |= core::AltModifier;
    }
    return modifiers;
  }

  OwnDisplay display;
  int opcode;
  Heard heard;
  std::bitset<KeyCodes> held;  ///< keys that are down, as of the last event that was taken
  XkbStateRec state{};         ///< the keyboard's, asked at the last event
  bool lost = false;
};

X11GlobalKeys::X11GlobalKeys(bool wayland) {
  const std::string_view none = "The transmit keys act only on an X11 desktop: ";
  OwnDisplay display(XOpenDisplay(nullptr));
  if (wayland || (display && IsWithinWayland(display.get()))) {
    missing = std::string(none) + "Wayland does not let a program hear keys that are pressed in another.";
  } else if (!display) {
    missing = std::string(none) + "there is none here.";
  } else if (const int opcode = RawEventsOf(display.get()); opcode == 0) {
    missing = std::string(none) + "this one lacks the XInput extension.";
  } else {
    connection = std::make_unique<Connection>(std::move(display), opcode);
  }
}

X11GlobalKeys::~X11GlobalKeys() = default;

bool X11GlobalKeys::Start(Heard heard) { return connection && connection->Start(std::move(heard)); }

void X11GlobalKeys::Stop() {
  if (connection) connection->Stop();
}

int X11GlobalKeys::Descriptor() const { return connection ? connection->Descriptor() : -1; }

void X11GlobalKeys::Drain() {
  if (connection) connection->Drain();
}

std::unique_ptr<core::GlobalKeys> MakeGlobalKeys() {
  const char* wayland = std::getenv("WAYLAND_DISPLAY");
  return std::make_unique<X11GlobalKeys>(wayland != nullptr && *wayland != '\0');
}

}  // namespace kestrel::platform
