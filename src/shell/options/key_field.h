#pragma once

#include <QLineEdit>
#include <cstddef>

#include "core/shortcut_capture.h"

class QLabel;

namespace kestrel::shell {

/// What Esc does to a command whose box waits, for a tip.
QString EscMeaning(std::size_t command);

/// txtKey: shows the key of a command and, while the capture waits for it, takes the next key that is pressed, whatever
/// else that key does in a window.
class KeyField final : public QLineEdit {
  Q_OBJECT
 public:
  /// `capture` outlives the field.
  KeyField(base::DebugLog& log, core::ShortcutCapture& capture, std::size_t index, QWidget* owner);

  /// Text and colour as the command's binding stands.
  void ShowBox();
  /// A word about the key at the right end of the field, empty for none.
  void ShowClash(const QString& word);
  std::size_t Command() const { return index; }

 Q_SIGNALS:
  /// The box may show another key than before.
  void Shown();

 protected:
  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  /// True when the key was ours.
  bool TakeKey(QKeyEvent& key);

  base::DebugLog& log;
  core::ShortcutCapture& capture;
  std::size_t index;
  QLabel* lblClash;
};

}  // namespace kestrel::shell
