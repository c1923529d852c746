#pragma once

#include <QFrame>
#include <vector>

#include "core/shortcut_capture.h"

class QGridLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace kestrel::shell {

class KeyField;

/// Frame3 and Frame4 of the options: the keys of one half of the commands; with the first half those of our own.
class KeysPanel final : public QFrame {
  Q_OBJECT
 public:
  /// The commands from `first` to before `end`, on a panel named `name` whose button `defaults` gives them their
  /// defaults. `running` and `capture` outlive the panel.
  KeysPanel(core::Program& running, core::ShortcutCapture& capture, const char* name, std::size_t first,
            std::size_t end, const char* defaults, QWidget* owner);

  /// Boxes, words and buttons as the keys stand, also where the other panel has changed them.
  void ShowKeys();

 Q_SIGNALS:
  /// Keys may have changed.
  void KeysChanged();

 private:
  /// A group with the commands from `first` to before `end`.
  QVBoxLayout* AddCommands(const char* heading, std::size_t first, std::size_t end, QVBoxLayout& rows);
  void AddCommand(std::size_t index, QGridLayout& lines);
  void Set(std::size_t index, KeyField& field);
  void LoadDefaults(std::size_t first, std::size_t end);
  void Undo();
  /// The last row: what is shadowed, and the buttons.
  void AddButtons(std::size_t first, std::size_t end, const char* defaults, QVBoxLayout& rows);
  QPushButton* NewButton(const char* name, const char* caption, const char* meaning);
  /// Of this panel and of the other.
  void ShowEverywhere();
  void ShowNote();

  core::Program& program;
  core::ShortcutCapture& capture;
  std::vector<KeyField*> fields;
  QLabel* shadowed = nullptr;  ///< the commands without effect
  bool showing = false;        ///< the boxes are being shown anew
  QLabel* note = nullptr;      ///< beside the transmit keys, on their panel alone
};

}  // namespace kestrel::shell
