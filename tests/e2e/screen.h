#pragma once

#include <QImage>
#include <QPoint>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <memory>

namespace kestrel::e2e {

/// True as soon as `condition` holds, looking again and again; false after `seconds`.
bool WaitFor(const std::function<bool()>& condition, int seconds = 20);

/// A program of the test: its output is kept, and it ends with the object.
class Child {
 public:
  Child(const QString& program, const QStringList& arguments, const QStringList& environment = {});
  ~Child();
  /// All of standard output so far.
  QString Output();
  bool Running() const { return process.state() == QProcess::Running; }
  /// Waits for the program to end by itself.
  bool Ends(int seconds = 20);
  int ExitCode() const { return process.exitCode(); }
  bool Crashed() const { return process.exitStatus() == QProcess::CrashExit; }
  void Kill() { process.kill(); }
  /// Lets it do nothing until it is resumed.
  void Pause() const;
  void Resume() const;

 private:
  QProcess process;
  QString output;
};

/// A screen in memory with a window manager, and a person's hands on it.
class Screen {
 public:
  Screen();
  /// The environment of a program on this screen.
  QStringList Environment() const;
  /// Waits until a window whose title matches stands on the screen; its number, empty when none comes.
  QString Window(const QString& titlePattern, int seconds = 20) const;
  bool HasWindow(const QString& titlePattern) const;
  void Activate(const QString& window) const;
  /// True when the window has the keyboard.
  bool IsActive(const QString& window) const;
  void Press(const QStringList& keys) const;
  /// One key: "keydown", "keyup", or "key" for both.
  void Key(const QString& what, const QString& key) const;
  /// Types into the field that has the keyboard.
  void Type(const QString& text) const;
  /// The inside of a window, in pixels of the screen; empty when the window has gone.
  QRect Geometry(const QString& window) const;
  /// Presses the left button at a place on the screen.
  void Click(QPoint place) const;
  /// Moves the pointer to a place on the screen, in two steps, and lets it rest there.
  void Point(QPoint place) const;
  /// All windows that stand on the screen, also those without a title, such as tool tips.
  QStringList Windows() const;
  /// Moves the pointer from one place to another with the left button held.
  void Drag(QPoint from, QPoint to) const;
  QImage Picture() const;
  /// Name of the screen, e.g. ":99".
  QString Display() const { return display; }
  Child& Manager() { return *manager; }
  /// Ends the screen; every program on it loses it.
  void Shut();

 private:
  QString Tool(const QString& program, const QStringList& arguments) const;
  QTemporaryDir folder;
  std::unique_ptr<Child> server;
  std::unique_ptr<Child> manager;
  QString display;
};

}  // namespace kestrel::e2e
