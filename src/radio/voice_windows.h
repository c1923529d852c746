#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace kestrel::radio {

/// A window of the system by its handle; 0 is none.
using WindowHandle = std::uintptr_t;

/// Seam: other programs' windows, as far as the voice client's controls need them. Texts are bytes of the code page. A
/// window may be gone or its program hung at any call: then there is an empty answer, never a failure. Filled by
/// platform/.
class VoiceWindows {
 public:
  virtual ~VoiceWindows() = default;
  /// Whether the voice client can run on this system at all.
  virtual bool Available() const { return true; }
  /// An operation begins. All messages from here to the next call together wait no longer than a limit that the filler
  /// states, so that a hung client cannot hang the station.
  virtual void OperationStarts() = 0;
  /// The top window whose whole title is `title`.
  virtual WindowHandle FindTop(const std::string& title) = 0;
  /// The next child of `parent` behind `after`, the first when `after` is 0, of class `className`. `caption` is its
  /// whole text, or null for any. Neither `parent` nor `className` may be empty.
  virtual WindowHandle FindChild(WindowHandle parent, WindowHandle after, const char* className,
                                 const char* caption) = 0;
  /// Characters of the window's text.
  virtual std::size_t TextLength(WindowHandle window) = 0;
  /// The window's text, cut off so that it fits a buffer of `room` characters with its closing NUL.
  virtual std::string Text(WindowHandle window, std::size_t room) = 0;
  virtual void SetText(WindowHandle window, const std::string& text) = 0;
  virtual void Click(WindowHandle button) = 0;
  /// A key-down or key-up message; `vkey` is the virtual key number.
  virtual void SendKey(WindowHandle window, std::int32_t vkey, bool down) = 0;
};

}  // namespace kestrel::radio
