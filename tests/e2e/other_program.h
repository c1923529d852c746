#pragma once

#include <QString>
#include <memory>
#include <vector>

namespace kestrel::e2e {

/// A window of another program on a screen, as the simulator's would be: it takes the keyboard and keeps what it hears.
class OtherProgram {
 public:
  /// `display`: name of the screen, e.g. ":99".
  explicit OtherProgram(const QString& display);
  ~OtherProgram();
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;

  /// Gives the window the keyboard; true once it has it.
  bool TakeFocus();
  /// Takes the keyboard away from everybody, as full-screen programs do.
  bool GrabKeyboard();
  /// Switches the keyboard to one of its layouts, counted from 0.
  void SwitchLayout(unsigned layout);
  /// Presses and releases the key of an X key code by the extension for tests: a key of the place alone, whatever it
  /// writes. False without the extension's library.
  bool PressKey(unsigned keyCode);
  /// The key presses heard so far, as X key symbols without modifiers.
  std::vector<unsigned long> Heard();

 private:
  struct Window;
  std::unique_ptr<Window> window;
};

}  // namespace kestrel::e2e
